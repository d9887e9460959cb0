#include "cli/report.h"

#include "cli/command_line.h"

namespace lorivan {

void Report::line(const std::string& message) {
  if (progress_) progress_->clear();
  errors_ << "lorivan: " << (knot_.empty() ? "" : "knot " + knot_ + ": ") << message << '\n';
}

void Report::told(const std::string& lines) {
  if (lines.empty()) return;
  if (progress_) progress_->clear();
  errors_ << lines;
}

int Report::fail(const Error& error, const std::string& where) {
  std::string oneLine = where + error.message;
  std::erase(oneLine, '\r');
  for (std::size_t at = 0; (at = oneLine.find('\n', at)) != std::string::npos;)
    oneLine.replace(at, 1, at > 0 && oneLine[at - 1] == '.' ? " " : ". ");
  line(oneLine);
  return exitStatusOf(error.kind);
}

void Report::note(const std::string& message) {
  if (!quiet_) line(message);
}

}  // namespace lorivan
