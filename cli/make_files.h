// Runs a command line that writes files: from fields to bytes on disk, without a window.
#pragma once

#include <ostream>

#include "cli/command_line.h"
#include "platform/platform.h"

namespace lorivan {

/// Returns the exit status; notes and errors go to `errors`. Either all outputs are written or none is.
int makeFiles(Platform& platform, const CommandLine& line, std::ostream& errors);

/// The same without files: what the model's maker must know goes to `report`. kNoKnot when the model would
/// not come out well.
int checkKnot(Platform& platform, const CommandLine& line, std::ostream& report, std::ostream& errors);

}  // namespace lorivan
