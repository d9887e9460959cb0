// Projection and painter's algorithm.
#include "model3d/renderer.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/numbers.h"

namespace lorivan {

namespace {

constexpr float kLeastRoll = 0.017453292F;  // one degree; a smaller roll is not applied
constexpr float kNearest = 0.98F;           // of the eye's distance: what comes nearer is not shown
constexpr std::uint8_t kFacing = 1, kReached = 2, kWaiting = 4;  // marks of a quad
constexpr std::int32_t kUnseen = std::numeric_limits<std::int32_t>::min();

/// The nearest grid line to a place in the picture, where no coordinate is negative.
std::int32_t gridLine(float place) {
  const auto line = static_cast<std::int32_t>(place);
  return place - static_cast<float>(line) < 0.5F ? line : line + 1;
}

/// The model's x points to the left of the 2-D picture and its y points down. The picture's own y points down
/// as well, so only x is turned here: the two make half a turn, never a mirror image.
Matrix4 pictureMatrix(const ViewState& view) {
  Matrix4 matrix;
  MatScale(matrix, -1, 1, 1);
  MatMultiplyFull(matrix, matrix, view.ViewMatrix);
  return matrix;
}

}  // namespace

void Renderer::render(const TubeModel& model, const LightSettings& light, const ViewState& view,
                      Colour background, bool heightMap, PixelBlock target, bool transparent) {
  if (target.pixels == nullptr || target.width <= 0 || target.height <= 0) return;
  quads_.build(model);
  project(model, view);
  placeOnGrid(model.minimumCoordinate, target);
  sortByDepth(model);
  lightQuads(model, light);
  paint(target, background, heightMap, transparent);
}

void Renderer::project(const TubeModel& model, const ViewState& view) {
  const Matrix4 matrix = pictureMatrix(view);
  const bool rolled = std::fabs(view.ViewPsi) > kLeastRoll;
  const float sine = std::sin(view.ViewPsi), cosine = std::cos(view.ViewPsi);
  const float nearest = view.ViewDistance * kNearest;
  screen_.resize(model.vertices.size());
  for (std::size_t v = 0; v < screen_.size(); ++v) {
    const Vec3& p = model.vertices[v];
    Point4 shown = {{p.x, p.y, p.z, 1}};
    ApplyProjected(shown, matrix, shown);
    float x = shown(1), y = shown(2);
    if (rolled) {
      const float across = x * cosine - y * sine;
      y = y * cosine + x * sine;
      x = across;
    }
    screen_[v] = {x, y, shown(3), shown(3) < nearest};
  }
}

/// Pixels for each model unit: the model's own scale, or less where it would carry the knot past an edge.
double Renderer::pixelsPerUnit(float minimumCoordinate, PixelBlock target) const {
  float farX = 0, farY = 0;
  for (const ScreenPoint& p : screen_) {
    if (!p.seen) continue;
    farX = std::max(farX, std::fabs(p.x));
    farY = std::max(farY, std::fabs(p.y));
  }
  const double margin = std::max(1.0, static_cast<double>(target.width) / kReferenceWidth);
  const auto room = [margin](int size) { return std::max(size / 2.0 - margin, 0.0); };
  double scale = minimumCoordinate < 0 ? target.width / (-static_cast<double>(minimumCoordinate) / 40)
                                       : std::numeric_limits<double>::max();
  if (farX > 0) scale = std::min(scale, room(target.width) / static_cast<double>(farX));
  if (farY > 0) scale = std::min(scale, room(target.height) / static_cast<double>(farY));
  return scale;
}

void Renderer::placeOnGrid(float minimumCoordinate, PixelBlock target) {
  const int samples = Painter::samplesFor(target.width, target.height);
  const auto scale = static_cast<float>(pixelsPerUnit(minimumCoordinate, target) * samples);
  const float middleX = static_cast<float>(target.width * samples) / 2;
  const float middleY = static_cast<float>(target.height * samples) / 2;
  least_ = {target.width * samples, target.height * samples};
  most_ = {0, 0};
  grid_.resize(screen_.size());
  for (std::size_t v = 0; v < grid_.size(); ++v) {
    const ScreenPoint& p = screen_[v];
    if (!p.seen) {
      grid_[v] = {kUnseen, kUnseen};
      continue;
    }
    const PointI at = {gridLine(middleX + p.x * scale), gridLine(middleY + p.y * scale)};
    least_ = {std::min(least_.x, at.x), std::min(least_.y, at.y)};
    most_ = {std::max(most_.x, at.x), std::max(most_.y, at.y)};
    grid_[v] = at;
  }
}

/// Farthest first: a quad is as far as its farthest corner.
void Renderer::sortByDepth(const TubeModel& model) {
  keys_.resize(static_cast<std::size_t>(model.QuadCount));
  order_.resize(keys_.size());
  forEachQuad(model, [this](int quad, const QuadCorners& c, int) {
    const auto depth = [&](std::size_t k) { return screen_[static_cast<std::size_t>(c[k])].z; };
    keys_[static_cast<std::size_t>(quad)] = std::min({depth(0), depth(1), depth(2), depth(3)});
  });
  sorter_.sort(keys_, order_);
}

/// Faces turned away are not painted: wherever one lies, another face of the same closed tube lies before it.
/// Those that are partly turned away are kept.
bool Renderer::facing(const QuadCorners& c) const {
  std::array<PointI, 4> at;
  for (std::size_t k = 0; k < 4; ++k) {
    at[k] = grid_[static_cast<std::size_t>(c[k])];
    if (at[k].x == kUnseen) return false;
  }
  return turnsOf(at).left;
}

void Renderer::lightQuads(const TubeModel& model, const LightSettings& light) {
  const Shader shader(model, light);
  marks_.resize(order_.size());
  argb_.resize(order_.size());
  forEachQuad(model, [&](int number, const QuadCorners& corners, int strand) {
    const auto quad = static_cast<std::size_t>(number);
    const QuadLight lit = shader.light(corners);
    marks_[quad] = lit.reached ? kReached : std::uint8_t{0};
    if (!facing(corners)) return;
    marks_[quad] |= lit.waiting ? kFacing | kWaiting : kFacing;
    argb_[quad] = litColour(lit.intensity, model.strands[static_cast<std::size_t>(strand)].factors);
  });
  int reached = -1;
  for (const std::int32_t number : order_) {
    const auto quad = static_cast<std::size_t>(number);
    if ((marks_[quad] & kReached) != 0) reached = number;
    if ((marks_[quad] & kWaiting) == 0 || reached < 0) continue;
    const double intensity = shader.lightAfter(quads_.corners(number), quads_.corners(reached));
    argb_[quad] = litColour(intensity, model.strands[quads_.strand(number)].factors);
  }
}

void Renderer::paint(PixelBlock target, Colour background, bool heightMap, bool transparent) {
  const auto count = static_cast<int>(order_.size());
  const auto quadAt = [&](int rank) {
    GridQuad shown;
    const std::int32_t quad = order_[static_cast<std::size_t>(rank)];
    if ((marks_[static_cast<std::size_t>(quad)] & kFacing) == 0) return shown;
    const QuadCorners c = quads_.corners(quad);
    for (std::size_t k = 0; k < 4; ++k) shown.corners[k] = grid_[static_cast<std::size_t>(c[k])];
    const double share = (rank + 1.0) / count;
    shown.argb =
        heightMap ? litColour(share * 255 * share, {1, 1, 1}) : argb_[static_cast<std::size_t>(quad)];
    return shown;
  };
  painter_.paint(target, background, transparent, least_, most_, count, quadAt);
}

}  // namespace lorivan
