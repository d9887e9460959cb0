// The table of saved settings: every key, what it holds at a first start, and what in the window it belongs
// to.
#pragma once

#include <span>
#include <string_view>
#include <variant>

#include "design/parameters.h"

namespace lorivan {

inline constexpr std::string_view kSettingsSection = "Settings";
/// Its code, as "de"; empty: the system's.
inline constexpr std::string_view kLanguageKey = "Language";

/// What is kept beside fields, check boxes and colours. Positions are in twips, fifteen to a pixel; a size of
/// 0 is the window's own.
enum class WindowState {
  left,
  top,
  shape,
  gridOn,
  snapOn,
  lastFolder,
  saveFormat,
  fitPicture,
  drawAtOnce,
  width,
  height,
  maximised,
  symmetry,
  saveOptions,
  language
};

inline constexpr int kRecentFiles = 10;

/// Place 0 to 9 in the list of recent files.
struct RecentFile {
  int place = 0;
};

/// Strand colour box 0 to 14.
struct ColourBoxNumber {
  int box = 0;
};

using SettingOwner = std::variant<ColourBoxNumber, WindowState, Param, Check, RecentFile>;

struct SettingRow {
  std::string_view key;
  std::string_view fallback;
  SettingOwner owner;
};

/// All rows, in the order of reading and writing.
std::span<const SettingRow> settingTable();

}  // namespace lorivan
