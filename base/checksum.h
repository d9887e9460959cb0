// The check sums of PNG, ZIP and zlib data.
#pragma once

#include <cstdint>
#include <string_view>

namespace lorivan {

/// CRC-32 as in PNG chunks and ZIP entries, going on from that of what came before.
std::uint32_t crc32(std::string_view bytes, std::uint32_t before = 0);

/// Adler-32, at the end of a zlib stream.
std::uint32_t adler32(std::string_view bytes);

}  // namespace lorivan
