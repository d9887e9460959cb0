#include "cli/unquoted_file.h"

#include <algorithm>

#include "base/sink.h"

namespace lorivan {

Result<CommandLine> parseTyped(const std::vector<std::string>& words, const std::string& typed) {
  auto line = parseCommandLine(words);
  const bool isFile = !line && fileExists(typed) && !std::ranges::all_of(words, fileExists);
  return isFile ? parseCommandLine({typed}) : line;
}

}  // namespace lorivan
