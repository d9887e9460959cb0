// A form as full as the program's own, for tests of the layout and of windows.
#pragma once

#include <array>

#include "platform/common/layout.h"

namespace lorivan::sample {

using enum ControlKind;

// clang-format off
inline constexpr std::array kForm = {
    ControlSpec{"picGrid", picture, "", "The grid", "", {0, 0, 1, 1}},
    ControlSpec{"picKnot", picture, "", "The knot", "", {0, 0, 1, 1}},

    ControlSpec{"grpBasic", group, "Basic Knot Characteristics", "", "", {0, 0, 24, 1}},
    ControlSpec{"lblType", label, "&Basic knot shape", "", "grpBasic", {0, 0, 9, 1}},
    ControlSpec{"lstType", list, "", "The shape that the knot is laid on", "grpBasic", {9, 0, 15, 1}},
    ControlSpec{"lblX", label, "&X", "", "grpBasic", {0, 1, 4, 1}},
    ControlSpec{"vtXNo", number, "", "Number of X cells (1-20)", "grpBasic", {4, 1, 4, 1}},
    ControlSpec{"lblY", label, "&Y", "", "grpBasic", {8, 1, 4, 1}},
    ControlSpec{"vtYNo", number, "", "Number of Y cells (1-20)", "grpBasic", {12, 1, 4, 1}},
    ControlSpec{"lblXF", label, "CO", "", "grpBasic", {16, 1, 4, 1}},
    ControlSpec{"vtCrossOffset", number, "", "Cross or Spiral Offset (-7 to 7)", "grpBasic", {20, 1, 4, 1}},
    ControlSpec{"lblAGS", label, "AGS", "", "grpBasic", {0, 2, 4, 1}},
    ControlSpec{"vtGridSize", number, "", "Number of alignment lines (1-100)", "grpBasic", {4, 2, 4, 1}},
    ControlSpec{"chkShapeT", check, "TGrid", "Use a triangular grid", "grpBasic", {9, 2, 7, 1}},
    ControlSpec{"chkMirror", check, "Z-Mirror", "Over becomes under", "grpBasic", {16, 2, 8, 1}},

    ControlSpec{"grp2D", group, "2D Values", "", "", {0, 1, 24, 1}},
    ControlSpec{"lblStart", label, "1st Col", "", "grp2D", {0, 0, 5, 1}},
    ControlSpec{"vtStartColour", number, "", "1st colour used for a strand (-15 to 15)", "grp2D", {5, 0, 3, 1}},
    ControlSpec{"lblWidth", label, "Width", "", "grp2D", {8, 0, 5, 1}},
    ControlSpec{"vtWidth", number, "", "Width of strand (2-30)", "grp2D", {13, 0, 3, 1}},
    ControlSpec{"lblEdge", label, "Edge", "", "grp2D", {16, 0, 5, 1}},
    ControlSpec{"vtEdge", number, "", "Edge width (1-28)", "grp2D", {21, 0, 3, 1}},
    ControlSpec{"lblScale", label, "Scale", "", "grp2D", {0, 1, 5, 1}},
    ControlSpec{"vtScale", number, "", "Scale (8-99)", "grp2D", {5, 1, 3, 1}},
    ControlSpec{"lblSwish", label, "Swish", "", "grp2D", {8, 1, 5, 1}},
    ControlSpec{"vtSwish", number, "", "How much the knot swishes", "grp2D", {13, 1, 3, 1}},
    ControlSpec{"lblSmooth", label, "Smooth", "", "grp2D", {16, 1, 5, 1}},
    ControlSpec{"vtSmooth", number, "", "Smooth out the knot shape (2-6)", "grp2D", {21, 1, 3, 1}},
    ControlSpec{"lblSkew", label, "Stretch", "", "grp2D", {0, 2, 5, 1}},
    ControlSpec{"vtSkew", number, "", "Stretch or shrink in one direction", "grp2D", {5, 2, 3, 1}},
    ControlSpec{"lblBack", label, "Backgr.", "", "grp2D", {8, 2, 5, 1}},
    ControlSpec{"vtBack", number, "", "Background Colour (0-15)", "grp2D", {13, 2, 3, 1}},

    ControlSpec{"grp3D", group, "3D Values", "", "", {0, 2, 24, 1}},
    ControlSpec{"lblSides", label, "Sides", "", "grp3D", {0, 0, 5, 1}},
    ControlSpec{"vtPolySides", number, "", "Number of sides", "grp3D", {5, 0, 3, 1}},
    ControlSpec{"lblPoints", label, "Points", "", "grp3D", {8, 0, 5, 1}},
    ControlSpec{"vtPolyPoints", number, "", "Number of points", "grp3D", {13, 0, 3, 1}},
    ControlSpec{"lblRadius", label, "Radius", "", "grp3D", {16, 0, 5, 1}},
    ControlSpec{"vtPolyRadius", number, "", "Radius of the figure", "grp3D", {21, 0, 3, 1}},
    ControlSpec{"lblPSmooth", label, "Smooth", "", "grp3D", {0, 1, 5, 1}},
    ControlSpec{"vtPolySmooth", number, "", "Smoothness factor", "grp3D", {5, 1, 3, 1}},
    ControlSpec{"lblZF", label, "Z-factor", "", "grp3D", {8, 1, 5, 1}},
    ControlSpec{"vtPolyZF", number, "", "How 3D do you want it?", "grp3D", {13, 1, 3, 1}},
    ControlSpec{"lblRing", label, "Ring %", "", "grp3D", {16, 1, 5, 1}},
    ControlSpec{"vtRingPerc", number, "", "How much of a ring?", "grp3D", {21, 1, 3, 1}},

    ControlSpec{"grpView", group, "3D View", "", "", {0, 3, 24, 1}},
    ControlSpec{"picNav", picture, "", "3D Rotator", "grpView", {0, 0, 8, 4}},
    ControlSpec{"lblTheta", label, "Theta", "", "grpView", {8, 0, 4, 1}},
    ControlSpec{"vtTheta", number, "", "Rotation around Y axis", "grpView", {12, 0, 4, 1}},
    ControlSpec{"lblPhi", label, "Phi", "", "grpView", {8, 1, 4, 1}},
    ControlSpec{"vtPhi", number, "", "Rotation around X axis", "grpView", {12, 1, 4, 1}},
    ControlSpec{"lblPsi", label, "Psi", "", "grpView", {8, 2, 4, 1}},
    ControlSpec{"vtPsi", number, "", "Rotation around Z axis", "grpView", {12, 2, 4, 1}},
    ControlSpec{"lblKDist", label, "Dist", "", "grpView", {8, 3, 4, 1}},
    ControlSpec{"vtKDist", number, "", "Distance of light source", "grpView", {12, 3, 4, 1}},
    ControlSpec{"lblKa", label, "Amb", "", "grpView", {16, 0, 4, 1}},
    ControlSpec{"vtKa", number, "", "Ambient light intensity", "grpView", {20, 0, 4, 1}},
    ControlSpec{"lblKd", label, "Diff", "", "grpView", {16, 1, 4, 1}},
    ControlSpec{"vtKd", number, "", "Diffuse reflection intensity", "grpView", {20, 1, 4, 1}},
    ControlSpec{"lblKs", label, "Spec", "", "grpView", {16, 2, 4, 1}},
    ControlSpec{"vtKs", number, "", "Specular reflectance", "grpView", {20, 2, 4, 1}},
    ControlSpec{"lblNFact", label, "Gloss", "", "grpView", {16, 3, 4, 1}},
    ControlSpec{"vtNFact", number, "", "Specular factor", "grpView", {20, 3, 4, 1}},

    ControlSpec{"grpSave", group, "3D Save Format", "", "", {0, 4, 24, 1}},
    ControlSpec{"optPOV", radio, "POV", "", "grpSave", {0, 0, 5, 1}},
    ControlSpec{"optVRML", radio, "VRML", "", "grpSave", {5, 0, 6, 1}},
    ControlSpec{"optOBJ", radio, "OBJ", "", "grpSave", {11, 0, 6, 1}},
    ControlSpec{"optDXF", radio, "DXF", "", "grpSave", {17, 0, 7, 1}},
    ControlSpec{"optSTL", radio, "STL", "", "grpSave", {0, 1, 5, 1}},
    ControlSpec{"optXYZ", radio, "XYZ", "", "grpSave", {5, 1, 6, 1}},
    ControlSpec{"optGemVision", radio, "GemVision", "", "grpSave", {11, 1, 12, 1}},
    ControlSpec{"chkHeightMap", check, "HeightMap", "", "grpSave", {0, 2, 9, 1}},
    ControlSpec{"chkDXF2D", check, "2D DXF", "Save DXF file in 2D format", "grpSave", {9, 2, 7, 1}},
    ControlSpec{"chkFullyCrossed", check, "Crossed", "Output fully crossed 2D DXF", "grpSave", {16, 2, 8, 1}},

    ControlSpec{"cmdRandknot", button, "&Random", "Create a random knot", "", {0, kStripRow, 6, 1}},
    ControlSpec{"cmdNewGrid", button, "&New Grid", "Create a new grid", "", {6, kStripRow, 6, 1}},
    ControlSpec{"cmdOldGrid", button, "&Old Grid", "The last grid again", "", {12, kStripRow, 6, 1}},
    ControlSpec{"cmd2D", button, "&Create 2D", "Draw the knot", "", {18, kStripRow, 6, 1}},
    ControlSpec{"cmd3D", button, "Create &3D", "Create the knot in 3D", "", {24, kStripRow, 6, 1}},
    ControlSpec{"cmd2DView", button, "&2D View", "Show the 2D view", "", {30, kStripRow, 5, 1}},
    ControlSpec{"cmd3DView", button, "3D &View", "Show the 3D view", "", {35, kStripRow, 5, 1}},

    ControlSpec{"grpColours", group, "Strand Colours", "", "", {0, kStripRow + 1, 16, 1}},
    ControlSpec{"txtCol0", colourBox, "", "Colour 1", "grpColours", {0, 0, 2, 1}},
    ControlSpec{"txtCol1", colourBox, "", "Colour 2", "grpColours", {2, 0, 2, 1}},
    ControlSpec{"txtCol2", colourBox, "", "Colour 3", "grpColours", {4, 0, 2, 1}},
    ControlSpec{"txtCol3", colourBox, "", "Colour 4", "grpColours", {6, 0, 2, 1}},
    ControlSpec{"txtCol4", colourBox, "", "Colour 5", "grpColours", {8, 0, 2, 1}},
    ControlSpec{"txtCol5", colourBox, "", "Colour 6", "grpColours", {10, 0, 2, 1}},
    ControlSpec{"txtCol6", colourBox, "", "Colour 7", "grpColours", {12, 0, 2, 1}},
    ControlSpec{"txtCol7", colourBox, "", "Colour8", "grpColours", {14, 0, 2, 1}},
    ControlSpec{"txtCol8", colourBox, "", "Colour 9", "grpColours", {0, 1, 2, 1}},
    ControlSpec{"txtCol9", colourBox, "", "Colour 10", "grpColours", {2, 1, 2, 1}},
    ControlSpec{"txtCol10", colourBox, "", "Colour 11", "grpColours", {4, 1, 2, 1}},
    ControlSpec{"txtCol11", colourBox, "", "Colour 12", "grpColours", {6, 1, 2, 1}},
    ControlSpec{"txtCol12", colourBox, "", "Colour13", "grpColours", {8, 1, 2, 1}},
    ControlSpec{"txtCol13", colourBox, "", "Colour 14", "grpColours", {10, 1, 2, 1}},
    ControlSpec{"txtCol14", colourBox, "", "Colour 15", "grpColours", {12, 1, 2, 1}},

    ControlSpec{"grpDraw", group, "Drawing", "", "", {16, kStripRow + 1, 24, 1}},
    ControlSpec{"chkShowGrid", check, "Grid", "Show grid with knot", "grpDraw", {0, 0, 7, 1}},
    ControlSpec{"chkShowCrossings", check, "Crossings", "Show crossings", "grpDraw", {7, 0, 8, 1}},
    ControlSpec{"chkConstantShape", check, "Keep shape", "Constant Shape", "grpDraw", {15, 0, 9, 1}},
    ControlSpec{"chkAnimate", check, "Animate", "Animate the drawing of the knot", "grpDraw", {0, 1, 7, 1}},
    ControlSpec{"chkLoop", check, "Loop", "Animate the drawing of the knot", "grpDraw", {7, 1, 6, 1}},
    ControlSpec{"lblAnimate", label, "Speed", "", "grpDraw", {15, 1, 4, 1}},
    ControlSpec{"vtAnimate", number, "", "Animation speed 1-->9", "grpDraw", {19, 1, 5, 1}},
    ControlSpec{"Text1", number, "", "", "", {0, 0, 0, 0}},
};
// clang-format on

/// The row of a control; the table's length when there is none of this name.
constexpr ControlId idOf(std::string_view name) {
  ControlId id = 0;
  while (id < static_cast<ControlId>(kForm.size()) && kForm[static_cast<std::size_t>(id)].name != name) ++id;
  return id;
}

}  // namespace lorivan::sample
