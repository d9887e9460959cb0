#include "platform/qt/menus_qt.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <algorithm>
#include <map>

#include "platform/common/text_helpers.h"
#include "platform/qt/convert.h"

namespace lorivan {
namespace {

/// Qt has its own name for one of the keys.
QKeySequence keysOf(const Shortcut& shortcut) {
  return QKeySequence(
      toQString(shortcutText(shortcut)).replace(QStringLiteral("PgDn"), QStringLiteral("PgDown")));
}

QList<QKeySequence> shortcutsOf(const CommandSpec& spec) {
  QList<QKeySequence> found;
  for (const std::string_view text : {spec.shortcut, spec.alternative})
    if (const auto shortcut = parseShortcut(text)) found.append(keysOf(*shortcut));
  return found;
}

}  // namespace

void MenusQt::make(QMenuBar& bar, std::span<const CommandSpec> commands) {
  std::map<std::string_view, QMenu*> menus;
  std::string_view above;  // the submenu of the row before
  QMenu* submenu = nullptr;
  for (const CommandSpec& command : commands) {
    QMenu*& menu = menus[command.menu];
    if (!menu) {
      menu = addMenu(bar, command.menu);
      above = {};
    }
    if (command.submenu.empty()) {
      submenu = nullptr;
    } else if (command.submenu != above) {
      if (command.separatorBefore) menu->addSeparator();
      submenu = menu->addMenu(toQString(command.submenu));
      QObject::connect(submenu->menuAction(), &QAction::hovered, &bar, [this] { highlighted(kNoCommand); });
    }
    above = command.submenu;
    addCommand(*menu, command, submenu);
  }
}

QMenu* MenusQt::addMenu(QMenuBar& bar, std::string_view title) {
  QMenu* const menu = bar.addMenu(toQString(title));
  QObject::connect(menu, &QMenu::aboutToHide, &bar, [this] { highlighted(kNoCommand); });
  return menu;
}

void MenusQt::addCommand(QMenu& menu, const CommandSpec& spec, QMenu* submenu) {
  QMenu& place = submenu ? *submenu : menu;
  if (spec.separatorBefore && !place.isEmpty()) place.addSeparator();
  QAction* const made = place.addAction(toQString(spec.text));
  made->setObjectName(toQString(spec.name));
  made->setCheckable(spec.checkable);
  made->setShortcuts(shortcutsOf(spec));
  const auto id = static_cast<CommandId>(commands_.size());
  commands_.push_back({made, submenu});
  QObject::connect(made, &QAction::hovered, &menu, [this, id] { highlighted(id); });
  QObject::connect(made, &QAction::triggered, &menu, [this, id, made] {
    if (made->isCheckable()) made->setChecked(!made->isChecked());  // the mark is the program's to set
    chosen(id);
  });
}

void MenusQt::enable(CommandId command, bool on) {
  commands_.at(static_cast<std::size_t>(command)).enabled = on;
  at(command).action->setEnabled(on && at(command).visible);
}

void MenusQt::check(CommandId command, bool on) { at(command).action->setChecked(on); }

bool MenusQt::checked(CommandId command) const { return at(command).action->isChecked(); }

void MenusQt::setText(CommandId command, const std::string& text) {
  at(command).action->setText(toQString(text));
}

void MenusQt::setVisible(CommandId command, bool on) {
  commands_.at(static_cast<std::size_t>(command)).visible = on;
  at(command).action->setVisible(on);
  enable(command, at(command).enabled);
  QMenu* const submenu = at(command).submenu;
  if (!submenu) return;
  const bool any = std::ranges::any_of(
      commands_, [submenu](const Command& other) { return other.submenu == submenu && other.visible; });
  submenu->setEnabled(any);
}

}  // namespace lorivan
