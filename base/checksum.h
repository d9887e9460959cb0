// The check sums of PNG, ZIP and zlib data.
#pragma once

#include <cstdint>
#include <string_view>

namespace lorivan {

/// CRC-32 as in PNG chunks and ZIP entries (polynomial 0xEDB88320, inverted at both ends).
std::uint32_t crc32(std::string_view bytes);

/// Adler-32, at the end of a zlib stream.
std::uint32_t adler32(std::string_view bytes);

}  // namespace lorivan
