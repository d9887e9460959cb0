#include "platform/common/path_fill.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <utility>

#include "platform/common/line_piece.h"

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

/// An opaque colour on opaque black, of which the pixel takes the share `edge` first.
std::uint32_t mixEdged(std::uint32_t under, std::uint32_t over, std::uint32_t edge, std::uint32_t share) {
  const std::uint32_t rest = ((256 - edge) * (256 - share) + 128) >> 8, mask = 0xFF00FF;
  const std::uint32_t even = ((under & mask) * rest + (over & mask) * share + 0x800080) >> 8 & mask;
  const std::uint32_t green = (over >> 8 & 0xFF) * share, alpha = 0xFF0000 * (256 - rest);
  return even | (((under >> 8 & mask) * rest + green + alpha + 0x800080) & ~mask);
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
/// stays. Of lines it keeps how near each pixel lies to them instead, and those within reach are marked.
class Strip {
 public:
  explicit Strip(const PixelBlock& target)
      : target_(target),
        width_(target.width),
        columns_(width_ + 2 + LinePiece::kBehind),
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

  /// The part of a line's piece within the strip, row by row.
  void add(const LinePiece& piece) {
    const int first = std::max(static_cast<int>(piece.top()), top_);
    const int last = std::min(static_cast<int>(piece.bottom()), top_ + rows_ - 1);
    for (int row = first; row <= last; ++row) {
      const float y = static_cast<float>(row) + 0.5F, most = static_cast<float>(width_);
      const auto [left, right] = piece.spanAt(y);
      const int begin = static_cast<int>(std::clamp(left, 0.F, most));
      const int end = static_cast<int>(std::clamp(right, 0.F, most));
      if (begin >= end) continue;
      mark(row - top_, begin, end - 1);
      float* nearness = sumsOf(row - top_);
      piece.keepNearest(nearness, begin, end, y);
      if (end + LinePiece::kBehind > width_) std::fill_n(nearness + width_, LinePiece::kBehind, 0.F);
    }
  }

  void paint(const Layer& layer) {
    for (; touched_ != 0; touched_ &= touched_ - 1) {
      const int row = std::countr_zero(touched_);
      if (layer.reach > 0)
        paintLineRow(row, layer);
      else
        paintRow(row, layer.argb);
    }
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

  /// Calls use(i, sum) for each pixel that is marked, and takes both from it.
  template <class Use>
  void takeMarked(int row, Use use) {
    float* sums = sumsOf(row);
    std::uint64_t* marks = marksOf(row);
    for (int word = firstWord_, last = lastWord_; word <= last; ++word)
      for (std::uint64_t rest = std::exchange(marks[word], 0); rest != 0; rest &= rest - 1) {
        const int i = word * 64 + std::countr_zero(rest);
        use(i, std::exchange(sums[i], 0.F));
      }
  }

  void paintRow(int row, std::uint32_t argb) {
    std::uint32_t* pixels = pixelsOf(row);
    const int width = width_;
    float sum = 0;
    int painted = 0;
    takeMarked(row, [&](int i, float change) {
      if (painted < i) paintRun(pixels, painted, std::min(i, width), sum, argb);
      sum += change;
      // Shares of none and of all are mixed as well: which it is cannot be foretold.
      if (i < width) pixels[i] = mix(pixels[i], argb, shareOf(sum));
      painted = i + 1;
    });
  }

  void paintLineRow(int row, const Layer& layer) {
    const float half = layer.line.half, outer = layer.line.outer, reach = layer.reach;
    std::uint32_t* pixels = pixelsOf(row);
    takeMarked(row, [&](int i, float nearness) {
      const float distance = std::sqrt(std::max(0.F, reach * reach - nearness));
      const float edge = std::min(reach - distance, 2 * outer);  // a hair line covers less than half a pixel
      const float band = std::min(std::max(half + 0.5F - distance, 0.F), 2 * half);
      pixels[i] = mixEdged(pixels[i], layer.argb, shareOf(edge), shareOf(band));
    });
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

  std::uint32_t* pixelsOf(int row) {
    return target_.pixels + static_cast<std::ptrdiff_t>(top_ + row) * target_.stride;
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
    sortIntoStrips(edges, layers);
    const int rows = strip_.mostRows();
    for (int top = 0, number = 0; top < height_; top += rows, ++number) {
      strip_.begin(top, std::min(rows, height_ - top));
      auto layer = layers.begin();
      const std::uint32_t* next = order_.data() + starts_[static_cast<std::size_t>(number)];
      const std::uint32_t* last = order_.data() + starts_[static_cast<std::size_t>(number) + 1];
      while (next != last) {
        while (*next >= layer->end) ++layer;
        const std::uint32_t* begin = next;
        while (next != last && *next < layer->end) ++next;
        addLayer(edges, {begin, next}, *layer);
        strip_.paint(*layer);
      }
    }
  }

 private:
  void addLayer(std::span<const Edge> edges, std::span<const std::uint32_t> numbers, const Layer& layer) {
    if (layer.reach == 0) {
      for (const std::uint32_t at : numbers) strip_.add(edges[at]);
      return;
    }
    const auto pieceAt = [&](std::size_t at) {
      return LinePiece({edges[at].x0, edges[at].y0}, {edges[at].x1, edges[at].y1}, layer.reach);
    };
    const LinePiece first = pieceAt(layer.begin), last = pieceAt(layer.end - 1);
    for (const std::uint32_t at : numbers) {
      LinePiece piece = pieceAt(at);
      if (layer.line.flat) piece.cut(first, last);
      strip_.add(piece);
    }
  }

  template <class Use>
  void eachStrip(const Edge& e, float reach, Use&& use) const {
    const float low = std::min(e.y0, e.y1) - reach, high = std::max(e.y0, e.y1) + reach;
    if (high <= 0 || low >= static_cast<float>(height_)) return;
    const int first = std::max(static_cast<int>(low), 0) >> strip_.rowBits();
    const int last = std::min(static_cast<int>(high), height_ - 1) >> strip_.rowBits();
    for (int strip = first; strip <= last; ++strip) use(static_cast<std::size_t>(strip));
  }

  void sortIntoStrips(std::span<const Edge> edges, std::span<const Layer> layers) {
    starts_.assign(static_cast<std::size_t>(height_ / strip_.mostRows()) + 2, 0);
    for (const Layer& layer : layers)
      for (const Edge& e : edges.subspan(layer.begin, layer.end - layer.begin))
        eachStrip(e, layer.reach, [&](std::size_t strip) { ++starts_[strip + 1]; });
    for (std::size_t i = 1; i < starts_.size(); ++i) starts_[i] += starts_[i - 1];
    order_.resize(starts_.back());
    // Filled from the ends, the starts move back to where they belong.
    for (std::size_t number = layers.size(); number-- > 0;) {
      const Layer& layer = layers[number];
      for (std::size_t i = layer.end; i-- > layer.begin;)
        eachStrip(edges[i], layer.reach,
                  [&](std::size_t strip) { order_[--starts_[strip + 1]] = static_cast<std::uint32_t>(i); });
    }
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
  addLayer(colour, 0, {});
  return true;
}

void PathFiller::addPolygons(std::span<const std::vector<PointF>> polygons, Colour colour) {
  Flattener flattener(edges_);
  for (const std::vector<PointF>& polygon : polygons) flattener.addPolygon(polygon);
  addLayer(colour, 0, {});
}

void PathFiller::addLine(std::span<const PointF> points, const LineLook& look, Colour colour) {
  for (std::size_t i = 0; i + 1 < points.size(); ++i)
    edges_.push_back(
        {points[i].x + 0.5F, points[i].y + 0.5F, points[i + 1].x + 0.5F, points[i + 1].y + 0.5F});
  addLayer(colour, look.outer + 0.5F, look);
}

void PathFiller::addLayer(Colour colour, float reach, const LineLook& line) {
  layers_.push_back({layers_.empty() ? 0 : layers_.back().end, edges_.size(), toArgb(colour), reach, line});
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
