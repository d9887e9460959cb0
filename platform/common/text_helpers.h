// Captions, shortcuts and file-dialog texts: what every back end has to take apart.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lorivan {

/// The caption without its mnemonic mark: "&Save && close" gives "Save & close".
std::string withoutMnemonic(std::string_view caption);

/// The mnemonic letter of a caption in upper case, 0 without one.
char mnemonicOf(std::string_view caption);

/// A shortcut taken apart: "Ctrl+Shift+F1" has key "F1". Keys are a letter or digit in upper case, "F1" to
/// "F12", or one of Del, Ins, Home, End, PgUp, PgDn, Esc, Enter, Space, Left, Right, Up, Down.
struct Shortcut {
  bool ctrl = false, shift = false, alt = false;
  std::string key;
};

/// Nothing for an empty text or one that is no shortcut. Case does not count.
std::optional<Shortcut> parseShortcut(std::string_view text);

/// The text to show in a menu: "Ctrl+Shift+F1".
std::string shortcutText(const Shortcut& shortcut);
/// The same with the keys' names in the window's language: "Strg+Umschalt+F1".
std::string shortcutLabel(const Shortcut& shortcut);

/// "bmp png jpg" as patterns with a separator between them: "*.bmp;*.png;*.jpg".
std::string filePatterns(std::string_view extensions, std::string_view separator);

/// The line shown in a file dialog: "Pictures (*.bmp *.png)".
std::string filterText(std::string_view label, std::string_view extensions);

/// A dialog's initial name in two: folder (without a separator at its end, unless it is the root) and name. A
/// pattern such as "*.qzd" is no name.
struct InitialName {
  std::string folder, name;
};
InitialName splitInitialName(std::string_view path);

}  // namespace lorivan
