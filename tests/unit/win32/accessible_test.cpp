// What a screen reader is told of the window. Roles come with the system's classes; Wine knows few of them.
#include <gtest/gtest.h>

#include <array>
#include <string>

#include "base/numbers.h"

#include "own_windows.h"
#include "platform/win32/handles.h"
#include "platform/win32/identifiers.h"
#include "platform/win32/platform_win32.h"
#include "platform/win32/text.h"
#include "window/languages.h"
#include "window/shown_tables.h"

#include <oleacc.h>  // behind the system's other headers

namespace lorivan::win32 {
namespace {

// Of IAccessible; not every import library has it right.
constexpr GUID kAccessible = {0x618736E0, 0x3C3D, 0x11CF, {0x81, 0x0C, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71}};

std::string nameOf(HWND control) {
  IAccessible* accessible = nullptr;
  if (FAILED(AccessibleObjectFromWindow(control, static_cast<DWORD>(OBJID_CLIENT), kAccessible,
                                        reinterpret_cast<void**>(&accessible))))
    return {};
  VARIANT self{};
  self.vt = VT_I4;
  self.lVal = CHILDID_SELF;
  BSTR name = nullptr;
  const bool told = SUCCEEDED(accessible->get_accName(self, &name)) && name != nullptr;
  std::string text = told ? narrow(name) : std::string();
  SysFreeString(name);
  accessible->Release();
  return text;
}

/// The label right before an entry, which names it where the system asks for no more than that.
std::string labelBefore(HWND control) {
  const HWND before = GetWindow(control, GW_HWNDPREV);
  std::array<wchar_t, 16> windowClass{};
  GetClassNameW(before, windowClass.data(), static_cast<int>(windowClass.size()));
  return lowerCase(narrow(windowClass.data())) == "static" ? nameOf(before) : std::string();
}

TEST(AccessibleWindow, EveryControlHasANameInEveryLanguage) {
  CoInitialize(nullptr);
  for (const Language& language : languages()) {
    speak(textsOf(language.code));
    const ShownTables tables;
    PlatformWin32 platform("Lorivan accessible test");
    const WindowEvents events;
    auto window = platform.createWindow({tables.controls(), tables.commands(), "Lorivan"}, events);
    ASSERT_TRUE(window) << window.error().message;
    const HWND frame = findOwnWindow(L"LorivanWindow");
    for (std::size_t i = 0; i < tables.controls().size(); ++i) {
      const ControlSpec& spec = tables.controls()[i];
      const HWND control = GetDlgItem(frame, kFirstControl + static_cast<int>(i));
      // An entry's own text is its value.
      const bool entry = spec.kind == ControlKind::number || spec.kind == ControlKind::text ||
                         spec.kind == ControlKind::list;
      EXPECT_FALSE((entry ? labelBefore(control) : nameOf(control)).empty()) << spec.name;
    }
  }
  speak(nullptr);
  CoUninitialize();
}

}  // namespace
}  // namespace lorivan::win32
