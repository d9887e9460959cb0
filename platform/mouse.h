// The mouse buttons by the numbers that mouse events carry.
#pragma once

namespace lorivan {

inline constexpr int kLeftButton = 1;
inline constexpr int kRightButton = 2;
inline constexpr int kMiddleButton = 3;

}  // namespace lorivan
