// Draws the border of a cell mesh to the outline, so that the knot hugs it.
#pragma once

#include <span>
#include <vector>

#include "custom/cell_mesh.h"

namespace lorivan {

inline constexpr double kSharpTurn = 38;     // degrees; a turn of the outline that a border node is put on
inline constexpr double kCornerReach = 1.6;  // how far a node may go to a sharp corner, cells
inline constexpr double kCornerSpan = 0.6;   // how far along the outline a turn is measured, cells

/// Moves the border nodes onto the outline, its sharp corners first, and eases the cells beneath after them,
/// as far as every cell stays convex, unflipped and well shaped. A square whose free corner would lie flat on
/// the outline is cut to a triangle there, a triangle dropped. Returns each node's place in whole grid units;
/// those of nodes that no cell uses any more have no meaning. Where nothing else will do nodes stay where
/// they are. `cellSide` is the length of the lattice's sides. What the group lays onto each other stays so,
/// to the whole unit.
std::vector<PointI> fitBorder(CellMesh& mesh, const Outline& outline, std::span<const OutlineCorner> corners,
                              double cellSide, const Symmetries& group);

}  // namespace lorivan
