// A block of pixels that somebody else owns.
#pragma once

#include <cstdint>

namespace lorivan {

/// 0xFFRRGGBB each, rows from the top, `stride` pixels from one row to the next. A surface that lends its own
/// pixels keeps them valid until it is resized or destroyed.
struct PixelBlock {
  std::uint32_t* pixels = nullptr;
  int width = 0, height = 0, stride = 0;
};

}  // namespace lorivan
