// The drawing contract.
//
// Units are device pixels, x to the right, y downwards, (0, 0) at the middle of the top left pixel. A surface
// clips everything to itself and keeps what was drawn until it is cleared. Drawing calls do not fail one by
// one: the first fault (a pen that cannot be made, memory that ran out) is kept and told by fault(), and what
// follows it may be left undrawn.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/colour.h"
#include "base/pixels.h"
#include "base/points.h"
#include "base/result.h"

namespace lorivan {

/// The size of picture that widths given in pixels refer to: at twice the size everything is twice as wide.
inline constexpr int kReferenceWidth = 500, kReferenceHeight = 400;

enum class CapStyle { round, flat };

/// How a thin line or an outline is drawn. Aliased.
struct Pen {
  int width = 1;  // pixels, at least 1
  Colour colour = 0;
  bool dotted = false;
};

/// A smooth band: a chain of cubic Bezier segments stroked with one width. Anti-aliased where the system can.
struct WideCurve {
  std::span<const PointF> bezier;  // 3 n + 1 points: first end, then two controls and an end for each segment
  float width = 1;                 // pixels
  Colour colour = 0;
  CapStyle caps = CapStyle::round;
};

class Surface {
 public:
  virtual ~Surface() = default;

  virtual int width() const = 0;
  virtual int height() const = 0;

  /// Fills everything with one colour, which becomes the background.
  virtual void clear(Colour background) = 0;
  /// As clear(), but the pixels become transparent where the surface can hold that; what is drawn afterwards
  /// keeps its coverage as alpha in the saved PNG. Pixel read-back still says the background.
  virtual void clearTransparent(Colour background) { clear(background); }
  Colour background() const { return background_; }

  virtual void segment(PointI from, PointI to, const Pen& pen) = 0;
  /// The outline of a circle, not filled.
  virtual void circle(PointI centre, int radius, const Pen& pen) = 0;
  /// A filled round dot of the given diameter in pixels.
  virtual void dot(PointI centre, int diameter, Colour colour) = 0;
  /// A closed outline through all points; nothing is filled.
  virtual void polygonOutline(std::span<const PointI> points, const Pen& pen) = 0;
  /// An open line through all points.
  virtual void polyline(std::span<const PointI> points, const Pen& pen) = 0;
  /// A filled polygon without an outline.
  virtual void fillPolygon(std::span<const PointI> points, Colour colour) = 0;
  virtual void wideCurve(const WideCurve& curve) = 0;
  /// The same on a black one that is wider by `edge` pixels on either side; without it at 0. Where there are
  /// pixels thin ones take less time than two curves do.
  virtual void edgedCurve(const WideCurve& curve, float edge) {
    if (edge > 0) wideCurve({curve.bezier, curve.width + 2 * edge, 0, curve.caps});
    wideCurve(curve);
  }
  /// Fills what the contours surround by the non-zero winding rule. Each is a closed chain of cubic Bezier
  /// segments, 3 n + 1 points of which the last repeats the first. Anti-aliased where the system can.
  virtual void fillPath(std::span<const std::vector<PointF>> contours, Colour colour) = 0;

  /// On surfaces without pixels, nothing of what is drawn until endClip() shows left or right of these
  /// places.
  virtual void beginClip(double left, double right) { static_cast<void>(left), static_cast<void>(right); }
  virtual void endClip() {}

  /// The colour of one pixel; the background outside the surface and on surfaces without pixels.
  virtual Colour pixel(PointI at) const = 0;
  /// Lends its own pixels for direct filling; an empty block on surfaces without pixels. What was drawn
  /// before is in them, and what is written to them is on the surface.
  virtual PixelBlock lendPixels() { return {}; }

  /// Whether coordinates end as whole pixels. Drawing code rounds its points on such surfaces and keeps the
  /// fractions on others (vector files).
  virtual bool isRaster() const { return true; }

  /// Names what is drawn until the matching endGroup(), where a format can keep it (SVG groups).
  virtual void beginGroup(std::string_view name) { static_cast<void>(name); }
  virtual void endGroup() {}

  /// Brings what was drawn so far before the user's eyes, where there is a user.
  virtual void refresh() {}

  /// The first fault since the surface was made, or an empty text.
  virtual std::string fault() const { return {}; }

 protected:
  Colour background_ = 0xFFFFFF;
};

}  // namespace lorivan
