#include "platform/qt/platform_qt.h"

#include <unistd.h>
#include <QApplication>
#include <QFileInfo>
#include <QLibrary>
#include <QLibraryInfo>
#include <QTranslator>
#ifdef __GLIBC__
#include <malloc.h>
#endif

#include "platform/common/metafile_records.h"
#include "platform/qt/accessible.h"
#include "platform/qt/convert.h"
#include "platform/qt/file_settings.h"
#include "platform/qt/look.h"
#include "platform/qt/pictures.h"
#include "platform/qt/raster_surface.h"
#include "platform/qt/services_qt.h"
#include "platform/qt/window_qt.h"

namespace lorivan {
namespace {

/// The running program's folder, without an application object to ask.
std::string folderOfProgram() {
#ifdef Q_OS_LINUX
  const QString program = QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget();
  return toUtf8(QFileInfo(program).path());
#else
  int count = 1;
  char name[] = "lorivan";
  char* arguments[] = {name, nullptr};
  if (qApp) return toUtf8(QCoreApplication::applicationDirPath());
  const QCoreApplication probe(count, arguments);
  return toUtf8(QCoreApplication::applicationDirPath());
#endif
}

/// Freed memory stays with the program, up to 64 megabytes: tables of knots take some of these, and to get
/// them from the system again for every knot takes longer than to fill them.
void keepFreedMemory() {
#ifdef __GLIBC__
  mallopt(M_MMAP_THRESHOLD, 32 << 20);
  mallopt(M_TRIM_THRESHOLD, 64 << 20);
#endif
}

template <class Made>
Result<std::unique_ptr<Surface>> asSurface(Result<std::unique_ptr<Made>> made) {
  if (!made) return made.error();
  return std::unique_ptr<Surface>(std::move(*made));
}

}  // namespace

/// A connection to the X server at $DISPLAY: asked for beforehand, because Qt ends the program when none
/// answers. `answers` is true, too, where there is nothing to ask with.
class XConnection {
 public:
  XConnection() {
    QLibrary library(QStringLiteral("xcb"), 1);
    const auto connect = reinterpret_cast<void* (*)(const char*, int*)>(library.resolve("xcb_connect"));
    const auto hasError = reinterpret_cast<int (*)(void*)>(library.resolve("xcb_connection_has_error"));
    disconnect_ = reinterpret_cast<void (*)(void*)>(library.resolve("xcb_disconnect"));
    if (!connect || !hasError || !disconnect_) return;
    connection_ = connect(nullptr, nullptr);
    answers_ = hasError(connection_) == 0;
  }
  ~XConnection() {
    if (connection_) disconnect_(connection_);
  }
  XConnection(const XConnection&) = delete;
  XConnection& operator=(const XConnection&) = delete;
  bool answers() const { return answers_; }

 private:
  void (*disconnect_)(void*) = nullptr;
  void* connection_ = nullptr;
  bool answers_ = true;
};

PlatformQt::PlatformQt(std::string settingsPath)
    : settings_(std::make_unique<FileSettings>(std::move(settingsPath))),
      clipboard_(std::make_unique<ClipboardQt>()),
      clock_(std::make_unique<ClockQt>()),
      help_(std::make_unique<HelpQt>(folderOfProgram())) {
  keepFreedMemory();
}

PlatformQt::~PlatformQt() = default;

Result<std::unique_ptr<Surface>> PlatformQt::createSurface(int width, int height) {
  return asSurface(RasterSurface::create(width, height));
}

Result<std::string> PlatformQt::encodePicture(Surface& picture, PictureFormat format) {
  return encodeRaster(picture, format);
}

Result<std::unique_ptr<Surface>> PlatformQt::loadPicture(const std::string& path, int width, int height) {
  return asSurface(loadRaster(path, width, height));
}

Result<std::unique_ptr<Metafile>> PlatformQt::createMetafile(const MetafileSize& size) {
  return std::unique_ptr<Metafile>(std::make_unique<MetafileRecords>(size));
}

std::string PlatformQt::programFolder() const { return folderOfProgram(); }

std::string PlatformQt::userFolder() { return makeUserFolder(); }

std::string PlatformQt::documentsFolder() { return lorivan::documentsFolder(); }

std::unique_ptr<FileClaim> PlatformQt::claim(const std::string& path) { return claimFile(path); }

bool PlatformQt::errorsGoToTerminal() const { return isatty(STDERR_FILENO) == 1; }

std::string PlatformQt::language() const {
  const QStringList languages = QLocale::system().uiLanguages();
  return languages.isEmpty() ? std::string() : toUtf8(languages.constFirst());
}

Status PlatformQt::canOpenWindow() const {
#ifdef Q_OS_MACOS
  return {};
#else
  if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
    return {};
  if (qEnvironmentVariableIsEmpty("DISPLAY"))
    return unwritable("a window needs a desktop: neither DISPLAY nor WAYLAND_DISPLAY is set");
  if (!display_) display_ = std::make_unique<XConnection>();
  if (!display_->answers())
    return unwritable("a window needs a desktop: no display answers at DISPLAY={1}",
                      toUtf8(qEnvironmentVariable("DISPLAY")));
  return {};
#endif
}

Result<std::unique_ptr<Window>> PlatformQt::createWindow(const WindowSpec& spec, const WindowEvents& events) {
  if (const Status possible = canOpenWindow(); !possible) return possible.error();
  if (!qApp) {
    static int count = 1;  // the application keeps referring to both
    static char name[] = "lorivan";
    static char* arguments[] = {name, nullptr};
    application_ = std::make_unique<QApplication>(count, arguments);
    QApplication::setApplicationName(QStringLiteral("Lorivan"));
    QApplication::setQuitOnLastWindowClosed(false);
    applyLook(*application_);
    nameRoles();
    // The texts of Qt's own dialogs, where they are installed.
    dialogTexts_ = std::make_unique<QTranslator>();
    if (dialogTexts_->load("qtbase_" + toQString(language_),
                           QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
      QCoreApplication::installTranslator(dialogTexts_.get());
  }
  display_.reset();
  return makeWindowQt(spec, events);
}

}  // namespace lorivan
