// An SVG file as a drawing surface: real Bezier curves, layers, one class for each strand's colour,
// millimetres.
#pragma once

#include <string>
#include <vector>

#include "strands/vector_surface.h"

namespace lorivan {

/// How a curve comes into view in an animated file: it grows from its first point to its last between two
/// moments, or appears at the first of them. Seconds.
struct SvgMotion {
  enum class Kind { none, grow, appear } kind = Kind::none;
  double begin = 0, end = 0;
};

/// Draws into SVG 1.1 text; one user unit of the file is one millimetre. Groups are layers for Inkscape. What
/// groups with a number at their end fill or stroke takes its colour from the class of that strand; the style
/// sheet at the file's head is the only place where it is written.
class SvgSurface final : public VectorSurface {
 public:
  explicit SvgSurface(const VectorPage& page)
      : VectorSurface(page), title_(page.title), source_(page.source) {}

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
  void strokePath(std::span<const std::vector<PointF>> chains, Colour colour) override;
  void beginGroup(std::string_view name) override { beginLayer(name, false); }
  void beginHiddenGroup(std::string_view name) override { beginLayer(name, true); }
  void endGroup() override;
  /// Outermost groups that are begun meanwhile are clipped; there is one clip in a drawing.
  void beginClip(double left, double right) override;
  void endClip() override { clips_ = false; }

  /// Lets the wide curves move that are drawn between two calls of setMotion(): a round of `seconds` (above
  /// 0), played once or for ever. The curves themselves are written as they are in the end, and only rules of
  /// the style sheet hide them before their time: whatever does not play them, or belongs to someone who
  /// wants less motion, shows the finished picture.
  void setRound(double seconds, bool repeat);
  void setMotion(const SvgMotion& motion);

  std::string finish() override;

 private:
  /// A rule of the style sheet: what is filled, or else stroked, in a group.
  struct Paint {
    std::string group;
    bool fills;
    Colour colour;
    std::string className() const { return fills ? group : group + "-line"; }
  };

  void beginLayer(std::string_view name, bool hidden);
  std::string head() const;
  std::string styleSheet() const;
  std::string paintGroup() const;
  /// Attributes that give an element its colour, and `further` as a second class.
  void paint(bool fills, Colour colour, bool isEdge = false, std::string_view further = {});
  void millimetres(double value) { appendDecimal(body_, value, decimals()); }
  void attribute(std::string_view name, double millimetres);
  void point(double x, double y);
  void pathData(std::span<const PointF> bezier);
  void pointList(std::span<const PointI> points);
  void penAttributes(const Pen& pen);
  void circleElement(PointI centre, double radius);
  void indent() { body_.append(2 * (groups_.size() + 1), ' '); }

  std::string title_, source_, body_, clip_;
  bool clips_ = false;
  std::vector<std::string> groups_;
  std::vector<Paint> paints_;
  SvgMotion motion_;
  std::string motionClass_, keyframes_;
  int motions_ = 0;
  double seconds_ = 0;
  bool repeat_ = false;
};

}  // namespace lorivan
