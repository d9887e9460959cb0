// Captions that buttons have for a while.
#pragma once

#include <string_view>

namespace lorivan {

inline constexpr std::string_view kStopCaption = "Stop";  // Create 2D, while an animation runs
inline constexpr std::string_view kWaitCaption = "wait...";

}  // namespace lorivan
