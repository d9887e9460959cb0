// Cells that fill an outline: squares or triangles of a regular lattice.
#pragma once

#include <array>
#include <vector>

#include "custom/arrangement.h"
#include "custom/geometry.h"
#include "custom/outline.h"
#include "custom/symmetry.h"

namespace lorivan {

/// A convex cell; its nodes go round counter-clockwise.
struct MeshCell {
  std::array<int, 4> node{};
  int corners = 4;  // 3 or 4
};

/// A regular lattice, grid units.
struct Lattice {
  bool triangles = false;
  Spot origin;         // of a node
  double across = 0;   // from node to node in a row
  double rowStep = 0;  // from row to row

  double cellArea() const { return across * rowStep / (triangles ? 2 : 1); }
  /// Whether there is a node at `p`.
  bool hasNode(Spot p) const;
};

/// Cells joined along whole sides. A side has one cell (it is on the border) or two.
struct CellMesh {
  std::vector<Spot> nodes;
  std::vector<MeshCell> cells;

  /// Cells at each node.
  std::vector<std::vector<int>> cellsAtNodes() const;
  /// Every side once, from the lower to the higher node number.
  std::vector<NodePair> sides() const;

  Spot centreOf(const MeshCell& cell) const;
  /// What the lattice lays the cells onto; nodes are to be at their places of the lattice.
  Images cellImages(const Symmetries& group, double cellSide) const;
};

/// Where a level line lies in a cell; without length where it does not.
struct CellSpan {
  double from = 0, to = 0;
  /// How much of it lies between the first and the second of the places, the third and the fourth ...
  double inside(const std::vector<double>& places) const;
};
CellSpan spanAt(const MeshCell& cell, const std::vector<Spot>& nodes, double y);

/// The lattice's cells that lie inside the outline by `leastShare` of their areas or more, without those that
/// hang on by a corner only; as symmetrical as the group, which the lattice must allow. Fails when a lattice
/// would have more than `mostCells` cells in the outline's box.
Result<CellMesh> fillOutline(const Outline& outline, const Lattice& lattice, double leastShare, int mostCells,
                             const Symmetries& group);

/// Drops the flagged cells; nodes stay.
void dropCells(CellMesh& mesh, const std::vector<bool>& dropped);

/// Drops the cells that hang on by a corner only; nodes stay.
void dropCornerHangers(CellMesh& mesh, const Outline& outline, const Symmetries& group, double cellSide);

/// Drops the islands of a square or two triangles, as thin tips of an outline leave them, where a much
/// larger island lies in the same part of the outline. `images` are those of the mesh's cells.
void dropSpecks(CellMesh& mesh, const Outline& outline, const Images& images);

/// A mesh's border: for each node the border nodes before and after it, -1 for nodes within.
struct MeshBorder {
  explicit MeshBorder(const CellMesh& mesh);
  bool contains(int node) const { return after[node] >= 0; }
  std::vector<int> before, after;
};

}  // namespace lorivan
