// The outline of a picture's shape.
#pragma once

#include <vector>

#include "base/pixels.h"
#include "base/result.h"
#include "outlines/few_points.h"

namespace lorivan {

/// Pictures with longer sides are reduced to this many pixels before they are traced.
inline constexpr int kTracedSide = 1000;

struct TracedPicture {
  std::vector<OutlinePiece> loops;  // closed, in units of the picture's pixels from its top left corner
  double grain = 1;                 // side of the pixels that were looked at, in the same units
  std::size_t specks = 0;           // that were left out
  bool lightOnDark = false;
};

/// Follows the border between dark and light: at the grey that parts the picture's greys best, to a fraction
/// of a pixel. The ground is what most of the picture's border shows. Loops of less than a thousandth of the
/// shape's area are specks. Fails on a picture of one shade.
Result<TracedPicture> traceOutline(const PixelBlock& picture);

}  // namespace lorivan
