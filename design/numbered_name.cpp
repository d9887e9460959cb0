#include "design/numbered_name.h"

#include "base/numbers.h"
#include "base/sink.h"

namespace lorivan {
namespace {

constexpr int kMostFrames = 9999;
constexpr int kMostDigits = 9;

/// Zeros go between a sign and the digits.
std::string filled(std::string number, int digits) {
  const auto width = static_cast<std::size_t>(digits);
  const std::size_t sign = number.starts_with('-') ? 1 : 0;
  if (number.size() < width) number.insert(sign, width - number.size(), '0');
  return number;
}

}  // namespace

std::string NumberedName::name(std::span<const std::string> numbers) const {
  std::string text = between.front();
  for (std::size_t i = 0; i < digits.size(); ++i) text += filled(numbers[i], digits[i]) + between[i + 1];
  return text;
}

std::string NumberedName::name(int number) const {
  const std::string text = std::to_string(number);
  return name({&text, 1});
}

int NumberedName::most() const {
  int most = 9;
  const int places = digits[0] == 0 ? kMostDigits : digits[0];
  for (int i = 1; i < places && most < kMostFrames; ++i) most = most * 10 + 9;
  return most;
}

Result<NumberedName> parseNumberedName(const std::string& pattern) {
  const Error wrong = wrongUsage("\"{1}\" has a % that is no place for a number as %d or %03d is", pattern);
  NumberedName names;
  std::size_t at = 0, percent = pattern.size() - fileNameOf(pattern).size();
  while ((percent = pattern.find('%', percent)) != std::string::npos) {
    const std::size_t end = pattern.find('d', percent);
    if (end == std::string::npos) return wrong;
    const std::string digits = pattern.substr(percent + 1, end - percent - 1);
    const auto width = digits.empty() ? 0 : parseInteger(digits, 1, kMostDigits);
    if (!width || !(digits.empty() || (digits.size() == 2 && digits[0] == '0'))) return wrong;
    names.between.push_back(pattern.substr(at, percent - at));
    names.digits.push_back(static_cast<int>(*width));
    at = percent = end + 1;
  }
  names.between.push_back(pattern.substr(at));
  return names;
}

}  // namespace lorivan
