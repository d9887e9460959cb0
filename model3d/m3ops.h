// Homogeneous 4 x 4 matrix and point operations in the row-vector convention p' = p M, and the view matrix
// that the three view angles make. Arithmetic is in double precision, results are kept in single precision.
#pragma once

#include <array>

#include "base/numbers.h"

namespace lorivan {

/// Rows and columns count from 1. Row 4 holds the translation, column 4 the perspective term.
struct Matrix4 {
  std::array<float, 16> cells{};
  float& operator()(int row, int column) { return cells[row * 4 + column - 5]; }
  float operator()(int row, int column) const { return cells[row * 4 + column - 5]; }
};

/// x, y, z, w under the numbers 1 to 4. Operations expect w = 1 of what they are given.
struct Point4 {
  std::array<float, 4> parts{0, 0, 0, 1};
  float& operator()(int k) { return parts[k - 1]; }
  float operator()(int k) const { return parts[k - 1]; }
};

/// A place or a direction given to the view set-up.
struct Triple {
  double x = 0, y = 0, z = 0;
};

/// The kind of projection that stands for perspective; every other number means parallel.
inline constexpr int kPerspective = 1;
/// Depth that ApplyProjected gives a point at infinity.
inline constexpr float kInfinitelyFar = 2147483648.0F;

void MatIdentity(Matrix4& m);
/// Perspective with the eye at distance d on the z axis; d = 0 gives the identity.
void MatPerspective(Matrix4& m, double d);
void MatScale(Matrix4& m, double sx, double sy, double sz);
void MatTranslate(Matrix4& m, double tx, double ty, double tz);

/// p M without the perspective column; w becomes 1. `out` may be `p`.
void ApplyAffine(const Point4& p, const Matrix4& m, Point4& out);

/// p M with x and y divided by w; z stays undivided, so that depth is linear. With w = 0, z becomes
/// kInfinitelyFar and x, y stay undivided. `out` may be `p`.
void ApplyProjected(const Point4& p, const Matrix4& m, Point4& out);

/// out = A B for matrices whose column 4 is (0, 0, 0, 1); theirs is ignored. `out` may be an operand.
void MatMultiplyAffine(Matrix4& out, const Matrix4& a, const Matrix4& b);
/// out = A B in full. `out` may be an operand.
void MatMultiplyFull(Matrix4& out, const Matrix4& a, const Matrix4& b);

/// The view from `eye` to `focus`, with the projected `up` along +y and the eye on the +z axis.
void MatViewFromTo(Matrix4& m, int kind, const Triple& eye, const Triple& focus, const Triple& up);
/// As above with the eye on a sphere round the origin, angles in radians; the azimuth counts from the x axis
/// towards the z axis.
void MatViewSpherical(Matrix4& m, int kind, double radius, double elevation, double azimuth,
                      const Triple& focus, const Triple& up);

template <class Real>
constexpr void CrossProduct(Real& x, Real& y, Real& z, Real a1, Real a2, Real a3, Real b1, Real b2, Real b3) {
  x = a2 * b3 - a3 * b2;
  y = a3 * b1 - a1 * b3;
  z = a1 * b2 - a2 * b1;
}

/// Where the knot is seen from. Angles in radians: elevation ViewPhi, azimuth ViewTheta from the x axis, and
/// the roll ViewPsi, which is applied to the finished picture and not by ViewMatrix.
struct ViewState {
  float ViewDistance = 20;
  float ViewTheta = static_cast<float>(kPi * 0.5);
  float ViewPhi = 0;
  float ViewPsi = 0;
  Matrix4 ViewMatrix{};
  ViewState();
};

/// Brings elevation and azimuth into one turn (one correction each way) and makes ViewMatrix from them. The
/// up vector is reversed past the poles, so that the picture does not flip there.
void CheckAngles(ViewState& view);

}  // namespace lorivan
