// The real window, driven as a person drives it: ten thousand random keys and clicks end in a window that
// still works.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "base/random.h"
#include "platform/qt/platform_qt.h"
#include "window/main_window.h"

namespace lorivan {
namespace {

TEST(QtProgram, ThousandsOfRandomKeysAndClicks) {
  const QTemporaryDir folder;
  PlatformQt platform(folder.filePath("settings.ini").toStdString());
  MainWindow main(platform, {});
  ASSERT_TRUE(main.open());
  main.bench().window.show();
  QMainWindow* frame = nullptr;
  for (QWidget* const w : QApplication::topLevelWidgets())
    if (auto* const found = qobject_cast<QMainWindow*>(w)) frame = found;
  ASSERT_NE(frame, nullptr);
  const Rnd random = seededRandom(5);
  QTimer dismiss;  // whatever dialog a random action opens is closed again
  QObject::connect(&dismiss, &QTimer::timeout, [] {
    if (QWidget* const dialog = QApplication::activeModalWidget()) QTest::keyClick(dialog, Qt::Key_Escape);
  });
  dismiss.start(5);
  const auto entries = frame->findChildren<QLineEdit*>();
  const auto buttons = frame->findChildren<QPushButton*>();
  const auto pick = [&](const auto& list) {
    return list[static_cast<qsizetype>(random() * double(list.size()))];
  };
  const QString letters = "0123456789-.,x";
  for (int i = 0; i < 4000; ++i) {
    const double kind = random();
    if (kind < 0.6) {
      QTest::keyClick(pick(entries),
                      letters[static_cast<qsizetype>(random() * double(letters.size()))].toLatin1());
    } else if (kind < 0.97) {
      QTest::mouseMove(frame, QPoint(int(random() * frame->width()), int(random() * frame->height())));
      QTest::keyClick(frame, random() < 0.5 ? Qt::Key_Left : Qt::Key_Tab);
    } else if (QPushButton* const button = pick(buttons); button->isEnabled() && button->isVisible()) {
      QTest::mouseClick(button, Qt::LeftButton);
    }
  }
  dismiss.stop();
  auto* const entry = frame->findChild<QLineEdit*>("vtXNo");
  entry->setFocus();
  entry->selectAll();
  QTest::keyClicks(entry, "7");  // enough for every shape
  QTest::keyClick(entry, Qt::Key_Return);
  QApplication::processEvents();
  EXPECT_EQ(main.bench().document().fields.text(Param::XNo), "7") << "the window still works";
}

}  // namespace
}  // namespace lorivan
