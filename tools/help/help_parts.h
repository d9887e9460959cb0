// The parts of the help pages that are made from the program's tables.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tools/help/help_texts.h"

namespace lorivan {

struct HelpPage {
  std::string_view command;  // the Help menu's, whose text is the page's title
  std::string_view file;
  std::string_view title = {};  // of a page that no command opens
};

/// Every page, in the order in which they link each other.
std::span<const HelpPage> helpPages();

/// Splits at single blanks.
std::vector<std::string> wordsOf(std::string_view text);

/// The text of a menu or command as the window shows it, without the mark before its letter.
std::string shownText(HelpTexts& texts, std::string_view english);

/// What stands in the part of this name on a page; nothing for a name that is not known.
std::string helpPart(HelpTexts& texts, const std::string& name, const HelpPage& page);

}  // namespace lorivan
