// What a maker must know of a model before it is made: gaps, contacts, walls, folds, lengths, volume.
#pragma once

#include <span>
#include <vector>

#include "model3d/crossings.h"
#include "model3d/strand_search.h"

namespace lorivan {

/// A length and where it was found. Lengths are model units.
struct FoundLength {
  bool found = false;
  double value = 0;
  Vec3 at;
};

struct Verdict {
  std::vector<double> lengths;  // of each strand
  int pieces = 0;               // strands that touch each other count as one
  int crossings = 0, touching = 0;
  FoundLength clearance;  // least between strands, or parts of one; 0 where tubes run into each other
  FoundLength overlap;    // how deep round tubes run into each other at most; none where they do not
  FoundLength wall;       // least thickness of a tube
  int folds = 0;          // sides of tubes that are turned inwards in bends tighter than the radius
  Vec3 foldAt;            // the first of them
  double volume = 0;      // of all polygonal tubes together; what several share counts for each
};

/// Looks at the tubes as polygons, as mesh files hold them, or as round ones, as a fused body does.
/// `window`: see crossingWindow().
Verdict inspect(const TubeModel& model, std::span<const RingCrossing> crossings, int window, TubeForm form);

/// Tubes nearer to each other than this, in model units, touch.
inline constexpr float kTouch = 1e-5F;

/// The contacts alone. Tubes that are nearer than `together` count as touching.
struct Contacts {
  int pieces = 0, crossings = 0, touching = 0;
};
Contacts contactsOf(const TubeModel& model, std::span<const RingCrossing> crossings, int window,
                    TubeForm form, float together = kTouch);

}  // namespace lorivan
