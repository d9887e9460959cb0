#include "design/names.h"

#include "base/texts.h"
#include "design/presets.h"

namespace lorivan {

std::string shapeName(Shape shape) {
  return translated(kShapeContext, shapeTable()[static_cast<std::size_t>(shape)].name);
}

std::string styleName(int style) { return translated(kStyleContext, presetTable()[style].name); }

std::string fieldName(Param p) { return translated(parameterSpec(p).caption); }

std::string checkName(Check c) { return translated(checkSpec(c).caption); }

}  // namespace lorivan
