// How far long work is, on one line of a terminal that is written over and gone at the end.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>

#include "platform/services.h"

namespace lorivan {

class ProgressLine {
 public:
  /// Writes nothing at all unless `shown`.
  ProgressLine(const Clock& clock, std::ostream& out, bool shown);
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;
  ~ProgressLine() { clear(); }

  /// `part`, 0 to 1, of the work is done, which is at `name` now. Work of less than a second shows no line.
  void reached(const std::string& name, double part);
  /// Takes the line away, before something else is written.
  void clear();

 private:
  const Clock& clock_;
  std::ostream& out_;
  bool shown_;
  std::int64_t start_;
  std::string line_;  // what stands there now
};

}  // namespace lorivan
