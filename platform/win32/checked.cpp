#include "platform/win32/checked.h"

#include "platform/win32/text.h"

namespace lorivan::win32 {
std::string systemFault(std::string_view call, DWORD code) {
  std::string text(call);
  text += ": ";
  text += code == ERROR_SUCCESS ? tr("the system gave no reason") : systemText(code);
  return text;
}

Status checkedCode(LONG code, std::string_view call) {
  if (code == ERROR_SUCCESS) return {};
  return unwritable(systemFault(call, static_cast<DWORD>(code)));
}

Status checkedPlus(Gdiplus::GpStatus status, std::string_view call) {
  if (status == Gdiplus::Ok) return {};
  if (status == Gdiplus::Win32Error) return unwritable(systemFault(call));
  if (status == Gdiplus::OutOfMemory) return unwritable(systemFault(call, ERROR_OUTOFMEMORY));
  return unwritable("{1}: GDI+ status {2}", call, static_cast<int>(status));
}

}  // namespace lorivan::win32
