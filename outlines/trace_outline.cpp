#include "outlines/trace_outline.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>

namespace lorivan {
namespace {

constexpr double kSpeckShare = 1e-3;   // of the shape's area
constexpr double kLeastContrast = 12;  // of 255
constexpr std::size_t kMostLoops = 5000;

/// Greys, 0 black to 255, with a border of one pixel all round.
struct GreyField {
  int width = 0, height = 0;
  std::vector<float> values;

  GreyField(int w, int h)
      : width(w), height(h), values(static_cast<std::size_t>(w) * static_cast<std::size_t>(h)) {}
  std::size_t index(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
  }
  float& at(int x, int y) { return values[index(x, y)]; }
  float at(int x, int y) const { return values[index(x, y)]; }
};

/// Luminance by the weights of ITU-R BT.709.
double luminance(std::uint32_t pixel) {
  return 0.2126 * (pixel >> 16 & 0xFF) + 0.7152 * (pixel >> 8 & 0xFF) + 0.0722 * (pixel & 0xFF);
}

/// The picture's greys, boxes of pixels as one where it is large.
GreyField greysOf(const PixelBlock& picture) {
  const int longer = std::max(picture.width, picture.height);
  const double grain = std::max(1.0, static_cast<double>(longer) / kTracedSide);
  const int width = std::max(1, static_cast<int>(std::lround(picture.width / grain)));
  const int height = std::max(1, static_cast<int>(std::lround(picture.height / grain)));
  GreyField field(width + 2, height + 2);
  const auto place = [](int k, int whole, int parts) {
    return static_cast<int>(static_cast<std::int64_t>(k) * whole / parts);
  };
  for (int y = 0; y < height; ++y) {
    const int top = place(y, picture.height, height), bottom = place(y + 1, picture.height, height);
    for (int x = 0; x < width; ++x) {
      const int left = place(x, picture.width, width), right = place(x + 1, picture.width, width);
      double sum = 0;
      for (int v = top; v < bottom; ++v)
        for (int u = left; u < right; ++u)
          sum += luminance(picture.pixels[static_cast<std::ptrdiff_t>(v) * picture.stride + u]);
      field.at(x + 1, y + 1) = static_cast<float>(sum / ((right - left) * (bottom - top)));
    }
  }
  return field;
}

template <class Visit>
void visitInner(const GreyField& field, Visit visit) {
  for (int y = 1; y + 1 < field.height; ++y)
    for (int x = 1; x + 1 < field.width; ++x) visit(field.at(x, y));
}

struct Greys {
  double dark = 0, light = 0;  // the means of the two parts
  double middle() const { return (dark + light) / 2; }
};

/// Parts the greys so that the two parts differ most (Otsu 1979).
Greys partGreys(const GreyField& field) {
  std::array<double, 256> counts{};
  visitInner(field, [&](float grey) { ++counts[static_cast<std::size_t>(std::clamp(grey, 0.0F, 255.0F))]; });
  double all = 0, sum = 0;
  for (std::size_t k = 0; k < 256; ++k) all += counts[k], sum += counts[k] * (static_cast<double>(k) + 0.5);
  Greys best;
  double most = -1, below = 0, sumBelow = 0;
  for (std::size_t k = 0; k < 255; ++k) {
    below += counts[k];
    sumBelow += counts[k] * (static_cast<double>(k) + 0.5);
    if (below <= 0 || below >= all) continue;
    const double dark = sumBelow / below, light = (sum - sumBelow) / (all - below);
    const double between = below * (all - below) * (light - dark) * (light - dark);
    if (between <= most) continue;
    most = between;
    best = {dark, light};
  }
  return best;
}

bool borderIsDark(const GreyField& field, double middle) {
  int dark = 0, all = 0;
  const auto look = [&](int x, int y) {
    dark += field.at(x, y) < middle ? 1 : 0;
    ++all;
  };
  for (int x = 1; x + 1 < field.width; ++x) look(x, 1), look(x, field.height - 2);
  for (int y = 1; y + 1 < field.height; ++y) look(1, y), look(field.width - 2, y);
  return 2 * dark > all;
}

/// Follows the level line through the squares between four pixels' middles. Along every loop the shape lies
/// on the same side.
class LevelLines {
 public:
  /// Greys below the level are the shape.
  LevelLines(const GreyField& field, float level)
      : field_(field), level_(level), next_(2 * field.values.size(), -1) {
    for (int y = 0; y + 1 < field.height; ++y)
      for (int x = 0; x + 1 < field.width; ++x) link(x, y);
  }

  /// In pixels from the top left corner of the picture, whose border pixel is none of its own.
  std::vector<std::vector<Spot>> loops() {
    std::vector<std::vector<Spot>> all;
    for (std::size_t start = 0; start < next_.size(); ++start) {
      if (next_[start] < 0) continue;
      std::vector<Spot> loop;
      for (std::size_t edge = start; next_[edge] >= 0;) {
        loop.push_back(crossing(edge));
        edge = static_cast<std::size_t>(std::exchange(next_[edge], -1));
      }
      all.push_back(std::move(loop));
    }
    return all;
  }

 private:
  bool inside(int x, int y) const { return field_.at(x, y) < level_; }

  /// Sides of squares by number: 2 n to the right of pixel n, 2 n + 1 down from it.
  std::int32_t side(int x, int y, bool down) const {
    return static_cast<std::int32_t>(2 * field_.index(x, y) + (down ? 1 : 0));
  }

  /// Links the square's sides where the line leaves the shape to those where it comes back.
  void link(int x, int y) {
    const std::array<bool, 4> in{inside(x, y), inside(x + 1, y), inside(x + 1, y + 1), inside(x, y + 1)};
    const std::array<std::int32_t, 4> sides{side(x, y, false), side(x + 1, y, true), side(x, y + 1, false),
                                            side(x, y, true)};
    const bool saddle = in[0] == in[2] && in[1] == in[3] && in[0] != in[1];
    const float mean =
        (field_.at(x, y) + field_.at(x + 1, y) + field_.at(x, y + 1) + field_.at(x + 1, y + 1)) / 4;
    const std::size_t step = saddle && mean >= level_ ? 3 : 1;  // back, where the shape's corners stay apart
    for (std::size_t k = 0; k < 4; ++k) {
      if (!in[k] || in[(k + 1) % 4]) continue;
      std::size_t end = (k + step) % 4;
      while (in[end] || !in[(end + 1) % 4]) end = (end + step) % 4;
      next_[sides[k]] = sides[end];
    }
  }

  Spot crossing(std::size_t edge) const {
    const std::size_t pixel = edge / 2, width = static_cast<std::size_t>(field_.width);
    const bool down = edge % 2 != 0;
    const float from = field_.values[pixel], to = field_.values[pixel + (down ? width : 1)];
    const double part = std::clamp((level_ - from) / static_cast<double>(to - from), 0.0, 1.0);
    const double x = static_cast<double>(pixel % width) - 0.5, y = static_cast<double>(pixel / width) - 0.5;
    return {x + (down ? 0 : part), y + (down ? part : 0)};
  }

  const GreyField& field_;
  float level_;
  std::vector<std::int32_t> next_;
};

double areaOf(const std::vector<Spot>& loop) {
  double twice = 0;
  for (std::size_t k = 0; k < loop.size(); ++k) twice += cross(loop[k], loop[(k + 1) % loop.size()]);
  return twice / 2;
}

/// Takes specks out; the number of those.
std::size_t dropSpecks(std::vector<std::vector<Spot>>& loops) {
  double shape = 0;
  for (const auto& loop : loops) shape += areaOf(loop);
  return std::erase_if(loops, [&](const auto& loop) {
    return loop.size() < 3 || std::fabs(areaOf(loop)) < kSpeckShare * std::fabs(shape);
  });
}

}  // namespace

Result<TracedPicture> traceOutline(const PixelBlock& picture) {
  if (picture.pixels == nullptr || picture.width < 1 || picture.height < 1)
    return unreadable("the picture has no pixels");
  GreyField field = greysOf(picture);
  const Greys greys = partGreys(field);
  if (greys.light - greys.dark < kLeastContrast)
    return unreadable("the picture is of one shade: no shape stands out from its ground");
  TracedPicture traced;
  traced.lightOnDark = borderIsDark(field, greys.middle());
  if (traced.lightOnDark)
    for (float& grey : field.values) grey = 255 - grey;
  const double level = traced.lightOnDark ? 255 - greys.middle() : greys.middle();
  const auto ground = static_cast<float>(traced.lightOnDark ? 255 - greys.dark : greys.light);
  for (int x = 0; x < field.width; ++x) field.at(x, 0) = field.at(x, field.height - 1) = ground;
  for (int y = 0; y < field.height; ++y) field.at(0, y) = field.at(field.width - 1, y) = ground;
  auto loops = LevelLines(field, static_cast<float>(level)).loops();
  traced.specks = dropSpecks(loops);
  if (loops.empty() || loops.size() > kMostLoops)
    return unreadable("the picture has no clear shape that stands out from its ground");
  const Spot grain{static_cast<double>(picture.width) / (field.width - 2),
                   static_cast<double>(picture.height) / (field.height - 2)};
  traced.grain = std::max(grain.x, grain.y);
  for (auto& loop : loops) {
    for (Spot& p : loop) p = {p.x * grain.x, p.y * grain.y};
    traced.loops.push_back({std::move(loop), true});
  }
  return traced;
}

}  // namespace lorivan
