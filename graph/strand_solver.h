// Finds walls that give a knot the number of strands that is wanted.
#pragma once

#include <optional>
#include <vector>

#include "base/result.h"
#include "graph/line_symmetry.h"

namespace lorivan {

struct StrandGoal {
  std::optional<int> strands;  // none: as many as possible
  Symmetry symmetry = {};      // lines that are each other's image get the same kind
  int mostStrands = 39;        // more are never tried for
  int longest = 2999;          // lines that a strand may pass
};

struct StrandPlan {
  std::vector<int> lines;  // ascending; a wall of these becomes a crossing, and the other way round
  int strands = 0;         // with them
};

/// The fewest lines to change, as far as the search finds. Joining strands without a symmetry is exact: one
/// line for each strand less. Reversed lines (kind 3) keep their kind. The same graph and goal give the same
/// plan. It fails with a sentence that tells the number that comes nearest. `graph` has ordered neighbours.
Result<StrandPlan> planStrands(const KnotGraph& graph, const StrandGoal& goal);

}  // namespace lorivan
