#include "model3d/projection.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/surface.h"

namespace lorivan {
namespace {

constexpr float kLeastRoll = 0.017453292F;  // one degree
constexpr float kNearest = 0.98F;           // of the eye's distance: what comes nearer is not shown
constexpr double kTooNear = 0.75;           // of the eye's distance: more would make all other views tiny
constexpr float kFitted = 0.95F;            // share of the picture that a fitted knot fills

struct Extent {
  float left = 0, right = 0, top = 0, bottom = 0;
  bool any = false;
  void add(const Shown& p) {
    if (!p.seen) return;
    left = any ? std::min(left, p.x) : p.x;
    right = any ? std::max(right, p.x) : p.x;
    top = any ? std::min(top, p.y) : p.y;
    bottom = any ? std::max(bottom, p.y) : p.y;
    any = true;
  }
};

Extent extentOf(const TubeModel& model, const Projection& projection) {
  Extent extent;
  for (const Vec3& p : model.vertices) extent.add(projection(p));
  return extent;
}

/// The farthest that any part of the model lies from its origin.
double reachOf(const TubeModel& model) {
  double most = 0;
  for (const Vec3& c : model.centres)
    most = std::max(most, static_cast<double>(c.x * c.x + c.y * c.y + c.z * c.z));
  return std::sqrt(most) + static_cast<double>(model.radius);
}

/// Pixels from the middle to an edge, but for the margin.
double room(int size, int width) {
  const double margin = std::max(1.0, static_cast<double>(width) / kReferenceWidth);
  return std::max(size / 2.0 - margin, 0.0);
}

double scaleOf(const TubeModel& model, const Projection& projection, int width, int height) {
  const auto minimum = static_cast<double>(model.minimumCoordinate);
  double scale = minimum < 0 ? width / (-minimum / 40) : std::numeric_limits<double>::max();
  const double eye = static_cast<double>(projection.eyeDistance());
  const double reach = reachOf(model), share = std::min(reach / eye, kTooNear);
  // A ball of this radius about the origin, as the eye sees it.
  const double radius = share * eye / std::sqrt(1 - share * share);
  const double least = room(std::min(width, height), width);
  if (radius > 0) scale = std::min(scale, least / radius);
  if (reach <= kTooNear * eye) return scale;
  const Extent extent = extentOf(model, projection);
  const auto held = [&scale](double space, float far) {
    if (far > 0) scale = std::min(scale, space / static_cast<double>(far));
  };
  held(room(width, width), std::max(extent.right, -extent.left));
  held(room(height, width), std::max(extent.bottom, -extent.top));
  return scale;
}

}  // namespace

Projection::Projection(const ViewState& view)
    : nearest_(view.ViewDistance * kNearest), eyeDistance_(view.ViewDistance) {
  const Matrix4& m = view.ViewMatrix;
  const bool rolled = std::fabs(view.ViewPsi) > kLeastRoll;
  const float sine = rolled ? std::sin(view.ViewPsi) : 0, cosine = rolled ? std::cos(view.ViewPsi) : 1;
  float* const rows[] = {x_, y_, z_, origin_};
  for (int row = 1; row <= 4; ++row) {
    const float sign = row == 1 ? -1.0F : 1.0F;
    const float across = m(row, 1) * sign, down = m(row, 2) * sign;
    float* const out = rows[row - 1];
    out[0] = across * cosine - down * sine;
    out[1] = down * cosine + across * sine;
    out[2] = m(row, 3) * sign;
    out[3] = m(row, 4) * sign;
  }
}

Placing placing(const TubeModel& model, const Projection& projection, const Lens& lens, int width,
                int height) {
  const auto wide = static_cast<float>(width), high = static_cast<float>(height);
  const auto scale = static_cast<float>(scaleOf(model, projection, width, height));
  return {scale * lens.zoom, wide / 2 + lens.pan.x * wide, high / 2 + lens.pan.y * wide};
}

Lens fittedLens(const TubeModel& model, const ViewState& view, int width, int height) {
  const Projection projection(view);
  const Extent extent = extentOf(model, projection);
  const float across = extent.right - extent.left, down = extent.bottom - extent.top;
  if (!(across > 0 && down > 0)) return {};
  const float whole = placing(model, projection, {}, width, height).scale;
  const auto wide = static_cast<float>(width), high = static_cast<float>(height);
  Lens lens;
  lens.zoom = std::clamp(kFitted * std::min(wide / across, high / down) / whole, kLeastZoom, kMostZoom);
  const float scale = whole * lens.zoom;
  lens.pan = {-(extent.left + extent.right) / 2 * scale / wide,
              -(extent.top + extent.bottom) / 2 * scale / wide};
  return lens;
}

Lens keptInSight(const TubeModel& model, const ViewState& view, Lens lens, int width, int height) {
  constexpr float kEdge = 0.05F;  // picture widths
  const Projection projection(view);
  const Placing placed = placing(model, projection, lens, width, height);
  const float edge = kEdge * static_cast<float>(width);
  const auto inward = [edge](float at, int size) {
    return std::clamp(at, edge, std::max(edge, static_cast<float>(size) - edge)) - at;
  };
  float least = std::numeric_limits<float>::max();
  PointF move;
  for (const Vec3& centre : model.centres) {
    const Shown shown = projection(centre);
    if (!shown.seen) continue;
    const PointF in{inward(placed.x + shown.x * placed.scale, width),
                    inward(placed.y + shown.y * placed.scale, height)};
    const float far = in.x * in.x + in.y * in.y;
    if (far >= least) continue;
    least = far;
    move = in;
    if (far == 0) return lens;
  }
  lens.pan.x += move.x / static_cast<float>(width);
  lens.pan.y += move.y / static_cast<float>(width);
  return lens;
}

}  // namespace lorivan
