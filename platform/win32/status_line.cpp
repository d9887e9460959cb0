#include "platform/win32/status_line.h"

#include <algorithm>

#include "platform/win32/handles.h"

namespace lorivan::win32 {
namespace {

/// Room for the ellipsis that the system may write behind a text.
constexpr std::size_t kEllipsis = 4;

TTTOOLINFOW toolOf(HWND line, std::wstring& text) {
  TTTOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V1_SIZE;
  tool.hwnd = GetParent(line);
  tool.uFlags = TTF_SUBCLASS | TTF_IDISHWND;
  tool.uId = reinterpret_cast<UINT_PTR>(line);
  tool.lpszText = text.data();
  return tool;
}

}  // namespace

bool StatusLine::create(HWND parent) {
  const HINSTANCE program = GetModuleHandleW(nullptr);
  line_ = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0, 0, 0,
                          parent, nullptr, program, nullptr);
  if (line_ == nullptr) return false;
  tip_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                         CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, parent, nullptr, program,
                         nullptr);
  std::wstring none;
  const TTTOOLINFOW tool = toolOf(line_, none);
  SendMessageW(tip_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  return true;
}

void StatusLine::show(const std::wstring& text) {
  text_ = text;
  update();
  UpdateWindow(line_);  // it also tells how long work goes on
}

void StatusLine::setFont(HFONT font) {
  SendMessageW(line_, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
  update();
}

void StatusLine::place() {
  SendMessageW(line_, WM_SIZE, 0, 0);
  update();
}

std::wstring StatusLine::shortened() const {
  RECT box{};
  GetClientRect(line_, &box);
  const int edge = 3 * GetSystemMetrics(SM_CXEDGE);
  box.right = std::max<LONG>(edge, box.right - GetSystemMetrics(SM_CXVSCROLL) - 2 * edge);
  std::wstring shown = text_ + std::wstring(kEllipsis, L'\0');
  const WindowContext context(line_);
  const Selection font(context.get(), reinterpret_cast<HGDIOBJ>(SendMessageW(line_, WM_GETFONT, 0, 0)));
  DrawTextW(context.get(), shown.data(), static_cast<int>(text_.size()), &box,
            DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS | DT_MODIFYSTRING);
  return shown.c_str();
}

void StatusLine::update() {
  const std::wstring shown = shortened();
  SendMessageW(line_, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(shown.c_str()));
  std::wstring whole = shown == text_ ? std::wstring() : text_;
  const TTTOOLINFOW tool = toolOf(line_, whole);
  SendMessageW(tip_, TTM_SETMAXTIPWIDTH, 0, GetSystemMetrics(SM_CXSCREEN) / 3);
  SendMessageW(tip_, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
}

}  // namespace lorivan::win32
