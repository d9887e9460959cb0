#include "base/checksum.h"

#include <zlib.h>

namespace lorivan {
namespace {

const Bytef* inputOf(std::string_view bytes) { return reinterpret_cast<const Bytef*>(bytes.data()); }

}  // namespace

std::uint32_t crc32(std::string_view bytes, std::uint32_t before) {
  return static_cast<std::uint32_t>(crc32_z(before, inputOf(bytes), bytes.size()));
}

std::uint32_t adler32(std::string_view bytes) {
  return static_cast<std::uint32_t>(adler32_z(1, inputOf(bytes), bytes.size()));
}

}  // namespace lorivan
