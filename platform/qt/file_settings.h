// Settings in a text file of the user's configuration folder:
//   [Section]
//   key=value
// with "\" before a backslash, a line end ("\n", "\r") or, in names, one of = [ ] #.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "platform/services.h"

namespace lorivan {

using SettingsTable = std::map<std::string, std::map<std::string, std::string>>;

/// Lines that are damaged, are not UTF-8 or stand before any section are left out.
SettingsTable parseSettings(std::string_view text);
std::string printSettings(const SettingsTable& table);

class FileSettings final : public Settings {
 public:
  /// `path` is the file; it and its folder need not exist. Nothing is read before the first use.
  explicit FileSettings(std::string path) : path_(std::move(path)) {}

  std::string read(std::string_view section, std::string_view key, std::string_view fallback) const override;
  void write(std::string_view section, std::string_view key, std::string_view value) override;
  Status flush() override;

 private:
  SettingsTable& table() const;

  std::string path_;
  mutable SettingsTable table_;
  mutable bool loaded_ = false;
  bool changed_ = false;
};

/// The user's settings file: $XDG_CONFIG_HOME/Lorivan/settings.ini, by default below ~/.config.
std::string userSettingsPath();

}  // namespace lorivan
