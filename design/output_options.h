// What can be asked of output files beside the knot itself. The command line and the window fill it in.
#pragma once

#include <optional>

namespace lorivan {

/// Width of pictures when none is asked for; height maps are twice as wide.
inline constexpr int kPictureWidth = 1000;

struct OutputOptions {
  std::optional<int> width = {};           // pixels of pictures; kPictureWidth when not given
  std::optional<double> millimetres = {};  // width of the finished knot
  bool transparent = false;                // svg and png without their background
  bool solidView = false;                  // pictures hold the 3-D view
  bool animate = false;                    // svg holds the animation; png and bmp are numbered frames

  bool operator==(const OutputOptions&) const = default;
};

}  // namespace lorivan
