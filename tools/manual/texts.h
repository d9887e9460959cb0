// The texts of the packages that come from the program's own tables.
#pragma once

#include <string>

#include "base/result.h"

namespace lorivan {

/// The manual page, for man(7).
std::string manualPage();

/// What a bash completes behind "lorivan". The error names an option whose value nothing is known of.
Result<std::string> completion();

/// The types of the program's own files, by name and by content, for the desktop's shared database.
std::string fileTypes();

}  // namespace lorivan
