#include "design/placed_surface.h"

#include <array>

namespace lorivan {

std::span<const PointI> PlacedSurface::moved(std::span<const PointI> points) {
  points_.clear();
  for (const PointI& p : points) points_.push_back(moved(p));
  return points_;
}

void PlacedSurface::clear(Colour background) {
  background_ = background;
  if (background == whole_.background()) return;
  const std::array<PointI, 4> corners = {{{0, 0}, {width_, 0}, {width_, height_}, {0, height_}}};
  fillPolygon(corners, background);
}

void PlacedSurface::wideCurve(const WideCurve& curve) {
  curve_.clear();
  for (const PointF& p : curve.bezier) curve_.push_back(moved(p));
  WideCurve there = curve;
  there.bezier = curve_;
  whole_.wideCurve(there);
}

void PlacedSurface::fillPath(std::span<const std::vector<PointF>> contours, Colour colour) {
  contours_.resize(contours.size());
  for (std::size_t i = 0; i < contours.size(); ++i) {
    contours_[i].clear();
    for (const PointF& p : contours[i]) contours_[i].push_back(moved(p));
  }
  whole_.fillPath(contours_, colour);
}

PixelBlock PlacedSurface::lendPixels() {
  PixelBlock block = whole_.lendPixels();
  const bool inside = corner_.x >= 0 && corner_.y >= 0 && corner_.x + width_ <= block.width &&
                      corner_.y + height_ <= block.height;
  if (block.pixels == nullptr || !inside) return {};
  block.pixels += static_cast<std::ptrdiff_t>(corner_.y) * block.stride + corner_.x;
  block.width = width_;
  block.height = height_;
  return block;
}

}  // namespace lorivan
