// AutoGrid: outlines of every sort give plane graphs of convex cells that close to a knot.
#include "custom/autogrid.h"
#include "custom/planar_grid.h"

#include <filesystem>
#include <string>

#include "base/random.h"
#include "custom/outline.h"
#include "custom/shape_file.h"
#include "graph/standard_grids.h"
#include "shapes.h"
#include "tries.h"

namespace lorivan {
namespace {

/// A loop round a middle whose radius wavers: star-shaped, mostly concave.
std::vector<Spot> waveringLoop(const Rnd& random, Spot middle, double radius, double waver, int count) {
  std::array<double, 6> height{}, phase{};
  for (std::size_t k = 0; k < height.size(); ++k) {
    height[k] = waver * random() / static_cast<double>(k + 1);
    phase[k] = 6.283 * random();
  }
  std::vector<Spot> loop;
  for (int i = 0; i < count; ++i) {
    const double turn = 6.283185 * i / count;
    double r = 1;
    for (std::size_t k = 0; k < height.size(); ++k)
      r += height[k] * std::sin(static_cast<double>(k + 2) * turn + phase[k]);
    r = std::max(r, 0.15) * radius;
    loop.push_back({middle.x + r * std::cos(turn), middle.y + r * std::sin(turn)});
  }
  return loop;
}

/// A comb: deep teeth of uneven widths, not star-shaped.
std::vector<Spot> comb(const Rnd& random) {
  std::vector<Spot> loop{{60, 320}, {60, 60 + 40 * random()}};
  double x = 60;
  while (x < 380) {
    const double right = x + 15 + 60 * random(), next = right + 5 + 40 * random();
    const double root = 150 + 140 * random(), tip = 50 + 60 * random();
    loop.insert(loop.end(), {{right, tip}, {right, root}, {next, root}, {next, tip + 20 * random()}});
    x = next;
  }
  loop.push_back({x + 30, 320});
  return loop;
}

struct RandomCase {
  CustomShape shape;
  bool hole = false;
  float skew = 1;
  AutoGridOptions options;
};

RandomCase randomCase(std::uint64_t seed) {
  const Rnd random = seededRandom(seed);
  RandomCase c;
  const Spot middle{200 + 100 * random(), 170 + 60 * random()};
  if (seed % 5 == 4) {
    addLoop(c.shape, comb(random));
  } else {
    addLoop(c.shape, waveringLoop(random, middle, 60 + 100 * random(), seed % 5 == 3 ? 0 : 0.6,
                                  5 + static_cast<int>(80 * random())));
    c.hole = seed % 2 == 0;
    if (c.hole)
      addLoop(c.shape,
              waveringLoop(random, middle, 10 + 50 * random(), 0.4, 3 + static_cast<int>(30 * random())));
  }
  c.skew = seed % 7 == 0 ? 0.5F : seed % 7 == 1 ? 2 : 1;
  c.options = {3 + static_cast<int>(18 * random()), random() < 0.5};
  return c;
}

double areaOf(const Outline& outline) {
  constexpr double kStep = 0.25;
  double area = 0;
  for (double y = outline.box().bottom; y < outline.box().top; y += kStep) {
    const std::vector<double> places = outline.crossingsAt(y);
    for (std::size_t i = 0; i + 1 < places.size(); i += 2) area += kStep * (places[i + 1] - places[i]);
  }
  return area;
}

double cellSizeOf(const Outline& outline, const AutoGridOptions& options) {
  const GridBox& b = outline.box();
  return std::max(std::max(b.right - b.left, b.top - b.bottom) / options.gridSize, 1.95);
}

/// Every face is a strictly convex cell, or the hole, or outside: that one runs clockwise. The cells together
/// are about as large as the outline.
void expectConvexCells(const KnotGraph& graph, const RandomCase& c, double& filled) {
  const GridView view(stretchFactor(c.skew));
  const ShapeMapping mapping(c.shape, view);
  const auto outline = Outline::of(c.shape, mapping);
  ASSERT_TRUE(outline);
  double cells = 0;
  int large = 0;
  const double cell = cellSizeOf(*outline, c.options);
  for (const Side& side : sidesOf(graph))
    EXPECT_TRUE(isInside(*outline, side.a) || !outline->sidesNear(side.a, cell / 2).empty())
        << side.a.x << ',' << side.a.y << " is more than half a cell outside";
  for (const auto& face : facesOf(graph)) {
    const auto [convex, area, middle] = cellOf(face);
    if (area < 0) continue;
    large += face.size() > 4 ? 1 : 0;
    EXPECT_TRUE(convex || face.size() > 4 || !isInside(*outline, middle)) << middle.x << ',' << middle.y;
    if (face.size() <= 4) cells += area;
  }
  EXPECT_LE(large, c.hole ? 1 : 0) << "a cell is missing";
  filled = cells / areaOf(*outline);
}

TEST(AutoGrid, RefusesInTheWordsOfNewGridWhatNoLineCanHold) {
  const CustomShape shape = shapeOf({box(0, 0, 16000, 16000)});
  const GridView view(stretchFactor(0.1F));
  KnotGraph graph;
  const auto filled = AutoGrid(graph, shape, view, {4, false});
  const Status traced = makeGridFromShape(graph, shape, view);
  ASSERT_FALSE(filled || traced);
  EXPECT_EQ(filled.error().message, traced.error().message);
}

TEST(AutoGrid, FillsRandomOutlinesWithPlaneConvexCells) {
  KnotGraph graph;
  std::vector<double> filled;  // share of the outline, where cells are not too coarse for it
  for (int seed = 1; seed <= tries(300); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const RandomCase c = randomCase(static_cast<std::uint64_t>(seed));
    const GridView view(stretchFactor(c.skew));
    const auto made = AutoGrid(graph, c.shape, view, c.options);
    if (!made) {
      EXPECT_NE(made.error().message.find("too narrow"), std::string::npos) << made.error().message;
      continue;
    }
    EXPECT_LE(graph.LastLine + 1, kMostAutoGridLines);
    expectPlane(graph);
    double share = 0;
    expectConvexCells(graph, c, share);
    if (c.options.gridSize >= 10) filled.push_back(share);
    expectKnot(graph);
    if (HasFatalFailure()) return;
  }
  ASSERT_GT(static_cast<int>(filled.size()), tries(150));
  std::sort(filled.begin(), filled.end());
  EXPECT_GT(filled[filled.size() / 20], 0.88);
  EXPECT_NEAR(filled[filled.size() / 2], 1, 0.03);
  EXPECT_LT(filled[filled.size() * 19 / 20], 1.05);
}

TEST(AutoGrid, BoxIsFilledExactlyAndAHoleStaysFree) {
  // 200 by 120 units are 80.8 by 48.48 grid units: with ten cells, cells of 8 that are drawn out to the box.
  CustomShape shape = shapeOf({box(150, 140, 350, 260)});
  KnotGraph graph;
  ASSERT_TRUE(AutoGrid(graph, shape, GridView(), {10, false}));
  EXPECT_EQ(graph.LastLine + 1, 10 * 7 + 11 * 6);
  const GridBox lines = lineBox(graph);
  EXPECT_TRUE(lines.left == -40 && lines.right == 40 && lines.bottom == -24 && lines.top == 24);
  std::set<int> counts;  // of lines: every value makes another grid
  for (int size = 10; size <= 30; ++size) {
    const auto made = AutoGrid(graph, shape, GridView(), {size, false});
    ASSERT_TRUE(made);
    EXPECT_GT(made->filled, 0.97);
    counts.insert(graph.LastLine + 1);
  }
  EXPECT_EQ(counts.size(), 21U);
  EXPECT_TRUE(AutoGrid(graph, shape, GridView(), {37, false})) << "cells of little more than two units";

  addLoop(shape, box(230, 180, 270, 220));  // two cells by two
  ASSERT_TRUE(AutoGrid(graph, shape, GridView(), {10, false}));
  EXPECT_EQ(graph.LastLine + 1, 10 * 7 + 11 * 6 - 4);
  expectKnot(graph);
}

/// How far the image of any line's middle lies from the middles of all lines.
template <class Image>
double imageFault(const KnotGraph& graph, Image image) {
  double worst = 0;
  const std::vector<Side> sides = sidesOf(graph);
  for (const Side& from : sides) {
    const Spot there = image(0.5 * (from.a + from.b));
    double least = 1e30;
    for (const Side& to : sides) least = std::min(least, distance(there, 0.5 * (to.a + to.b)));
    worst = std::max(worst, least);
  }
  return worst;
}

TEST(AutoGrid, IsAsSymmetricalAsTheOutline) {
  const std::vector<Spot> letterA = {{225, 20},  {275, 20},  {420, 380}, {350, 380},
                                     {312, 290}, {188, 290}, {150, 380}, {80, 380}};
  const std::vector<std::vector<std::vector<Spot>>> shapes = {
      {{{250, 20}, {430, 200}, {250, 380}, {70, 200}}},
      {letterA, {{250, 110}, {294, 230}, {206, 230}}},
      {starLoop(10, 60, 190)},
      {starLoop(16, 80, 185)},
      {starLoop(40, 180, 180), starLoop(40, 90, 90)}};
  for (const auto& loops : shapes)
    for (const bool triangles : {false, true})
      for (int size = 5; size <= 30; size += 3) {
        if (isLeftOut(size)) continue;
        SCOPED_TRACE(testing::Message()
                     << loops[0].size() << " points, " << size << (triangles ? " triangles" : ""));
        KnotGraph graph;
        const auto made = AutoGrid(graph, shapeOf(loops), GridView(), {size, triangles});
        if (!made) continue;
        const GridBox lines = lineBox(graph);
        EXPECT_EQ(imageFault(graph, [&](Spot p) { return Spot{lines.left + lines.right - p.x, p.y}; }), 0);
        expectPlane(graph);
      }
}

/// A curve with so many lobes.
std::vector<Spot> lobed(int lobes, double turn) {
  return roundLoop(120, [=](double angle) { return 125 + 50 * std::cos(lobes * (angle - turn)); });
}

TEST(AutoGrid, TrianglesTurnWithOutlinesThatTurn) {
  const std::tuple<std::vector<Spot>, int, std::vector<int>> cases[] = {
      {lobed(3, 0), 3, {8, 12, 16, 20}},
      {lobed(3, 0.3), 3, {8, 12, 16, 20}},
      {lobed(6, 0), 6, {6, 8, 12, 16, 20}},
      {starLoop(12, 110, 145), 6, {5, 9, 14}},
      {starLoop(12, 83.7, 145), 6, {6, 9, 10}}};  // a hexagram: other lattices fill it better, unturned
  for (const auto& [loop, fold, sizes] : cases)
    for (const int size : sizes) {
      SCOPED_TRACE(testing::Message() << loop.size() << " points, " << fold << " fold, " << size);
      const CustomShape shape = shapeOf({loop});
      const ShapeMapping mapping(shape, GridView());
      KnotGraph graph;
      const auto made = AutoGrid(graph, shape, GridView(), {size, true});
      ASSERT_TRUE(made);
      EXPECT_GT(made->filled, 0.9);
      // Nodes are rounded, and the outline was moved to a whole centre.
      const Spot centre{std::round(mapping.gridX(250)), std::round(mapping.gridY(200))};
      const auto turned = [&, c = std::cos(kTwoPi / fold), s = std::sin(kTwoPi / fold)](Spot p) {
        const Spot off = p - centre;
        return centre + Spot{c * off.x - s * off.y, s * off.x + c * off.y};
      };
      EXPECT_LT(imageFault(graph, turned), 1.6);
      expectPlane(graph);
    }
}

TEST(AutoGrid, LeavesAHoleAboutACellWideFree) {
  // Cells of 20 units; the hole lies on a node of the lattice, not on a cell.
  for (const double reach : {14.0, 18.0, 24.0}) {
    const CustomShape shape =
        shapeOf({box(50, 50, 450, 350),
                 {{250, 200 - reach}, {250 + reach, 200}, {250, 200 + reach}, {250 - reach, 200}}});
    KnotGraph graph;
    ASSERT_TRUE(AutoGrid(graph, shape, GridView(), {20, false}));
    const Spot middle{ShapeMapping(shape, GridView()).gridX(250), ShapeMapping(shape, GridView()).gridY(200)};
    for (const Side& side : sidesOf(graph)) EXPECT_GT(distance(side.a, middle), 2) << reach;
  }
}

TEST(AutoGrid, LooksFurtherWhereMuchStaysEmpty) {
  // The lattices that are tried at first leave 5 to 8 % more of these empty.
  for (const auto& [name, triangles, least] :
       {std::tuple("beast", true, 0.88), {"crescent", true, 0.95}, {"letter", false, 0.955}}) {
    KnotGraph graph;
    const auto shape = loadShapeFile(std::string(LORIVAN_EXAMPLES "/") + name + ".qzc");
    ASSERT_TRUE(shape);
    const auto made = AutoGrid(graph, *shape, GridView(), {4, triangles});
    EXPECT_TRUE(made && made->filled > least) << name;
  }
}

TEST(AutoGrid, OnlyClosedLoopsCount) {
  const auto linesOf = [](const CustomShape& shape) {
    KnotGraph graph;
    EXPECT_TRUE(AutoGrid(graph, shape, GridView(), {10, false}));
    return graph.LastLine + 1;
  };
  CustomShape shape = shapeOf({box(150, 140, 350, 260)});
  const int plain = linesOf(shape);
  shape.addPoint(450, 60);  // a tail outwards, and a chord from corner to corner
  shape.addLine(2, 5);
  shape.addLine(1, 3);
  EXPECT_EQ(linesOf(shape), plain);
  // A hole that a line ties to the outline stays a hole.
  CustomShape tied = shapeOf({box(150, 140, 350, 260), box(230, 180, 270, 220)});
  tied.addLine(1, 5);
  EXPECT_EQ(linesOf(tied), plain - 4);
}

TEST(AutoGrid, RefusalsSayWhy) {
  CustomShape open = shapeOf({box(100, 100, 300, 300)});
  open.deleteLine(3);
  const CustomShape thinL = shapeOf({{{50, 50}, {57, 50}, {57, 343}, {450, 343}, {450, 350}, {50, 350}}});
  const std::tuple<CustomShape, int, const char*> cases[] = {
      {CustomShape(), 20, "no closed outline"},
      {open, 20, "no closed outline"},
      {thinL, 3, "too narrow"},
      {shapeOf({box(45, 45, 440, 340)}), 60, "too complicated"}};
  for (const auto& [shape, gridSize, says] : cases) {
    KnotGraph graph;
    const auto made = AutoGrid(graph, shape, GridView(), {gridSize, false});
    ASSERT_FALSE(made) << says;
    EXPECT_NE(made.error().message.find(says), std::string::npos) << made.error().message;
    EXPECT_EQ(made.error().kind, gridSize == 60 ? ErrorKind::limit : ErrorKind::knot);
    EXPECT_EQ(graph.LastPoint, -1);
  }
}

TEST(AutoGrid, ARegionIsWhatLoopsLeaveFreeRoundAPlace) {
  // A frame with an island in it; beside it a square with a spur, divided from corner to corner; two squares
  // that overlap.
  CustomShape shape = shapeOf({box(50, 50, 200, 200), box(80, 80, 170, 170), box(110, 110, 140, 140),
                               box(250, 50, 350, 150), box(250, 200, 350, 300), box(300, 250, 400, 330)});
  shape.addLine(13, 15);
  shape.addLine(15, shape.addPoint(390, 180));
  const struct {
    Spot at;
    double area;  // shape units; 0: none
  } cases[] = {{{60, 190}, 150 * 150 - 90 * 90},
               {{90, 90}, 90 * 90 - 30 * 30},
               {{125, 125}, 30 * 30},
               {{340, 60}, 5000},
               {{260, 140}, 5000},
               {{260, 290}, 10000 - 2500},
               {{330, 270}, 2500},
               {{390, 320}, 8000 - 2500},
               {{225, 125}, 0},
               {{20, 20}, 0},
               {{372, 165}, 0}};
  for (const auto& [at, area] : cases) {
    SCOPED_TRACE(at.x);
    const auto outline = Outline::of(shape, ShapeMapping(shape, GridView()), at);
    ASSERT_EQ(static_cast<bool>(outline), area > 0);
    KnotGraph graph;
    const auto made = AutoGrid(graph, shape, GridView(), {70, false, at});
    EXPECT_EQ(static_cast<bool>(made), area > 0);
    if (!outline || !made) continue;
    EXPECT_NEAR(areaOf(*outline) / (0.404 * 0.404 * area), 1, 0.03);
    expectKnot(graph);
  }
}

}  // namespace
}  // namespace lorivan
