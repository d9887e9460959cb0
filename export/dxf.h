// What both DXF kinds have in common.
#pragma once

#include <array>

namespace lorivan {

/// AutoCAD colour index of a colour number: the list's entries in turn.
inline int dxfColour(int colourNumber) {
  constexpr std::array<int, 16> list = {3, 7, 8, 10, 11, 12, 13, 50, 52, 56, 59, 62, 63, 68, 78, 81};
  return list[static_cast<std::size_t>(colourNumber + 15) % list.size()];
}

}  // namespace lorivan
