// Scan conversion with a depth buffer. A pixel has four sample rows of one sample each, so a pixel's samples
// differ in both directions and edges of any slope have five steps. Two triangles get the very same crossing
// points from the edge they share: between them no sample is left out or taken twice.
#include "model3d/smooth_renderer.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "model3d/sample_blend.h"

namespace lorivan {
namespace {

constexpr std::int64_t kSampleBudget = std::int64_t{1} << 23;  // held at one time
// Drafts of larger pictures have one sample for each pixel, those of very large ones for each four pixels.
constexpr std::int64_t kDraftPixels = 700'000, kLargeDraft = 1'500'000;
// Where the sample of each row lies in its pixel; no two are in one column.
constexpr float kPlaces[4] = {0.375F, 0.875F, 0.125F, 0.625F};
constexpr std::size_t kCarvedSides = 4;  // up to which a tube keeps its edges, being no round one
constexpr float kTiny = 0.5F;            // twice the area, below which a triangle has one colour

/// Rounded up, for values of moderate size.
int upward(float value) {
  const auto whole = static_cast<int>(value);
  return static_cast<float>(whole) < value ? whole + 1 : whole;
}

}  // namespace

void SmoothRenderer::render(const TubeModel& model, const LightSettings& light, const ViewState& view,
                            const Lens& lens, const PictureLook& look, PixelBlock target) {
  if (target.pixels == nullptr || target.width <= 0 || target.height <= 0) return;
  if (look.draft && std::int64_t{target.width} * target.height > kLargeDraft)
    return renderAtHalfSize(model, light, view, lens, look, target);
  const Projection projection(view);
  const SmoothLight lamp(light);
  rows_ = look.draft && std::int64_t{target.width} * target.height > kDraftPixels ? 1 : 4;
  transparent_ = look.transparent;
  background_ = transparent_ ? 0 : toArgb(look.background);
  for (int y = 0; y < target.height; ++y)
    std::fill_n(target.pixels + static_cast<std::ptrdiff_t>(y) * target.stride, target.width, background_);
  placing_ = placing(model, projection, lens, target.width, target.height);
  frame(model, projection, target);
  while (nextBand()) {
    for (const TubeStrand& strand : model.strands)
      drawStrand(model, strand, projection, lamp, factorsIn(look, strand));
    reduceBand(target);
  }
}

void SmoothRenderer::renderAtHalfSize(const TubeModel& model, const LightSettings& light,
                                      const ViewState& view, const Lens& lens, const PictureLook& look,
                                      PixelBlock target) {
  const int width = (target.width + 1) / 2, height = (target.height + 1) / 2;
  std::vector<std::uint32_t> pixels = std::move(half_);
  pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  render(model, light, view, lens, look, {pixels.data(), width, height, width});
  for (int y = 0; y < target.height; ++y) {
    const std::uint32_t* from = pixels.data() + static_cast<std::ptrdiff_t>(y / 2) * width;
    std::uint32_t* to = target.pixels + static_cast<std::ptrdiff_t>(y) * target.stride;
    for (int x = 0; x < target.width; ++x) to[x] = from[x / 2];
  }
  half_ = std::move(pixels);
}

/// The pixels that balls round all rings cover: never less than the tubes do.
void SmoothRenderer::frame(const TubeModel& model, const Projection& projection, PixelBlock target) {
  const auto wide = static_cast<float>(target.width), high = static_cast<float>(target.height);
  float left = wide, right = 0, top = high, bottom = 0;
  for (const Vec3& centre : model.centres) {
    const Shown middle = projection(centre);
    const float w = 1 / middle.nearness, depth = model.radius / projection.eyeDistance();
    if (!middle.seen || w - depth < 0.01F) {
      left = top = 0, right = wide, bottom = high;
      break;
    }
    const float nearest = 1 / (w - depth), farthest = 1 / (w + depth);
    const auto reach = [&](float place, float sign) {
      const float edge = place * w + sign * model.radius;
      return edge * (edge * sign > 0 ? nearest : farthest) * placing_.scale;
    };
    left = std::min(left, placing_.x + reach(middle.x, -1));
    right = std::max(right, placing_.x + reach(middle.x, 1));
    top = std::min(top, placing_.y + reach(middle.y, -1));
    bottom = std::max(bottom, placing_.y + reach(middle.y, 1));
  }
  left_ = static_cast<int>(std::clamp(left - 1, 0.0F, wide));
  right_ = static_cast<int>(std::clamp(right + 2, 0.0F, wide));
  bandTop_ = bandBottom_ = static_cast<int>(std::clamp(top - 1, 0.0F, high));
  bottom_ = static_cast<int>(std::clamp(bottom + 2, 0.0F, high));
}

bool SmoothRenderer::nextBand() {
  if (right_ <= left_ || bandBottom_ >= bottom_) return false;
  const std::int64_t rows =
      std::max<std::int64_t>(1, kSampleBudget / (std::int64_t{rows_} * (right_ - left_)));
  bandTop_ = bandBottom_;
  bandBottom_ = static_cast<int>(std::min<std::int64_t>(bottom_, bandTop_ + rows));
  firstRow_ = bandTop_ * rows_;
  endRow_ = bandBottom_ * rows_;
  const auto samples =
      static_cast<std::size_t>(right_ - left_) * static_cast<std::size_t>(endRow_ - firstRow_);
  nearness_.assign(samples, 0.0F);
  colours_.assign(samples, background_);
  return true;
}

void SmoothRenderer::drawStrand(const TubeModel& model, const TubeStrand& strand,
                                const Projection& projection, const SmoothLight& light,
                                const std::array<float, 3>& factors) {
  ringCorners(model, strand.firstRing, projection, light, first_);
  here_ = first_;
  for (int r = 0; r < strand.ringCount; ++r) {
    const int ring = strand.firstRing + r;
    const bool last = r + 1 == strand.ringCount;
    if (!last) ringCorners(model, ring + 1, projection, light, there_);
    joinCorners(here_, last ? first_ : there_, model.join(ring), light, factors);
    here_.swap(there_);
  }
}

void SmoothRenderer::ringCorners(const TubeModel& model, int ring, const Projection& projection,
                                 const SmoothLight& light, std::vector<Corner>& out) const {
  const Vec3& centre = model.centres[ring];
  const float arriving = light.arriving(projection.turned(centre));
  const auto rows = static_cast<float>(rows_);
  out.resize(static_cast<std::size_t>(model.sides));
  for (int side = 0; side < model.sides; ++side) {
    const Vec3& p = model.vertex(ring, side);
    const Shown shown = projection(p);
    Corner& corner = out[side];
    corner.x = placing_.x + shown.x * placing_.scale;
    corner.y = (placing_.y + shown.y * placing_.scale) * rows;
    corner.nearness = shown.nearness;
    corner.normal = projection.turned({p.x - centre.x, p.y - centre.y, p.z - centre.z});
    corner.arriving = arriving;
    corner.seen = shown.seen;
  }
}

void SmoothRenderer::joinCorners(const std::vector<Corner>& here, const std::vector<Corner>& there, int join,
                                 const SmoothLight& light, const std::array<float, 3>& factors) {
  const std::size_t sides = here.size();
  std::size_t n = static_cast<std::size_t>(join);
  for (std::size_t m = 0; m < sides; ++m) {
    const std::size_t nextHere = m + 1 == sides ? 0 : m + 1, nextThere = n + 1 == sides ? 0 : n + 1;
    const Corner &a = here[m], &b = here[nextHere], &c = there[nextThere], &d = there[n];
    n = nextThere;
    if (!(a.seen && b.seen && c.seen && d.seen)) continue;
    if (sides > kCarvedSides) {
      triangle(a, b, c, light, factors);
      triangle(a, c, d, light, factors);
    } else {
      const auto facing = [](Corner corner, const Corner& beside) {
        corner.normal = {corner.normal.x + beside.normal.x, corner.normal.y + beside.normal.y,
                         corner.normal.z + beside.normal.z};
        return corner;
      };
      const Corner first = facing(a, b), third = facing(c, d);
      triangle(first, facing(b, a), third, light, factors);
      triangle(first, third, facing(d, c), light, factors);
    }
  }
}

void SmoothRenderer::triangle(const Corner& a, const Corner& b, const Corner& c, const SmoothLight& light,
                              const std::array<float, 3>& factors) {
  const float abx = b.x - a.x, aby = b.y - a.y, acx = c.x - a.x, acy = c.y - a.y;
  const float area = abx * acy - acx * aby;
  // Turned away, and no fold that shows the tube's outside all the same.
  if (area >= 0 && a.normal.z + b.normal.z + c.normal.z <= 0) return;
  const Corner *high = &a, *middle = &b, *low = &c;
  if (high->y > middle->y) std::swap(high, middle);
  if (middle->y > low->y) std::swap(middle, low);
  if (high->y > middle->y) std::swap(high, middle);
  const auto rowAt = [this](float y) {
    return upward(std::clamp(y - 0.5F, static_cast<float>(firstRow_), static_cast<float>(endRow_)));
  };
  const int top = rowAt(high->y), bottom = rowAt(low->y);
  if (top >= bottom) return;

  const Planes planes = planesOf(a, b, c, area);
  const auto edge = [](const Corner& from, const Corner& to) -> Edge {
    const float height = to.y - from.y;
    return {from.y, to.y, from.x, height > 0 ? (to.x - from.x) / height : 0};
  };
  const Edge whole = edge(*high, *low), upper = edge(*high, *middle), lower = edge(*middle, *low);
  const int turn = rowAt(middle->y);
  const auto firstPixel = static_cast<float>(left_), endPixel = static_cast<float>(right_);
  for (int row = top; row < bottom; ++row) {
    const float y = static_cast<float>(row) + 0.5F;
    const Edge& second = row < turn ? upper : lower;
    float from = whole.x + (y - whole.top) * whole.slope, to = second.x + (y - second.top) * second.slope;
    if (from > to) std::swap(from, to);
    const float place = rows_ == 1 ? 0.5F : kPlaces[row & 3];
    const int begin = upward(std::clamp(from - place, firstPixel, endPixel));
    const int end = upward(std::clamp(to - place, firstPixel, endPixel));
    if (begin >= end) continue;
    fillSpan(row, begin, end, place, planes, light, factors);
  }
}

SmoothRenderer::Planes SmoothRenderer::planesOf(const Corner& a, const Corner& b, const Corner& c,
                                                float area) {
  const float abx = b.x - a.x, aby = b.y - a.y, acx = c.x - a.x, acy = c.y - a.y;
  const bool tiny = std::fabs(area) < kTiny;
  const float share = tiny ? 0 : 1 / area;
  const auto plane = [&](float at, float atB, float atC) -> Plane {
    if (tiny) return {(at + atB + atC) / 3, 0, 0};
    const float toB = atB - at, toC = atC - at;
    return {at, (toB * acy - toC * aby) * share, (toC * abx - toB * acx) * share};
  };
  return {a.x,
          a.y,
          plane(a.nearness, b.nearness, c.nearness),
          plane(a.normal.x, b.normal.x, c.normal.x),
          plane(a.normal.y, b.normal.y, c.normal.y),
          plane(a.normal.z, b.normal.z, c.normal.z),
          plane(a.arriving, b.arriving, c.arriving)};
}

/// The samples of a row from pixel `begin` to the one before `end`, where nothing nearer lies.
void SmoothRenderer::fillSpan(int row, int begin, int end, float place, const Planes& planes,
                              const SmoothLight& light, const std::array<float, 3>& factors) {
  const float dx = static_cast<float>(begin) + place - planes.x,
              dy = static_cast<float>(row) + 0.5F - planes.y;
  const auto value = [dx, dy](const Plane& p) { return p.at + p.across * dx + p.down * dy; };
  const Plane &n = planes.nearness, &nx = planes.nx, &ny = planes.ny, &nz = planes.nz, &lit = planes.arriving;
  const float nearness = value(n), x = value(nx), y = value(ny), z = value(nz), arriving = value(lit);
  const std::size_t at =
      static_cast<std::size_t>(row - firstRow_) * static_cast<std::size_t>(right_ - left_) +
      static_cast<std::size_t>(begin - left_);
  float* depth = nearness_.data() + at;
  std::uint32_t* colour = colours_.data() + at;
  for (int k = 0; k < end - begin; ++k) {
    const auto way = static_cast<float>(k);
    const float here = nearness + n.across * way;
    if (here <= depth[k]) continue;
    depth[k] = here;
    colour[k] = light.colour(x + nx.across * way, y + ny.across * way, z + nz.across * way,
                             arriving + lit.across * way, factors);
  }
}

void SmoothRenderer::reduceBand(PixelBlock target) const {
  const auto width = static_cast<std::size_t>(right_ - left_);
  const auto rows = static_cast<std::size_t>(rows_);
  const std::uint32_t* samples = colours_.data();
  for (int y = bandTop_; y < bandBottom_; ++y, samples += width * rows) {
    std::uint32_t* pixels = target.pixels + static_cast<std::ptrdiff_t>(y) * target.stride + left_;
    for (std::size_t x = 0; x < width; ++x) {
      SampleSum sum;
      for (std::size_t r = 0; r < rows; ++r) sum.add(samples[r * width + x]);
      pixels[x] = sum.mean(static_cast<std::uint32_t>(rows), transparent_);
    }
  }
}

}  // namespace lorivan
