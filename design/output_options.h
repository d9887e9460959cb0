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
  std::optional<double> tube = {};         // thickness of the model's strands, millimetres
  bool solid = false;                      // the strands are fused to one body
  bool flat = false;                       // its underside is cut flat
  std::optional<double> base = {};         // thickness of a plate under it, millimetres
  std::optional<double> fillet = {};       // radius of the rounding where its strands meet, millimetres
  int cells = 8;                           // cells of the body for each radius of a strand
  bool animate = false;                    // svg holds the animation; png and bmp are numbered frames

  bool operator==(const OutputOptions&) const = default;
};

}  // namespace lorivan
