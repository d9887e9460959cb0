// File names with places for numbers.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "base/result.h"

namespace lorivan {

/// "frame-%03d.png" has one place, filled up with zeros to three digits; "%d-%d.svg" has two.
struct NumberedName {
  std::vector<std::string> between;  // the places, in order; one text more than places
  std::vector<int> digits;           // of each place; 0 as for "%d": as many as the number has

  std::size_t places() const { return digits.size(); }
  /// One number for each place, as text.
  std::string name(std::span<const std::string> numbers) const;
  /// For a name with one place.
  std::string name(int number) const;
  /// The largest number that keeps all names of one place equally long, at most 9999; also 9999 for "%d".
  int most() const;
};

/// Only the file name's own part is looked at, not its folder. The error, one sentence, tells of a "%" that
/// is no place.
Result<NumberedName> parseNumberedName(const std::string& pattern);

}  // namespace lorivan
