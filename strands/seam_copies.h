// A wrapped knot in a flat picture: whatever reaches across the seam is drawn in as many copies, whole
// periods apart, as it takes, and what lies outside of the one period that is shown is left away.
#pragma once

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

#include "strands/knot_curve.h"

namespace lorivan {

/// Calls draw(right) for every number of pixels that something between two places across has to be moved by
/// so that part of it lies between the seams: once, with 0, where nothing is wrapped.
template <class Draw>
void eachCopy(const Seam& seam, double low, double high, Draw&& draw) {
  if (!seam) return draw(0.0);
  if (low > high) return;  // nothing there
  const int first = static_cast<int>(std::ceil((seam.left - high) / seam.width));
  const int last = static_cast<int>(std::floor((seam.right() - low) / seam.width));
  for (int turn = first; turn <= last; ++turn) draw(turn * seam.width);
}

/// From the leftmost to the rightmost of points.
struct Reach {
  double low = 1e30, high = -1e30;
  void add(std::span<const PointF> points) {
    for (const PointF& p : points) {
      low = std::min(low, static_cast<double>(p.x));
      high = std::max(high, static_cast<double>(p.x));
    }
  }
};

std::vector<PointF> movedRight(std::span<const PointF> points, double right);

/// Appends the copies of a shape's contours that a picture needs; the shape is used up.
void appendCopies(const Seam& seam, std::vector<std::vector<PointF>>&& shape,
                  std::vector<std::vector<PointF>>& copies);

/// While it lives, nothing that is drawn stays outside of the period that is shown.
class SeamClip {
 public:
  SeamClip(Surface& surface, const Seam& seam);
  SeamClip(const SeamClip&) = delete;
  SeamClip& operator=(const SeamClip&) = delete;
  ~SeamClip();

 private:
  void eachOutside(const PixelBlock& block, bool keeps);

  Surface& surface_;
  Seam seam_;
  std::vector<std::uint32_t> kept_;  // the pixels outside, of a surface that has pixels
};

}  // namespace lorivan
