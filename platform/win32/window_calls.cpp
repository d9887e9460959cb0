// What the program says to its window, apart from the controls.
#include <utility>

#include "platform/win32/monitor.h"
#include "platform/win32/text.h"
#include "platform/win32/window_win32.h"

namespace lorivan::win32 {

void WindowWin32::setTitle(const std::string& title) { SetWindowTextW(window_, widen(title).c_str()); }

void WindowWin32::setStatus(const std::string& text) {
  SendMessageW(status_, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(widen(text).c_str()));
  UpdateWindow(status_);  // it also tells how long work goes on
}

WindowPlace WindowWin32::place() const {
  if (IsIconic(window_) || IsZoomed(window_)) {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    GetWindowPlacement(window_, &placement);
    return toPlace(placement.rcNormalPosition);
  }
  RECT box{};
  GetWindowRect(window_, &box);
  return toPlace(box);
}

void WindowWin32::moveTo(int left, int top) {
  SetWindowPos(window_, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

WindowPlace WindowWin32::screen() const { return toPlace(monitorOf(window_).rcMonitor); }

void WindowWin32::show() {
  ShowWindow(window_, shown_ ? SW_SHOW : SW_SHOWNORMAL);
  UpdateWindow(window_);
  if (!std::exchange(shown_, true)) PostMessageW(window_, kStarted, 0, 0);
}

void WindowWin32::run() {
  MSG message{};
  while (!closed_) {
    form_.showDrawnPictures();
    if (GetMessageW(&message, nullptr, 0, 0) <= 0) break;
    takeMessage(message);
  }
}

bool WindowWin32::processEvents() {
  form_.showDrawnPictures();
  MSG message{};
  while (!closed_ && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));  // for the loop that is waiting for it
      return false;
    }
    takeMessage(message);
  }
  return !closed_;
}

void WindowWin32::setBusy(bool on) {
  busy_ = on;
  SetCursor(systemPointer(on ? PointerShape::busy : PointerShape::arrow));
}

void WindowWin32::message(const std::string& text, const std::string& title, MessageIcon icon) {
  showMessage(window_, text, title, icon);
}

bool WindowWin32::confirm(const std::string& text, const std::string& title) {
  return askConfirmation(window_, text, title);
}

std::string WindowWin32::chooseFile(const FileDialogSpec& dialog) { return askFile(window_, dialog); }

std::optional<Colour> WindowWin32::chooseColour(Colour initial) {
  return colourDialog_.ask(window_, initial);
}

std::string WindowWin32::inputBox(const std::string& prompt, const std::string& title,
                                  const std::string& initial) {
  return askText(window_, prompt, title, initial);
}

}  // namespace lorivan::win32
