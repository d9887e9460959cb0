// Pictures beside the items of lists, in the size and the colour that a line needs.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/window.h"

namespace lorivan {

/// The picture in another size, in one colour, as 0xAARRGGBB premultiplied by the coverage. Each new pixel
/// takes the mean of the old ones that it lies on. Empty for a picture or a size without pixels.
std::vector<std::uint32_t> tintedPicture(const ItemPicture& picture, int width, int height, Colour colour);

}  // namespace lorivan
