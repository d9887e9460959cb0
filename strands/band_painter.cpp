#include "strands/band_painter.h"

#include <algorithm>
#include <limits>

namespace lorivan {

void BandPainter::strand(int slot) { strandStart(slot, std::numeric_limits<int>::max()); }

/// The curve is laid through all points and cut off, so that the beginning keeps its place while it grows.
void BandPainter::strandStart(int slot, int count) {
  bandPoints(curve_, slot, view_, surface_.isRaster(), points_);
  const std::size_t drawn = std::min(points_.size(), static_cast<std::size_t>(std::max(count, 0)));
  if (drawn < 2) return;
  bezier_.clear();
  cardinalToBezier(points_, bezier_);
  const std::span<const PointF> start(bezier_.data(), 3 * (drawn - 1) + 1);
  surface_.wideCurve({start, outer(), 0, CapStyle::round});
  surface_.wideCurve({start, inner(), style_.bandColour(slot), CapStyle::round});
}

void BandPainter::overRun(int slot, const OverRun& run) {
  runPoints(curve_, run, view_, surface_.isRaster(), points_);
  // The black stops three points short, so that it does not cut into the band where the strand dives.
  curveThrough(points_.size() < 3 ? 0 : points_.size() - 3, outer(), 0, CapStyle::flat);
  curveThrough(points_.size() - 1, inner(), style_.bandColour(slot), CapStyle::round);
}

void BandPainter::curveThrough(std::size_t count, float width, Colour colour, CapStyle caps) {
  bezier_.clear();
  cardinalToBezier({points_.data(), count}, bezier_);
  if (!bezier_.empty()) surface_.wideCurve({bezier_, width, colour, caps});
}

}  // namespace lorivan
