#include "platform/win32/picture_view.h"

#include <algorithm>

#include "platform/win32/checked.h"

namespace lorivan::win32 {
namespace {

constexpr const wchar_t* kPictureClass = L"LorivanPicture";
constexpr UINT kReleaseLost = WM_APP + 3;  // the mouse was taken away while a button was down
constexpr DWORD kFrameMilliseconds = 16;

}  // namespace

HCURSOR systemPointer(PointerShape shape) {
  const wchar_t* name = IDC_ARROW;
  if (shape == PointerShape::hand) name = IDC_HAND;
  if (shape == PointerShape::busy) name = IDC_WAIT;
  return LoadCursorW(nullptr, name);
}

PictureView::PictureView(std::unique_ptr<DibSurface> surface, MouseHandler onMouse)
    : surface_(std::move(surface)), onMouse_(std::move(onMouse)) {
  surface_->onRefresh = [this] { refresh(); };
}

void PictureView::refresh() {
  surface_->takeDrawn();
  if (handle_ == nullptr) return;
  InvalidateRect(handle_, nullptr, FALSE);
  // Building up a knot refreshes far more often than a screen can show.
  const DWORD now = timeGetTime();
  if (now - shownAt_ < kFrameMilliseconds) return;
  shownAt_ = now;
  UpdateWindow(handle_);
}

Result<std::unique_ptr<PictureView>> PictureView::create(HWND parent, int id, MouseHandler onMouse) {
  WNDCLASSEXW kind{};
  kind.cbSize = sizeof kind;
  kind.style = CS_DBLCLKS;
  kind.lpfnWndProc = procedure;
  kind.hInstance = GetModuleHandleW(nullptr);
  kind.lpszClassName = kPictureClass;
  RegisterClassExW(&kind);  // fails harmlessly from the second picture on
  auto surface = DibSurface::create(1, 1);
  if (!surface) return surface.error();
  std::unique_ptr<PictureView> view(new PictureView(std::move(*surface), std::move(onMouse)));
  const auto menu = reinterpret_cast<HMENU>(static_cast<INT_PTR>(id));
  if (CreateWindowExW(0, kPictureClass, L"", WS_CHILD | WS_CLIPSIBLINGS, 0, 0, 1, 1, parent, menu,
                      kind.hInstance, view.get()) == nullptr)
    return unwritable(systemFault("CreateWindowEx"));
  return view;
}

PictureView::~PictureView() {
  if (handle_ != nullptr) DestroyWindow(handle_);
}

bool PictureView::fitSurface(int width, int height) {
  width = std::max(width, 1);
  height = std::max(height, 1);
  if (width == surface_->width() && height == surface_->height()) return false;
  surface_->resize(width, height);
  return true;
}

void PictureView::setPointer(PointerShape shape) {
  pointer_ = shape;
  if (inside_) SetCursor(systemPointer(shape));
}

void PictureView::showDrawn() {
  if (surface_->takeDrawn() && handle_ != nullptr) InvalidateRect(handle_, nullptr, FALSE);
}

LRESULT CALLBACK PictureView::procedure(HWND window, UINT message, WPARAM wide, LPARAM argument) {
  if (message == WM_NCCREATE) {
    auto* view = static_cast<PictureView*>(reinterpret_cast<CREATESTRUCTW*>(argument)->lpCreateParams);
    view->handle_ = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(view));
  }
  auto* view = reinterpret_cast<PictureView*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (view == nullptr) return DefWindowProcW(window, message, wide, argument);
  if (message == WM_NCDESTROY) {
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    view->handle_ = nullptr;
    return DefWindowProcW(window, message, wide, argument);
  }
  return view->handle(message, wide, argument);
}

LRESULT PictureView::handle(UINT message, WPARAM wide, LPARAM argument) {
  switch (message) {
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      paint();
      return 0;
    case WM_GETDLGCODE:
      return DLGC_WANTARROWS;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      press(1, argument, message == WM_LBUTTONDBLCLK);
      return 0;
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
      press(2, argument, message == WM_RBUTTONDBLCLK);
      return 0;
    case WM_MBUTTONDOWN:
    case WM_MBUTTONDBLCLK:
      press(3, argument, message == WM_MBUTTONDBLCLK);
      return 0;
    case WM_LBUTTONUP:
      release(1, argument);
      return 0;
    case WM_RBUTTONUP:
      release(2, argument);
      return 0;
    case WM_MBUTTONUP:
      release(3, argument);
      return 0;
    case WM_MOUSEWHEEL:
      turnWheel(static_cast<short>(HIWORD(wide)), argument);
      return 0;
    case WM_MOUSEMOVE:
      move(argument);
      return 0;
    case WM_MOUSELEAVE:
      leave();
      return 0;
    case WM_CAPTURECHANGED:
      captureLost();
      return 0;
    case kReleaseLost:
      releaseLost();
      return 0;
    case WM_SETCURSOR:
      // The window's hourglass goes before.
      if (SendMessageW(GetParent(handle_), message, wide, argument) == 0) SetCursor(systemPointer(pointer_));
      return TRUE;
    default:
      return DefWindowProcW(handle_, message, wide, argument);
  }
}

void PictureView::paint() {
  PAINTSTRUCT paint{};
  const HDC context = BeginPaint(handle_, &paint);
  const RECT& box = paint.rcPaint;
  BitBlt(context, box.left, box.top, box.right - box.left, box.bottom - box.top, surface_->context(),
         box.left, box.top, SRCCOPY);
  EndPaint(handle_, &paint);
}

void PictureView::rememberPlace(LPARAM where) {
  x_ = static_cast<short>(LOWORD(where));
  y_ = static_cast<short>(HIWORD(where));
}

void PictureView::tell(MouseAction action, int button, int steps) {
  const auto held = [](int key) { return GetKeyState(key) < 0; };
  if (onMouse_) onMouse_({action, button, x_, y_, held(VK_SHIFT), held(VK_CONTROL), held(VK_MENU), steps});
}

void PictureView::press(int button, LPARAM where, bool second) {
  if (pressed_ != 0) return;  // a second button does not count before the first is up
  rememberPlace(where);
  pressed_ = button;
  SetFocus(handle_);
  SetCapture(handle_);
  tell(MouseAction::press, button);
  if (second && pressed_ == button) tell(MouseAction::doubleClick, button);
}

/// `where` is a place on the screen.
void PictureView::turnWheel(int turn, LPARAM where) {
  turned_ += turn;
  const int notches = turned_ / WHEEL_DELTA;
  turned_ -= notches * WHEEL_DELTA;
  POINT at = {static_cast<short>(LOWORD(where)), static_cast<short>(HIWORD(where))};
  ScreenToClient(handle_, &at);
  x_ = at.x;
  y_ = at.y;
  if (notches != 0) tell(MouseAction::wheel, pressed_, notches);
}

void PictureView::move(LPARAM where) {
  rememberPlace(where);
  if (!inside_) {
    TRACKMOUSEEVENT watch = {sizeof watch, TME_LEAVE, handle_, 0};
    inside_ = TrackMouseEvent(&watch) != 0;
  }
  tell(MouseAction::move, pressed_);
}

void PictureView::release(int button, LPARAM where) {
  if (button != pressed_) return;
  rememberPlace(where);
  pressed_ = 0;
  if (GetCapture() == handle_) ReleaseCapture();
  tell(MouseAction::release, button);
}

/// Hiding the picture loses the mouse, too: the release comes with the next events, not out of that call.
void PictureView::captureLost() {
  if (pressed_ != 0) PostMessageW(handle_, kReleaseLost, 0, 0);
}

void PictureView::releaseLost() {
  const int button = std::exchange(pressed_, 0);
  if (button != 0) tell(MouseAction::release, button);
}

void PictureView::leave() {
  inside_ = false;
  if (pressed_ == 0) tell(MouseAction::leave, 0);
}

}  // namespace lorivan::win32
