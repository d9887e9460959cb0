// Where a back end's own entry point (main, wWinMain) hands over to the program.
#pragma once

#include <string>
#include <vector>

#include "platform/platform.h"

namespace lorivan {

/// The whole program; returns its exit status. `arguments` are UTF-8 and leave out the program's own name.
/// Defined in app/, called by the entry point of the back end that is linked.
int runProgram(Platform& platform, const std::vector<std::string>& arguments);

}  // namespace lorivan
