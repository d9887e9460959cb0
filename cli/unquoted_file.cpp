#include "cli/unquoted_file.h"

#include <algorithm>

#include "base/sink.h"

namespace lorivan {

bool isUnquotedFile(const std::string& typed, const std::vector<std::string>& words) {
  return words.size() > 1 && fileExists(typed) && !std::ranges::all_of(words, fileExists);
}

}  // namespace lorivan
