// A back end without a window system. Settings, clipboard and clock live in memory, dialogs are answered from
// a queue, and the window holds the state of its controls for a driver that plays the user. Programs that
// need no window link it, and so do the tests.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/none/none_window.h"
#include "platform/none/recording_surface.h"
#include "platform/platform.h"

namespace lorivan {

class MemorySettings final : public Settings {
 public:
  std::string read(std::string_view section, std::string_view key, std::string_view fallback) const override;
  void write(std::string_view section, std::string_view key, std::string_view value) override;
  Status flush() override;

  /// By section and key.
  std::map<std::pair<std::string, std::string>, std::string> values;
  int flushes = 0;
  Status flushed;  // what flush() answers
};

class MemoryClipboard final : public Clipboard {
 public:
  void clear() override {
    picture.reset();
    drawing = {};
  }
  Status putPicture(Surface& surface) override;
  Status putDrawing(const ClipboardDrawing& lines, Surface& surface) override;

  /// A copy of the last picture.
  std::unique_ptr<RecordingSurface> picture;
  ClipboardDrawing drawing;
};

/// Time that passes only when it is told to.
class ManualClock final : public Clock {
 public:
  std::int64_t milliseconds() const override { return now; }
  void sleep(int milliseconds) override { advance(milliseconds); }
  float secondsOfDay() const override { return secondsAtStart + static_cast<float>(now) / 1000; }
  std::uint64_t seed() const override { return seedValue; }
  void advance(std::int64_t milliseconds) { now += milliseconds; }

  std::int64_t now = 0;
  float secondsAtStart = 36000;
  std::uint64_t seedValue = 1;
};

class RecordingHelp final : public Help {
 public:
  Status open(const std::string& page) override;
  std::vector<std::string> pages;
};

class NonePlatform final : public Platform {
 public:
  Result<std::unique_ptr<Surface>> createSurface(int width, int height) override;
  Result<std::string> encodePicture(Surface& picture, PictureFormat format) override;
  /// Reads BMP files alone.
  Result<std::unique_ptr<Surface>> loadPicture(const std::string& path, int width, int height) override;
  Result<std::unique_ptr<Metafile>> createMetafile(const MetafileSize& size) override;

  MemorySettings& settings() override { return settings_; }
  MemoryClipboard& clipboard() override { return clipboard_; }
  ManualClock& clock() override { return clock_; }
  RecordingHelp& help() override { return help_; }
  std::string programFolder() const override { return folder; }
  std::string userFolder() override { return userFolder_; }
  std::string documentsFolder() override { return documents; }
  /// Makes no file; this object alone knows of it.
  std::unique_ptr<FileClaim> claim(const std::string& path) override;
  bool errorsGoToTerminal() const override { return false; }
  std::string language() const override { return userLanguage; }
  void setLanguage(std::string_view code) override { windowLanguage = code; }
  Status canOpenWindow() const override { return windowStatus; }
  Result<std::unique_ptr<Window>> createWindow(const WindowSpec& spec, const WindowEvents& events) override;

  /// The window made last, while it lives.
  NoneWindow* window() { return window_; }

  DialogQueue dialogs;
  std::string folder = "/program", documents, userFolder_, userLanguage, windowLanguage;
  Status windowStatus;
  bool outOfMemory = false;  // pictures cannot be made and saved
  WindowPlace screen{0, 0, 1920, 1080};

 private:
  MemorySettings settings_;
  MemoryClipboard clipboard_;
  ManualClock clock_;
  RecordingHelp help_;
  NoneWindow* window_ = nullptr;
  std::shared_ptr<std::set<std::string>> claimed_ = std::make_shared<std::set<std::string>>();
};

}  // namespace lorivan
