// An SVG file as a drawing surface: real Bezier curves, named groups, millimetres.
#pragma once

#include <string>

#include "platform/surface.h"

namespace lorivan {

/// How a curve comes into view in an animated file: it grows from its first point to its last between two
/// moments, or appears at the first of them. Seconds.
struct SvgMotion {
  enum class Kind { none, grow, appear } kind = Kind::none;
  double begin = 0, end = 0;
};

/// Draws into SVG 1.1 text. Its units are fine steps of the picture; one user unit of the file is one
/// millimetre.
class SvgSurface final : public Surface {
 public:
  /// A picture `width` units wide and `height` high, `millimetres` wide as printed or cut.
  SvgSurface(int width, int height, double millimetres, const std::string& title);

  int width() const override { return width_; }
  int height() const override { return height_; }
  bool isRaster() const override { return false; }
  Colour pixel(PointI) const override { return background_; }

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
  void beginGroup(std::string_view name) override;
  void endGroup() override;

  /// Lets the wide curves move that are drawn between two calls of setMotion(): a round of `seconds` (above
  /// 0), played once or for ever. The curves themselves are written as they are in the end, and only SMIL
  /// animation elements inside them hide them before their time: whatever does not play them shows the
  /// finished picture.
  void setRound(double seconds, bool repeat);
  void setMotion(const SvgMotion& motion) { motion_ = motion; }

  /// The whole file. Nothing is drawn afterwards.
  std::string finish();

 private:
  void number(double units);
  void attribute(std::string_view name, double units);
  void pathData(std::span<const PointF> bezier);
  void pointList(std::span<const PointI> points);
  void penAttributes(const Pen& pen);
  void indent();
  void animation();
  void animationTimes(double first, double second);

  int width_, height_;
  double scale_;  // millimetres for a unit
  int decimals_;  // enough that a step is small beside the picture
  std::string head_, body_;
  int depth_ = 1;
  SvgMotion motion_;
  double seconds_ = 0;
  bool repeat_ = false;
};

}  // namespace lorivan
