#include "window/shown_tables.h"

#include "base/texts.h"
#include "window/commands.h"
#include "window/form_table.h"

namespace lorivan {

ShownTables::ShownTables()
    : controls_(formTable().begin(), formTable().end()),
      commands_(commandTable().begin(), commandTable().end()) {
  for (ControlSpec& control : controls_) {
    translate(control.caption);
    translate(control.tooltip);
  }
  for (CommandSpec& command : commands_) {
    translate(command.menu);
    translate(command.submenu);
    translate(command.text);
  }
}

void ShownTables::translate(std::string_view& text) {
  if (!text.empty()) text = texts_.emplace_back(translated(text));
}

}  // namespace lorivan
