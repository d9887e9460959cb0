#include "platform/win32/platform_win32.h"

#include "platform/win32/checked.h"
#include "platform/win32/dib_surface.h"
#include "platform/win32/enhanced_metafile.h"
#include "platform/win32/pictures.h"
#include "platform/win32/window_win32.h"

namespace lorivan::win32 {

PlatformWin32::PlatformWin32(std::string_view application)
    : application_(application), folder_(folderOfProgram()), settings_(application), help_(folder_) {}

Status PlatformWin32::graphics() const {
  if (plus_.status()) return {};
  return unwritable("Error loading GDI+!");
}

Result<std::unique_ptr<Surface>> PlatformWin32::createSurface(int width, int height) {
  if (const Status ready = graphics(); !ready) return ready.error();
  auto surface = DibSurface::create(width, height);
  if (!surface) return surface.error();
  return std::unique_ptr<Surface>(std::move(*surface));
}

Result<std::string> PlatformWin32::encodePicture(Surface& picture, PictureFormat format) {
  const auto* surface = dynamic_cast<const DibSurface*>(&picture);
  if (surface == nullptr) return unwritable("this picture has no pixels to save");
  return encodeSurface(*surface, format);
}

Result<std::unique_ptr<Surface>> PlatformWin32::loadPicture(const std::string& path, int width, int height) {
  if (const Status ready = graphics(); !ready) return ready.error();
  auto surface = loadSurface(path, width, height);
  if (!surface) return surface.error();
  return std::unique_ptr<Surface>(std::move(*surface));
}

bool PlatformWin32::errorsGoToTerminal() const {
  DWORD mode = 0;  // only a console has one
  return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

Result<std::unique_ptr<Metafile>> PlatformWin32::createMetafile(const MetafileSize& size) {
  return EnhancedMetafile::create(size);
}

Status PlatformWin32::canOpenWindow() const { return graphics(); }

Result<std::unique_ptr<Window>> PlatformWin32::createWindow(const WindowSpec& spec,
                                                            const WindowEvents& events) {
  if (const Status ready = canOpenWindow(); !ready) return ready.error();
  return WindowWin32::create(spec, events);
}

}  // namespace lorivan::win32
