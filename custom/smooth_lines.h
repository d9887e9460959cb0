// The lines of a custom shape as they are drawn: straight, or curves through the points.
#pragma once

#include <vector>

#include "custom/arrangement.h"
#include "custom/custom_shape.h"
#include "custom/geometry.h"

namespace lorivan {

/// In a smooth shape a point between two lines that turn by less than this is passed in a curve, degrees;
/// other points stay corners. Regular polygons of five corners and more become round.
inline constexpr double kKeptCorner = 75;

/// So do points that turn by this and by so many times more than those beside them: the tip of a heart. Ends
/// of lines and places where more than two meet are not compared.
inline constexpr double kKeptTip = 50, kTipStandsOut = 2.5;

/// How curves are cut to straight pieces: a piece for so many degrees, none shorter than so many units.
struct CurvePieces {
  double degrees, shortest;
};
inline constexpr CurvePieces kFineCurves{9, 5}, kCoarseCurves{30, 20};

/// The live lines of a shape as spots and pairs of spots, in shape units. The shape's points come first, by
/// their numbers less one.
struct ShapeLines {
  explicit ShapeLines(const CustomShape& shape, const CurvePieces& pieces = kFineCurves);
  std::vector<Spot> spots;
  std::vector<NodePair> lines;
};

}  // namespace lorivan
