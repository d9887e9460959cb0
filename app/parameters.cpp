#include "app/parameters.h"

namespace lorivan {
namespace {

// Where a tooltip names other limits than the row, the row is what the field does.
constexpr std::array<ParamSpec, kParamCount> kParameters = {{
    {"vtXNo", "X", "Number of X cells (1-20)", "1", "20", "2", "2", "txtXNo", "2", FollowUp::newGrid},
    {"vtYNo", "Y", "Number of Y cells (1-20)", "1", "20", "2", "2", "txtyNo", "2", FollowUp::newGrid},
    {"vtCrossOffset", "CO", "Cross or Spiral Offset (-7 to 7)", "-7", "7", "1", "1", "txtCrossOffset", "0",
     FollowUp::newGridOnly},
    {"vtGridSize", "AGS", "AutoGrid value or Number of alignment lines (1-100)", "1", "100", "20", "20",
     "txtGridSize", "20", FollowUp::alignmentGrid},
    {"vtStartColour", "1st Col", "1st colour used for a strand (-15 to 15)", "-15", "15", "12", "12",
     "txtStartColour", "12", FollowUp::startColour},
    {"vtWidth", "Width", "Width of strand (2-30)", "2", "30", "7", "7", "txtWidth", "7", FollowUp::style},
    {"vtScale", "Scale", "Scale (8-99)", "6", "99", "30", "30", "txtScale", "30", FollowUp::scale},
    {"vtSwish", "Swish", "How much the knot swishes around corners (1-50)", "1", "50", "10", "10", "txtSwish",
     "10", FollowUp::style},
    {"vtSmooth", "Smooth", "Smooth out the knot shape (2-6)", "2", "6", "3", "3", "txtSmooth", "0",
     FollowUp::style},
    {"vtSkew", "Stretch", "Stretch or shrink in one direction (0.1-10)", "0.1", "10", "1", "1", "txtSkew",
     "1", FollowUp::newGridOnly},
    {"vtEdge", "Edge", "Edge width (1-28)", "1", "28", "5", "5", "txtEdge", "4", FollowUp::style},
    {"vtAnimate", "Speed", "Animation speed 1-->9", "1", "9", "15", "9", "txtAnimate", "9",
     FollowUp::animation},
    {"vtPolySides", "Sides ", "Number of sides to the structure (3-...)", "3", "200", "5", "5",
     "txtPolySides", "5", FollowUp::model},
    {"vtPolyPoints", "Points", "Number of interpolated points (1-...)", "1", "50", "4", "4", "txtPolyPoints",
     "4", FollowUp::model},
    {"vtPolyRadius", "Radius", "Radius of the figure (1-10)", "1", "10", "6", "6", "txtPolyRadius", "5",
     FollowUp::model},
    {"vtPolySmooth", "Smooth", "Smoothness factor (3-6)", "3", "20", "4", "4", "txtPolySmooth", "4",
     FollowUp::model},
    {"vtPolyZF", "Z-factor", "How 3D do you want it? (0.25-10)", "0.25", "10", "2", "2", "txtPolyZF", "2",
     FollowUp::model},
    {"vtRingPerc", "Ring %", "How much of a ring? 0=Flat, 75=Bracelet, 100=Ring", "0", "100", "0", "0",
     "txtRingPerc", "0", FollowUp::model},
    {"vtPicKnotBackColour", "Back", "Background Colour (0-15)", "0", "15", "15", "15", "txtpicKnotBackColour",
     "15", FollowUp::background},
    {"vtTheta", "Theta", "Rotation around Y axis", "0", "360", "0", "0", "", "0", FollowUp::angle},
    {"vtPhi", "Phi", "Rotation around X axis", "0", "360", "0", "0", "", "0", FollowUp::angle},
    {"vtPsi", "Psi", "Rotation around Z axis", "0", "360", "0", "0", "", "0", FollowUp::angle},
    {"vtKa", "Ka", "Ambient light intensity", "0", "1", "0.3", "0.3", "", "0.3", FollowUp::light},
    {"vtKd", "Kd", "Diffuse reflection intensity", "0", "1", "0.9", "0.9", "", "0.9", FollowUp::light},
    {"vtKs", "Ks", "Specular reflectance", "0", "1", "0.5", "0.5", "", "0.5", FollowUp::light},
    {"vtNFact", "NFact", "Specular factor", "0", "10", "10", "10", "", "10", FollowUp::light},
    {"vtKDist", "KDist", "Distance of light source", "-20000", "-500", "-1100", "-1100", "", "-1100",
     FollowUp::light},
}};

constexpr std::string_view kAnimateTip = "Animate the drawing of the knot";
constexpr std::string_view kFlatDxfTip = "Save DXF file in 2D format (e.g. for CNC machines)";

constexpr std::array<CheckSpec, kCheckCount> kChecks = {{
    {"chkShowGrid", "Show grid with knot", "Show the grid behind the knot", "chkShowGrid", true},
    {"chkShowCrossings", "Show crossings", "Mark every crossing on the grid", "chkShowCrossings", true},
    {"chkDXF2D", "2D DXF", kFlatDxfTip, "chkDXF2D", false},
    {"chkFullyCrossed", "Output fully crossed 2D DXF", kFlatDxfTip, "chkFullyCrossed", false},
    {"chkShapeT", "TGrid", "Use a Triangular AutoGrid", "chkShapeT", true},
    {"chkHeightMap", "HeightMap", "Grey levels by depth, and a picture of twice the size for saving",
     "chkHeightMap", false},
    {"chkAnimate", "Animate", kAnimateTip, "chkAnimate", false},
    {"chkLoop", "Loop", kAnimateTip, "chkLoop", false},
    {"chkConstantShape", "Constant Shape",
     "Constant Shape (i.e. only generate random knots of the selected shape)", "chkConstantShape", false},
    {"chkMirror", "Z-Mirror", "Swap over and under everywhere", "", false},
}};

template <class Enum, class Table>
std::optional<Enum> findRow(const Table& table, std::string_view field) {
  for (std::size_t i = 0; i < table.size(); ++i)
    if (table[i].field == field) return static_cast<Enum>(i);
  return std::nullopt;
}

}  // namespace

std::span<const ParamSpec> parameterTable() { return kParameters; }

const ParamSpec& parameterSpec(Param parameter) { return kParameters[static_cast<std::size_t>(parameter)]; }

std::optional<Param> findParameter(std::string_view field) { return findRow<Param>(kParameters, field); }

std::span<const CheckSpec> checkTable() { return kChecks; }

std::optional<Check> findCheck(std::string_view field) { return findRow<Check>(kChecks, field); }

}  // namespace lorivan
