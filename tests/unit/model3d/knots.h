// Small strand stores made by hand for the tests of the 3-D model.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "curve_maker.h"
#include "model3d/rotator.h"
#include "model3d/tube_builder.h"

namespace lorivan {

/// The view at three angles in degrees.
inline ViewState viewAt(float theta, float phi, float psi) {
  ViewState view;
  setTheta(view, theta);
  setPhi(view, phi);
  setPsi(view, psi);
  return view;
}

inline void addStrand(StrandStore& store, int slot, const std::vector<StrandPoint>& points) {
  for (std::size_t i = 0; i < points.size(); ++i) store.point(slot, static_cast<int>(i)) = points[i];
  store.point(slot, static_cast<int>(points.size())) = points[0];
  store.ThreadCount[slot] = static_cast<std::int32_t>(points.size());
}

/// A closed round of `count` points of the given radius; z alternates over and under when `woven`.
inline std::vector<StrandPoint> roundStrand(int count, float radius, bool woven) {
  return samplesRound(count, [=, point = 0](double angle) mutable {
    const double height = point++ % 2 != 0 ? -1 : 1;
    return sampleAt(radius * std::cos(angle), radius * std::sin(angle), woven ? height : 0);
  });
}

/// One strand through a trefoil's three crossings, apexes in between.
inline std::vector<StrandPoint> trefoil(int count = 24) {
  return samplesRound(count, [](double t) {
    const double x = std::sin(t) + 2 * std::sin(2 * t), y = std::cos(t) - 2 * std::cos(2 * t);
    const double height = std::sin(3 * t);
    return sampleAt(25 * x, 25 * y / 0.8, height > 0.3 ? -1 : height < -0.3 ? 1 : 0);
  });
}

inline StrandStore storeOf(const std::vector<StrandPoint>& points, int slot = 1) {
  StrandStore store;
  addStrand(store, slot, points);
  return store;
}

inline SlotColours allOf(Colour colour) {
  SlotColours colours;
  colours.fill(colour);
  return colours;
}

inline TubeModel built(const StrandStore& store, const TubeSettings& settings, Colour colour = 0xFFFFFF) {
  TubeModel model;
  EXPECT_TRUE(static_cast<bool>(buildTube(store, settings, allOf(colour), model)));
  return model;
}

inline float distance(const Vec3& a, const Vec3& b) {
  return std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y) + (a.z - b.z) * (a.z - b.z));
}

}  // namespace lorivan
