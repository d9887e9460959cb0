// Files of a custom shape: what can be read is written and read again without a change.
#include "custom/shape_file.h"

#include "fuzz.h"
#include "known_shape.h"

namespace lorivan::fuzz {

void shapeText(Bytes bytes) {
  const auto shape = readShapeText(textOf(bytes));
  if (!shape) return require(shape.error().kind == ErrorKind::input, "a file that cannot be read is told so");
  requireStored(*shape);
}

}  // namespace lorivan::fuzz
