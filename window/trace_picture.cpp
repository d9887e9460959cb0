#include "window/trace_picture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "design/outline_files.h"

namespace lorivan {
namespace {

constexpr std::uint32_t kPicturePart = 90;  // of 256; the rest is white

/// The mean of a box of pixels.
std::uint32_t meanOf(const PixelBlock& block, int left, int top, int right, int bottom) {
  std::array<std::uint64_t, 3> sums{};
  for (int y = top; y < bottom; ++y)
    for (int x = left; x < right; ++x) {
      const std::uint32_t pixel = block.pixels[static_cast<std::ptrdiff_t>(y) * block.stride + x];
      for (unsigned k = 0; k < 3; ++k) sums[k] += pixel >> (8 * k) & 0xFF;
    }
  const auto count = static_cast<std::uint64_t>(right - left) * static_cast<std::uint64_t>(bottom - top);
  std::uint32_t mean = 0xFF000000;
  for (unsigned k = 0; k < 3; ++k) mean |= static_cast<std::uint32_t>(sums[k] / count) << (8 * k);
  return mean;
}

/// A pixel 0xFFRRGGBB mixed with white, so that lines drawn over it stand out.
std::uint32_t pale(std::uint32_t pixel) {
  std::uint32_t result = 0xFF000000;
  for (unsigned shift = 0; shift < 24; shift += 8) {
    const std::uint32_t part = pixel >> shift & 0xFF;
    result |= (part * kPicturePart + 255 * (256 - kPicturePart)) / 256 << shift;
  }
  return result;
}

}  // namespace

Status TracePicture::load(Platform& platform, const std::string& path) {
  auto loaded = platform.loadPicture(path, kLargestLoaded.width, kLargestLoaded.height);
  if (!loaded) return loaded.error();
  if ((*loaded)->lendPixels().pixels == nullptr) return unreadable("the picture has no pixels");
  clear();
  picture_ = std::move(*loaded);
  return {};
}

void TracePicture::clear() {
  picture_.reset();
  fitted_ = {};
  width_ = height_ = 0;
}

void TracePicture::fit(int width, int height) {
  const PixelBlock block = picture_->lendPixels();
  fitted_.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  auto out = fitted_.begin();
  for (int y = 0; y < height; ++y) {
    const int top = y * block.height / height;
    const int bottom = std::max(top + 1, (y + 1) * block.height / height);
    for (int x = 0; x < width; ++x) {
      const int left = x * block.width / width;
      const int right = std::max(left + 1, (x + 1) * block.width / width);
      *out++ = pale(meanOf(block, left, top, right, bottom));
    }
  }
  width_ = width;
  height_ = height;
}

void TracePicture::paint(Surface& surface, PixelBox box) {
  const PixelBlock target = surface.lendPixels();
  const int most = box.right - box.left, highest = box.bottom - box.top;
  if (!shown() || target.pixels == nullptr || most < 1 || highest < 1) return;
  const double scale = std::min(1.0 * most / picture_->width(), 1.0 * highest / picture_->height());
  const int width = std::clamp(static_cast<int>(std::lround(scale * picture_->width())), 1, most);
  const int height = std::clamp(static_cast<int>(std::lround(scale * picture_->height())), 1, highest);
  if (width_ != width || height_ != height) fit(width, height);
  const int left = box.left + (most - width) / 2, top = box.top + (highest - height) / 2;
  const int first = std::max(0, -left), end = std::min(width, target.width - left);
  for (int y = std::max(0, -top); y < std::min(height, target.height - top) && first < end; ++y)
    std::copy_n(fitted_.begin() + static_cast<std::ptrdiff_t>(y) * width_ + first, end - first,
                target.pixels + static_cast<std::ptrdiff_t>(y + top) * target.stride + left + first);
}

Result<FittedOutline> TracePicture::traced() const {
  if (!shown()) return unreadable("there is no picture to trace: Load Picture in the Shape menu shows one");
  auto found = traceOutline(picture_->lendPixels());
  if (!found) return found.error();
  GridBox whole;
  whole.add(0, 0);
  whole.add(picture_->width(), picture_->height());
  return fitTraced(std::move(*found), whole);
}

}  // namespace lorivan
