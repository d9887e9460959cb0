// What a screen reader is told of the window: a name and a role for every control.
#include <gtest/gtest.h>

#include <array>
#include <map>

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

struct Told {
  std::string name;
  long role = 0;
};

Told toldOf(HWND control) {
  IAccessible* accessible = nullptr;
  if (FAILED(AccessibleObjectFromWindow(control, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                        reinterpret_cast<void**>(&accessible))))
    return {};
  VARIANT self{}, role{};
  self.vt = VT_I4;
  self.lVal = CHILDID_SELF;
  BSTR name = nullptr;
  Told told;
  if (SUCCEEDED(accessible->get_accName(self, &name)) && name != nullptr) told.name = narrow(name);
  SysFreeString(name);
  if (SUCCEEDED(accessible->get_accRole(self, &role)) && role.vt == VT_I4) told.role = role.lVal;
  accessible->Release();
  return told;
}

/// The label right before an entry, which names it where the system asks for no more than that.
std::string labelBefore(HWND control) {
  const HWND before = GetWindow(control, GW_HWNDPREV);
  std::array<wchar_t, 16> windowClass{};
  GetClassNameW(before, windowClass.data(), static_cast<int>(windowClass.size()));
  return lowerCase(narrow(windowClass.data())) == "static" ? toldOf(before).name : std::string();
}

TEST(AccessibleWindow, EveryControlHasANameAndItsRoleInEveryLanguage) {
  const std::map<ControlKind, long> roles = {
      {ControlKind::label, ROLE_SYSTEM_STATICTEXT},  {ControlKind::number, ROLE_SYSTEM_TEXT},
      {ControlKind::text, ROLE_SYSTEM_TEXT},         {ControlKind::check, ROLE_SYSTEM_CHECKBUTTON},
      {ControlKind::radio, ROLE_SYSTEM_RADIOBUTTON}, {ControlKind::list, ROLE_SYSTEM_COMBOBOX},
      {ControlKind::button, ROLE_SYSTEM_PUSHBUTTON}, {ControlKind::colourBox, ROLE_SYSTEM_PUSHBUTTON},
      {ControlKind::group, ROLE_SYSTEM_GROUPING},    {ControlKind::picture, ROLE_SYSTEM_CLIENT}};
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
      const Told told = toldOf(control);
      EXPECT_EQ(told.role, roles.at(spec.kind)) << spec.name;
      EXPECT_FALSE(told.name.empty() && labelBefore(control).empty()) << spec.name;
    }
  }
  speak(nullptr);
  CoUninitialize();
}

}  // namespace
}  // namespace lorivan::win32
