#include "model3d/marks.h"

#include <cmath>

#include "base/numbers.h"
#include "model3d/rings.h"
#include "model3d/tube_builder.h"

namespace lorivan {
namespace {

constexpr int kRings = 32;
constexpr float kHoop = 2.5F, kThickness = 0.2F;  // radii in radii of the model's tubes

/// Hoops in the planes of x and y, and of x and z.
void addHoops(const Vec3& place, float radius, TubeModel& hoops) {
  for (const bool upright : {false, true}) {
    TubeStrand strand;
    strand.slot = 1;
    strand.factors = {1, 0, 0};
    strand.firstRing = static_cast<int>(hoops.centres.size());
    strand.ringCount = kRings;
    for (int i = 0; i < kRings; ++i) {
      // Half a step on, so that no part of the upright hoop runs along z, where tubes have no section.
      const double turn = kTwoPi * (i + 0.25) / kRings;
      const auto across = radius * static_cast<float>(std::cos(turn));
      const auto up = radius * static_cast<float>(std::sin(turn));
      hoops.centres.push_back({place.x + across, place.y + (upright ? 0 : up), place.z + (upright ? up : 0)});
    }
    hoops.strands.push_back(strand);
  }
}

}  // namespace

TubeModel withMarks(const TubeModel& model, std::span<const Vec3> places) {
  TubeModel hoops;
  hoops.sides = model.sides;
  hoops.radius = kThickness * model.radius;
  for (const Vec3& place : places) addHoops(place, kHoop * model.radius, hoops);
  TubeModel marked = model;
  if (!sweepTube(hoops) || model.QuadCount + hoops.QuadCount > kMostQuads) return marked;
  joinRings(hoops);
  for (TubeStrand strand : hoops.strands) {
    strand.firstRing += static_cast<int>(model.centres.size());
    marked.strands.push_back(strand);
  }
  marked.centres.insert(marked.centres.end(), hoops.centres.begin(), hoops.centres.end());
  marked.vertices.insert(marked.vertices.end(), hoops.vertices.begin(), hoops.vertices.end());
  marked.joins.resize(model.centres.size());
  marked.joins.insert(marked.joins.end(), hoops.joins.begin(), hoops.joins.end());
  marked.QuadCount += hoops.QuadCount;
  return marked;
}

}  // namespace lorivan
