#include "platform/win32/menu_bar.h"

#include <array>
#include <map>
#include <string>
#include <vector>

#include "platform/common/text_helpers.h"
#include "platform/win32/text.h"

namespace lorivan::win32 {
namespace {

constexpr std::array<std::pair<std::string_view, WORD>, 13> kNamedKeys = {{{"Del", VK_DELETE},
                                                                           {"Ins", VK_INSERT},
                                                                           {"Home", VK_HOME},
                                                                           {"End", VK_END},
                                                                           {"PgUp", VK_PRIOR},
                                                                           {"PgDn", VK_NEXT},
                                                                           {"Esc", VK_ESCAPE},
                                                                           {"Enter", VK_RETURN},
                                                                           {"Space", VK_SPACE},
                                                                           {"Left", VK_LEFT},
                                                                           {"Right", VK_RIGHT},
                                                                           {"Up", VK_UP},
                                                                           {"Down", VK_DOWN}}};

WORD keyCode(const std::string& key) {
  if (key.size() == 1) return static_cast<WORD>(static_cast<unsigned char>(key[0]));
  for (const auto& [name, code] : kNamedKeys)
    if (name == key) return code;
  return static_cast<WORD>(VK_F1 + std::stoi(key.substr(1)) - 1);  // "F1" to "F12"
}

ACCEL acceleratorFor(const Shortcut& shortcut, int identifier) {
  int flags = FVIRTKEY;
  if (shortcut.ctrl) flags |= FCONTROL;
  if (shortcut.shift) flags |= FSHIFT;
  if (shortcut.alt) flags |= FALT;
  return {static_cast<BYTE>(flags), keyCode(shortcut.key), static_cast<WORD>(identifier)};
}

HMENU submenuNamed(HMENU bar, std::string_view title, std::map<std::string_view, HMENU>& known) {
  const auto found = known.find(title);
  if (found != known.end()) return found->second;
  const HMENU menu = CreatePopupMenu();
  AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), widen(title).c_str());
  known.emplace(title, menu);
  return menu;
}

}  // namespace

MenuBar::MenuBar(std::span<const CommandSpec> commands)
    : unattached_(CreateMenu()), bar_(unattached_.get()), states_(commands.size()) {
  std::map<std::string_view, HMENU> menus;
  std::vector<ACCEL> accelerators;
  int identifier = kFirstCommand;
  for (const CommandSpec& command : commands) {
    const HMENU menu = submenuNamed(bar_, command.menu, menus);
    std::string text(command.text);
    if (const auto shortcut = parseShortcut(command.shortcut)) {
      text += '\t';
      text += shortcutText(*shortcut);
      accelerators.push_back(acceleratorFor(*shortcut, identifier));
    }
    if (command.separatorBefore) AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(identifier), widen(text).c_str());
    ++identifier;
  }
  if (!accelerators.empty())
    accelerators_.reset(CreateAcceleratorTableW(accelerators.data(), static_cast<int>(accelerators.size())));
}

void MenuBar::attach(HWND window) {
  if (SetMenu(window, bar_)) static_cast<void>(unattached_.release());
}

void MenuBar::enable(CommandId command, bool on) {
  states_[static_cast<std::size_t>(command)].enabled = on;
  EnableMenuItem(bar_, static_cast<UINT>(kFirstCommand + command),
                 static_cast<UINT>(MF_BYCOMMAND | (on ? MF_ENABLED : MF_GRAYED)));
}

void MenuBar::check(CommandId command, bool on) {
  states_[static_cast<std::size_t>(command)].checked = on;
  CheckMenuItem(bar_, static_cast<UINT>(kFirstCommand + command),
                static_cast<UINT>(MF_BYCOMMAND | (on ? MF_CHECKED : MF_UNCHECKED)));
}

}  // namespace lorivan::win32
