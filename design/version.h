// The program's version, as its caption and --version show it.
#pragma once

#include <string_view>

namespace lorivan {

inline constexpr std::string_view kVersion = "3.44k";

}  // namespace lorivan
