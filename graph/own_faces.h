// Faces of a graph that a symmetry lays onto themselves.
#pragma once

#include <vector>

#include "graph/line_symmetry.h"
#include "graph/strand_runs.h"

namespace lorivan {

/// For every such face with lines of two orbits or more: these orbits, by their place in `orbits.all()`.
/// What lies outside the graph is a face too.
///
/// Walls all round a face make a loop of them. Other changes of the strands come in pairs, this one comes
/// alone, and only with the last of the walls: a search that goes line by line does not find it.
std::vector<std::vector<int>> ownFaces(const StrandRuns& runs, const LineOrbits& orbits);

}  // namespace lorivan
