// Three-decimal numbers and indices written straight into a block of text, for files of millions of numbers.
#pragma once

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>

namespace lorivan {

/// The most characters that putThousandths and putInteger write.
inline constexpr std::size_t kMostDigits = 24;

/// The whole number of thousandths that MyFormat(x) shows: cut off towards zero, 0 for not-a-number and
/// infinities. What does not fit stops at the type's ends.
inline std::int64_t toThousandths(float x) {
  if (!std::isfinite(x)) return 0;
  const double magnitude = std::fabs(static_cast<double>(x));
  if (magnitude >= 9e15)
    return x < 0 ? std::numeric_limits<std::int64_t>::min() : std::numeric_limits<std::int64_t>::max();
  const auto whole = static_cast<std::int64_t>(magnitude);
  const auto rest = static_cast<std::int64_t>((magnitude - static_cast<double>(whole)) * 1000.0);
  const std::int64_t thousandths = whole * 1000 + rest;
  return x < 0 ? -thousandths : thousandths;
}

namespace detail {
/// "000" to "999", four bytes apart.
inline constexpr std::array<char, 4000> kTriples = [] {
  std::array<char, 4000> table{};
  for (std::size_t i = 0; i < 1000; ++i) {
    table[4 * i] = static_cast<char>('0' + i / 100);
    table[4 * i + 1] = static_cast<char>('0' + i / 10 % 10);
    table[4 * i + 2] = static_cast<char>('0' + i % 10);
  }
  return table;
}();
}  // namespace detail

/// Writes a whole number at `at` and returns the end. kMostDigits bytes must be free.
inline char* putInteger(char* at, std::int32_t value) {
  return std::to_chars(at, at + kMostDigits, value).ptr;
}

/// Writes `thousandths` / 1000 with its three decimals, never "-0.000": -1500 gives "-1.500".
inline char* putThousandths(char* at, std::int32_t thousandths) {
  if (thousandths < 0) *at++ = '-';
  const auto size = static_cast<std::uint32_t>(thousandths);
  const std::uint32_t magnitude = thousandths < 0 ? 0U - size : size;
  const std::uint32_t whole = magnitude / 1000;
  if (whole < 10) {
    *at++ = static_cast<char>('0' + whole);
  } else {
    at = std::to_chars(at, at + 7, whole).ptr;
  }
  *at++ = '.';
  std::memcpy(at, &detail::kTriples[static_cast<std::size_t>(magnitude % 1000) * 4], 3);
  return at + 3;
}

/// Copies a text that must fit and returns its end.
inline char* putText(char* at, std::string_view text) {
  std::memcpy(at, text.data(), text.size());
  return at + text.size();
}

}  // namespace lorivan
