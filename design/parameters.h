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
  std::string_view field;      // "vtXNo"
  std::string_view caption;    // label beside the field, and its name wherever the program speaks of it
  std::string_view shortName;  // the terse one that formulas and old hands use
  std::string_view tooltip;
  std::string_view about;     // the rest of a sentence that begins with the caption and a colon
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
    {"vtXNo", "Columns", "X", "Number of X cells (1-20)", "how many cells the shape has across", "1", "20",
     "2", "2", "txtXNo", "2", FollowUp::newGrid, "1", kWhole},
    {"vtYNo", "Rows", "Y", "Number of Y cells (1-20)",
     "how many cells it has from top to bottom, or rings round its middle", "1", "20", "2", "2", "txtyNo",
     "2", FollowUp::newGrid, "1", kWhole},
    {"vtCrossOffset", "Offset", "CO", "Cross or Spiral Offset (-7 to 7)",
     "moves the arms of a cross, makes a spiral longer or shorter", "-7", "7", "1", "1", "txtCrossOffset",
     "0", FollowUp::newGridOnly, "1", kWhole},
    {"vtGridSize", "AutoGrid cells", "AGS", "AutoGrid value or Number of alignment lines (1-100)",
     "cells that AutoGrid lays across your shape; lines to align with", "1", "100", "20", "20", "txtGridSize",
     "20", FollowUp::alignmentGrid, "1", kWhole},
    {"vtStartColour", "1st colour", "1st Col", "1st colour used for a strand (-15 to 15)",
     "of the first strand, the next ones follow; below 0 all strands have it", "-15", "15", "12", "12",
     "txtStartColour", "12", FollowUp::startColour, "1", kWhole},
    {"vtWidth", "Width", "", "Width of strand (2-30)",
     "half the width of the bands, in pixels of a picture 500 pixels wide", "2", "30", "7", "7", "txtWidth",
     "7", FollowUp::style, "1"},
    {"vtScale", "Scale", "", "Scale (8-99)", "size of one cell; built smaller where the shape would not fit",
     "6", "99", "30", "30", "txtScale", "30", FollowUp::scale, "1"},
    {"vtSwish", "Swish", "", "How much the knot swishes around corners (1-50)",
     "how far strands swing out where they go round a corner", "1", "50", "10", "10", "txtSwish", "10",
     FollowUp::style, "1"},
    {"vtSmooth", "Smooth", "", "Smooth out the knot shape (2-6)",
     "2 goes straight from corner to corner, 3 and 4 are round, 6 is soft", "2", "6", "3", "3", "txtSmooth",
     "0", FollowUp::style, "1", kWhole},
    {"vtSkew", "Stretch", "", "Stretch or shrink in one direction (0.1-10)",
     "makes the knot taller (above 1) or flatter (below 1)", "0.1", "10", "1", "1", "txtSkew", "1",
     FollowUp::newGridOnly, "0.1"},
    {"vtEdge", "Edge", "", "Edge width (1-28)", "width of the dark edge on each side of a band", "1", "28",
     "5", "5", "txtEdge", "4", FollowUp::style, "1"},
    {"vtAnimate", "Speed", "", "Animation speed 1-->9", "how fast the knot draws itself; 9 is the fastest",
     "1", "9", "15", "9", "txtAnimate", "9", FollowUp::animation, "1"},
    {"vtPolySides", "Sides", "", "Number of sides to the structure (3-...)",
     "how many sides a strand has when it is cut across", "3", "200", "5", "5", "txtPolySides", "5",
     FollowUp::model, "1", kWhole},
    {"vtPolyPoints", "Points", "", "Number of interpolated points (1-...)",
     "slices of a strand between two of its points; more make it smoother", "1", "50", "4", "4",
     "txtPolyPoints", "4", FollowUp::model, "1", kWhole},
    {"vtPolyRadius", "Radius", "", "Radius of the figure (1-10)", "thickness of the strands of the model",
     "1", "10", "6", "6", "txtPolyRadius", "5", FollowUp::model, "0.5"},
    {"vtPolySmooth", "Softness", "Smooth", "Smoothness factor (3-6)",
     "how softly a strand rises and falls at its crossings", "3", "20", "4", "4", "txtPolySmooth", "4",
     FollowUp::model, "1", kWhole},
    {"vtPolyZF", "Depth", "Z-factor", "How 3D do you want it? (0.25-10)",
     "how high a strand rises where it lies over another", "0.25", "10", "2", "2", "txtPolyZF", "2",
     FollowUp::model, "0.1"},
    {"vtRingPerc", "Ring %", "", "How much of a ring? 0=Flat, 75=Bracelet, 100=Ring",
     "bends the model round: 0 is flat, 75 a bracelet, 100 a ring", "0", "100", "0", "0", "txtRingPerc", "0",
     FollowUp::model, "5"},
    {"vtPicKnotBackColour", "Background", "Back", "Background Colour (0-15)",
     "the colour box that the background takes", "0", "15", "15", "15", "txtpicKnotBackColour", "15",
     FollowUp::background, "1", kWhole},
    {"vtTheta", "Turn", "Theta", "Rotation around Y axis",
     "turns the model round its upright axis, in degrees", "0", "360", "0", "0", "", "0", FollowUp::angle,
     "5"},
    {"vtPhi", "Tilt", "Phi", "Rotation around X axis", "tilts the model towards you or away, in degrees", "0",
     "360", "0", "0", "", "0", FollowUp::angle, "5"},
    {"vtPsi", "Roll", "Psi", "Rotation around Z axis",
     "rolls the model in the plane of the picture, in degrees", "0", "360", "0", "0", "", "0",
     FollowUp::angle, "5"},
    {"vtKa", "Ambient", "Ka", "Ambient light intensity",
     "light that comes from everywhere and brightens the shadows", "0", "1", "0.3", "0.3", "", "0.3",
     FollowUp::light, "0.05"},
    {"vtKd", "Diffuse", "Kd", "Diffuse reflection intensity", "light of the lamp, which shapes the strands",
     "0", "1", "0.9", "0.9", "", "0.9", FollowUp::light, "0.05"},
    {"vtKs", "Highlights", "Ks", "Specular reflectance",
     "how bright they are: 0 looks like clay, 1 like polished metal", "0", "1", "0.5", "0.5", "", "0.5",
     FollowUp::light, "0.05"},
    {"vtNFact", "Gloss", "NFact", "Specular factor", "the higher, the smaller and sharper the highlights",
     "0", "10", "10", "10", "", "10", FollowUp::light, "0.5"},
    {"vtKDist", "Lamp", "KDist", "Distance of light source",
     "how far away the lamp is; nearer to zero is closer", "-20000", "-500", "-1100", "-1100", "", "-1100",
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
  std::string_view field;                               // "chkShowGrid"
  std::string_view caption, shortName, tooltip, about;  // as in ParamSpec
  std::string_view key;                                 // settings key; empty: not saved
  bool firstRun;
  bool inPicture = false;  // the 2-D picture changes with it
};

namespace tables {

inline constexpr bool kInPicture = true;
inline constexpr std::string_view kAnimateTip = "Animate the drawing of the knot";
inline constexpr std::string_view kFlatDxfTip = "Save DXF file in 2D format (e.g. for CNC machines)";

inline constexpr std::array<CheckSpec, kCheckCount> kChecks = {{
    {"chkShowGrid", "Show grid with knot", "", "Show the grid behind the knot",
     "the grid stands behind the knot, here and in pictures that you save", "chkShowGrid", true, kInPicture},
    {"chkShowCrossings", "Show crossings", "", "Mark every crossing on the grid",
     "the place where strands cross is marked on every line of the grid", "chkShowCrossings", true,
     kInPicture},
    {"chkDXF2D", "2D DXF", "", kFlatDxfTip, "DXF files hold flat lines for cutting machines, not the model",
     "chkDXF2D", false},
    {"chkFullyCrossed", "Output fully crossed 2D DXF", "", kFlatDxfTip,
     "the lines of a flat DXF file run on under the crossings", "chkFullyCrossed", false},
    {"chkShapeT", "Triangles", "TGrid", "Use a Triangular AutoGrid",
     "AutoGrid lays triangles instead of squares", "chkShapeT", true},
    {"chkHeightMap", "Height map", "HeightMap",
     "Grey levels by depth, and a picture of twice the size for saving",
     "grey levels by depth, for engravers and relief carving", "chkHeightMap", false},
    {"chkAnimate", "Animate", "", kAnimateTip, "Create 2D draws the knot stroke by stroke", "chkAnimate",
     false, kInPicture},
    {"chkLoop", "Loop", "", kAnimateTip, "the drawing starts again when it is done", "chkLoop", false},
    {"chkConstantShape", "Constant Shape", "",
     "Constant Shape (i.e. only generate random knots of the selected shape)",
     "Random draws knots of the chosen shape alone", "chkConstantShape", false},
    {"chkMirror", "Swap over/under", "Z-Mirror", "Swap over and under everywhere",
     "what lies over at a crossing lies under, everywhere", "", false, kInPicture},
    {"chkFitBands", "Fit bands", "", "Make the bands as wide as the grid has room for",
     "bands as wide as the grid has room for, until you type a width or an edge", "chkFitBands", false,
     kInPicture},
    {"chkClassic", "Classic joints", "", "Paint crossings by laying stretches on top, as before",
     "crossings are painted by laying stretches on top", "chkClassic", false, kInPicture},
    {"chkSmooth", "Smooth view", "Smooth",
     "Shade the 3D view smoothly, as the round strands are, instead of face by face",
     "round strands; without it every face is painted by itself", "chkSmooth", true},
    {"chkWrap", "Wrap", "",
     "Join the left and the right border: the knot becomes a ring that is interlaced all round",
     "the left and the right border are joined: the ring is interlaced all round", "chkWrap", false,
     kInPicture},
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
