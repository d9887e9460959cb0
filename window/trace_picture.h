// The picture that a shape is traced over, pale, as large as it goes into the frame of the sheet.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "outlines/fit_outline.h"
#include "platform/platform.h"

namespace lorivan {

/// Of a surface, in its pixels; left and top belong to it, right and bottom do not.
struct PixelBox {
  int left = 0, top = 0, right = 0, bottom = 0;
};

class TracePicture {
 public:
  /// Takes another picture file (BMP, PNG, JPEG); after an error the one before stays.
  Status load(Platform& platform, const std::string& path);
  void clear();
  bool shown() const { return picture_ != nullptr; }

  /// Draws the picture into the middle of a box of the surface; does nothing while there is none.
  void paint(Surface& surface, PixelBox box);

  /// The outline of the picture's shape, where paint() shows it in the frame of a new sheet.
  Result<FittedOutline> traced() const;

 private:
  void fit(int width, int height);

  std::unique_ptr<Surface> picture_;   // as it was loaded
  std::vector<std::uint32_t> fitted_;  // pale, in the size painted last
  int width_ = 0, height_ = 0;
};

}  // namespace lorivan
