// A small window driven by keys and mouse, and what it tells the program.
#include "platform/qt/window_qt.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QTest>
#include <QTimer>
#include <QToolTip>
#include <QUrl>
#include <array>
#include <string>
#include <vector>

#include "platform/common/text_helpers.h"
#include "unit/platform_common/sample_form.h"

namespace lorivan {
namespace {

using sample::idOf;
using sample::kForm;

constexpr std::array kCommands = {CommandSpec{"mnuNew", "&File", "&New grid", "Ctrl+N"},
                                  CommandSpec{"mnuUndo", "&Edit", "&Undo", "Ctrl+Z"},
                                  CommandSpec{"mnuCopy", "&Edit", "&Copy", "Ctrl+C"},
                                  CommandSpec{"mnuSnap", "&Shape", "&Snap", "", true, true}};

class WindowQtTest : public testing::Test {
 protected:
  WindowQtTest() {
    events_.confirmed = [this](ControlId id) { note("confirmed", id); };
    events_.left = [this](ControlId id) { note("left", id); };
    events_.clicked = [this](ControlId id) { note("clicked", id); };
    events_.changed = [this](ControlId id) { note("changed", id); };
    events_.resized = [this](ControlId id) { resized_.push_back(id); };
    events_.command = [this](CommandId id) {
      log_.push_back("command " + std::string(kCommands[static_cast<std::size_t>(id)].name));
    };
    events_.mouse = [this](ControlId, const MouseEvent& event) { mouse_.push_back(event); };
    events_.fileDropped = [this](const std::string& path) { log_.push_back("dropped " + path); };
    events_.started = [this] { log_.push_back("started"); };
    events_.key = [this](const KeyEvent& event) {
      keys_.push_back(event);
      return takesKeys_;
    };
    window_ = makeWindowQt({kForm, kCommands, "Test"}, events_);
    for (QWidget* const w : QApplication::topLevelWidgets())
      if (auto* main = qobject_cast<QMainWindow*>(w)) frame_ = main;
    window_->setVisible(idOf("picKnot"), false);
    window_->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(frame_));
    window_->processEvents();
    EXPECT_EQ(take(), std::vector<std::string>{"started"});
    resized_.clear();
  }

  void note(const std::string& what, ControlId id) {
    log_.push_back(what + ' ' + std::string(kForm[static_cast<std::size_t>(id)].name));
  }
  std::vector<std::string> take() { return std::exchange(log_, {}); }
  using Log = std::vector<std::string>;

  template <class T = QWidget>
  T* find(const char* name) const {
    return frame_->findChild<T*>(QString::fromLatin1(name));
  }
  void click(const char* name) { QTest::mouseClick(find(name), Qt::LeftButton, {}, {9, 9}); }

  WindowEvents events_;
  std::unique_ptr<Window> window_;
  QMainWindow* frame_ = nullptr;
  Log log_;
  std::vector<MouseEvent> mouse_;
  std::vector<KeyEvent> keys_;
  std::vector<ControlId> resized_;
  bool takesKeys_ = false;
};

TEST_F(WindowQtTest, EntriesAreConfirmedByEnterAndByLeaving) {
  click("vtXNo");
  window_->setText(idOf("vtXNo"), "3");
  QTest::keyClicks(find("vtXNo"), "12");
  EXPECT_EQ(window_->text(idOf("vtXNo")), "12") << "typing replaces the selected text";
  EXPECT_EQ(take(), Log{});
  QTest::keyClick(find("vtXNo"), Qt::Key_Return);
  EXPECT_EQ(take(), Log{"confirmed vtXNo"});
  QTest::keyClick(find("vtXNo"), Qt::Key_Tab);
  EXPECT_EQ(take(), (Log{"left vtXNo", "confirmed vtXNo"}));
  EXPECT_TRUE(find("vtYNo")->hasFocus());
  EXPECT_EQ(find<QLineEdit>("vtYNo")->selectedText(), find<QLineEdit>("vtYNo")->text());
}

TEST_F(WindowQtTest, WhatWaitsInAnEntryIsConfirmedBeforeAnythingElseHappens) {
  const auto typeThen = [this](auto deed) {
    find("vtXNo")->setFocus();
    take();
    QTest::keyClicks(find("vtXNo"), "5");
    deed();
    return take();
  };
  EXPECT_EQ(typeThen([&] { click("cmd2D"); }), (Log{"left vtXNo", "confirmed vtXNo", "clicked cmd2D"}));
  EXPECT_EQ(typeThen([&] { click("chkMirror"); }),
            (Log{"left vtXNo", "confirmed vtXNo", "changed chkMirror"}));
  EXPECT_EQ(typeThen([&] {
              QTest::mousePress(find("cmd2D"), Qt::LeftButton, {}, {9, 9});
              window_->processEvents();
              log_.push_back("pressed");
              QTest::mouseRelease(find("cmd2D"), Qt::LeftButton, {}, {-9, 9});
              window_->processEvents();
            }),
            (Log{"left vtXNo", "pressed", "confirmed vtXNo"}));
  EXPECT_EQ(typeThen([&] { QTest::keyClick(frame_, Qt::Key_N, Qt::ControlModifier); }),
            (Log{"confirmed vtXNo", "command mnuNew"}));
  EXPECT_EQ(typeThen([&] { QTest::keyClick(find("vtXNo"), Qt::Key_Return); }), Log{"confirmed vtXNo"});
  QTest::keyClick(frame_, Qt::Key_N, Qt::ControlModifier);
  EXPECT_EQ(take(), Log{"command mnuNew"}) << "nothing waits any more";
  events_.confirmed = [this](ControlId id) {  // with a dialog, as when the scale is changed
    note("confirmed", id);
    QTimer::singleShot(0, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); });
    window_->confirm("Go on?", "Question");
  };
  EXPECT_EQ(typeThen([&] { click("cmd2D"); }), (Log{"left vtXNo", "confirmed vtXNo", "clicked cmd2D"}));
}

TEST_F(WindowQtTest, UndoAndCopyAreTheWindowsUnlessSomethingIsTyped) {
  QWidget* const entry = find("vtXNo");
  entry->setFocus();
  QTest::keyClick(entry, Qt::Key_Z, Qt::ControlModifier);
  QTest::keyClick(entry, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(take(), (Log{"command mnuUndo", "command mnuCopy"}));
  QTest::keyClicks(entry, "5");
  QTest::keyClick(entry, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(take(), Log{});
  EXPECT_EQ(window_->text(idOf("vtXNo")), "");
}

TEST_F(WindowQtTest, ValuesSetByTheProgramRaiseNothing) {
  find("vtXNo")->setFocus();
  QTest::keyClicks(find("vtXNo"), "5");
  window_->setText(idOf("vtXNo"), "8");
  window_->setChecked(idOf("chkMirror"), true);
  window_->setItems(idOf("lstType"), {"one", "two"});
  window_->select(idOf("lstType"), 1);
  window_->setCommandChecked(3, true);
  window_->setEnabled(idOf("vtXNo"), false);
  window_->setVisible(idOf("vtYNo"), false);
  window_->processEvents();
  EXPECT_EQ(take(), Log{});
  EXPECT_EQ(window_->selected(idOf("lstType")), 1);
  EXPECT_FALSE(window_->enabled(idOf("vtXNo")));
  EXPECT_FALSE(window_->visible(idOf("vtYNo")));
}

TEST_F(WindowQtTest, RadiosExcludeEachOtherAndCanAllBeOff) {
  click("optOBJ");
  click("optSTL");
  EXPECT_EQ(take(), (Log{"changed optOBJ", "changed optSTL"}));
  EXPECT_FALSE(window_->checked(idOf("optOBJ")));
  window_->setChecked(idOf("optSTL"), false);
  EXPECT_FALSE(window_->checked(idOf("optSTL")));
  click("optOBJ");
  click("optXYZ");
  EXPECT_FALSE(window_->checked(idOf("optOBJ")));
}

TEST_F(WindowQtTest, ListsTellTheUsersChoice) {
  window_->setItems(idOf("lstType"), {"one", "two", "three"});
  EXPECT_EQ(window_->selected(idOf("lstType")), -1);
  window_->select(idOf("lstType"), 0);
  find("lstType")->setFocus();
  QTest::keyClick(find("lstType"), Qt::Key_Down);
  EXPECT_EQ(window_->selected(idOf("lstType")), 1);
  EXPECT_EQ(take(), Log{"changed lstType"});
}

TEST_F(WindowQtTest, MenusHaveTheirMarksSetByTheProgram) {
  EXPECT_EQ(frame_->menuBar()->actions().size(), 3);
  QAction* const snap = frame_->findChild<QAction*>(QStringLiteral("mnuSnap"));
  snap->trigger();
  EXPECT_EQ(take(), Log{"command mnuSnap"});
  EXPECT_FALSE(window_->commandChecked(3));
  window_->setCommandEnabled(0, false);
  QTest::keyClick(frame_, Qt::Key_N, Qt::ControlModifier);
  EXPECT_EQ(take(), Log{});
}

TEST_F(WindowQtTest, MnemonicsReachButtonsAndFields) {
  QTest::keyClick(frame_, Qt::Key_Y, Qt::AltModifier);
  EXPECT_TRUE(find("vtYNo")->hasFocus());
  QTest::keyClick(frame_, Qt::Key_R, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([this] { return !log_.empty(); }));
  EXPECT_EQ(take(), (Log{"left vtYNo", "confirmed vtYNo", "clicked cmdRandknot"}));
}

TEST_F(WindowQtTest, ArrowKeysGoToTheProgramFirst) {
  takesKeys_ = true;
  find("vtXNo")->setFocus();
  QTest::keyClick(find("vtXNo"), Qt::Key_Left);
  EXPECT_TRUE(keys_.empty()) << "an entry moves its cursor with it";
  QTest::keyClick(find("vtXNo"), Qt::Key_Up, Qt::ShiftModifier);
  find("optOBJ")->setFocus();
  QTest::keyClick(find("optOBJ"), Qt::Key_Left);
  ASSERT_EQ(keys_.size(), 2U);
  EXPECT_EQ(keys_[0].key, Key::up);
  EXPECT_TRUE(keys_[0].shift);
  EXPECT_TRUE(find("optOBJ")->hasFocus()) << "taken: the radios do not see it";
}

TEST_F(WindowQtTest, AnEntryDoesNotGetTheArrowsAfterAButtonsMnemonic) {
  events_.clicked = [this](ControlId id) { window_->setEnabled(id, false); };
  takesKeys_ = true;
  find("vtXNo")->setFocus();
  QTest::keyClick(find("vtXNo"), Qt::Key_V, Qt::AltModifier);
  QTRY_VERIFY(!find("cmd3DView")->isEnabled());
  EXPECT_TRUE(find("cmd2DView")->hasFocus());
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);
  EXPECT_EQ(keys_.size(), 1U);
}

TEST_F(WindowQtTest, ThePictureReportsOneButtonAtATime) {
  QWidget* const picture = find("picGrid");
  QTest::mousePress(picture, Qt::LeftButton, Qt::ShiftModifier, {30, 40});
  QTest::mousePress(picture, Qt::RightButton, {}, {31, 40});
  QTest::mouseRelease(picture, Qt::RightButton, {}, {31, 40});
  QTest::mouseRelease(picture, Qt::LeftButton, {}, {-5, 60});
  ASSERT_EQ(mouse_.size(), 2U);
  EXPECT_EQ(mouse_[0].action, MouseAction::press);
  EXPECT_TRUE(mouse_[0].shift);
  EXPECT_EQ(mouse_[0].x, 30);
  EXPECT_EQ(mouse_[1].action, MouseAction::release);
  EXPECT_EQ(mouse_[1].button, 1);
  EXPECT_EQ(mouse_[1].x, -5);
  mouse_.clear();
  QTest::mousePress(picture, Qt::RightButton, {}, {30, 40});
  window_->setVisible(idOf("picGrid"), false);
  EXPECT_EQ(mouse_.size(), 1U);
  window_->processEvents();
  ASSERT_GE(mouse_.size(), 2U) << "a hidden picture still ends its press";
  EXPECT_EQ(mouse_[1].action, MouseAction::release);
  EXPECT_EQ(mouse_[1].button, 2);
  QTest::mouseRelease(frame_, Qt::RightButton);
}

TEST_F(WindowQtTest, PicturesShowWhatIsDrawnAndAreNewAfterResizing) {
  Surface& surface = window_->surface(idOf("picGrid"));
  EXPECT_EQ(surface.width() * 4, surface.height() * 5);
  surface.clear(0x0000FF);
  window_->processEvents();
  EXPECT_EQ(find("picGrid")->grab().toImage().pixelColor(50, 50), QColor(Qt::red));

  const int before = surface.width();
  frame_->resize(frame_->size() + QSize(300, 240));
  EXPECT_TRUE(QTest::qWaitFor([this] { return resized_.size() >= 3; })) << "hidden ones as well";
  EXPECT_GT(surface.width(), before);
  EXPECT_EQ(surface.pixel({50, 50}), 0xFFFFFFU);
}

TEST_F(WindowQtTest, DroppedFilesArrive) {
  QMimeData data;
  data.setUrls(
      {QUrl(QStringLiteral("http://example.org/x")), QUrl::fromLocalFile(QStringLiteral("/tmp/ö.qzd"))});
  QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(frame_, &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(frame_, &drop);
  EXPECT_EQ(take(), Log{"dropped /tmp/ö.qzd"});
}

TEST_F(WindowQtTest, ClosingAsksAndEndsTheLoop) {
  int asked = 0;
  events_.closeQuery = [&asked] { return ++asked > 1; };
  frame_->close();
  EXPECT_TRUE(window_->processEvents());
  QTimer::singleShot(0, frame_, [this] { frame_->close(); });
  window_->run();
  EXPECT_EQ(asked, 2);
  EXPECT_FALSE(window_->processEvents());
  window_->run();
}

TEST_F(WindowQtTest, TooltipsShowOverDisabledControlsToo) {
  const auto pointAt = [this](const char* name) {
    const QPoint at = find(name)->mapTo(frame_, QPoint(8, 8));
    QTest::mouseMove(frame_->windowHandle(), at);
    QTest::mouseMove(frame_->windowHandle(), at + QPoint(1, 1));
  };
  window_->setEnabled(idOf("vtWidth"), false);
  for (const char* const name : {"vtScale", "vtWidth"}) {
    pointAt(name);
    const QString tip = find(name)->toolTip();
    EXPECT_TRUE(QTest::qWaitFor([&] { return QToolTip::isVisible() && QToolTip::text() == tip; })) << name;
  }
}

TEST_F(WindowQtTest, PlaceAndSizeAreInDevicePixels) {
  window_->moveTo(40, 30);
  window_->processEvents();
  EXPECT_EQ(window_->place().left, 40);
  EXPECT_EQ(window_->place().top, 30);
  EXPECT_EQ(window_->scaling(), 1);
  EXPECT_GE(window_->screen().height, 600);
}

TEST_F(WindowQtTest, NoTextIsCutAtTheReferenceSize) {
  for (std::size_t i = 0; i < kForm.size(); ++i) {
    const QWidget* const w = find(std::string(kForm[i].name).c_str());
    const bool hasText = kForm[i].kind == ControlKind::label || kForm[i].kind == ControlKind::check ||
                         kForm[i].kind == ControlKind::radio || kForm[i].kind == ControlKind::button;
    if (!hasText) continue;
    const QString caption = QString::fromStdString(withoutMnemonic(kForm[i].caption));
    const int needed = kForm[i].kind == ControlKind::button ? w->fontMetrics().horizontalAdvance(caption) + 8
                                                            : w->sizeHint().width();
    EXPECT_GE(w->width(), needed) << kForm[i].name;
  }
}

}  // namespace
}  // namespace lorivan
