#include "platform/common/path_fill.h"

#include <algorithm>
#include <cmath>

namespace lorivan {
namespace {

constexpr float kFlatness = 0.06F;  // pixels that a flattened curve may stray
constexpr float kFarthest = 1e6F;
constexpr int kStripRows = 32;  // that are accumulated at a time, so that they stay in the cache
constexpr int kMostSteps = 64;

struct Edge {
  float x0, y0, x1, y1;
};

/// Pixel rows and columns; right and bottom are outside.
struct Range {
  int left, top, right, bottom;
};

bool isDrawable(const std::vector<PointF>& contour) {
  const auto inReach = [](PointF p) { return std::fabs(p.x) < kFarthest && std::fabs(p.y) < kFarthest; };
  return contour.size() % 3 == 1 && std::ranges::all_of(contour, inReach);
}

/// The contours as straight edges, in coordinates with the top left pixel's corner at (0, 0).
class Flattener {
 public:
  explicit Flattener(std::vector<Edge>& edges) : edges_(edges) {}

  void add(const std::vector<PointF>& contour) {
    if (contour.size() < 4) return;
    start(contour[0]);
    for (std::size_t i = 0; i + 3 < contour.size(); i += 3) curve(&contour[i]);
    line(contour[0]);
  }

 private:
  void start(PointF p) {
    x_ = p.x + 0.5F;
    y_ = p.y + 0.5F;
  }
  void line(PointF p) {
    const float x = x_, y = y_;
    start(p);
    if (y != y_) edges_.push_back({x, y, x_, y_});
  }

  /// A chord strays by at most an eighth of the second derivative times the square of its step.
  void curve(const PointF* p) {
    const float ax = p[0].x - 2 * p[1].x + p[2].x, ay = p[0].y - 2 * p[1].y + p[2].y;
    const float bx = p[1].x - 2 * p[2].x + p[3].x, by = p[1].y - 2 * p[2].y + p[3].y;
    const float bend = std::sqrt(std::max(ax * ax + ay * ay, bx * bx + by * by));
    const int steps = std::clamp(static_cast<int>(std::sqrt(6 / (8 * kFlatness) * bend)) + 1, 1, kMostSteps);
    for (int k = 1; k < steps; ++k) {
      const float t = static_cast<float>(k) / static_cast<float>(steps), s = 1 - t;
      const float a = s * s * s, b = 3 * s * s * t, c = 3 * s * t * t, d = t * t * t;
      line({a * p[0].x + b * p[1].x + c * p[2].x + d * p[3].x,
            a * p[0].y + b * p[1].y + c * p[2].y + d * p[3].y});
    }
    line(p[3]);
  }

  std::vector<Edge>& edges_;
  float x_ = 0, y_ = 0;
};

std::uint32_t mix(std::uint32_t under, std::uint32_t over, std::uint32_t share) {  // share of 256
  const std::uint32_t rest = 256 - share, mask = 0xFF00FF;
  const std::uint32_t even = ((under & mask) * rest + (over & mask) * share + 0x800080) >> 8 & mask;
  const std::uint32_t odd = ((under >> 8 & mask) * rest + (over >> 8 & mask) * share + 0x800080) & ~mask;
  return even | odd;
}

/// What is kept from call to call. `sums` holds zeros between calls.
struct Memory {
  std::vector<Edge> edges;
  std::vector<float> sums;
  std::vector<std::uint32_t> starts, order;
};

Memory& memory() {
  thread_local Memory kept;
  return kept;
}

/// Sums up, pixel by pixel, how an edge changes the covered share of all that lies to its right (the way of
/// font renderers), strip by strip.
class StripFiller {
 public:
  StripFiller(const PixelBlock& target, Range range, std::uint32_t argb)
      : target_(target), range_(range), argb_(argb), width_(range.right - range.left + 2) {
    const std::size_t size = static_cast<std::size_t>(width_) * kStripRows;
    if (sums_.size() < size) sums_.resize(size, 0.F);
  }

  void run(const std::vector<Edge>& edges) {
    if (range_.bottom - range_.top <= kStripRows) {
      beginStrip(range_.top);
      for (const Edge& e : edges) accumulate(e);
      endStrip();
      return;
    }
    sortIntoStrips(edges);
    for (int top = range_.top, strip = 0; top < range_.bottom; top += kStripRows, ++strip) {
      beginStrip(top);
      const auto at = static_cast<std::size_t>(strip);
      for (std::size_t i = starts_[at]; i < starts_[at + 1]; ++i) accumulate(edges[order_[i]]);
      endStrip();
    }
  }

 private:
  void beginStrip(int top) {
    top_ = top;
    rows_ = std::min(kStripRows, range_.bottom - top);
    for (int row = 0; row < rows_; ++row) {
      first_[row] = width_;
      last_[row] = -1;
    }
  }
  void endStrip() {
    for (int row = 0; row < rows_; ++row) paint(row);
  }

  template <class Use>
  void eachStrip(const Edge& e, Use&& use) const {
    const float low = std::min(e.y0, e.y1), high = std::max(e.y0, e.y1);
    if (high <= static_cast<float>(range_.top) || low >= static_cast<float>(range_.bottom)) return;
    const int first = std::max(static_cast<int>(low) - range_.top, 0) / kStripRows;
    const int last = std::min(static_cast<int>(high), range_.bottom - 1) - range_.top;
    for (int strip = first; strip <= last / kStripRows; ++strip) use(static_cast<std::size_t>(strip));
  }

  void sortIntoStrips(const std::vector<Edge>& edges) {
    starts_.assign(static_cast<std::size_t>((range_.bottom - range_.top) / kStripRows) + 2, 0);
    for (const Edge& e : edges) eachStrip(e, [&](std::size_t strip) { ++starts_[strip + 1]; });
    for (std::size_t i = 1; i < starts_.size(); ++i) starts_[i] += starts_[i - 1];
    order_.resize(starts_.back());
    // Filled from the ends, the starts move back to where they belong.
    for (std::size_t i = edges.size(); i-- > 0;)
      eachStrip(edges[i],
                [&](std::size_t strip) { order_[--starts_[strip + 1]] = static_cast<std::uint32_t>(i); });
    starts_.erase(starts_.begin());
    starts_.push_back(static_cast<std::uint32_t>(order_.size()));
  }

  /// The part of an edge within the strip, row by row.
  void accumulate(const Edge& e) {
    const bool down = e.y0 < e.y1;
    const float x0 = down ? e.x0 : e.x1, y0 = down ? e.y0 : e.y1;
    const float x1 = down ? e.x1 : e.x0, y1 = down ? e.y1 : e.y0;
    const float slope = (x1 - x0) / (y1 - y0), top = static_cast<float>(top_);
    const float begin = std::max(y0 - top, 0.F), end = std::min(y1 - top, static_cast<float>(rows_));
    float x = x0 + (begin + top - y0) * slope - static_cast<float>(range_.left);
    for (int row = static_cast<int>(begin); row < rows_ && static_cast<float>(row) < end; ++row) {
      const float from = std::max(begin, static_cast<float>(row));
      const float high = std::min(end, static_cast<float>(row + 1)) - from;
      const float next = x + high * slope;
      cross(row, x, next, down ? high : -high);
      x = next;
    }
  }

  /// One row's piece of an edge: `high` of the row, from x to `next`, spread over the pixels that it passes.
  void cross(int row, float x, float next, float high) {
    const float most = static_cast<float>(width_ - 2);
    const float left = std::clamp(std::min(x, next), 0.F, most);
    const float right = std::clamp(std::max(x, next), 0.F, most);
    float* sums = &sums_[static_cast<std::size_t>(row) * static_cast<std::size_t>(width_)];
    const int begin = static_cast<int>(left), end = static_cast<int>(right);
    first_[row] = std::min(first_[row], begin);
    last_[row] = std::max(last_[row], end + 1);
    if (begin == end) {
      const float rest = high * ((left + right) / 2 - static_cast<float>(begin));
      sums[begin] += high - rest;
      sums[begin + 1] += rest;
      return;
    }
    const float each = high / (right - left);  // for every pixel of width
    const float start = static_cast<float>(begin + 1) - left;
    float before = each * start * start / 2;
    sums[begin] += before;
    for (int i = begin + 1; i < end; ++i) {
      const float covered = each * (start + static_cast<float>(i - begin) - 0.5F);
      sums[i] += covered - before;
      before = covered;
    }
    const float inLast = right - static_cast<float>(end);
    const float covered = high - each * inLast * inLast / 2;
    sums[end] += covered - before;
    sums[end + 1] += high - covered;
  }

  void paint(int row) {
    if (last_[row] < first_[row]) return;
    float* sums = &sums_[static_cast<std::size_t>(row) * static_cast<std::size_t>(width_)];
    std::uint32_t* pixels =
        target_.pixels + static_cast<std::ptrdiff_t>(top_ + row) * target_.stride + range_.left;
    const int end = std::min(last_[row], range_.right - range_.left - 1);
    float sum = 0;
    for (int i = first_[row]; i <= end; ++i) {
      sum += sums[i];
      const auto share = static_cast<std::uint32_t>(std::min(std::fabs(sum), 1.F) * 256 + 0.5F);
      if (share == 256)
        pixels[i] = argb_;
      else if (share > 0)
        pixels[i] = mix(pixels[i], argb_, share);
    }
    std::fill(sums + first_[row], sums + last_[row] + 1, 0.F);
  }

  const PixelBlock& target_;
  Range range_;
  std::uint32_t argb_;
  int width_, top_ = 0, rows_ = 0;
  std::vector<float>& sums_ = memory().sums;
  int first_[kStripRows] = {}, last_[kStripRows] = {};
  std::vector<std::uint32_t>& starts_ = memory().starts;
  std::vector<std::uint32_t>& order_ = memory().order;
};

Range rangeOf(const std::vector<Edge>& edges, const PixelBlock& target) {
  float left = 1e9F, right = -1e9F, top = 1e9F, bottom = -1e9F;
  for (const Edge& e : edges) {
    left = std::min({left, e.x0, e.x1});
    right = std::max({right, e.x0, e.x1});
    top = std::min({top, e.y0, e.y1});
    bottom = std::max({bottom, e.y0, e.y1});
  }
  const auto within = [](float v, int most) {
    return static_cast<int>(std::clamp(std::floor(v), 0.F, static_cast<float>(most)));
  };
  return {within(left, target.width), within(top, target.height), within(right + 1, target.width),
          within(bottom + 1, target.height)};
}

}  // namespace

bool fillPathPixels(const PixelBlock& target, std::span<const std::vector<PointF>> contours, Colour colour) {
  std::vector<Edge>& edges = memory().edges;
  edges.clear();
  Flattener flattener(edges);
  for (const std::vector<PointF>& contour : contours) {
    if (contour.empty()) continue;
    if (!isDrawable(contour)) return false;
    flattener.add(contour);
  }
  const Range range = rangeOf(edges, target);
  if (edges.empty() || range.left >= range.right || range.top >= range.bottom) return true;
  StripFiller(target, range, toArgb(colour)).run(edges);
  return true;
}

}  // namespace lorivan
