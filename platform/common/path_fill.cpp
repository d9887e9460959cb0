#include "platform/common/path_fill.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <utility>

namespace lorivan {
namespace {

using Edge = PathFiller::Edge;
using Layer = PathFiller::Layer;

constexpr float kFlatness = 0.1F;  // pixels that a flattened curve may stray
constexpr float kFarthest = 1e6F;
constexpr int kMostSteps = 64;
// Rows and pixels that are painted at a time, so that they stay in the cache.
constexpr int kMostRows = 32, kFewestRows = 4, kStripPixels = 1 << 15;

bool isDrawable(const std::vector<PointF>& contour) {
  if (contour.size() % 3 != 1) return contour.empty();
  bool is = true;  // asked of all, since none is ever missing: that takes less time
  for (const PointF p : contour) is &= isWithinReach(p);
  return is;
}

class Flattener {
 public:
  explicit Flattener(std::vector<Edge>& edges) : edges_(edges) {}

  void add(const std::vector<PointF>& contour) {
    if (contour.size() < 4) return;
    start(contour[0]);
    for (std::size_t i = 0; i + 3 < contour.size(); i += 3) curve(&contour[i]);
    line(contour[0]);
  }
  void addPolygon(const std::vector<PointF>& corners) {
    if (corners.size() < 3) return;
    start(corners.back());
    for (const PointF corner : corners) line(corner);
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

/// What is kept from call to call. `sums` and `marks` hold zeros between calls.
struct Memory {
  std::vector<float> sums;
  std::vector<std::uint64_t> marks;
  std::vector<std::uint32_t> starts, order;
};

Memory& memory() {
  thread_local Memory kept;
  return kept;
}

/// A table of more than 8 MB is made anew for the next picture, which most times needs far less.
template <class Entry>
void giveBackLarge(std::vector<Entry>& table) {
  if (table.capacity() > (std::size_t{8} << 20) / sizeof(Entry)) table = std::vector<Entry>();
}

/// The rows of a strip. It sums up, pixel by pixel, how an edge changes the covered share of all that lies to
/// its right (the way of font renderers). Pixels that an edge passes are marked; between them the share
/// stays.
class Strip {
 public:
  explicit Strip(const PixelBlock& target)
      : target_(target),
        width_(target.width),
        columns_(width_ + 2),
        words_((columns_ + 63) / 64),
        rowBits_(rowBitsFor(columns_)),
        most_(1 << rowBits_) {
    const auto grow = [this](auto& table, int row) {
      const std::size_t size = static_cast<std::size_t>(row) * static_cast<std::size_t>(most_);
      if (table.size() < size) table.resize(size, 0);
    };
    grow(sums_, columns_);
    grow(marks_, words_);
  }

  int mostRows() const { return most_; }
  /// Of which that is a power of two, since every edge has to be told its strips.
  int rowBits() const { return rowBits_; }
  void begin(int top, int rows) {
    top_ = top;
    rows_ = rows;
  }

  /// The part of an edge within the strip, row by row. Nothing is rounded that depends on where strips begin,
  /// so the pixels are the same whatever is painted together.
  void add(const Edge& e) {
    const bool down = e.y0 < e.y1;
    const float x0 = down ? e.x0 : e.x1, y0 = down ? e.y0 : e.y1;
    const float x1 = down ? e.x1 : e.x0, y1 = down ? e.y1 : e.y0;
    const auto only = static_cast<int>(y0) - top_;
    if (y0 >= static_cast<float>(top_) && only < rows_ && y1 <= static_cast<float>(top_ + only + 1)) {
      return cross(only, x0, x1, e.y1 - e.y0);
    }
    const float slope = (x1 - x0) / (y1 - y0);
    const auto xAt = [=](float y) { return x0 + (y - y0) * slope; };
    const float begin = std::max(y0, static_cast<float>(top_)),
                end = std::min(y1, static_cast<float>(top_ + rows_));
    float x = xAt(begin);
    for (int row = static_cast<int>(begin); static_cast<float>(row) < end; ++row) {
      const float from = std::max(begin, static_cast<float>(row)),
                  to = std::min(end, static_cast<float>(row + 1));
      const float next = xAt(to);
      cross(row - top_, x, next, down ? to - from : from - to);
      x = next;
    }
  }

  void paint(std::uint32_t argb) {
    for (; touched_ != 0; touched_ &= touched_ - 1) paintRow(std::countr_zero(touched_), argb);
    firstWord_ = words_;
    lastWord_ = -1;
  }

 private:
  static int rowBitsFor(int columns) {
    const int rows = std::clamp(kStripPixels / columns, kFewestRows, kMostRows);
    return std::bit_width(static_cast<unsigned>(rows)) - 1;
  }

  /// One row's piece of an edge: `high` of the row, from x to `next`, spread over the pixels that it passes.
  void cross(int row, float x, float next, float high) {
    const float most = static_cast<float>(width_);
    const float left = std::clamp(std::min(x, next), 0.F, most);
    const float right = std::clamp(std::max(x, next), 0.F, most);
    float* sums = sumsOf(row);
    const int begin = static_cast<int>(left), end = static_cast<int>(right);
    mark(row, begin, end + 1);
    if (begin == end) {
      const auto whole = static_cast<float>(begin);
      const float rest = high * ((left - whole + (right - whole)) / 2);
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

  void mark(int row, int first, int last) {
    std::uint64_t* marks = marksOf(row);
    touched_ |= std::uint32_t{1} << row;
    firstWord_ = std::min(firstWord_, first >> 6);
    lastWord_ = std::max(lastWord_, last >> 6);
    if (first >> 6 == last >> 6) {
      marks[first >> 6] |= ((std::uint64_t{2} << (last - first)) - 1) << (first & 63);
      return;
    }
    for (int i = first; i <= last; ++i) marks[i >> 6] |= std::uint64_t{1} << (i & 63);
  }

  void paintRow(int row, std::uint32_t argb) {
    float* sums = sumsOf(row);
    std::uint64_t* marks = marksOf(row);
    std::uint32_t* pixels = target_.pixels + static_cast<std::ptrdiff_t>(top_ + row) * target_.stride;
    float sum = 0;
    int painted = 0;
    for (int word = firstWord_; word <= lastWord_; ++word)
      for (std::uint64_t rest = std::exchange(marks[word], 0); rest != 0; rest &= rest - 1) {
        const int i = word * 64 + std::countr_zero(rest);
        if (painted < i) paintRun(pixels, painted, std::min(i, width_), sum, argb);
        sum += std::exchange(sums[i], 0.F);
        // Shares of none and of all are mixed as well: which it is cannot be foretold.
        if (i < width_) pixels[i] = mix(pixels[i], argb, shareOf(sum));
        painted = i + 1;
      }
  }

  static std::uint32_t shareOf(float covered) {
    return static_cast<std::uint32_t>(static_cast<int>(std::min(std::fabs(covered), 1.F) * 256 + 0.5F));
  }

  static void paintRun(std::uint32_t* pixels, int from, int end, float covered, std::uint32_t argb) {
    const std::uint32_t share = shareOf(covered);
    if (share == 256)
      for (int i = from; i < end; ++i) pixels[i] = argb;
    else if (share > 0)
      for (int i = from; i < end; ++i) pixels[i] = mix(pixels[i], argb, share);
  }

  float* sumsOf(int row) {
    return &sums_[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_)];
  }
  std::uint64_t* marksOf(int row) {
    return &marks_[static_cast<std::size_t>(row) * static_cast<std::size_t>(words_)];
  }

  const PixelBlock& target_;
  int width_, columns_, words_, rowBits_, most_;
  int top_ = 0, rows_ = 0;
  int firstWord_ = words_, lastWord_ = -1;  // of the marks in all rows
  std::uint32_t touched_ = 0;               // a bit for each row
  std::vector<float>& sums_ = memory().sums;
  std::vector<std::uint64_t>& marks_ = memory().marks;
};

static_assert(kMostRows <= 32, "a bit for each row");

/// Paints strip by strip, in each of them layer by layer.
class StripPainter {
 public:
  explicit StripPainter(const PixelBlock& target) : height_(target.height), strip_(target) {}

  void run(std::span<const Edge> edges, std::span<const Layer> layers) {
    sortIntoStrips(edges);
    const int rows = strip_.mostRows();
    for (int top = 0, number = 0; top < height_; top += rows, ++number) {
      strip_.begin(top, std::min(rows, height_ - top));
      auto layer = layers.begin();
      const auto at = static_cast<std::size_t>(number);
      for (std::size_t i = starts_[at]; i < starts_[at + 1]; ++i) {
        const std::size_t edge = order_[i];
        if (edge >= layer->end) {
          strip_.paint(layer->argb);
          while (edge >= layer->end) ++layer;
        }
        strip_.add(edges[edge]);
      }
      strip_.paint(layer->argb);
    }
  }

 private:
  template <class Use>
  void eachStrip(const Edge& e, Use&& use) const {
    const float low = std::min(e.y0, e.y1), high = std::max(e.y0, e.y1);
    if (high <= 0 || low >= static_cast<float>(height_)) return;
    const int first = std::max(static_cast<int>(low), 0) >> strip_.rowBits();
    const int last = std::min(static_cast<int>(high), height_ - 1) >> strip_.rowBits();
    for (int strip = first; strip <= last; ++strip) use(static_cast<std::size_t>(strip));
  }

  void sortIntoStrips(std::span<const Edge> edges) {
    starts_.assign(static_cast<std::size_t>(height_ / strip_.mostRows()) + 2, 0);
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

  int height_;
  Strip strip_;
  std::vector<std::uint32_t>& starts_ = memory().starts;
  std::vector<std::uint32_t>& order_ = memory().order;
};

}  // namespace

bool isWithinReach(PointF p) { return std::fabs(p.x) < kFarthest && std::fabs(p.y) < kFarthest; }

bool PathFiller::add(std::span<const std::vector<PointF>> contours, Colour colour) {
  if (!std::ranges::all_of(contours, isDrawable)) return false;
  Flattener flattener(edges_);
  for (const std::vector<PointF>& contour : contours) flattener.add(contour);
  layers_.push_back({edges_.size(), toArgb(colour)});
  return true;
}

void PathFiller::addPolygons(std::span<const std::vector<PointF>> polygons, Colour colour) {
  Flattener flattener(edges_);
  for (const std::vector<PointF>& polygon : polygons) flattener.addPolygon(polygon);
  layers_.push_back({edges_.size(), toArgb(colour)});
}

void PathFiller::paint(const PixelBlock& target) {
  if (!edges_.empty() && target.width > 0 && target.height > 0) StripPainter(target).run(edges_, layers_);
  giveBackLarge(memory().order);
  forget();
}

void PathFiller::forget() {
  edges_.clear();
  giveBackLarge(edges_);
  layers_.clear();
}

}  // namespace lorivan
