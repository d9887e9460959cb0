#include "cli/progress_line.h"

#include <algorithm>
#include <utility>

namespace lorivan {
namespace {

constexpr std::int64_t kPatience = 1000;  // milliseconds
constexpr std::size_t kLongestName = 50;  // a line that wraps could not be written over

}  // namespace

ProgressLine::ProgressLine(const Clock& clock, std::ostream& out, bool shown)
    : clock_(clock), out_(out), shown_(shown), start_(clock.milliseconds()) {}

void ProgressLine::reached(const std::string& name, double part) {
  if (!shown_ || clock_.milliseconds() - start_ < kPatience) return;
  const auto percent = static_cast<int>(std::clamp(part, 0.0, 1.0) * 100);
  std::string line = "lorivan: " + std::to_string(percent) + " %";
  if (name.size() <= kLongestName) line += ", " + name;
  if (line == line_) return;
  clear();
  out_ << line << std::flush;
  line_ = line;
}

void ProgressLine::clear() {
  const std::string old = std::exchange(line_, {});
  if (!old.empty()) out_ << '\r' << std::string(old.size(), ' ') << '\r' << std::flush;
}

}  // namespace lorivan
