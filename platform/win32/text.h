// UTF-8 inside the program, UTF-16 at the system's calls.
#pragma once

#include <string>
#include <string_view>

namespace lorivan::win32 {

/// Bytes that are no UTF-8, and halves of surrogate pairs, become the replacement character.
std::wstring widen(std::string_view utf8);
std::string narrow(std::wstring_view utf16);

/// What the system says to one of its error codes, without a final stop.
std::string systemText(unsigned long code);

}  // namespace lorivan::win32
