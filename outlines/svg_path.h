// The path data, numbers and transforms of SVG attributes.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "outlines/curves.h"

namespace lorivan {

/// Reads numbers as SVG writes them: separated by blanks or a comma, or run together as in "1-2.5.5".
class SvgNumbers {
 public:
  explicit SvgNumbers(std::string_view text) : text_(text) {}

  /// Nothing when something else comes next. No value is beyond 1e9.
  std::optional<double> next();
  /// A 0 or 1, which needs no separator behind it.
  std::optional<bool> flag();
  /// The letter that comes next; 0 at the end of the text and before anything else.
  char letter();
  bool atEnd();
  /// What stands here, for a message.
  std::string_view rest() const { return text_.substr(at_); }

 private:
  void skipSeparators();

  std::string_view text_;
  std::size_t at_ = 0;
};

/// Draws path data: M L H V C S Q T A Z and their small letters. `filled` closes what is left open, as
/// filling does. The error is one of input and says what stands in the way.
Status drawSvgPath(ChainPen& pen, std::string_view data, bool filled);

/// Of an attribute "transform"; the error as above.
Result<Affine> svgTransform(std::string_view text);

/// A length in pixels, 96 to an inch; of `whole` where it is a percentage. Nothing for what is no length.
std::optional<double> svgLength(std::string_view text, double whole);

}  // namespace lorivan
