// The demo form in a real window that is driven by messages, with a record of what the window tells.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "demo_form.h"
#include "own_windows.h"
#include "platform/win32/identifiers.h"
#include "platform/win32/platform_win32.h"

namespace lorivan::win32 {

class DemoWindow {
 public:
  explicit DemoWindow(PlatformWin32& platform) {
    install();
    auto made = platform.createWindow({kDemoForm, kDemoMenu, "Lorivan test window"}, events);
    EXPECT_TRUE(made) << (made ? "" : made.error().message);
    window = std::move(*made);
    main = findOwnWindow(L"LorivanWindow", L"Lorivan test window");
    window->setItems(kShape, {"Triangle", "Star", "Spiral"});
    window->select(kShape, 0);
  }

  void show() {
    window->show();
    settle();
    focus(kCreate);
    told();
  }
  void settle() { window->processEvents(); }
  /// What was told since the last call.
  std::vector<std::string> told() {
    settle();
    return std::exchange(log, {});
  }

  HWND child(ControlId control) const { return GetDlgItem(main, kFirstControl + control); }
  bool hasFocus(ControlId control) const { return GetFocus() == child(control); }
  void focus(ControlId control) { SetFocus(child(control)); }
  void type(const char* text) const {
    for (; *text != '\0'; ++text) PostMessageW(GetFocus(), WM_CHAR, static_cast<WPARAM>(*text), 0);
  }
  void key(WPARAM code) {
    PostMessageW(GetFocus(), WM_KEYDOWN, code, 1);
    settle();
  }
  void keyWith(int modifier, WPARAM code) {
    BYTE state[256] = {};
    state[modifier] = 0x80;
    SetKeyboardState(state);
    key(code);
    state[modifier] = 0;
    SetKeyboardState(state);
  }
  void click(ControlId control) {
    PostMessageW(child(control), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
    PostMessageW(child(control), WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
    settle();
  }
  void mouse(ControlId picture, UINT message, int x, int y) {
    PostMessageW(child(picture), message, 0, MAKELPARAM(x, y));
    settle();
  }

  WindowEvents events;
  std::vector<std::string> log;
  std::unique_ptr<Window> window;
  HWND main = nullptr;
  bool takesKeys = false, mayClose = true;

 private:
  static std::string name(ControlId control) {
    return std::string(kDemoForm[static_cast<std::size_t>(control)].name);
  }

  void install() {
    const auto note = [this](const char* what) {
      return [this, what](ControlId control) { log.push_back(std::string(what) + " " + name(control)); };
    };
    events.confirmed = note("confirmed");
    events.left = note("left");
    events.clicked = note("clicked");
    events.changed = note("changed");
    events.resized = note("resized");
    events.command = [this](CommandId command) {
      log.push_back(std::string(kDemoMenu[static_cast<std::size_t>(command)].name));
    };
    events.mouse = [this](ControlId control, const MouseEvent& e) {
      if (e.button == 0) return;  // on a real screen a pointer may stand anywhere
      constexpr const char* actions[] = {"press", "move", "release", "leave"};
      log.push_back(name(control) + " " + actions[static_cast<int>(e.action)] + " " +
                    std::to_string(e.button) + " " + std::to_string(e.x) + "," + std::to_string(e.y));
    };
    events.key = [this](const KeyEvent& e) {
      if (e.key != Key::other) log.push_back(std::string("key ") + std::to_string(static_cast<int>(e.key)));
      return takesKeys;
    };
    events.fileDropped = [this](const std::string& path) { log.push_back(std::string("dropped ") + path); };
    events.started = [this] { log.push_back("started"); };
    events.closeQuery = [this] {
      log.push_back("closing?");
      return mayClose;
    };
  }
};

}  // namespace lorivan::win32
