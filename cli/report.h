// What a run tells on the error output: faults, notes, and how far it is.
#pragma once

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
        progress_(platform.clock(), errors, platform.errorsGoToTerminal() && !quiet) {}

  /// Tells the error in one line and gives its exit status.
  int fail(const Error& error, const std::string& where = "");
  void note(const std::string& message);
  /// Faults and notes are about this one of many knots from now on; empty: about the run.
  void about(const std::string& knot) { knot_ = knot; }
  void reached(const std::string& name, double part) { progress_.reached(name, part); }

 private:
  void line(const std::string& message);

  std::ostream& errors_;
  bool quiet_;
  ProgressLine progress_;
  std::string knot_;
};

}  // namespace lorivan
