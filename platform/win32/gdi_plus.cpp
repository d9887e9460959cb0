#include "platform/win32/gdi_plus.h"

#include <algorithm>
#include <array>

#include "platform/win32/checked.h"

namespace lorivan::win32 {
namespace {

namespace flat = Gdiplus::DllExports;

/// A chain of calls that stops at the first one that fails.
class Steps {
 public:
  template <class Call>
  Steps& then(std::string_view name, const Call& call) {
    if (status_) status_ = checkedPlus(call(), name);
    return *this;
  }
  Status result() const { return status_; }
  explicit operator bool() const { return static_cast<bool>(status_); }

 private:
  Status status_;
};

PlusGraphics graphicsOn(PlusTarget target, Steps& steps) {
  PlusGraphics graphics;
  steps.then("GdipCreateFromHDC", [&] {
    return target.bitmap != nullptr ? flat::GdipGetImageGraphicsContext(target.bitmap, graphics.receive())
                                    : flat::GdipCreateFromHDC(target.context, graphics.receive());
  });
  steps.then("GdipSetSmoothingMode",
             [&] { return flat::GdipSetSmoothingMode(graphics.get(), Gdiplus::SmoothingModeNone); });
  return graphics;
}

PlusPen makePen(const Pen& pen, Steps& steps) {
  PlusPen made;
  steps.then("GdipCreatePen1", [&] {
    return flat::GdipCreatePen1(toArgb(pen.colour), static_cast<float>(pen.width), Gdiplus::UnitPixel,
                                made.receive());
  });
  steps.then("GdipSetPenLineCap197819", [&] {
    const auto cap = pen.width > 1 ? Gdiplus::LineCapRound : Gdiplus::LineCapSquare;
    return flat::GdipSetPenLineCap197819(made.get(), cap, cap, Gdiplus::DashCapFlat);
  });
  steps.then("GdipSetPenLineJoin",
             [&] { return flat::GdipSetPenLineJoin(made.get(), Gdiplus::LineJoinRound); });
  if (pen.dotted) {
    const std::array<float, 2> pattern = {1, 2};  // in widths of the pen
    steps.then("GdipSetPenDashArray",
               [&] { return flat::GdipSetPenDashArray(made.get(), pattern.data(), 2); });
  }
  return made;
}

}  // namespace

PlusSession::PlusSession() {
  const Gdiplus::GdiplusStartupInput input;
  status_ = checkedPlus(Gdiplus::GdiplusStartup(&token_, &input, nullptr), "GdiplusStartup");
}

PlusSession::~PlusSession() {
  if (status_) Gdiplus::GdiplusShutdown(token_);
}

Result<PlusBitmap> bitmapOver(const PixelBlock& block, Gdiplus::PixelFormat format) {
  PlusBitmap bitmap;
  const Status made =
      checkedPlus(flat::GdipCreateBitmapFromScan0(block.width, block.height, block.stride * 4, format,
                                                  reinterpret_cast<BYTE*>(block.pixels), bitmap.receive()),
                  "GdipCreateBitmapFromScan0");
  if (!made) return made.error();
  return bitmap;
}

Status plusFill(PlusTarget target, std::span<const PointF> outline, Colour colour) {
  std::vector<Gdiplus::PointF> points;
  points.reserve(outline.size());
  for (const PointF& point : outline) points.emplace_back(point.x, point.y);
  Steps steps;
  const PlusGraphics graphics = graphicsOn(target, steps);
  PlusBrush brush;
  steps.then("GdipCreateSolidFill",
             [&] { return flat::GdipCreateSolidFill(toArgb(colour), brush.receive()); });
  steps.then("GdipFillPolygon", [&] {
    return flat::GdipFillPolygon(graphics.get(), brush.get(), points.data(), static_cast<INT>(points.size()),
                                 Gdiplus::FillModeWinding);
  });
  return steps.result();
}

Status plusLines(PlusTarget target, std::span<const PointI> points, bool closed, const Pen& pen) {
  std::vector<Gdiplus::Point> corners;
  corners.reserve(points.size());
  for (const PointI& point : points) corners.emplace_back(point.x, point.y);
  Steps steps;
  const PlusGraphics graphics = graphicsOn(target, steps);
  const PlusPen made = makePen(pen, steps);
  steps.then("GdipDrawLinesI", [&] {
    const INT count = static_cast<INT>(corners.size());
    return closed ? flat::GdipDrawPolygonI(graphics.get(), made.get(), corners.data(), count)
                  : flat::GdipDrawLinesI(graphics.get(), made.get(), corners.data(), count);
  });
  return steps.result();
}

Status plusCircle(PlusTarget target, PointI centre, int radius, const Pen& pen) {
  Steps steps;
  const PlusGraphics graphics = graphicsOn(target, steps);
  const PlusPen made = makePen(pen, steps);
  steps.then("GdipDrawEllipseI", [&] {
    return flat::GdipDrawEllipseI(graphics.get(), made.get(), centre.x - radius, centre.y - radius,
                                  2 * radius, 2 * radius);
  });
  return steps.result();
}

}  // namespace lorivan::win32
