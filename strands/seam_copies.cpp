#include "strands/seam_copies.h"

#include <iterator>

namespace lorivan {

std::vector<PointF> movedRight(std::span<const PointF> points, double right) {
  std::vector<PointF> moved(points.begin(), points.end());
  for (PointF& p : moved) p.x = static_cast<float>(p.x + right);
  return moved;
}

void appendCopies(const Seam& seam, std::vector<std::vector<PointF>>&& shape,
                  std::vector<std::vector<PointF>>& copies) {
  if (!seam) return void(std::ranges::move(shape, std::back_inserter(copies)));
  Reach reach;
  for (const auto& contour : shape) reach.add(contour);
  eachCopy(seam, reach.low, reach.high, [&](double right) {
    for (const auto& contour : shape) copies.push_back(movedRight(contour, right));
  });
}

SeamClip::SeamClip(Surface& surface, const Seam& seam) : surface_(surface), seam_(seam) {
  if (!seam_) return;
  if (const PixelBlock block = surface.lendPixels(); block.pixels != nullptr)
    eachOutside(block, true);
  else
    surface.beginClip(seam.left, seam.right());
}

SeamClip::~SeamClip() {
  if (!seam_) return;
  if (const PixelBlock block = surface_.lendPixels(); block.pixels != nullptr)
    eachOutside(block, false);
  else
    surface_.endClip();
}

/// Keeps the pixels whose middles lie outside, or brings them back.
void SeamClip::eachOutside(const PixelBlock& block, bool keeps) {
  constexpr double kEven = 1e-3;  // of a pixel: a seam in the middle of one, wherever it was rounded
  const auto column = [&](double x) {
    return static_cast<int>(std::clamp(std::ceil(x - kEven), 0.0, static_cast<double>(block.width)));
  };
  const int left = column(seam_.left), right = column(seam_.right());
  const auto outside = static_cast<std::size_t>(left + block.width - right);
  if (keeps) kept_.resize(outside * static_cast<std::size_t>(block.height));
  std::uint32_t* kept = kept_.data();
  for (int y = 0; y < block.height; ++y) {
    std::uint32_t* const row = block.pixels + static_cast<std::ptrdiff_t>(y) * block.stride;
    for (const auto& [begin, end] : {std::pair(0, left), std::pair(right, block.width)}) {
      keeps ? std::copy(row + begin, row + end, kept) : std::copy(kept, kept + (end - begin), row + begin);
      kept += end - begin;
    }
  }
}

}  // namespace lorivan
