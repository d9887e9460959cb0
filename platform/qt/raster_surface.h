// A surface on a QImage. Works without an application object and without a display.
#pragma once

#include <QImage>
#include <QPainter>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/common/path_fill.h"
#include "platform/surface.h"

namespace lorivan {

class RasterSurface final : public Surface {
 public:
  /// A white picture; an error when the size is not allowed or the memory is not there.
  static Result<std::unique_ptr<RasterSurface>> create(int width, int height);

  int width() const override { return image_.width(); }
  int height() const override { return image_.height(); }
  void clear(Colour background) override;
  void clearTransparent(Colour background) override;
  void segment(PointI from, PointI to, const Pen& pen) override;
  void circle(PointI centre, int radius, const Pen& pen) override;
  void dot(PointI centre, int diameter, Colour colour) override;
  void polygonOutline(std::span<const PointI> points, const Pen& pen) override;
  void polyline(std::span<const PointI> points, const Pen& pen) override;
  void fillPolygon(std::span<const PointI> points, Colour colour) override;
  void wideCurve(const WideCurve& curve) override;
  void edgedCurve(const WideCurve& curve, float edge) override;
  void fillPath(std::span<const std::vector<PointF>> contours, Colour colour) override;
  Colour pixel(PointI at) const override;
  PixelBlock lendPixels() override;
  void refresh() override;
  std::string fault() const override { return fault_; }

  /// What was drawn so far, to copy or to paint from.
  const QImage& image();
  bool isTransparent() const { return transparent_; }
  /// Starts anew with another size, white. On an error the picture stays as it is.
  Status resize(int width, int height);
  /// Whether anything may have been drawn since the last call.
  bool takeDrawn() { return std::exchange(drawn_, false); }
  /// Called by refresh().
  void onRefresh(std::function<void()> show) { show_ = std::move(show); }

 private:
  explicit RasterSurface(QImage image);
  void fillAll(QColor colour);
  QPainter* painter();
  template <class Draw>
  void paint(Draw&& draw);
  template <class Draw>
  void paintWith(const Pen& pen, Draw&& draw);
  void endPainter();
  PixelBlock pixels() const;
  void fail(std::string reason);
  /// To add shapes to those that wait; whoever sees the image has them painted first.
  PathFiller& shapes();
  void paintShapes() const;

  mutable QImage image_;
  mutable PathFiller shapes_;
  QPainter painter_;  // kept open between calls; closed before anybody else sees the image
  std::function<void()> show_;
  std::string fault_;
  bool transparent_ = false;
  bool drawn_ = true;
};

}  // namespace lorivan
