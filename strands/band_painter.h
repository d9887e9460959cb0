// Smooth bands, one strand or over-crossing at a time: what pictures and animations are put together from.
#pragma once

#include <span>
#include <vector>

#include "strands/knot_drawing.h"
#include "strands/seam_copies.h"

namespace lorivan {

/// Draws the bands of one picture, in a wrapped knot with their copies; buffers are kept from band to band.
/// All references must outlive it.
class BandPainter {
 public:
  BandPainter(Surface& surface, const KnotCurve& curve, const KnotStyle& style, const GridView& view)
      : surface_(surface), curve_(curve), style_(style), view_(view), seam_(seamOf(curve, view)) {}

  /// Both bands of a strand.
  void strand(int slot);
  /// The black one alone, unrounded.
  void edge(int slot);
  /// The same along a line that is known.
  void edge(std::span<const PointF> line, CapStyle caps = CapStyle::round);
  /// The coloured one along such a line.
  void band(int slot, std::span<const PointF> line, CapStyle caps = CapStyle::round);
  /// Both along such a line.
  void edgedBand(int slot, std::span<const PointF> line, CapStyle caps = CapStyle::round);
  /// The beginning of a strand: the same curve as far as its point number `count`.
  void strandStart(int slot, int count);
  /// Both bands of a stretch that lies over others.
  void overRun(int slot, const OverRun& run);

 private:
  float outer() const { return static_cast<float>(style_.outerWidth() * view_.pixelFactor()); }
  float inner() const { return static_cast<float>(style_.innerWidth() * view_.pixelFactor()); }
  void takePoints(int slot);
  void stroke(std::span<const PointF> bezier, float width, Colour colour, CapStyle caps);
  void stretch(int slot, std::size_t begin, std::size_t pieces, float width, Colour colour, CapStyle caps);

  Surface& surface_;
  const KnotCurve& curve_;
  const KnotStyle& style_;
  const GridView& view_;
  Seam seam_;
  int slot_ = 0;  // whose points these are
  std::vector<PointF> points_, bezier_;
};

}  // namespace lorivan
