// One object that hands out everything a system offers. Each back end implements it once; the program gets it
// from the back end's entry point (platform/entry.h).
#pragma once

#include <algorithm>
#include <memory>
#include <string>

#include "platform/metafile.h"
#include "platform/services.h"
#include "platform/window.h"

namespace lorivan {

/// No picture is larger than this many pixels on a side, nor than kMostPixels in all.
inline constexpr int kLongestSide = 32767;
inline constexpr long long kMostPixels = 200'000'000;

/// An error when no picture of this size can be made; every createSurface calls it first.
inline Status checkPictureSize(int width, int height) {
  if (width < 1 || height < 1) return unwritable("a picture needs at least one pixel");
  if (width > kLongestSide || height > kLongestSide || 1LL * width * height > kMostPixels)
    return unwritable("a picture of {1} x {2} pixels is too large", width, height);
  return {};
}

struct PictureSize {
  int width = 1, height = 1;
};

/// The size of a picture that is made smaller, with its proportion, where it does not fit into a box.
inline PictureSize sizeWithin(PictureSize picture, PictureSize box) {
  const double factor = std::min({1.0, 1.0 * box.width / picture.width, 1.0 * box.height / picture.height});
  return {std::max(1, static_cast<int>(picture.width * factor)),
          std::max(1, static_cast<int>(picture.height * factor))};
}

class Platform {
 public:
  virtual ~Platform() = default;

  /// A picture in memory, white. Needs no display.
  virtual Result<std::unique_ptr<Surface>> createSurface(int width, int height) = 0;
  /// The bytes of a picture file. A PNG keeps the transparency of Surface::clearTransparent.
  virtual Result<std::string> encodePicture(Surface& picture, PictureFormat format) = 0;
  /// A picture file (BMP, PNG, JPEG) on white, for tracing. The surface has the picture's size, or is as
  /// large as fits into width x height, see sizeWithin().
  virtual Result<std::unique_ptr<Surface>> loadPicture(const std::string& path, int width, int height) = 0;

  /// A metafile in memory, empty.
  virtual Result<std::unique_ptr<Metafile>> createMetafile(const MetafileSize& size) = 0;

  virtual Settings& settings() = 0;
  virtual Clipboard& clipboard() = 0;
  virtual Clock& clock() = 0;
  virtual Help& help() = 0;
  /// The folder that the program and its data files lie in, without a separator at its end.
  virtual std::string programFolder() const = 0;
  /// The folder for the program's own files of this user, made when it is missing, without a separator at its
  /// end. Empty when there is none.
  virtual std::string userFolder() = 0;
  /// Where the user keeps documents, without a separator at its end. Empty when there is no such folder.
  virtual std::string documentsFolder() = 0;
  /// Null while another process or another object holds it, or where no file can be made.
  virtual std::unique_ptr<FileClaim> claim(const std::string& path) = 0;
  /// Whether somebody reads the error output on a terminal, and it is not piped into a file or a program.
  virtual bool errorsGoToTerminal() const = 0;

  /// The language that the user's system speaks, as "de" or "de_AT.UTF-8"; empty when there is none.
  virtual std::string language() const = 0;
  /// The language of the program's window, as "de", for what the back end brings along of its own.
  virtual void setLanguage(std::string_view /*code*/) {}

  /// Whether a window can be opened; otherwise what it would need, as the error.
  virtual Status canOpenWindow() const = 0;
  /// The program's window, not yet shown. The tables and the events must outlive it.
  virtual Result<std::unique_ptr<Window>> createWindow(const WindowSpec& spec,
                                                       const WindowEvents& events) = 0;
};

}  // namespace lorivan
