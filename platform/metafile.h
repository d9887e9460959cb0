// The drawing contract of a metafile: vector paths that drawing programs can edit.
#pragma once

#include <span>
#include <string>

#include "base/colour.h"
#include "base/result.h"
#include "platform/surface.h"

namespace lorivan {

/// What a metafile covers, whatever is drawn: everything from (0, 0) to (width, height).
struct MetafileSize {
  int width = 0, height = 0;  // its units, which can be far finer than a screen's pixels
  double millimetres = 0;     // its width when placed in a document
};

/// One metafile being drawn. Units are those of its MetafileSize, y downwards.
class Metafile {
 public:
  virtual ~Metafile() = default;

  /// A path through all points, stroked with a solid pen with round ends and corners, as wide as `width`
  /// units. Fewer than two points draw nothing.
  virtual void strokePath(std::span<const PointI> points, bool closed, int width, Colour colour) = 0;

  /// Nothing of what is drawn afterwards shows outside of these corners.
  virtual void clip(PointI upperLeft, PointI lowerRight) = 0;

  /// The bytes of the whole file, or the first fault since it was begun. Nothing is drawn afterwards.
  virtual Result<std::string> finish() = 0;
};

}  // namespace lorivan
