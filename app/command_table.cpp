#include "app/command_table.h"

#include <string>
#include <vector>

#include "app/presets.h"

namespace lorivan {
namespace {

/// "&1 Illuminated": the digit is the mnemonic, 0 for the tenth.
std::vector<std::string> styleTexts() {
  std::vector<std::string> texts;
  for (const Preset& preset : presetTable()) {
    std::string text(1, '&');
    text += static_cast<char>('0' + (texts.size() + 1) % 10);
    texts.push_back(text + ' ' + std::string(preset.name));
  }
  return texts;
}

}  // namespace

std::span<const CommandSpec> commandTable() {
  static const std::vector<std::string> styles = styleTexts();
  static const std::vector<CommandSpec> table = [] {
    std::vector<CommandSpec> specs;
    specs.reserve(menus::kRows.size());
    for (const CommandRow& row : menus::kRows)
      specs.push_back({row.name, row.menu, row.text, row.shortcut, row.checkable, row.separatorBefore});
    for (CommandId i = kFirstStyle; i <= kLastStyle; ++i)
      specs[static_cast<std::size_t>(i)].text = styles[static_cast<std::size_t>(i - kFirstStyle)];
    return specs;
  }();
  return table;
}

}  // namespace lorivan
