// The form as data: every control of the window with its kind, group and place, in the order that Tab
// follows. Captions and tooltips of parameters and check boxes come from their own tables.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

#include "app/parameters.h"
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

// A label stands right before the control that it names.
// clang-format off
inline constexpr auto kRows = std::to_array<FormRow>({
    {"picGrid", picture, "", {}, "", "The grid and the 2D knot: click the middle of a line to change its kind"},
    {"picKnot", picture, "", {}, "", "The knot in 3D: drag to turn it"},
    {"picShape", picture, "", {}, "", "Your own shape: drag to draw a line, click a point to delete it"},

    {"fraMake", group, "", {0, 0, 6, 3}, "Knot", ""},
    {"cmdRandknot", button, "fraMake", {0, 0, 2, 1}, "&Random", "Create a random knot"},
    {"cmdNewGrid", button, "fraMake", {2, 0, 2, 1}, "&New Grid", "Create a new grid"},
    {"cmdOldGrid", button, "fraMake", {4, 0, 2, 1}, "&Old Grid", "Show the grid again, without the knot"},
    {"cmd2D", button, "fraMake", {0, 1, 2, 1}, "Create &2D", "Create the knot in 2D"},
    {"cmd3D", button, "fraMake", {2, 1, 2, 1}, "Create &3D", "Create the knot in 3D"},
    {"cmd2DView", button, "fraMake", {0, 2, 2, 1}, "2D &View", "Show the 2D view"},
    {"cmd3DView", button, "fraMake", {2, 2, 2, 1}, "3D &View", "Show the 3D view"},
    {"Check1", check, "fraMake", {4, 1, 2, 1}, "Step", "Show how the strands are traced, step by step"},

    {"fraBasic", group, "", {0, 3, 6, 4}, "Basic Knot Characteristics", ""},
    {"lblType", label, "fraBasic", {0, 0, 2, 1}, "Basic knot shape", "", 'B'},
    {"lstType", list, "fraBasic", {2, 0, 4, 1}, "", "Basic knot shape"},
    {"lblXNo", label, "fraBasic", {0, 1, 1, 1}, "", "", 'X'},
    {"vtXNo", number, "fraBasic", {1, 1, 1, 1}},
    {"lblYNo", label, "fraBasic", {2, 1, 1, 1}, "", "", 'Y'},
    {"vtYNo", number, "fraBasic", {3, 1, 1, 1}},
    {"lblXF", label, "fraBasic", {4, 1, 1, 1}},
    {"vtCrossOffset", number, "fraBasic", {5, 1, 1, 1}},
    {"lblAGS", label, "fraBasic", {0, 2, 1, 1}, "", "", 'G'},
    {"vtGridSize", number, "fraBasic", {1, 2, 1, 1}},
    {"chkShapeT", check, "fraBasic", {2, 2, 2, 1}},
    {"chkMirror", check, "fraBasic", {4, 2, 2, 1}, "", "", 'Z'},
    {"chkConstantShape", check, "fraBasic", {0, 3, 4, 1}},

    {"fra2D", group, "", {0, 7, 6, 3}, "2D Values", ""},
    {"lblStartColour", label, "fra2D", {0, 0, 1, 1}, "", "", 'C'},
    {"vtStartColour", number, "fra2D", {1, 0, 1, 1}},
    {"lblWidth", label, "fra2D", {2, 0, 1, 1}, "", "", 'W'},
    {"vtWidth", number, "fra2D", {3, 0, 1, 1}},
    {"lblScale", label, "fra2D", {4, 0, 1, 1}, "", "", 'A'},
    {"vtScale", number, "fra2D", {5, 0, 1, 1}},
    {"lblSwish", label, "fra2D", {0, 1, 1, 1}, "", "", 'I'},
    {"vtSwish", number, "fra2D", {1, 1, 1, 1}},
    {"lblSmooth", label, "fra2D", {2, 1, 1, 1}, "", "", 'M'},
    {"vtSmooth", number, "fra2D", {3, 1, 1, 1}},
    {"lblSkew", label, "fra2D", {4, 1, 1, 1}, "", "", 'T'},
    {"vtSkew", number, "fra2D", {5, 1, 1, 1}},
    {"lblEdge", label, "fra2D", {0, 2, 1, 1}, "", "", 'D'},
    {"vtEdge", number, "fra2D", {1, 2, 1, 1}},

    {"fraPicture", group, "", {0, 10, 6, 4}, "Picture", ""},
    {"txtCol0", colourBox, "fraPicture", {0, 0, 1, 1}, "", "Colour 1"},
    {"txtCol1", colourBox, "fraPicture", {1, 0, 1, 1}, "", "Colour 2"},
    {"txtCol2", colourBox, "fraPicture", {2, 0, 1, 1}, "", "Colour 3"},
    {"txtCol3", colourBox, "fraPicture", {3, 0, 1, 1}, "", "Colour 4"},
    {"txtCol4", colourBox, "fraPicture", {4, 0, 1, 1}, "", "Colour 5"},
    {"txtCol5", colourBox, "fraPicture", {5, 0, 1, 1}, "", "Colour 6"},
    {"txtCol6", colourBox, "fraPicture", {6, 0, 1, 1}, "", "Colour 7"},
    {"txtCol7", colourBox, "fraPicture", {7, 0, 1, 1}, "", "Colour8"},
    {"txtCol8", colourBox, "fraPicture", {0, 1, 1, 1}, "", "Colour 9"},
    {"txtCol9", colourBox, "fraPicture", {1, 1, 1, 1}, "", "Colour 10"},
    {"txtCol10", colourBox, "fraPicture", {2, 1, 1, 1}, "", "Colour 11"},
    {"txtCol11", colourBox, "fraPicture", {3, 1, 1, 1}, "", "Colour 12"},
    {"txtCol12", colourBox, "fraPicture", {4, 1, 1, 1}, "", "Colour13"},
    {"txtCol13", colourBox, "fraPicture", {5, 1, 1, 1}, "", "Colour 14"},
    {"txtCol14", colourBox, "fraPicture", {6, 1, 1, 1}, "", "Colour 15"},
    {"lblPicKnotBackColour", label, "fraPicture", {0, 2, 1, 1}},
    {"vtPicKnotBackColour", number, "fraPicture", {1, 2, 1, 1}},
    {"chkShowGrid", check, "fraPicture", {0, 3, 3, 1}},
    {"chkShowCrossings", check, "fraPicture", {3, 3, 3, 1}},

    {"fraAnimate", group, "", {0, 14, 6, 1}, "Animation", ""},
    {"chkAnimate", check, "fraAnimate", {0, 0, 2, 1}},
    {"chkLoop", check, "fraAnimate", {2, 0, 2, 1}, "", "", 'L'},
    {"lblAnimate", label, "fraAnimate", {4, 0, 1, 1}},
    {"vtAnimate", number, "fraAnimate", {5, 0, 1, 1}},

    {"fra3D", group, "", {6, 0, 6, 3}, "3D Values", ""},
    {"lblPolySides", label, "fra3D", {0, 0, 1, 1}},
    {"vtPolySides", number, "fra3D", {1, 0, 1, 1}},
    {"lblPolyPoints", label, "fra3D", {2, 0, 1, 1}, "", "", 'P'},
    {"vtPolyPoints", number, "fra3D", {3, 0, 1, 1}},
    {"lblPolyRadius", label, "fra3D", {4, 0, 1, 1}, "", "", 'U'},
    {"vtPolyRadius", number, "fra3D", {5, 0, 1, 1}},
    {"lblPolySmooth", label, "fra3D", {0, 1, 1, 1}},
    {"vtPolySmooth", number, "fra3D", {1, 1, 1, 1}},
    {"lblPolyZF", label, "fra3D", {2, 1, 1, 1}},
    {"vtPolyZF", number, "fra3D", {3, 1, 1, 1}},
    {"lblRingPerc", label, "fra3D", {4, 1, 1, 1}},
    {"vtRingPerc", number, "fra3D", {5, 1, 1, 1}},
    {"lblNPoly", label, "fra3D", {0, 2, 2, 1}, "Polygons", "Number of polygons of the model"},
    {"txtNPoly", text, "fra3D", {2, 2, 2, 1}, "", "Number of polygons of the model"},

    {"fraView", group, "", {6, 3, 6, 5}, "3D View", ""},
    {"picNav", picture, "fraView", {0, 0, 2, 4}, "", "3D Rotator - Left click for Theta/Phi, Right click for Psi"},
    {"lblTheta", label, "fraView", {2, 0, 1, 1}},
    {"vtTheta", number, "fraView", {3, 0, 1, 1}},
    {"lblPhi", label, "fraView", {4, 0, 1, 1}},
    {"vtPhi", number, "fraView", {5, 0, 1, 1}},
    {"lblPsi", label, "fraView", {2, 1, 1, 1}},
    {"vtPsi", number, "fraView", {3, 1, 1, 1}},
    {"lblKa", label, "fraView", {4, 1, 1, 1}},
    {"vtKa", number, "fraView", {5, 1, 1, 1}},
    {"lblKd", label, "fraView", {2, 2, 1, 1}},
    {"vtKd", number, "fraView", {3, 2, 1, 1}},
    {"lblKs", label, "fraView", {4, 2, 1, 1}},
    {"vtKs", number, "fraView", {5, 2, 1, 1}},
    {"lblNFact", label, "fraView", {2, 3, 1, 1}},
    {"vtNFact", number, "fraView", {3, 3, 1, 1}},
    {"lblKDist", label, "fraView", {4, 3, 1, 1}},
    {"vtKDist", number, "fraView", {5, 3, 1, 1}},
    {"lblRDistance", label, "fraView", {0, 4, 3, 1}, "Viewing distance", "Viewing distance"},
    {"txtRDistance", text, "fraView", {3, 4, 1, 1}, "", "Viewing distance"},

    {"fraSave3D", group, "", {6, 8, 6, 4}, "3D Save Format", ""},
    {"optPOV", radio, "fraSave3D", {0, 0, 2, 1}, "POV-Ray", "Save the knot as a POV-Ray scene"},
    {"optVRML", radio, "fraSave3D", {2, 0, 2, 1}, "VRML", "Save the knot as a VRML 2.0 world"},
    {"optOBJ", radio, "fraSave3D", {4, 0, 2, 1}, "OBJ", "Save the knot as a Wavefront OBJ mesh"},
    {"optDXF", radio, "fraSave3D", {0, 1, 2, 1}, "DXF", "Save the knot as an AutoCAD DXF file"},
    {"optSTL", radio, "fraSave3D", {2, 1, 2, 1}, "STL", "Save the knot as an STL mesh for 3D printing"},
    {"optGemVision", radio, "fraSave3D", {4, 1, 2, 1}, "GemVision", "Save the knot as a GemVision text"},
    {"optXYZ", radio, "fraSave3D", {0, 2, 2, 1}, "XYZ", "Save the knot as an XYZ point list"},
    {"chkHeightMap", check, "fraSave3D", {2, 2, 2, 1}},
    {"chkDXF2D", check, "fraSave3D", {4, 2, 2, 1}},
    {"chkFullyCrossed", check, "fraSave3D", {0, 3, 6, 1}},
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

/// The seven 3-D formats in the order of their option buttons.
inline constexpr std::array<ControlId, 7> kSaveFormats = {
    controlId("optPOV"), controlId("optVRML"),      controlId("optOBJ"), controlId("optDXF"),
    controlId("optSTL"), controlId("optGemVision"), controlId("optXYZ")};

/// What the window is made from.
std::span<const ControlSpec> formTable();

/// The control of a parameter, and of a check box.
ControlId fieldControl(Param parameter);
ControlId checkControl(Check check);
/// The parameter whose field a control is, or none.
std::optional<Param> parameterOf(ControlId control);

}  // namespace lorivan
