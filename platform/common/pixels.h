// What surfaces with pixels of their own compute alike.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "platform/platform.h"

namespace lorivan {

/// What a premultiplied pixel 0xAARRGGBB looks like over an opaque background.
inline Colour overBackground(std::uint32_t argb, Colour background) {
  const int rest = 255 - static_cast<int>(argb >> 24);
  const auto mix = [&](int shift, int under) {
    return std::min(255, static_cast<int>(argb >> shift & 0xFF) + (under * rest + 127) / 255);
  };
  return makeColour(mix(16, redOf(background)), mix(8, greenOf(background)), mix(0, blueOf(background)));
}

/// Calls fill(left, y, width) for every row of Surface::dot, top down; nothing is clipped. Row by row,
/// because the systems' own small circles come out lopsided.
template <class Fill>
void fillDotRows(PointI centre, int diameter, Fill fill) {
  constexpr std::int32_t kFarthestCentre = 1'000'000;
  diameter = std::min(diameter, kLongestSide);
  const int half = diameter / 2;
  const int left = std::clamp(centre.x, -kFarthestCentre, kFarthestCentre) - half;
  const int top = std::clamp(centre.y, -kFarthestCentre, kFarthestCentre) - half;
  // The quarter keeps dots of 3 and 4 pixels round.
  const double limit = 1.0 * diameter * diameter / 4 + 0.25;
  for (int row = 0; row < diameter; ++row) {
    const double dy = row + 0.5 - diameter / 2.0;
    int inset = 0;
    while (inset < half && std::pow(inset + 0.5 - diameter / 2.0, 2) + dy * dy > limit) ++inset;
    fill(left + inset, top + row, diameter - 2 * inset);
  }
}

}  // namespace lorivan
