// Numbers as the bytes of binary files, the same on every machine: least byte first but where they are called
// big.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>

namespace lorivan {

/// Least byte first, or back.
inline std::uint32_t inLittleOrder(std::uint32_t value) {
  if constexpr (std::endian::native == std::endian::big)
    value = value << 24 | (value << 8 & 0xFF0000) | (value >> 8 & 0xFF00) | value >> 24;
  return value;
}

/// Writes a number at `at` and returns the end.
inline char* putLittle16(char* at, std::uint16_t value) {
  at[0] = static_cast<char>(value & 0xFF);
  at[1] = static_cast<char>(value >> 8);
  return at + 2;
}
inline char* putLittle32(char* at, std::uint32_t value) {
  value = inLittleOrder(value);
  std::memcpy(at, &value, 4);
  return at + 4;
}
inline char* putFloat(char* at, float value) { return putLittle32(at, std::bit_cast<std::uint32_t>(value)); }

inline void appendLittle16(std::string& out, std::uint16_t value) {
  char bytes[2];
  out.append(bytes, putLittle16(bytes, value));
}
inline void appendLittle32(std::string& out, std::uint32_t value) {
  char bytes[4];
  out.append(bytes, putLittle32(bytes, value));
}

inline void appendBig32(std::string& out, std::uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8) out += static_cast<char>(value >> shift & 0xFF);
}

/// The numbers at `at`, where so many bytes must be.
inline std::uint32_t little32(const char* at) {
  std::uint32_t value = 0;
  std::memcpy(&value, at, 4);
  return inLittleOrder(value);
}
inline std::uint32_t big32(const char* at) {
  std::uint32_t value = 0;
  for (int i = 0; i < 4; ++i) value = value << 8 | static_cast<unsigned char>(at[i]);
  return value;
}
inline std::uint16_t little16(const char* at) {
  return static_cast<std::uint16_t>(static_cast<unsigned char>(at[0]) | static_cast<unsigned char>(at[1])
                                                                            << 8);
}
inline float littleFloat(const char* at) { return std::bit_cast<float>(little32(at)); }

}  // namespace lorivan
