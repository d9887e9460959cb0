// What the program says to its window, apart from the controls.
#include <algorithm>
#include <utility>

#include "platform/win32/monitor.h"
#include "platform/win32/printing.h"
#include "platform/win32/text.h"
#include "platform/win32/window_win32.h"

namespace lorivan::win32 {

void WindowWin32::setTitle(const std::string& title) { SetWindowTextW(window_, widen(title).c_str()); }

void WindowWin32::setStatus(const std::string& text) {
  if (status_.handle() != nullptr) status_.show(widen(text));
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

void WindowWin32::resizeTo(int width, int height) {
  if (maximised()) return;
  const LayoutSize least = frameAround(minimumClient(form_.specs(), leastMetrics_));
  const WindowPlace room = toPlace(monitorOf(window_).rcWork);
  width = std::min(std::max(width, least.width), room.width);
  height = std::min(std::max(height, least.height), room.height);
  const WindowPlace now = place();
  const int left = std::clamp(now.left, room.left, room.left + room.width - width);
  const int top = std::clamp(now.top, room.top, room.top + room.height - height);
  SetWindowPos(window_, nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

bool WindowWin32::maximised() const {
  if (!shown_) return startsMaximised_;
  if (!IsIconic(window_)) return IsZoomed(window_) != 0;
  WINDOWPLACEMENT placement{};
  placement.length = sizeof placement;
  GetWindowPlacement(window_, &placement);
  return (placement.flags & WPF_RESTORETOMAXIMIZED) != 0;
}

void WindowWin32::setMaximised(bool on) {
  if (!shown_)
    startsMaximised_ = on;
  else if (on != maximised())
    ShowWindow(window_, on ? SW_MAXIMIZE : SW_RESTORE);
}

WindowPlace WindowWin32::screen() const { return toPlace(monitorOf(window_).rcMonitor); }

void WindowWin32::show() {
  const int first = startsMaximised_ ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL;
  ShowWindow(window_, shown_ ? SW_SHOW : first);
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

SaveAnswer WindowWin32::askToSave(const std::string& text, const std::string& title) {
  return askWhetherToSave(window_, text, title);
}

std::string WindowWin32::chooseFile(const FileDialogSpec& dialog) { return askFile(window_, dialog); }

std::optional<Colour> WindowWin32::chooseColour(Colour initial) {
  return colourDialog_.ask(window_, initial);
}

std::optional<std::vector<OptionLine>> WindowWin32::chooseOptions(const OptionDialogSpec& dialog) {
  return askOptions(window_, dialog);
}

std::string WindowWin32::inputBox(const std::string& prompt, const std::string& title,
                                  const std::string& initial) {
  return askText(window_, prompt, title, initial);
}

Result<bool> WindowWin32::print(const PrintSpec& spec, const std::function<Status(PrintPage&)>& draw) {
  return printOnPaper(window_, spec, draw);
}

}  // namespace lorivan::win32
