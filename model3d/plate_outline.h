// The outline of a base plate: a convex polygon round the knot with rounded corners.
#pragma once

#include <vector>

#include "model3d/tube_model.h"

namespace lorivan {

/// The convex hull of places seen from above, widened by a margin all round.
class PlateOutline {
 public:
  PlateOutline() = default;
  PlateOutline(const std::vector<Vec3>& places, float margin);

  /// Distance to the outline, negative inside.
  struct Edge {
    float distance = 0;
    float outX = 0, outY = 0;  // unit direction outwards
  };
  Edge at(float x, float y) const;

 private:
  std::vector<Vec3> corners_;  // counter-clockwise; z is not used
  float margin_ = 0;
};

}  // namespace lorivan
