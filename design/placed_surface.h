// A rectangle of a surface as a surface of its own.
#pragma once

#include <vector>

#include "platform/surface.h"

namespace lorivan {

/// Draws into a rectangle of another surface, whose pixels or elements it moves there. Nothing is cut off at
/// the rectangle's edges. The other surface must outlive it.
class PlacedSurface final : public Surface {
 public:
  PlacedSurface(Surface& whole, PointI corner, int width, int height)
      : whole_(whole), corner_(corner), width_(width), height_(height) {}

  int width() const override { return width_; }
  int height() const override { return height_; }
  bool isRaster() const override { return whole_.isRaster(); }
  void clear(Colour background) override;
  void segment(PointI from, PointI to, const Pen& pen) override {
    whole_.segment(moved(from), moved(to), pen);
  }
  void circle(PointI centre, int radius, const Pen& pen) override {
    whole_.circle(moved(centre), radius, pen);
  }
  void dot(PointI centre, int diameter, Colour colour) override {
    whole_.dot(moved(centre), diameter, colour);
  }
  void polygonOutline(std::span<const PointI> points, const Pen& pen) override {
    whole_.polygonOutline(moved(points), pen);
  }
  void polyline(std::span<const PointI> points, const Pen& pen) override {
    whole_.polyline(moved(points), pen);
  }
  void fillPolygon(std::span<const PointI> points, Colour colour) override {
    whole_.fillPolygon(moved(points), colour);
  }
  void wideCurve(const WideCurve& curve) override;
  void fillPath(std::span<const std::vector<PointF>> contours, Colour colour) override;
  Colour pixel(PointI at) const override { return whole_.pixel(moved(at)); }
  /// The part of the rectangle that lies on the surface; empty when some of it does not.
  PixelBlock lendPixels() override;
  /// Groups have names of one picture; a surface that holds several has none.
  void beginGroup(std::string_view) override {}
  void endGroup() override {}
  std::string fault() const override { return whole_.fault(); }

 private:
  PointI moved(PointI p) const { return {p.x + corner_.x, p.y + corner_.y}; }
  PointF moved(PointF p) const {
    return {p.x + static_cast<float>(corner_.x), p.y + static_cast<float>(corner_.y)};
  }
  std::span<const PointI> moved(std::span<const PointI> points);

  Surface& whole_;
  PointI corner_;
  int width_, height_;
  std::vector<PointI> points_;
  std::vector<PointF> curve_;
  std::vector<std::vector<PointF>> contours_;
};

}  // namespace lorivan
