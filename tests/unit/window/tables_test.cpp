// The form and command tables hang together.
#include <map>
#include <set>

#include "main_window_driver.h"
#include "platform/common/text_helpers.h"
#include "window/form_table.h"
#include "window/languages.h"
#include "window/shown_tables.h"

namespace lorivan {
namespace {

TEST_F(MainWindowTest, NamesAreUniqueAndNumbersHaveTheirLabels) {
  std::set<std::string_view> names;
  ControlKind before = ControlKind::group;
  for (const ControlSpec& row : formTable()) {
    EXPECT_TRUE(names.insert(row.name).second) << row.name;
    EXPECT_TRUE(row.kind != ControlKind::number || before == ControlKind::label) << row.name;
    before = row.kind;
  }
  for (const ParamSpec& p : parameterTable()) EXPECT_TRUE(names.contains(p.field)) << p.field;
  for (const CommandSpec& command : commandTable()) names.insert(command.name);
  for (const CheckSpec& c : checkTable()) {
    const std::string inMenu = "mnuView" + std::string(c.field.substr(3));
    EXPECT_TRUE(names.contains(c.field) || names.contains(std::string_view(inMenu))) << c.field;
  }
}

class Mnemonics : public MainWindowTest, public ::testing::WithParamInterface<Language> {};

TEST_P(Mnemonics, OfOneMenuAndOfTheFormDoNotClash) {
  for (int i = 0; i < kRecentFiles; ++i) stored("Recent" + std::to_string(i)) = "/a & b.qzd";
  stored("Language") = GetParam().code;
  start();
  const ShownTables shownTables;
  std::map<char, std::string_view> taken;
  for (const CommandSpec& row : shownTables.commands()) taken[mnemonicOf(row.menu)] = row.menu;
  EXPECT_EQ(taken.size(), 6U) << "two menus have one letter";
  for (const ControlSpec& row : shownTables.controls()) {
    const char letter = mnemonicOf(row.caption);
    // Of the two view buttons only one can be pressed at a time.
    if (letter == 0 || row.name == "cmd3DView") continue;
    EXPECT_TRUE(taken.emplace(letter, row.name).second) << row.name << " and " << taken[letter];
  }
  std::set<std::pair<std::string, char>> inMenus;
  std::set<std::string_view> shortcuts, submenus;
  for (const CommandSpec& row : shownTables.commands()) {
    if (!w->commandVisible(w->command(row.name))) continue;
    const bool newSubmenu = !row.submenu.empty() && submenus.insert(row.submenu).second;
    EXPECT_TRUE(!newSubmenu || inMenus.emplace(row.menu, mnemonicOf(row.submenu)).second) << row.submenu;
    const std::string shown = commandText(row.name);
    EXPECT_TRUE(inMenus.emplace(std::string(row.menu) + std::string(row.submenu), mnemonicOf(shown)).second)
        << row.name << ": " << shown;
    for (const std::string_view keys : {row.shortcut, row.alternative}) {
      if (keys.empty()) continue;
      EXPECT_TRUE(parseShortcut(keys) && shortcuts.insert(keys).second) << row.name << ": " << keys;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(InEveryLanguage, Mnemonics,
                         ::testing::ValuesIn(languages().begin(), languages().end()),
                         [](const auto& language) { return std::string(language.param.name); });

}  // namespace
}  // namespace lorivan
