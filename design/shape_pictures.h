// A small picture of each shape of the list: its own knot, drawn as any other.
#pragma once

#include <vector>

#include "platform/platform.h"

namespace lorivan {

/// In the order of the shape table. One that cannot be drawn is empty.
std::vector<ItemPicture> shapePictures(Platform& platform);

}  // namespace lorivan
