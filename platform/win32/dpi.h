// Pixels per inch and the system's font at that density.
#pragma once

#include "platform/win32/handles.h"

namespace lorivan::win32 {

/// Of the screen that the window is on; of the main screen where the system knows no more (before 10).
int dpiOf(HWND window);

/// The font of the system's own messages.
OwnedFont messageFont(int dpi);

/// From the top of the highest letter to the bottom of the lowest, pixels.
int lineHeightOf(HWND window, HFONT font);

}  // namespace lorivan::win32
