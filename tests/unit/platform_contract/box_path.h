// Boxes as paths, for tests of surfaces.
#pragma once

#include <vector>

#include "platform/surface.h"

namespace lorivan::contract {

/// With straight sides; a right side left of the left one turns it round.
inline std::vector<PointF> boxPath(float left, float top, float right, float bottom) {
  const PointF corners[] = {{left, top}, {right, top}, {right, bottom}, {left, bottom}, {left, top}};
  std::vector<PointF> path = {corners[0]};
  for (int i = 1; i < 5; ++i) path.insert(path.end(), {corners[i - 1], corners[i], corners[i]});
  return path;
}

}  // namespace lorivan::contract
