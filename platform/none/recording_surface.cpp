#include "platform/none/recording_surface.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/numbers.h"

namespace lorivan {
namespace {

PointF toFloat(PointI p) { return {static_cast<float>(p.x), static_cast<float>(p.y)}; }

/// Cuts the line to the box by Liang and Barsky's rule; false when nothing of it is left.
bool clipLine(PointF& from, PointF& to, float left, float top, float right, float bottom) {
  const float dx = to.x - from.x, dy = to.y - from.y;
  float enter = 0, leave = 1;
  for (const auto& [p, q] :
       {std::pair{-dx, from.x - left}, {dx, right - from.x}, {-dy, from.y - top}, {dy, bottom - from.y}}) {
    if (p == 0 && q < 0) return false;
    if (p == 0) continue;
    const float t = q / p;
    if (p < 0)
      enter = std::max(enter, t);
    else
      leave = std::min(leave, t);
  }
  if (enter > leave) return false;
  const PointF start = from;
  from = {start.x + enter * dx, start.y + enter * dy};
  to = {start.x + leave * dx, start.y + leave * dy};
  return true;
}

PointF bezierAt(const PointF* p, float t) {
  const float u = 1 - t;
  const float a = u * u * u, b = 3 * u * u * t, c = 3 * u * t * t, d = t * t * t;
  return {a * p[0].x + b * p[1].x + c * p[2].x + d * p[3].x,
          a * p[0].y + b * p[1].y + c * p[2].y + d * p[3].y};
}

}  // namespace

RecordingSurface::RecordingSurface(int width, int height, bool raster)
    : width_(width),
      height_(height),
      raster_(raster),
      pixels_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0xFFFFFFFF) {}

void RecordingSurface::record(DrawKind kind, std::vector<PointF> points, float size, Colour colour) {
  calls_.push_back({kind, std::move(points), size, colour, false, CapStyle::round, {}});
}

void RecordingSurface::record(DrawKind kind, std::span<const PointI> points, const Pen& pen) {
  std::vector<PointF> copy(points.size());
  std::ranges::transform(points, copy.begin(), toFloat);
  record(kind, std::move(copy), static_cast<float>(pen.width), pen.colour);
  calls_.back().dotted = pen.dotted;
}

int RecordingSurface::count(DrawKind kind) const {
  return static_cast<int>(std::ranges::count(calls_, kind, &DrawCall::kind));
}

int RecordingSurface::inked() const {
  const std::uint32_t paper = toArgb(background_, 0);
  return static_cast<int>(
      std::ranges::count_if(pixels(), [paper](std::uint32_t p) { return (p & 0xFFFFFF) != paper; }));
}

void RecordingSurface::clear(Colour background) {
  background_ = background;
  ++clears_;
  calls_.clear();
  record(DrawKind::clear, {}, 0, background);
  painted_ = 1;
  std::ranges::fill(pixels_, toArgb(background));
}

void RecordingSurface::clearTransparent(Colour background) {
  clear(background);
  std::ranges::fill(pixels_, toArgb(background, 0));
}

void RecordingSurface::put(int x, int y, Colour colour) const {
  if (x < 0 || y < 0 || x >= width_ || y >= height_) return;
  pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x)] =
      toArgb(colour);
}

void RecordingSurface::thinLine(PointF from, PointF to, Colour colour, bool dotted) const {
  if (!clipLine(from, to, -1, -1, static_cast<float>(width_), static_cast<float>(height_))) return;
  const float dx = to.x - from.x, dy = to.y - from.y;
  const int steps = toInt32(std::max(std::fabs(dx), std::fabs(dy)));
  for (int i = 0; i <= steps; ++i) {
    if (dotted && i % 2 == 1) continue;
    const float t = steps == 0 ? 0 : static_cast<float>(i) / static_cast<float>(steps);
    put(toInt32(from.x + t * dx), toInt32(from.y + t * dy), colour);
  }
}

void RecordingSurface::line(PointF from, PointF to, const DrawCall& pen) const {
  if (pen.size <= 1)
    thinLine(from, to, pen.colour, pen.dotted);
  else
    band(from, to, pen.size, pen.colour);
}

void RecordingSurface::disc(PointF centre, float radius, Colour colour) const {
  const auto limit = [](float v, int end) { return toInt32(std::clamp(v, -1.F, static_cast<float>(end))); };
  const int top = limit(centre.y - radius, height_), bottom = limit(centre.y + radius, height_);
  const int left = limit(centre.x - radius, width_), right = limit(centre.x + radius, width_);
  for (int y = top; y <= bottom; ++y)
    for (int x = left; x <= right; ++x)
      if (std::hypot(static_cast<float>(x) - centre.x, static_cast<float>(y) - centre.y) <= radius)
        put(x, y, colour);
}

void RecordingSurface::fill(std::span<const std::vector<PointF>> contours, bool winding,
                            Colour colour) const {
  float least = 1e9F, most = -1e9F;
  for (const auto& points : contours)
    for (const PointF& p : points) {
      least = std::min(least, p.y);
      most = std::max(most, p.y);
    }
  const int top = toInt32(std::clamp(std::floor(least), 0.F, static_cast<float>(height_)));
  const int bottom = toInt32(std::clamp(std::ceil(most), -1.F, static_cast<float>(height_ - 1)));
  std::vector<std::pair<float, int>> crossings;  // x, and up or down
  for (int row = top; row <= bottom; ++row) {
    const auto y = static_cast<float>(row);
    crossings.clear();
    for (const auto& points : contours)
      for (std::size_t i = 0; i < points.size(); ++i) {
        const PointF& a = points[i];
        const PointF& b = points[i + 1 == points.size() ? 0 : i + 1];
        if ((a.y <= y) != (b.y <= y))
          crossings.emplace_back(a.x + (y - a.y) / (b.y - a.y) * (b.x - a.x), a.y <= y ? 1 : -1);
      }
    std::ranges::sort(crossings);
    int inside = 0;
    for (std::size_t i = 0; i + 1 < crossings.size(); ++i) {
      inside += winding ? crossings[i].second : 1;
      if (winding ? inside == 0 : inside % 2 == 0) continue;
      const int end = std::min(width_, toInt32(std::ceil(crossings[i + 1].first)));
      for (int x = std::max(0, toInt32(std::ceil(crossings[i].first))); x < end; ++x) put(x, row, colour);
    }
  }
}

void RecordingSurface::band(PointF from, PointF to, float width, Colour colour) const {
  const float dx = to.x - from.x, dy = to.y - from.y, length = std::hypot(dx, dy);
  if (length == 0) return;
  const float nx = -dy / length * width / 2, ny = dx / length * width / 2;
  const std::vector<PointF> corners = {
      {from.x + nx, from.y + ny}, {to.x + nx, to.y + ny}, {to.x - nx, to.y - ny}, {from.x - nx, from.y - ny}};
  fill({&corners, 1}, false, colour);
}

void RecordingSurface::circle(PointF centre, float radius, Colour colour) const {
  const int steps = std::clamp(toInt32(radius) * 8, 8, 4096);
  for (int i = 0; i < steps; ++i) {
    const double angle = kTwoPi * i / steps;
    put(toInt32(centre.x + radius * std::cos(angle)), toInt32(centre.y + radius * std::sin(angle)), colour);
  }
}

void RecordingSurface::wideCurve(const DrawCall& curve) const {
  constexpr int kPieces = 6;
  const bool rounded = curve.caps == CapStyle::round;
  for (std::size_t i = 0; i + 3 < curve.points.size(); i += 3)
    for (int piece = 0; piece < kPieces; ++piece) {
      const PointF* p = &curve.points[i];
      const PointF from = bezierAt(p, static_cast<float>(piece) / kPieces);
      const PointF to = bezierAt(p, static_cast<float>(piece + 1) / kPieces);
      band(from, to, curve.size, curve.colour);
      // Discs close the wedges between pieces; at a flat start there is none.
      if (rounded || i + static_cast<std::size_t>(piece) > 0) disc(from, curve.size / 2, curve.colour);
    }
  if (rounded && curve.points.size() >= 4) disc(curve.points.back(), curve.size / 2, curve.colour);
}

void RecordingSurface::path(const DrawCall& call) const {
  constexpr int kPieces = 8;
  std::vector<std::vector<PointF>> flat;
  std::size_t begin = 0;
  for (const std::size_t end : call.ends) {
    flat.emplace_back();
    for (std::size_t i = begin; i + 3 < end; i += 3)
      for (int piece = 0; piece < kPieces; ++piece)
        flat.back().push_back(bezierAt(&call.points[i], static_cast<float>(piece) / kPieces));
    begin = end;
  }
  fill(flat, true, call.colour);
}

void RecordingSurface::paintCalls() const {
  while (painted_ < calls_.size()) paint(calls_[painted_++]);
}

void RecordingSurface::paint(const DrawCall& call) const {
  const std::vector<PointF>& points = call.points;
  switch (call.kind) {
    case DrawKind::segment:
    case DrawKind::polyline:
    case DrawKind::polygonOutline:
      for (std::size_t i = 0; i + 1 < points.size(); ++i) line(points[i], points[i + 1], call);
      if (call.kind == DrawKind::polygonOutline && !points.empty()) line(points.back(), points.front(), call);
      break;
    case DrawKind::circle:
      circle(points.front(), call.size, call.colour);
      break;
    case DrawKind::dot:
      disc(points.front(), call.size / 2, call.colour);
      break;
    case DrawKind::fillPolygon:
      if (points.size() > 2) fill({&points, 1}, false, call.colour);
      break;
    case DrawKind::wideCurve:
      wideCurve(call);
      break;
    case DrawKind::fillPath:
      path(call);
      break;
    case DrawKind::clear:
    case DrawKind::refresh:
      break;
  }
}

void RecordingSurface::segment(PointI from, PointI to, const Pen& pen) {
  record(DrawKind::segment, std::array{from, to}, pen);
}

void RecordingSurface::circle(PointI centre, int radius, const Pen& pen) {
  record(DrawKind::circle, {toFloat(centre)}, static_cast<float>(radius), pen.colour);
}

void RecordingSurface::dot(PointI centre, int diameter, Colour colour) {
  record(DrawKind::dot, {toFloat(centre)}, static_cast<float>(diameter), colour);
}

void RecordingSurface::polygonOutline(std::span<const PointI> points, const Pen& pen) {
  record(DrawKind::polygonOutline, points, pen);
}

void RecordingSurface::polyline(std::span<const PointI> points, const Pen& pen) {
  record(DrawKind::polyline, points, pen);
}

void RecordingSurface::fillPolygon(std::span<const PointI> points, Colour colour) {
  record(DrawKind::fillPolygon, points, {1, colour, false});
}

void RecordingSurface::wideCurve(const WideCurve& curve) {
  record(DrawKind::wideCurve, {curve.bezier.begin(), curve.bezier.end()}, curve.width, curve.colour);
  calls_.back().caps = curve.caps;
}

void RecordingSurface::fillPath(std::span<const std::vector<PointF>> contours, Colour colour) {
  record(DrawKind::fillPath, std::vector<PointF>(), 0, colour);
  DrawCall& call = calls_.back();
  for (const std::vector<PointF>& contour : contours) {
    call.points.insert(call.points.end(), contour.begin(), contour.end());
    call.ends.push_back(call.points.size());
  }
}

Colour RecordingSurface::pixel(PointI at) const {
  if (at.x < 0 || at.y < 0 || at.x >= width_ || at.y >= height_) return background_;
  return fromArgb(pixels()[static_cast<std::size_t>(at.y) * static_cast<std::size_t>(width_) +
                           static_cast<std::size_t>(at.x)]);
}

}  // namespace lorivan
