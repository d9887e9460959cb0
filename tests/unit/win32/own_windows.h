// Top-level windows of this process: other test programs may show windows of the same names beside it.
#pragma once

#include "platform/win32/windows_api.h"

namespace lorivan::win32 {

/// This process's first top-level window of a class, and of a title where one is given; nullptr if none.
inline HWND findOwnWindow(const wchar_t* windowClass, const wchar_t* title = nullptr) {
  HWND found = nullptr;
  while ((found = FindWindowExW(nullptr, found, windowClass, title)) != nullptr) {
    DWORD process = 0;
    GetWindowThreadProcessId(found, &process);
    if (process == GetCurrentProcessId()) return found;
  }
  return nullptr;
}

}  // namespace lorivan::win32
