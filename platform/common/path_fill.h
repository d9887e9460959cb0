// Anti-aliased filling of shapes, the same on every system.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "base/colour.h"
#include "platform/surface.h"

namespace lorivan {

/// Whether coordinates are finite and lie within a million pixels.
bool isWithinReach(PointF p);

/// Shapes that wait until they are painted together, which spares large pictures most of their way to and
/// from memory. A pixel takes the exact share of its area that a shape has, if that is no line; each shape
/// lies on those before.
class PathFiller {
 public:
  /// What the contours surround (see Surface::fillPath). Those of one call that touch along a line leave no
  /// seam. Points may lie anywhere within a million pixels; what is not finite or further away gives false,
  /// and nothing of the shape is painted.
  bool add(std::span<const std::vector<PointF>> contours, Colour colour);
  /// The same with straight sides. Each polygon closes itself; all points lie within reach.
  void addPolygons(std::span<const std::vector<PointF>> polygons, Colour colour);

  /// How a line is drawn: half the width of the band, in pixels, and of the black one beneath it, which is no
  /// less; whether it ends flat, or round.
  struct LineLook {
    float half, outer;
    bool flat;
  };
  /// A band along straight pieces, round where it turns. A pixel's share is told by how near it lies to the
  /// line. All points lie within reach.
  void addLine(std::span<const PointF> points, const LineLook& look, Colour colour);

  bool empty() const { return layers_.empty(); }
  /// Paints into premultiplied pixels; nothing waits afterwards.
  void paint(const PixelBlock& target);
  void forget();

  struct Edge {  // in coordinates with the top left pixel's corner at (0, 0)
    float x0, y0, x1, y1;
  };
  struct Layer {
    std::size_t begin, end;  // of its edges
    std::uint32_t argb;
    float reach;    // pixels from a line that are painted; 0 where the edges surround a shape
    LineLook line;  // where the edges are pieces of one
  };

 private:
  void addLayer(Colour colour, float reach, const LineLook& line);

  std::vector<Edge> edges_;
  std::vector<Layer> layers_;
};

}  // namespace lorivan
