#include "platform/win32/averaged_fill.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <vector>

#include "platform/win32/checked.h"
#include "platform/win32/handles.h"

namespace lorivan::win32 {
namespace {

constexpr int kFold = 4;         // samples on a pixel's side
constexpr int kStripRows = 128;  // pixels; bounds the memory for large pictures

struct Box {
  int left = 0, top = 0, right = 0, bottom = 0;  // right and bottom are outside
};

Box boxOf(std::span<const PointF> outline, const PixelBlock& target) {
  float left = outline[0].x, right = left, top = outline[0].y, bottom = top;
  for (const PointF& p : outline) {
    left = std::min(left, p.x);
    right = std::max(right, p.x);
    top = std::min(top, p.y);
    bottom = std::max(bottom, p.y);
  }
  const auto pixel = [](float x) { return static_cast<int>(std::floor(x)); };
  return {std::max(0, pixel(left)), std::max(0, pixel(top)), std::min(target.width, pixel(right) + 2),
          std::min(target.height, pixel(bottom) + 2)};
}

/// A bitmap of one bit for each sample of a strip.
class SampleStrip {
 public:
  SampleStrip(int pixelsWide, int pixelsHigh)
      : stride_((pixelsWide * kFold + 31) / 32 * 4), rows_(pixelsHigh * kFold) {
    struct {
      BITMAPINFOHEADER header;
      RGBQUAD colours[2];
    } info{};
    info.header.biSize = sizeof info.header;
    info.header.biWidth = pixelsWide * kFold;
    info.header.biHeight = -rows_;
    info.header.biPlanes = 1;
    info.header.biBitCount = 1;
    info.colours[1] = {255, 255, 255, 0};
    void* bits = nullptr;
    context_.reset(CreateCompatibleDC(nullptr));
    bitmap_.reset(CreateDIBSection(nullptr, reinterpret_cast<const BITMAPINFO*>(&info), DIB_RGB_COLORS, &bits,
                                   nullptr, 0));
    bits_ = static_cast<unsigned char*>(bits);
  }
  explicit operator bool() const { return context_ && bitmap_; }

  /// Takes `points`, in samples from the picture's first one, for a strip that begins `firstRow` samples
  /// down.
  void fill(const std::vector<POINT>& points, int firstRow) {
    std::fill_n(bits_, static_cast<std::ptrdiff_t>(stride_) * rows_, static_cast<unsigned char>(0));
    const Selection bitmap(context_.get(), bitmap_.get());
    const Selection pen(context_.get(), GetStockObject(NULL_PEN));
    const Selection brush(context_.get(), GetStockObject(WHITE_BRUSH));
    SetPolyFillMode(context_.get(), WINDING);
    SetViewportOrgEx(context_.get(), 0, -firstRow, nullptr);
    Polygon(context_.get(), points.data(), static_cast<int>(points.size()));
    GdiFlush();
  }

  /// How many samples of a pixel are set, of kFold * kFold.
  int count(int x, int y) const {
    const unsigned char* byte = bits_ + static_cast<std::ptrdiff_t>(y) * kFold * stride_ + x / 2;
    const int shift = x % 2 == 0 ? 4 : 0;
    int set = 0;
    for (int row = 0; row < kFold; ++row, byte += stride_)
      set += std::popcount(static_cast<unsigned>(*byte >> shift & 0xF));
    return set;
  }

 private:
  int stride_, rows_;
  OwnedBitmap bitmap_;
  OwnedMemoryContext context_;
  unsigned char* bits_ = nullptr;
};

std::uint32_t blended(std::uint32_t under, std::uint32_t over, int count) {
  constexpr int kAll = kFold * kFold;
  if (count == kAll) return over;
  std::uint32_t mixed = 0;
  for (const int shift : {0, 8, 16, 24}) {
    const int a = static_cast<int>(under >> shift & 0xFF), b = static_cast<int>(over >> shift & 0xFF);
    mixed |= static_cast<std::uint32_t>((a * (kAll - count) + b * count + kAll / 2) / kAll) << shift;
  }
  return mixed;
}

}  // namespace

Status averagedFill(const PixelBlock& target, std::span<const PointF> outline, Colour colour) {
  const Box box = boxOf(outline, target);
  if (box.left >= box.right || box.top >= box.bottom) return {};
  std::vector<POINT> points;
  points.reserve(outline.size());
  // A pixel's middle is the whole number; its first sample lies three eighths before that.
  const auto sample = [](float x, int first) {
    return static_cast<LONG>(std::lround((x - static_cast<float>(first)) * kFold + (kFold - 1) / 2.0F));
  };
  for (const PointF& p : outline) points.push_back({sample(p.x, box.left), sample(p.y, box.top)});
  SampleStrip strip(box.right - box.left, std::min(kStripRows, box.bottom - box.top));
  if (!strip) return unwritable(systemFault("CreateDIBSection"));
  for (int y = box.top; y < box.bottom; ++y) {
    const int row = (y - box.top) % kStripRows;
    if (row == 0) strip.fill(points, (y - box.top) * kFold);
    std::uint32_t* pixels = target.pixels + static_cast<std::ptrdiff_t>(y) * target.stride;
    for (int x = box.left; x < box.right; ++x)
      if (const int count = strip.count(x - box.left, row); count > 0)
        pixels[x] = blended(pixels[x], toArgb(colour), count);
  }
  return {};
}

}  // namespace lorivan::win32
