// The Qt back end. Drawing, pictures, settings and the clock need neither a display nor an application
// object; one is made with the window.
#pragma once

#include <memory>
#include <string>

#include "platform/platform.h"

class QApplication;
class QTranslator;

namespace lorivan {

class XConnection;

class PlatformQt final : public Platform {
 public:
  /// `settingsPath` is the settings file.
  explicit PlatformQt(std::string settingsPath);
  ~PlatformQt() override;

  Result<std::unique_ptr<Surface>> createSurface(int width, int height) override;
  Result<std::string> encodePicture(Surface& picture, PictureFormat format) override;
  Result<std::unique_ptr<Surface>> loadPicture(const std::string& path, int width, int height) override;
  Result<std::unique_ptr<Metafile>> createMetafile(const MetafileSize& size) override;
  Settings& settings() override { return *settings_; }
  Clipboard& clipboard() override { return *clipboard_; }
  Clock& clock() override { return *clock_; }
  Help& help() override { return *help_; }
  std::string programFolder() const override;
  std::string userFolder() override;
  std::string documentsFolder() override;
  std::unique_ptr<FileClaim> claim(const std::string& path) override;
  bool errorsGoToTerminal() const override;
  std::string language() const override;
  void setLanguage(std::string_view code) override { language_ = code; }
  Status canOpenWindow() const override;
  Result<std::unique_ptr<Window>> createWindow(const WindowSpec& spec, const WindowEvents& events) override;

 private:
  // Held until the application has its own: a server without a desktop starts anew when nobody is left, and
  // turns down whoever comes just then.
  mutable std::unique_ptr<XConnection> display_;
  std::unique_ptr<QApplication> application_;
  std::unique_ptr<QTranslator> dialogTexts_;
  std::string language_;
  std::unique_ptr<Settings> settings_;
  std::unique_ptr<Clipboard> clipboard_;
  std::unique_ptr<Clock> clock_;
  std::unique_ptr<Help> help_;
};

}  // namespace lorivan
