// The menu and the shortcuts, made from the command table.
#pragma once

#include <span>
#include <vector>

#include "platform/win32/handles.h"
#include "platform/win32/identifiers.h"
#include "platform/window.h"

namespace lorivan::win32 {

class MenuBar {
 public:
  /// Items come in the table's order; a top-level menu stands where it is first named.
  explicit MenuBar(std::span<const CommandSpec> commands);

  /// Belongs to the window from attach() on, which destroys it.
  void attach(HWND window);
  /// After the window is gone.
  void detach() { bar_ = nullptr; }
  HACCEL accelerators() const { return accelerators_.get(); }

  int count() const { return static_cast<int>(states_.size()); }
  void enable(CommandId command, bool on);
  bool enabled(CommandId command) const { return states_[static_cast<std::size_t>(command)].enabled; }
  void check(CommandId command, bool on);
  bool checked(CommandId command) const { return states_[static_cast<std::size_t>(command)].checked; }

 private:
  struct State {
    bool enabled = true, checked = false;
  };

  OwnedMenu unattached_;
  HMENU bar_ = nullptr;
  OwnedAccelerators accelerators_;
  std::vector<State> states_;
};

}  // namespace lorivan::win32
