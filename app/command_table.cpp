#include "app/command_table.h"

#include <vector>

namespace lorivan {

std::span<const CommandSpec> commandTable() {
  static const std::vector<CommandSpec> table = [] {
    std::vector<CommandSpec> specs;
    for (const CommandRow& row : menus::kRows)
      specs.push_back({row.name, row.menu, row.text, row.shortcut, row.checkable, row.separatorBefore});
    return specs;
  }();
  return table;
}

}  // namespace lorivan
