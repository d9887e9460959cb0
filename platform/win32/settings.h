// Settings in the user's part of the registry, one text value for each key.
#pragma once

#include <string>

#include "platform/services.h"

namespace lorivan::win32 {

class RegistrySettings final : public Settings {
 public:
  /// `application` names the key that the sections stand under.
  explicit RegistrySettings(std::string_view application = "Lorivan");

  std::string read(std::string_view section, std::string_view key, std::string_view fallback) const override;
  void write(std::string_view section, std::string_view key, std::string_view value) override;
  /// Values are in the registry as soon as they are written; tells the first fault since the last call.
  Status flush() override;

 private:
  std::wstring pathOf(std::string_view section) const;

  std::wstring root_;
  Status fault_;
};

}  // namespace lorivan::win32
