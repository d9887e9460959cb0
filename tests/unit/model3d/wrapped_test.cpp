// Rings that are interlaced all round: their tubes close without a seam, a kink or a gap.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "knot_maker.h"
#include "model3d/crossings.h"
#include "model3d/vec3_math.h"
#include "unit/model3d/knots.h"

namespace lorivan {
namespace {

using namespace vec;

TEST(WrappedRing, StrandsCloseAsSmoothlyAsTheyRun) {
  const TubeSettings settings{.polyPoints = 6};
  for (const Shape shape : {Shape::SquareSquare, Shape::SquareTriangle, Shape::Triangle, Shape::Hexagonal,
                            Shape::RegularHexagonal})
    for (const int x : {1, 2, 5, 8}) {
      SCOPED_TRACE(::testing::Message() << static_cast<int>(shape) << ' ' << x);
      const MadeKnot knot = makeKnot(wrappedFieldsOf(shape, x, 3));
      const TubeModel model = built(*knot.store, settings);
      for (const TubeStrand& strand : model.strands) {
        const auto centre = [&](int r) { return model.centres[strand.firstRing + r % strand.ringCount]; };
        const auto bend = [&](int r) { return length(centre(r + 2) - centre(r + 1) * 2 + centre(r)); };
        double longest = 0, sharpest = 0;
        for (int r = 0; r + 2 < strand.ringCount; ++r) {
          longest = std::max<double>(longest, length(centre(r + 1) - centre(r)));
          sharpest = std::max<double>(sharpest, bend(r));
        }
        const int last = strand.ringCount - 1;
        EXPECT_LE(length(centre(last + 1) - centre(last)), 1.01 * longest);
        EXPECT_LE(std::max(bend(last - 1), bend(last)), 1.01 * sharpest + 1e-3);
      }
      EXPECT_EQ(model.curveMinimum.x, -model.curveMaximum.x) << "the seam is half a turn from the middle";
      EXPECT_EQ(ringCrossings(*knot.store, settings).size(),
                static_cast<std::size_t>(countKnot(*knot.graph, *knot.store).crossings));
    }
}

}  // namespace
}  // namespace lorivan
