// Where strands cross, as rings of the tube model.
#pragma once

#include <algorithm>
#include <vector>

#include "model3d/tube_builder.h"

namespace lorivan {

/// The rings that lie nearest to the two passes of one crossing.
struct RingCrossing {
  int over = 0, under = 0;
};

/// All crossings of the strands whose model was built with these settings. A wall, where two strands turn
/// back at one place, is none.
std::vector<RingCrossing> ringCrossings(const StrandStore& strands, const TubeSettings& settings);

/// How many rings before and after a crossing belong to it: half way to the turns beside it.
inline int crossingWindow(const TubeSettings& settings) { return std::max(1, settings.polyPoints / 2); }

}  // namespace lorivan
