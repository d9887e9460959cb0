// Clipboard, clock and help.
#pragma once

#include "platform/services.h"

namespace lorivan::win32 {

class SystemClipboard final : public Clipboard {
 public:
  void clear() override;
  Status putPicture(Surface& picture) override;
};

class SystemClock final : public Clock {
 public:
  std::int64_t milliseconds() const override;
  void sleep(int milliseconds) override;
  float secondsOfDay() const override;
  std::uint64_t seed() const override;

 private:
  mutable std::uint32_t last_ = 0;  // the system's counter starts again after 49 days
  mutable std::int64_t turns_ = 0;
};

class BrowserHelp final : public Help {
 public:
  /// `folder` is where the help pages lie.
  explicit BrowserHelp(std::string folder) : folder_(std::move(folder)) {}
  Status open(const std::string& page) override;

 private:
  std::string folder_;
};

/// The folder of the running program, without a separator at its end.
std::string folderOfProgram();

}  // namespace lorivan::win32
