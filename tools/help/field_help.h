// The sentences of the help pages that belong to rows of the program's tables.
#pragma once

#include <span>
#include <string_view>

namespace lorivan {

struct FieldHelp {
  std::string_view group;          // name of the list on the pages that the field stands in
  std::string_view field;          // a parameter's or check box's own name
  std::string_view text;           // HTML
  std::string_view pictures = {};  // values shown in pictures, "2 4 7": pictures/FIELD-VALUE.png
};

/// Every parameter and check box once, in the order of the pages.
std::span<const FieldHelp> fieldHelp();

struct FormatHelp {
  std::string_view extension;
  std::string_view tools;  // what opens it
  std::string_view text;   // HTML
};

/// One row for each extension that the program may write.
std::span<const FormatHelp> formatHelp();

}  // namespace lorivan
