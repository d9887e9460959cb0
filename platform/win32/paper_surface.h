// A surface on any device context that keeps lines and shapes as such: what is drawn on paper.
#pragma once

#include <vector>

#include "platform/print_page.h"
#include "platform/win32/windows_api.h"

namespace lorivan::win32 {

/// The context must outlive it; all its objects are put back after every call.
class PaperSurface final : public Surface {
 public:
  PaperSurface(HDC context, int width, int height) : context_(context), width_(width), height_(height) {}

  int width() const override { return width_; }
  int height() const override { return height_; }
  bool isRaster() const override { return false; }
  void clear(Colour background) override;
  void segment(PointI from, PointI to, const Pen& pen) override;
  void circle(PointI centre, int radius, const Pen& pen) override;
  void dot(PointI centre, int diameter, Colour colour) override;
  void polygonOutline(std::span<const PointI> points, const Pen& pen) override;
  void polyline(std::span<const PointI> points, const Pen& pen) override;
  void fillPolygon(std::span<const PointI> points, Colour colour) override;
  void wideCurve(const WideCurve& curve) override;
  void fillPath(std::span<const std::vector<PointF>> contours, Colour colour) override;
  void beginClip(double left, double right) override;
  void endClip() override;
  Colour pixel(PointI) const override { return background_; }
  std::string fault() const override { return fault_; }

 private:
  template <class Draw>
  void draw(HGDIOBJ pen, HGDIOBJ brush, const char* call, Draw drawIt);
  template <class Draw>
  void stroke(const Pen& pen, const char* call, Draw drawIt);
  template <class Draw>
  void fill(Colour colour, const char* call, Draw drawIt);
  bool addContour(const std::vector<PointF>& contour);

  HDC context_;
  int width_, height_;
  std::string fault_;
  std::vector<POINT> points_;
};

}  // namespace lorivan::win32
