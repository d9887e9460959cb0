// Points of the plane, as drawing and computing share them.
#pragma once

#include <cstdint>

namespace lorivan {

struct PointF {
  float x = 0, y = 0;
};

struct PointI {
  std::int32_t x = 0, y = 0;
};

}  // namespace lorivan
