// The custom shape file ".qzc": surface size, points and lines as text.
#pragma once

#include <string>
#include <string_view>

#include "base/result.h"
#include "custom/custom_shape.h"

namespace lorivan {

inline constexpr std::string_view kShapeFileExtension = "qzc";
inline constexpr std::size_t kMostShapeFileBytes = 1 << 20;

/// The surface's size is stored in twips.
inline constexpr float kTwipsPerUnit = 15;

/// One record on a line, CR LF ends: width and height; number of points; the points; number of lines; the
/// numbers of each line's two points. Deleted slots are written as they are. A smooth shape has the word
/// "smooth" behind its lines, which other readers pass over.
std::string writeShapeText(const CustomShape& shape);

/// Values may be separated by any mix of blanks, tabs, commas and line ends; a byte order mark is passed
/// over. The error says what is wrong and in which line of the text: a count that does not fit, a number that
/// is none, a point number out of range.
Result<CustomShape> readShapeText(std::string_view text);

/// As above, from and to a file. The reading error starts with the file's name.
Result<CustomShape> loadShapeFile(const std::string& path);
Status saveShapeFile(const std::string& path, const CustomShape& shape);

}  // namespace lorivan
