// Scan conversion and reduction. Every edge is walked from its upper end with whole-number steps, so that two
// polygons get the very same crossing points from the edge they share.
#include "model3d/painter.h"

#include <utility>

#include "model3d/sample_blend.h"

namespace lorivan {

namespace {

constexpr std::int64_t kGridBudget = std::int64_t{1} << 22;  // samples held at one time
constexpr int kFraction = 16;                                // fraction bits of a crossing point

struct Edge {
  int top, bottom;  // rows it crosses, bottom excluded
  std::int64_t x;   // crossing point with the middle of row `top`
  std::int64_t step;
};

constexpr int kSmall = 64;  // samples, height and width of what the fast path takes

/// One step for each row at a run of one sample, by height. Steps of short edges are whole multiples of
/// these, so both ways of filling cross an edge at the same points.
constexpr std::array<std::int32_t, kSmall> kShares = [] {
  std::array<std::int32_t, kSmall> shares{};
  for (int height = 1; height < kSmall; ++height) {
    shares[height] = (1 << kFraction) / height;
  }
  return shares;
}();

Edge edgeBetween(PointI a, PointI b) {
  if (a.y > b.y) std::swap(a, b);
  const int height = b.y - a.y;
  const std::int64_t run = static_cast<std::int64_t>(b.x) - a.x;
  const std::int64_t one = std::int64_t{1} << kFraction;
  const std::int64_t step = height < kSmall ? run * kShares[height] : run * one / height;
  return {a.y, b.y, (static_cast<std::int64_t>(a.x) << kFraction) + (step >> 1), step};
}

/// First sample whose middle is not left of the crossing point.
int sampleAt(std::int64_t crossing) {
  return static_cast<int>((crossing + (std::int64_t{1} << (kFraction - 1)) - 1) >> kFraction);
}

void orderUp(std::int64_t& a, std::int64_t& b) {
  if (a > b) std::swap(a, b);
}

}  // namespace

Turns turnsOf(const std::array<PointI, 4>& corners) {
  Turns turns;
  for (std::size_t k = 0; k < 4; ++k) {
    const PointI &a = corners[k], &b = corners[(k + 1) % 4], &c = corners[(k + 2) % 4];
    const std::int64_t turn = static_cast<std::int64_t>(b.x - a.x) * (c.y - b.y) -
                              static_cast<std::int64_t>(b.y - a.y) * (c.x - b.x);
    turns.left |= turn < 0;
    turns.right |= turn > 0;
  }
  return turns;
}

int Painter::samplesFor(int width, int height) {
  const std::int64_t pixels = static_cast<std::int64_t>(width) * height;
  return pixels * 16 <= kGridBudget ? 4 : pixels * 9 <= kGridBudget ? 3 : 2;
}

void Painter::begin(PixelBlock target, Colour background, bool transparent, PointI least, PointI most) {
  target_ = target;
  transparent_ = transparent;
  background_ = transparent ? 0 : toArgb(background);
  samples_ = samplesFor(target.width, target.height);
  for (int y = 0; y < target.height; ++y) {
    std::fill_n(target.pixels + static_cast<std::ptrdiff_t>(y) * target.stride, target.width, background_);
  }
  const auto pixel = [this](int line, int size) { return std::clamp(line / samples_, 0, size); };
  left_ = pixel(least.x, target.width);
  right_ = pixel(most.x + samples_ - 1, target.width);
  bandBottom_ = pixel(least.y, target.height);
  bottom_ = pixel(most.y + samples_ - 1, target.height);
  gridLeft_ = left_ * samples_;
  gridWidth_ = std::max(0, right_ - left_) * samples_;
  redBlue_.resize(static_cast<std::size_t>(gridWidth_));
  alphaGreen_.resize(static_cast<std::size_t>(gridWidth_));
}

bool Painter::nextBand() {
  if (gridWidth_ == 0 || bandBottom_ >= bottom_) return false;
  const std::int64_t rows = std::max<std::int64_t>(1, kGridBudget / (std::int64_t{samples_} * gridWidth_));
  bandTop_ = bandBottom_;
  bandBottom_ = static_cast<int>(std::min<std::int64_t>(bottom_, bandTop_ + rows));
  gridTop_ = bandTop_ * samples_;
  gridHeight_ = (bandBottom_ - bandTop_) * samples_;
  grid_.assign(static_cast<std::size_t>(gridWidth_) * static_cast<std::size_t>(gridHeight_), background_);
  return true;
}

void Painter::fill(const GridQuad& quad) {
  const auto& c = quad.corners;
  const auto [least, most] = std::minmax({c[0].y, c[1].y, c[2].y, c[3].y});
  const int top = std::max(least, gridTop_);
  const int bottom = std::min(most, gridTop_ + gridHeight_);
  if (top >= bottom) return;
  const Turns turns = turnsOf(c);
  const auto [left, right] = std::minmax({c[0].x, c[1].x, c[2].x, c[3].x});
  const bool inside = left >= gridLeft_ && right <= gridLeft_ + gridWidth_;
  if (inside && turns.left != turns.right && most - least < kSmall && right - left < kSmall) {
    fillSmallConvex(quad, left, top, bottom);
  } else {
    fillAny(quad, top, bottom);
  }
}

/// A convex quad of a few samples: all edges at once, without branches that depend on its shape.
void Painter::fillSmallConvex(const GridQuad& quad, int left, int top, int bottom) {
  std::array<std::int32_t, 4> tops, bottoms, xs, steps;
  for (std::size_t k = 0; k < 4; ++k) {
    const PointI a = quad.corners[k], b = quad.corners[(k + 1) % 4];
    const bool upward = a.y > b.y;
    tops[k] = std::min(a.y, b.y);
    bottoms[k] = std::max(a.y, b.y);
    const std::int32_t from = upward ? b.x : a.x, to = upward ? a.x : b.x;
    steps[k] = (to - from) * kShares[bottoms[k] - tops[k]];
    xs[k] = ((from - left) * (1 << kFraction)) + (steps[k] >> 1);
  }
  std::uint32_t* row =
      grid_.data() + static_cast<std::ptrdiff_t>(top - gridTop_) * gridWidth_ - gridLeft_ + left;
  for (int y = top; y < bottom; ++y, row += gridWidth_) {
    std::int32_t low = kSmall << kFraction, high = 0;
    for (std::size_t k = 0; k < 4; ++k) {
      const bool crossed = y >= tops[k] && y < bottoms[k];
      const std::int32_t x = xs[k] + steps[k] * (y - tops[k]);
      low = crossed && x < low ? x : low;
      high = crossed && x > high ? x : high;
    }
    const int to = sampleAt(high);
    for (int x = sampleAt(low); x < to; ++x) row[x] = quad.argb;
  }
}

/// Any quad, also one that is concave or crosses itself.
void Painter::fillAny(const GridQuad& quad, int top, int bottom) {
  std::array<Edge, 4> edges;
  std::size_t count = 0;
  for (std::size_t k = 0; k < 4; ++k) {
    const PointI& here = quad.corners[k];
    const PointI& next = quad.corners[(k + 1) % 4];
    if (here.y != next.y) edges[count++] = edgeBetween(here, next);
  }
  std::uint32_t* row = grid_.data() + static_cast<std::ptrdiff_t>(top - gridTop_) * gridWidth_;
  for (int y = top; y < bottom; ++y, row += gridWidth_) {
    std::array<std::int64_t, 4> crossings;
    std::size_t found = 0;
    for (std::size_t k = 0; k < count; ++k) {
      const Edge& e = edges[k];
      if (y >= e.top && y < e.bottom) crossings[found++] = e.x + e.step * (y - e.top);
    }
    orderUp(crossings[0], crossings[1]);
    if (found == 4) {
      orderUp(crossings[2], crossings[3]);
      orderUp(crossings[0], crossings[2]);
      orderUp(crossings[1], crossings[3]);
      orderUp(crossings[1], crossings[2]);
    }
    for (std::size_t k = 0; k < found; k += 2) {
      const int from = std::max(sampleAt(crossings[k]) - gridLeft_, 0);
      const int to = std::min(sampleAt(crossings[k + 1]) - gridLeft_, gridWidth_);
      for (int x = from; x < to; ++x) row[x] = quad.argb;
    }
  }
}

template <int samples>
void Painter::reduceRow(int row) {
  const std::uint32_t* grid =
      grid_.data() + static_cast<std::ptrdiff_t>(row - bandTop_) * samples * gridWidth_;
  std::uint32_t* redBlue = redBlue_.data();
  std::uint32_t* alphaGreen = alphaGreen_.data();
  for (int x = 0; x < gridWidth_; ++x) {
    SampleSum sum;
    for (int s = 0; s < samples; ++s) sum.add(grid[static_cast<std::ptrdiff_t>(s) * gridWidth_ + x]);
    redBlue[x] = sum.redBlue;
    alphaGreen[x] = sum.alphaGreen;
  }
  std::uint32_t* pixels = target_.pixels + static_cast<std::ptrdiff_t>(row) * target_.stride + left_;
  for (int x = 0; x < right_ - left_; ++x) {
    SampleSum sum;
    for (int s = 0; s < samples; ++s) {
      sum.redBlue += redBlue[x * samples + s];
      sum.alphaGreen += alphaGreen[x * samples + s];
    }
    pixels[x] = sum.mean(samples * samples, transparent_);
  }
}

void Painter::reduceBand() {
  for (int row = bandTop_; row < bandBottom_; ++row) {
    switch (samples_) {
      case 4:
        reduceRow<4>(row);
        break;
      case 3:
        reduceRow<3>(row);
        break;
      default:
        reduceRow<2>(row);
    }
  }
}

}  // namespace lorivan
