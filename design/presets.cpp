#include "design/presets.h"

#include "base/numbers.h"

namespace lorivan {
namespace {

// clang-format off
constexpr std::array<Preset, 11> kPresets = {{
    {"Illuminated", "Manuscript colours on vellum", 9, 2, 12, 4, 1,
     {0xC8402F, 0x2A5C9A, 0xE3A72F, 0x3C8559, 0x7A3F7C, 0xD9774B, 0x4A9BA8}, 0xF6ECD2},
    {"Ink", "White bands with a black outline: to engrave, burn or ink", 9, 2, 10, 4, 1,
     {0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF}, 0xFFFFFF},
    {"Stone", "Broad carved bands in warm greys", 11, 2, 9, 4, 1,
     {0xD8D2C4, 0xC4BCAC, 0xE4DFD4, 0xB5AD9E, 0xCDC8BD, 0xDAD0BB, 0xBEB9B0}, 0x8B867C},
    {"Gold", "Gold wire on midnight blue", 6, 1, 14, 4, 1,
     {0xE9BE55, 0xF6DC8E, 0xD49A34, 0xEFCB6E, 0xC78A2B, 0xF2D27B, 0xDFAE47}, 0x15203B},
    {"Ribbon", "Wide soft ribbons, hardly outlined", 10, 1, 12, 5, 1,
     {0xF2A7A0, 0xA8CBE6, 0xF8D59A, 0xB3D9B4, 0xD3B7E2, 0xF3BFD0, 0xA9DAD5}, 0xFDFAF5},
    {"Thread", "Fine threads, far apart", 4, 1, 16, 4, 1,
     {0xB03A48, 0x2F6690, 0x4F7942, 0xC98B2B, 0x6B4C8A, 0x2E8B8B, 0x8C4A2F}, 0xFAF6EE},
    {"Stained Glass", "Jewel colours between thick leads", 11, 4, 10, 3, 1,
     {0xD7263D, 0x1B6FC9, 0xF6AE2D, 0x1FA567, 0x8A3FC0, 0xF4743B, 0x17A5B8}, 0xE8EEF2},
    {"Forest", "Leaf and moss on dark green", 10, 2, 14, 4, 1,
     {0x9CC069, 0x5E9A55, 0xD7D98A, 0x7FB08A, 0xB7A94F, 0xC5DDA5, 0x4F8A6B}, 0x17301F},
    {"Sea", "Foam, shallow water and deep water", 8, 1, 20, 5, 1,
     {0x1D6E8F, 0x58B4C4, 0xBFE3DF, 0x2B4F81, 0x7CCBB8, 0x3F8FB5, 0xE7F3EC}, 0xF0F7F8},
    {"Woodcut", "Straight cuts and sharp corners, black and brick red", 10, 3, 6, 2, 1,
     {0xB5452F, 0xF3E4C9, 0x7D2A22, 0xE6C796, 0xC96A45, 0xF0D8AE, 0x94392B}, 0xF3E4C9},
    {"Classic", "The bands and the sixteen colours of a first start", 7, 4, 10, 2, 12, {}, 0xFFFFFF, true},
}};
// clang-format on

constexpr Colour fromRgb(std::uint32_t rgb) {
  return makeColour(static_cast<int>(rgb >> 16 & 0xFF), static_cast<int>(rgb >> 8 & 0xFF),
                    static_cast<int>(rgb & 0xFF));
}

void set(KnotFields& fields, Param p, int value) { fields.text(p) = correctedText(p, std::to_string(value)); }

}  // namespace

std::span<const Preset> presetTable() { return kPresets; }

std::optional<int> findPreset(std::string_view nameOrNumber) {
  const auto count = static_cast<int>(kPresets.size());
  const auto number = parseInteger(nameOrNumber, 0, count - 1);
  const std::string wanted = lowerCase(nameOrNumber);
  for (int i = 0; i < count; ++i)
    if (number == i || lowerCase(kPresets[i].name) == wanted) return i;
  return std::nullopt;
}

void applyPreset(KnotFields& fields, int index) {
  const Preset& preset = kPresets[index];
  set(fields, Param::Width, preset.width);
  set(fields, Param::Edge, preset.edge);
  set(fields, Param::Swish, preset.swish);
  set(fields, Param::Smooth, preset.smooth);
  set(fields, Param::StartColour, preset.startColour);
  set(fields, Param::PicKnotBackColour, kColourBoxes);
  fields.boxes = firstColourBoxes();
  if (preset.firstColours) return;
  for (std::size_t k = 0; k + 1 < fields.boxes.size(); ++k)
    fields.boxes[k] = fromRgb(preset.strands[k % kPresetColours]);
  fields.boxes.back() = fromRgb(preset.background);
}

}  // namespace lorivan
