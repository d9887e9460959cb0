// The form as data: every control of the window with its kind, group and place, in the order that Tab
// follows. Captions and tooltips of parameters and check boxes come from their own tables.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "design/parameters.h"
#include "platform/window.h"
#include "strands/colours.h"

namespace lorivan {

struct FormRow {
  std::string_view name;
  ControlKind kind = ControlKind::label;
  std::string_view group;
  CellPlace place;
  std::string_view caption =
      {};  // empty: the caption of the parameter or check box that the row is or labels
  std::string_view tooltip = {};  // empty: that of the parameter or check box
  char mnemonic = 0;              // letter to mark in a caption that has no "&"
};

namespace form {

inline constexpr ControlKind group = ControlKind::group, label = ControlKind::label,
                             number = ControlKind::number, text = ControlKind::text,
                             check = ControlKind::check, radio = ControlKind::radio, list = ControlKind::list,
                             button = ControlKind::button, colourBox = ControlKind::colourBox,
                             picture = ControlKind::picture;

inline constexpr int kStrip = kStripRow;

// A label stands right before the control that it names.
// clang-format off
inline constexpr auto kRows = std::to_array<FormRow>({
    {"picGrid", picture, "", {0, 0}, "", "The grid and the 2D knot: click the middle of a line to change its kind"},
    {"picKnot", picture, "", {0, 0}, "", "The knot in 3D: drag to turn it, turn the wheel to come closer, double-click to fit it"},
    {"picShape", picture, "", {0, 0}, "", "Your own shape: drag to draw a line, click a point to delete it"},

    {"fraBasic", group, "", {0, 0, 24, 4}, "Basic Knot Characteristics", ""},
    {"lblType", label, "fraBasic", {0, 0, 17, 1}, "Basic knot shape", "", 'P'},
    {"lstType", list, "fraBasic", {17, 0, 31, 1}, "", "Basic knot shape"},
    {"lblXNo", label, "fraBasic", {0, 1, 17, 1}, "", "", 'C'},
    {"vtXNo", number, "fraBasic", {17, 1, 6, 1}},
    {"lblYNo", label, "fraBasic", {23, 1, 8, 1}, "", "", 'W'},
    {"vtYNo", number, "fraBasic", {31, 1, 6, 1}},
    {"lblXF", label, "fraBasic", {37, 1, 5, 1}, "CO"},
    {"vtCrossOffset", number, "fraBasic", {42, 1, 6, 1}},
    {"chkWrap", check, "fraBasic", {38, 1, 10, 1}},
    {"lblAGS", label, "fraBasic", {0, 2, 17, 1}, "", "", 'G'},
    {"vtGridSize", number, "fraBasic", {17, 2, 6, 1}},
    {"chkShapeT", check, "fraBasic", {24, 2, 24, 1}},
    {"chkConstantShape", check, "fraBasic", {1, 3, 23, 1}},
    {"chkMirror", check, "fraBasic", {24, 3, 24, 1}, "", "", 'U'},

    {"fra2D", group, "", {0, 1, 24, 3}, "2D Values", ""},
    {"lblStartColour", label, "fra2D", {0, 0, 13, 1}, "", "", '1'},
    {"vtStartColour", number, "fra2D", {13, 0, 6, 1}},
    {"lblWidth", label, "fra2D", {19, 0, 9, 1}, "", "", 'D'},
    {"vtWidth", number, "fra2D", {28, 0, 6, 1}},
    {"lblScale", label, "fra2D", {34, 0, 8, 1}, "", "", 'A'},
    {"vtScale", number, "fra2D", {42, 0, 6, 1}},
    {"lblSwish", label, "fra2D", {0, 1, 13, 1}},
    {"vtSwish", number, "fra2D", {13, 1, 6, 1}},
    {"lblSmooth", label, "fra2D", {19, 1, 9, 1}, "", "", 'M'},
    {"vtSmooth", number, "fra2D", {28, 1, 6, 1}},
    {"lblSkew", label, "fra2D", {34, 1, 8, 1}, "", "", 'T'},
    {"vtSkew", number, "fra2D", {42, 1, 6, 1}},
    {"lblPicKnotBackColour", label, "fra2D", {0, 2, 13, 1}, "", "", 'K'},
    {"vtPicKnotBackColour", number, "fra2D", {13, 2, 6, 1}},
    {"lblEdge", label, "fra2D", {19, 2, 9, 1}},
    {"vtEdge", number, "fra2D", {28, 2, 6, 1}},
    {"chkFitBands", check, "fra2D", {35, 2, 13, 1}, "", "", 'B'},

    {"fra3D", group, "", {0, 2, 24, 2}, "3D Values", ""},
    {"lblPolySides", label, "fra3D", {0, 0, 13, 1}},
    {"vtPolySides", number, "fra3D", {13, 0, 6, 1}},
    {"lblPolyPoints", label, "fra3D", {19, 0, 9, 1}},
    {"vtPolyPoints", number, "fra3D", {28, 0, 6, 1}},
    {"lblPolyRadius", label, "fra3D", {34, 0, 8, 1}},
    {"vtPolyRadius", number, "fra3D", {42, 0, 6, 1}},
    {"lblPolySmooth", label, "fra3D", {0, 1, 13, 1}},
    {"vtPolySmooth", number, "fra3D", {13, 1, 6, 1}},
    {"lblPolyZF", label, "fra3D", {19, 1, 9, 1}},
    {"vtPolyZF", number, "fra3D", {28, 1, 6, 1}},
    {"lblRingPerc", label, "fra3D", {34, 1, 8, 1}},
    {"vtRingPerc", number, "fra3D", {42, 1, 6, 1}},

    {"fraView", group, "", {0, 3, 24, 5}, "3D View", ""},
    {"picNav", picture, "fraView", {0, 0, 13, 4}, "", "3D Rotator - Left click for Theta/Phi, Right click for Psi"},
    {"lblTheta", label, "fraView", {13, 0, 8, 1}},
    {"vtTheta", number, "fraView", {21, 0, 7, 1}},
    {"lblKa", label, "fraView", {28, 0, 12, 1}},
    {"vtKa", number, "fraView", {40, 0, 8, 1}},
    {"lblPhi", label, "fraView", {13, 1, 8, 1}},
    {"vtPhi", number, "fraView", {21, 1, 7, 1}},
    {"lblKd", label, "fraView", {28, 1, 12, 1}},
    {"vtKd", number, "fraView", {40, 1, 8, 1}},
    {"lblPsi", label, "fraView", {13, 2, 8, 1}},
    {"vtPsi", number, "fraView", {21, 2, 7, 1}},
    {"lblKs", label, "fraView", {28, 2, 12, 1}},
    {"vtKs", number, "fraView", {40, 2, 8, 1}},
    {"lblNFact", label, "fraView", {13, 3, 8, 1}},
    {"vtNFact", number, "fraView", {21, 3, 7, 1}},
    {"lblKDist", label, "fraView", {28, 3, 12, 1}},
    {"vtKDist", number, "fraView", {40, 3, 8, 1}},
    {"chkSmooth", check, "fraView", {0, 4, 16, 1}},
    {"lblNPoly", label, "fraView", {16, 4, 10, 1}, "Polygons", "Number of polygons of the model"},
    {"txtNPoly", text, "fraView", {26, 4, 8, 1}, "", "Number of polygons of the model"},
    {"lblRDistance", label, "fraView", {34, 4, 9, 1}, "Distance", "Viewing distance"},
    {"txtRDistance", text, "fraView", {43, 4, 5, 1}, "", "Viewing distance"},

    {"fraSave3D", group, "", {0, 4, 24, 4}, "3D Save Format", ""},
    {"optPOV", radio, "fraSave3D", {0, 0, 8, 1}, "POV-Ray", "Save the knot as a POV-Ray scene"},
    {"optVRML", radio, "fraSave3D", {8, 0, 8, 1}, "VRML", "Save the knot as a VRML 2.0 world"},
    {"optOBJ", radio, "fraSave3D", {16, 0, 8, 1}, "OBJ", "Save the knot as a Wavefront OBJ mesh"},
    {"optDXF", radio, "fraSave3D", {0, 1, 8, 1}, "DXF", "Save the knot as an AutoCAD DXF file"},
    {"optSTL", radio, "fraSave3D", {8, 1, 8, 1}, "STL", "Save the knot as an STL mesh for 3D printing"},
    {"optGemVision", radio, "fraSave3D", {16, 1, 8, 1}, "GemVision", "Save the knot as a GemVision text"},
    {"optXYZ", radio, "fraSave3D", {0, 2, 8, 1}, "XYZ", "Save the knot as an XYZ point list"},
    {"chkHeightMap", check, "fraSave3D", {8, 2, 8, 1}},
    {"chkDXF2D", check, "fraSave3D", {16, 2, 8, 1}},
    {"chkFullyCrossed", check, "fraSave3D", {0, 3, 24, 1}},

    {"cmdRandknot", button, "", {0, kStrip, 6, 1}, "&Random", "Create a random knot"},
    {"cmdNewGrid", button, "", {6, kStrip, 6, 1}, "&New Grid", "Create a new grid"},
    {"cmdOldGrid", button, "", {12, kStrip, 6, 1}, "&Old Grid", "Show the grid again, without the knot"},
    {"cmd2D", button, "", {18, kStrip, 6, 1}, "Create &2D", "Create the knot in 2D"},
    {"cmd3D", button, "", {24, kStrip, 6, 1}, "Create &3D", "Create the knot in 3D"},
    {"cmd2DView", button, "", {30, kStrip, 5, 1}, "2D &View", "Show the 2D view"},
    {"cmd3DView", button, "", {35, kStrip, 5, 1}, "3D &View", "Show the 3D view"},

    {"fraColours", group, "", {0, kStrip + 1, 14, 2}, "Strand colours", ""},
    {"txtCol0", colourBox, "fraColours", {0, 0, 2, 1}, "", "Colour 1"},
    {"txtCol1", colourBox, "fraColours", {2, 0, 2, 1}, "", "Colour 2"},
    {"txtCol2", colourBox, "fraColours", {4, 0, 2, 1}, "", "Colour 3"},
    {"txtCol3", colourBox, "fraColours", {6, 0, 2, 1}, "", "Colour 4"},
    {"txtCol4", colourBox, "fraColours", {8, 0, 2, 1}, "", "Colour 5"},
    {"txtCol5", colourBox, "fraColours", {10, 0, 2, 1}, "", "Colour 6"},
    {"txtCol6", colourBox, "fraColours", {12, 0, 2, 1}, "", "Colour 7"},
    {"txtCol7", colourBox, "fraColours", {14, 0, 2, 1}, "", "Colour8"},
    {"txtCol8", colourBox, "fraColours", {0, 1, 2, 1}, "", "Colour 9"},
    {"txtCol9", colourBox, "fraColours", {2, 1, 2, 1}, "", "Colour 10"},
    {"txtCol10", colourBox, "fraColours", {4, 1, 2, 1}, "", "Colour 11"},
    {"txtCol11", colourBox, "fraColours", {6, 1, 2, 1}, "", "Colour 12"},
    {"txtCol12", colourBox, "fraColours", {8, 1, 2, 1}, "", "Colour13"},
    {"txtCol13", colourBox, "fraColours", {10, 1, 2, 1}, "", "Colour 14"},
    {"txtCol14", colourBox, "fraColours", {12, 1, 2, 1}, "", "Colour 15"},
    {"fraPicture", group, "", {14, kStrip + 1, 13, 2}, "Picture", ""},
    {"chkShowGrid", check, "fraPicture", {0, 0, 13, 1}},
    {"chkShowCrossings", check, "fraPicture", {0, 1, 13, 1}},
    {"fraAnimate", group, "", {27, kStrip + 1, 13, 2}, "Animation", ""},
    {"chkAnimate", check, "fraAnimate", {0, 0, 7, 1}},
    {"chkLoop", check, "fraAnimate", {7, 0, 5, 1}},
    {"lblAnimate", label, "fraAnimate", {0, 1, 4, 1}},
    {"vtAnimate", number, "fraAnimate", {4, 1, 3, 1}},
    {"Check1", check, "fraAnimate", {7, 1, 5, 1}, "Step", "Show how the strands are traced, step by step"},
});
// clang-format on

}  // namespace form

/// Place of a row in the form, checked when the program is compiled.
consteval ControlId controlId(std::string_view name) {
  for (std::size_t i = 0; i < form::kRows.size(); ++i)
    if (form::kRows[i].name == name) return static_cast<ControlId>(i);
  throw "the form has no such control";
}

/// The colour boxes follow each other in the form.
inline constexpr ControlId kFirstColourBox = controlId("txtCol0");

/// What the window is made from, in English; see ShownTables.
std::span<const ControlSpec> formTable();

/// The control of this name; it has to be there.
ControlId controlNamed(std::string_view name);
/// One sentence on what a control does, for a parameter with its range; empty for none.
std::string controlHint(ControlId control);
/// The control of a parameter, and of a check box: -1 for one that a command of a menu stands for.
ControlId fieldControl(Param parameter);
ControlId checkControl(Check check);
/// The parameter or the check box that a control is, or none.
std::optional<Param> parameterOf(ControlId control);
std::optional<Check> checkOf(ControlId control);

}  // namespace lorivan
