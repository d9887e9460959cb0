// Translations as PO files hold them: msgctxt, msgid, msgid_plural and msgstr with their quoted lines.
#pragma once

#include <string_view>

#include "base/result.h"
#include "base/texts.h"

namespace lorivan {

inline constexpr std::size_t kLargestPoFile = std::size_t{4} << 20, kMostPoEntries = 20'000;

/// The texts of a PO file. Entries that are not translated, or marked as fuzzy, are left out. The error names
/// the line: "line 7: ...".
Result<TextTable> readPo(std::string_view file, TextTable::PluralRule rule);

}  // namespace lorivan
