// The numbers by which the system knows controls and menu items.
#pragma once

namespace lorivan::win32 {

inline constexpr int kFirstControl = 0x1000;  // the control in row 0 of the control table
inline constexpr int kFirstCommand = 0x4000;  // the item in row 0 of the command table

}  // namespace lorivan::win32
