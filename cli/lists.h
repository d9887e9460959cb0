// Texts in columns: what --list prints.
#pragma once

#include <string>
#include <string_view>

namespace lorivan {

/// Appends the text and blanks up to the column's width; at least one.
void appendColumn(std::string& out, std::string_view text, std::size_t width);

/// What --list prints of "parameters", "presets", "shapes" or "formats".
std::string listText(const std::string& what);

}  // namespace lorivan
