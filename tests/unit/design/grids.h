// Documents that the tests of design/ begin with.
#pragma once

#include <string>

#include "design/edits.h"

namespace lorivan {

inline Document gridOf(Shape shape, int columns, int rows) {
  Document document;
  document.fields.text(Param::XNo) = std::to_string(columns);
  document.fields.text(Param::YNo) = std::to_string(rows);
  return *chooseShape(document, shape);
}

}  // namespace lorivan
