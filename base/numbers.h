// Rounding and numbers as text, both without the locale.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace lorivan {

inline constexpr double kPi = 3.14159265358979;
inline constexpr double kTwoPi = 6.28318530717958;
inline constexpr double kQuarterPi = 0.7853981633974475;
inline constexpr float kHalfPiF = 1.5707964F;
inline constexpr float kPiF = 3.1415927F;
inline constexpr float kTwoPiF = 6.2831855F;

/// Nearest whole number, halves to even, of one within the range of 64 bits. Does not depend on the rounding
/// mode of the machine.
inline std::int64_t nearestWhole(double x) {
  const auto whole = static_cast<std::int64_t>(x);
  const double rest = x - static_cast<double>(whole);  // of the sign of x
  const bool odd = (whole & 1) != 0;
  const bool up = rest > 0.5 || (rest == 0.5 && odd), down = rest < -0.5 || (rest == -0.5 && odd);
  return whole + static_cast<int>(up) - static_cast<int>(down);
}

/// The same for any number.
inline double roundHalfEven(double x) {
  if (!(std::fabs(x) < 0x1p52) || x == 0) return x;  // has no fraction
  return static_cast<double>(nearestWhole(x));
}

/// Rounds half to even into an integer type; values past its range stop at the range's ends, NaN gives 0.
template <class Int>
Int roundTo(double x) {
  constexpr Int least = std::numeric_limits<Int>::min(), most = std::numeric_limits<Int>::max();
  if (x >= static_cast<double>(least) && x < static_cast<double>(most))
    return static_cast<Int>(nearestWhole(x));
  if (std::isnan(x)) return 0;
  return x < 0 ? least : most;
}

inline std::int16_t toInt16(double x) { return roundTo<std::int16_t>(x); }
inline std::int32_t toInt32(double x) { return roundTo<std::int32_t>(x); }

/// The number with exactly three decimals, cut off towards zero, never "-0.000": 2.9999 gives "2.999".
/// Not-a-number and infinities give "0.000".
std::string MyFormat(float x);

/// Appends MyFormat(x) to `out` without a temporary.
void appendMyFormat(std::string& out, float x);

/// A number printed directly into a text file: one leading blank when not negative, one trailing blank,
/// shortest text that reads back as the same 32-bit float: 0.5 gives " 0.5 ", -3 gives "-3 ".
void appendPrinted(std::string& out, float x);
void appendPrinted(std::string& out, std::int64_t x);

/// Shortest decimal text of a 32-bit float, never with an exponent: "2", "0.25", "-7".
std::string shortestText(float x);

/// The shortest text of the next part, `parts` to a whole, above a length: 3.21 in tenths is "3.3".
std::string roundedUp(double length, int parts);

/// Strict whole number within [low, high]; blanks around it are allowed, anything else is refused.
std::optional<long long> parseInteger(std::string_view text, long long low, long long high);

/// Strict finite decimal number (an exponent is allowed); blanks around it are allowed.
std::optional<double> parseNumber(std::string_view text);

/// The same as people type it: a comma may stand in place of the point.
std::optional<double> parseTyped(std::string_view text);

/// At most the first 20 characters of a text, in quotes and printable, for a message.
std::string quoted(std::string_view text);

/// `text` without blanks and tabs at both ends.
std::string_view trimmed(std::string_view text);

/// `text` without the byte order mark that some editors put before a UTF-8 text.
std::string_view withoutMark(std::string_view text);

/// ASCII-only lower case.
std::string lowerCase(std::string_view text);

}  // namespace lorivan
