// Angles from mouse and keys and back. The circle stretches the middle of the range: a place on it stands for
// the square root of the sine of half the angle.
#include "model3d/rotator.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "base/numbers.h"

namespace lorivan {

namespace {

constexpr float kOneDegree = 0.017453292F;
constexpr float kKeyStep = 0.15707964F;  // nine degrees
constexpr float kThreeQuarterTurn = 4.712389F;
constexpr float kDragUnit = 50;  // reference pixels for one radian
constexpr std::int32_t kNoDrag = -9999;

double signOf(double x) { return x > 0 ? 1 : x < 0 ? -1 : 0; }

/// The square with the sign of its root.
double signedSquare(double x) { return signOf(x) * x * x; }

void rollTowards(ViewState& view, double dx, double dy) {
  if (dx == 0) {
    view.ViewPsi = kHalfPiF;
    return;
  }
  double psi = std::atan(dy / dx);
  if (dx > 0) psi -= kPi;
  if (dx < 0 && dy < 0) psi -= static_cast<double>(kTwoPiF);
  view.ViewPsi = static_cast<float>(psi);
}

void turnTowards(ViewState& view, double dx, double dy, double radius) {
  const double u = signedSquare(dy / radius);
  const double v = signedSquare(dx / radius);
  // At the very rim the elevation stops at 2 radians, and the azimuth at its start.
  const double a = std::fabs(u) >= 1 ? 1.0 : std::asin(u);
  const double b = std::fabs(v) >= 1 ? 0.0 : std::asin(v) + kPi / 2;
  view.ViewPhi = static_cast<float>(2 * a);
  view.ViewTheta = static_cast<float>(2 * b - kPi / 2);
}

/// Makes the view matrix with the roll folded into azimuth and elevation, and leaves the angles as they were.
void checkAnglesRolled(ViewState& view) {
  const ViewState before = view;
  const double t = static_cast<double>(view.ViewTheta), p = static_cast<double>(view.ViewPhi);
  const float a = -view.ViewPsi;
  const double sine = std::sin(static_cast<double>(a)), cosine = std::cos(static_cast<double>(a));
  const double fromT = (t - kPi / 2) * sine, fromP = (p - kPi / 2) * sine;
  view.ViewPsi = a;
  view.ViewPhi = static_cast<float>(a < kHalfPiF ? p * cosine - fromT : -p * cosine + fromT);
  const bool outer = a < kHalfPiF || a >= kThreeQuarterTurn;
  const bool upper = a < kPiF;
  view.ViewTheta = static_cast<float>((outer ? t * cosine : -t * cosine) + (upper ? -fromP : fromP));
  CheckAngles(view);
  const Matrix4 folded = view.ViewMatrix;
  view = before;
  view.ViewMatrix = folded;
}

// The rotator is drawn in pixels of a picture this wide.
constexpr float kRotatorWidth = 90;
/// `part` of `over`, 0 to 1, and for the rest `under`.
Colour mixed(Colour over, Colour under, double part) {
  const auto mix = [part](int a, int b) { return toInt32(part * a + (1 - part) * b); };
  return makeColour(mix(redOf(over), redOf(under)), mix(greenOf(over), greenOf(under)),
                    mix(blueOf(over), blueOf(under)));
}

void line(Surface& surface, PointF from, PointF to, float width, Colour colour) {
  const std::array<PointF, 4> bezier = {from, from, to, to};
  surface.wideCurve({bezier, width, colour, CapStyle::flat});
}

/// A circle of four Bezier segments.
void ring(Surface& surface, PointF centre, float radius, float width, Colour colour) {
  constexpr float kHandle = 0.5522848F;
  std::array<PointF, 13> bezier;
  float x = radius, y = 0;
  for (std::size_t i = 0; i < 12; i += 3) {
    bezier[i] = {centre.x + x, centre.y + y};
    bezier[i + 1] = {centre.x + x - kHandle * y, centre.y + y + kHandle * x};
    bezier[i + 2] = {centre.x - y + kHandle * x, centre.y + x + kHandle * y};
    x = -std::exchange(y, x);
  }
  bezier[12] = bezier[0];
  surface.wideCurve({bezier, width, colour, CapStyle::round});
}

/// Held inside the picture, where its middle may lie close to the edge.
void disc(Surface& surface, PointF centre, float diameter, Colour colour) {
  const auto inside = [diameter](float x, int size) {
    const float least = (diameter - 1) / 2;
    return std::clamp(x, least, std::max(least, static_cast<float>(size - 1) - least));
  };
  const PointF at = {inside(centre.x, surface.width()), inside(centre.y, surface.height())};
  ring(surface, at, diameter / 4, diameter / 2, colour);
}

/// The rest of a step that may be several turns, as when a hand is quick and the mouse reports seldom.
float withoutTurns(float step) {
  return static_cast<float>(std::fmod(static_cast<double>(step), static_cast<double>(kTwoPiF)));
}

/// Not negative: a full turn is added where needed.
float turned(float degrees) { return degrees < 0 ? degrees + 360 : degrees + 0.0F; }

}  // namespace

NavGeometry navGeometry(int width, int height) {
  NavGeometry nav;
  nav.NavRadius = static_cast<float>(std::max(width, 1)) / 2.25F;
  nav.NavMarginX = 0.05F * static_cast<float>(width);
  nav.NavMarginY = 0.05F * static_cast<float>(height);
  nav.NavCentreX = nav.NavRadius + nav.NavMarginX;
  nav.NavCentreY = nav.NavRadius + nav.NavMarginY;
  return nav;
}

bool DrawNav(ViewState& view, const NavGeometry& nav, int button, float x, float y) {
  if (button != kLeftButton && button != kRightButton) return false;
  const double dx = static_cast<double>(nav.NavCentreX) - static_cast<double>(x);
  const double dy = static_cast<double>(nav.NavCentreY) - static_cast<double>(y);
  const auto radius = static_cast<double>(nav.NavRadius);
  const bool outside = radius * radius < dx * dx + dy * dy;
  if (button == kRightButton && outside) rollTowards(view, dx, dy);
  if (button == kLeftButton && !outside) turnTowards(view, dx, dy, radius);
  if (std::fabs(view.ViewPsi) <= kOneDegree) {
    CheckAngles(view);
  } else {
    checkAnglesRolled(view);
  }
  return true;
}

bool dragView(ViewState& view, DragState& drag, int button, float x, float y) {
  if (button != kLeftButton) return false;
  x /= kDragUnit;
  y /= kDragUnit;
  if (drag.LastDragX > kNoDrag) {
    view.ViewTheta += withoutTurns(x - (static_cast<float>(drag.LastDragX) + drag.restX));
    view.ViewPhi -= withoutTurns(y - (static_cast<float>(drag.LastDragY) + drag.restY));
  }
  drag.LastDragX = toInt32(static_cast<double>(x));
  drag.LastDragY = toInt32(static_cast<double>(y));
  drag.restX = x - static_cast<float>(drag.LastDragX);
  drag.restY = y - static_cast<float>(drag.LastDragY);
  CheckAngles(view);
  return true;
}

bool turnByKey(ViewState& view, int keyCode) {
  switch (keyCode) {
    case 37:
      view.ViewTheta += kKeyStep;
      break;
    case 38:
      view.ViewPhi += kKeyStep;
      break;
    case 39:
      view.ViewTheta -= kKeyStep;
      break;
    case 40:
      view.ViewPhi -= kKeyStep;
      break;
    default:
      return false;
  }
  CheckAngles(view);
  return true;
}

void setTheta(ViewState& view, float degrees) {
  view.ViewTheta = static_cast<float>(kPi / 2 - static_cast<double>(degrees) * kPi / 180);
  CheckAngles(view);
}

void setPhi(ViewState& view, float degrees) {
  view.ViewPhi = static_cast<float>(static_cast<double>(degrees) * kPi / 180);
  CheckAngles(view);
}

void setPsi(ViewState& view, float degrees) {
  view.ViewPsi = static_cast<float>(-(static_cast<double>(degrees) * kPi / 180));
  CheckAngles(view);
}

AngleFields anglesInDegrees(const ViewState& view) {
  const float theta = view.ViewTheta * 180 / kPiF;
  return {turned(view.ViewTheta > kHalfPiF ? 450 - theta : 90 - theta), turned(view.ViewPhi * 180 / kPiF),
          turned(-(view.ViewPsi * 180 / kPiF))};
}

NavMarkers navMarkers(const ViewState& view, const NavGeometry& nav) {
  const double t = static_cast<double>(view.ViewTheta) - kPi / 2, p = static_cast<double>(view.ViewPhi);
  const auto r = static_cast<double>(nav.NavRadius), psi = static_cast<double>(view.ViewPsi);
  const double s1 = signOf(std::cos(t) * std::sin(p)), s2 = signOf(std::sin(t) * std::cos(p));
  const double hy = std::sqrt(std::fabs(std::sin(p / 2) * std::cos(t / 2)));
  const double hx = std::sqrt(std::fabs(std::cos(p / 2) * std::sin(t / 2)));
  const bool facing = view.ViewPhi < kHalfPiF || view.ViewPhi > kThreeQuarterTurn;
  const double across = facing ? -s2 * hx : s2 * hx;
  const double down = facing && view.ViewTheta >= kPiF ? s1 * hy : -s1 * hy;
  NavMarkers markers;
  markers.thetaPhi = {static_cast<float>((1 + across) * r) + nav.NavMarginX,
                      static_cast<float>((1 + down) * r) + nav.NavMarginY};
  markers.psi = {nav.NavCentreX + static_cast<float>(1.1 * r * std::cos(psi)),
                 nav.NavCentreY + static_cast<float>(1.1 * r * std::sin(psi))};
  return markers;
}

void drawRotator(Surface& surface, const ViewState& view, Colour background, Colour lines) {
  const auto width = static_cast<float>(surface.width());
  const NavGeometry nav = navGeometry(surface.width(), surface.height());
  const NavMarkers markers = navMarkers(view, nav);
  const float acrossX = 2 * nav.NavCentreX, acrossY = 2 * nav.NavCentreY;
  const PointF middle = {nav.NavCentreX, nav.NavCentreY};
  const float thin = std::max(1.0F, width / kRotatorWidth), point = std::max(5.0F, 5 * thin);
  const Colour cross = mixed(lines, background, 0.3);
  surface.clear(background);
  line(surface, {0, middle.y}, {acrossX, middle.y}, thin, cross);
  line(surface, {middle.x, 0}, {middle.x, acrossY}, thin, cross);
  ring(surface, middle, nav.NavRadius, thin, mixed(lines, background, 0.75));
  // Plain blue is hard to see on a dark ground.
  const bool isDark = greenOf(lines) > greenOf(background);
  disc(surface, markers.thetaPhi, point, isDark ? makeColour(80, 150, 255) : makeColour(0, 0, 255));
  disc(surface, markers.psi, point, makeColour(255, 0, 0));
}

}  // namespace lorivan
