// The one table of knot parameters. The window, the settings, the command line, the help pages and the tests
// all read it.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

namespace lorivan {

// clang-format off
/// Rows of the parameter table, in its order.
enum class Param {
  XNo, YNo, CrossOffset, GridSize, StartColour, Width, Scale, Swish, Smooth, Skew, Edge, Animate,
  PolySides, PolyPoints, PolyRadius, PolySmooth, PolyZF, RingPerc, PicKnotBackColour,
  Theta, Phi, Psi, Ka, Kd, Ks, NFact, KDist,
};
// clang-format on
inline constexpr int kParamCount = static_cast<int>(Param::KDist) + 1;

/// What a real change of the field sets going.
enum class FollowUp {
  newGrid,        // clear the drawn knot, build the grid
  newGridOnly,    // build the grid
  scale,          // ask when a knot is drawn, then build the grid
  style,          // clear the drawn knot
  startColour,    // recolour the field, clear the drawn knot
  background,     // recolour the field and the pictures
  animation,      // the frame delay or the animation controls
  alignmentGrid,  // redraw the shape editor's alignment grid
  model,          // the 3-D model is out of date
  light,          // render again
  angle,          // turn the view, render again
};

struct ParamSpec {
  std::string_view field;    // "vtXNo"
  std::string_view caption;  // label beside the field
  std::string_view tooltip;
  std::string_view min, max;  // limits, as the texts that a corrected field shows
  std::string_view fallback;  // shown when the text is no number
  std::string_view value;     // the field's own starting value
  std::string_view key;       // settings key; empty: not saved
  std::string_view firstRun;  // value when the settings hold none
  FollowUp followUp;
};

/// All rows, indexed by Param.
std::span<const ParamSpec> parameterTable();
const ParamSpec& parameterSpec(Param parameter);

/// The row whose field has this name ("vtXNo"), or none.
std::optional<Param> findParameter(std::string_view field);

/// Rows of the check-box table.
enum class Check {
  ShowGrid,
  ShowCrossings,
  DXF2D,
  FullyCrossed,
  ShapeT,
  HeightMap,
  Animate,
  Loop,
  ConstantShape,
  Mirror,
};
inline constexpr int kCheckCount = static_cast<int>(Check::Mirror) + 1;

struct CheckSpec {
  std::string_view field;  // "chkShowGrid"
  std::string_view caption;
  std::string_view tooltip;
  std::string_view key;  // settings key; empty: not saved
  bool firstRun;
};

std::span<const CheckSpec> checkTable();
std::optional<Check> findCheck(std::string_view field);

}  // namespace lorivan
