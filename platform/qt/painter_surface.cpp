#include "platform/qt/painter_surface.h"

#include <QPainterPath>

#include "platform/qt/convert.h"
#include "platform/qt/painting.h"

namespace lorivan {

QPainter& PainterSurface::with(const Pen& pen) {
  painter_.setPen(toPen(pen));
  painter_.setBrush(Qt::NoBrush);
  return painter_;
}

QPainter& PainterSurface::filling(Colour colour) {
  painter_.setPen(Qt::NoPen);
  painter_.setBrush(toQColor(colour));
  return painter_;
}

void PainterSurface::clear(Colour background) {
  background_ = background;
  if (background != 0xFFFFFF) painter_.fillRect(0, 0, width_, height_, toQColor(background));
}

void PainterSurface::segment(PointI from, PointI to, const Pen& pen) {
  with(pen).drawLine(toPoint(from), toPoint(to));
}

void PainterSurface::circle(PointI centre, int radius, const Pen& pen) {
  with(pen).drawEllipse(toPoint(centre), radius, radius);
}

void PainterSurface::dot(PointI centre, int diameter, Colour colour) {
  filling(colour).drawEllipse(QPointF(toPoint(centre)), diameter / 2.0, diameter / 2.0);
}

void PainterSurface::polygonOutline(std::span<const PointI> points, const Pen& pen) {
  with(pen).drawPolygon(toPolygon(points));
}

void PainterSurface::polyline(std::span<const PointI> points, const Pen& pen) {
  with(pen).drawPolyline(toPolygon(points));
}

void PainterSurface::fillPolygon(std::span<const PointI> points, Colour colour) {
  filling(colour).drawPolygon(toPolygon(points));
}

void PainterSurface::wideCurve(const WideCurve& curve) {
  if (curve.bezier.size() % 3 != 1) return;
  const auto caps = curve.caps == CapStyle::round ? Qt::RoundCap : Qt::FlatCap;
  painter_.strokePath(toPath(curve.bezier), QPen(toQColor(curve.colour), static_cast<double>(curve.width),
                                                 Qt::SolidLine, caps, Qt::RoundJoin));
}

void PainterSurface::beginClip(double left, double right) {
  painter_.save();
  painter_.setClipRect(QRectF(left, 0, right - left, height_), Qt::IntersectClip);
}

void PainterSurface::fillPath(std::span<const std::vector<PointF>> contours, Colour colour) {
  QPainterPath whole;
  whole.setFillRule(Qt::WindingFill);
  for (const std::vector<PointF>& contour : contours) {
    if (contour.size() < 4) continue;
    whole.addPath(toPath(contour));
    whole.closeSubpath();
  }
  painter_.fillPath(whole, toQColor(colour));
}

}  // namespace lorivan
