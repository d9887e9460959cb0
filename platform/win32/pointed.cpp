// What the user points at, with the mouse or by moving the focus.
#include <utility>

#include "platform/win32/window_win32.h"

namespace lorivan::win32 {

void WindowWin32::tellPointed(ControlId control) {
  if (std::exchange(pointed_, control) != control) tell(events_.pointed, control);
}

/// Labels and what is disabled leave their messages to the window behind them.
void WindowWin32::followPointer(const MSG& message) {
  if (message.message == WM_MOUSELEAVE && message.hwnd == pointedIn_) {
    pointedIn_ = nullptr;
    return tellPointed(-1);
  }
  if (message.message != WM_MOUSEMOVE) return;
  if (std::exchange(pointedIn_, message.hwnd) != message.hwnd) {
    TRACKMOUSEEVENT watch = {sizeof watch, TME_LEAVE, message.hwnd, 0};
    TrackMouseEvent(&watch);
  }
  const POINT at = {static_cast<short>(LOWORD(message.lParam)), static_cast<short>(HIWORD(message.lParam))};
  const ControlId control = message.hwnd == window_ ? form_.controlAt(at) : form_.find(message.hwnd);
  const bool large =
      control >= 0 && form_.kind(control) == ControlKind::picture && form_.specs()[control].group.empty();
  tellPointed(large ? -1 : control);
}

/// Not when the window becomes active or the program moves the focus.
void WindowWin32::followFocus() {
  const HWND focus = GetFocus();
  if (focus == nullptr || std::exchange(knownFocus_, focus) == focus || focus == form_.movedTo()) return;
  const ControlId control = form_.find(focus);
  if (control < 0 || form_.kind(control) == ControlKind::picture) return;
  pointed_ = control;
  tell(events_.pointed, control);
}

}  // namespace lorivan::win32
