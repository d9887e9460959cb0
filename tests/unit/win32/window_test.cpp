// The window as a person uses it: messages as the system sends them, and what the program is told of them.
#include <array>
#include <cstring>
#include <random>

#include "demo_window.h"
#include "gui_objects.h"
#include "platform/win32/text.h"

#include <shlobj.h>  // behind the system's other headers

namespace lorivan::win32 {
namespace {

using Told = std::vector<std::string>;

class WindowTest : public testing::Test {
 protected:
  PlatformWin32 platform_;
};

std::wstring classOf(HWND window) {
  std::array<wchar_t, 64> name{};
  GetClassNameW(window, name.data(), static_cast<int>(name.size()));
  return name.data();
}

TEST_F(WindowTest, TellsOnceThatItStarted) {
  DemoWindow demo(platform_);
  demo.window->show();
  EXPECT_EQ(demo.told(), Told{"started"});
  demo.window->show();
  EXPECT_EQ(demo.told(), Told{});
  EXPECT_GE(demo.window->scaling(), 1);
  EXPECT_GT(demo.window->screen().width, 0);
}

TEST_F(WindowTest, ControlsAreNativeAndStandApart) {
  DemoWindow demo(platform_);
  demo.show();
  constexpr std::pair<ControlId, const wchar_t*> classes[] = {
      {kWidth, L"Edit"}, {kWidthLabel, L"Static"}, {kGrid, L"Button"}, {kShape, L"ComboBox"}};
  for (const auto& [control, name] : classes) EXPECT_EQ(classOf(demo.child(control)), name);
  for (const ControlId one : {kWidthLabel, kWidth, kScaleLabel, kScale, kNote, kGrid, kPov, kVrml, kShape}) {
    RECT first{};
    GetWindowRect(demo.child(one), &first);
    EXPECT_LT(first.left, first.right) << one;
    for (const ControlId other : {kCreate, kBack, kPicture, kBox, kSmall}) {
      RECT second{}, common{};
      GetWindowRect(demo.child(other), &second);
      EXPECT_FALSE(IntersectRect(&common, &first, &second)) << one << ' ' << other;
    }
  }
  const Surface& picture = demo.window->surface(kPicture);
  EXPECT_EQ(picture.width() * 4, picture.height() * 5);
}

TEST_F(WindowTest, AnEntryTellsWhenEnterIsPressedAndWhenItIsLeft) {
  DemoWindow demo(platform_);
  demo.show();
  demo.focus(kWidth);
  demo.type("12");  // replaces the text, which is selected
  demo.key(VK_RETURN);
  EXPECT_EQ(demo.told(), Told{"confirmed vtWidth"});
  EXPECT_EQ(demo.window->text(kWidth), "12");
  demo.key(VK_TAB);
  EXPECT_EQ(demo.told(), (Told{"left vtWidth", "confirmed vtWidth"}));
  EXPECT_TRUE(demo.hasFocus(kScale));
  DWORD from = 9, to = 9;
  SendMessageW(demo.child(kScale), EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
  EXPECT_EQ(std::pair(from, to), std::pair(DWORD{0}, DWORD{2})) << "all of it is selected";
  demo.click(kCreate);
  EXPECT_EQ(demo.told(), (Told{"left vtScale", "confirmed vtScale", "clicked cmd2D"}));
  for (const int x : {3, -3}) {
    demo.focus(kScale);
    PostMessageW(demo.child(kCreate), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
    EXPECT_EQ(demo.told(), Told{}) << "a dialog now would swallow the click";
    PostMessageW(demo.child(kCreate), WM_LBUTTONUP, 0, MAKELPARAM(x, 3));
    Told all = {"left vtScale", "confirmed vtScale"};
    if (x > 0) all.push_back("clicked cmd2D");
    EXPECT_EQ(demo.told(), all);
  }
  demo.focus(kScale);
  SetFocus(nullptr);  // the window is no longer the active one
  EXPECT_EQ(demo.told(), Told{});
}

TEST_F(WindowTest, WhatIsTypedCountsBeforeACommandAndBeforeClosing) {
  DemoWindow demo(platform_);
  demo.show();
  demo.mayClose = false;
  demo.focus(kWidth);
  demo.type("5");
  PostMessageW(demo.main, WM_COMMAND, kFirstCommand + kSave, 0);
  PostMessageW(demo.main, WM_COMMAND, kFirstCommand + kSave, 0);
  EXPECT_EQ(demo.told(), (Told{"confirmed vtWidth", "mnuFileSave", "mnuFileSave"}));
  demo.type("6");
  PostMessageW(demo.main, WM_CLOSE, 0, 0);
  EXPECT_EQ(demo.told(), (Told{"confirmed vtWidth", "closing?"}));
  demo.type("7");
  demo.window->setEnabled(kWidth, false);  // the program itself takes the focus away
  EXPECT_EQ(demo.told(), Told{});
}

TEST_F(WindowTest, AButtonThatTheLeftEntryDisablesIsNotPressed) {
  DemoWindow demo(platform_);
  demo.show();
  demo.events.confirmed = [&](ControlId) { demo.window->setEnabled(kCreate, false); };
  demo.focus(kWidth);
  demo.click(kCreate);
  EXPECT_EQ(demo.told(), Told{"left vtWidth"});
  EXPECT_FALSE(demo.window->enabled(kCreate));
  EXPECT_FALSE(demo.hasFocus(kCreate)) << "the focus must not stay on what takes no keys";
  EXPECT_NE(GetFocus(), nullptr);
}

TEST_F(WindowTest, OnlyTheUsersChangesAreTold) {
  DemoWindow demo(platform_);
  demo.show();
  Window& window = *demo.window;
  window.setText(kWidth, "9");
  window.setChecked(kGrid, true);
  window.setChecked(kPov, true);
  window.setChecked(kVrml, true);
  window.select(kShape, 2);
  EXPECT_EQ(demo.told(), Told{});
  EXPECT_TRUE(window.checked(kGrid));
  EXPECT_FALSE(window.checked(kPov)) << "one radio of a group";
  EXPECT_EQ(window.selected(kShape), 2);
  demo.click(kGrid);
  demo.click(kVrml);  // is chosen already
  demo.click(kPov);
  EXPECT_EQ(demo.told(), (Told{"changed chkGrid", "changed optPov"}));
  EXPECT_FALSE(window.checked(kVrml));
  demo.focus(kShape);
  demo.told();
  demo.key(VK_UP);
  EXPECT_EQ(demo.told(), (Told{"key 2", "changed lstType"}));
  EXPECT_EQ(window.selected(kShape), 1);
}

TEST_F(WindowTest, GroupsRuleTheirMembers) {
  DemoWindow demo(platform_);
  demo.show();
  demo.window->setEnabled(kFormat, false);
  demo.window->setVisible(kValues, false);
  EXPECT_FALSE(IsWindowEnabled(demo.child(kPov)));
  EXPECT_FALSE(IsWindowVisible(demo.child(kWidth)));
  demo.window->setEnabled(kPov, false);
  demo.window->setEnabled(kFormat, true);
  demo.window->setVisible(kValues, true);
  EXPECT_FALSE(IsWindowEnabled(demo.child(kPov))) << "its own state";
  EXPECT_TRUE(IsWindowEnabled(demo.child(kVrml)));
  EXPECT_TRUE(IsWindowVisible(demo.child(kWidth)));
}

TEST_F(WindowTest, CommandsComeFromTheMenuAndFromTheirShortcuts) {
  DemoWindow demo(platform_);
  demo.show();
  demo.focus(kWidth);
  PostMessageW(demo.main, WM_COMMAND, kFirstCommand + kOpen, 0);
  demo.keyWith(VK_CONTROL, 'S');
  demo.key(VK_F7);
  EXPECT_EQ(demo.told(), (Told{"mnuFileLoad", "mnuFileSave", "mnuShapeSnap"}));
  std::array<wchar_t, 64> text{};
  GetMenuStringW(GetMenu(demo.main), kFirstCommand + kSave, text.data(), 64, MF_BYCOMMAND);
  EXPECT_STREQ(text.data(), L"&Save knot file\tCtrl+S");
  demo.window->setCommandEnabled(kSave, false);
  demo.window->setCommandChecked(kSnap, true);
  EXPECT_FALSE(demo.window->commandEnabled(kSave));
  EXPECT_TRUE(demo.window->commandChecked(kSnap));
  demo.keyWith(VK_CONTROL, 'S');
  PostMessageW(demo.main, WM_COMMAND, kFirstCommand + kSave, 0);
  EXPECT_EQ(demo.told(), Told{});
}

TEST_F(WindowTest, MnemonicsReachWhatTheyStandFor) {
  DemoWindow demo(platform_);
  demo.show();
  const auto press = [&](char letter) {
    PostMessageW(GetFocus(), WM_SYSCHAR, static_cast<WPARAM>(letter), 1 << 29);
    demo.settle();
  };
  press('c');  // a label's
  EXPECT_TRUE(demo.hasFocus(kScale));
  press('g');
  press('v');
  press('2');
  EXPECT_EQ(demo.told(), (Told{"left vtScale", "confirmed vtScale", "changed chkGrid", "changed optVrml",
                               "clicked cmd2D"}));
}

TEST_F(WindowTest, TextShortcutsBelongToAnEntryWhileItIsTypedInto) {
  DemoWindow demo(platform_);
  demo.show();
  demo.focus(kWidth);
  demo.keyWith(VK_CONTROL, 'C');
  demo.keyWith(VK_CONTROL, 'Z');
  EXPECT_EQ(demo.told(), (Told{"mnuEditCopy", "mnuEditUndo"}));
  demo.type("4");
  demo.settle();
  demo.keyWith(VK_CONTROL, 'Z');
  EXPECT_EQ(demo.told(), Told{});
  demo.key(VK_RETURN);
  demo.keyWith(VK_CONTROL, 'Z');
  EXPECT_EQ(demo.told(), (Told{"confirmed vtWidth", "mnuEditUndo"}));
}

TEST_F(WindowTest, ThePointerOnAPictureIsToldTidily) {
  DemoWindow demo(platform_);
  demo.show();
  demo.mouse(kPicture, WM_LBUTTONDOWN, 10, 20);
  demo.mouse(kPicture, WM_RBUTTONDOWN, 10, 20);
  demo.mouse(kPicture, WM_MOUSEMOVE, -5, 700);
  demo.mouse(kPicture, WM_RBUTTONUP, 10, 20);
  demo.mouse(kPicture, WM_LBUTTONUP, -5, 700);
  EXPECT_EQ(demo.told(),
            (Told{"picGrid press 1 10,20", "picGrid move 1 -5,700", "picGrid release 1 -5,700"}));
  demo.mouse(kPicture, WM_RBUTTONDOWN, 7, 8);
  ReleaseCapture();  // another window takes the mouse away
  demo.mouse(kPicture, WM_RBUTTONUP, 7, 8);
  EXPECT_EQ(demo.told(), (Told{"picGrid press 2 7,8", "picGrid release 2 7,8"}));
}

TEST_F(WindowTest, KeysAreOfferedToTheProgramFirstExceptThoseAnEntryNeeds) {
  DemoWindow demo(platform_);
  demo.show();
  demo.takesKeys = true;
  demo.focus(kShape);
  demo.told();
  demo.key(VK_DOWN);
  EXPECT_EQ(demo.told(), Told{"key 4"});
  EXPECT_EQ(demo.window->selected(kShape), 0) << "taken, so the list did not move";
  demo.focus(kWidth);
  demo.key(VK_LEFT);
  demo.key(VK_UP);
  EXPECT_EQ(demo.told(), Told{"key 2"});
}

TEST_F(WindowTest, AnotherSizeGivesClearedPicturesOfTheSameShape) {
  DemoWindow demo(platform_);
  demo.show();
  Surface& picture = demo.window->surface(kPicture);
  picture.segment({0, 0}, {90, 90}, {3, 0xFF});
  const int width = picture.width();
  SetWindowPos(demo.main, nullptr, 0, 0, 1000, 740, SWP_NOMOVE | SWP_NOZORDER);
  const Told told = demo.told();
  EXPECT_NE(std::find(told.begin(), told.end(), "resized picGrid"), told.end());
  EXPECT_GT(picture.width(), width) << "the same object, larger";
  EXPECT_EQ(picture.width() * 4, picture.height() * 5);
  EXPECT_EQ(picture.pixel({45, 45}), 0xFFFFFFu);
  SetWindowPos(demo.main, nullptr, 0, 0, 10, 10, SWP_NOMOVE | SWP_NOZORDER);
  EXPECT_GT(demo.window->place().width, 400) << "no smaller than its contents";
  demo.window->moveTo(30, 40);
  EXPECT_EQ(demo.window->place().left, 30);
  EXPECT_EQ(demo.window->place().top, 40);
}

TEST_F(WindowTest, ADroppedFileIsToldWithItsName) {
  DemoWindow demo(platform_);
  demo.show();
  const std::wstring path = L"C:\\Kn\u00F6tchen \u7D50.qzd";
  std::vector<char> block(sizeof(DROPFILES) + (path.size() + 2) * sizeof(wchar_t));
  DROPFILES head{};
  head.pFiles = sizeof head;
  head.fWide = TRUE;
  std::memcpy(block.data(), &head, sizeof head);
  std::memcpy(block.data() + sizeof head, path.data(), path.size() * sizeof(wchar_t));
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, block.size());
  std::memcpy(GlobalLock(memory), block.data(), block.size());
  GlobalUnlock(memory);
  PostMessageW(demo.main, WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0);
  EXPECT_EQ(demo.told(), Told{std::string("dropped ") + narrow(path)});
}

TEST_F(WindowTest, ClosesWhenTheProgramAgreesAndCanBeSpokenToAfterwards) {
  DemoWindow demo(platform_);
  demo.show();
  demo.mayClose = false;
  PostMessageW(demo.main, WM_CLOSE, 0, 0);
  EXPECT_EQ(demo.told(), Told{"closing?"});
  EXPECT_TRUE(IsWindow(demo.main));
  demo.mayClose = true;
  PostMessageW(demo.main, WM_CLOSE, 0, 0);
  demo.window->run();  // returns
  EXPECT_FALSE(IsWindow(demo.main));
  EXPECT_FALSE(demo.window->processEvents());
  // A drawing that was under way when the user closed the window goes on for a moment.
  demo.window->surface(kPicture).segment({0, 0}, {9, 9}, {1, 0});
  demo.window->surface(kPicture).refresh();
  demo.window->setText(kWidth, "3");
  demo.window->setStatus("ready");
  demo.window->setEnabled(kFormat, false);
  demo.window->setBusy(false);
  EXPECT_EQ(demo.window->text(kWidth), "");
}

TEST_F(WindowTest, AThousandWindowsLeaveNothingBehind) {
  // Only what holds objects of its own: Wine takes half a millisecond for each control.
  constexpr std::array<ControlSpec, 3> form = {{
      {"vtWidth", ControlKind::number, "7", "tip", "", {0, 0, 4, 1}},
      {"txtCol", ControlKind::colourBox, "", "", "", {4, 0, 4, 1}},
      {"picGrid", ControlKind::picture, "", "", "", {0, 0, 1, 1}},
  }};
  const WindowEvents events;
  const auto once = [&](int i) {
    auto window = platform_.createWindow({form, kDemoMenu, "many"}, events);
    ASSERT_TRUE(window);
    if (i % 4 == 0) (*window)->show();  // takes Wine ten milliseconds
    (*window)->setColours(0, static_cast<Colour>(i), 0xFFFFFF);
    (*window)->setColours(1, static_cast<Colour>(i), 0);
    (*window)->surface(2).segment({0, 0}, {50, 50}, {4, 0xFF});
    (*window)->processEvents();
    if (i % 2 == 0) (*window)->close();
  };
  once(0);
  once(1);
  const ObjectCounts before = countGuiObjects();
  for (int i = 0; i < 1000; ++i) once(i);
  EXPECT_EQ(countGuiObjects().windows, before.windows);
  EXPECT_EQ(countGuiObjects().graphics, before.graphics);
  const DemoWindow kept(platform_);
  EXPECT_GT(countGuiObjects().windows, before.windows + 15) << "the count sees a window";
  EXPECT_GT(countGuiObjects().graphics, before.graphics);
}

TEST_F(WindowTest, SurvivesRandomUse) {
  // Without the right button's release, at which an entry opens its menu and waits.
  constexpr std::array<UINT, 7> mouse = {WM_LBUTTONDOWN, WM_LBUTTONUP,     WM_RBUTTONDOWN,   WM_MOUSEMOVE,
                                         WM_MOUSELEAVE,  WM_LBUTTONDBLCLK, WM_CAPTURECHANGED};
  constexpr std::array<WPARAM, 9> keys = {VK_TAB,  VK_RETURN, VK_ESCAPE, VK_LEFT, VK_UP,
                                          VK_DOWN, VK_SPACE,  VK_F7,     'S'};
  DemoWindow demo(platform_);
  demo.show();
  demo.mayClose = false;
  std::mt19937 random(344);
  const auto pick = [&](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
  for (int i = 0; i < 10000; ++i) {
    const HWND target = demo.child(pick(kDemoControls));
    const LPARAM place = MAKELPARAM(pick(60) - 10, pick(60) - 10);
    switch (pick(6)) {
      case 0:
      case 1:
        PostMessageW(target, mouse[static_cast<std::size_t>(pick(7))], 0, place);
        break;
      case 2:
        PostMessageW(GetFocus(), WM_KEYDOWN, keys[static_cast<std::size_t>(pick(9))], 1);
        break;
      case 3:
        PostMessageW(GetFocus(), WM_CHAR, static_cast<WPARAM>('0' + pick(10)), 1);
        break;
      case 4:
        demo.window->setEnabled(pick(kPicture), pick(3) > 0);
        break;
      default:
        demo.window->setVisible(pick(kPicture), pick(3) > 0);
        break;
    }
    demo.settle();
  }
  EXPECT_TRUE(IsWindow(demo.main));
  EXPECT_GT(demo.log.size(), 500U);
}

}  // namespace
}  // namespace lorivan::win32
