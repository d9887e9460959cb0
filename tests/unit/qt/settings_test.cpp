// The settings file: values come back, damage costs no more than the damaged lines.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QTemporaryDir>
#include <string>

#include "base/sink.h"
#include "platform/qt/file_settings.h"

namespace lorivan {
namespace {

using namespace std::string_literals;

class FileSettingsTest : public testing::Test {
 protected:
  QTemporaryDir folder_;
  std::string path_ = folder_.filePath(QStringLiteral("new/Lorivan/settings.ini")).toStdString();
};

TEST_F(FileSettingsTest, DamageCostsTheDamagedLinesOnly) {
  const SettingsTable table = parseSettings(
      "stray=1\n"
      "[Settings]\r\n"
      "good=1\r\n"
      "no separator\n"
      "bad=\xFF\xFE\n"
      "nul=a\0b\n"
      "cut=\\\n"
      "[broken\n"
      "lost=1\n"
      "[Settings]\n"
      "# remark=1\n"
      "late=2"s);
  EXPECT_EQ(table, (SettingsTable{{"Settings", {{"good", "1"}, {"late", "2"}}}}));
}

TEST_F(FileSettingsTest, AnUnusableStoreReadsAsEmptyAndSaysSoWhenWritten) {
  ASSERT_TRUE(writeFile(folder_.filePath(QStringLiteral("new")).toStdString(), "a file, not a folder"));
  FileSettings settings(path_);
  settings.write("Settings", "a", "1");
  EXPECT_FALSE(settings.flush());
  EXPECT_EQ(settings.read("Settings", "a", "0"), "1");
}

TEST_F(FileSettingsTest, APipeInItsPlaceKeepsNobodyWaiting) {
  const std::string pipe = folder_.filePath(QStringLiteral("pipe")).toStdString();
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  FileSettings settings(pipe);
  EXPECT_EQ(settings.read("Settings", "a", "0"), "0");
  settings.write("Settings", "a", "1");
  EXPECT_FALSE(settings.flush());
}

TEST_F(FileSettingsTest, LivesInTheConfigurationFolder) {
  const QByteArray before = qgetenv("XDG_CONFIG_HOME");
  qputenv("XDG_CONFIG_HOME", folder_.path().toUtf8());
  EXPECT_EQ(userSettingsPath(), folder_.path().toStdString() + "/Lorivan/settings.ini");
  qputenv("XDG_CONFIG_HOME", before);
}

}  // namespace
}  // namespace lorivan
