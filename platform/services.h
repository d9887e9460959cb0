// The services that the program asks of its system, apart from windows and drawing. All texts are UTF-8.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/colour.h"
#include "base/result.h"
#include "platform/surface.h"

namespace lorivan {

/// Values kept per user under an application and a section, as text. Reading never fails: what is missing or
/// damaged reads as the fallback.
class Settings {
 public:
  virtual ~Settings() = default;
  virtual std::string read(std::string_view section, std::string_view key,
                           std::string_view fallback) const = 0;
  virtual void write(std::string_view section, std::string_view key, std::string_view value) = 0;
  /// Brings everything written so far onto its store.
  virtual Status flush() { return {}; }
};

/// A drawing as the bytes of files; each back end takes what its system's programs read.
struct ClipboardDrawing {
  std::string svg, metafile;
};

class Clipboard {
 public:
  virtual ~Clipboard() = default;
  virtual void clear() = 0;
  virtual Status putPicture(Surface& picture) = 0;
  /// Both at once: the drawing comes first, the picture is for programs that read no drawings.
  virtual Status putDrawing(const ClipboardDrawing& drawing, Surface& picture) = 0;
};

class Clock {
 public:
  virtual ~Clock() = default;
  /// Milliseconds from some fixed moment; never runs backwards.
  virtual std::int64_t milliseconds() const = 0;
  virtual void sleep(int milliseconds) = 0;
  /// Seconds since midnight, local time.
  virtual float secondsOfDay() const = 0;
  /// A number that differs from start to start, to seed the random source with.
  virtual std::uint64_t seed() const = 0;
};

class Help {
 public:
  virtual ~Help() = default;
  /// Opens a help page (a file of the program's folder, "help/index.html#topic") in the system's browser.
  virtual Status open(const std::string& page) = 0;
};

/// An exclusive claim on a lock file. It ends with the object, or with the process, however that ends.
class FileClaim {
 public:
  virtual ~FileClaim() = default;
};

enum class PictureFormat { png, bmp };

}  // namespace lorivan
