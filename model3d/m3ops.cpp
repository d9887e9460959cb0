// Matrix and point operations, and the view matrix.
#include "model3d/m3ops.h"

#include <cmath>

namespace lorivan {

void MatIdentity(Matrix4& m) { m.cells = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}; }

void MatPerspective(Matrix4& m, double d) {
  MatIdentity(m);
  if (d != 0) m(3, 4) = static_cast<float>(-1 / d);
}

void MatScale(Matrix4& m, double sx, double sy, double sz) {
  MatIdentity(m);
  m(1, 1) = static_cast<float>(sx);
  m(2, 2) = static_cast<float>(sy);
  m(3, 3) = static_cast<float>(sz);
}

void MatTranslate(Matrix4& m, double tx, double ty, double tz) {
  MatIdentity(m);
  m(4, 1) = static_cast<float>(tx);
  m(4, 2) = static_cast<float>(ty);
  m(4, 3) = static_cast<float>(tz);
}

namespace {

/// Column k of p M, with p's own w.
double column(const Point4& p, const Matrix4& m, int k) {
  double sum = 0;
  for (int j = 1; j <= 4; ++j) sum += static_cast<double>(p(j)) * static_cast<double>(m(j, k));
  return sum;
}

double hypotenuse(double x, double y) { return std::sqrt(x * x + y * y); }

/// The turn about y that brings the direction d into the y-z plane.
Matrix4 turnAboutY(const Triple& d) {
  Matrix4 turn;
  MatIdentity(turn);
  const double r = hypotenuse(d.x, d.z);
  if (r == 0) return turn;
  const auto sine = static_cast<float>(-d.x / r);
  turn(1, 1) = turn(3, 3) = static_cast<float>(d.z / r);
  turn(3, 1) = sine;
  turn(1, 3) = -sine;
  return turn;
}

/// The turn about x that brings the direction d, already in the y-z plane, onto the +z axis.
Matrix4 turnAboutX(const Triple& d) {
  Matrix4 turn;
  MatIdentity(turn);
  const double flat = hypotenuse(d.x, d.z);
  const double r = hypotenuse(flat, d.y);
  if (r == 0) return turn;
  const auto sine = static_cast<float>(d.y / r);
  turn(2, 2) = turn(3, 3) = static_cast<float>(flat / r);
  turn(2, 3) = sine;
  turn(3, 2) = -sine;
  return turn;
}

/// The turn about z that brings the projected up vector onto the +y axis.
Matrix4 turnAboutZ(const Point4& up) {
  Matrix4 turn;
  MatIdentity(turn);
  const double r = hypotenuse(static_cast<double>(up(1)), static_cast<double>(up(2)));
  if (r == 0) return turn;
  const auto across = static_cast<float>(static_cast<double>(up(1)) / r);
  turn(1, 1) = turn(2, 2) = static_cast<float>(static_cast<double>(up(2)) / r);
  turn(1, 2) = across;
  turn(2, 1) = -across;
  return turn;
}

}  // namespace

void ApplyAffine(const Point4& p, const Matrix4& m, Point4& out) {
  Point4 point = p;
  point(4) = 1;
  const Point4 made = {{static_cast<float>(column(point, m, 1)), static_cast<float>(column(point, m, 2)),
                        static_cast<float>(column(point, m, 3)), 1}};
  out = made;
}

void ApplyProjected(const Point4& p, const Matrix4& m, Point4& out) {
  double x = column(p, m, 1);
  double y = column(p, m, 2);
  double z = column(p, m, 3);
  const double w = column(p, m, 4);
  if (w != 0) {
    x /= w;
    y /= w;
  } else {
    z = static_cast<double>(kInfinitelyFar);
  }
  out = {{static_cast<float>(x), static_cast<float>(y), static_cast<float>(z), 1}};
}

void MatMultiplyAffine(Matrix4& out, const Matrix4& a, const Matrix4& b) {
  Matrix4 product;
  MatIdentity(product);
  for (int i = 1; i <= 4; ++i) {
    for (int j = 1; j <= 3; ++j) {
      double sum = i == 4 ? static_cast<double>(b(4, j)) : 0.0;
      for (int k = 1; k <= 3; ++k) sum += static_cast<double>(a(i, k)) * static_cast<double>(b(k, j));
      product(i, j) = static_cast<float>(sum);
    }
  }
  out = product;
}

void MatMultiplyFull(Matrix4& out, const Matrix4& a, const Matrix4& b) {
  Matrix4 product;
  for (int i = 1; i <= 4; ++i) {
    for (int j = 1; j <= 4; ++j) {
      double sum = 0;
      for (int k = 1; k <= 4; ++k) sum += static_cast<double>(a(i, k)) * static_cast<double>(b(k, j));
      product(i, j) = static_cast<float>(sum);
    }
  }
  out = product;
}

void MatViewFromTo(Matrix4& m, int kind, const Triple& eye, const Triple& focus, const Triple& up) {
  Matrix4 move;
  MatTranslate(move, -focus.x, -focus.y, -focus.z);
  const Triple direction = {eye.x - focus.x, eye.y - focus.y, eye.z - focus.z};
  const Matrix4 r1 = turnAboutY(direction);
  const Matrix4 r2 = turnAboutX(direction);
  Point4 turnedUp = {{static_cast<float>(up.x), static_cast<float>(up.y), static_cast<float>(up.z), 1}};
  ApplyAffine(turnedUp, r1, turnedUp);
  ApplyAffine(turnedUp, r2, turnedUp);
  const Matrix4 r3 = turnAboutZ(turnedUp);

  Matrix4 projection;
  MatPerspective(projection,
                 kind == kPerspective ? hypotenuse(hypotenuse(direction.x, direction.z), direction.y) : 0);
  Matrix4 first, second;
  MatMultiplyAffine(first, move, r1);
  MatMultiplyAffine(second, r2, r3);
  MatMultiplyAffine(m, first, second);
  if (kind == kPerspective) {
    MatMultiplyFull(m, m, projection);
  } else {
    MatMultiplyAffine(m, m, projection);
  }
}

void MatViewSpherical(Matrix4& m, int kind, double radius, double elevation, double azimuth,
                      const Triple& focus, const Triple& up) {
  const Triple eye = {radius * std::cos(elevation) * std::cos(azimuth), radius * std::sin(elevation),
                      radius * std::cos(elevation) * std::sin(azimuth)};
  MatViewFromTo(m, kind, eye, focus, up);
}

ViewState::ViewState() { CheckAngles(*this); }

namespace {

float withinOneTurn(float angle) {
  if (angle < 0) angle = static_cast<float>(static_cast<double>(angle) + kTwoPi);
  if (angle >= kTwoPiF) angle = static_cast<float>(static_cast<double>(angle) - kTwoPi);
  return angle;
}

}  // namespace

void CheckAngles(ViewState& view) {
  view.ViewPhi = withinOneTurn(view.ViewPhi);
  view.ViewTheta = withinOneTurn(view.ViewTheta);
  const auto phi = static_cast<double>(view.ViewPhi);
  const double quadrant = std::floor(phi / (kPi / 2));
  // Exactly half a turn would leave the eye on the point where the picture's sense of up changes.
  if (std::fabs(phi - kPi) < 0.01) view.ViewPhi = static_cast<float>(phi + 0.02);
  const double up = quadrant == 1 || quadrant == 2 ? -1 : 1;
  MatViewSpherical(view.ViewMatrix, kPerspective, static_cast<double>(view.ViewDistance),
                   static_cast<double>(view.ViewPhi), static_cast<double>(view.ViewTheta), {0, 0, 0},
                   {0, up, 0});
}

}  // namespace lorivan
