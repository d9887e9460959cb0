// The whole program in its Windows window: fields in, file and settings out, and no caption cut.
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <thread>

#include "own_windows.h"
#include "platform/win32/handles.h"
#include "platform/win32/identifiers.h"
#include "platform/win32/platform_win32.h"
#include "platform/win32/text.h"
#include "scratch_folder.h"
#include "window/commands.h"
#include "window/languages.h"
#include "window/main_window.h"

#include <dlgs.h>  // behind the system's other headers

namespace lorivan::win32 {
namespace {

constexpr const char* kApplication = "Lorivan program test";
constexpr int kLooks = 3000;  // a minute with 20 milliseconds between them
constexpr const wchar_t* kKey = L"Software\\Lorivan program test";

/// Answers every dialog of this process: types `fileName` into a file dialog, saves no changes, and refuses
/// all others until the end.
class DialogAnswerer {
 public:
  std::atomic<bool> agrees{false};
  std::wstring fileName;

 private:
  void answer(HWND dialog) const {
    if (!IsWindowVisible(dialog)) return;
    const int entry = GetDlgItem(dialog, cmb13) != nullptr ? cmb13 : edt1;
    const bool isFileDialog = GetDlgItem(dialog, entry) != nullptr;
    if (isFileDialog && agrees) SetDlgItemTextW(dialog, entry, fileName.c_str());
    const WPARAM yes = !isFileDialog && GetDlgItem(dialog, IDNO) != nullptr ? IDNO : IDOK;
    PostMessageW(dialog, WM_COMMAND, agrees ? yes : IDCANCEL, 0);
  }

  // The last member, so that all others are there before it runs.
  std::jthread thread_{[this](const std::stop_token& stop) {
    for (; !stop.stop_requested(); Sleep(20))
      if (const HWND dialog = findOwnWindow(L"#32770"); dialog != nullptr) answer(dialog);
  }};
};

/// The user, in a thread of his own: SendMessage waits until the program has done its part.
class User {
 public:
  static void waitForWindow() {
    for (int i = 0; i < kLooks && findOwnWindow(L"LorivanWindow") == nullptr; ++i) Sleep(20);
    SendMessageW(window(), WM_NULL, 0, 0);
  }
  static HWND window() { return findOwnWindow(L"LorivanWindow"); }
  static HWND child(ControlId control) { return GetDlgItem(window(), kFirstControl + control); }
  static void enter(ControlId field, const wchar_t* text) {
    SendMessageW(child(field), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
    PostMessageW(child(field), WM_KEYDOWN, VK_RETURN, 1);
    settle();
  }
  /// Posted keys are taken behind what is sent.
  static void waitFor(ControlId field, std::wstring_view text) {
    std::array<wchar_t, 20> shown{};
    for (int i = 0; i < kLooks && text != shown.data(); ++i, Sleep(20))
      SendMessageW(child(field), WM_GETTEXT, shown.size(), reinterpret_cast<LPARAM>(shown.data()));
  }
  static void click(ControlId button) {
    SendMessageW(child(button), BM_CLICK, 0, 0);
    settle();
  }
  static void pick(CommandId command) {
    PostMessageW(window(), WM_COMMAND, static_cast<WPARAM>(kFirstCommand + command), 0);
    settle();
  }
  static void close() { PostMessageW(window(), WM_CLOSE, 0, 0); }
  /// A message that is posted comes behind those posted before; one that is sent waits for its answer.
  static void settle() { SendMessageTimeoutW(window(), WM_NULL, 0, 0, SMTO_NORMAL, 10000, nullptr); }
};

class ProgramTest : public testing::Test {
 protected:
  ProgramTest() { forget(); }
  ~ProgramTest() override { forget(); }

  /// Settings and the user's files of a run before.
  static void forget() {
    RegDeleteTreeW(HKEY_CURRENT_USER, kKey);
    std::error_code fault;
    std::filesystem::remove_all(widen(PlatformWin32(kApplication).userFolder()), fault);
  }

  /// Opens the window, lets the user act in it and close it.
  template <class Actions>
  void use(const Actions& actions) {
    PlatformWin32 platform(kApplication);
    MainWindow main(platform, {{}, false, seededRandom(5)});
    ASSERT_TRUE(main.open());
    const std::jthread user([&] {
      User::waitForWindow();
      actions();
      answerer_.agrees = true;
      User::close();
    });
    EXPECT_TRUE(main.run());
    answerer_.agrees = false;
  }

  DialogAnswerer answerer_;
  const Folder folder_;
};

TEST_F(ProgramTest, FieldsInFileAndSettingsOut) {
  const std::string path = folder_.file("Kn\xC3\xB6tchen.qzd");
  answerer_.fileName = std::filesystem::path(widen(path)).make_preferred().wstring();
  std::wstring title;
  use([&] {
    User::enter(controlId("vtXNo"), L"4.0");
    User::waitFor(controlId("vtXNo"), L"4");  // else what it sets going shows all fields again
    User::enter(controlId("vtYNo"), L"99");
    User::waitFor(controlId("vtYNo"), L"20");
    User::click(controlId("cmd2D"));
    answerer_.agrees = true;
    User::pick(commandId("mnuFileSave"));
    for (int i = 0; i < kLooks && !std::filesystem::exists(widen(path)); ++i) Sleep(20);
    User::settle();
    std::array<wchar_t, 200> text{};
    GetWindowTextW(User::window(), text.data(), static_cast<int>(text.size()));
    title = text.data();
  });
  ASSERT_TRUE(std::filesystem::exists(widen(path)));
  EXPECT_NE(narrow(title).find("Kn\xC3\xB6tchen.qzd"), std::string::npos) << narrow(title);
  const RegistrySettings settings(kApplication);
  EXPECT_EQ(settings.read("Settings", "txtXNo", ""), "4");
  EXPECT_EQ(settings.read("Settings", "txtyNo", ""), "20") << "corrected";
}

class CaptionsTest : public ProgramTest, public testing::WithParamInterface<Language> {
 protected:
  ~CaptionsTest() override { speak(nullptr); }
};

void expectNoCaptionIsCut() {
  for (std::size_t i = 0; i < form::kRows.size(); ++i) {
    const HWND control = User::child(static_cast<ControlId>(i));
    const ControlKind kind = form::kRows[i].kind;
    const bool hasMark = kind == ControlKind::check || kind == ControlKind::radio;
    if (!hasMark && kind != ControlKind::label && kind != ControlKind::button) continue;
    if (!IsWindowVisible(control)) continue;
    std::array<wchar_t, 100> text{};
    GetWindowTextW(control, text.data(), static_cast<int>(text.size()));
    RECT box{}, needed{};
    GetClientRect(control, &box);
    const WindowContext context(control);
    const Selection font(context.get(), reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)));
    DrawTextW(context.get(), text.data(), -1, &needed, DT_CALCRECT | DT_SINGLELINE);
    EXPECT_LE(needed.right + (hasMark ? 17 : 0), box.right) << form::kRows[i].name;
    EXPECT_LE(needed.bottom, box.bottom + 1) << form::kRows[i].name;
  }
}

TEST_P(CaptionsTest, AreNotCutOffAtAnySize) {
  RegistrySettings(kApplication).write("Settings", "Language", GetParam().code);
  use([] {
    expectNoCaptionIsCut();
    for (const int width : {1, 1000}) {
      MoveWindow(User::window(), 0, 0, width, width * 7 / 10, TRUE);
      User::settle();
      RECT place{};
      GetWindowRect(User::window(), &place);
      EXPECT_GT(place.right, 600) << "held at the least size";
      expectNoCaptionIsCut();
    }
  });
}

INSTANTIATE_TEST_SUITE_P(InEveryLanguage, CaptionsTest,
                         testing::ValuesIn(languages().begin(), languages().end()),
                         [](const auto& language) { return std::string(language.param.name); });

}  // namespace
}  // namespace lorivan::win32
