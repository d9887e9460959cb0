#include "base/colour.h"

#include <algorithm>
#include <cmath>

namespace lorivan {

double relativeLuminance(Colour colour) {
  const auto linear = [](int part) {
    const double c = part / 255.0;
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(redOf(colour)) + 0.7152 * linear(greenOf(colour)) + 0.0722 * linear(blueOf(colour));
}

double contrast(Colour one, Colour other) {
  const double a = relativeLuminance(one) + 0.05, b = relativeLuminance(other) + 0.05;
  return std::max(a, b) / std::min(a, b);
}

Colour standingOut(Colour colour, Colour background, double least) {
  const Colour end = relativeLuminance(background) < 0.18 ? 0xFFFFFF : 0x000000;
  constexpr int kSteps = 16;
  const auto mixed = [&](int step) {
    const auto part = [&](int from, int to) { return from + (to - from) * step / kSteps; };
    return makeColour(part(redOf(colour), redOf(end)), part(greenOf(colour), greenOf(end)),
                      part(blueOf(colour), blueOf(end)));
  };
  int step = 0;
  while (step < kSteps && contrast(mixed(step), background) < least) ++step;
  return mixed(step);
}

}  // namespace lorivan
