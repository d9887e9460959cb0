#include "strands/knot_drawing.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "base/numbers.h"

namespace lorivan {
namespace {

constexpr double kEdgeMargin = 2;  // reference pixels kept free along the picture's edge

Colour fromArgb(std::uint32_t argb) { return (argb >> 16 & 0xFF) | (argb & 0xFF00) | (argb & 0xFF) << 16; }

/// Draws the bands of one picture; buffers are kept from band to band.
class BandPainter {
 public:
  BandPainter(Surface& surface, const KnotCurve& curve, const KnotStyle& style, const GridView& view)
      : surface_(surface), curve_(curve), style_(style), view_(view) {}

  void strand(int slot) {
    bandPoints(curve_, slot, view_, surface_.isRaster(), points_);
    surface_.beginGroup("strand-" + std::to_string(slot));
    stroke(points_.size(), outer(), 0, CapStyle::round);
    stroke(points_.size(), inner(), style_.bandColour(slot), CapStyle::round);
    surface_.endGroup();
  }

  void crossings(int slot) {
    overRuns(curve_, slot, runs_);
    surface_.beginGroup("over-" + std::to_string(slot));
    for (const OverRun& run : runs_) {
      runPoints(curve_, run, view_, surface_.isRaster(), points_);
      // The black stops three points short, so that it does not cut into the band where the strand dives.
      stroke(points_.size() < 3 ? 0 : points_.size() - 3, outer(), 0, CapStyle::flat);
      stroke(points_.size() - 1, inner(), style_.bandColour(slot), CapStyle::round);
      surface_.refresh();
    }
    surface_.endGroup();
  }

 private:
  float outer() const { return static_cast<float>(style_.outerWidth() * view_.pixelFactor()); }
  float inner() const { return static_cast<float>(style_.innerWidth() * view_.pixelFactor()); }

  void stroke(std::size_t count, float width, Colour colour, CapStyle caps) {
    bezier_.clear();
    cardinalToBezier({points_.data(), count}, bezier_);
    if (!bezier_.empty()) surface_.wideCurve({bezier_, width, colour, caps});
  }

  Surface& surface_;
  const KnotCurve& curve_;
  const KnotStyle& style_;
  const GridView& view_;
  std::vector<PointF> points_, bezier_;
  std::vector<OverRun> runs_;
};

}  // namespace

double KnotStyle::outerWidth() const { return roundHalfEven(2.0 * width); }

double KnotStyle::innerWidth() const { return std::max(2.0, outerWidth() - 2.0 * edge); }

Colour KnotStyle::bandColour(int slot) const {
  const int number = startColour < 0 ? std::min(-startColour, kStrandSlots - 1) : slot;
  return fromArgb(colours.argb[static_cast<std::size_t>(number)]);
}

void fitView(GridView& view, const KnotGraph& graph) { view.zoomToShow(lineBox(graph), kEdgeMargin); }

void fitView(GridView& view, const KnotGraph& graph, const KnotCurve& curve, const KnotStyle& style) {
  fitView(view, graph);
  view.zoomToShow(curveBox(curve, view.stretch), style.outerWidth() / 2 + kEdgeMargin);
}

double knotWidth(const KnotCurve& curve, const KnotStyle& style, const GridView& view) {
  const GridBox box = curveBox(curve, view.stretch);
  if (box.empty()) return 0;
  return view.pixelX(box.right) - view.pixelX(box.left) + style.outerWidth() * view.pixelFactor();
}

void drawKnot(Surface& surface, const KnotCurve& curve, const KnotStyle& style, const GridView& view) {
  BandPainter painter(surface, curve, style, view);
  surface.beginGroup("strands");
  for (int slot = 1; slot < kStrandSlots; ++slot)
    if (curve.used(slot)) painter.strand(slot);
  surface.endGroup();
  surface.beginGroup("over-crossings");
  for (int slot = 1; slot < kStrandSlots; ++slot)
    if (curve.used(slot)) painter.crossings(slot);
  surface.endGroup();
}

void drawKnotPicture(Surface& surface, const KnotGraph& graph, const KnotCurve& curve, const KnotStyle& style,
                     const GridView& view, const PictureOptions& options) {
  if (options.transparent)
    surface.clearTransparent(options.background);
  else
    surface.clear(options.background);
  if (options.showGrid) {
    surface.beginGroup("grid");
    drawGridLines(graph, surface, view, options.grid);
    surface.endGroup();
  }
  drawKnot(surface, curve, style, view);
}

}  // namespace lorivan
