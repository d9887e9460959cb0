// Contours with straight sides, and the areas of contours.
#pragma once

#include <vector>

#include "strands/band_outline.h"
#include "strands/cut_drawing.h"

namespace lorivan {

inline BandContour polygon(const std::vector<PointF>& corners) {
  BandContour contour{corners.front()};
  for (std::size_t i = 1; i <= corners.size(); ++i) {
    const PointF a = contour.back(), b = corners[i % corners.size()];
    contour.push_back({a.x + (b.x - a.x) / 3, a.y + (b.y - a.y) / 3});
    contour.push_back({b.x - (b.x - a.x) / 3, b.y - (b.y - a.y) / 3});
    contour.push_back(b);
  }
  return contour;
}

inline double areaOf(const std::vector<BandContour>& contours) {
  double area = 0;
  for (const BandContour& contour : contours) area += contourArea(contour);
  return area;
}

/// In pixels of the view.
inline double areaOf(const CutDrawing& drawing) {
  double area = 0;
  for (const CutStrand& strand : drawing.strands)
    for (const CutShape& shape : strand.shapes) area += areaOf(shape);
  return area;
}

inline std::vector<BandContour> contoursOf(const BandOutlines& outlines) {
  std::vector<BandContour> contours;
  for (const StrandOutline& strand : outlines.strands)
    for (const BandStretch& stretch : strand.stretches)
      contours.insert(contours.end(), stretch.contours.begin(), stretch.contours.end());
  return contours;
}

}  // namespace lorivan
