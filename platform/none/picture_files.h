// Picture files written and read without any library.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "base/result.h"
#include "platform/none/recording_surface.h"

namespace lorivan {

/// `pixels` are 0xAARRGGBB, rows from the top. The PNG is not compressed and keeps the alpha.
std::string encodePng(const std::uint32_t* pixels, int width, int height, int stride);
/// 24 bits a pixel.
std::string encodeBmp(const std::uint32_t* pixels, int width, int height, int stride);

/// An uncompressed BMP of 24 or 32 bits a pixel.
Result<std::unique_ptr<RecordingSurface>> decodeBmp(std::string_view bytes);

}  // namespace lorivan
