// Contours that cross themselves, made into simple ones.
#pragma once

#include <vector>

#include "base/points.h"

namespace lorivan {

/// Whether a closed contour (see BandContour) meets itself elsewhere than where its segments join.
bool crossesItself(const std::vector<PointF>& contour);

/// Takes a contour apart where it crosses itself. What is left are its simple loops
/// that run in the same sense as the whole, beside one another and each larger than `least` in area, and at
/// least the largest of them; and within them the loops in the other sense that are larger than `leastHole`.
/// Smaller ones are folds. Segments shorter than a thousandth of a pixel go.
std::vector<std::vector<PointF>> untangled(std::vector<PointF> contour, double least, double leastHole);

}  // namespace lorivan
