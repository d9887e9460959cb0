// Where the centre lines of strands meet, and which of the two lies over the other there.
#pragma once

#include <span>
#include <vector>

#include "strands/band_loop.h"

namespace lorivan {

struct BandCrossing {
  int under = 0, over = 0;         // numbers of the loops
  double underAt = 0, overAt = 0;  // places on them, within the first lap
  int turn = 0;                    // periods that the upper loop has to be moved to the right to be there
};

/// Where a loop passes through a crossing.
struct BandPassing {
  double place = 0;
  int crossing = 0;  // its number
  bool isOver = false;
};

/// A grid has at most 5000 lines. Strands that cross more often than this are a tangle in which nobody
/// follows a band, and to look for what lies between their crossings takes up to hours.
inline constexpr std::size_t kMostCrossings = 6000;

/// All crossings, by the under loop and the place on it. At equal heights the loop that comes later, or the
/// later place of one loop, is over. Loops of a wrapped knot cross round the cylinder. Of more than
/// kMostCrossings some are missing, but no fewer are told.
std::vector<BandCrossing> findBandCrossings(std::span<const BandLoop> loops, const Seam& seam = {});

/// Of every loop, by their places.
std::vector<std::vector<BandPassing>> bandPassings(std::size_t loops,
                                                   std::span<const BandCrossing> crossings);

}  // namespace lorivan
