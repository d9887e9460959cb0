// Rings of a swept tube where it turns towards z: there the cross-section swings round, or has no size at
// all.
#pragma once

#include <vector>

#include "model3d/m3ops.h"
#include "model3d/tube_model.h"

namespace lorivan {

/// A ring is centre + a sin(phi) + b cos(phi), with phi = 0 at side 0.
struct RingFrame {
  Triple a, b;
};

/// Frames of all rings of a strand. Rings that the sweep gave no radius get a frame that follows from the one
/// before them; `repaired` names them, counted from the strand's first ring.
std::vector<RingFrame> ringFrames(const TubeModel& model, const TubeStrand& strand,
                                  std::vector<int>& repaired);

/// The corner of a ring that has this frame.
Vec3 onRing(const TubeModel& model, int ring, const RingFrame& frame, int side);

/// The side of ring `two` that lies nearest to side 0 of ring `one`, over all sides taken together.
int nearestSide(const RingFrame& one, const RingFrame& two, int sides, double radius);

/// Fills rings without radius, and joins every side of a ring to the side of the next one that lies nearest,
/// so that no tube is wrung between two rings. Nothing changes where the sections follow each other.
void joinRings(TubeModel& model);

}  // namespace lorivan
