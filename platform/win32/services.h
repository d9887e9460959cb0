// Clipboard, clock and help.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/services.h"

namespace lorivan::win32 {

class SystemClipboard final : public Clipboard {
 public:
  void clear() override;
  Status putPicture(Surface& picture) override;
  Status putDrawing(const ClipboardDrawing& drawing, Surface& picture) override;
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

/// The application's folder among this user's own files, made when it is missing; empty when there is none.
std::string makeUserFolder(std::string_view application);
/// The language of the user's desktop: "de-AT".
std::string userLanguage();
/// The folder of the user's documents; empty when there is none.
std::string documentsFolder();
/// Null while somebody holds it.
std::unique_ptr<FileClaim> claimFile(const std::string& path);

/// The folder of the running program, without a separator at its end.
std::string folderOfProgram();

}  // namespace lorivan::win32
