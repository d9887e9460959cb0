// What shapes, styles and fields are called in the window's language.
#pragma once

#include <string>
#include <string_view>

#include "design/parameters.h"
#include "graph/standard_grids.h"

namespace lorivan {

// Contexts that tell translators the meaning of a single word.
inline constexpr std::string_view kShapeContext = "shape", kStyleContext = "style", kShortContext = "short";

std::string shapeName(Shape shape);
/// `style` is a place in presetTable().
std::string styleName(int style);
std::string fieldName(Param p);
std::string checkName(Check c);

}  // namespace lorivan
