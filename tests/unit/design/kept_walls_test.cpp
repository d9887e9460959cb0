// Walls stay with their cells when the grid changes round them.
#include "design/kept_walls.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "base/numbers.h"
#include "grids.h"

namespace lorivan {
namespace {

Document withWalls(const Document& d, std::uint32_t seed) {
  const Rnd random = seededRandom(seed);
  std::vector<int> lines;
  for (int j = 0; j < std::ssize(*d.lines); ++j)
    if ((*d.lines)[j].Kind == kOrdinary && random() < 0.3) lines.push_back(j);
  return withKind(d, lines, kWall, {});
}

int kindAt(const Document& d, double x, double y) {
  for (const KnotLine& line : *d.lines)
    if (std::abs(line.MidX - x) <= 1 && std::abs(line.MidY - y) <= 1) return line.Kind;
  return -1;
}

TEST(KeptWalls, AGrowingSquareGridKeepsTheWallsOfItsColumns) {
  const Document six = withWalls(gridOf(Shape::SquareSquare, 6, 4), 5);
  const Document eight = *changeField(six, Param::XNo, "8");
  ASSERT_LT(eight.CellSize, six.CellSize) << "it had to be made smaller";
  const double a = six.CellSize, b = eight.CellSize;
  for (const auto& [dx, dy] : {std::pair{0.5, 0.0}, {0.0, 0.5}})
    for (int x = 0; x <= 6; ++x)
      for (int y = 0; y <= 4; ++y) {
        const double column = x + dx, row = y + dy;
        if (column > 6 || row > 4) continue;
        EXPECT_EQ(kindAt(eight, (column - 4) * b, (row - 2) * b),
                  kindAt(six, (column - 3) * a, (row - 2) * a))
            << column << ' ' << row;
      }
  EXPECT_EQ(wallCount(eight), wallCount(six));
  EXPECT_EQ(*changeField(eight, Param::XNo, "6")->lines, *six.lines) << "and back";
  const Document five = *changeField(six, Param::XNo, "5");
  EXPECT_LT(wallCount(five), wallCount(six));
  EXPECT_GT(wallCount(five), 0);
}

TEST(KeptWalls, ScaleStretchAndStyleKeepEveryKindOfEveryShape) {
  for (int s = 0; s < kShapeCount - 1; ++s) {
    SCOPED_TRACE(shapeTable()[s].name);
    Document d = withWalls(gridOf(static_cast<Shape>(s), 5, 4, 20), 9);
    d = stepLine(d, 7, 3);
    const auto kinds = [](const Document& of) {
      std::vector<std::int16_t> all;
      for (const KnotLine& line : *of.lines) all.push_back(line.Kind);
      return all;
    };
    for (const auto& [p, text] : {std::pair{Param::Scale, "11"}, {Param::Skew, "1.4"}, {Param::Width, "4"}})
      EXPECT_EQ(kinds(*changeField(d, p, text)), kinds(d)) << text;
    EXPECT_EQ(kinds(withFittedStyle(d, 2)), kinds(d));
    // One more ring or row at the far end leaves all others where they are.
    const int kept = wallCount(*changeField(d, Param::YNo, "5"));
    EXPECT_GT(kept, wallCount(d) / 2);
    EXPECT_EQ(wallCount(*newGrid(d)), 0);
  }
}

}  // namespace
}  // namespace lorivan
