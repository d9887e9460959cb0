// How well a mesh that was drawn to an outline fills it.
#pragma once

#include <vector>

#include "custom/cell_mesh.h"
#include "custom/outline.h"

namespace lorivan {

/// How far from the outline a node outside it may lie, cells; a little less than what is promised, since
/// nodes are rounded.
inline constexpr double kMostOutside = 0.48;

struct MeshQuality {
  double filled = 0;   // share of the outline's area that has cells
  double beyond = 0;   // area of cells outside the outline, by the outline's
  double uneven = 0;   // mean square of how much the cells' areas differ from the lattice's
  int farOutside = 0;  // nodes further outside than kMostOutside

  /// What is to be least.
  double faults() const { return 1.5 * (1 - filled) + beyond + 0.15 * uneven + 0.02 * farOutside; }
};

MeshQuality qualityOf(const CellMesh& mesh, const std::vector<PointI>& at, const Outline& outline,
                      const Lattice& lattice);

/// For each node whether it is a cell's and lies outside the outline by more than kMostOutside.
std::vector<bool> nodesFarOutside(const CellMesh& mesh, const std::vector<PointI>& at, const Outline& outline,
                                  double cellSide);

}  // namespace lorivan
