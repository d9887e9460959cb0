// How grid units stand in the picture.
//
// The picture is always 5 wide to 4 high. x runs from -101 z at its left edge to 101 z at its right, y from
// 101 z s at the top down to -101 z s, where z is the zoom-out and s the vertical stretch factor.
#pragma once

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "graph/graph.h"
#include "platform/surface.h"

namespace lorivan {

inline constexpr double kHalfView = 101;

/// A box in grid units; empty while left > right.
struct GridBox {
  double left = 1e30, bottom = 1e30, right = -1e30, top = -1e30;
  bool empty() const { return left > right; }
  void add(double x, double y) {
    left = std::min(left, x);
    right = std::max(right, x);
    bottom = std::min(bottom, y);
    top = std::max(top, y);
  }
};

/// The box around all lines in use, of any kind; of a wrapped graph from seam to seam.
GridBox lineBox(const KnotGraph& graph);

/// Lets the box of a wrapped graph reach from seam to seam.
void setSeams(GridBox& box, const Wrap& wrap);

struct GridView {
  explicit GridView(float stretchFactor = 0.8F, int pictureWidth = kReferenceWidth)
      : stretch(stretchFactor), width(pictureWidth) {}

  float stretch;                    // s
  int width;                        // of the picture, pixels
  double zoom = 1;                  // z; at least 1 unless the view was made to fill the picture
  double centreX = 0, centreY = 0;  // grid place in the middle of the picture

  int height() const { return heightFor(width); }
  static int heightFor(int pictureWidth) { return std::max(1, toInt32(pictureWidth * 0.8)); }

  /// Factor for every width that is given in pixels of the 500-pixel picture.
  double pixelFactor() const { return static_cast<double>(width) / kReferenceWidth; }
  /// A pen of `referencePixels` at the reference size.
  int penWidth(double referencePixels) const { return std::max(1, toInt32(referencePixels * pixelFactor())); }

  double pixelX(double x) const { return ((x - centreX) / (kHalfView * zoom) + 1) * width / 2.0; }
  double pixelY(double y) const { return (1 - (y - centreY) / (kHalfView * zoom * stretch)) * width * 0.4; }
  PointI pixel(double x, double y) const { return {toInt32(pixelX(x)), toInt32(pixelY(y))}; }
  double gridX(double px) const { return (px * 2.0 / width - 1) * kHalfView * zoom + centreX; }
  double gridY(double py) const { return (1 - py / (width * 0.4)) * kHalfView * zoom * stretch + centreY; }

  /// Whether the box lies within the view at zoom 1 without reaching an edge.
  bool contains(const GridBox& box) const;
  /// Zooms out just enough that the box, with a margin in reference pixels on each side, lies in the picture.
  void zoomToShow(const GridBox& box, double marginPixels);
  /// Brings the box to the middle and zooms in or out until it, with a margin in reference pixels on each
  /// side, leaves `edge`, a part of the picture's width and height, free all round.
  void fill(const GridBox& box, double marginPixels, double edge);
};

}  // namespace lorivan
