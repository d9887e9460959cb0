// Turning the view: four ways that agree, and the limits of each.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "model3d/rotator.h"

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

TEST(Rotator, FieldsReadBackWhatTheyWereGiven) {
  for (int degrees = 0; degrees < 360; degrees += 15) {
    ViewState view;
    setTheta(view, static_cast<float>(degrees));
    setPsi(view, static_cast<float>(degrees));
    setPhi(view, static_cast<float>(degrees));
    const AngleFields fields = anglesInDegrees(view);
    EXPECT_NEAR(fields.theta, degrees, 1e-3);
    EXPECT_NEAR(fields.psi, degrees, 1e-3);
    EXPECT_NEAR(fields.phi, degrees == 180 ? 180 + 0.02 * 180 / kPi : degrees, 1e-3);
  }
  EXPECT_EQ(anglesInDegrees(ViewState()).theta, 0);
}

TEST(Rotator, OnlyTheRightButtonInTheRightPlaceActs) {
  ViewState view;
  setTheta(view, 30);
  const ViewState before = view;
  EXPECT_TRUE(DrawNav(view, kNav, kRightButton, 50, 50));
  EXPECT_TRUE(DrawNav(view, kNav, kLeftButton, 1, 1));
  EXPECT_FALSE(DrawNav(view, kNav, 4, 45, 45));
  DragState drag;
  EXPECT_FALSE(dragView(view, drag, kRightButton, 400, 400));
  EXPECT_TRUE(dragView(view, drag, kLeftButton, 400, 100));  // only records
  EXPECT_FALSE(turnByKey(view, 13));
  expectSameView(view, before);

  EXPECT_TRUE(DrawNav(view, kNav, kLeftButton, 45, 5));  // at the rim
  EXPECT_EQ(view.ViewPhi, 2.0F);
  EXPECT_TRUE(DrawNav(view, kNav, kLeftButton, 85, 45));
  EXPECT_NEAR(view.ViewTheta, 1.5 * kPi, 1e-5);
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
    EXPECT_EQ(view.ViewTheta, ViewState().ViewTheta);
    EXPECT_EQ(view.ViewPhi, 0);
    EXPECT_EQ(view.ViewDistance, 20);
  }
  // The folded matrix at a roll of 30, 120, 210 and 300 degrees of the field, with Theta 20 and Phi 10.
  const double t = kPi / 2 - kPi / 9, p = kPi / 18, h = kPi / 2;
  for (int quadrant = 0; quadrant < 4; ++quadrant) {
    const double a = kPi / 6 + quadrant * h, s = std::sin(a), c = std::cos(a);
    const double phi = quadrant == 0 ? p * c - (t - h) * s : (t - h) * s - p * c;
    const double thetas[] = {t * c - (p - h) * s, -(p - h) * s - t * c, (p - h) * s - t * c,
                             t * c + (p - h) * s};
    ViewState view, folded;
    setTheta(view, 20);
    setPhi(view, 10);
    setPsi(view, static_cast<float>(30 + 90 * quadrant));
    EXPECT_TRUE(DrawNav(view, kNav, kRightButton, 45, 46));  // inside: only the matrix is made again
    folded.ViewPhi = static_cast<float>(phi);
    folded.ViewTheta = static_cast<float>(thetas[quadrant]);
    CheckAngles(folded);
    for (std::size_t i = 0; i < 16; ++i)
      EXPECT_NEAR(view.ViewMatrix.cells[i], folded.ViewMatrix.cells[i], 1e-5);
    EXPECT_NEAR(anglesInDegrees(view).theta, 20, 1e-3);
    EXPECT_NEAR(anglesInDegrees(view).phi, 10, 1e-3);
  }
  ViewState view;
  EXPECT_TRUE(DrawNav(view, kNav, kRightButton, 45, 89));
  EXPECT_EQ(view.ViewPsi, kHalfPiF);
}

}  // namespace
}  // namespace lorivan
