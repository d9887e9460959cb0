#include "platform/qt/services_qt.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QLockFile>
#include <QMimeData>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QTime>
#include <QUrl>
#include <algorithm>
#include <chrono>
#include <thread>

#include "platform/qt/convert.h"

namespace lorivan {
namespace {

class LockFileClaim final : public FileClaim {
 public:
  explicit LockFileClaim(const std::string& path) : file_(toQString(path)) {
    file_.setStaleLockTime(0);  // only the end of its process makes it stale
  }
  bool take() { return file_.tryLock(0); }

 private:
  QLockFile file_;
};

}  // namespace

void ClipboardQt::clear() {
  if (qGuiApp) QGuiApplication::clipboard()->clear();
}

Status ClipboardQt::putPicture(Surface& picture) { return putDrawing({}, picture); }

Status ClipboardQt::putDrawing(const ClipboardDrawing& drawing, Surface& picture) {
  if (!qGuiApp) return unwritable("there is no clipboard without a window");
  const PixelBlock block = picture.lendPixels();
  if (!block.pixels) return unwritable("this picture has no pixels to copy");
  const QImage view(reinterpret_cast<const uchar*>(block.pixels), block.width, block.height,
                    static_cast<qsizetype>(block.stride) * 4, QImage::Format_RGB32);
  auto data = std::make_unique<QMimeData>();
  if (!drawing.svg.empty())
    data->setData(QStringLiteral("image/svg+xml"), QByteArray::fromStdString(drawing.svg));
  data->setImageData(view.copy());
  QGuiApplication::clipboard()->setMimeData(data.release());
  return {};
}

std::int64_t ClockQt::milliseconds() const {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

void ClockQt::sleep(int milliseconds) {
  std::this_thread::sleep_for(std::chrono::milliseconds(std::max(0, milliseconds)));
}

float ClockQt::secondsOfDay() const {
  return static_cast<float>(QTime::currentTime().msecsSinceStartOfDay()) / 1000.0F;
}

std::uint64_t ClockQt::seed() const { return QRandomGenerator::system()->generate64(); }

Status HelpQt::open(const std::string& page) {
  const auto mark = page.find('#');
  const std::string file = folder_ + "/" + page.substr(0, mark);
  if (!QFileInfo(toQString(file)).isFile()) return unreadable("Help is missing: there is no {1}", file);
  QUrl url = QUrl::fromLocalFile(toQString(file));
  if (mark != std::string::npos) url.setFragment(toQString(page.substr(mark + 1)));
  if (!QDesktopServices::openUrl(url)) return unwritable("No browser could be started to show {1}", file);
  return {};
}

std::string makeUserFolder() {
  const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  if (data.isEmpty()) return {};
  const QString folder = data + QStringLiteral("/Lorivan");
  return QDir().mkpath(folder) ? toUtf8(folder) : std::string();
}

std::string documentsFolder() {
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return QDir(folder).exists() ? toUtf8(folder) : std::string();
}

std::unique_ptr<FileClaim> claimFile(const std::string& path) {
  auto claim = std::make_unique<LockFileClaim>(path);
  if (!claim->take()) return nullptr;
  return claim;
}

}  // namespace lorivan
