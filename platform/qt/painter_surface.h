// A surface on a painter of lines and shapes: what is drawn on paper.
#pragma once

#include <QPainter>

#include "platform/surface.h"

namespace lorivan {

/// The painter must be active and outlive it.
class PainterSurface final : public Surface {
 public:
  PainterSurface(QPainter& painter, int width, int height)
      : painter_(painter), width_(width), height_(height) {}

  int width() const override { return width_; }
  int height() const override { return height_; }
  bool isRaster() const override { return false; }
  void clear(Colour background) override;
  void segment(PointI from, PointI to, const Pen& pen) override;
  void circle(PointI centre, int radius, const Pen& pen) override;
  void dot(PointI centre, int diameter, Colour colour) override;
  void polygonOutline(std::span<const PointI> points, const Pen& pen) override;
  void polyline(std::span<const PointI> points, const Pen& pen) override;
  void fillPolygon(std::span<const PointI> points, Colour colour) override;
  void wideCurve(const WideCurve& curve) override;
  void fillPath(std::span<const std::vector<PointF>> contours, Colour colour) override;
  void beginClip(double left, double right) override;
  void endClip() override { painter_.restore(); }
  Colour pixel(PointI) const override { return background_; }

 private:
  QPainter& with(const Pen& pen);
  QPainter& filling(Colour colour);

  QPainter& painter_;
  int width_, height_;
};

}  // namespace lorivan
