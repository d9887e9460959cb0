// Pixels per inch and the system's font at that density.
#pragma once

#include "platform/win32/handles.h"

namespace lorivan::win32 {

/// Of the screen that the window is on; of the main screen where the system knows no more (before 10).
int dpiOf(HWND window);

/// Turns the client area of a window with a menu into the whole window.
void growByFrame(RECT& client, DWORD style, int dpi);

/// The font of the system's own messages.
OwnedFont messageFont(int dpi);

/// Pixels: of a line, descenders included, and of a digit.
struct FontSize {
  int lineHeight = 0;
  double digitWidth = 0;
};
FontSize sizeOf(HWND window, HFONT font);

}  // namespace lorivan::win32
