#include "strands/knot_curve.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/numbers.h"
#include "strands/bspline.h"

namespace lorivan {
namespace {

/// Samples one closed polygon of `count` points; polygon[count] repeats polygon[0] and is not read.
/// `lap` is how far x changes from one lap to the next.
void sampleClosed(const StrandPoint* polygon, int count, double lap, const BsplineTable& table,
                  KnotCurve& curve) {
  const int order = table.order();
  for (int interval = 0; interval < count; ++interval)
    for (int phase = 0; phase < table.samples(); ++phase) {
      const double* weight = table.weights(phase);
      double x = 0, y = 0, z = 0;
      double moved = 0;
      for (int j = 0, k = interval; j < order; ++j) {
        const StrandPoint& p = polygon[k];
        x += weight[j] * (p.x + moved);
        y += weight[j] * p.y;
        z += weight[j] * p.z;
        if (k == 0) moved -= lap;
        k = k == 0 ? count - 1 : k - 1;
      }
      curve.X.push_back(static_cast<float>(-x));
      curve.Y.push_back(static_cast<float>(y));
      curve.Z.push_back(static_cast<float>(z));
    }
}

/// Points are whole pixels up to the reference size. Larger pictures keep eighths, so that the same knot
/// looks smooth in them.
double steps(const GridView& view) { return view.width <= kReferenceWidth ? 1 : 8; }

PointF place(const KnotCurve& curve, int sample, const GridView& view, bool raster, double lap = 0) {
  auto [x, y] = samplePlace(curve, static_cast<std::size_t>(sample), view);
  if (lap != 0) x += lap * acrossScale(view);
  if (!raster) return {static_cast<float>(x), static_cast<float>(y)};
  const double n = steps(view);
  return {static_cast<float>(roundHalfEven(x * n) / n), static_cast<float>(roundHalfEven(y * n) / n)};
}

}  // namespace

Seam seamOf(const KnotCurve& curve, const GridView& view) {
  if (!curve.wrap) return {};
  return {view.pixelX(curve.wrap.left), curve.wrap.period * acrossScale(view)};
}

int samplesPerPoint(float scale) {
  if (scale < 10) return 3;
  return scale < 20 ? 4 : 5;
}

void sampleStrands(const StrandStore& store, int order, int samples, KnotCurve& curve) {
  const BsplineTable table(order, samples);
  curve.X.clear();
  curve.Y.clear();
  curve.Z.clear();
  curve.wrap = store.wrap;
  curve.turns = store.turns;
  for (int slot = 0; slot < kStrandSlots; ++slot) {
    const auto at = static_cast<std::size_t>(slot);
    curve.first[at] = static_cast<int>(curve.X.size());
    const int count = store.ThreadCount[at];
    if (count > 0)
      sampleClosed(&store.point(slot, 0), count, static_cast<double>(store.lap(slot)), table, curve);
    curve.last[at] = static_cast<int>(curve.X.size()) - 1;
  }
}

void closedCardinalToBezier(std::span<const PointF> loop, std::size_t begin, std::size_t pieces,
                            std::vector<PointF>& bezier, float lap) {
  constexpr float pull = 0.5F / 3;  // tension over three
  const std::size_t count = loop.size();
  if (count < 2) return;
  // Points are told by how many come before them since the first lap's end.
  const auto at = [&](std::size_t i) {
    const PointF p = loop[i % count];
    return lap == 0 ? p : PointF{p.x + lap * (static_cast<float>(i / count) - 1), p.y};
  };
  const std::size_t first = begin + count;
  PointF before = at(first - 1), a = at(first), b = at(first + 1);
  bezier.push_back(a);
  for (std::size_t i = 0; i < pieces; ++i) {
    const PointF next = at(first + i + 2);
    bezier.push_back({a.x + (b.x - before.x) * pull, a.y + (b.y - before.y) * pull});
    bezier.push_back({b.x - (next.x - a.x) * pull, b.y - (next.y - a.y) * pull});
    bezier.push_back(b);
    before = std::exchange(a, std::exchange(b, next));
  }
}

void addExtremes(double p0, double p1, double p2, double p3, double& low, double& high) {
  low = std::min({low, p0, p3});
  high = std::max({high, p0, p3});
  if (std::min(p1, p2) >= low && std::max(p1, p2) <= high) return;  // as are nearly all
  const double a = -p0 + 3 * p1 - 3 * p2 + p3, b = 2 * (p0 - 2 * p1 + p2), c = p1 - p0;
  const auto add = [&](double t) {
    if (!(t > 0 && t < 1)) return;
    const double s = 1 - t;
    const double value = s * s * s * p0 + 3 * s * s * t * p1 + 3 * s * t * t * p2 + t * t * t * p3;
    low = std::min(low, value);
    high = std::max(high, value);
  };
  if (std::fabs(a) < 1e-12) {
    if (b != 0) add(-c / b);
    return;
  }
  const double root = b * b - 4 * a * c;
  if (root < 0) return;
  add((-b + std::sqrt(root)) / (2 * a));
  add((-b - std::sqrt(root)) / (2 * a));
}

GridBox curveBox(const KnotCurve& curve, float stretch) {
  GridBox box;
  double left = 1e30, right = -1e30, bottom = 1e30, top = -1e30;
  std::vector<PointF> points, bezier;
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    if (!curve.used(slot)) continue;
    points.clear();
    bezier.clear();
    for (int i = curve.first[slot]; i <= curve.last[slot]; ++i) points.push_back({curve.X[i], curve.Y[i]});
    closedCardinalToBezier(points, 0, points.size(), bezier, static_cast<float>(curve.lap(slot)));
    for (std::size_t i = 0; i + 3 < bezier.size(); i += 3) {
      addExtremes(bezier[i].x, bezier[i + 1].x, bezier[i + 2].x, bezier[i + 3].x, left, right);
      addExtremes(bezier[i].y, bezier[i + 1].y, bezier[i + 2].y, bezier[i + 3].y, bottom, top);
    }
  }
  if (left > right) return box;
  if (curve.wrap) {
    left = curve.wrap.left;
    right = left + curve.wrap.period;
  }
  box.add(left, bottom * stretch);
  box.add(right, top * stretch);
  return box;
}

void loopPoints(const KnotCurve& curve, int slot, const GridView& view, bool raster,
                std::vector<PointF>& points) {
  points.clear();
  const auto at = static_cast<std::size_t>(slot);
  for (int i = curve.first[at] + 1; i <= curve.last[at]; ++i) points.push_back(place(curve, i, view, raster));
  if (curve.used(slot)) points.push_back(place(curve, curve.first[at], view, raster, curve.lap(slot)));
}

void overRuns(const KnotCurve& curve, int slot, std::vector<OverRun>& runs) {
  runs.clear();
  const int first = curve.first[slot], last = curve.last[slot];
  const auto isUnder = [&](int i) { return curve.Z[i] < 0; };
  for (int i = first; i <= last;) {
    while (i <= last && isUnder(i)) ++i;
    const int begin = i;
    while (i <= last && !isUnder(i)) ++i;
    if (i > begin) runs.push_back({begin, i - begin});
  }
  if (runs.size() < 2 || runs.front().begin != first || isUnder(last)) return;
  runs.back().count += runs.front().count;
  runs.erase(runs.begin());
}

void runPoints(const KnotCurve& curve, int slot, const OverRun& run, const GridView& view, bool raster,
               std::vector<PointF>& points) {
  points.clear();
  const int first = curve.first[slot], count = curve.last[slot] - first + 1;
  for (int i = 0; i <= run.count; ++i) {
    const int number = run.begin - first + i;
    points.push_back(place(curve, first + number % count, view, raster, number / count * curve.lap(slot)));
  }
}

}  // namespace lorivan
