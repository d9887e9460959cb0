// What can be asked of output files beside the knot itself. The command line and the window fill it in.
#pragma once

#include <algorithm>
#include <optional>

namespace lorivan {

/// Width of pictures when none is asked for; height maps are twice as wide.
inline constexpr int kPictureWidth = 1000;

struct OutputOptions {
  std::optional<int> width = {};           // pixels of pictures; kPictureWidth when not given
  std::optional<double> millimetres = {};  // width of the finished knot
  std::optional<double> height = {};  // and its height, millimetres; of both, what is reached first counts
  bool transparent = false;           // svg and png without their background
  bool solidView = false;             // pictures hold the 3-D view
  bool animate = false;               // svg holds the animation; png and bmp are numbered frames
  bool outline = false;               // svg, pdf and dxf hold the closed outlines of the visible bands
  bool lines = false;                 // svg, pdf and dxf hold every centre line once
  bool arcs = false;                  // flat dxf curves become arcs where they fit
  bool cornerOrigin = false;          // svg, pdf and dxf begin at the knot's lower left corner
  std::optional<double> kerf = {};    // width of a cut in millimetres: outlines move outwards by half

  bool operator==(const OutputOptions&) const = default;
};

/// Millimetres for each unit of a thing that is so many units large; nothing when no size is wanted.
inline std::optional<double> wantedScale(const OutputOptions& options, double width, double height) {
  if (!options.height)
    return options.millimetres ? std::optional(*options.millimetres / width) : std::nullopt;
  const double scale = *options.height / height;
  return options.millimetres ? std::min(scale, *options.millimetres / width) : scale;
}

}  // namespace lorivan
