// The modal dialogs, answered from a second thread as a user would answer them.
#include <filesystem>
#include <functional>
#include <thread>

#include "base/sink.h"
#include "demo_window.h"
#include "platform/win32/text.h"

#include <dlgs.h>  // behind the system's other headers

namespace lorivan::win32 {
namespace {

/// Waits for a dialog with this title and answers it; the destructor waits until that is done.
class Answer {
 public:
  Answer(std::wstring title, std::function<void(HWND)> act)
      : thread_([title = std::move(title), act = std::move(act)] {
          for (int i = 0; i < 500; ++i, Sleep(20)) {
            const HWND dialog = findOwnWindow(L"#32770", title.c_str());
            if (dialog == nullptr || !IsWindowVisible(dialog)) continue;
            Sleep(100);  // until it has filled itself
            act(dialog);
            return;
          }
          ADD_FAILURE() << "no dialog " << narrow(title);
        }) {}

 private:
  std::jthread thread_;
};

std::function<void(HWND)> press(int button) {
  return [button](HWND dialog) { PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0); };
}

std::function<void(HWND)> typeAndPress(int entry, std::wstring text, int button) {
  return [=](HWND dialog) {
    SetDlgItemTextW(dialog, entry, text.c_str());
    PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
  };
}

/// The name field of a file dialog: a combination box when opening, or a plain entry.
std::function<void(HWND)> chooseName(const std::wstring& path) {
  return [path](HWND dialog) {
    SetDlgItemTextW(dialog, GetDlgItem(dialog, cmb13) != nullptr ? cmb13 : edt1, path.c_str());
    PostMessageW(dialog, WM_COMMAND, IDOK, 0);
  };
}

class DialogsTest : public testing::Test {
 protected:
  DialogsTest() { demo_.show(); }
  Window& window() { return *demo_.window; }
  PlatformWin32 platform_;
  DemoWindow demo_{platform_};
};

TEST_F(DialogsTest, MessagesAndConfirmations) {
  {
    const Answer ok(L"Knot error", press(IDOK));
    window().message("Sorry, this knot\r\nis too large", "Knot error", MessageIcon::none);
  }
  {
    const Answer ok(L"Lorivan", press(IDOK));
    window().message("no title of its own", "", MessageIcon::critical);
  }
  for (const bool agreed : {true, false}) {
    const Answer answer(L"Exit check", press(agreed ? IDOK : IDCANCEL));
    EXPECT_EQ(window().confirm("Are you sure?", "Exit check"), agreed);
  }
}

TEST_F(DialogsTest, TextQuestions) {
  {
    const Answer ok(L"Name", typeAndPress(100, L"St\u00E4rn", IDOK));
    EXPECT_EQ(window().inputBox("How shall it be called?", "Name", "first"), "St\xC3\xA4rn");
  }
  {
    const Answer untouched(L"Name", press(IDOK));
    EXPECT_EQ(window().inputBox("How shall it be called?", "Name", "first"), "first");
  }
  const Answer cancel(L"Name", press(IDCANCEL));
  EXPECT_EQ(window().inputBox("How shall it be called?", "Name", "first"), "");
}

TEST_F(DialogsTest, ColoursStartAtTheGivenOne) {
  const std::wstring title = L"Color";  // the system's own
  {
    const Answer ok(title, press(IDOK));
    EXPECT_EQ(window().chooseColour(0x3060F0), Colour{0x3060F0});
  }
  const Answer cancel(title, press(IDCANCEL));
  EXPECT_EQ(window().chooseColour(0x3060F0), std::nullopt);
}

TEST_F(DialogsTest, FilesComeBackWithFullPathAndExtension) {
  const std::string folder = testing::TempDir() + "Kn\xC3\xB6tchen";
  std::filesystem::create_directories(widen(folder));
  ASSERT_TRUE(writeFile(folder + "/one.qzd", "x"));
  FileDialogSpec dialog;
  dialog.title = "Loading a knot";
  dialog.filterLabel = "Lorivan files";
  dialog.extensions = "qzd";
  dialog.initialName = folder + "/*.qzd";
  dialog.defaultExtension = "qzd";
  {
    const Answer open(L"Loading a knot", chooseName(L"one.qzd"));
    const std::string path = window().chooseFile(dialog);
    EXPECT_TRUE(path.ends_with("Kn\xC3\xB6tchen\\one.qzd")) << path;
    EXPECT_EQ(path.substr(1, 2), ":\\");
  }
  dialog.title = "Saving a knot";
  dialog.save = dialog.overwritePrompt = true;
  {
    const Answer save(L"Saving a knot", chooseName(L"two"));
    EXPECT_TRUE(window().chooseFile(dialog).ends_with("\\two.qzd"));
  }
  const Answer cancel(L"Saving a knot", press(IDCANCEL));
  EXPECT_EQ(window().chooseFile(dialog), "");
}

}  // namespace
}  // namespace lorivan::win32
