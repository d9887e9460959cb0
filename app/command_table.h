// The menus as data: text, shortcut, and whether it can be chosen at a fresh start. What a command runs
// stands with the main window's handlers.
#pragma once

#include <array>
#include <span>
#include <string_view>

#include "platform/window.h"

namespace lorivan {

enum class AtStart { enabled, disabled };

struct CommandRow {
  std::string_view name;
  std::string_view menu;
  std::string_view text;
  std::string_view shortcut;
  bool checkable = false;
  bool separatorBefore = false;
  AtStart atStart = AtStart::enabled;  // later the handlers switch it
};

namespace menus {

inline constexpr std::string_view file = "&File", edit = "&Edit", shape = "&Shape", style = "Sty&le",
                                  help = "&Help";
inline constexpr bool checkable = true, separator = true;
inline constexpr AtStart enabled = AtStart::enabled, disabled = AtStart::disabled;

// clang-format off
inline constexpr auto kRows = std::to_array<CommandRow>({
    {"mnuFileNewGrid", file, "&New grid", "Ctrl+N"},
    {"mnuFileRandom", file, "&Random knot", "Ctrl+R"},
    {"mnuFileLoad", file, "&Load knot file", "Ctrl+O", false, separator},
    {"mnuFileSave", file, "&Save knot file", "Ctrl+S"},
    {"mnuFileSaveBMP", file, "Save &picture...", "", false, separator},
    {"mnuFileSaveEMF", file, "Save knot as &EMF...", "", false, false, disabled},
    {"mnuFileSave3D", file, "Save knot as &3D file", "", false, false, disabled},
    {"mnuFileExit", file, "E&xit", "", false, separator},

    {"mnuEditUndo", edit, "&Undo", "Ctrl+Z"},
    {"mnuEditCopy", edit, "&Copy picture", "Ctrl+C", false, separator},

    {"mnuShapeBlank", shape, "&Blank", ""},
    {"mnuShapeView", shape, "&View", "", checkable},
    {"mnuShapeMakeStandard", shape, "&Make from Standard", ""},
    {"mnuShapeLoadPicture", shape, "Load &Picture...", "", false, separator},
    {"mnuShapeClear", shape, "&Clear", "", false, false, disabled},
    {"mnuShapeMakeGrid", shape, "New G&rid", "", false, separator, disabled},
    {"mnuShapeAutoGrid", shape, "&AutoGrid", "", false, false, disabled},
    {"mnuShapeGridOnOff", shape, "Alignment &Grid", "", checkable, separator},
    {"mnuShapeSnap", shape, "Snap &to Grid", "", checkable},
    {"mnuShapeUndo", shape, "&Undo", "", false, separator, disabled},
    {"mnuShapeLoadFile", shape, "&Load file...", "", false, separator},
    {"mnuShapeSaveFile", shape, "&Save file...", ""},

    // Their texts are the names of the styles.
    {"mnuStyle0", style, "", ""},
    {"mnuStyle1", style, "", ""},
    {"mnuStyle2", style, "", ""},
    {"mnuStyle3", style, "", ""},
    {"mnuStyle4", style, "", ""},
    {"mnuStyle5", style, "", ""},
    {"mnuStyle6", style, "", ""},
    {"mnuStyle7", style, "", ""},
    {"mnuStyle8", style, "", ""},
    {"mnuStyle9", style, "", ""},

    {"mnuHelpHelp", help, "How to &use Lorivan", "F1"},
    {"mnuHelpCustom", help, "&Custom knots", ""},
    {"mnuHelp3D", help, "How to work in &3D", ""},
    {"mnuHelpFAQ", help, "&Frequently Asked Questions", ""},
    {"mnuHelpAbout", help, "&About", "", false, separator},
});
// clang-format on

}  // namespace menus

/// Place of a command in the table, checked when the program is compiled.
consteval CommandId commandId(std::string_view name) {
  for (std::size_t i = 0; i < menus::kRows.size(); ++i)
    if (menus::kRows[i].name == name) return static_cast<CommandId>(i);
  throw "no menu has such a command";
}

/// The menu's styles, in the order of the preset table.
inline constexpr CommandId kFirstStyle = commandId("mnuStyle0"), kLastStyle = commandId("mnuStyle9");

/// What the window is made from.
std::span<const CommandSpec> commandTable();

}  // namespace lorivan
