// Projection and painter's algorithm.
#include "model3d/renderer.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace lorivan {

namespace {

constexpr std::uint8_t kFacing = 1, kReached = 2, kWaiting = 4;  // marks of a quad
constexpr std::int32_t kFarthestLine = 1 << 24;                  // where a lens may carry a corner
constexpr std::int32_t kUnseen = std::numeric_limits<std::int32_t>::min();

/// The nearest grid line to a place, halves to the right. Without a branch, as places come in any order.
std::int32_t gridLine(float place) {
  const float held = std::clamp(place, -static_cast<float>(kFarthestLine), static_cast<float>(kFarthestLine));
  const auto whole = static_cast<std::int32_t>(held);
  const float rest = held - static_cast<float>(whole);  // of the sign of the place
  return whole + static_cast<std::int32_t>(rest >= 0.5F) - static_cast<std::int32_t>(rest < -0.5F);
}

}  // namespace

void Renderer::render(const TubeModel& model, const LightSettings& light, const ViewState& view,
                      const Lens& lens, const PictureLook& look, PixelBlock target, float faceShare) {
  if (target.pixels == nullptr || target.width <= 0 || target.height <= 0) return;
  quads_.build(model);
  project(model, view, lens, target);
  sortByDepth(model);
  lightQuads(model, light, look, faceShare);
  paint(target, look);
}

void Renderer::project(const TubeModel& model, const ViewState& view, const Lens& lens, PixelBlock target) {
  const Projection projection(view);
  const Placing placed = placing(model, projection, lens, target.width, target.height);
  const auto samples = static_cast<float>(Painter::samplesFor(target.width, target.height));
  PointI least = {std::numeric_limits<std::int32_t>::max(), std::numeric_limits<std::int32_t>::max()};
  PointI most = {-kFarthestLine, -kFarthestLine};
  grid_.resize(model.vertices.size());
  depths_.resize(model.vertices.size());
  for (std::size_t v = 0; v < grid_.size(); ++v) {
    const Shown p = projection(model.vertices[v]);
    depths_[v] = p.z;
    grid_[v] = {kUnseen, kUnseen};
    if (!p.seen) continue;
    const PointI at = {gridLine((placed.x + p.x * placed.scale) * samples),
                       gridLine((placed.y + p.y * placed.scale) * samples)};
    least = {std::min(least.x, at.x), std::min(least.y, at.y)};
    most = {std::max(most.x, at.x), std::max(most.y, at.y)};
    grid_[v] = at;
  }
  least_ = least;
  most_ = most;
}

/// Farthest first: a quad is as far as its farthest corner.
void Renderer::sortByDepth(const TubeModel& model) {
  keys_.resize(static_cast<std::size_t>(model.QuadCount));
  order_.resize(keys_.size());
  forEachQuad(model, [this](int quad, const QuadCorners& c, int) {
    const auto depth = [&](std::size_t k) { return depths_[c[k]]; };
    keys_[quad] = std::min({depth(0), depth(1), depth(2), depth(3)});
  });
  sorter_.sort(keys_, order_);
}

/// Faces turned away are not painted: wherever one lies, another face of the same closed tube lies before it.
/// Those that are partly turned away are kept.
bool Renderer::facing(const QuadCorners& c) const {
  std::array<PointI, 4> at;
  for (std::size_t k = 0; k < 4; ++k) {
    at[k] = grid_[c[k]];
    if (at[k].x == kUnseen) return false;
  }
  return turnsOf(at).left;
}

void Renderer::lightQuads(const TubeModel& model, const LightSettings& light, const PictureLook& look,
                          float faceShare) {
  const Shader shader(model, light, faceShare);
  marks_.resize(order_.size());
  argb_.resize(order_.size());
  forEachQuad(model, [&](int number, const QuadCorners& corners, int strand) {
    const auto quad = static_cast<std::size_t>(number);
    if (!facing(corners)) {
      marks_[quad] = shader.reaches(corners) ? kReached : std::uint8_t{0};
      return;
    }
    const QuadLight lit = shader.light(corners);
    marks_[quad] =
        static_cast<std::uint8_t>(kFacing | (lit.reached ? kReached : 0) | (lit.waiting ? kWaiting : 0));
    argb_[quad] = litColour(lit.intensity, factorsIn(look, model.strands[strand]));
  });
  int reached = -1;
  for (const std::int32_t number : order_) {
    const auto quad = static_cast<std::size_t>(number);
    if ((marks_[quad] & kReached) != 0) reached = number;
    if ((marks_[quad] & kWaiting) == 0 || reached < 0) continue;
    const double intensity = shader.lightAfter(quads_.corners(number), quads_.corners(reached));
    argb_[quad] = litColour(intensity, factorsIn(look, model.strands[quads_.strand(number)]));
  }
}

void Renderer::paint(PixelBlock target, const PictureLook& look) {
  const auto count = static_cast<int>(order_.size());
  const auto quadAt = [&](int rank) {
    GridQuad shown;
    const std::int32_t quad = order_[rank];
    if ((marks_[quad] & kFacing) == 0) return shown;
    const QuadCorners c = quads_.corners(quad);
    for (std::size_t k = 0; k < 4; ++k) shown.corners[k] = grid_[c[k]];
    const double share = (rank + 1.0) / count;
    shown.argb = look.heightMap ? litColour(share * 255 * share, {1, 1, 1}) : argb_[quad];
    return shown;
  };
  painter_.paint(target, look.background, look.transparent, least_, most_, count, quadAt);
}

}  // namespace lorivan
