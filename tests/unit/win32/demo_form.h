// A small form with one control of each kind, for the window's tests.
#pragma once

#include <array>

#include "platform/common/layout.h"
#include "platform/window.h"

namespace lorivan {

// clang-format off
enum DemoControl : int {
  kValues, kWidthLabel, kWidth, kScaleLabel, kScale, kNote, kGrid, kFormat, kPov, kVrml, kShapes, kShape,
  kColours, kBox, kCreate, kBack, kPicture, kSmall, kDemoControls,
};
inline constexpr std::array<ControlSpec, kDemoControls> kDemoForm = {{
    {"fraValues", ControlKind::group, "2D Values", "", "", {0, 0, 24, 4}},
    {"lblWidth", ControlKind::label, "&Width", "", "fraValues", {0, 0, 4, 1}},
    {"vtWidth", ControlKind::number, "7", "Width of strand (2-30)", "fraValues", {4, 0, 4, 1}},
    {"lblScale", ControlKind::label, "S&cale", "", "fraValues", {8, 0, 4, 1}},
    {"vtScale", ControlKind::number, "30", "Scale (8-99)", "fraValues", {12, 0, 4, 1}},
    {"txtNote", ControlKind::text, "20", "Viewing distance", "fraValues", {16, 0, 8, 1}},
    {"chkGrid", ControlKind::check, "Show &grid with knot", "Show the grid behind the knot", "fraValues", {0, 1, 16, 1}},
    {"fraFormat", ControlKind::group, "3D Save Format", "", "", {0, 1, 24, 2}},
    {"optPov", ControlKind::radio, "&POV-Ray", "For a ray tracer", "fraFormat", {0, 0, 8, 1}},
    {"optVrml", ControlKind::radio, "&VRML", "For a viewer", "fraFormat", {8, 0, 8, 1}},
    {"fraShapes", ControlKind::group, "Basic Knot Characteristics", "", "", {0, 2, 24, 2}},
    {"lstType", ControlKind::list, "", "Basic knot shape", "fraShapes", {0, 0, 12, 1}},
    {"fraColours", ControlKind::group, "Colours", "", "", {0, 3, 24, 2}},
    {"txtCol0", ControlKind::colourBox, "", "Colour 1", "fraColours", {0, 0, 3, 1}},
    {"cmd2D", ControlKind::button, "Create &2D", "Create the knot in 2D", "", {0, kStripRow, 10, 1}},
    {"cmdBack", ControlKind::button, "2D &View", "Show the 2D view", "", {10, kStripRow, 10, 1}},
    {"picGrid", ControlKind::picture, "", "", "", {0, 0, 1, 1}},
    {"picNav", ControlKind::picture, "", "3D Rotator", "fraColours", {18, 0, 6, 2}},
}};
enum DemoCommand : int { kOpen, kSave, kExit, kCopy, kUndo, kSnap, kDemoCommands };
inline constexpr std::array<CommandSpec, kDemoCommands> kDemoMenu = {{
    {"mnuFileLoad", "&File", "&Load knot file...", "Ctrl+O", false, false},
    {"mnuFileSave", "&File", "&Save knot file", "Ctrl+S", false, false},
    {"mnuFileExit", "&File", "E&xit", "", false, true},
    {"mnuEditCopy", "&Edit", "&Copy", "Ctrl+C", false, false},
    {"mnuEditUndo", "&Edit", "&Undo", "Ctrl+Z", false, false},
    {"mnuShapeSnap", "&Shape", "S&nap", "F7", true, false},
}};
// clang-format on

}  // namespace lorivan
