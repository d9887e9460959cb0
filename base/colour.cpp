#include "base/colour.h"

#include <cmath>

namespace lorivan {

double relativeLuminance(Colour colour) {
  const auto linear = [](int part) {
    const double c = part / 255.0;
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(redOf(colour)) + 0.7152 * linear(greenOf(colour)) + 0.0722 * linear(blueOf(colour));
}

}  // namespace lorivan
