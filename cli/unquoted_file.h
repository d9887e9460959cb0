// File names with blanks that nobody put into quotes.
#pragma once

#include <string>
#include <vector>

namespace lorivan {

/// Whether `typed`, which the system took apart into `words`, names a file as a whole, and not every one of
/// several words does so by itself.
bool isUnquotedFile(const std::string& typed, const std::vector<std::string>& words);

}  // namespace lorivan
