// File names with blanks that nobody put into quotes.
#pragma once

#include "cli/command_line.h"

namespace lorivan {

/// As parseCommandLine(), for words that the system made of what was `typed`. Where they make no sense, the
/// whole text may name a file; not every one of the words does so by itself, else it would be two files.
Result<CommandLine> parseTyped(const std::vector<std::string>& words, const std::string& typed);

}  // namespace lorivan
