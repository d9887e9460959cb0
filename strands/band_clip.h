// The visible part of a band between two crossings, found from distances: for places where bends, corners and
// crossings fall together, so that the plain way of cutting a band off would be wrong.
#pragma once

#include <span>
#include <vector>

#include "strands/band_loop.h"

namespace lorivan {

/// A stretch of a centre line, from one place to a later one, which may lie in the next lap.
struct BandPiece {
  const BandLoop* loop = nullptr;
  double from = 0, to = 0;
};

/// A closed chain, or an open one where something else goes on, of cubic segments (see BandContour).
using ClippedChain = std::vector<PointF>;

struct ClippedBand {
  std::vector<ClippedChain> whole;  // closed contours, outer ones positive
  ClippedChain open;                // from one corner of the open end to the other; empty: the end is covered
};

/// Which of a piece's ends is left open, for the rest of the band to be joined there.
enum class OpenEnd { none, from, to };

/// What is left of a band, `half` to each side, where everything nearer than `clear` to the covering pieces
/// is taken away. Features smaller than about four tolerances may be lost.
ClippedBand clipBand(const BandPiece& band, double half, OpenEnd openEnd, std::span<const BandPiece> covers,
                     double clear, double tolerance);

}  // namespace lorivan
