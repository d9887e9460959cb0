#include "platform/win32/text.h"

#include <array>

#include "platform/win32/windows_api.h"

namespace lorivan::win32 {

std::wstring widen(std::string_view utf8) {
  const int bytes = static_cast<int>(utf8.size());
  const int length = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, nullptr, 0);
  std::wstring text(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, text.data(), length);
  return text;
}

std::string narrow(std::wstring_view utf16) {
  const int units = static_cast<int>(utf16.size());
  const int length = WideCharToMultiByte(CP_UTF8, 0, utf16.data(), units, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(CP_UTF8, 0, utf16.data(), units, text.data(), length, nullptr, nullptr);
  return text;
}

std::string systemText(unsigned long code) {
  std::array<wchar_t, 512> buffer{};
  const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                      code, 0, buffer.data(), static_cast<DWORD>(buffer.size()), nullptr);
  std::string text = narrow({buffer.data(), length});
  while (!text.empty() && std::string_view("\r\n. ").find(text.back()) != std::string_view::npos)
    text.pop_back();
  return text.empty() ? "error " + std::to_string(code) : text;
}

}  // namespace lorivan::win32
