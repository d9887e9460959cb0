#include "unit/export/sample_knots.h"

#include <cmath>

#include "base/numbers.h"
#include "strands/tracing.h"

namespace lorivan {
namespace {

/// The model builder's steps for a store whose y is true to proportion.
std::vector<std::vector<Vec3>> centreLines(const StrandStore& store, const TubeSettings& tube,
                                           std::vector<int>& slots) {
  double maxX = -1e9, minX = 1e9, maxY = -1e9, minY = 1e9;
  for (int s = 1; s < kStrandSlots; ++s)
    for (int i = 0; i < store.ThreadCount[s]; ++i) {
      maxX = std::max(maxX, roundHalfEven(store.point(s, i).x));
      minX = std::min(minX, roundHalfEven(store.point(s, i).x));
      maxY = std::max(maxY, roundHalfEven(store.point(s, i).y * 0.8));
      minY = std::min(minY, roundHalfEven(store.point(s, i).y * 0.8));
    }
  const double extent = std::max({maxX, -minX, maxY, -minY});
  StrandStore scaled;
  scaled.ThreadCount = store.ThreadCount;
  for (int s = 1; s < kStrandSlots; ++s)
    for (int i = 0; i <= store.ThreadCount[s]; ++i) {
      const StrandPoint p = store.point(s, i);
      scaled.point(s, i) = {static_cast<float>(8 * (p.x - (maxX + minX) / 2) / extent),
                            static_cast<float>(-8 * (p.y * 0.8 - (maxY + minY) / 2) / extent),
                            (p.z > 0   ? 1.F
                             : p.z < 0 ? -1.F
                                       : 0.F) *
                                tube.polyZF};
    }
  KnotCurve curve;
  sampleStrands(scaled, tube.polySmooth, tube.polyPoints, curve);
  std::vector<std::vector<Vec3>> lines;
  float left = 9999, right = -9999;
  for (const float x : curve.X) left = std::min(left, -x), right = std::max(right, -x);
  for (int s = 1; s < kStrandSlots; ++s) {
    if (!curve.used(s)) continue;
    slots.push_back(s);
    lines.emplace_back();
    for (int i = curve.first[s]; i <= curve.last[s]; ++i) {
      Vec3 p{-curve.X[i], curve.Y[i], curve.Z[i]};  // the samples turn x round
      if (tube.ringPercent > 0) {
        const double turn = (p.x - left) * tube.ringPercent / 100 / (right - left) * kTwoPi;
        const double radius = right + p.z;
        p.x = static_cast<float>(radius * std::cos(turn));
        p.z = static_cast<float>(radius * std::sin(turn));
      }
      lines.back().push_back(p);
    }
  }
  return lines;
}

Vec3 scaledTo(const Vec3& v, float length) {
  const float size = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
  if (size == 0) return {};
  return {v.x / size * length, v.y / size * length, v.z / size * length};
}

void addRing(TubeModel& model, const Vec3& centre, const Vec3& t) {
  const Vec3 a = scaledTo({t.y, -t.x, 0}, model.radius);
  const Vec3 b =
      scaledTo({a.y * t.z - a.z * t.y, a.z * t.x - a.x * t.z, a.x * t.y - a.y * t.x}, model.radius);
  model.centres.push_back(centre);
  for (int side = 0; side < model.sides; ++side) {
    const auto turn = static_cast<float>(kTwoPi * side / model.sides);
    const float s = std::sin(turn), c = std::cos(turn);
    model.vertices.push_back(
        {centre.x + a.x * s + b.x * c, centre.y + a.y * s + b.y * c, centre.z + a.z * s + b.z * c});
  }
}

}  // namespace

TubeModel sweptTube(const std::vector<std::vector<Vec3>>& lines, int sides, float radius) {
  TubeModel model;
  model.sides = sides;
  model.radius = radius;
  int slot = 0;
  for (const auto& line : lines) {
    model.strands.push_back(
        {++slot, {0.5F, 0, 1}, static_cast<int>(model.centres.size()), static_cast<int>(line.size())});
    for (std::size_t i = 0; i < line.size(); ++i) {
      const Vec3 &p = line[i], &q = line[(i + 1) % line.size()];
      addRing(model, p, {q.x - p.x, q.y - p.y, q.z - p.z});
    }
  }
  model.QuadCount = static_cast<int>(model.vertices.size());
  return model;
}

TubeModel torus(float ringRadius, float tubeRadius, int count, int sides) {
  std::vector<Vec3> line;
  for (int i = 0; i < count; ++i) {
    const double turn = kTwoPi * i / count;
    line.push_back({static_cast<float>(ringRadius * std::cos(turn)),
                    static_cast<float>(ringRadius * std::sin(turn)), 0});
  }
  return sweptTube({line}, sides, tubeRadius);
}

SampleKnot standardKnot(Shape shape, int xNo, int yNo, const TubeSettings& tube) {
  KnotGraph graph;
  const auto grid = buildStandardGrid(graph, {.shape = shape, .XNo = xNo, .YNo = yNo});
  if (!grid || !CalcGrid(graph)) return {};
  StrandStore store;
  if (!traceStrands(graph, {.circular = usesCircularRule(shape, xNo)}, store)) return {};
  SampleKnot knot;
  sampleStrands(store, 3, 5, knot.curve);
  std::vector<int> slots;
  const auto lines = centreLines(store, tube, slots);
  knot.model = sweptTube(lines, tube.polySides, tube.polyRadius / 10);
  for (std::size_t i = 0; i < slots.size(); ++i) {
    knot.model.strands[i].slot = slots[i];
    const Colour colour = QBColor((slots[i] - 1) % 14 + 1);
    knot.model.strands[i].factors = {static_cast<float>(redOf(colour)) / 255.F,
                                     static_cast<float>(greenOf(colour)) / 255.F,
                                     static_cast<float>(blueOf(colour)) / 255.F};
  }
  return knot;
}

}  // namespace lorivan
