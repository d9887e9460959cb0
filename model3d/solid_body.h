// The strands of a model fused to one closed body.
#pragma once

#include "base/result.h"
#include "model3d/solid_field.h"
#include "model3d/triangle_mesh.h"

namespace lorivan {

struct SolidBody {
  TriangleMesh mesh;
  int pieces = 0;     // bodies that hang together
  double volume = 0;  // cubic model units
};

/// Fuses the tubes of the model, whatever its sides: the tubes are round. Hollows without a way out are
/// filled. A model without strands gives an empty body. The error is a limit: too many triangles, or
/// a rounding that reaches too far.
Result<SolidBody> fuse(const TubeModel& model, const SolidShape& shape);

/// How wide the body of a model will be, and how wide the strands' centre lines are.
struct BodyWidth {
  double total = 0, centres = 0;
};
BodyWidth bodyWidth(const TubeModel& model, const SolidShape& shape);

}  // namespace lorivan
