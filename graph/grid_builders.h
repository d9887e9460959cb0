// The line makers of the standard shapes. Each fills an empty line table; the frame (cell size, origin,
// counts) is set before and the fit to the view judged after.
#pragma once

#include <array>
#include <cstdint>

#include "base/random.h"
#include "graph/standard_grids.h"

namespace lorivan {

/// One build: the graph that receives the lines and the frame to lay them in. Builders may correct
/// `grid.fields.crossOffset`.
struct GridBuild {
  KnotGraph& graph;
  StandardGrid& grid;
  const Rnd* random = nullptr;  // null: every line is ordinary
  std::int16_t cell = 0;        // C, the cell size

  double draw() const { return (*random)(); }
  bool wraps() const { return static_cast<bool>(graph.wrap); }
  void line(int kind, double x1, double y1, double x2, double y2) const {
    MakeKE(graph, static_cast<std::int16_t>(kind), static_cast<float>(x1), static_cast<float>(y1),
           static_cast<float>(x2), static_cast<float>(y2));
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
