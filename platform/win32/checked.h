// The one way in which a failed system call becomes a sentence.
#pragma once

#include <string>
#include <string_view>

#include "base/result.h"
#include "platform/win32/windows_api.h"

namespace lorivan::win32 {

/// "CreatePen: Not enough memory": the call that failed and the system's text for `code`.
std::string systemFault(std::string_view call, DWORD code = GetLastError());

/// Success when `done`; otherwise systemFault() with the last error code.
template <class Done>
Status checked(const Done& done, std::string_view call) {
  if (done) return {};
  return unwritable(systemFault(call));
}

/// As checked(), for the calls that return an error code (registry) and for those that return a HRESULT.
Status checkedCode(LONG code, std::string_view call);
/// As checked(), for GDI+.
Status checkedPlus(Gdiplus::GpStatus status, std::string_view call);

}  // namespace lorivan::win32
