// Colours as 0x00BBGGRR numbers, and the standard 16-colour palette.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

namespace lorivan {

/// A 24-bit colour: red in the low byte, then green, then blue.
using Colour = std::uint32_t;

constexpr Colour makeColour(int red, int green, int blue) {
  return static_cast<Colour>(red | green << 8 | blue << 16);
}
constexpr int redOf(Colour c) { return static_cast<int>(c & 0xFF); }
constexpr int greenOf(Colour c) { return static_cast<int>(c >> 8 & 0xFF); }
constexpr int blueOf(Colour c) { return static_cast<int>(c >> 16 & 0xFF); }

/// The same colour as 0xAARRGGBB with the given alpha.
constexpr std::uint32_t toArgb(Colour c, std::uint32_t alpha = 0xFF) {
  return alpha << 24 | (c & 0xFF) << 16 | (c & 0xFF00) | (c >> 16 & 0xFF);
}

/// The colour of 0xAARRGGBB, whatever its alpha.
constexpr Colour fromArgb(std::uint32_t argb) {
  return (argb >> 16 & 0xFF) | (argb & 0xFF00) | (argb & 0xFF) << 16;
}

/// Entry `index` (0 to 15, held in that range) of the standard 16-colour palette.
constexpr Colour QBColor(int index) {
  constexpr std::array<Colour, 16> palette = {0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080,
                                              0x008080, 0xC0C0C0, 0x808080, 0xFF0000, 0x00FF00, 0xFFFF00,
                                              0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF};
  return palette[std::clamp(index, 0, 15)];
}

/// Relative luminance, 0 black to 1 white (the definition of sRGB). White letters on a colour below 0.18, and
/// black ones on the others, have a contrast of at least 4.5 to 1.
double relativeLuminance(Colour colour);

/// How far two colours stand apart: 1 (equal luminance) to 21 (black and white).
double contrast(Colour one, Colour other);

/// The colour where it has at least `least` contrast (1 to 4.5) to the background; else a mixture of it with
/// black or white, as little of these as is needed.
Colour standingOut(Colour colour, Colour background, double least);

}  // namespace lorivan
