// The drawing contract's points, pens and chains in Qt's words.
#pragma once

#include <QPainterPath>
#include <QPen>
#include <QPolygon>
#include <algorithm>
#include <span>

#include "platform/qt/convert.h"
#include "platform/surface.h"

namespace lorivan {

/// Points further out than this are held at it: painters compute in 32-bit fixed point.
inline constexpr int kFarthest = 1 << 20;

inline QPoint toPoint(PointI p) {
  return {std::clamp(p.x, -kFarthest, kFarthest), std::clamp(p.y, -kFarthest, kFarthest)};
}

inline QPolygon toPolygon(std::span<const PointI> points) {
  QPolygon polygon;
  polygon.reserve(static_cast<qsizetype>(points.size()));
  for (const PointI p : points) polygon.append(toPoint(p));
  return polygon;
}

inline QPen toPen(const Pen& pen) {
  QPen made(toQColor(pen.colour), pen.width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
  if (pen.dotted) {
    made.setCapStyle(Qt::FlatCap);
    made.setDashPattern({1, 2});
  }
  return made;
}

/// An open chain of cubic Bezier segments.
inline QPainterPath toPath(std::span<const PointF> points) {
  const auto at = [&](std::size_t i) { return QPointF(points[i].x, points[i].y); };
  QPainterPath path(at(0));
  for (std::size_t i = 1; i + 2 < points.size(); i += 3) path.cubicTo(at(i), at(i + 1), at(i + 2));
  return path;
}

}  // namespace lorivan
