// The visible part of a band between two crossings, found from distances: for places where bends, corners and
// crossings fall together, so that the plain way of cutting a band off would be wrong.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "strands/band_loop.h"
#include "strands/curve_fit.h"

namespace lorivan {

/// A stretch of a centre line, from one place to a later one, which may lie in the next lap.
struct BandPiece {
  BandLoop loop;
  double from = 0, to = 0;
  /// At an end in a bend, beside which something of the band is seen: what lies behind this point is cut off,
  /// no further from it than an edge is wide: beyond lie other parts of the band.
  std::optional<LinePoint> cutFrom = {}, cutTo = {};
};

/// What lies over a band. On the side of the limit's line that quarter() points to it hides nothing.
struct BandCover {
  BandPiece piece;
  std::optional<LinePoint> limit = {};
};

/// A part of a band, and another one that runs beside it with no room between.
struct BandBeside {
  BandPiece own, other;
  double distance = 0;  // of both where they are nearest
};

/// What is left of a band, `half` to each side, where everything nearer than `clear` to the covering pieces
/// is taken away, and beside another band what is not nearer to its own centre line by `clear` - `half`, or
/// less where they almost lie on one another: closed contours (see BandContour), holes negative, true to
/// `detail`. Features smaller than about four times that may be lost. Gaps, spurs and slivers of a few times
/// `tolerance` are taken for faults of the borders. Nothing where a border could not be followed round.
std::optional<std::vector<std::vector<PointF>>> clipBand(const BandPiece& band, double half,
                                                         std::span<const BandCover> covers,
                                                         std::span<const BandBeside> besides, double clear,
                                                         double tolerance, double detail);

}  // namespace lorivan
