#include "platform/win32/paper_surface.h"

#include <algorithm>
#include <cmath>

#include "platform/win32/checked.h"
#include "platform/win32/handles.h"

namespace lorivan::win32 {
namespace {

constexpr float kFarthestOnPaper = 1'000'000;  // dots; GDI computes with 27 bits

POINT toPoint(PointF p) {
  const auto whole = [](float value) {
    return static_cast<LONG>(std::lround(std::clamp(value, -kFarthestOnPaper, kFarthestOnPaper)));
  };
  return {whole(p.x), whole(p.y)};
}

std::vector<POINT> toPoints(std::span<const PointI> points) {
  std::vector<POINT> made;
  made.reserve(points.size());
  for (const PointI p : points) made.push_back({p.x, p.y});
  return made;
}

OwnedPen penOf(const Pen& pen) {
  const LOGBRUSH brush = {BS_SOLID, pen.colour, 0};
  const auto width = static_cast<DWORD>(std::max(1, pen.width));
  const DWORD dots[] = {width, 2 * width};
  const DWORD look = PS_GEOMETRIC | PS_JOIN_ROUND |
                     (pen.dotted ? PS_ENDCAP_FLAT | PS_USERSTYLE : PS_ENDCAP_ROUND | PS_SOLID);
  return OwnedPen(ExtCreatePen(look, width, &brush, pen.dotted ? 2 : 0, pen.dotted ? dots : nullptr));
}

}  // namespace

template <class Draw>
void PaperSurface::draw(HGDIOBJ pen, HGDIOBJ brush, const char* call, Draw drawIt) {
  const Selection withPen(context_, pen), withBrush(context_, brush);
  if (!(withPen && withBrush && drawIt()) && fault_.empty()) fault_ = systemFault(call);
}

template <class Draw>
void PaperSurface::stroke(const Pen& pen, const char* call, Draw drawIt) {
  const OwnedPen made = penOf(pen);
  draw(made.get(), GetStockObject(NULL_BRUSH), call, drawIt);
}

template <class Draw>
void PaperSurface::fill(Colour colour, const char* call, Draw drawIt) {
  const OwnedBrush made(CreateSolidBrush(colour));
  draw(GetStockObject(NULL_PEN), made.get(), call, drawIt);
}

void PaperSurface::beginClip(double left, double right) {
  const bool clipped =
      SaveDC(context_) != 0 && IntersectClipRect(context_, static_cast<int>(std::lround(left)), 0,
                                                 static_cast<int>(std::lround(right)), height_) != ERROR;
  if (!clipped && fault_.empty()) fault_ = systemFault("IntersectClipRect");
}

void PaperSurface::endClip() {
  if (!RestoreDC(context_, -1) && fault_.empty()) fault_ = systemFault("RestoreDC");
}

void PaperSurface::clear(Colour background) {
  background_ = background;
  const PointI corners[] = {{0, 0}, {width_, 0}, {width_, height_}, {0, height_}};
  if (background != 0xFFFFFF) fillPolygon(corners, background);
}

void PaperSurface::segment(PointI from, PointI to, const Pen& pen) {
  const PointI ends[] = {from, to};
  polyline(ends, pen);
}

void PaperSurface::circle(PointI centre, int radius, const Pen& pen) {
  stroke(pen, "Ellipse", [&] {
    return Ellipse(context_, centre.x - radius, centre.y - radius, centre.x + radius + 1,
                   centre.y + radius + 1);
  });
}

void PaperSurface::dot(PointI centre, int diameter, Colour colour) {
  const int before = diameter / 2, behind = diameter - before;
  fill(colour, "Ellipse", [&] {
    return Ellipse(context_, centre.x - before, centre.y - before, centre.x + behind + 1,
                   centre.y + behind + 1);
  });
}

void PaperSurface::polygonOutline(std::span<const PointI> points, const Pen& pen) {
  const std::vector<POINT> corners = toPoints(points);
  if (corners.size() < 2) return;
  stroke(pen, "Polygon", [&] { return Polygon(context_, corners.data(), static_cast<int>(corners.size())); });
}

void PaperSurface::polyline(std::span<const PointI> points, const Pen& pen) {
  const std::vector<POINT> corners = toPoints(points);
  if (corners.size() < 2) return;
  stroke(pen, "Polyline",
         [&] { return Polyline(context_, corners.data(), static_cast<int>(corners.size())); });
}

void PaperSurface::fillPolygon(std::span<const PointI> points, Colour colour) {
  const std::vector<POINT> corners = toPoints(points);
  if (corners.size() < 3) return;
  fill(colour, "Polygon",
       [&] { return Polygon(context_, corners.data(), static_cast<int>(corners.size())); });
}

void PaperSurface::wideCurve(const WideCurve& curve) {
  if (curve.bezier.size() < 4 || !(curve.width > 0)) return;
  const LOGBRUSH brush = {BS_SOLID, curve.colour, 0};
  const DWORD cap = curve.caps == CapStyle::round ? PS_ENDCAP_ROUND : PS_ENDCAP_FLAT;
  const auto width = static_cast<DWORD>(std::max(1L, std::lround(std::min(curve.width, kFarthestOnPaper))));
  const OwnedPen pen(ExtCreatePen(PS_GEOMETRIC | PS_SOLID | PS_JOIN_ROUND | cap, width, &brush, 0, nullptr));
  points_.clear();
  for (const PointF p : curve.bezier) points_.push_back(toPoint(p));
  const auto count = static_cast<DWORD>((points_.size() - 1) / 3 * 3 + 1);
  draw(pen.get(), GetStockObject(NULL_BRUSH), "PolyBezier",
       [&] { return PolyBezier(context_, points_.data(), count); });
}

bool PaperSurface::addContour(const std::vector<PointF>& contour) {
  if (contour.size() < 4) return true;
  points_.clear();
  for (const PointF p : contour) points_.push_back(toPoint(p));
  return MoveToEx(context_, points_[0].x, points_[0].y, nullptr) &&
         PolyBezierTo(context_, points_.data() + 1, static_cast<DWORD>((points_.size() - 1) / 3 * 3)) &&
         CloseFigure(context_);
}

void PaperSurface::fillPath(std::span<const std::vector<PointF>> contours, Colour colour) {
  // GDI takes a path without a line for a mistake.
  if (std::none_of(contours.begin(), contours.end(), [](const auto& c) { return c.size() >= 4; })) return;
  SetPolyFillMode(context_, WINDING);
  fill(colour, "FillPath", [&] {
    return BeginPath(context_) &&
           std::all_of(contours.begin(), contours.end(), [&](const auto& c) { return addContour(c); }) &&
           EndPath(context_) && FillPath(context_);
  });
  SetPolyFillMode(context_, ALTERNATE);
}

}  // namespace lorivan::win32
