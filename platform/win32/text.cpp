#include "platform/win32/text.h"

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

}  // namespace lorivan::win32
