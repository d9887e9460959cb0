// What holds for every custom shape.
#pragma once

#include "custom/shape_file.h"
#include "fuzz.h"

namespace lorivan::fuzz {

inline void requireStored(const CustomShape& shape) {
  const auto again = readShapeText(writeShapeText(shape));
  require(static_cast<bool>(again), "a shape that was written can be read");
  require(*again == shape, "writing and reading change nothing in a shape");
}

/// A shape made from another program's lines: within the tables and the surface.
inline void requireFitted(const CustomShape& shape) {
  require(shape.ShapePointCount <= kMostShapePoints && shape.ShapeLineCount <= kMostShapeLines,
          "the shape's tables hold it");
  require(shape.ShapeLineCount > 0, "there is something to draw");
  for (int point = 1; point <= shape.ShapePointCount; ++point) {
    const auto k = static_cast<std::size_t>(point);
    require(shape.ShapeX[k] >= 0 && shape.ShapeX[k] <= shape.surfaceWidth, "points lie on the surface");
    require(shape.ShapeY[k] >= 0 && shape.ShapeY[k] <= shape.surfaceHeight, "points lie on the surface");
  }
  for (int line = 1; line <= shape.ShapeLineCount; ++line)
    require(shape.lineIsLive(line) && shape.lineEnd(0, line) != shape.lineEnd(1, line),
            "lines join two points");
  requireStored(shape);
}

}  // namespace lorivan::fuzz
