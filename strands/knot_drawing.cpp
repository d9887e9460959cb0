#include "strands/knot_drawing.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "base/numbers.h"
#include "strands/band_outline.h"
#include "strands/band_painter.h"
#include "strands/laid_bands.h"
#include "strands/seam_copies.h"

namespace lorivan {
namespace {

constexpr double kEdgeMargin = 2;  // reference pixels kept free along the picture's edge
constexpr double kFilledEdge =
    0.05;  // part of the picture that a knot that fills it leaves free on each side

/// The edges of all bands, which lie beneath all colours: no colour's end shows what is under it. Files get
/// shapes where a band has no folds.
void drawEdges(Surface& surface, BandOutlines& outlines, const KnotCurve& curve, const KnotStyle& style,
               const GridView& view) {
  const Seam seam = seamOf(curve, view);
  std::vector<BandContour> rings;
  for (StrandOutline& strand : outlines.strands)
    if (!strand.folded) appendCopies(seam, std::move(strand.ring), rings);
  surface.beginGroup("edges");
  if (!rings.empty()) surface.fillPath(rings, 0);
  BandPainter painter(surface, curve, style, view);
  for (const StrandOutline& strand : outlines.strands)
    if (!strand.spine.empty())
      painter.edge(strand.spine);
    else if (strand.ring.empty() || strand.folded)
      painter.edge(strand.slot);
  surface.endGroup();
}

OutlineOptions drawingWidths(const Surface& surface, const KnotStyle& style, const GridView& view) {
  OutlineOptions options;
  options.band = style.innerWidth() * view.pixelFactor();
  options.outer = std::max(style.outerWidth() * view.pixelFactor(), options.band);
  options.rings = options.fitted = !surface.isRaster();
  options.spines = surface.isRaster();
  return options;
}

}  // namespace

double KnotStyle::outerWidth() const { return roundHalfEven(2.0 * width); }

double KnotStyle::innerWidth() const { return std::max(2.0, outerWidth() - 2.0 * edge); }

int KnotStyle::colourNumber(int slot) const {
  return startColour < 0 ? std::min(-startColour, kStrandSlots - 1) : slot;
}

Colour KnotStyle::bandColour(int slot) const { return fromArgb(colours.argb[colourNumber(slot)]); }

void fitView(GridView& view, const KnotGraph& graph) { view.zoomToShow(lineBox(graph), kEdgeMargin); }

void fitView(GridView& view, const GridBox& grid, const GridBox& strands, const KnotStyle& style) {
  view.zoomToShow(grid, kEdgeMargin);
  view.zoomToShow(strands, style.outerWidth() / 2 + kEdgeMargin);
}

void fitView(GridView& view, const KnotGraph& graph, const KnotCurve& curve, const KnotStyle& style) {
  fitView(view, lineBox(graph), curveBox(curve, view.stretch), style);
}

void fillView(GridView& view, const GridBox& strands, const KnotStyle& style) {
  view.fill(strands, style.outerWidth() / 2, kFilledEdge);
}

void fillView(GridView& view, const KnotCurve& curve, const KnotStyle& style) {
  fillView(view, curveBox(curve, view.stretch), style);
}

void fillView(GridView& view, const KnotGraph& graph) { view.fill(lineBox(graph), 0, kFilledEdge); }

void drawKnot(Surface& surface, const KnotCurve& curve, const KnotStyle& style, const GridView& view,
              bool quick) {
  if (surface.isRaster() && isFinelyWoven(curve, style, view, quick))
    return drawLaidBands(surface, curve, style, view);
  OutlineOptions options = drawingWidths(surface, style, view);
  if (quick) options.mostClipped = kMostClippedLive;
  BandOutlines outlines = bandOutlines(curve, view, options);
  if (!outlines.complete)
    return surface.isRaster() ? drawLaidBands(surface, curve, style, view)
                              : drawClassicKnot(surface, curve, style, view);
  const Seam seam = seamOf(curve, view);
  const SeamClip clip(surface, seam);
  drawEdges(surface, outlines, curve, style, view);
  surface.beginGroup("strands");
  std::vector<BandContour> shapes;
  for (StrandOutline& strand : outlines.strands) {
    surface.beginGroup("strand-" + std::to_string(strand.slot));
    shapes.clear();
    for (BandStretch& stretch : strand.stretches) {
      appendCopies(seam, std::move(stretch.contours), shapes);
      if (surface.isRaster()) continue;  // all at once
      surface.fillPath(shapes, style.bandColour(strand.slot));
      shapes.clear();
    }
    if (!shapes.empty()) surface.fillPath(shapes, style.bandColour(strand.slot));
    surface.endGroup();
  }
  surface.endGroup();
}

void drawClassicKnot(Surface& surface, const KnotCurve& curve, const KnotStyle& style, const GridView& view) {
  const SeamClip clip(surface, seamOf(curve, view));
  BandPainter painter(surface, curve, style, view);
  surface.beginGroup("strands");
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    if (!curve.used(slot)) continue;
    surface.beginGroup("strand-" + std::to_string(slot));
    painter.strand(slot);
    surface.endGroup();
  }
  surface.endGroup();
  surface.beginGroup("over-crossings");
  std::vector<OverRun> runs;
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    if (!curve.used(slot)) continue;
    overRuns(curve, slot, runs);
    surface.beginGroup("over-" + std::to_string(slot));
    for (const OverRun& run : runs) {
      painter.overRun(slot, run);
      surface.refresh();
    }
    surface.endGroup();
  }
  surface.endGroup();
}

void drawKnotEdges(Surface& surface, const KnotCurve& curve, const KnotStyle& style, const GridView& view) {
  OutlineOptions options = drawingWidths(surface, style, view);
  options.uncut = true;
  BandOutlines outlines = bandOutlines(curve, view, options);
  const SeamClip clip(surface, seamOf(curve, view));
  drawEdges(surface, outlines, curve, style, view);
}

void drawPictureGround(Surface& surface, const KnotGraph& graph, const GridView& view,
                       const PictureOptions& options) {
  if (options.transparent)
    surface.clearTransparent(options.background);
  else
    surface.clear(options.background);
  if (!options.showGrid) return;
  surface.beginGroup("grid");
  drawGridLines(graph, surface, view, options.grid);
  surface.endGroup();
}

void drawKnotPicture(Surface& surface, const KnotGraph& graph, const KnotCurve& curve, const KnotStyle& style,
                     const GridView& view, const PictureOptions& options) {
  drawPictureGround(surface, graph, view, options);
  if (options.classic)
    drawClassicKnot(surface, curve, style, view);
  else
    drawKnot(surface, curve, style, view, options.quick);
}

}  // namespace lorivan
