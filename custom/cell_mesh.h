// Cells that fill an outline: squares or triangles of a regular lattice, by their centres.
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

/// The lattice's cells whose centres lie inside the outline, without those that hang on by a corner only; as
/// symmetrical as the group, which the lattice must allow. Fails when a lattice would have more than
/// `mostCells` cells in the outline's box.
Result<CellMesh> fillOutline(const Outline& outline, const Lattice& lattice, int mostCells,
                             const Symmetries& group);

/// Drops the islands of a square or two triangles, as thin tips of an outline leave them, where a much
/// larger island lies in the same part of the outline. `images` are those of the mesh's cells.
void dropSpecks(CellMesh& mesh, const Outline& outline, const Images& images);

/// A mesh's border: for each node the border nodes before and after it, -1 for nodes within.
struct MeshBorder {
  explicit MeshBorder(const CellMesh& mesh);
  bool contains(int node) const { return after[static_cast<std::size_t>(node)] >= 0; }
  std::vector<int> before, after;
};

}  // namespace lorivan
