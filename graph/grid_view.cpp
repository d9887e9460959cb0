#include "graph/grid_view.h"

namespace lorivan {
namespace {

constexpr double kLeastZoom = 0.02;  // of a single point

}  // namespace

GridBox lineBox(const KnotGraph& graph) {
  GridBox box;
  for (int j = 0; j <= graph.LastLine; ++j) {
    const GridLine& line = graph.Lines[j];
    box.add(line.X1, line.Y1);
    box.add(line.X2, line.Y2);
  }
  if (graph.wrap && !box.empty()) setSeams(box, graph.wrap);
  return box;
}

void setSeams(GridBox& box, const Wrap& wrap) {
  box.left = wrap.left;
  box.right = wrap.left + wrap.period;
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

void GridView::fill(const GridBox& box, double marginPixels, double edge) {
  if (box.empty()) return;
  centreX = (box.left + box.right) / 2;
  centreY = (box.bottom + box.top) / 2;
  const double across = kReferenceWidth * (0.5 - edge) - marginPixels;
  const double up = kReferenceHeight * (0.5 - edge) - marginPixels;
  const double x = (box.right - box.left) / 2, y = (box.top - box.bottom) / 2;
  zoom = std::max({x * (kReferenceWidth / 2.0) / (kHalfView * std::max(across, 1.0)),
                   y * (kReferenceHeight / 2.0) / (kHalfView * stretch * std::max(up, 1.0)), kLeastZoom});
}

}  // namespace lorivan
