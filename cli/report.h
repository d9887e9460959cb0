// What a run tells on the error output: faults, notes, and how far it is.
#pragma once

#include <optional>
#include <ostream>
#include <string>

#include "base/result.h"
#include "cli/progress_line.h"
#include "platform/platform.h"

namespace lorivan {

class Report {
 public:
  Report(Platform& platform, std::ostream& errors, bool quiet)
      : errors_(errors),
        quiet_(quiet),
        progress_(std::in_place, platform.clock(), errors, platform.errorsGoToTerminal() && !quiet) {}

  /// Without progress, for what is told later.
  Report(std::ostream& out, bool quiet) : errors_(out), quiet_(quiet) {}

  /// Tells what another report has told.
  void told(const std::string& lines);
  /// Tells the error in one line and gives its exit status.
  int fail(const Error& error, const std::string& where = "");
  void note(const std::string& message);
  /// Faults and notes are about this one of many knots from now on; empty: about the run.
  void about(const std::string& knot) { knot_ = knot; }
  void reached(const std::string& name, double part) {
    if (progress_) progress_->reached(name, part);
  }

 private:
  void line(const std::string& message);

  std::ostream& errors_;
  bool quiet_;
  std::optional<ProgressLine> progress_;
  std::string knot_;
};

}  // namespace lorivan
