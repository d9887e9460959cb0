#include "strands/band_painter.h"

#include <algorithm>
#include <limits>

namespace lorivan {

void BandPainter::strand(int slot) { strandStart(slot, std::numeric_limits<int>::max()); }

void BandPainter::edge(int slot) {
  loopPoints(curve_, slot, view_, false, points_);
  slot_ = 0;  // others are rounded where there are pixels
  stretch(slot, 0, points_.size(), std::max(outer(), inner()), 0, CapStyle::round);
}

void BandPainter::edge(std::span<const PointF> line, CapStyle caps) {
  stroke(line, std::max(outer(), inner()), 0, caps);
}

void BandPainter::band(int slot, std::span<const PointF> line, CapStyle caps) {
  stroke(line, inner(), style_.bandColour(slot), caps);
}

void BandPainter::edgedBand(int slot, std::span<const PointF> line, CapStyle caps) {
  const float beside = (outer() - inner()) / 2;
  if (!seam_ && beside > 0)
    return surface_.edgedCurve({line, inner(), style_.bandColour(slot), caps}, beside);
  edge(line, caps);  // of all copies before the bands of any
  band(slot, line, caps);
}

/// The curve is laid through all points and cut off, so that the beginning keeps its place while it grows.
void BandPainter::strandStart(int slot, int count) {
  takePoints(slot);
  const int samples = static_cast<int>(points_.size());
  if (count < 2 || samples < 2) return;
  const auto pieces = static_cast<std::size_t>(count < samples ? count - 1 : samples);
  stretch(slot, 0, pieces, outer(), 0, CapStyle::round);
  stretch(slot, 0, pieces, inner(), style_.bandColour(slot), CapStyle::round);
}

void BandPainter::overRun(int slot, const OverRun& run) {
  takePoints(slot);
  const std::size_t begin = loopIndex(curve_, slot, run.begin);
  const auto count = static_cast<std::size_t>(run.count);
  const bool wholeStrand = count == points_.size();
  // The black stops three points short, so that it does not cut into the band where the strand dives.
  const std::size_t black = wholeStrand ? count : count - std::min<std::size_t>(count, 3);
  stretch(slot, begin, black, outer(), 0, CapStyle::flat);
  stretch(slot, begin, wholeStrand ? count : count - 1, inner(), style_.bandColour(slot), CapStyle::round);
}

void BandPainter::takePoints(int slot) {
  if (slot == slot_) return;
  loopPoints(curve_, slot, view_, surface_.isRaster(), points_);
  slot_ = slot;
}

void BandPainter::stretch(int slot, std::size_t begin, std::size_t pieces, float width, Colour colour,
                          CapStyle caps) {
  if (pieces == 0) return;
  bezier_.clear();
  closedCardinalToBezier(points_, begin, pieces, bezier_,
                         static_cast<float>(curve_.lap(slot) * acrossScale(view_)));
  stroke(bezier_, width, colour, caps);
}

void BandPainter::stroke(std::span<const PointF> bezier, float width, Colour colour, CapStyle caps) {
  if (!seam_) return surface_.wideCurve({bezier, width, colour, caps});
  Reach reach;
  reach.add(bezier);
  eachCopy(seam_, reach.low - width, reach.high + width, [&](double right) {
    const std::vector<PointF> copy = movedRight(bezier, right);
    surface_.wideCurve({copy, width, colour, caps});
  });
}

}  // namespace lorivan
