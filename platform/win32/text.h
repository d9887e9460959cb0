// UTF-8 inside the program, UTF-16 at the system's calls.
#pragma once

#include <string>
#include <string_view>

namespace lorivan::win32 {

/// Bytes that are no UTF-8, and halves of surrogate pairs, become the replacement character.
std::wstring widen(std::string_view utf8);
std::string narrow(std::wstring_view utf16);

}  // namespace lorivan::win32
