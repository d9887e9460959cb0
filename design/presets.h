// Eleven named styles for a knot: bands and colours that go together. They leave the shape and its counts
// alone.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "design/knot_fields.h"

namespace lorivan {

inline constexpr int kPresetColours = 7;

struct Preset {
  std::string_view name;
  std::string_view about;  // one line for lists, tooltips and help
  int width, edge, swish, smooth, startColour;
  std::array<std::uint32_t, kPresetColours> strands;  // 0xRRGGBB, colours 1 to 7, then again 8 to 14
  std::uint32_t background;                           // 0xRRGGBB, goes into colour box 15
  bool firstColours = false;                          // all boxes get the colours of a first start instead
};

/// All styles, in the order of the menu.
std::span<const Preset> presetTable();

/// Place of the style of this name (any case) or number (from 0), or none.
std::optional<int> findPreset(std::string_view nameOrNumber);

/// Sets the band fields, the fifteen colour boxes and the background field; nothing else. `index` is a place
/// in the table. Strand colour tables made from the boxes are out of date afterwards.
void applyPreset(KnotFields& fields, int index);

}  // namespace lorivan
