// How many of the system's graphics and window objects this process holds.
#pragma once

#include <cstdint>

#include "platform/win32/windows_api.h"

namespace lorivan::win32 {

struct ObjectCounts {
  int graphics = 0, windows = 0;
  bool operator==(const ObjectCounts&) const = default;
};

/// The system's own count. Wine 8 has none and says 0; there, handles of all indices are tried instead: it
/// takes a handle whose upper half is zero.
inline ObjectCounts countGuiObjects() {
  ObjectCounts counts;
  counts.graphics = static_cast<int>(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS));
  counts.windows = static_cast<int>(GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS));
  if (counts.graphics != 0) return counts;
  for (std::uintptr_t index = 1; index < 0x10000; ++index) {
    if (GetObjectType(reinterpret_cast<HGDIOBJ>(index)) != 0) ++counts.graphics;
    DWORD owner = 0;
    GetWindowThreadProcessId(reinterpret_cast<HWND>(index), &owner);
    if (owner == GetCurrentProcessId() || IsMenu(reinterpret_cast<HMENU>(index))) ++counts.windows;
  }
  return counts;
}

}  // namespace lorivan::win32
