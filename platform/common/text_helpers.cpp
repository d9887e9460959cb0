#include "platform/common/text_helpers.h"

#include <algorithm>
#include <array>

#include "base/numbers.h"
#include "base/sink.h"
#include "base/texts.h"

namespace lorivan {
namespace {

char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

bool isLetterOrDigit(char c) { return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); }

/// The key's usual spelling; empty when there is no such key.
std::string keyName(std::string_view text) {
  static constexpr std::array<std::string_view, 13> named = {
      "Del", "Ins", "Home", "End", "PgUp", "PgDn", "Esc", "Enter", "Space", "Left", "Right", "Up", "Down"};
  if (text.size() == 1 && isLetterOrDigit(upper(text[0]))) return {upper(text[0])};
  const std::string low = lowerCase(text);
  for (const std::string_view name : named)
    if (lowerCase(name) == low) return std::string(name);
  if (low.starts_with('f'))
    if (const auto number = parseInteger(low.substr(1), 1, 12))
      return std::string("F").append(std::to_string(*number));
  return {};
}

/// Calls `each` with every part of the text between separators, empty parts left out.
template <class Each>
void forParts(std::string_view text, char separator, Each each) {
  while (!text.empty()) {
    const auto end = std::min(text.find(separator), text.size());
    if (end > 0) each(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

}  // namespace

std::string withoutMnemonic(std::string_view caption) {
  std::string out;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == '&' && i + 1 < caption.size()) ++i;
    out += caption[i];
  }
  return out;
}

char mnemonicOf(std::string_view caption) {
  for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
    if (caption[i] != '&') continue;
    if (caption[i + 1] != '&') return upper(caption[i + 1]);
    ++i;
  }
  return 0;
}

std::optional<Shortcut> parseShortcut(std::string_view text) {
  Shortcut shortcut;
  bool known = true;
  forParts(text, '+', [&](std::string_view part) {
    const std::string low = lowerCase(trimmed(part));
    known = known && shortcut.key.empty();  // nothing may follow the key
    if (low == "ctrl") {
      shortcut.ctrl = true;
    } else if (low == "shift") {
      shortcut.shift = true;
    } else if (low == "alt") {
      shortcut.alt = true;
    } else {
      shortcut.key = keyName(low);
      known = known && !shortcut.key.empty();
    }
  });
  if (!known || shortcut.key.empty()) return std::nullopt;
  return shortcut;
}

std::string shortcutText(const Shortcut& shortcut) {
  std::string text;
  if (shortcut.ctrl) text += "Ctrl+";
  if (shortcut.alt) text += "Alt+";
  if (shortcut.shift) text += "Shift+";
  return text + shortcut.key;
}

std::string shortcutLabel(const Shortcut& shortcut) {
  std::string text;
  if (shortcut.ctrl) text += tr("Ctrl+");
  if (shortcut.alt) text += tr("Alt+");
  if (shortcut.shift) text += tr("Shift+");
  return text + shortcut.key;
}

std::string filePatterns(std::string_view extensions, std::string_view separator) {
  std::string out;
  forParts(extensions, ' ', [&](std::string_view extension) {
    if (!out.empty()) out += separator;
    out.append("*.").append(extension);
  });
  return out;
}

std::string filterText(std::string_view label, std::string_view extensions) {
  return std::string(label).append(" (").append(filePatterns(extensions, " ")).append(")");
}

InitialName splitInitialName(std::string_view path) {
  const std::string_view name = fileNameOf(path);
  std::string_view folder = path.substr(0, path.size() - name.size());
  const bool isRoot = folder.size() == 1 || folder.ends_with(":\\") || folder.ends_with(":/");
  if (!folder.empty() && !isRoot) folder.remove_suffix(1);
  const bool isPattern = name.find_first_of("*?") != std::string_view::npos;
  return {std::string(folder), isPattern ? std::string() : std::string(name)};
}

}  // namespace lorivan
