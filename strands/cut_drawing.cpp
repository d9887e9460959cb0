#include "strands/cut_drawing.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace lorivan {
namespace {

constexpr double kLeastRoom = 0.1;        // millimetres between the cuts of two pieces
constexpr double kLeastRoomShare = 0.05;  // of a band that is narrow
constexpr double kSamePlace = 1e-3;       // units

bool isSame(PointF a, PointF b) { return std::hypot(a.x - b.x, a.y - b.y) < kSamePlace; }

/// A segment of a contour, by the number of its first point.
struct Cap {
  std::size_t shape, at;
};

class CapJoiner {
 public:
  explicit CapJoiner(std::vector<CutShape>& shapes) : shapes_(shapes) {}

  /// Two pieces that end at one line, from both sides, become one without that line.
  void run() {
    for (std::size_t shape = 0; shape < shapes_.size(); ++shape)
      for (std::size_t at = 0; shapes_[shape].size() == 1 && at + 3 < shapes_[shape][0].size();)
        if (const auto other = findOther({shape, at}); !other)
          at += 3;
        else {
          join({shape, at}, *other);
          at = 0;
        }
    std::erase_if(shapes_, [](const CutShape& shape) { return shape.empty(); });
  }

 private:
  std::optional<Cap> findOther(Cap cap) const {
    const BandContour& contour = shapes_[cap.shape][0];
    const PointF from = contour[cap.at], to = contour[cap.at + 3];
    if (isSame(from, to)) return {};
    for (std::size_t shape = cap.shape; shape < shapes_.size(); ++shape) {
      if (shapes_[shape].size() != 1) continue;
      const BandContour& other = shapes_[shape][0];
      for (std::size_t at = shape == cap.shape ? cap.at + 3 : 0; at + 3 < other.size(); at += 3)
        if (isSame(other[at], to) && isSame(other[at + 3], from)) return Cap{shape, at};
    }
    return {};
  }

  /// The contour from the end of one segment on to the beginning of another one, further on or the same.
  static BandContour between(const BandContour& contour, std::size_t after, std::size_t before) {
    BandContour part{contour[after + 3 < contour.size() ? after + 3 : 0]};
    const std::size_t last = contour.size() - 1;
    for (std::size_t i = (after + 3) % last; i != before % last; i = (i + 3) % last)
      part.insert(part.end(), contour.begin() + static_cast<std::ptrdiff_t>(i + 1),
                  contour.begin() + static_cast<std::ptrdiff_t>(i + 4));
    return part;
  }

  static BandContour closed(BandContour contour) {
    contour.back() = contour.front();
    return contour;
  }

  void join(Cap one, Cap two) {
    CutShape& first = shapes_[one.shape];
    if (one.shape == two.shape) {
      CutShape ring;
      for (BandContour part : {between(first[0], one.at, two.at), between(first[0], two.at, one.at)})
        if (part.size() > 3) ring.push_back(closed(std::move(part)));
      first = std::move(ring);
      return;
    }
    BandContour way = between(first[0], one.at, one.at);
    const BandContour back = between(shapes_[two.shape][0], two.at, two.at);
    way.insert(way.end(), back.begin() + 1, back.end());
    first = {closed(std::move(way))};
    shapes_[two.shape].clear();
  }

  std::vector<CutShape>& shapes_;
};

OutlineOptions outlineOptions(const KnotStyle& style, const GridView& view) {
  OutlineOptions options;
  options.band = style.innerWidth() * view.pixelFactor();
  options.outer = std::max(style.outerWidth() * view.pixelFactor(), options.band);
  return options;
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

CutStrand cutStrand(StrandOutline&& outline, const KnotStyle& style, const CutOptions& options) {
  CutStrand strand{outline.slot, style.bandColour(outline.slot), {}, {}};
  for (BandStretch& stretch : outline.stretches) {
    if (options.outlines) strand.shapes.push_back(std::move(stretch.contours));
    if (stretch.centre.size() > 3) strand.centres.push_back(std::move(stretch.centre));
  }
  if (!options.outlines && !options.broken) strand.centres = {std::move(outline.centre)};
  CapJoiner(strand.shapes).run();
  return strand;
}

CutDrawing drawingOf(const KnotCurve& curve, const KnotStyle& style, const GridView& view,
                     const CutOptions& options, const OutlineOptions& widths) {
  CutDrawing drawing;
  drawing.outlines = options.outlines;
  for (StrandOutline& outline : bandOutlines(curve, view, widths).strands)
    drawing.strands.push_back(cutStrand(std::move(outline), style, options));
  drawing.box = boxOf(drawing);
  return drawing;
}

}  // namespace

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

CutDrawing cutDrawing(const KnotCurve& curve, const KnotStyle& style, const GridView& view,
                      const CutOptions& options) {
  OutlineOptions widths = outlineOptions(style, view);
  double millimetres = options.millimetres;
  if (options.outlines && options.width) {
    const PictureBox cut = drawingOf(curve, style, view, options, widths).box;
    if (cut.right > cut.left) millimetres = *options.width * view.width / (cut.right - cut.left);
  }
  const double units = view.width / millimetres;  // in a millimetre
  if (options.outlines) {
    widths.grow = options.kerf / 2 * units;
    const double least = std::min(kLeastRoom * units, kLeastRoomShare * widths.band);
    widths.gap = std::max(0.0, least + 2 * widths.grow - (widths.outer - widths.band) / 2);
  }
  widths.centres = true;
  CutDrawing drawing = drawingOf(curve, style, view, options, widths);
  drawing.millimetres = millimetres;
  return drawing;
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
