// What can be asked of output files beside the knot itself. The command line and the window fill it in.
#pragma once

#include <algorithm>
#include <optional>

namespace lorivan {

/// Width of pictures when none is asked for; height maps are twice as wide.
inline constexpr int kPictureWidth = 1000;

/// Samples across a relief's mesh when no width is asked for.
inline constexpr int kReliefWidth = 500;
inline constexpr double kReliefBase = 2;  // millimetres

struct OutputOptions {
  std::optional<int> width = {};           // pixels of pictures, samples of reliefs
  std::optional<double> millimetres = {};  // width of the finished knot
  std::optional<double> height = {};  // and its height, millimetres; of both, what is reached first counts
  bool transparent = false;           // svg and png without their background
  bool solidView = false;             // pictures hold the 3-D view
  std::optional<double> tube = {};    // thickness of the model's strands, millimetres
  bool solid = false;                 // the strands are fused to one body
  bool flat = false;                  // its underside is cut flat
  std::optional<double> fillet = {};  // radius of the rounding where its strands meet, millimetres
  int cells = 8;                      // cells of the body for each radius of a strand
  bool animate = false;               // svg holds the animation; png and bmp are numbered frames
  bool outline = false;               // svg, pdf and dxf hold the closed outlines of the visible bands
  bool lines = false;                 // svg, pdf and dxf hold every centre line once
  bool arcs = false;                  // flat dxf curves become arcs where they fit
  bool cornerOrigin = false;          // svg, pdf and dxf begin at the knot's lower left corner
  std::optional<double> kerf = {};    // width of a cut in millimetres: outlines move outwards by half
  bool weld = false;                  // obj with shared corners, and its materials in a second file
  bool binary = false;                // stl
  bool relief = false;                // png is a 16-bit height map, stl and 3mf are the model on a plate
  std::optional<double> base = {};    // thickness of the plate under a relief or a body, millimetres

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
