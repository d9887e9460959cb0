#include "base/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace lorivan {
namespace {

void appendInteger(std::string& out, unsigned long long value) {
  std::array<char, 24> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  out.append(digits.data(), end);
}

}  // namespace

void appendMyFormat(std::string& out, float x) {
  if (!std::isfinite(x)) x = 0;
  // The whole part and the fraction are cut off in double, so that a float near a thousandth is not lifted.
  const double magnitude = std::fabs(static_cast<double>(x));
  const double whole = std::floor(magnitude);
  const auto thousandths = static_cast<int>((magnitude - whole) * 1000.0);
  if (x < 0 && (whole != 0 || thousandths != 0)) out += '-';
  if (whole < 1e18) {
    appendInteger(out, static_cast<unsigned long long>(whole));
  } else {
    std::array<char, 64> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), whole, std::chars_format::fixed, 0).ptr;
    out.append(digits.data(), end);
  }
  out += '.';
  out += static_cast<char>('0' + thousandths / 100);
  out += static_cast<char>('0' + thousandths / 10 % 10);
  out += static_cast<char>('0' + thousandths % 10);
}

std::string MyFormat(float x) {
  std::string text;
  appendMyFormat(text, x);
  return text;
}

std::string shortestText(float x) {
  if (!std::isfinite(x) || x == 0) return "0";
  std::array<char, 160> digits{};
  const auto end =
      std::to_chars(digits.data(), digits.data() + digits.size(), x, std::chars_format::fixed).ptr;
  return {digits.data(), end};
}

void appendPrinted(std::string& out, float x) {
  const std::string text = shortestText(x);
  if (text.front() != '-') out += ' ';
  out += text;
  out += ' ';
}

void appendPrinted(std::string& out, std::int64_t x) {
  std::array<char, 24> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), x).ptr;
  if (x >= 0) out += ' ';
  out.append(digits.data(), end);
  out += ' ';
}

std::string quoted(std::string_view text) {
  std::string shown = "\"";
  for (const char c : text.substr(0, 20)) shown += c >= ' ' && c <= '~' ? c : '?';
  return shown + (text.size() > 20 ? "...\"" : "\"");
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  return text;
}

std::string roundedUp(double length, int parts) {
  return shortestText(static_cast<float>(std::ceil(length * parts) / parts));
}

std::optional<long long> parseInteger(std::string_view text, long long low, long long high) {
  text = trimmed(text);
  if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
  long long value = 0;
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (fault != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  if (value < low || value > high) return std::nullopt;
  return value;
}

std::optional<double> parseNumber(std::string_view text) {
  text = trimmed(text);
  if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
  double value = 0;
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (fault != std::errc{} || end != text.data() + text.size() || !std::isfinite(value)) return std::nullopt;
  return value;
}

std::optional<double> parseTyped(std::string_view text) {
  std::string withPoint(text);
  std::ranges::replace(withPoint, ',', '.');
  return parseNumber(withPoint);
}

std::string lowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return lower;
}

std::string_view withoutMark(std::string_view text) {
  constexpr std::string_view mark = "\xEF\xBB\xBF";
  return text.starts_with(mark) ? text.substr(mark.size()) : text;
}

}  // namespace lorivan
