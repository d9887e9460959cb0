#include "controls/valid_text.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/numbers.h"

namespace lorivan {
namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Bytes of a UTF-8 character after its first.
bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

/// Every pair of `separator` side by side, from the left, becomes one.
std::string halvePairs(std::string_view text, char separator) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    out += text[i];
    if (text[i] == separator && i + 1 < text.size() && text[i + 1] == separator) ++i;
  }
  return out;
}

std::string_view trimBlanks(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

/// The digits and at most one separator of a number without its sign.
double scanNumber(std::string_view text) {
  double value = 0, place = 1, multiplier = 1;
  int separators = 0;
  for (const char c : text) {
    if (isContinuation(c)) continue;
    if (isDigit(c)) {
      value = (c - '0') * place + multiplier * value;
      if (place >= 1)
        multiplier = 10;
      else
        place /= 10;
    } else {
      place /= 10;
      multiplier = 1;
      if (++separators == 2) return kNotANumber;
    }
  }
  return value;
}

float toFloat(double x) {
  constexpr double most = std::numeric_limits<float>::max();
  return static_cast<float>(std::clamp(x, -most, most));
}

/// The setting's key within "application, key".
std::string settingKey(std::string_view Key) {
  const std::size_t comma = Key.find(',');
  if (comma == std::string_view::npos || comma + 3 > Key.size()) return {};
  return std::string(Key.substr(comma + 3));
}

constexpr std::string_view kSection = "Global";

}  // namespace

double ChkNum(std::string_view Text) {
  const auto characters = Text.size() - static_cast<std::size_t>(std::ranges::count_if(Text, isContinuation));
  if (Text.empty() || (characters == 1 && !isDigit(Text.front()))) return kNotANumber;
  // Twice each: up to four separators in a row count as one.
  const std::string text = halvePairs(halvePairs(halvePairs(halvePairs(Text, '.'), '.'), ','), ',');
  std::string_view rest = trimBlanks(text);
  double sign = 1;
  if (!rest.empty() && rest.front() == '-') {
    sign = -1;
    if (rest.size() > 1) rest.remove_prefix(1);
  }
  const double value = scanNumber(rest);
  return value == kNotANumber ? value : sign * value;
}

RangeCheck checkRange(std::string_view Text, std::string_view Default, std::string_view Min,
                      std::string_view Max) {
  const float x = toFloat(ChkNum(Text));
  const float low = toFloat(parseNumber(Min).value_or(0));
  const float high = toFloat(parseNumber(Max).value_or(0));
  if (x == static_cast<float>(kNotANumber)) return {std::string(trimBlanks(Default)), false};
  if (x < low) return {std::string(trimBlanks(Min)), false};
  if (x > high) return {std::string(trimBlanks(Max)), false};
  return {shortestText(x), true};
}

ValidText::ValidText(ValidTextLimits limits, std::string value, SecondsOfDay seconds)
    : ValMin(std::move(limits.ValMin)),
      ValMax(std::move(limits.ValMax)),
      ValDefault(std::move(limits.ValDefault)),
      ValFormat(std::move(limits.ValFormat)),
      text_(std::move(value)),
      seconds_(std::move(seconds)) {}

void ValidText::pressEnter() {
  setValue(text_);
  if (Changed) Changed();
}

void ValidText::leave() {
  // Two corrections: a fall-back outside the limits is held within them by the second.
  setValue(text_);
  pressEnter();
}

std::string ValidText::ErrorCheck(std::string_view Text, std::string_view Default, std::string_view Min,
                                  std::string_view Max) {
  RangeCheck checked = checkRange(Text, Default, Min, Max);
  if (checked.inRange && !unDoing_ && checked.text != UndoText()) record(checked.text);
  return std::move(checked.text);
}

void ValidText::record(const std::string& text) {
  constexpr int kTop = 19;
  if (undoLevel_ < kTop) {
    ++undoLevel_;
  } else {
    std::move(undoTexts_.begin() + 1, undoTexts_.begin() + kTop + 1, undoTexts_.begin());
    std::move(undoTimes_.begin() + 1, undoTimes_.begin() + kTop + 1, undoTimes_.begin());
    undoLevel_ = kTop;
  }
  undoTexts_[index()] = text;
  undoTimes_[index()] = seconds_();
}

void ValidText::setUndoLevel(int level) { undoLevel_ = std::clamp(level, 0, kLastLevel); }

void ValidText::LoadVal(const Settings& settings, std::string_view Key) {
  std::string text = settings.read(kSection, settingKey(Key), ValDefault);
  if (text.empty()) text = ValDefault;
  start(text);
}

void ValidText::start(std::string_view text) {
  setValue(text);
  undoTexts_.fill({});
  undoTimes_.fill(0);
  undoLevel_ = 0;
  undoTexts_[0] = text_;
}

void ValidText::SaveVal(Settings& settings, std::string_view Key) const {
  settings.write(kSection, settingKey(Key), text_);
}

}  // namespace lorivan
