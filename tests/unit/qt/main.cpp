// Runs the tests on Qt's display-less platform, whatever the machine has, and away from the user's settings
// and files.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include "platform/qt/look.h"

int main(int count, char** values) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QTemporaryDir files;
  for (const char* const place : {"XDG_DATA_HOME", "XDG_CONFIG_HOME"}) qputenv(place, files.path().toUtf8());
  QLoggingCategory::setFilterRules(QStringLiteral("qt.qpa.*=false"));
  const QApplication application(count, values);
  QApplication::setQuitOnLastWindowClosed(false);
  lorivan::applyLook(*qApp, false);
  testing::InitGoogleTest(&count, values);
  return RUN_ALL_TESTS();
}
