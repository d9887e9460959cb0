// Rectangles and screens.
#pragma once

#include "platform/win32/windows_api.h"
#include "platform/window.h"

namespace lorivan::win32 {

inline WindowPlace toPlace(const RECT& box) {
  return {static_cast<int>(box.left), static_cast<int>(box.top), static_cast<int>(box.right - box.left),
          static_cast<int>(box.bottom - box.top)};
}

inline MONITORINFO monitorOf(HWND window) {
  MONITORINFO facts{};
  facts.cbSize = sizeof facts;
  GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &facts);
  return facts;
}

}  // namespace lorivan::win32
