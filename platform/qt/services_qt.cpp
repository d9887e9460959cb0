#include "platform/qt/services_qt.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QRandomGenerator>
#include <QTime>
#include <QUrl>
#include <algorithm>
#include <chrono>
#include <thread>

#include "platform/qt/convert.h"

namespace lorivan {

void ClipboardQt::clear() {
  if (qGuiApp) QGuiApplication::clipboard()->clear();
}

Status ClipboardQt::putPicture(Surface& picture) {
  if (!qGuiApp) return Error{"there is no clipboard without a window"};
  const PixelBlock block = picture.lendPixels();
  if (!block.pixels) return Error{"this picture has no pixels to copy"};
  const QImage view(reinterpret_cast<const uchar*>(block.pixels), block.width, block.height,
                    static_cast<qsizetype>(block.stride) * 4, QImage::Format_RGB32);
  QGuiApplication::clipboard()->setImage(view.copy());
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
  if (!QFileInfo(toQString(file)).isFile()) return Error{"Help is missing: there is no " + file};
  QUrl url = QUrl::fromLocalFile(toQString(file));
  if (mark != std::string::npos) url.setFragment(toQString(page.substr(mark + 1)));
  if (!QDesktopServices::openUrl(url)) return Error{"No browser could be started to show " + file};
  return {};
}

}  // namespace lorivan
