// A picture in memory: a 32-bit top-down bitmap that GDI, GDI+ and the program's own code all draw on.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/common/path_fill.h"
#include "platform/surface.h"
#include "platform/win32/gdi_plus.h"
#include "platform/win32/handles.h"

namespace lorivan::win32 {

/// Opaque at first: GDI draws lines and polygons, and the alpha bytes mean nothing. After clearTransparent()
/// these go through GDI+ into premultiplied pixels, because GDI would erase their alpha. Bands and filled
/// paths are the program's own in both.
class DibSurface final : public Surface {
 public:
  static Result<std::unique_ptr<DibSurface>> create(int width, int height);
  DibSurface(const DibSurface&) = delete;
  DibSurface& operator=(const DibSurface&) = delete;
  ~DibSurface() override;

  int width() const override { return width_; }
  int height() const override { return height_; }
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

  bool isTransparent() const { return static_cast<bool>(alphaBitmap_); }
  /// The pixels as they are: the alpha byte counts only when isTransparent(), and is premultiplied then.
  PixelBlock pixels() const;
  HDC context() const;
  /// Makes it another size, cleared to its background. On failure it stays as it was and fault() tells.
  void resize(int width, int height);

  /// Called by refresh(), to bring the picture before the user's eyes.
  std::function<void()> onRefresh;
  /// Whether something was drawn since the last call.
  bool takeDrawn() { return std::exchange(drawn_, false); }

 private:
  DibSurface() = default;
  Status makeBitmap(int width, int height);
  PlusTarget target() const { return {context(), alphaBitmap_.get()}; }
  void paintShapes() const;
  void note(const Status& status);
  void fillAll(std::uint32_t argb);
  void fillRow(int y, int from, int end, std::uint32_t argb);
  void lines(std::span<const PointI> points, bool closed, const Pen& pen);
  void linesByGdi(std::span<const PointI> points, bool closed, const Pen& pen);
  void shapeByGdi(std::span<const PointI> points, Colour colour);

  int width_ = 0, height_ = 0;
  OwnedMemoryContext context_;
  OwnedBitmap bitmap_;
  HGDIOBJ formerBitmap_ = nullptr;
  std::uint32_t* bits_ = nullptr;
  mutable PathFiller shapes_;  // that wait; whoever sees the picture has them painted first
  PlusBitmap alphaBitmap_;     // over bits_, while the surface is transparent
  std::string fault_;
  bool drawn_ = true;
};

}  // namespace lorivan::win32
