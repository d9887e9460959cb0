#include "unit/export/sample_knots.h"

#include <cmath>

#include "knot_maker.h"

namespace lorivan {

TubeModel torus(float ringRadius, float tubeRadius, int count, int sides) {
  std::vector<Vec3> line;
  for (int i = 0; i < count; ++i) {
    const double turn = kTwoPi * i / count;
    line.push_back({static_cast<float>(ringRadius * std::cos(turn)),
                    static_cast<float>(ringRadius * std::sin(turn)), 0});
  }
  return sweptTube({line}, sides, tubeRadius);
}

SampleKnot standardKnot(Shape shape, int xNo, int yNo, const TubeSettings& tube) {
  const MadeKnot made = makeKnot(fieldsOf(shape, xNo, yNo));
  return {builtTube(*made.store, tube), made.curve};
}

}  // namespace lorivan
