#include "platform/win32/window_win32.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/win32/checked.h"
#include "platform/win32/dpi.h"
#include "platform/win32/monitor.h"
#include "platform/win32/text.h"

#ifndef WM_DPICHANGED
#define WM_DPICHANGED 0x02E0
#endif

namespace lorivan::win32 {
namespace {

constexpr const wchar_t* kClass = L"LorivanWindow";
constexpr DWORD kStyle = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;

HICON programIcon(int metric) {
  return static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(1), IMAGE_ICON,
                                       GetSystemMetrics(metric), GetSystemMetrics(metric), LR_SHARED));
}

void prepareClasses() {
  const INITCOMMONCONTROLSEX common = {sizeof common, ICC_STANDARD_CLASSES | ICC_BAR_CLASSES};
  InitCommonControlsEx(&common);
}

int heightOf(HWND window) {
  RECT box{};
  GetWindowRect(window, &box);
  return static_cast<int>(box.bottom - box.top);
}

}  // namespace

// ---- Making and closing ----

WindowWin32::WindowWin32(const WindowSpec& spec, const WindowEvents& events)
    : events_(events), menu_(spec.commands), form_(spec.controls) {}

WindowWin32::~WindowWin32() {
  if (window_ != nullptr) DestroyWindow(window_);
}

Result<std::unique_ptr<Window>> WindowWin32::create(const WindowSpec& spec, const WindowEvents& events) {
  std::unique_ptr<WindowWin32> window(new WindowWin32(spec, events));
  if (const Status made = window->make(spec.title); !made) return made.error();
  return std::unique_ptr<Window>(std::move(window));
}

Status WindowWin32::make(const std::string& title) {
  prepareClasses();
  WNDCLASSEXW kind{};
  kind.cbSize = sizeof kind;
  kind.lpfnWndProc = procedure;
  kind.hInstance = GetModuleHandleW(nullptr);
  kind.hIcon = programIcon(SM_CXICON);
  kind.hIconSm = programIcon(SM_CXSMICON);
  kind.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  kind.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1));
  kind.lpszClassName = kClass;
  RegisterClassExW(&kind);  // fails harmlessly for a second window
  if (CreateWindowExW(0, kClass, widen(title).c_str(), kStyle, CW_USEDEFAULT, CW_USEDEFAULT, 0, 0, nullptr,
                      nullptr, kind.hInstance, this) == nullptr)
    return unwritable(systemFault("CreateWindowEx"));
  menu_.attach(window_);
  if (!status_.create(window_)) return unwritable(systemFault("CreateWindowEx"));
  const auto onMouse = [this](ControlId picture, const MouseEvent& event) {
    confirmLeftEntry();
    tell(events_.mouse, picture, event);
  };
  if (const Status made = form_.create(window_, onMouse); !made) return made;
  DragAcceptFiles(window_, TRUE);
  takeFont();
  fitToScreen();
  resized_.clear();  // nobody has drawn on them yet
  return {};
}

/// The outer size of the window around a client area of the form.
LayoutSize WindowWin32::frameAround(LayoutSize client) const {
  RECT frame = {0, 0, client.width, client.height + heightOf(status_.handle())};
  growByFrame(frame, kStyle, dpiOf(window_));
  return {toPlace(frame).width, toPlace(frame).height};
}

/// The reference size on a small screen, about two thirds of a larger one's height.
void WindowWin32::fitToScreen() {
  const LayoutSize reference = frameAround(referenceClient(form_.specs(), metrics_));
  const WindowPlace room = toPlace(monitorOf(window_).rcWork);
  const int spare = std::max(
      0, std::min(room.height * 7 / 10 - reference.height, (room.width * 8 / 10 - reference.width) * 4 / 5));
  resizeTo(reference.width + spare * 5 / 4, reference.height + spare);
  sized(SIZE_RESTORED);
}

void WindowWin32::closeAsked() {
  if (askingToClose_) return;
  confirmPending();
  askingToClose_ = true;
  const bool mayClose = !events_.closeQuery || events_.closeQuery();
  askingToClose_ = false;
  if (mayClose && window_ != nullptr) DestroyWindow(window_);
}

void WindowWin32::close() {
  if (window_ != nullptr) closeAsked();
}

void WindowWin32::destroyed() {
  closed_ = true;
  window_ = lastFocus_ = nullptr;
  status_.forget();
  form_.forgetHandles();
  menu_.detach();
}

// ---- Messages ----

LRESULT CALLBACK WindowWin32::procedure(HWND window, UINT message, WPARAM wide, LPARAM argument) {
  if (message == WM_NCCREATE) {
    auto* made = static_cast<WindowWin32*>(reinterpret_cast<CREATESTRUCTW*>(argument)->lpCreateParams);
    made->window_ = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(made));
  }
  auto* self = reinterpret_cast<WindowWin32*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self == nullptr) return DefWindowProcW(window, message, wide, argument);
  if (message == WM_NCDESTROY) {
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    self->destroyed();
    return DefWindowProcW(window, message, wide, argument);
  }
  return self->handle(message, wide, argument);
}

LRESULT WindowWin32::handle(UINT message, WPARAM wide, LPARAM argument) {
  switch (message) {
    case WM_SIZE:
      sized(wide);
      return 0;
    case WM_GETMINMAXINFO:
      limitSize(*reinterpret_cast<MINMAXINFO*>(argument));
      return 0;
    case WM_DPICHANGED:
      densityChanged(*reinterpret_cast<const RECT*>(argument));
      return 0;
    case WM_SETTINGCHANGE:
      takeFont();
      return 0;
    case WM_PAINT:
      paintFrame();
      return 0;
    case WM_ACTIVATE:
      activated(LOWORD(wide) != WA_INACTIVE);
      return 0;
    case WM_SETFOCUS:
      giveFocusBack();
      return 0;
    case WM_NEXTDLGCTL:
      moveFocus(wide, LOWORD(argument) != 0);
      return 0;
    case WM_COMMAND:
      if (argument == 0)
        chosen(LOWORD(wide));
      else
        notified(HIWORD(wide), form_.find(reinterpret_cast<HWND>(argument)));
      return 0;
    case WM_MENUSELECT:
      menuHighlighted(LOWORD(wide), HIWORD(wide));
      return 0;
    case WM_DRAWITEM:
      drawItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(argument));
      return TRUE;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORSTATIC:
      return colourControl(message, wide, argument);
    case WM_SETCURSOR:
      if (LOWORD(argument) == HTCLIENT && showBusyPointer()) return TRUE;
      return DefWindowProcW(window_, message, wide, argument);
    case WM_DROPFILES:
      filesDropped(reinterpret_cast<HDROP>(wide));
      return 0;
    case WM_CLOSE:
      closeAsked();
      return 0;
    case WM_SYSCOLORCHANGE:
      coloursChanged();
      return 0;
    case kColours:
      tell(events_.coloursChanged);
      return 0;
    case kResized:
      tellResized();
      return 0;
    case kStarted:
      knownFocus_ = GetFocus();
      tellResized();
      tell(events_.started);
      return 0;
    case kEntryLeft:
      if (!isButtonHeld()) confirmLeftEntry();
      return 0;
    default:
      return DefWindowProcW(window_, message, wide, argument);
  }
}

void WindowWin32::sized(WPARAM how) {
  if (how == SIZE_MINIMIZED || status_.handle() == nullptr || !font_) return;
  status_.place();
  RECT client{};
  GetClientRect(window_, &client);
  const int width = static_cast<int>(client.right);
  const int height = std::max(1, static_cast<int>(client.bottom) - heightOf(status_.handle()));
  const OwnedFont former = fitFormFont(width, height);  // the controls hold it until they are placed
  for (const ControlId picture : form_.place(width, height, formFont_.get(), formMetrics_))
    if (std::ranges::find(resized_, picture) == resized_.end()) resized_.push_back(picture);
  if (shown_ && !resized_.empty()) PostMessageW(window_, kResized, 0, 0);
}

/// Not out of a call of the program's own that resized the window.
void WindowWin32::tellResized() {
  for (const ControlId picture : std::exchange(resized_, {})) tell(events_.resized, picture);
}

/// The controls of the common library want to be told by their parent.
void WindowWin32::coloursChanged() {
  SendMessageW(status_.handle(), WM_SYSCOLORCHANGE, 0, 0);
  RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
  PostMessageW(window_, kColours, 0, 0);
}

/// Returns the font that is no longer needed. Changes in whole pixels, so in few steps while the window is
/// resized.
OwnedFont WindowWin32::fitFormFont(int clientWidth, int clientHeight) {
  LOGFONTW font{};
  GetObjectW(font_.get(), sizeof font, &font);
  const LONG usual = font.lfHeight;
  const double factor = panelFactor(form_.specs(), clientWidth, clientHeight, metrics_);
  const double height = usual * factor;
  font.lfHeight =
      static_cast<LONG>(factor > metrics_.least && factor < 1 ? std::trunc(height) : std::round(height));
  if (formFont_ && font.lfHeight == formFontHeight_) return {};
  OwnedFont made(CreateFontIndirectW(&font));
  if (!made) {
    if (!formFont_) formMetrics_ = metrics_;
    return {};
  }
  formFontHeight_ = font.lfHeight;
  const FontSize size = sizeOf(window_, made.get());
  formMetrics_ = {.lineHeight = size.lineHeight,
                  .scale = metrics_.scale * font.lfHeight / usual,
                  .digitWidth = size.digitWidth};
  std::swap(formFont_, made);
  return made;
}

void WindowWin32::limitSize(MINMAXINFO& limits) const {
  if (status_.handle() == nullptr) return;
  const LayoutSize least = frameAround(minimumClient(form_.specs(), leastMetrics_));
  const WindowPlace room = toPlace(monitorOf(window_).rcWork);
  limits.ptMinTrackSize = {std::min(least.width, room.width), std::min(least.height, room.height)};
}

void WindowWin32::takeFont() {
  const int dpi = dpiOf(window_);
  OwnedFont font = messageFont(dpi);
  metrics_.scale = static_cast<double>(dpi) / USER_DEFAULT_SCREEN_DPI;
  const FontSize size = sizeOf(window_, font.get());
  metrics_.lineHeight = size.lineHeight;
  metrics_.digitWidth = size.digitWidth;
  takeLeastFont(font.get());
  status_.setFont(font.get());
  font_ = std::move(font);
  formFontHeight_ = 0;  // another face or density
  sized(SIZE_RESTORED);
}

/// The smallest window takes the smallest font.
void WindowWin32::takeLeastFont(HFONT usual) {
  LOGFONTW font{};
  GetObjectW(usual, sizeof font, &font);
  const double height = std::abs(static_cast<double>(font.lfHeight));
  metrics_.least = height > 0 ? std::min(1.0, kLeastFont * metrics_.scale / height) : 1;
  font.lfHeight = static_cast<LONG>(std::lround(font.lfHeight * metrics_.least));
  const OwnedFont made(CreateFontIndirectW(&font));
  const FontSize size = sizeOf(window_, made ? made.get() : usual);
  leastMetrics_ = {
      .lineHeight = size.lineHeight, .scale = metrics_.scale * metrics_.least, .digitWidth = size.digitWidth};
}

void WindowWin32::densityChanged(const RECT& proposal) {
  takeFont();
  SetWindowPos(window_, nullptr, proposal.left, proposal.top, proposal.right - proposal.left,
               proposal.bottom - proposal.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

/// A thin line around the large picture.
void WindowWin32::paintFrame() {
  PAINTSTRUCT paint{};
  const HDC context = BeginPaint(window_, &paint);
  const LayoutRect& picture = form_.largePicture();
  const RECT frame = {picture.left - 1, picture.top - 1, picture.left + picture.width + 1,
                      picture.top + picture.height + 1};
  if (!picture.isEmpty()) FrameRect(context, &frame, GetSysColorBrush(COLOR_BTNSHADOW));
  EndPaint(window_, &paint);
}

void WindowWin32::activated(bool on) {
  if (on) {
    SetFocus(window_);
    return;
  }
  const HWND focus = GetFocus();
  if (focus == window_ || IsChild(window_, focus)) lastFocus_ = focus;
}

/// The first control has it at the start. What was disabled or hidden meanwhile has left it to the picture.
void WindowWin32::giveFocusBack() {
  if (form_.isMovingFocus() || lastFocus_ == window_) return;
  const HWND target = lastFocus_ == nullptr ? GetNextDlgTabItem(window_, nullptr, FALSE) : lastFocus_;
  if (target == nullptr) return;
  if (IsWindowVisible(target) && IsWindowEnabled(target))
    SetFocus(target);
  else
    form_.focusPicture();
}

void WindowWin32::chosen(int identifier) {
  const CommandId command = identifier - kFirstCommand;
  if (command < 0 || command >= menu_.count() || !menu_.enabled(command) || !menu_.visible(command)) return;
  confirmPending();
  if (menu_.enabled(command)) tell(events_.command, command);
}

/// Also told with all flags set when a menu closes.
void WindowWin32::menuHighlighted(int identifier, UINT flags) {
  const bool isItem = flags != 0xFFFF && (flags & (MF_POPUP | MF_SEPARATOR | MF_SYSMENU)) == 0;
  const CommandId command = isItem ? identifier - kFirstCommand : kNoCommand;
  tell(events_.highlighted, command >= 0 && command < menu_.count() ? command : kNoCommand);
}

void WindowWin32::notified(int notification, ControlId control) {
  if (control < 0) return;
  const ControlKind kind = form_.kind(control);
  if (kind == ControlKind::number) {
    if (notification == EN_SETFOCUS) entryFocused(control);
    if (notification == EN_KILLFOCUS) entryLeft(control);
  } else if (kind == ControlKind::list) {
    if (notification != CBN_SELCHANGE) return;
    confirmPending();
    tell(events_.changed, control);
  } else if (notification == BN_CLICKED) {
    pressButton(control);
  }
}

void WindowWin32::pressButton(ControlId control) {
  const ControlKind kind = form_.kind(control);
  confirmPending();
  if (!form_.enabled(control)) return;  // what the entry set off took it away
  if (kind == ControlKind::button || kind == ControlKind::colourBox) {
    tell(events_.clicked, control);
  } else if (kind == ControlKind::check || kind == ControlKind::radio) {
    if (form_.takeToggled(control)) tell(events_.changed, control);
  }
}

void WindowWin32::filesDropped(HDROP files) {
  std::wstring path(static_cast<std::size_t>(DragQueryFileW(files, 0, nullptr, 0)) + 1, L'\0');
  path.resize(DragQueryFileW(files, 0, path.data(), static_cast<UINT>(path.size())));
  DragFinish(files);
  confirmPending();
  if (!path.empty()) tell(events_.fileDropped, narrow(path));
}

void WindowWin32::drawItem(const DRAWITEMSTRUCT& item) {
  if (item.CtlType == ODT_COMBOBOX) return form_.drawItem(item);
  item.CtlType == ODT_STATIC ? form_.drawLabel(item) : form_.drawColourBox(item);
}

LRESULT WindowWin32::colourControl(UINT message, WPARAM wide, LPARAM argument) {
  const HBRUSH brush = form_.brushFor(reinterpret_cast<HWND>(argument), reinterpret_cast<HDC>(wide));
  if (brush != nullptr) return reinterpret_cast<LRESULT>(brush);
  return DefWindowProcW(window_, message, wide, argument);
}

bool WindowWin32::showBusyPointer() const {
  if (busy_) SetCursor(systemPointer(PointerShape::busy));
  return busy_;
}

}  // namespace lorivan::win32
