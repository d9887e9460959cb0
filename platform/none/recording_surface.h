// A surface in memory that writes down every drawing call and has real pixels, all of them aliased.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "platform/surface.h"

namespace lorivan {

enum class DrawKind {
  clear,
  segment,
  circle,
  dot,
  polygonOutline,
  polyline,
  fillPolygon,
  wideCurve,
  fillPath,
  refresh
};

/// One drawing call as it came in.
struct DrawCall {
  DrawKind kind = DrawKind::clear;
  std::vector<PointF> points;  // of a filled path: its contours' Bezier chains, one after the other
  float size = 0;              // pen or band width, radius, diameter
  Colour colour = 0;
  bool dotted = false;
  CapStyle caps = CapStyle::round;
  std::vector<std::size_t> ends;  // of a filled path: where its contours end among the points
};

class RecordingSurface final : public Surface {
 public:
  /// Without `raster` drawing code keeps its fractions, as on paper and in vector files.
  RecordingSurface(int width, int height, bool raster = true);

  int width() const override { return width_; }
  int height() const override { return height_; }
  bool isRaster() const override { return raster_; }

  void clear(Colour background) override;
  void clearTransparent(Colour background) override;
  void segment(PointI from, PointI to, const Pen& pen) override;
  void circle(PointI centre, int radius, const Pen& pen) override;
  void dot(PointI centre, int diameter, Colour colour) override;
  void polygonOutline(std::span<const PointI> points, const Pen& pen) override;
  void polyline(std::span<const PointI> points, const Pen& pen) override;
  void fillPolygon(std::span<const PointI> points, Colour colour) override;
  void wideCurve(const WideCurve& curve) override;
  void fillPath(std::span<const std::vector<PointF>> contours, Colour colour) override;
  void refresh() override { record(DrawKind::refresh, {}, 0, 0); }

  Colour pixel(PointI at) const override;
  PixelBlock lendPixels() override {
    paintCalls();
    return {pixels_.data(), width_, height_, width_};
  }

  /// Everything drawn since the last clear(), the clear() itself included.
  const std::vector<DrawCall>& calls() const { return calls_; }
  int count(DrawKind kind) const;
  /// How many times the surface was cleared since it was made.
  int clears() const { return clears_; }
  /// Pixels that differ from the background.
  int inked() const;
  /// 0xAARRGGBB, rows from the top.
  std::span<const std::uint32_t> pixels() const {
    paintCalls();
    return pixels_;
  }

 private:
  void record(DrawKind kind, std::vector<PointF> points, float size, Colour colour);
  void record(DrawKind kind, std::span<const PointI> points, const Pen& pen);
  // Most pictures are cleared before anybody looks at a pixel: calls are painted when one does.
  void paintCalls() const;
  void paint(const DrawCall& call) const;
  void circle(PointF centre, float radius, Colour colour) const;
  void wideCurve(const DrawCall& curve) const;
  void path(const DrawCall& call) const;
  void put(int x, int y, Colour colour) const;
  void thinLine(PointF from, PointF to, Colour colour, bool dotted) const;
  void line(PointF from, PointF to, const DrawCall& pen) const;
  void disc(PointF centre, float radius, Colour colour) const;
  void fill(std::span<const std::vector<PointF>> contours, bool winding, Colour colour) const;
  void band(PointF from, PointF to, float width, Colour colour) const;

  int width_, height_;
  bool raster_;
  mutable std::vector<std::uint32_t> pixels_;
  mutable std::size_t painted_ = 0;  // calls that the pixels show
  std::vector<DrawCall> calls_;
  int clears_ = 0;
};

}  // namespace lorivan
