// The system's headers in the order that they need. Included by this folder alone.
#pragma once

#include <windows.h>

#include <commctrl.h>
#include <commdlg.h>
#include <mmsystem.h>
#include <objidl.h>
#include <shellapi.h>
#include <shlwapi.h>

#include <algorithm>

namespace Gdiplus {
using std::max;  // the header counts on macros that NOMINMAX takes away
using std::min;
}  // namespace Gdiplus

#include <gdiplus.h>
