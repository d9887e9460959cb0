// Every caption of the form has room, down to the smallest window.
#include <gtest/gtest.h>

#include "own_windows.h"
#include "platform/common/text_helpers.h"
#include "platform/win32/handles.h"
#include "platform/win32/identifiers.h"
#include "platform/win32/platform_win32.h"
#include "platform/win32/text.h"
#include "window/languages.h"
#include "window/shown_tables.h"

namespace lorivan::win32 {
namespace {

constexpr int kMark = 17, kBorder = 8;  // a check box with the gap behind it; both sides of a button

int captionWidth(HWND control, const std::string& caption) {
  const HDC context = GetDC(control);
  const auto font = reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0));
  const HGDIOBJ before = SelectObject(context, font);
  const std::wstring text = widen(caption);
  SIZE size{};
  GetTextExtentPoint32W(context, text.data(), static_cast<int>(text.size()), &size);
  SelectObject(context, before);
  ReleaseDC(control, context);
  return static_cast<int>(size.cx);
}

void expectNothingIsCut(HWND frame, std::span<const ControlSpec> form) {
  for (std::size_t i = 0; i < form.size(); ++i) {
    const ControlSpec& row = form[i];
    const bool marked = row.kind == ControlKind::check || row.kind == ControlKind::radio;
    const bool button = row.kind == ControlKind::button;
    if (!marked && !button && row.kind != ControlKind::label) continue;
    const HWND control = GetDlgItem(frame, kFirstControl + static_cast<int>(i));
    RECT room{};
    GetClientRect(control, &room);
    EXPECT_GE(room.right, captionWidth(control, withoutMnemonic(row.caption)) + (marked   ? kMark
                                                                                 : button ? kBorder
                                                                                          : 0))
        << row.name << ": " << row.caption;
  }
}

TEST(FormTexts, AreNotCutAtAnySizeInAnyLanguage) {
  for (const Language& language : languages()) {
    speak(textsOf(language.code));
    const ShownTables tables;
    PlatformWin32 platform("Lorivan texts test");
    const WindowEvents events;
    auto window = platform.createWindow({tables.controls(), tables.commands(), "Lorivan"}, events);
    ASSERT_TRUE(window) << window.error().message;
    (*window)->show();
    const HWND frame = findOwnWindow(L"LorivanWindow");
    for (const auto& [width, height] : {std::pair{1, 1}, {1000, 700}}) {
      MoveWindow(frame, 0, 0, width, height, TRUE);
      (*window)->processEvents();
      RECT place{};
      GetWindowRect(frame, &place);
      EXPECT_GT(place.right, 600);
      expectNothingIsCut(frame, tables.controls());
    }
  }
  speak(nullptr);
}

}  // namespace
}  // namespace lorivan::win32
