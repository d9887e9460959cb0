// The bands as plain lines, for drawing programs that want paths to edit: what the metafile is made of.
#pragma once

#include <functional>
#include <span>

#include "strands/knot_drawing.h"

namespace lorivan {

/// One line to be stroked. Corners are round.
struct BandPath {
  std::span<const PointI> points;  // valid during the call only
  bool closed = false;             // a polygon; its last point repeats its first
  int width = 1;
  Colour colour = 0;
  CapStyle caps = CapStyle::round;
};

/// All bands of the knot in drawing order, in whole pixels of the view: two polygons for each strand, then
/// two polylines for each stretch that lies over others.
void forEachBandPath(const KnotCurve& curve, const KnotStyle& style, const GridView& view,
                     const std::function<void(const BandPath&)>& take);

}  // namespace lorivan
