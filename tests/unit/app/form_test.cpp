// The form and command tables hang together.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "app/command_table.h"
#include "app/form_table.h"
#include "platform/common/text_helpers.h"

namespace lorivan {
namespace {

TEST(FormTable, NamesAreUniqueAndGroupsComeBeforeTheirMembers) {
  std::set<std::string_view> names, groups = {""};
  for (const ControlSpec& row : formTable()) {
    EXPECT_TRUE(names.insert(row.name).second) << row.name;
    EXPECT_TRUE(groups.contains(row.group)) << row.name;
    if (row.kind == ControlKind::group) groups.insert(row.name);
  }
  for (const ParamSpec& p : parameterTable()) EXPECT_TRUE(names.contains(p.field)) << p.field;
  for (const CheckSpec& c : checkTable()) EXPECT_TRUE(names.contains(c.field)) << c.field;
}

TEST(FormTable, EveryFieldHasALabelAndEverythingATooltip) {
  const auto rows = formTable();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const ControlSpec& row = rows[i];
    if (row.kind == ControlKind::number) {
      ASSERT_EQ(rows[i - 1].kind, ControlKind::label) << row.name;
      EXPECT_FALSE(rows[i - 1].caption.empty()) << row.name;
    }
    if (row.kind != ControlKind::group && row.kind != ControlKind::label) {
      EXPECT_FALSE(row.tooltip.empty()) << row.name;
    }
  }
  EXPECT_EQ(rows[static_cast<std::size_t>(controlId("txtCol7"))].tooltip, "Colour8");
  EXPECT_EQ(rows[static_cast<std::size_t>(controlId("lblScale"))].caption, "Sc&ale");
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

TEST(FormTable, CellsAreSharedByNoTwoControls) {
  std::map<std::string_view, int> columns = {{"", 40}};
  std::set<std::tuple<std::string_view, int, int>> cells;
  for (const ControlSpec& row : formTable()) {
    // A group's own grid may be twice as fine as the one that it stands on.
    if (row.kind == ControlKind::group) columns[row.name] = 2 * row.place.columns;
    if (row.kind == ControlKind::picture && row.group.empty()) continue;
    EXPECT_LE(row.place.column + row.place.columns, columns[row.group]) << row.name;
    const int rows = row.kind == ControlKind::group ? 1 : row.place.rows;
    for (int x = 0; x < row.place.columns; ++x)
      for (int y = 0; y < rows; ++y)
        EXPECT_TRUE(cells.emplace(row.group, row.place.column + x, row.place.row + y).second) << row.name;
  }
}

}  // namespace
}  // namespace lorivan
