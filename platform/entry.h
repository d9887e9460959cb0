// Where a back end's own entry point (main, wWinMain) hands over to the program.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/platform.h"

namespace lorivan {

/// How the program was started. All texts are UTF-8.
struct ProgramStart {
  std::vector<std::string> arguments;  // without the program's own name
  /// The arguments as they were typed, of a program without a console: whoever wrote them may not have known
  /// that a path with blanks wants quotes. Else empty.
  std::string typed = {};
  /// Shows a fault to the user. None: the error output has a reader.
  std::function<void(const std::string&)> showFault = nullptr;
};

/// The whole program; returns its exit status. Defined in app/, called by the entry point of the back end
/// that is linked.
int runProgram(Platform& platform, const ProgramStart& start);

}  // namespace lorivan
