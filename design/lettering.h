// Captions in pictures: plain letters of round strokes, the same on every system and in every format.
#pragma once

#include <string>
#include <string_view>

#include "platform/surface.h"

namespace lorivan {

/// Width of a line of text, in units of the height of its capital letters.
double letteringWidth(std::string_view text);

/// The text, or as much of its beginning as has room in such a width with "…" behind it.
std::string shortenedTo(std::string_view text, double width);

/// Draws a line of UTF-8 text from the left end of its base line. Letters, also those of German, digits and
/// `.,-+=%/:()…` are drawn, other characters as an empty box.
void drawLettering(Surface& surface, std::string_view text, PointF baseline, double capitalHeight,
                   Colour colour);

}  // namespace lorivan
