// The form and command tables hang together.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "app/command_table.h"
#include "app/form_table.h"
#include "platform/common/text_helpers.h"

namespace lorivan {
namespace {

TEST(FormTable, NamesAreUniqueAndNumbersHaveTheirLabels) {
  std::set<std::string_view> names;
  ControlKind before = ControlKind::group;
  for (const ControlSpec& row : formTable()) {
    EXPECT_TRUE(names.insert(row.name).second) << row.name;
    EXPECT_TRUE(row.kind != ControlKind::number || before == ControlKind::label) << row.name;
    before = row.kind;
  }
  for (const ParamSpec& p : parameterTable()) EXPECT_TRUE(names.contains(p.field)) << p.field;
  for (const CheckSpec& c : checkTable()) EXPECT_TRUE(names.contains(c.field)) << c.field;
}

TEST(FormTable, MnemonicsDoNotClash) {
  std::map<char, std::string_view> taken;
  for (const CommandSpec& command : commandTable()) taken[mnemonicOf(command.menu)] = command.menu;
  for (const ControlSpec& row : formTable()) {
    const char letter = mnemonicOf(row.caption);
    if (letter == 0) continue;
    // Of the two view buttons only one can be pressed at a time.
    if (row.name == "cmd3DView") continue;
    EXPECT_TRUE(taken.emplace(letter, row.name).second) << row.name << " and " << taken[letter];
  }
  std::set<std::pair<std::string_view, char>> inMenus;
  std::set<std::string_view> shortcuts;
  for (const CommandSpec& command : commandTable()) {
    EXPECT_TRUE(inMenus.emplace(command.menu, mnemonicOf(command.text)).second) << command.name;
    if (command.shortcut.empty()) continue;
    EXPECT_TRUE(parseShortcut(command.shortcut)) << command.shortcut;
    EXPECT_TRUE(shortcuts.insert(command.shortcut).second) << command.shortcut;
  }
}

}  // namespace
}  // namespace lorivan
