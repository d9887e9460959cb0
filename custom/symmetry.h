// Ways in which an outline is its own image, so that what fills it can be as symmetrical.
#pragma once

#include <cmath>
#include <cstddef>
#include <span>
#include <vector>

#include "base/points.h"
#include "custom/geometry.h"
#include "custom/outline.h"

namespace lorivan {

/// A turn or a mirroring about a centre.
struct Isometry {
  double xx = 1, xy = 0, yx = 0, yy = 1;  // x' = xx x + xy y, y' = yx x + yy y
  Spot centre;

  Spot operator()(Spot p) const {
    const double x = p.x - centre.x, y = p.y - centre.y;
    return {centre.x + xx * x + xy * y, centre.y + yx * x + yy * y};
  }
  /// What the isometry lays onto `p`; the inverse of its matrix is the transpose.
  Spot back(Spot p) const {
    const double x = p.x - centre.x, y = p.y - centre.y;
    return {centre.x + xx * x + yx * y, centre.y + xy * x + yy * y};
  }
  /// Whether it lays whole places onto whole places, its centre being whole.
  bool keepsWhole() const { return xx == std::round(xx) && xy == std::round(xy); }
  /// The image of a whole place, where it keeps those.
  PointI operator()(PointI p) const;
};

/// A group: the first is the identity.
using Symmetries = std::vector<Isometry>;

/// The largest group of those that a lattice of squares, or of level rows of triangles, can have that leaves
/// the outline where it is, to within `tolerance`. Its centre is that of the outline's box or, where turns by
/// a third leave the outline in place, theirs.
Symmetries symmetriesOf(const Outline& outline, bool triangles, double tolerance);

/// For numbered spots of a regular pattern the numbers of their images.
class Images {
 public:
  /// `grain` is less than half the least distance between spots, and more than their inexactness.
  Images(std::span<const Spot> spots, const Symmetries& group, double grain);

  /// The spot that `item` is laid onto; -1 when none lies there.
  int of(std::size_t symmetry, int item) const { return images_[symmetry][item]; }
  /// Whether every spot has all its images.
  bool complete() const;
  /// The lowest of an item's images, itself included.
  int leader(int item) const;

  /// Sets the flags of all images of the items whose flags are set.
  void spread(std::vector<bool>& flags) const;

 private:
  std::vector<std::vector<int>> images_;
};

}  // namespace lorivan
