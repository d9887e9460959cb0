// The program's version, as its caption and --version show it.
#pragma once

#include <string_view>

namespace lorivan {

extern const std::string_view kVersion;

}  // namespace lorivan
