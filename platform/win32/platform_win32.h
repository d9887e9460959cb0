// The Windows platform object.
#pragma once

#include "platform/platform.h"
#include "platform/win32/gdi_plus.h"
#include "platform/win32/services.h"
#include "platform/win32/settings.h"

namespace lorivan::win32 {

class PlatformWin32 final : public Platform {
 public:
  /// `application` names the place of the settings and of the user's files.
  explicit PlatformWin32(std::string_view application = "Lorivan");

  Result<std::unique_ptr<Surface>> createSurface(int width, int height) override;
  Result<std::string> encodePicture(Surface& picture, PictureFormat format) override;
  Result<std::unique_ptr<Surface>> loadPicture(const std::string& path, int width, int height) override;
  Result<std::unique_ptr<Metafile>> createMetafile(const MetafileSize& size) override;
  Settings& settings() override { return settings_; }
  Clipboard& clipboard() override { return clipboard_; }
  Clock& clock() override { return clock_; }
  Help& help() override { return help_; }
  std::string programFolder() const override { return folder_; }
  std::string userFolder() override { return makeUserFolder(application_); }
  std::string documentsFolder() override { return win32::documentsFolder(); }
  std::unique_ptr<FileClaim> claim(const std::string& path) override { return claimFile(path); }
  bool errorsGoToTerminal() const override;
  std::string language() const override { return userLanguage(); }
  Status canOpenWindow() const override;
  Result<std::unique_ptr<Window>> createWindow(const WindowSpec& spec, const WindowEvents& events) override;

 private:
  Status graphics() const;

  PlusSession plus_;
  std::string application_, folder_;
  RegistrySettings settings_;
  SystemClipboard clipboard_;
  SystemClock clock_;
  BrowserHelp help_;
};

}  // namespace lorivan::win32
