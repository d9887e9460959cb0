// The closed loops of a custom shape, for filling them with cells.
//
// All in grid units, y up: a cell that is square there is one that knots are made of, whatever the stretch of
// the picture.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <vector>

#include "custom/custom_shape.h"
#include "custom/geometry.h"
#include "graph/grid_view.h"

namespace lorivan {

struct OutlineSide {
  Spot a, b;
};

/// A place where the outline turns sharply.
struct OutlineCorner {
  Spot at;
  double turn = 0;  // degrees, 0 is straight on
};

class Outline {
 public:
  /// From the live lines of a shape. Lines that close no loop are left out; where loops share lines, what
  /// lies inside the outer one counts as one area. Fails when no loop is closed. With `within`, a place in
  /// shape units, only the region that it lies in: what closed loops round it, and within that, leave free.
  static Result<Outline> of(const CustomShape& shape, const ShapeMapping& mapping,
                            std::optional<Spot> within = {});

  explicit Outline(std::vector<OutlineSide> sides);

  std::span<const OutlineSide> sides() const { return sides_; }
  const GridBox& box() const { return box_; }

  /// Where the level line at height y passes the outline, in ascending order: an even number of places.
  /// Inside lies between the first and the second, the third and the fourth ...
  std::vector<double> crossingsAt(double y) const;
  bool contains(Spot p) const;

  /// Numbers of the sides that come within `reach` of a spot.
  std::vector<int> sidesNear(Spot p, double reach) const;
  /// The nearest spot of the outline on some of its sides; nothing when there are none.
  std::optional<Spot> nearest(Spot p, std::span<const int> among) const;
  /// The number of the side nearest to a spot.
  int nearestSide(Spot p) const;

  /// For each side the number of one side of its part; loops that touch or cross are one part.
  std::vector<int> parts() const;

  /// Corners that turn by `leastTurn` degrees or more, as seen over `span` to both sides, at least `span`
  /// apart, the sharpest first.
  std::vector<OutlineCorner> corners(double span, double leastTurn) const;

 private:
  std::vector<OutlineSide> sides_;
  GridBox box_;
};

}  // namespace lorivan
