// The real window, driven as a person drives it: ten thousand random keys and clicks end in a window that
// still works.
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <memory>
#include <string>

#include "base/random.h"
#include "platform/qt/platform_qt.h"
#include "window/main_window.h"

namespace lorivan {
namespace {

class QtProgramTest : public testing::Test {
 protected:
  void SetUp() override {
    platform_ = std::make_unique<PlatformQt>(folder_.filePath("settings.ini").toStdString());
    main_ = std::make_unique<MainWindow>(*platform_, MainWindowOptions{});
    ASSERT_TRUE(main_->open());
    main_->bench().window.show();
    for (QWidget* const w : QApplication::topLevelWidgets())
      if (auto* const frame = qobject_cast<QMainWindow*>(w)) frame_ = frame;
    ASSERT_NE(frame_, nullptr);
    QApplication::processEvents();
  }

  template <class Widget>
  Widget* find(const char* name) const {
    return frame_->findChild<Widget*>(name);
  }
  void type(const char* field, const char* text) {
    auto* const entry = find<QLineEdit>(field);
    ASSERT_NE(entry, nullptr) << field;
    entry->setFocus();
    entry->selectAll();
    QTest::keyClicks(entry, text);
    QTest::keyClick(entry, Qt::Key_Return);
    QApplication::processEvents();
  }
  void choose(int shape) {
    auto* const list = find<QComboBox>("lstType");
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Home);
    for (int i = 0; i < shape; ++i) QTest::keyClick(list, Qt::Key_Down);
    QApplication::processEvents();
  }
  QTemporaryDir folder_;
  std::unique_ptr<PlatformQt> platform_;
  std::unique_ptr<MainWindow> main_;
  QMainWindow* frame_ = nullptr;
};

TEST_F(QtProgramTest, TenThousandRandomKeysAndClicks) {
  const Rnd random = seededRandom(5);
  QTimer dismiss;  // whatever dialog a random deed opens is closed again
  QObject::connect(&dismiss, &QTimer::timeout, [] {
    if (QWidget* const dialog = QApplication::activeModalWidget()) QTest::keyClick(dialog, Qt::Key_Escape);
  });
  dismiss.start(5);
  const auto entries = frame_->findChildren<QLineEdit*>();
  const auto buttons = frame_->findChildren<QPushButton*>();
  const auto pick = [&](const auto& list) {
    return list[static_cast<qsizetype>(random() * double(list.size()))];
  };
  const QString letters = "0123456789-.,x";
  for (int i = 0; i < 10000; ++i) {
    const double kind = random();
    if (kind < 0.6) {
      QTest::keyClick(pick(entries),
                      letters[static_cast<qsizetype>(random() * double(letters.size()))].toLatin1());
    } else if (kind < 0.97) {
      QTest::mouseMove(frame_, QPoint(int(random() * frame_->width()), int(random() * frame_->height())));
      QTest::keyClick(frame_, random() < 0.5 ? Qt::Key_Left : Qt::Key_Tab);
    } else if (QPushButton* const button = pick(buttons); button->isEnabled() && button->isVisible()) {
      QTest::mouseClick(button, Qt::LeftButton);
    }
  }
  dismiss.stop();
  QApplication::processEvents();
  choose(0);
  type("vtXNo", "3");
  type("vtYNo", "2");
  EXPECT_EQ(main_->bench().knot().graph.LastLine, 16) << "the window still works";
}

}  // namespace
}  // namespace lorivan
