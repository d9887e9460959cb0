// The two tables of strand colours, and the fifteen colour boxes that they come from.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "base/colour.h"
#include "strands/strand_store.h"

namespace lorivan {

inline constexpr int kColourBoxes = 15;
using ColourBoxes = std::array<Colour, kColourBoxes>;

/// What the boxes hold at a first start: box k is entry k + 1 of the standard palette.
constexpr ColourBoxes firstColourBoxes() {
  ColourBoxes boxes{};
  for (int k = 0; k < kColourBoxes; ++k) boxes[k] = QBColor(k + 1);
  return boxes;
}

/// Colours by strand number, entries 1 to 40. `display` colours models and fields, `argb` draws the bands.
struct StrandColours {
  std::array<Colour, kStrandSlots> display{};
  std::array<std::uint32_t, kStrandSlots> argb{};
};

/// Both tables from the boxes: they repeat boxes 1 to 14, and band colour 15 is white.
StrandColours strandColours(const ColourBoxes& boxes);

/// The box that band colour `number` comes from; none: it is the white of number 15.
std::optional<int> boxOfColour(int number);

/// Takes over box `box` (0 to 14) after the user chose a colour for it.
void setStrandColour(StrandColours& colours, int box, Colour colour);

/// Background of the pictures: box number `index` - 1, index 0 giving the first box.
Colour BColor(const ColourBoxes& boxes, int index);

}  // namespace lorivan
