#include "platform/win32/dpi.h"

namespace lorivan::win32 {
namespace {

/// A function that only newer systems have, or null. The way over void(*)() keeps compilers from doubting the
/// cast.
template <class Function>
Function newerFunction(const char* name) {
  const HMODULE library = GetModuleHandleW(L"user32.dll");
  if (library == nullptr) return nullptr;
  return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(GetProcAddress(library, name)));
}

}  // namespace

int dpiOf(HWND window) {
  using GetDpiForWindowFunction = UINT(WINAPI*)(HWND);
  static const auto getDpi = newerFunction<GetDpiForWindowFunction>("GetDpiForWindow");
  if (getDpi != nullptr) {
    if (const UINT dpi = getDpi(window); dpi != 0) return static_cast<int>(dpi);
  }
  const WindowContext screen(nullptr);
  const int dpi = GetDeviceCaps(screen.get(), LOGPIXELSY);
  return dpi > 0 ? dpi : USER_DEFAULT_SCREEN_DPI;
}

void growByFrame(RECT& client, DWORD style, int dpi) {
  using AdjustForDpiFunction = BOOL(WINAPI*)(RECT*, DWORD, BOOL, DWORD, UINT);
  static const auto adjust = newerFunction<AdjustForDpiFunction>("AdjustWindowRectExForDpi");
  if (adjust == nullptr || !adjust(&client, style, TRUE, 0, static_cast<UINT>(dpi)))
    AdjustWindowRectEx(&client, style, TRUE, 0);
}

OwnedFont messageFont(int dpi) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
  const WindowContext screen(nullptr);
  LOGFONTW font = metrics.lfMessageFont;
  font.lfHeight = MulDiv(font.lfHeight, dpi, std::max(1, GetDeviceCaps(screen.get(), LOGPIXELSY)));
  return OwnedFont(CreateFontIndirectW(&font));
}

FontSize sizeOf(HWND window, HFONT font) {
  const WindowContext context(window);
  const Selection selected(context.get(), font);
  TEXTMETRICW metrics{};
  GetTextMetricsW(context.get(), &metrics);
  SIZE digit{};
  GetTextExtentPoint32W(context.get(), L"0000000000", 10, &digit);
  return {std::max(1, static_cast<int>(metrics.tmHeight)), std::max(1.0, digit.cx / 10.0)};
}

}  // namespace lorivan::win32
