#include "base/checksum.h"

#include <algorithm>
#include <array>

namespace lorivan {
namespace {

constexpr std::array<std::uint32_t, 256> makeTable() {
  std::array<std::uint32_t, 256> table{};
  for (std::uint32_t i = 0; i < table.size(); ++i) {
    std::uint32_t value = i;
    for (int bit = 0; bit < 8; ++bit) value = (value >> 1) ^ (0xEDB88320 & (0 - (value & 1)));
    table[i] = value;
  }
  return table;
}

}  // namespace

std::uint32_t crc32(std::string_view bytes) {
  static constexpr std::array<std::uint32_t, 256> table = makeTable();
  std::uint32_t crc = 0xFFFFFFFF;
  for (const char c : bytes) crc = (crc >> 8) ^ table[(crc ^ static_cast<unsigned char>(c)) & 0xFF];
  return ~crc;
}

std::uint32_t adler32(std::string_view bytes) {
  constexpr std::uint32_t kModulus = 65521;
  constexpr std::size_t kBlock = 5552;  // the most bytes whose sums stay within 32 bits
  std::uint32_t a = 1, b = 0;
  while (!bytes.empty()) {
    for (const char c : bytes.substr(0, kBlock)) b += a += static_cast<unsigned char>(c);
    a %= kModulus;
    b %= kModulus;
    bytes.remove_prefix(std::min(kBlock, bytes.size()));
  }
  return b << 16 | a;
}

}  // namespace lorivan
