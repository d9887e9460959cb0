#include "graph/standard_grids.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

#include "base/numbers.h"
#include "graph/grid_builders.h"
#include "graph/grid_view.h"

namespace lorivan {
namespace {

constexpr bool kWraps = true;

constexpr std::array<ShapeSpec, kShapeCount> kShapes = {{
    {"Square-Square", "", false, "squares in rows and columns", kWraps},
    {"Square-Triangle", "", false, "squares cut by diagonals that change direction from column to column",
     kWraps},
    {"Triangle", "", false, "a triangle of triangles; never more rows than columns", kWraps},
    {"Hexagonal", "", false, "tall hexagons in a honeycomb", kWraps},
    {"Circular", "", true, "rings and spokes; at least 4 columns"},
    {"Octagonal", "", false, "octagons with squares in the gaps"},
    {"Diamond1", "", false, "triangles mirrored about the middle, without level lines"},
    {"Diamond2", "", false, "triangles mirrored about the middle"},
    {"Cross", "CO", false, "a square grid cut to a cross; the rows are the width of its arms"},
    {"Star", "", true, "rings with pointed tips; at least 3 columns and 2 rows"},
    {"Spiral", "SO", true, "a spiral whose turns are joined; at least 2 columns and 2 rows"},
    {"Regular Hexagonal", "", false, "even hexagons in a honeycomb", kWraps},
    {"(Custom)", "", false, "a custom shape"},
}};

using Builder = void (*)(GridBuild&);

// In the order of the shape list.
constexpr std::array<Builder, kShapeCount - 1> kBuilders = {
    buildSquare,  buildSquare,  buildTriangle, buildHexagonal, buildCircular, buildOctagonal,
    buildDiamond, buildDiamond, buildCross,    buildStar,      buildSpiral,   buildHexagonal,
};

/// Whether a grid of these fields lies on a cylinder.
bool isWrapped(const GridFields& fields) {
  return fields.wrapped && kShapes[static_cast<std::size_t>(fields.shape)].wraps;
}

/// Cell counts that a shape cannot be made with are raised or cut.
void correctCounts(GridFields& fields) {
  if (isWrapped(fields)) {
    // Diagonals that change direction from column to column meet their likes after an even number.
    if (fields.shape == Shape::SquareTriangle) fields.XNo += fields.XNo % 2;
    return;
  }
  switch (fields.shape) {
    case Shape::Circular:
      fields.XNo = std::max(fields.XNo, 4);
      break;
    case Shape::Spiral:
      fields.XNo = std::max(fields.XNo, 2);
      fields.YNo = std::max(fields.YNo, 2);
      break;
    case Shape::Star:
      fields.XNo = std::max(fields.XNo, 3);
      fields.YNo = std::max(fields.YNo, 2);
      break;
    case Shape::Cross:
      fields.XNo = std::max(fields.XNo, 3);
      fields.YNo = std::min(fields.YNo, fields.XNo);
      break;
    case Shape::Triangle:
    case Shape::Diamond1:
    case Shape::Diamond2:
      fields.YNo = std::min(fields.YNo, fields.XNo);
      break;
    default:
      break;
  }
}

double cellFactor(Shape shape) {
  if (shape == Shape::Triangle) return 1.2;
  if (shape == Shape::Hexagonal) return 0.75;
  return 1;
}

/// Where the frame of a shape begins, so that the shape stands about the middle of the view.
void placeOrigin(GridBuild& build) {
  const GridFields& f = build.grid.fields;
  const double c = build.cell;
  const int width = build.cell * f.XNo, height = build.cell * f.YNo;
  double x = -width / 2.0, y = -height / 2.0;
  switch (f.shape) {
    case Shape::Triangle:
      y = -(build.grid.RowH * f.YNo) / 2.0;
      break;
    case Shape::Hexagonal:
      x = -width / 1.85;
      y = f.YNo * (-c * 0.65);
      break;
    case Shape::RegularHexagonal:
      x = -width / 1.85;
      y = f.YNo * (-c * 0.45);
      break;
    case Shape::Octagonal: {
      // The first octagon's corner stands one pitch from the origin.
      const double pitch = octagonPitch(c);
      x = -pitch * (f.XNo + 2) / 2;
      y = -(pitch * (f.YNo + 1) + c) / 2;
      break;
    }
    case Shape::Diamond1:
    case Shape::Diamond2:
      y = 0;
      break;
    case Shape::Cross:
      y = -width / 2.0;
      break;
    case Shape::Circular:  // these three lay their lines round the middle, whatever the origin
      x = -width / 5.0;
      y = -height / 1.9;
      break;
    case Shape::Star:
      x = -width / 12.0;
      y = -height / 1.85;
      break;
    case Shape::Spiral:
      x = -width / 5.0;
      y = -height / 1.7;
      break;
    default:
      break;
  }
  build.grid.GridOriginX = toInt32(x);
  build.grid.GridOriginY = toInt32(y);
  if (build.wraps()) build.grid.GridOriginX = build.wrap.left;
}

/// At the smallest scales the ends of a line can round to one point. Such a line is taken out, and the lines
/// at both its ends meet there.
void dropPointLikeLines(KnotGraph& graph) {
  for (int j = 0; j < graph.NextLine; ++j) {
    GridLine& line = graph.Lines[j];
    if (line.X1 == line.X2 && line.Y1 == line.Y2) line.Kind = kNoLine;
  }
}

void planOnce(GridBuild& build) {
  const GridFields& fields = build.grid.fields;
  build.cell = toInt16(fields.scale * cellFactor(fields.shape));
  build.grid.RowH = toInt32(build.cell * 0.8660254);
  build.wrap = isWrapped(fields) ? wrapOf(fields.shape, build.cell, fields.XNo) : Wrap{};
  placeOrigin(build);
  build.lines.clear();
  kBuilders[static_cast<std::size_t>(fields.shape)](build);
}

/// What lineBox() tells of the lines once they are made: rounding keeps their order.
GridBox plannedBox(const GridBuild& build) {
  constexpr float kFar = std::numeric_limits<float>::max();
  float left = kFar, right = -kFar, bottom = kFar, top = -kFar;
  for (const PlannedLine& l : build.lines) {
    left = std::min({left, l.x1, l.x2});
    right = std::max({right, l.x1, l.x2});
    bottom = std::min({bottom, l.y1, l.y2});
    top = std::max({top, l.y1, l.y2});
  }
  GridBox box;
  if (build.lines.empty()) return box;
  box.add(toInt16(left), toInt16(bottom));
  box.add(toInt16(right), toInt16(top));
  if (build.wraps()) setSeams(box, build.wrap);
  return box;
}

Status makePlanned(KnotGraph& graph, const GridBuild& build) {
  startLines(graph);
  graph.wrap = build.wrap;
  graph.CellSize = build.cell;
  for (const PlannedLine& l : build.lines) MakeKE(graph, l.kind, l.x1, l.y1, l.x2, l.y2);
  dropPointLikeLines(graph);
  return finishLines(graph);
}

}  // namespace

std::span<const ShapeSpec> shapeTable() { return kShapes; }

Wrap wrapOf(Shape shape, int cellSize, int xNo) {
  const long long period = static_cast<long long>(cellSize) * xNo;
  if (!kShapes[static_cast<std::size_t>(shape)].wraps || period < kLeastPeriod || period > kMostPeriod)
    return {};
  return {toInt16(-static_cast<double>(period) / 2), static_cast<std::int16_t>(period)};
}

float stretchFactor(float skew) { return 0.8F / std::clamp(skew, 0.1F, 10.F); }

Result<StandardGrid> buildStandardGrid(KnotGraph& graph, const GridFields& fields, const Rnd* random) {
  StandardGrid grid;
  grid.fields = fields;
  if (fields.shape == Shape::Custom) return grid;
  std::vector<PlannedLine> lines;
  GridBuild build{grid, lines, random};
  correctCounts(grid.fields);
  const GridView view(stretchFactor(fields.skew));
  float& scale = grid.fields.scale;
  for (planOnce(build); scale > kLeastScale && !view.contains(plannedBox(build)); planOnce(build))
    scale = std::max(kLeastScale, scale - 1);
  if (const Status made = makePlanned(graph, build); !made) return made.error();
  graph.NoGrid = false;
  if (const Status collected = collectPoints(graph); !collected) return collected.error();
  return grid;
}

}  // namespace lorivan
