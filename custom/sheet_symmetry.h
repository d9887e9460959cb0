// Drawing in symmetry: where the images of a place on the sheet lie.
#pragma once

#include <vector>

#include "custom/geometry.h"
#include "custom/symmetry.h"
#include "graph/line_symmetry.h"

namespace lorivan {

inline constexpr int kMostSheetTurns = 12;

/// Turns and mirrorings about a centre, of any number of turns.
class SheetSymmetry {
 public:
  /// Without symmetry.
  SheetSymmetry() : maps_(1) {}
  SheetSymmetry(const Symmetry& chosen, Spot centre);

  /// The first is the identity.
  const Symmetries& maps() const { return maps_; }
  bool isNone() const { return maps_.size() == 1; }

  /// The place on an axis, or the centre, that stands for a place whose images come within `reach` of it.
  Spot ontoAxis(Spot p, double reach) const;
  /// The place nearest to `p` that stays where it is by whatever leaves `fixed` where that is.
  Spot heldLike(Spot p, Spot fixed) const;
  /// The place, drawn towards the centre until all its images lie within a box.
  Spot within(Spot p, Spot low, Spot high) const;

  /// What to show: lines from the centre, mirrors on both sides of it, turns as rays. Directions of length 1.
  std::vector<Spot> rays() const;

 private:
  Spot centre_;
  Symmetries maps_;
};

}  // namespace lorivan
