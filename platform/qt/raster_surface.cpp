#include "platform/qt/raster_surface.h"

#include <algorithm>
#include <new>

#include "platform/common/pixels.h"
#include "platform/common/wide_curve.h"
#include "platform/common/wide_registers.h"
#include "platform/qt/painting.h"

namespace lorivan {
namespace {

Result<QImage> makeImage(int width, int height) {
  if (const Status size = checkPictureSize(width, height); !size) return size.error();
  QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
  if (image.isNull())
    return unwritable("there is not enough memory for a picture of {1} x {2} pixels", width, height);
  image.setDotsPerMeterX(3780);  // 96 dpi, whatever the screen: the same file everywhere
  image.setDotsPerMeterY(3780);
  return image;
}

}  // namespace

RasterSurface::RasterSurface(QImage image) : image_(std::move(image)) { clear(0xFFFFFF); }

Result<std::unique_ptr<RasterSurface>> RasterSurface::create(int width, int height) {
  auto image = makeImage(width, height);
  if (!image) return image.error();
  return std::unique_ptr<RasterSurface>(new RasterSurface(std::move(*image)));
}

Status RasterSurface::resize(int width, int height) {
  auto image = makeImage(width, height);
  if (!image) return image.error();
  endPainter();
  image_ = std::move(*image);
  fault_.clear();
  clear(0xFFFFFF);
  return {};
}

void RasterSurface::fail(std::string reason) {
  if (fault_.empty()) fault_ = std::move(reason);
}

void RasterSurface::endPainter() {
  if (!painter_.isActive()) return;
  painter_.end();
  leaveWideRegisters();
}

PathFiller& RasterSurface::shapes() {
  drawn_ = true;
  endPainter();
  return shapes_;
}

void RasterSurface::paintShapes() const {
  if (shapes_.empty()) return;
  leaveWideRegisters();  // whoever looks may be painting elsewhere
  shapes_.paint(pixels());
}

PixelBlock RasterSurface::pixels() const {
  return {reinterpret_cast<std::uint32_t*>(image_.bits()), image_.width(), image_.height(),
          static_cast<int>(image_.bytesPerLine() / 4)};
}

QPainter* RasterSurface::painter() {
  drawn_ = true;
  paintShapes();
  if (!painter_.isActive() && !painter_.begin(&image_)) {
    fail(tr("the picture cannot be drawn on"));
    return nullptr;
  }
  return &painter_;
}

/// Has something drawn with the painter, if there is one.
template <class Draw>
void RasterSurface::paint(Draw&& draw) {
  QPainter* const p = painter();
  if (!p) return;
  draw(*p);
  leaveWideRegisters();
}

template <class Draw>
void RasterSurface::paintWith(const Pen& pen, Draw&& draw) {
  if (pen.width < 1 || pen.width > kLongestSide) {
    return fail(tr("a pen of {1} pixels cannot be made", pen.width));
  }
  paint([&](QPainter& p) {
    p.setPen(toPen(pen));
    p.setBrush(Qt::NoBrush);
    draw(p);
  });
}

const QImage& RasterSurface::image() {
  endPainter();
  paintShapes();
  return image_;
}

void RasterSurface::fillAll(QColor colour) {
  endPainter();
  shapes_.forget();
  const PixelBlock block = pixels();
  const std::uint32_t argb = qPremultiply(colour.rgba());
  for (int y = 0; y < block.height; ++y)
    std::fill_n(block.pixels + static_cast<std::ptrdiff_t>(y) * block.stride, block.width, argb);
  drawn_ = true;
}

void RasterSurface::clear(Colour background) {
  background_ = background;
  transparent_ = false;
  fillAll(toQColor(background));
}

void RasterSurface::clearTransparent(Colour background) {
  background_ = background;
  transparent_ = true;
  fillAll(Qt::transparent);
}

void RasterSurface::segment(PointI from, PointI to, const Pen& pen) {
  paintWith(pen, [&](QPainter& p) { p.drawLine(toPoint(from), toPoint(to)); });
}

void RasterSurface::circle(PointI centre, int radius, const Pen& pen) {
  if (radius < 0) return;
  paintWith(pen, [&](QPainter& p) { p.drawEllipse(toPoint(centre), radius, radius); });
}

void RasterSurface::dot(PointI centre, int diameter, Colour colour) {
  if (diameter < 1) return;
  paint([&](QPainter& p) {
    fillDotRows(centre, diameter,
                [&](int left, int y, int width) { p.fillRect(left, y, width, 1, toQColor(colour)); });
  });
}

void RasterSurface::polygonOutline(std::span<const PointI> points, const Pen& pen) {
  if (points.empty()) return;
  paintWith(pen, [&](QPainter& p) { p.drawPolygon(toPolygon(points)); });
}

void RasterSurface::polyline(std::span<const PointI> points, const Pen& pen) {
  if (points.empty()) return;
  paintWith(pen, [&](QPainter& p) { p.drawPolyline(toPolygon(points)); });
}

void RasterSurface::fillPolygon(std::span<const PointI> points, Colour colour) {
  if (points.size() < 3) return;
  paint([&](QPainter& p) {
    p.setPen(Qt::NoPen);
    p.setBrush(toQColor(colour));
    p.drawPolygon(toPolygon(points));
  });
}

void RasterSurface::wideCurve(const WideCurve& curve) {
  if (!addWideCurve(shapes(), curve)) fail(tr("a curve cannot be drawn"));
}

void RasterSurface::edgedCurve(const WideCurve& curve, float edge) {
  if (!addEdgedCurve(shapes(), curve, edge)) fail(tr("a curve cannot be drawn"));
}

void RasterSurface::fillPath(std::span<const std::vector<PointF>> contours, Colour colour) {
  if (!shapes().add(contours, colour)) fail(tr("a shape has points that cannot be drawn"));
}

Colour RasterSurface::pixel(PointI at) const {
  if (at.x < 0 || at.y < 0 || at.x >= image_.width() || at.y >= image_.height()) return background_;
  paintShapes();
  return overBackground(reinterpret_cast<const QRgb*>(image_.constScanLine(at.y))[at.x], background_);
}

PixelBlock RasterSurface::lendPixels() {
  drawn_ = true;
  endPainter();
  paintShapes();
  return pixels();
}

void RasterSurface::refresh() {
  if (show_) show_();
}

}  // namespace lorivan
