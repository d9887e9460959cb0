// Where bands come nearer to each other than their width without crossing, as on both sides of a wall, and
// where two of them cross twice with no room between.
#pragma once

#include <span>
#include <vector>

#include "strands/band_clip.h"
#include "strands/band_crossings.h"

namespace lorivan {

/// Two stretches that lie side by side, nearer to each other than `reach` from their ends on. Beside a bend
/// of one line the other is not followed as far as it is for its own sake.
struct BandTouch {
  int one = 0, two = 0;                 // numbers of the loops
  BandPiece first, second;              // of both, moved to where they meet
  BandPiece besideFirst, besideSecond;  // what each of them has beside it
  double distance = 0;                  // of the centre lines where they are nearest
};

/// Two crossings of the same two lines that follow one another on both, with one and then the other above.
struct BandClasp {
  std::size_t one = 0, two = 0;  // numbers of the crossings
  double distance = 0;           // of the centre lines where they are furthest apart between
};

struct BandTouches {
  std::vector<BandTouch> touches;
  std::vector<BandClasp> clasps;
};

struct TouchLimits {
  double reach = 0;     // how near centre lines come to each other where bands touch
  double most = reach;  // only those that come nearer than this
  double least = 0;     // of those that come nearer than this some may be missing
  bool one = false;     // whether a single one is enough
};

/// Those within the limits. What is part of a crossing is none, nor are the legs of one bend.
BandTouches findBandTouches(std::span<const BandLoop> loops, std::span<const BandCrossing> crossings,
                            std::span<const std::vector<BandPassing>> passings, const Seam& seam,
                            const TouchLimits& limits);

}  // namespace lorivan
