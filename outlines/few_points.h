// Lines through many points as lines through few.
#pragma once

#include <vector>

#include "custom/geometry.h"

namespace lorivan {

/// A line through its points; a closed one goes on from the last to the first.
struct OutlinePiece {
  std::vector<Spot> points;
  bool closed = false;
};

/// Leaves points out as long as all of them stay within `tolerance` of the line, then those that lie closer
/// than `spacing` to the next one as far as the piece keeps three of them (two when it is open). Points that
/// stay are moved, by the tolerance at most, so that the line runs in the middle of the points that it stands
/// for: a polygon for a circle has the circle's area. The ends of an open piece stay.
OutlinePiece withFewPoints(const OutlinePiece& piece, double tolerance, double spacing);

/// The same for all pieces. Where they are their own mirror image left to right, or else top to bottom, to
/// within the tolerance, so is the result, exactly.
std::vector<OutlinePiece> withFewPoints(const std::vector<OutlinePiece>& pieces, double tolerance,
                                        double spacing);

}  // namespace lorivan
