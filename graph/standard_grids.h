// The twelve standard shapes: from cell counts and a scale to the lines of a knot graph.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "base/random.h"
#include "base/result.h"
#include "graph/graph.h"

namespace lorivan {

/// Places in the shape list.
// clang-format off
enum class Shape {
  SquareSquare, SquareTriangle, Triangle, Hexagonal, Circular, Octagonal, Diamond1, Diamond2, Cross, Star,
  Spiral, RegularHexagonal, Custom,
};
// clang-format on
inline constexpr int kShapeCount = static_cast<int>(Shape::Custom) + 1;

struct ShapeSpec {
  std::string_view name;         // as the shape list shows it
  std::string_view offsetLabel;  // label of the offset field; empty: the shape has no offset
  bool circular;                 // strands follow rings: always / with fewer than five X cells for the spiral
  std::string_view about;        // one line for lists and help
  bool wraps = false;            // its left and right borders can be joined
};

/// All rows, indexed by Shape; the last is "(Custom)".
std::span<const ShapeSpec> shapeTable();

/// The fields that a grid is built from. A build corrects them; the caller shows what changed.
struct GridFields {
  Shape shape = Shape::SquareSquare;
  int XNo = 2;           // 1 to 20
  int YNo = 2;           // 1 to 20
  float scale = 30;      // 6 to 99, grid units for a cell
  float skew = 1;        // 0.1 to 10, "vtSkew"
  int crossOffset = 0;   // -7 to 7
  bool wrapped = false;  // "chkWrap", where the shape can be
};

/// How a grid of these cells lies on a cylinder; not at all where the period would leave its range.
Wrap wrapOf(Shape shape, int cellSize, int xNo);

inline constexpr float kLeastScale = 6;

/// What a build used: the fields as corrected, and the frame it laid the lines in.
struct StandardGrid {
  GridFields fields;
  std::int32_t GridOriginX = 0, GridOriginY = 0;
  std::int32_t RowH = 0;  // height of a row of triangles
};

/// Vertical stretch factor of the picture for a stretch field: 0.8 / skew.
float stretchFactor(float skew);

/// Clears the graph's lines and builds those of a standard shape, then collects the points. Counts below the
/// shape's minimum are raised; while the lines reach an edge of the unzoomed view and the scale is above 6,
/// the scale goes down by one and the grid is built again. A wrapped grid has no left and right border: lines
/// on its seam are there once, on the left. With `random`, kinds are varied by draws from it.
/// Shape::Custom builds nothing. Sets CellSize and clears NoGrid.
Result<StandardGrid> buildStandardGrid(KnotGraph& graph, const GridFields& fields,
                                       const Rnd* random = nullptr);

}  // namespace lorivan
