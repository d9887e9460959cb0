// What options mean for each other and for the outputs, which may stand before or after them.
#pragma once

#include "cli/command_line.h"

namespace lorivan {

inline constexpr int kMostKnots = 100'000;
Error tooManyKnots();

/// The error is one of usage.
Status checkOptions(const CommandLine& line);

}  // namespace lorivan
