// Turning the view: four ways that agree, and the limits of each.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <vector>

#include "model3d/rotator.h"
#include "platform/none/recording_surface.h"

namespace lorivan {
namespace {

constexpr NavGeometry kNav = {40, 5, 5, 45, 45};

void expectSameView(const ViewState& a, const ViewState& b) {
  for (std::size_t i = 0; i < 16; ++i) EXPECT_NEAR(a.ViewMatrix.cells[i], b.ViewMatrix.cells[i], 2e-5);
  const AngleFields x = anglesInDegrees(a), y = anglesInDegrees(b);
  EXPECT_NEAR(std::remainder(x.theta - y.theta, 360.0F), 0, 1e-3);
  EXPECT_NEAR(std::remainder(x.phi - y.phi, 360.0F), 0, 1e-3);
}

TEST(Rotator, FieldKeyDragAndRotatorAgree) {
  for (int steps = -9; steps <= 9; ++steps) {
    const auto turn = static_cast<float>(steps * kPi / 20);
    const auto reach = static_cast<float>(40 * std::sqrt(std::fabs(std::sin(static_cast<double>(turn) / 2))));
    const float way = std::copysign(reach, turn);
    for (const bool upwards : {false, true}) {
      ViewState field, key, drag, nav;
      upwards ? setPhi(field, static_cast<float>(9 * steps))
              : setTheta(field, static_cast<float>(-9 * steps));
      for (int i = 0; i < std::abs(steps); ++i) {
        const int away = upwards ? (steps > 0 ? 38 : 40) : (steps > 0 ? 37 : 39);
        EXPECT_TRUE(turnByKey(key, away));
      }
      DragState state;
      for (int move = 0; move <= 40; ++move) {  // slowly, past several multiples of fifty pixels
        const float place = 50 * turn * static_cast<float>(move) / 40;
        EXPECT_TRUE(
            dragView(drag, state, kLeftButton, upwards ? 3 : 230 + place, upwards ? 130 - place : 77));
      }
      EXPECT_TRUE(DrawNav(nav, kNav, kLeftButton, 45 - (upwards ? 0 : way), 45 - (upwards ? way : 0)));
      expectSameView(key, field);
      expectSameView(drag, field);
      expectSameView(nav, field);
      const PointF marker = navMarkers(field, kNav).thetaPhi;
      EXPECT_NEAR(marker.x, 45 - (upwards ? 0 : way), 0.02);
      EXPECT_NEAR(marker.y, 45 - (upwards ? way : 0), 0.02);
    }
  }
}

TEST(Rotator, ADragInOneJumpTurnsAsASlowOne) {
  for (const float way : {-2600.0F, -650.0F, -330.0F, 330.0F, 1260.0F}) {
    ViewState jumped, slow;
    DragState jump, steps;
    for (int move = 0; move <= 40; ++move)
      dragView(slow, steps, kLeftButton, 200 + way * static_cast<float>(move) / 40,
               90 - way * static_cast<float>(move) / 50);
    for (const float part : {0.0F, 1.0F})
      dragView(jumped, jump, kLeftButton, 200 + way * part, 90 - 0.8F * way * part);
    expectSameView(jumped, slow);
    for (const float angle : {anglesInDegrees(jumped).theta, anglesInDegrees(jumped).phi}) {
      EXPECT_GE(angle, 0);
      EXPECT_LE(angle, 360);
    }
  }
}

TEST(Rotator, RollFollowsThePointerAndIsFoldedIntoTheMatrixOnly) {
  for (int degrees = 5; degrees < 360; degrees += 10) {
    ViewState view;
    const double angle = degrees * kPi / 180;
    const auto x = static_cast<float>(45 + 44 * std::cos(angle)),
               y = static_cast<float>(45 + 44 * std::sin(angle));
    ASSERT_TRUE(DrawNav(view, kNav, kRightButton, x, y));
    const PointF marker = navMarkers(view, kNav).psi;
    EXPECT_NEAR(marker.x, x, 1e-3) << degrees;
    EXPECT_NEAR(marker.y, y, 1e-3) << degrees;
    EXPECT_TRUE(view.ViewTheta == ViewState().ViewTheta && view.ViewPhi == 0);
  }
  // Quarter turns of the roll leave the front view in front.
  for (const float psi : {90.0F, 180.0F, 270.0F, 360.0F}) {
    ViewState view;
    setPsi(view, psi);
    EXPECT_TRUE(DrawNav(view, kNav, kRightButton, 45, 46));  // inside: only the matrix is made again
    expectSameView(view, ViewState());
    EXPECT_NEAR(anglesInDegrees(view).psi, psi, 1e-3);
  }
}

TEST(Rotator, ShowsNoAngleAsZeroABlueMarkerAndARedOne) {
  const AngleFields none = anglesInDegrees(ViewState());
  EXPECT_EQ((std::array{none.theta, none.phi, none.psi}), (std::array{0.F, 0.F, 0.F}));
  RecordingSurface surface(180,
                           180);  // the circle about (89, 89) reaches to 80, the marker of the roll to 88
  drawRotator(surface, ViewState(), 0x123456, 0);
  const std::pair<PointI, Colour> expected[] = {
      {{89, 89}, 0xFF0000}, {{86, 86}, 0xFF0000}, {{82, 86}, 0x123456}, {{175, 89}, 0x0000FF}};
  for (const auto& [at, colour] : expected) EXPECT_EQ(surface.pixel(at), colour) << at.x << ',' << at.y;
}

}  // namespace
}  // namespace lorivan
