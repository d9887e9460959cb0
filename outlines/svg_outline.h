// Outlines from SVG drawings.
#pragma once

#include <string_view>

#include "base/result.h"
#include "outlines/curves.h"

namespace lorivan {

/// Paths and basic shapes with their transforms, groups and uses. What is hidden is passed over, and so is a
/// white rectangle as large as the page; texts and pictures are passed over with a note. Open paths that are
/// filled are closed. The error begins with "line 7: ".
Result<Drawing> readSvgOutline(std::string_view text);

}  // namespace lorivan
