#include "strands/drawn_box.h"

#include <algorithm>
#include <optional>

#include "strands/band_paths.h"

namespace lorivan {
namespace {

class Extent {
 public:
  PictureBox box() const {
    if (!held_ || box_.left > box_.right) return box_;
    return {held_->left, box_.top, held_->right, box_.bottom};
  }
  /// A wrapped knot reaches from seam to seam.
  void hold(double left, double right) { held_ = {left, 0, right, 0}; }

  void add(double x, double y, double margin) {
    box_ = {std::min(box_.left, x - margin), std::min(box_.top, y - margin), std::max(box_.right, x + margin),
            std::max(box_.bottom, y + margin)};
  }
  void add(std::span<const PointF> bezier, double margin) {
    for (std::size_t i = 0; i + 3 < bezier.size(); i += 3) {
      const PointF &a = bezier[i], &b = bezier[i + 1], &c = bezier[i + 2], &d = bezier[i + 3];
      PictureBox piece = kEmptyBox;
      addExtremes(a.x, b.x, c.x, d.x, piece.left, piece.right);
      addExtremes(a.y, b.y, c.y, d.y, piece.top, piece.bottom);
      add(piece.left, piece.top, margin);
      add(piece.right, piece.bottom, margin);
    }
  }

 private:
  PictureBox box_ = kEmptyBox;
  std::optional<PictureBox> held_;
};

/// Draws nothing. Ends of bands that are cut off straight always lie on a band that goes on.
class MeasuringSurface final : public Surface {
 public:
  explicit MeasuringSurface(const GridView& view) : view_(view) {}

  PictureBox box() const { return extent_.box(); }

  int width() const override { return view_.width; }
  int height() const override { return view_.height(); }
  bool isRaster() const override { return false; }
  Colour pixel(PointI) const override { return background_; }
  void clear(Colour) override {}
  void segment(PointI from, PointI to, const Pen& pen) override {
    for (const PointI p : {from, to}) extent_.add(p.x, p.y, pen.width / 2.0);
  }
  void circle(PointI centre, int radius, const Pen& pen) override {
    extent_.add(centre.x, centre.y, radius + pen.width / 2.0);
  }
  void dot(PointI centre, int diameter, Colour) override { extent_.add(centre.x, centre.y, diameter / 2.0); }
  void polygonOutline(std::span<const PointI> points, const Pen& pen) override { polyline(points, pen); }
  void polyline(std::span<const PointI> points, const Pen& pen) override {
    for (const PointI p : points) extent_.add(p.x, p.y, pen.width / 2.0);
  }
  void fillPolygon(std::span<const PointI> points, Colour) override {
    for (const PointI p : points) extent_.add(p.x, p.y, 0);
  }
  void wideCurve(const WideCurve& curve) override { extent_.add(curve.bezier, curve.width / 2.0); }
  void fillPath(std::span<const std::vector<PointF>> contours, Colour) override {
    for (const auto& contour : contours) extent_.add(contour, 0);
  }
  void beginClip(double left, double right) override { extent_.hold(left, right); }

 private:
  const GridView& view_;
  Extent extent_;
};

class MeasuringMetafile final : public Metafile {
 public:
  PictureBox box() const { return extent_.box(); }

  void strokePath(std::span<const PointI> points, bool, int width, Colour) override {
    for (const PointI p : points) extent_.add(p.x, p.y, width / 2.0);
  }
  void clip(PointI upperLeft, PointI lowerRight) override { extent_.hold(upperLeft.x, lowerRight.x); }
  Result<std::string> finish() override { return std::string(); }

 private:
  Extent extent_;
};

}  // namespace

PictureBox drawnBox(const KnotCurve& curve, const KnotStyle& style, const GridView& view, bool classic) {
  MeasuringSurface surface(view);
  if (classic)
    drawClassicKnot(surface, curve, style, view);
  else
    drawKnotEdges(surface, curve, style, view);
  return surface.box();
}

PictureBox strokedBox(const KnotCurve& curve, const KnotStyle& style, const GridView& view) {
  MeasuringMetafile metafile;
  strokeBands(metafile, curve, style, view);
  return metafile.box();
}

}  // namespace lorivan
