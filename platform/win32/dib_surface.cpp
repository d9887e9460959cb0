#include "platform/win32/dib_surface.h"

#include <algorithm>
#include <array>

#include "platform/common/pixels.h"
#include "platform/common/wide_curve.h"
#include "platform/win32/checked.h"

namespace lorivan::win32 {
namespace {

constexpr std::int32_t kFarthest = 1'000'000;  // pixels; GDI computes with 27 bits

std::vector<POINT> systemPoints(std::span<const PointI> points) {
  std::vector<POINT> made;
  made.reserve(points.size());
  for (const PointI& p : points)
    made.push_back({std::clamp(p.x, -kFarthest, kFarthest), std::clamp(p.y, -kFarthest, kFarthest)});
  return made;
}

/// The pen of one call, selected as long as the object lives. Thin solid lines take the context's own pen.
class SelectedPen {
 public:
  SelectedPen(HDC context, const Pen& pen) : made_(make(pen)), selection_(context, choose(pen)) {
    SetDCPenColor(context, pen.colour);
  }
  explicit operator bool() const { return static_cast<bool>(selection_); }

 private:
  static bool isPlain(const Pen& pen) { return pen.width <= 1 && !pen.dotted; }

  static HPEN make(const Pen& pen) {
    if (isPlain(pen)) return nullptr;
    const LOGBRUSH brush = {BS_SOLID, pen.colour, 0};
    const DWORD width = static_cast<DWORD>(std::clamp(pen.width, 1, kLongestSide));
    const DWORD ends = PS_GEOMETRIC | PS_JOIN_ROUND;
    if (!pen.dotted) return ExtCreatePen(ends | PS_ENDCAP_ROUND | PS_SOLID, width, &brush, 0, nullptr);
    const std::array<DWORD, 2> dots = {width, 2 * width};
    return ExtCreatePen(ends | PS_ENDCAP_FLAT | PS_USERSTYLE, width, &brush, 2, dots.data());
  }

  HGDIOBJ choose(const Pen& pen) const { return isPlain(pen) ? GetStockObject(DC_PEN) : made_.get(); }

  OwnedPen made_;
  Selection selection_;
};

}  // namespace

Result<std::unique_ptr<DibSurface>> DibSurface::create(int width, int height) {
  std::unique_ptr<DibSurface> surface(new DibSurface);
  surface->context_.reset(CreateCompatibleDC(nullptr));
  if (!surface->context_) return unwritable(systemFault("CreateCompatibleDC"));
  SetBkMode(surface->context(), TRANSPARENT);
  SetPolyFillMode(surface->context(), ALTERNATE);
  if (const Status made = surface->makeBitmap(width, height); !made) return made.error();
  surface->clear(0xFFFFFF);
  return surface;
}

Status DibSurface::makeBitmap(int width, int height) {
  if (const Status fits = checkPictureSize(width, height); !fits) return fits;
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;  // rows from the top
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  void* bits = nullptr;
  OwnedBitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  if (!bitmap) return unwritable(systemFault("CreateDIBSection"));
  const HGDIOBJ former = SelectObject(context_.get(), bitmap.get());
  if (former == nullptr) return unwritable(systemFault("SelectObject"));
  if (formerBitmap_ == nullptr) formerBitmap_ = former;
  alphaBitmap_.reset();
  bitmap_ = std::move(bitmap);
  bits_ = static_cast<std::uint32_t*>(bits);
  width_ = width;
  height_ = height;
  return {};
}

void DibSurface::resize(int width, int height) {
  if (const Status made = makeBitmap(width, height); !made) return note(made);
  clear(background_);
}

DibSurface::~DibSurface() {
  alphaBitmap_.reset();
  if (formerBitmap_ != nullptr) SelectObject(context_.get(), formerBitmap_);
}

void DibSurface::note(const Status& status) {
  drawn_ = true;
  if (!status && fault_.empty()) fault_ = status.error().message;
}

void DibSurface::paintShapes() const {
  if (shapes_.empty()) return;
  GdiFlush();
  shapes_.paint({bits_, width_, height_, width_});
}

PixelBlock DibSurface::pixels() const {
  paintShapes();
  return {bits_, width_, height_, width_};
}

HDC DibSurface::context() const {
  paintShapes();
  return context_.get();
}

void DibSurface::fillAll(std::uint32_t argb) {
  shapes_.forget();
  GdiFlush();
  std::fill_n(bits_, static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_), argb);
  drawn_ = true;
}

void DibSurface::clear(Colour background) {
  alphaBitmap_.reset();
  background_ = background & 0xFFFFFF;
  fillAll(toArgb(background_));
}

void DibSurface::clearTransparent(Colour background) {
  background_ = background & 0xFFFFFF;
  fillAll(0);
  Result<PlusBitmap> bitmap = bitmapOver(pixels(), PixelFormat32bppPARGB);
  if (bitmap)
    alphaBitmap_ = std::move(*bitmap);
  else
    note(bitmap.error());
}

void DibSurface::segment(PointI from, PointI to, const Pen& pen) {
  const std::array<PointI, 2> ends = {from, to};
  lines(ends, false, pen);
}

void DibSurface::polygonOutline(std::span<const PointI> points, const Pen& pen) { lines(points, true, pen); }

void DibSurface::polyline(std::span<const PointI> points, const Pen& pen) { lines(points, false, pen); }

void DibSurface::lines(std::span<const PointI> points, bool closed, const Pen& pen) {
  if (points.empty()) return;
  const auto same = [&](PointI p) { return p.x == points[0].x && p.y == points[0].y; };
  if (std::all_of(points.begin(), points.end(), same)) {
    dot(points[0], std::max(1, pen.width), pen.colour);
  } else if (isTransparent()) {
    note(plusLines(target(), points, closed && points.size() > 2, pen));
  } else {
    linesByGdi(points, closed && points.size() > 2, pen);
  }
}

void DibSurface::linesByGdi(std::span<const PointI> points, bool closed, const Pen& pen) {
  const SelectedPen selected(context(), pen);
  if (!selected) return note(unwritable(systemFault("ExtCreatePen")));
  const Selection hollow(context(), GetStockObject(NULL_BRUSH));
  const std::vector<POINT> corners = systemPoints(points);
  const int count = static_cast<int>(corners.size());
  if (closed) return note(checked(Polygon(context(), corners.data(), count), "Polygon"));
  note(checked(Polyline(context(), corners.data(), count), "Polyline"));
  // A thin line stops one pixel short of its end.
  if (!pen.dotted) SetPixelV(context(), corners.back().x, corners.back().y, pen.colour);
}

void DibSurface::circle(PointI centre, int radius, const Pen& pen) {
  if (radius <= 0) return dot(centre, std::max(1, pen.width), pen.colour);
  if (isTransparent()) return note(plusCircle(target(), centre, radius, pen));
  const SelectedPen selected(context(), pen);
  if (!selected) return note(unwritable(systemFault("ExtCreatePen")));
  const Selection hollow(context(), GetStockObject(NULL_BRUSH));
  note(checked(
      Ellipse(context(), centre.x - radius, centre.y - radius, centre.x + radius + 1, centre.y + radius + 1),
      "Ellipse"));
}

void DibSurface::dot(PointI centre, int diameter, Colour colour) {
  if (diameter < 1) return;
  paintShapes();
  GdiFlush();
  fillDotRows(centre, diameter,
              [&](int left, int y, int width) { fillRow(y, left, left + width, toArgb(colour)); });
  drawn_ = true;
}

void DibSurface::fillRow(int y, int from, int end, std::uint32_t argb) {
  if (y < 0 || y >= height_) return;
  from = std::max(from, 0);
  end = std::min(end, width_);
  std::uint32_t* row = bits_ + static_cast<std::ptrdiff_t>(y) * width_;
  if (from < end) std::fill(row + from, row + end, argb);
}

void DibSurface::fillPolygon(std::span<const PointI> points, Colour colour) {
  if (points.size() < 3) return;
  if (!isTransparent()) return shapeByGdi(points, colour);
  std::vector<PointF> corners;
  for (const PointI& p : points) corners.push_back({static_cast<float>(p.x), static_cast<float>(p.y)});
  note(plusFill(target(), corners, colour));
}

void DibSurface::shapeByGdi(std::span<const PointI> points, Colour colour) {
  const Selection pen(context(), GetStockObject(NULL_PEN));
  const Selection brush(context(), GetStockObject(DC_BRUSH));
  SetDCBrushColor(context(), colour);
  const std::vector<POINT> corners = systemPoints(points);
  note(checked(Polygon(context(), corners.data(), static_cast<int>(corners.size())), "Polygon"));
}

void DibSurface::wideCurve(const WideCurve& curve) {
  note(addWideCurve(shapes_, curve) ? Status() : Status(unwritable("a curve cannot be drawn")));
}

void DibSurface::edgedCurve(const WideCurve& curve, float edge) {
  note(addEdgedCurve(shapes_, curve, edge) ? Status() : Status(unwritable("a curve cannot be drawn")));
}

void DibSurface::fillPath(std::span<const std::vector<PointF>> contours, Colour colour) {
  const bool drawn = shapes_.add(contours, colour);
  note(drawn ? Status() : Status(unwritable("a shape has points that cannot be drawn")));
}

Colour DibSurface::pixel(PointI at) const {
  if (at.x < 0 || at.y < 0 || at.x >= width_ || at.y >= height_) return background_;
  paintShapes();
  GdiFlush();
  const std::uint32_t argb = bits_[static_cast<std::size_t>(at.y) * static_cast<std::size_t>(width_) +
                                   static_cast<std::size_t>(at.x)];
  if (!isTransparent()) return makeColour(argb >> 16 & 0xFF, argb >> 8 & 0xFF, argb & 0xFF);
  return overBackground(argb, background_);
}

PixelBlock DibSurface::lendPixels() {
  paintShapes();
  GdiFlush();
  drawn_ = true;
  if (!isTransparent()) {
    const std::size_t count = static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_);
    for (std::size_t i = 0; i < count; ++i) bits_[i] |= 0xFF000000U;  // GDI leaves zeros there
  }
  return pixels();
}

void DibSurface::refresh() {
  if (onRefresh) onRefresh();
}

}  // namespace lorivan::win32
