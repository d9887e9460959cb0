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
  std::string_view step = "1";  // of the arrow keys and the wheel
  bool whole = false;           // used as a whole number: the field writes back what it was rounded to
};

namespace tables {

inline constexpr bool kWhole = true;

// Where a tooltip names other limits than the row, the row is what the field does.
inline constexpr std::array<ParamSpec, kParamCount> kParameters = {{
    {"vtXNo", "X", "Number of X cells (1-20)", "1", "20", "2", "2", "txtXNo", "2", FollowUp::newGrid, "1",
     kWhole},
    {"vtYNo", "Y", "Number of Y cells (1-20)", "1", "20", "2", "2", "txtyNo", "2", FollowUp::newGrid, "1",
     kWhole},
    {"vtCrossOffset", "CO", "Cross or Spiral Offset (-7 to 7)", "-7", "7", "1", "1", "txtCrossOffset", "0",
     FollowUp::newGridOnly, "1", kWhole},
    {"vtGridSize", "AGS", "AutoGrid value or Number of alignment lines (1-100)", "1", "100", "20", "20",
     "txtGridSize", "20", FollowUp::alignmentGrid, "1", kWhole},
    {"vtStartColour", "1st Col", "1st colour used for a strand (-15 to 15)", "-15", "15", "12", "12",
     "txtStartColour", "12", FollowUp::startColour, "1", kWhole},
    {"vtWidth", "Width", "Width of strand (2-30)", "2", "30", "7", "7", "txtWidth", "7", FollowUp::style,
     "1"},
    {"vtScale", "Scale", "Scale (8-99)", "6", "99", "30", "30", "txtScale", "30", FollowUp::scale, "1"},
    {"vtSwish", "Swish", "How much the knot swishes around corners (1-50)", "1", "50", "10", "10", "txtSwish",
     "10", FollowUp::style, "1"},
    {"vtSmooth", "Smooth", "Smooth out the knot shape (2-6)", "2", "6", "3", "3", "txtSmooth", "0",
     FollowUp::style, "1", kWhole},
    {"vtSkew", "Stretch", "Stretch or shrink in one direction (0.1-10)", "0.1", "10", "1", "1", "txtSkew",
     "1", FollowUp::newGridOnly, "0.1"},
    {"vtEdge", "Edge", "Edge width (1-28)", "1", "28", "5", "5", "txtEdge", "4", FollowUp::style, "1"},
    {"vtAnimate", "Speed", "Animation speed 1-->9", "1", "9", "15", "9", "txtAnimate", "9",
     FollowUp::animation, "1"},
    {"vtPolySides", "Sides ", "Number of sides to the structure (3-...)", "3", "200", "5", "5",
     "txtPolySides", "5", FollowUp::model, "1", kWhole},
    {"vtPolyPoints", "Points", "Number of interpolated points (1-...)", "1", "50", "4", "4", "txtPolyPoints",
     "4", FollowUp::model, "1", kWhole},
    {"vtPolyRadius", "Radius", "Radius of the figure (1-10)", "1", "10", "6", "6", "txtPolyRadius", "5",
     FollowUp::model, "0.5"},
    {"vtPolySmooth", "Smooth", "Smoothness factor (3-6)", "3", "20", "4", "4", "txtPolySmooth", "4",
     FollowUp::model, "1", kWhole},
    {"vtPolyZF", "Z-factor", "How 3D do you want it? (0.25-10)", "0.25", "10", "2", "2", "txtPolyZF", "2",
     FollowUp::model, "0.1"},
    {"vtRingPerc", "Ring %", "How much of a ring? 0=Flat, 75=Bracelet, 100=Ring", "0", "100", "0", "0",
     "txtRingPerc", "0", FollowUp::model, "5"},
    {"vtPicKnotBackColour", "Back", "Background Colour (0-15)", "0", "15", "15", "15", "txtpicKnotBackColour",
     "15", FollowUp::background, "1", kWhole},
    {"vtTheta", "Theta", "Rotation around Y axis", "0", "360", "0", "0", "", "0", FollowUp::angle, "5"},
    {"vtPhi", "Phi", "Rotation around X axis", "0", "360", "0", "0", "", "0", FollowUp::angle, "5"},
    {"vtPsi", "Psi", "Rotation around Z axis", "0", "360", "0", "0", "", "0", FollowUp::angle, "5"},
    {"vtKa", "Ka", "Ambient light intensity", "0", "1", "0.3", "0.3", "", "0.3", FollowUp::light, "0.05"},
    {"vtKd", "Kd", "Diffuse reflection intensity", "0", "1", "0.9", "0.9", "", "0.9", FollowUp::light,
     "0.05"},
    {"vtKs", "Ks", "Specular reflectance", "0", "1", "0.5", "0.5", "", "0.5", FollowUp::light, "0.05"},
    {"vtNFact", "NFact", "Specular factor", "0", "10", "10", "10", "", "10", FollowUp::light, "0.5"},
    {"vtKDist", "KDist", "Distance of light source", "-20000", "-500", "-1100", "-1100", "", "-1100",
     FollowUp::light, "100"},
}};

}  // namespace tables

/// All rows, indexed by Param.
constexpr std::span<const ParamSpec> parameterTable() { return tables::kParameters; }
constexpr const ParamSpec& parameterSpec(Param parameter) {
  return tables::kParameters[static_cast<std::size_t>(parameter)];
}

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
  FitBands,
  Classic,
  Smooth,
  Wrap,
};
inline constexpr int kCheckCount = static_cast<int>(Check::Wrap) + 1;

struct CheckSpec {
  std::string_view field;  // "chkShowGrid"
  std::string_view caption;
  std::string_view tooltip;
  std::string_view key;  // settings key; empty: not saved
  bool firstRun;
  bool inPicture = false;  // the 2-D picture changes with it
};

namespace tables {

inline constexpr bool kInPicture = true;
inline constexpr std::string_view kAnimateTip = "Animate the drawing of the knot";
inline constexpr std::string_view kFlatDxfTip = "Save DXF file in 2D format (e.g. for CNC machines)";

inline constexpr std::array<CheckSpec, kCheckCount> kChecks = {{
    {"chkShowGrid", "Show grid with knot", "Show the grid behind the knot", "chkShowGrid", true, kInPicture},
    {"chkShowCrossings", "Show crossings", "Mark every crossing on the grid", "chkShowCrossings", true,
     kInPicture},
    {"chkDXF2D", "2D DXF", kFlatDxfTip, "chkDXF2D", false},
    {"chkFullyCrossed", "Output fully crossed 2D DXF", kFlatDxfTip, "chkFullyCrossed", false},
    {"chkShapeT", "TGrid", "Use a Triangular AutoGrid", "chkShapeT", true},
    {"chkHeightMap", "HeightMap", "Grey levels by depth, and a picture of twice the size for saving",
     "chkHeightMap", false},
    {"chkAnimate", "Animate", kAnimateTip, "chkAnimate", false, kInPicture},
    {"chkLoop", "Loop", kAnimateTip, "chkLoop", false},
    {"chkConstantShape", "Constant Shape",
     "Constant Shape (i.e. only generate random knots of the selected shape)", "chkConstantShape", false},
    {"chkMirror", "Z-Mirror", "Swap over and under everywhere", "", false, kInPicture},
    {"chkFitBands", "Fit bands", "Make the bands as wide as the grid has room for", "chkFitBands", false,
     kInPicture},
    {"chkClassic", "Classic joints", "Paint crossings by laying stretches on top, as before", "chkClassic",
     false, kInPicture},
    {"chkSmooth", "Smooth", "Shade the 3D view smoothly, as the round strands are, instead of face by face",
     "chkSmooth", true},
    {"chkWrap", "Wrap",
     "Join the left and the right border: the knot becomes a ring that is interlaced all round", "chkWrap",
     false, kInPicture},
}};

template <class Enum, class Table>
constexpr std::optional<Enum> findRow(const Table& table, std::string_view field) {
  for (std::size_t i = 0; i < table.size(); ++i)
    if (table[i].field == field) return static_cast<Enum>(i);
  return std::nullopt;
}

}  // namespace tables

/// All rows, indexed by Check.
constexpr std::span<const CheckSpec> checkTable() { return tables::kChecks; }
constexpr const CheckSpec& checkSpec(Check check) { return tables::kChecks[static_cast<std::size_t>(check)]; }

/// The row whose field has this name ("vtXNo", "chkMirror"), or none.
constexpr std::optional<Param> findParameter(std::string_view field) {
  return tables::findRow<Param>(tables::kParameters, field);
}
constexpr std::optional<Check> findCheck(std::string_view field) {
  return tables::findRow<Check>(tables::kChecks, field);
}

}  // namespace lorivan
