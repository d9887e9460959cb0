#include "strands/colours.h"

#include <algorithm>

namespace lorivan {
namespace {

constexpr int kAlwaysWhite = 15;

}  // namespace

std::optional<int> boxOfColour(int number) {
  if (number == kAlwaysWhite) return std::nullopt;
  return (number - 1) % 14;
}

StrandColours strandColours(const ColourBoxes& boxes) {
  StrandColours colours;
  for (int i = 1; i < kStrandSlots; ++i) {
    const Colour box = boxes[(i - 1) % 14];
    colours.display[i] = box;
    colours.argb[i] = toArgb(box);
  }
  colours.argb[kAlwaysWhite] = 0xFFFFFFFF;
  return colours;
}

void setStrandColour(StrandColours& colours, int box, Colour colour) {
  colours.display[static_cast<std::size_t>(box) + 1] = colour;
  colours.argb[static_cast<std::size_t>(box) + 1] = toArgb(colour);
}

Colour BColor(const ColourBoxes& boxes, int index) {
  return boxes[std::clamp(index - 1, 0, kColourBoxes - 1)];
}

}  // namespace lorivan
