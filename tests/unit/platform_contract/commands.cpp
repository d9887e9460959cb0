#include <vector>

#include "unit/platform_contract/back_end.h"
#include "window/commands.h"

namespace lorivan::contract {

std::span<const CommandSpec> contractCommands() {
  static const std::vector<CommandSpec> commands = [] {
    const auto own = commandTable();
    std::vector<CommandSpec> all(own.begin(), own.end());
    all.push_back({"ctAct", "&Test", "&Act", "Ctrl+F11", false, false, {}, "Ctrl+Shift+F12"});
    all.push_back({"ctFirst", "&Test", "&1 first", "", false, true, "&Recent"});
    all.push_back({"ctSecond", "&Test", "&2 second", "", false, false, "&Recent"});
    all.push_back({"ctLast", "&Test", "&Last", "Ctrl+PgDn", true, true});
    return all;
  }();
  return commands;
}

CommandId contractCommand(std::string_view name) {
  const auto commands = contractCommands();
  for (std::size_t i = 0; i < commands.size(); ++i)
    if (commands[i].name == name) return static_cast<CommandId>(i);
  ADD_FAILURE() << "no command " << name;
  return kNoCommand;
}

}  // namespace lorivan::contract
