#include "model3d/strand_hit.h"

#include <algorithm>
#include <array>

#include "platform/surface.h"

namespace lorivan {
namespace {

constexpr std::uint32_t kDark = 0xFF000000, kBright = 0xFFFFF020;
constexpr double kDarkReach = 2, kBrightReach = 1;  // reference pixels
constexpr std::uint32_t kHalfWhite = 0x80;

/// How near the triangle is to the eye at a place; 0 where it does not lie there.
double nearnessAt(const Shown& a, const Shown& b, const Shown& c, double x, double y) {
  const auto cross = [&](const Shown& from, const Shown& to) {
    return (static_cast<double>(to.x) - from.x) * (y - from.y) -
           (static_cast<double>(to.y) - from.y) * (x - from.x);
  };
  const double forC = cross(a, b), forA = cross(b, c), forB = cross(c, a), area = forA + forB + forC;
  const bool within = area > 0 ? forA >= 0 && forB >= 0 && forC >= 0 : forA <= 0 && forB <= 0 && forC <= 0;
  if (!within || area == 0) return 0;
  return (forA * a.nearness + forB * b.nearness + forC * c.nearness) / area;
}

}  // namespace

int strandAt(const TubeModel& model, const ViewState& view, const Lens& lens, int width, int height, double x,
             double y) {
  if (model.QuadCount == 0 || width <= 0 || height <= 0) return 0;
  const Projection projection(view);
  const Placing placed = placing(model, projection, lens, width, height);
  const double atX = (x + 0.5 - placed.x) / placed.scale, atY = (y + 0.5 - placed.y) / placed.scale;
  std::vector<Shown> corners;
  corners.reserve(model.vertices.size());
  for (const Vec3& vertex : model.vertices) corners.push_back(projection(vertex));
  double nearest = 0;
  int found = 0;
  forEachQuad(model, [&](int, const QuadCorners& quad, int strand) {
    std::array<Shown, 4> c;
    for (std::size_t k = 0; k < 4; ++k) c[k] = corners[quad[k]];
    if (!(c[0].seen && c[1].seen && c[2].seen && c[3].seen)) return;
    const double here =
        std::max(nearnessAt(c[0], c[1], c[2], atX, atY), nearnessAt(c[0], c[2], c[3], atX, atY));
    if (here <= nearest) return;
    nearest = here;
    found = model.strands[strand].slot;
  });
  return found;
}

bool StrandMark::inside(int x, int y) const {
  return x >= 0 && y >= 0 && x < width_ && y < height_ &&
         (mask_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                static_cast<std::size_t>(x)] &
          0xFF) >= kHalfWhite;
}

void StrandMark::findEdge() {
  edge_.clear();
  for (int y = 0; y < height_; ++y)
    for (int x = 0; x < width_; ++x)
      if (inside(x, y) && !(inside(x - 1, y) && inside(x + 1, y) && inside(x, y - 1) && inside(x, y + 1)))
        edge_.push_back({x, y});
}

/// A disc at every pixel of the edge.
void StrandMark::paintEdge(PixelBlock target, int radius, std::uint32_t argb) const {
  for (const PointI& at : edge_)
    for (int dy = -radius; dy <= radius; ++dy)
      for (int dx = -radius; dx <= radius; ++dx) {
        const int x = at.x + dx, y = at.y + dy;
        if (dx * dx + dy * dy > radius * radius + radius || x < 0 || y < 0 || x >= width_ || y >= height_)
          continue;
        target.pixels[static_cast<std::ptrdiff_t>(y) * target.stride + x] = argb;
      }
}

void StrandMark::draw(const TubeModel& model, int slot, const ViewState& view, const Lens& lens,
                      PictureLook look, PixelBlock target) {
  if (target.pixels == nullptr || target.width <= 0 || target.height <= 0) return;
  width_ = target.width;
  height_ = target.height;
  mask_.resize(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_));
  look.background = 0;
  look.heightMap = look.transparent = false;
  look.alone = slot;
  picture_.render(model, {.Ka = 1, .Kd = 0, .Ks = 0}, view, lens, look,
                  {mask_.data(), width_, height_, width_});
  findEdge();
  const double pixel = static_cast<double>(width_) / kReferenceWidth;
  paintEdge(target, static_cast<int>(kDarkReach * pixel + 0.5), kDark);
  paintEdge(target, static_cast<int>(kBrightReach * pixel), kBright);
}

}  // namespace lorivan
