// The menus and their shortcuts, made from the command table.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "platform/window.h"

class QAction;
class QMenu;
class QMenuBar;

namespace lorivan {

class MenusQt {
 public:
  std::function<void(CommandId)> chosen;
  std::function<void(CommandId)> highlighted;  // kNoCommand: none any more

  /// Menus stand in the bar in the order in which they are first named. The bar owns everything.
  void make(QMenuBar& bar, std::span<const CommandSpec> commands);

  void enable(CommandId command, bool on);
  bool enabled(CommandId command) const { return at(command).enabled; }
  void check(CommandId command, bool on);
  bool checked(CommandId command) const;
  void setText(CommandId command, const std::string& text);
  void setVisible(CommandId command, bool on);

 private:
  struct Command {
    QAction* action = nullptr;
    QMenu* submenu = nullptr;  // that it stands in, if any
    bool enabled = true;       // as told; what is hidden counts as disabled for Qt
    bool visible = true;
  };

  const Command& at(CommandId command) const { return commands_.at(static_cast<std::size_t>(command)); }
  QMenu* addMenu(QMenuBar& bar, std::string_view title);
  void addCommand(QMenu& menu, const CommandSpec& spec, QMenu* submenu);

  std::vector<Command> commands_;
};

}  // namespace lorivan
