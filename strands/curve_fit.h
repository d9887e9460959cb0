// Smooth curves through many points with few Bezier segments.
#pragma once

#include <span>
#include <vector>

#include "strands/band_loop.h"

namespace lorivan {

/// A point of a line and the line's direction there, a unit vector.
struct LinePoint {
  Vec at, along;
};

/// Appends cubic segments, two controls and an end each, that follow the points from the first to the last
/// within `tolerance` and touch their directions at every joint. The chain must already hold the first point.
/// Without a tolerance there is one segment from each point to the next, which takes far less time.
void fitCurve(std::span<const LinePoint> points, double tolerance, std::vector<PointF>& chain);

inline PointF toPointF(Vec v) { return {static_cast<float>(v.x), static_cast<float>(v.y)}; }

/// Appends one segment from `from` to `to`, close to a circle's arc where their directions allow one.
void appendArc(const LinePoint& from, const LinePoint& to, std::vector<PointF>& chain);

}  // namespace lorivan
