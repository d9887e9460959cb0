// Clipboard, clock and help of the Qt back end.
#pragma once

#include <memory>
#include <string>

#include "platform/services.h"

namespace lorivan {

class ClipboardQt final : public Clipboard {
 public:
  void clear() override;
  Status putPicture(Surface& picture) override;
  Status putDrawing(const ClipboardDrawing& drawing, Surface& picture) override;
};

class ClockQt final : public Clock {
 public:
  std::int64_t milliseconds() const override;
  void sleep(int milliseconds) override;
  float secondsOfDay() const override;
  std::uint64_t seed() const override;
};

class HelpQt final : public Help {
 public:
  explicit HelpQt(std::string folder) : folder_(std::move(folder)) {}
  Status open(const std::string& page) override;

 private:
  std::string folder_;
};

/// $XDG_DATA_HOME/Lorivan, by default below ~/.local/share; empty when it cannot be made.
std::string makeUserFolder();

/// The folder of the user's documents; empty when there is none.
std::string documentsFolder();
/// Null while somebody holds it.
std::unique_ptr<FileClaim> claimFile(const std::string& path);

}  // namespace lorivan
