// Fills four-cornered polygons into a pixel block, later ones over earlier ones, with smooth edges: it fills
// on a finer grid of samples and reduces that to pixels. Polygons that share an edge leave no sample between
// them.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "base/colour.h"
#include "base/pixels.h"
#include "base/points.h"

namespace lorivan {

/// Corners in grid lines: grid line 0 is the outer edge of the first sample. Filled by the even-odd rule, so
/// a polygon may cross itself.
struct GridQuad {
  std::array<PointI, 4> corners;
  std::uint32_t argb = 0;
};

/// Which ways an outline turns at its corners, y down. Neither: it has no area. Both: it is not convex.
struct Turns {
  bool left = false, right = false;
};
Turns turnsOf(const std::array<PointI, 4>& corners);

/// Keeps its memory from one picture to the next.
class Painter {
 public:
  /// Samples for each pixel edge: 4 for pictures of about the reference size, down to 2 for large ones.
  static int samplesFor(int width, int height);

  /// Paints quadAt(0) to quadAt(count - 1) on the background. `least` and `most` are the extremes of all
  /// corners. Pictures with very many samples are painted in bands, and quadAt is called once for each band.
  /// A transparent background leaves straight (not premultiplied) alpha in the target.
  template <class QuadAt>
  void paint(PixelBlock target, Colour background, bool transparent, PointI least, PointI most, int count,
             QuadAt&& quadAt) {
    begin(target, background, transparent, least, most);
    while (nextBand()) {
      for (int rank = 0; rank < count; ++rank) fill(quadAt(rank));
      reduceBand();
    }
  }

 private:
  void begin(PixelBlock target, Colour background, bool transparent, PointI least, PointI most);
  bool nextBand();
  void fill(const GridQuad& quad);
  void fillSmallConvex(const GridQuad& quad, int left, int top, int bottom);
  void fillAny(const GridQuad& quad, int top, int bottom);
  void reduceBand();
  template <int samples>
  void reduceRow(int row);

  PixelBlock target_;
  std::uint32_t background_ = 0;
  bool transparent_ = false;
  int samples_ = 1;
  int left_ = 0, right_ = 0, bottom_ = 0;  // pixels that may be painted
  int bandTop_ = 0, bandBottom_ = 0;       // pixel rows of the band
  int gridLeft_ = 0, gridTop_ = 0, gridWidth_ = 0, gridHeight_ = 0;
  std::vector<std::uint32_t> grid_;
  std::vector<std::uint32_t> redBlue_, alphaGreen_;  // column sums, two 16-bit parts each
};

}  // namespace lorivan
