// The form in every language: every control has a name for a screen reader, and no caption is cut.
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

class FormWin32 : public testing::TestWithParam<Language> {
 protected:
  FormWin32() {
    CoInitialize(nullptr);
    auto made = platform_.createWindow({tables_.controls(), tables_.commands(), "Lorivan"}, events_);
    EXPECT_TRUE(made) << made.error().message;
    window_ = std::move(*made);
    frame_ = findOwnWindow(L"LorivanWindow");
  }
  ~FormWin32() override {
    window_.reset();
    speak(nullptr);
    CoUninitialize();
  }
  static ShownTables spokenTables() {
    speak(textsOf(GetParam().code));
    return ShownTables();
  }
  HWND controlOf(std::size_t row) const { return GetDlgItem(frame_, kFirstControl + static_cast<int>(row)); }
  void expectNoCaptionIsCut() const;
  const ShownTables tables_ = spokenTables();
  PlatformWin32 platform_{"Lorivan form test"};
  const WindowEvents events_;
  std::unique_ptr<Window> window_;
  HWND frame_ = nullptr;
};

// Roles come with the system's classes; Wine knows few of them.
TEST_P(FormWin32, EveryControlHasAName) {
  for (std::size_t i = 0; i < tables_.controls().size(); ++i) {
    const ControlSpec& spec = tables_.controls()[i];
    // An entry's own text is its value.
    const bool entry =
        spec.kind == ControlKind::number || spec.kind == ControlKind::text || spec.kind == ControlKind::list;
    EXPECT_FALSE((entry ? labelBefore(controlOf(i)) : nameOf(controlOf(i))).empty()) << spec.name;
  }
}

void FormWin32::expectNoCaptionIsCut() const {
  for (std::size_t i = 0; i < tables_.controls().size(); ++i) {
    const ControlSpec& spec = tables_.controls()[i];
    const bool hasMark = spec.kind == ControlKind::check || spec.kind == ControlKind::radio;
    if (!hasMark && spec.kind != ControlKind::label && spec.kind != ControlKind::button) continue;
    std::array<wchar_t, 100> text{};
    GetWindowTextW(controlOf(i), text.data(), static_cast<int>(text.size()));
    RECT box{}, needed{};
    GetClientRect(controlOf(i), &box);
    const WindowContext context(controlOf(i));
    const Selection font(context.get(),
                         reinterpret_cast<HFONT>(SendMessageW(controlOf(i), WM_GETFONT, 0, 0)));
    DrawTextW(context.get(), text.data(), -1, &needed, DT_CALCRECT | DT_SINGLELINE);
    EXPECT_GT(needed.right, 0) << spec.name;
    EXPECT_LE(needed.right + (hasMark ? 17 : 0), box.right) << spec.name;
    EXPECT_LE(needed.bottom, box.bottom + 1) << spec.name;
  }
}

TEST_P(FormWin32, CaptionsAreNotCutOffAtAnySize) {
  window_->show();
  window_->processEvents();
  expectNoCaptionIsCut();
  for (const int width : {1, 1000}) {
    MoveWindow(frame_, 0, 0, width, width * 7 / 10, TRUE);
    window_->processEvents();
    RECT place{};
    GetWindowRect(frame_, &place);
    EXPECT_GT(place.right, 600) << "held at the least size";
    expectNoCaptionIsCut();
  }
  window_->setTitle("Kn\xC3\xB6tchen.qzd");
  EXPECT_NE(findOwnWindow(L"LorivanWindow", L"Kn\xF6tchen.qzd"), nullptr);
}

INSTANTIATE_TEST_SUITE_P(InEveryLanguage, FormWin32,
                         testing::ValuesIn(languages().begin(), languages().end()),
                         [](const auto& language) { return std::string(language.param.name); });

}  // namespace
}  // namespace lorivan::win32
