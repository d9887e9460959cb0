// The menu and the shortcuts, made from the command table.
#pragma once

#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/win32/handles.h"
#include "platform/win32/identifiers.h"
#include "platform/window.h"

namespace lorivan::win32 {

class MenuBar {
 public:
  /// Items come in the table's order, which must outlive this; a top-level menu stands where it is first
  /// named.
  explicit MenuBar(std::span<const CommandSpec> commands);

  /// Belongs to the window from attach() on, which destroys it.
  void attach(HWND window);
  /// After the window is gone.
  void detach() { bar_ = nullptr; }
  HACCEL accelerators() const { return accelerators_.get(); }

  int count() const { return static_cast<int>(states_.size()); }
  void enable(CommandId command, bool on);
  bool enabled(CommandId command) const { return states_[command].enabled; }
  void check(CommandId command, bool on);
  bool checked(CommandId command) const { return states_[command].checked; }
  void setText(CommandId command, const std::string& text);
  void setVisible(CommandId command, bool on);
  bool visible(CommandId command) const { return states_[command].visible; }

 private:
  struct State {
    std::string text;
    bool enabled = true, checked = false, visible = true;
  };

  void fill(std::string_view title, HMENU handle) const;
  void refill(CommandId command) const;
  void append(HMENU menu, std::size_t row) const;

  std::span<const CommandSpec> specs_;
  OwnedMenu unattached_;
  HMENU bar_ = nullptr;
  OwnedAccelerators accelerators_;
  std::map<std::string_view, HMENU> menus_;  // by title
  std::vector<State> states_;
};

}  // namespace lorivan::win32
