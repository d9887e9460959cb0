// The line makers of the standard shapes. Each fills an empty line table; the frame (cell size, origin,
// counts) is set before and the fit to the view judged after.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "base/random.h"
#include "graph/standard_grids.h"

namespace lorivan {

/// A line before it is rounded. Most builds only show that the scale is still too large, and no line of
/// theirs is made.
struct PlannedLine {
  float x1, y1, x2, y2;
  std::int16_t kind;
};

/// A point of the spiral: its distance from the middle in cells, and its direction.
struct SpiralStep {
  double turns, cos, sin;
};

/// One build: the frame to lay lines in, and the lines in their order. Builders may correct
/// `grid.fields.crossOffset`.
struct GridBuild {
  StandardGrid& grid;
  std::vector<PlannedLine>& lines;
  const Rnd* random = nullptr;  // null: every line is ordinary
  std::int16_t cell = 0;        // C, the cell size
  Wrap wrap{};
  std::vector<SpiralStep> spiral{};  // the same for every scale

  double draw() const { return (*random)(); }
  bool wraps() const { return static_cast<bool>(wrap); }
  void line(int kind, double x1, double y1, double x2, double y2) const {
    lines.push_back({static_cast<float>(x1), static_cast<float>(y1), static_cast<float>(x2),
                     static_cast<float>(y2), static_cast<std::int16_t>(kind)});
  }
};

/// Distance between the left sides of neighbouring octagons with sides of length `side`.
inline double octagonPitch(double side) { return 2 * (side * 0.70710677) + side; }

void buildSquare(GridBuild& build);  // Square-Square and Square-Triangle
void buildCross(GridBuild& build);
void buildOctagonal(GridBuild& build);
void buildTriangle(GridBuild& build);   // a band of triangles where the graph is wrapped
void buildDiamond(GridBuild& build);    // Diamond1 and Diamond2
void buildHexagonal(GridBuild& build);  // Hexagonal and Regular Hexagonal
void buildCircular(GridBuild& build);
void buildStar(GridBuild& build);
void buildSpiral(GridBuild& build);

/// Kinds of the cells 0 to 21 by 0 to 21 (or, for rings, rings by sectors).
using CellKinds = std::array<std::array<std::int16_t, 40>, 22>;

inline CellKinds ordinaryCells() {
  CellKinds cells{};
  for (auto& column : cells) column.fill(kOrdinary);
  return cells;
}

/// The kinds of a square grid's cells: some of the interior ones become walls or empty at random.
CellKinds drawSquareCells(const GridBuild& build);

}  // namespace lorivan
