// Drawings, and what the loops of a custom shape enclose.
#pragma once

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "custom/custom_shape.h"
#include "custom/geometry.h"

namespace lorivan {

/// A DXF file; blanks stand for its line ends.
inline std::string dxf(const std::string& entities) {
  std::string text = "0 SECTION 2 ENTITIES " + entities + " 0 ENDSEC 0 EOF ";
  std::ranges::replace(text, ' ', '\n');
  return text;
}

inline Spot pointOf(const CustomShape& shape, int point) {
  return {shape.ShapeX[point], shape.ShapeY[point]};
}

/// Areas of the loops, which must be made as one line after the other.
inline std::vector<double> areasOf(const CustomShape& shape) {
  std::vector<double> areas;
  bool begins = true;
  for (int line = 1; line <= shape.ShapeLineCount; ++line) {
    const int a = shape.lineEnd(0, line), b = shape.lineEnd(1, line);
    if (begins) areas.push_back(0);
    areas.back() += cross(pointOf(shape, a), pointOf(shape, b)) / 2;
    begins = b < a;
  }
  for (double& area : areas) area = std::fabs(area);
  return areas;
}

/// Whether every point has a mirror image among the points, to a hundredth of a unit.
inline bool isMirrored(const CustomShape& shape, double axis) {
  for (int i = 1; i <= shape.ShapePointCount; ++i) {
    const Spot p = pointOf(shape, i), image{2 * axis - p.x, p.y};
    bool found = false;
    for (int j = 1; j <= shape.ShapePointCount && !found; ++j)
      found = distance(image, pointOf(shape, j)) < 0.01;
    if (!found) return false;
  }
  return shape.ShapePointCount > 0;
}

}  // namespace lorivan
