#include "strands/cut_drawing.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <string>

#include "strands/cap_joiner.h"
#include "strands/cut_room.h"
#include "strands/seam_cut.h"

namespace lorivan {
namespace {

constexpr double kLeastRoom = 0.1;        // millimetres between the cuts of two pieces
constexpr double kLeastRoomShare = 0.08;  // of a band that is narrow
constexpr double kLightestLine = 0.5;     // relative luminance
constexpr double kNarrowest = 1.0 / 8;    // of the bands' width, for pieces that would overlap
constexpr int kNarrowings = 7;            // halvings on the way to the width that has room

/// A colour that can be seen as a thin line on white paper: light ones are darkened.
Colour lineColour(Colour colour) {
  while (relativeLuminance(colour) > kLightestLine)
    colour = makeColour(redOf(colour) * 15 / 16, greenOf(colour) * 15 / 16, blueOf(colour) * 15 / 16);
  return colour;
}

OutlineOptions outlineOptions(const KnotStyle& style, const GridView& view) {
  OutlineOptions options;
  options.band = style.innerWidth() * view.pixelFactor();
  options.outer = std::max(style.outerWidth() * view.pixelFactor(), options.band);
  return options;
}

/// To a thousandth of a segment.
void addToBox(PictureBox& box, std::span<const PointF> chain) {
  constexpr int kParts = 32;
  for (std::size_t i = 0; i + 3 < chain.size(); i += 3)
    for (int part = 0; part <= kParts; ++part) {
      const double t = static_cast<double>(part) / kParts, s = 1 - t;
      const double a = s * s * s, b = 3 * s * s * t, c = 3 * s * t * t, d = t * t * t;
      const double x = a * chain[i].x + b * chain[i + 1].x + c * chain[i + 2].x + d * chain[i + 3].x;
      const double y = a * chain[i].y + b * chain[i + 1].y + c * chain[i + 2].y + d * chain[i + 3].y;
      box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x), std::max(box.bottom, y)};
    }
}

PictureBox boxOf(const CutDrawing& drawing) {
  PictureBox box = kEmptyBox;
  for (const CutStrand& strand : drawing.strands) {
    for (const CutShape& shape : strand.shapes)
      for (const BandContour& contour : shape) addToBox(box, contour);
    if (!drawing.outlines)
      for (const auto& centre : strand.centres) addToBox(box, centre);
  }
  return box;
}

std::vector<BandContour> contoursOf(const CutDrawing& drawing) {
  std::vector<BandContour> contours;
  for (const CutStrand& strand : drawing.strands)
    for (const CutShape& shape : strand.shapes) contours.insert(contours.end(), shape.begin(), shape.end());
  return contours;
}

/// Pieces of a wrapped knot end at the seams, with half the cut's width beyond.
CutStrand cutStrand(StrandOutline&& outline, const KnotStyle& style, const CutOptions& options,
                    const Seam& seam, double grow) {
  CutStrand strand{outline.slot, lineColour(style.bandColour(outline.slot)), {}, {}};
  const bool whole = !options.outlines && !options.broken;
  if (whole) strand.centres = chainsAtSeam(seam, outline.centre);
  for (const BandStretch& stretch : outline.stretches) {
    if (options.outlines && !stretch.contours.empty())
      std::ranges::move(cutAtSeam(seam, stretch.contours, grow), std::back_inserter(strand.shapes));
    if (!whole && stretch.centre.size() > 3)
      std::ranges::move(chainsAtSeam(seam, stretch.centre), std::back_inserter(strand.centres));
  }
  return strand;
}

CutDrawing drawingOf(const KnotCurve& curve, const KnotStyle& style, const GridView& view,
                     const CutOptions& options, const OutlineOptions& widths) {
  CutDrawing drawing;
  drawing.outlines = options.outlines;
  BandOutlines outlines = bandOutlines(curve, view, widths);
  drawing.complete = outlines.complete;
  const Seam seam = seamOf(curve, view);
  std::size_t stretches = 0;
  for (const StrandOutline& outline : outlines.strands) stretches += outline.stretches.size();
  const bool isCrowded = static_cast<std::size_t>(outlines.crowded) * 2 > stretches;
  drawing.apart =
      !options.outlines || (outlines.lost == 0 && !isCrowded && outlines.complete && !widths.uncut);
  drawing.tight = outlines.crowded + outlines.lost + outlines.beside;
  for (StrandOutline& outline : outlines.strands)
    drawing.strands.push_back(cutStrand(std::move(outline), style, options, seam, widths.grow));
  drawing.box = boxOf(drawing);
  return drawing;
}

/// Width of the view's whole picture, millimetres, when what lies in the box is as large as it is wanted, and
/// `more` than that.
double pictureWidth(const PictureBox& box, const CutOptions& options, const GridView& view, double more) {
  const double across = box.right - box.left, down = box.bottom - box.top;
  double scale = std::numeric_limits<double>::infinity();
  if (options.width && across > 0) scale = (*options.width + more) / across;
  if (options.height && down > 0) scale = std::min(scale, (*options.height + more) / down);
  return std::isinf(scale) ? options.millimetres : scale * view.width;
}

/// The drawing with bands of a part of their width. Without strands where most crossings have no room, unless
/// it is `wanted` all the same: then with whole bands where the cut takes more than twice as much as a band.
CutDrawing cutNarrowed(const KnotCurve& curve, const KnotStyle& style, const GridView& view,
                       const CutOptions& options, double part, bool wanted = false) {
  OutlineOptions widths = outlineOptions(style, view);
  widths.band *= part;
  widths.outer *= part;
  const bool isSized = options.width || options.height;
  double millimetres = options.millimetres;
  if (isSized)
    millimetres = pictureWidth(drawingOf(curve, style, view, options, widths).box, options, view, 0);
  const double units = view.width / millimetres;  // in a millimetre
  const double least = std::min(kLeastRoom * units, kLeastRoomShare * widths.band);
  widths.grow = options.kerf / 2 * units;
  widths.gap = std::max(0.0, least + 2 * widths.grow - (widths.outer - widths.band) / 2);
  widths.centres = true;
  widths.unlessCrowded = !wanted;
  widths.uncut = wanted && widths.grow > widths.outer;
  CutDrawing drawing = drawingOf(curve, style, view, options, widths);
  // Grown outlines are fitted anew: they are measured once more.
  drawing.millimetres = isSized && drawing.box.right > drawing.box.left
                            ? pictureWidth(drawing.box, options, view, options.kerf)
                            : millimetres;
  drawing.bandWidth = widths.band / units;
  drawing.narrowed = part;
  drawing.apart = drawing.apart && lieApart(contoursOf(drawing), least / 4);
  return drawing;
}

}  // namespace

CutDrawing cutDrawing(const KnotCurve& curve, const KnotStyle& style, const GridView& view,
                      const CutOptions& options) {
  if (!options.outlines) {
    OutlineOptions widths = outlineOptions(style, view);
    widths.centres = true;
    widths.uncut = !options.broken;
    CutDrawing drawing = drawingOf(curve, style, view, options, widths);
    drawing.millimetres = options.millimetres;
    return drawing;
  }
  CutDrawing full = cutNarrowed(curve, style, view, options, 1);
  if (full.apart) return full;
  double low = kNarrowest, high = 1;
  CutDrawing drawing = cutNarrowed(curve, style, view, options, low);
  for (int i = 0; drawing.apart && i < kNarrowings; ++i) {
    const double part = (low + high) / 2;
    CutDrawing wider = cutNarrowed(curve, style, view, options, part);
    (wider.apart ? low : high) = part;
    if (wider.apart) drawing = std::move(wider);
  }
  if (drawing.apart) return drawing;
  if (full.strands.empty()) full = cutNarrowed(curve, style, view, options, 1, true);
  for (CutStrand& strand : full.strands) joinCaps(strand.shapes);
  return full;
}

void drawCut(VectorSurface& surface, const CutDrawing& drawing) {
  if (drawing.outlines) {
    surface.beginGroup("outlines");
    for (const CutStrand& strand : drawing.strands) {
      surface.beginGroup("strand-" + std::to_string(strand.slot));
      for (const CutShape& shape : strand.shapes) surface.strokePath(shape, strand.colour);
      surface.endGroup();
    }
    surface.endGroup();
    surface.beginHiddenGroup("centre-lines");
  } else {
    surface.beginGroup("centre-lines");
  }
  for (const CutStrand& strand : drawing.strands) {
    surface.beginGroup((drawing.outlines ? "centre-" : "strand-") + std::to_string(strand.slot));
    for (const auto& centre : strand.centres) surface.strokePath({&centre, 1}, strand.colour);
    surface.endGroup();
  }
  surface.endGroup();
}

}  // namespace lorivan
