// The keyboard of the window: entries, keys that the program takes, shortcuts, and the dialog keys (Tab,
// mnemonics, arrows in a group).
#include <utility>

#include "platform/win32/window_win32.h"

namespace lorivan::win32 {
namespace {

bool isHeld(int key) { return GetKeyState(key) < 0; }

Key toKey(WPARAM key) {
  switch (key) {
    case VK_LEFT:
      return Key::left;
    case VK_UP:
      return Key::up;
    case VK_RIGHT:
      return Key::right;
    case VK_DOWN:
      return Key::down;
    case VK_ESCAPE:
      return Key::escape;
    case VK_RETURN:
      return Key::enter;
    case VK_ADD:
    case VK_OEM_PLUS:
      return Key::plus;
    case VK_SUBTRACT:
    case VK_OEM_MINUS:
      return Key::minus;
    case VK_SPACE:
      return Key::space;
    default:
      return Key::other;
  }
}

/// Whether the user selected or typed something, rather than the entry selecting all when it got the focus.
bool hasUserSelection(HWND entry) {
  DWORD from = 0, to = 0;
  SendMessageW(entry, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
  const bool all = from == 0 && static_cast<int>(to) >= GetWindowTextLengthW(entry);
  return from != to && (!all || SendMessageW(entry, EM_GETMODIFY, 0, 0) != 0);
}

/// A shortcut that means the text in an entry while the user is at work on it.
bool isTextShortcut(HWND entry, WPARAM key) {
  if (!isHeld(VK_CONTROL) || isHeld(VK_MENU)) return false;
  switch (key) {
    case 'C':
    case 'X':
      return hasUserSelection(entry);
    case 'Y':
    case 'Z':
      return SendMessageW(entry, EM_GETMODIFY, 0, 0) != 0;
    case 'V':
      return true;
    default:
      return false;
  }
}

/// How far a key changes the number in an entry; 0 for all others.
int stepOf(WPARAM key) {
  if (isHeld(VK_SHIFT) || isHeld(VK_CONTROL) || isHeld(VK_MENU)) return 0;
  switch (key) {
    case VK_UP:
      return 1;
    case VK_DOWN:
      return -1;
    case VK_PRIOR:
      return 10;
    case VK_NEXT:
      return -10;
    default:
      return 0;
  }
}

bool isOpenList(HWND window) { return SendMessageW(window, CB_GETDROPPEDSTATE, 0, 0) != 0; }

}  // namespace

void WindowWin32::takeMessage(MSG& message) {
  const bool isKey = message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN;
  const bool isOurs = message.hwnd == window_ || IsChild(window_, message.hwnd);
  if (isKey && isOurs && takeKey(message)) return;
  if (message.message == WM_MOUSEWHEEL && isOurs && takeWheel(message)) return;
  if (!isOurs || !IsDialogMessageW(window_, &message)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  if (message.message == WM_LBUTTONUP) confirmLeftEntry();  // let go beside the button it was held on
  if (isOurs && window_ != nullptr) {
    followPointer(message);
    followFocus();
  }
}

bool WindowWin32::takeKey(const MSG& message) {
  const ControlId control = form_.find(message.hwnd);
  const ControlKind kind = control < 0 ? ControlKind::picture : form_.kind(control);
  const bool isEntry = kind == ControlKind::number || kind == ControlKind::text;
  if (kind == ControlKind::list && isOpenList(message.hwnd)) return false;
  if (message.wParam == VK_RETURN && !isHeld(VK_MENU)) {
    if (kind == ControlKind::number) confirmEntry(control);
    if (kind == ControlKind::button || kind == ControlKind::colourBox) pressButton(control);
    if (isEntry || kind == ControlKind::button || kind == ControlKind::colourBox) return true;
  }
  if (const int by = stepOf(message.wParam); by != 0 && kind == ControlKind::number) {
    tell(events_.stepped, control, by);
    return true;
  }
  const Key key = toKey(message.wParam);
  const bool entryNeedsIt = isEntry && (key == Key::left || key == Key::right || key == Key::plus ||
                                        key == Key::minus || key == Key::space);
  if (!entryNeedsIt && tellKey(message.wParam, kind == ControlKind::picture)) return true;
  if (kind == ControlKind::number && message.wParam == VK_ESCAPE) {
    tell(events_.escaped, control);
    return true;
  }
  if (isEntry && isTextShortcut(message.hwnd, message.wParam)) return false;
  MSG copy = message;
  return menu_.accelerators() != nullptr && TranslateAcceleratorW(window_, menu_.accelerators(), &copy) != 0;
}

/// The system sends the wheel to the control with the focus or to the one under the pointer, as the user has
/// set it. It steps an entry that is both, goes to a picture under the pointer, and never changes a closed
/// list.
bool WindowWin32::takeWheel(const MSG& message) {
  const HWND focus = GetFocus();
  const ControlId control = form_.find(focus), receiver = form_.find(message.hwnd);
  RECT box{};
  const POINT at = {static_cast<short>(LOWORD(message.lParam)), static_cast<short>(HIWORD(message.lParam))};
  const bool isOver = GetWindowRect(focus, &box) && PtInRect(&box, at);
  if (control >= 0 && form_.kind(control) == ControlKind::number && isOver) {
    turned_ += static_cast<short>(HIWORD(message.wParam));
    const int notches = turned_ / WHEEL_DELTA;
    turned_ -= notches * WHEEL_DELTA;
    if (notches != 0) tell(events_.stepped, control, notches);
    return true;
  }
  const HWND under = WindowFromPoint(at);
  const ControlId seen = under != nullptr && IsChild(window_, under) ? form_.find(under) : -1;
  if (seen >= 0 && form_.kind(seen) == ControlKind::picture) {
    SendMessageW(under, message.message, message.wParam, message.lParam);
    return true;
  }
  if (receiver < 0) return false;
  const ControlKind kind = form_.kind(receiver);
  return kind == ControlKind::picture || (kind == ControlKind::list && !isOpenList(message.hwnd));
}

bool WindowWin32::tellKey(WPARAM key, bool onPicture) {
  if (!events_.key || toKey(key) == Key::other) return false;
  const bool taken =
      events_.key({toKey(key), isHeld(VK_SHIFT), isHeld(VK_CONTROL), isHeld(VK_MENU), onPicture});
  form_.showDrawnPictures();
  return taken;
}

/// How a label's mnemonic passes the focus on: to the label, then one further.
void WindowWin32::moveFocus(WPARAM target, bool isWindow) {
  const HWND next =
      isWindow ? reinterpret_cast<HWND>(target) : GetNextDlgTabItem(window_, GetFocus(), target != 0);
  if (next != nullptr) SetFocus(next);
}

void WindowWin32::confirmEntry(ControlId entry) {
  leftEntry_ = -1;
  const HWND window = form_.handle(entry);
  SendMessageW(window, EM_SETMODIFY, FALSE, 0);
  tell(events_.confirmed, entry);
  if (GetFocus() == window) SendMessageW(window, EM_SETSEL, 0, -1);
}

void WindowWin32::entryFocused(ControlId entry) {
  turned_ = 0;
  SendMessageW(form_.handle(entry), EM_SETMODIFY, FALSE, 0);
  // A click that brings the focus sets the cursor afterwards; a posted selection comes behind that.
  if (isHeld(VK_LBUTTON))
    PostMessageW(form_.handle(entry), EM_SETSEL, 0, -1);
  else
    SendMessageW(form_.handle(entry), EM_SETSEL, 0, -1);
}

/// The program must not be told while the focus is on its way (it may open a dialog). It is told before the
/// next event, or when the posted message arrives; but not while a button is held down, whose click a dialog
/// would swallow.
void WindowWin32::entryLeft(ControlId entry) {
  if (form_.isMovingFocus()) return;
  if (leftEntry_ >= 0 && leftEntry_ != entry) confirmLeftEntry();
  leftEntry_ = entry;
  PostMessageW(window_, kEntryLeft, 0, 0);
}

bool WindowWin32::isButtonHeld() const {
  const ControlId held = form_.find(GetCapture());
  if (held < 0) return false;
  const ControlKind kind = form_.kind(held);
  return kind == ControlKind::button || kind == ControlKind::colourBox || kind == ControlKind::check ||
         kind == ControlKind::radio;
}

void WindowWin32::confirmLeftEntry() {
  const ControlId entry = std::exchange(leftEntry_, -1);
  if (entry < 0) return;
  // The window only became inactive: the user is still in the entry.
  const HWND focus = GetFocus();
  if (focus == nullptr || focus == form_.handle(entry)) return;
  if (focus != window_ && !IsChild(window_, focus)) return;
  SendMessageW(form_.handle(entry), EM_SETMODIFY, FALSE, 0);
  tell(events_.left, entry);
  tell(events_.confirmed, entry);
}

/// Before anything else is told: an entry that was left, or one that is being typed into (a menu leaves the
/// focus where it is).
void WindowWin32::confirmPending() {
  confirmLeftEntry();
  const ControlId control = form_.find(GetFocus());
  if (control < 0 || form_.kind(control) != ControlKind::number) return;
  if (SendMessageW(form_.handle(control), EM_GETMODIFY, 0, 0) != 0) confirmEntry(control);
}

}  // namespace lorivan::win32
