// Drawing in symmetry: whatever the mouse does, the shape stays its own image.
#include "custom/sheet_symmetry.h"

#include "base/random.h"
#include "gestures.h"

namespace lorivan {
namespace {

Spot place(const CustomShape& shape, int point) { return {shape.ShapeX[point], shape.ShapeY[point]}; }

/// Whether every point and line lies where the map lays one.
bool laidOntoItself(const CustomShape& shape, const Isometry& map) {
  std::vector<int> image(static_cast<std::size_t>(shape.ShapePointCount) + 1, 0);
  for (int point = 1; point <= shape.ShapePointCount; ++point) {
    if (!shape.pointIsLive(point)) continue;
    const Spot to = map(place(shape, point));
    image[point] = shape.nearestPoint(static_cast<float>(to.x), static_cast<float>(to.y), 0.02F);
    if (image[point] == 0) return false;
  }
  for (int line = 1; line <= shape.ShapeLineCount; ++line)
    if (shape.lineIsLive(line) &&
        shape.lineBetween(image[shape.lineEnd(0, line)], image[shape.lineEnd(1, line)]) == 0)
      return false;
  return true;
}

/// A point of the shape, mostly, else a place on the sheet.
Spot somewhere(const CustomShape& shape, const Rnd& random) {
  const int point = 1 + static_cast<int>(random() * shape.ShapePointCount);
  if (random() < 0.6 && shape.pointIsLive(point))
    return place(shape, point) + Spot{2 * random(), 2 * random()};
  return {500 * random(), 400 * random()};
}

TEST(SheetSymmetry, WhateverIsDrawnIsItsOwnImage) {
  std::vector<Symmetry> all = {{true, false, 1}, {false, true, 1}, {true, true, 1}};
  for (int turns = 2; turns <= kMostSheetTurns; ++turns) {
    all.push_back({false, false, turns});
    all.push_back({true, false, turns});
  }
  for (const Symmetry& symmetry : all) {
    const SheetSymmetry group(symmetry, {250, 200});
    const Rnd random = seededRandom(static_cast<std::uint64_t>(symmetry.turns));
    Editor editor;
    editor.setSymmetry(symmetry);
    for (int step = 0; step < 100; ++step) {
      const Spot from = somewhere(editor.shape(), random), to = somewhere(editor.shape(), random);
      const double what = random();
      if (what < 0.1)
        drag(editor, from, from);
      else
        drag(editor, from, to, what < 0.3 ? kRightButton : kLeftButton);
      for (const Isometry& map : {group.maps()[1], group.maps().back()})  // they make all others

        ASSERT_TRUE(laidOntoItself(editor.shape(), map))
            << symmetry.turns << "-fold, mirrored " << symmetry.leftRight << symmetry.topBottom << ", step "
            << step;
    }
    EXPECT_GT(editor.shape().ShapeLineCount, 20);
    for (const Spot ray : group.rays()) {  // axes are shown where they are
      const Spot p = Spot{250, 200} + 90 * ray;
      EXPECT_TRUE(!(symmetry.leftRight || symmetry.topBottom) ||
                  std::any_of(group.maps().begin() + 1, group.maps().end(),
                              [&](const Isometry& map) { return distance(map(p), p) < 1e-6; }))
          << symmetry.turns << "-fold: " << ray.x << ',' << ray.y;
    }
  }
}

TEST(SheetSymmetry, AxesHoldPointsAndImagesThatMeetAreOne) {
  Editor editor;
  const CustomShape& shape = editor.shape();
  editor.setSymmetry({true, false, 1});
  drag(editor, {20, 20}, {253, 100});  // closer to its image than can be told apart
  ASSERT_EQ(shape.ShapePointCount, 1);
  EXPECT_EQ(shape.ShapeX[1], 250);
  drag(editor, {250, 100}, {350, 200});  // a roof
  EXPECT_EQ(shape.ShapePointCount, 3);
  EXPECT_EQ(shape.lineBetween(1, 2) + shape.lineBetween(1, 3), 1 + 2);
  EXPECT_EQ(shape.ShapeX[3], 150);
  drag(editor, {250, 100}, {300, 80}, kRightButton);
  EXPECT_TRUE(shape.ShapeX[1] == 250 && shape.ShapeY[1] == 80) << "a point on the axis leaves it";
  drag(editor, {350, 200}, {252, 240}, kRightButton);
  EXPECT_TRUE(shape.ShapeX[2] == 250 && !shape.pointIsLive(3)) << "images that meet are not joined";
  EXPECT_TRUE(shape.lineIsLive(1) && !shape.lineIsLive(2));
  editor.undo();
  EXPECT_TRUE(shape.pointIsLive(3) && shape.ShapeX[2] == 350) << "one step";

  Editor turned;
  turned.setSymmetry({false, false, 6});
  drag(turned, {20, 20}, {250, 10});  // kept off the margins in all images
  ASSERT_EQ(turned.shape().ShapePointCount, 6);
  for (int point = 1; point <= 6; ++point) EXPECT_GE(turned.shape().ShapeY[point], 60);
  for (int point = 1; point <= 6; ++point) EXPECT_LE(turned.shape().ShapeY[point], 340);
  drag(turned, place(turned.shape(), 1), place(turned.shape(), 2));  // a side of six
  EXPECT_EQ(turned.shape().ShapeLineCount, 6);
  turned.setSymmetry({});
  drag(turned, place(turned.shape(), 1), place(turned.shape(), 2));
  EXPECT_EQ(turned.shape().lineBetween(1, 2), 0);
  EXPECT_NE(turned.shape().lineBetween(2, 3), 0) << "without symmetry a line goes by itself";
}

TEST(SheetSymmetry, AFullTableLeavesNoHalfOfAnEdit) {
  CustomShape full;
  const int a = full.addPoint(100, 100), b = full.addPoint(400, 100);
  for (int k = 0; k < kMostShapeLines - 1; ++k) full.deleteLine(full.addLine(a, b));
  Editor editor;
  editor.replaceShape(full);
  editor.setSymmetry({true, false, 1});
  drag(editor, {100, 100}, {200, 300});  // room for one line of two
  EXPECT_TRUE(editor.shape() == full);
}

}  // namespace
}  // namespace lorivan
