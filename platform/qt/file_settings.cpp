#include "platform/qt/file_settings.h"

#include <QStandardPaths>
#include <QStringDecoder>
#include <filesystem>
#include <optional>
#include <system_error>

#include "base/numbers.h"
#include "base/sink.h"
#include "platform/qt/convert.h"

namespace lorivan {
namespace {

constexpr std::size_t kMostBytes = 1 << 20;
constexpr std::string_view kNameMarks = "=[]#";

std::string escaped(std::string_view text, std::string_view marks) {
  std::string out;
  for (const char c : text) {
    if (c == '\n' || c == '\r') {
      out += c == '\n' ? "\\n" : "\\r";
      continue;
    }
    if (c == '\\' || marks.find(c) != std::string_view::npos) out += '\\';
    out += c;
  }
  return out;
}

/// Nothing when the text ends in the middle of an escape.
std::optional<std::string> unescaped(std::string_view text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      out += text[i];
      continue;
    }
    if (++i == text.size()) return std::nullopt;
    out += text[i] == 'n' ? '\n' : text[i] == 'r' ? '\r' : text[i];
  }
  return out;
}

bool isText(std::string_view line) {
  if (line.find('\0') != std::string_view::npos) return false;
  QStringDecoder decoder(QStringDecoder::Utf8);
  const QString decoded = decoder(QByteArrayView(line.data(), static_cast<qsizetype>(line.size())));
  return !decoder.hasError();
}

/// The place of the "=" between name and value; npos without one.
std::size_t separatorOf(std::string_view line) {
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '\\')
      ++i;
    else if (line[i] == '=')
      return i;
  }
  return std::string_view::npos;
}

std::string_view nextLine(std::string_view& rest) {
  const auto end = rest.find('\n');
  std::string_view line = rest.substr(0, end);
  rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

}  // namespace

SettingsTable parseSettings(std::string_view text) {
  SettingsTable table;
  std::optional<std::string> section;
  while (!text.empty()) {
    const std::string_view line = nextLine(text);
    if (!isText(line)) continue;
    if (const auto bare = trimmed(line); bare.starts_with('[')) {
      section = bare.ends_with(']') ? unescaped(bare.substr(1, bare.size() - 2)) : std::nullopt;
      continue;
    }
    const auto cut = separatorOf(line);
    if (!section || cut == std::string_view::npos || line.starts_with('#')) continue;
    const auto key = unescaped(line.substr(0, cut));
    const auto value = unescaped(line.substr(cut + 1));
    if (key && value) table[*section][*key] = *value;
  }
  return table;
}

std::string printSettings(const SettingsTable& table) {
  std::string out;
  for (const auto& [section, values] : table) {
    out.append("[").append(escaped(section, kNameMarks)).append("]\n");
    for (const auto& [key, value] : values)
      out.append(escaped(key, kNameMarks)).append("=").append(escaped(value, "")).append("\n");
  }
  return out;
}

SettingsTable& FileSettings::table() const {
  if (loaded_) return table_;
  loaded_ = true;
  if (const auto text = readRegularFile(path_, kMostBytes)) table_ = parseSettings(*text);
  return table_;
}

std::string FileSettings::read(std::string_view section, std::string_view key,
                               std::string_view fallback) const {
  const auto& values = table()[std::string(section)];
  const auto found = values.find(std::string(key));
  return found == values.end() ? std::string(fallback) : found->second;
}

void FileSettings::write(std::string_view section, std::string_view key, std::string_view value) {
  table()[std::string(section)][std::string(key)] = value;
  changed_ = true;
}

Status FileSettings::flush() {
  if (!changed_) return {};
  std::error_code ignored;  // writing the file tells the reason
  const auto status = std::filesystem::status(path_, ignored);
  if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
    return unwritable("cannot write {1}: {2}", path_, tr("it is no file"));
  const QString folder = toQString(path_.substr(0, path_.find_last_of('/')));
  std::filesystem::create_directories(folder.toStdU16String(), ignored);
  Status written = writeFile(path_, printSettings(table_));
  changed_ = !written;
  return written;
}

std::string userSettingsPath() {
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
  return toUtf8(folder) + "/Lorivan/settings.ini";
}

}  // namespace lorivan
