#include "platform/qt/services_qt.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>
#ifdef __x86_64__
#include <cpuid.h>
#endif

#include <QClipboard>
#include <QDesktopServices>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QTemporaryDir>
#include <QUrl>
#include <csignal>
#include <functional>
#include <optional>

#include "base/sink.h"
#include "platform/common/wide_registers.h"
#include "platform/qt/platform_qt.h"
#include "platform/qt/raster_surface.h"

namespace lorivan {
namespace {

#ifdef __x86_64__
/// Whether the upper parts of the vector registers are in use; nothing where the processor does not tell.
std::optional<bool> usesWideRegisters() {
  unsigned a = 0, b = 0, c = 0, d = 0;
  if (!__get_cpuid_count(1, 0, &a, &b, &c, &d) || (c & bit_OSXSAVE) == 0 ||
      !__get_cpuid_count(13, 1, &a, &b, &c, &d) || (a & 4) == 0)
    return {};
  asm volatile("xgetbv" : "=a"(a), "=d"(d) : "c"(1));
  return (a & 4) != 0;
}

TEST(RasterSurface, LeavesNoWideRegistersInUse) {
  auto surface = std::move(*RasterSurface::create(300, 200));
  if (!usesWideRegisters()) GTEST_SKIP() << "this processor does not tell";
  const Pen pen{.width = 3, .colour = 0xFF, .dotted = false};
  const PointI corners[] = {{5, 5}, {200, 10}, {90, 150}}, middle{90, 90};
  const std::pair<const char*, std::function<void()>> calls[] = {
      {"clear", [&] { surface->clear(0x80FF); }},
      {"segment", [&] { surface->segment(corners[0], middle, pen); }},
      {"circle", [&] { surface->circle(middle, 40, pen); }},
      {"dot", [&] { surface->dot(middle, 60, 0xFF00); }},
      {"polygon", [&] { surface->polygonOutline(corners, pen); }},
      {"filled", [&] { surface->fillPolygon(corners, 0xFF); }},
      {"line", [&] { surface->polyline(corners, pen); }},
      {"image", [&] { surface->image(); }},
      {"resize", [&] { EXPECT_TRUE(surface->resize(500, 400)); }},
  };
  for (const auto& [name, call] : calls) {
    QImage(100, 100, QImage::Format_RGB32).fill(Qt::red);
    leaveWideRegisters();
    EXPECT_FALSE(*usesWideRegisters()) << "before " << name;
    call();
    EXPECT_FALSE(*usesWideRegisters()) << name;
  }
}
#endif

/// Stands in for the browser.
class Browser : public QObject {
  Q_OBJECT
 public:
  QList<QUrl> opened;
 public slots:
  void open(const QUrl& url) { opened.append(url); }
};

TEST(HelpQt, OpensPagesThatExist) {
  const QTemporaryDir folder;
  HelpQt help(folder.path().toStdString());
  EXPECT_FALSE(help.open("index.html#about"));

  ASSERT_TRUE(writeFile(folder.filePath(QStringLiteral("index.html")).toStdString(), "<p>"));
  Browser browser;
  QDesktopServices::setUrlHandler(QStringLiteral("file"), &browser, "open");
  EXPECT_TRUE(help.open("index.html#about"));
  QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
  ASSERT_EQ(browser.opened.size(), 1);
  EXPECT_EQ(browser.opened[0].toLocalFile(), folder.filePath(QStringLiteral("index.html")));
  EXPECT_EQ(browser.opened[0].fragment(), QStringLiteral("about"));
}

/// Sets an environment variable for a while; an empty value removes it.
class Variable {
 public:
  Variable(const char* name, const char* value) : name_(name), before_(qgetenv(name)) { set(value); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;
  ~Variable() { set(before_); }

 private:
  void set(const QByteArray& value) { value.isEmpty() ? qunsetenv(name_) : qputenv(name_, value); }
  const char* name_;
  QByteArray before_;
};

TEST(PlatformQt, SaysWhatAWindowNeeds) {
  const QTemporaryDir folder;
  PlatformQt platform(folder.filePath(QStringLiteral("s.ini")).toStdString());
  EXPECT_TRUE(platform.canOpenWindow());
  const Variable none("QT_QPA_PLATFORM", ""), wayland("WAYLAND_DISPLAY", "");
  {
    const Variable display("DISPLAY", "");
    ASSERT_FALSE(platform.canOpenWindow());
    EXPECT_NE(platform.canOpenWindow().error().message.find("DISPLAY"), std::string::npos);
  }
  const Variable dead("DISPLAY", ":9876");
  ASSERT_FALSE(platform.canOpenWindow());
  EXPECT_NE(platform.canOpenWindow().error().message.find(":9876"), std::string::npos);
  EXPECT_FALSE(platform.createWindow({}, {}));
}

TEST(PlatformQt, MakesTheUsersFolderWhereTheDesktopKeepsData) {
  const QTemporaryDir folder;
  const QString data = folder.filePath(QStringLiteral("deep/data"));
  const Variable home("XDG_DATA_HOME", data.toUtf8().constData());
  PlatformQt platform(folder.filePath(QStringLiteral("s.ini")).toStdString());
  EXPECT_EQ(platform.userFolder(), data.toStdString() + "/Lorivan");
  EXPECT_TRUE(QFileInfo(data + QStringLiteral("/Lorivan")).isDir());
  const Variable nowhere("XDG_DATA_HOME", "/dev/null/data");
  EXPECT_EQ(platform.userFolder(), "");
}

TEST(PlatformQt, AClaimEndsWithAProcessThatIsKilled) {
  const QTemporaryDir folder;
  const std::string path = folder.filePath(QStringLiteral("claim.lock")).toStdString();
  int ready[2] = {};
  ASSERT_EQ(pipe(ready), 0);
  const pid_t other = fork();
  if (other == 0) {
    const auto claim = claimFile(path);
    if (write(ready[1], claim ? "y" : "n", 1) != 1) _exit(1);
    while (true) pause();
  }
  char claimed = 0;
  ASSERT_EQ(read(ready[0], &claimed, 1), 1);
  EXPECT_EQ(claimed, 'y');
  EXPECT_FALSE(claimFile(path));
  kill(other, SIGKILL);
  waitpid(other, nullptr, 0);
  EXPECT_TRUE(claimFile(path));
  for (const int end : ready) close(end);
}

}  // namespace
}  // namespace lorivan

#include "services_test.moc"
