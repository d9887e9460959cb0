// The picture that a shape is traced over, pale, as large as the sheet that it lies on.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/platform.h"

namespace lorivan {

class TracePicture {
 public:
  static constexpr const char* kExtensions = "bmp png jpg jpeg";
  /// Whether a file's extension is one of those.
  static bool canLoad(const std::string& path);

  /// Takes another picture file (BMP, PNG, JPEG); after an error the one before stays.
  Status load(Platform& platform, const std::string& path);
  void clear();
  bool shown() const { return picture_ != nullptr; }

  /// Covers the whole surface with the picture; does nothing while there is none.
  void paint(Surface& surface);

 private:
  void fit(int width, int height);

  std::unique_ptr<Surface> picture_;   // large enough for any window
  std::vector<std::uint32_t> fitted_;  // pale, in the size painted last
  int width_ = 0, height_ = 0;
};

}  // namespace lorivan
