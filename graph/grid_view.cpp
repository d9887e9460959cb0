#include "graph/grid_view.h"

namespace lorivan {

GridBox lineBox(const KnotGraph& graph) {
  GridBox box;
  for (int j = 0; j <= graph.LastLine; ++j) {
    const GridLine& line = graph.Lines[static_cast<std::size_t>(j)];
    box.add(line.X1, line.Y1);
    box.add(line.X2, line.Y2);
  }
  return box;
}

bool GridView::contains(const GridBox& box) const {
  if (box.empty()) return true;
  const double halfHeight = kHalfView * stretch;
  return box.left > -kHalfView && box.right < kHalfView && box.bottom > -halfHeight && box.top < halfHeight;
}

void GridView::zoomToShow(const GridBox& box, double marginPixels) {
  if (box.empty()) return;
  const double acrossReference = kReferenceWidth / 2.0 - marginPixels;
  const double upReference = kReferenceWidth * 0.4 - marginPixels;
  const double x = std::max(-box.left, box.right);
  const double y = std::max(-box.bottom, box.top);
  zoom = std::max({zoom, x * (kReferenceWidth / 2.0) / (kHalfView * acrossReference),
                   y * (kReferenceWidth * 0.4) / (kHalfView * stretch * upReference)});
}

}  // namespace lorivan
