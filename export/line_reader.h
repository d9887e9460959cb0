// Lines of a text that comes in blocks, and the numbers of our own text formats in them.
#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "export/mesh.h"

namespace lorivan {

class LineReader {
 public:
  /// Calls use(line) with every line that is complete by now, without its end.
  template <class Use>
  void take(std::string_view bytes, Use&& use) {
    for (std::size_t end = bytes.find('\n'); end != std::string_view::npos; end = bytes.find('\n')) {
      if (kept_.empty()) {
        use(withoutReturn(bytes.substr(0, end)));
      } else {
        kept_ += bytes.substr(0, end);
        use(withoutReturn(kept_));
        kept_.clear();
      }
      bytes.remove_prefix(end + 1);
    }
    kept_ += bytes;
  }
  /// Whether the last line had its end.
  bool atEnd() const { return kept_.empty(); }

 private:
  static std::string_view withoutReturn(std::string_view line) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
  }
  std::string kept_;
};

/// Takes "-1.250" from the front of `text` as -1250. False for anything but digits and three decimals.
inline bool takeThousandths(std::string_view& text, std::int32_t& value) {
  std::int64_t sum = 0;
  std::size_t at = text.starts_with('-') ? 1 : 0;
  const bool negative = at == 1;
  const auto digits = [&](std::size_t most) {
    const std::size_t first = at;
    for (; at < text.size() && at - first < most && text[at] >= '0' && text[at] <= '9'; ++at)
      sum = sum * 10 + (text[at] - '0');
    return at - first;
  };
  if (digits(7) == 0 || at >= text.size() || text[at++] != '.' || digits(3) != 3) return false;
  if (sum > std::numeric_limits<std::int32_t>::max()) return false;
  value = static_cast<std::int32_t>(negative ? -sum : sum);
  text.remove_prefix(at);
  return true;
}

/// Takes three numbers with one character between them.
inline bool takePoint(std::string_view& text, MeshPoint& p) {
  for (std::int32_t* axis : {&p.x, &p.y, &p.z}) {
    if (axis != &p.x && !text.empty()) text.remove_prefix(1);
    if (!takeThousandths(text, *axis)) return false;
  }
  return true;
}

/// Takes a whole number and the blanks before it. False where there is none.
inline bool takeIndex(std::string_view& text, std::uint32_t& value) {
  while (text.starts_with(' ')) text.remove_prefix(1);
  std::uint64_t sum = 0;
  std::size_t at = 0;
  for (; at < text.size() && at < 10 && text[at] >= '0' && text[at] <= '9'; ++at)
    sum = sum * 10 + static_cast<std::uint64_t>(text[at] - '0');
  if (at == 0 || sum > std::numeric_limits<std::uint32_t>::max()) return false;
  value = static_cast<std::uint32_t>(sum);
  text.remove_prefix(at);
  return true;
}

}  // namespace lorivan
