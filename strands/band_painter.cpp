#include "strands/band_painter.h"

#include <algorithm>
#include <limits>

namespace lorivan {

void BandPainter::strand(int slot) { strandStart(slot, std::numeric_limits<int>::max()); }

/// The curve is laid through all points and cut off, so that the beginning keeps its place while it grows.
void BandPainter::strandStart(int slot, int count) {
  takePoints(slot);
  const int samples = static_cast<int>(points_.size());
  if (count < 2 || samples < 2) return;
  const auto pieces = static_cast<std::size_t>(count < samples ? count - 1 : samples);
  stretch(0, pieces, outer(), 0, CapStyle::round);
  stretch(0, pieces, inner(), style_.bandColour(slot), CapStyle::round);
}

void BandPainter::overRun(int slot, const OverRun& run) {
  takePoints(slot);
  const std::size_t begin = loopIndex(curve_, slot, run.begin);
  const auto count = static_cast<std::size_t>(run.count);
  const bool wholeStrand = count == points_.size();
  // The black stops three points short, so that it does not cut into the band where the strand dives.
  const std::size_t black = wholeStrand ? count : count - std::min<std::size_t>(count, 3);
  stretch(begin, black, outer(), 0, CapStyle::flat);
  stretch(begin, wholeStrand ? count : count - 1, inner(), style_.bandColour(slot), CapStyle::round);
}

void BandPainter::takePoints(int slot) {
  if (slot == slot_) return;
  loopPoints(curve_, slot, view_, surface_.isRaster(), points_);
  slot_ = slot;
}

void BandPainter::stretch(std::size_t begin, std::size_t pieces, float width, Colour colour, CapStyle caps) {
  if (pieces == 0) return;
  bezier_.clear();
  closedCardinalToBezier(points_, begin, pieces, bezier_);
  surface_.wideCurve({bezier_, width, colour, caps});
}

}  // namespace lorivan
