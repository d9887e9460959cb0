#include "platform/win32/menu_bar.h"

#include <array>
#include <utility>

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

/// A menu that is being filled.
struct Place {
  HMENU menu = nullptr;
  bool wantsLine = false;  // before its next item
};

void appendLine(Place& place) {
  if (std::exchange(place.wantsLine, false) && GetMenuItemCount(place.menu) > 0)
    AppendMenuW(place.menu, MF_SEPARATOR, 0, nullptr);
}

/// It stays grey until something stands in it.
Place openSubmenu(Place& menu, std::string_view title) {
  appendLine(menu);
  const HMENU made = CreatePopupMenu();
  AppendMenuW(menu.menu, MF_POPUP | MF_GRAYED, reinterpret_cast<UINT_PTR>(made), widen(title).c_str());
  return {made};
}

UINT stateFlags(bool enabled, bool checked) {
  return (enabled ? MF_ENABLED : MF_GRAYED) | (checked ? MF_CHECKED : MF_UNCHECKED);
}

}  // namespace

MenuBar::MenuBar(std::span<const CommandSpec> commands)
    : specs_(commands), unattached_(CreateMenu()), bar_(unattached_.get()), states_(commands.size()) {
  std::vector<ACCEL> accelerators;
  for (std::size_t row = 0; row < specs_.size(); ++row) {
    const CommandSpec& command = specs_[row];
    states_[row].text = command.text;
    for (const std::string_view text : {command.shortcut, command.alternative})
      if (const auto shortcut = parseShortcut(text))
        accelerators.push_back(acceleratorFor(*shortcut, kFirstCommand + static_cast<int>(row)));
    if (menus_.contains(command.menu)) continue;
    const HMENU menu = CreatePopupMenu();
    AppendMenuW(bar_, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), widen(command.menu).c_str());
    menus_.emplace(command.menu, menu);
  }
  for (const auto& [title, menu] : menus_) fill(title, menu);
  if (!accelerators.empty())
    accelerators_.reset(CreateAcceleratorTableW(accelerators.data(), static_cast<int>(accelerators.size())));
}

/// Makes a top-level menu anew. The system has no hidden items: those are left out.
void MenuBar::fill(std::string_view title, HMENU handle) const {
  while (DeleteMenu(handle, 0, MF_BYPOSITION)) continue;
  std::string_view submenuTitle;
  Place menu{handle}, submenu;
  for (std::size_t row = 0; row < specs_.size(); ++row) {
    const CommandSpec& command = specs_[row];
    if (command.menu != title) continue;
    const bool opens = !command.submenu.empty() && command.submenu != submenuTitle;
    submenuTitle = command.submenu;
    Place& place = command.submenu.empty() ? menu : submenu;
    (opens ? menu : place).wantsLine |= command.separatorBefore;
    if (opens) submenu = openSubmenu(menu, submenuTitle);
    if (!states_[row].visible) continue;
    appendLine(place);
    append(place.menu, row);
    if (!command.submenu.empty())
      EnableMenuItem(handle, static_cast<UINT>(GetMenuItemCount(handle) - 1), MF_BYPOSITION | MF_ENABLED);
  }
}

void MenuBar::refill(CommandId command) const {
  const std::string_view title = specs_[command].menu;
  if (bar_ != nullptr) fill(title, menus_.at(title));
}

void MenuBar::append(HMENU menu, std::size_t row) const {
  const State& state = states_[row];
  std::string text = state.text;
  if (const auto shortcut = parseShortcut(specs_[row].shortcut)) text += '\t' + shortcutLabel(*shortcut);
  AppendMenuW(menu, MF_STRING | stateFlags(state.enabled, state.checked),
              static_cast<UINT_PTR>(kFirstCommand) + row, widen(text).c_str());
}

void MenuBar::setText(CommandId command, const std::string& text) {
  State& state = states_[command];
  if (state.text == text) return;
  state.text = text;
  if (state.visible) refill(command);
}

void MenuBar::setVisible(CommandId command, bool on) {
  State& state = states_[command];
  if (state.visible == on) return;
  state.visible = on;
  refill(command);
}

void MenuBar::attach(HWND window) {
  if (SetMenu(window, bar_)) static_cast<void>(unattached_.release());
}

void MenuBar::enable(CommandId command, bool on) {
  states_[command].enabled = on;
  EnableMenuItem(bar_, static_cast<UINT>(kFirstCommand + command),
                 static_cast<UINT>(MF_BYCOMMAND | (on ? MF_ENABLED : MF_GRAYED)));
}

void MenuBar::check(CommandId command, bool on) {
  states_[command].checked = on;
  CheckMenuItem(bar_, static_cast<UINT>(kFirstCommand + command),
                static_cast<UINT>(MF_BYCOMMAND | (on ? MF_CHECKED : MF_UNCHECKED)));
}

}  // namespace lorivan::win32
