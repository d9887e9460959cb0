#include "platform/common/item_picture.h"

#include <algorithm>
#include <cmath>

namespace lorivan {
namespace {

/// Mean coverage of the old pixels from `left` to `right` and from `top` to `bottom`, parts of them included.
double meanCover(const ItemPicture& picture, double left, double top, double right, double bottom) {
  double sum = 0;
  for (int y = static_cast<int>(top); y < bottom && y < picture.height; ++y) {
    const double tall = std::min<double>(bottom, y + 1) - std::max<double>(top, y);
    for (int x = static_cast<int>(left); x < right && x < picture.width; ++x) {
      const double wide = std::min<double>(right, x + 1) - std::max<double>(left, x);
      sum += tall * wide * picture.cover[y * picture.width + x];
    }
  }
  return sum / ((right - left) * (bottom - top));
}

std::uint32_t tinted(Colour colour, double cover) {
  const auto part = [&](int channel) {
    return static_cast<std::uint32_t>(std::lround(channel * cover / 255));
  };
  return static_cast<std::uint32_t>(std::lround(cover)) << 24 | part(redOf(colour)) << 16 |
         part(greenOf(colour)) << 8 | part(blueOf(colour));
}

}  // namespace

std::vector<std::uint32_t> tintedPicture(const ItemPicture& picture, int width, int height, Colour colour) {
  const auto pixels = static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
  if (width < 1 || height < 1 || picture.width < 1 || picture.height < 1 || picture.cover.size() < pixels)
    return {};
  std::vector<std::uint32_t> made;
  made.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  const double across = 1.0 * picture.width / width, down = 1.0 * picture.height / height;
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x)
      made.push_back(
          tinted(colour, meanCover(picture, x * across, y * down, (x + 1) * across, (y + 1) * down)));
  return made;
}

}  // namespace lorivan
