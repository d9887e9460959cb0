// What the tests that every back end has to pass need of it. Each back end's test program defines these
// functions and links the tests beside them.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <span>
#include <string>

#include "platform/platform.h"
#include "unit/platform_contract/held.h"

namespace lorivan::contract {

/// Milliseconds that a test waits for what has to come, on a machine that does much else at the same time.
inline constexpr int kPatience = 60'000;

/// The program's commands, and behind them a menu of commands that have whatever a command can have.
std::span<const CommandSpec> contractCommands();
/// The row of a name among them.
CommandId contractCommand(std::string_view name);

/// What a person does in the window that was opened last. An action is done and told when it returns.
class User {
 public:
  virtual ~User() = default;
  virtual void focus(ControlId control) = 0;
  virtual bool hasFocus(ControlId control) const = 0;
  virtual void type(const char* text) = 0;
  /// "Return", "Ctrl+Z", "Alt+B", to what has the focus.
  virtual void press(const std::string& keys) = 0;
  virtual void click(ControlId control) = 0;
  /// Holds the mouse button over a control; lets it go there, or beside it.
  virtual void hold(ControlId control) = 0;
  virtual void letGo(ControlId control, bool inside) = 0;
  virtual void pick(CommandId command) = 0;
  /// What a command's menu shows of it, without its shortcut; empty when it does not show it at all, or when
  /// its submenu cannot be opened.
  virtual std::string menuText(CommandId command) const = 0;
  /// Goes over a menu item without choosing it; kNoCommand: leaves the menu.
  virtual void highlight(CommandId command) = 0;
  /// Moves the pointer onto a control, or, with -1, out of the window.
  virtual void point(ControlId control) = 0;
  /// Has these keys down, or up again, while the mouse is used.
  virtual void holdKeys(bool shift, bool ctrl) = 0;
  /// Turns the wheel over a control, by 120 for a notch away from the user.
  virtual void wheel(ControlId control, int by) = 0;
  /// `leave` takes the mouse away from the picture while a button is held.
  virtual void mouse(ControlId picture, MouseAction action, int button, int x, int y) = 0;
  virtual void enlarge(int width, int height) = 0;
  virtual void drop(const std::string& path) = 0;
  virtual void close() = 0;
  /// Lets the desktop have other colours, or its usual ones.
  virtual void recolour(bool other) = 0;
  /// Presses the button with this label in the next dialog; an empty one: closes it.
  virtual void pressNext(const std::string& label) = 0;
  /// Agrees to the next dialog or cancels it; writes into its entry before, where a text is given.
  virtual void answerNext(bool agree, const std::string& text = "") = 0;
};

/// A platform object whose settings are empty, or those that the one before has left.
std::unique_ptr<Platform> makePlatform(bool fresh = true);
std::unique_ptr<User> makeUser(Window& window);
/// A name in a folder for scraps.
std::string scrapFile(const std::string& name);
/// The width of the picture on the system's clipboard; 0 if there is none.
int clipboardWidth();
/// The SVG drawing on it; empty if there is none.
std::string clipboardSvg();
/// What this process holds now.
Held held();

}  // namespace lorivan::contract
