// The menus: what each command is called, when it can be chosen, and what it does.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "platform/window.h"

namespace lorivan {

class Handlers;
class Workbench;

/// A function that a row of a table cannot do without: a row that leaves it out does not compile.
class Run {
 public:
  using Function = void (*)(Handlers&);
  template <class F>
  constexpr Run(F function) : function_(function) {}
  void operator()(Handlers& handlers) const { function_(handlers); }

 private:
  Function function_;
};

using When = bool (*)(const Workbench&);
using Words = std::string (*)(const Workbench&);

struct CommandRow {
  std::string_view name;
  std::string_view menu;
  std::string_view text = {};
  std::string_view shortcut = {};
  Run run = nullptr;
  When enabled = nullptr;  // none: always
  When checked = nullptr;  // there is one: the command has a check mark
  Words words = nullptr;   // the text as things stand; an empty one hides the command
  bool separatorBefore = false;
  bool duringWork = false;   // leaves knot and fields alone: an animation goes on
  bool keepsUndone = false;  // fields that were stepped back stay unapplied
  std::string_view submenu = {};
  std::string_view alternative = {};  // a second shortcut
};

/// All rows, in the menus' order.
std::span<const CommandRow> commandRows();

/// Place of the command of this name; it has to be there.
CommandId commandId(std::string_view name);

/// What the window is made from, in English; see ShownTables.
std::span<const CommandSpec> commandTable();

/// Brings every command's state and text up to date.
void sortOutCommands(Workbench& bench);

/// The style that a command chooses, or -1.
int styleOf(CommandId command);

}  // namespace lorivan
