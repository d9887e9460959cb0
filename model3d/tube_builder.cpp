// The tube model. Samples are counted as whole numbers, so that a closed strand's last ring meets its first.
#include "model3d/tube_builder.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "model3d/m3ops.h"
#include "model3d/rings.h"
#include "strands/bspline.h"

namespace lorivan {

namespace {

constexpr std::string_view kTooManyPolygonsBudget =
    "Sorry, too many polygons for the program to handle\r\nReduce Sides and/or Points";
constexpr std::string_view kTooManyPolygonsBuild =
    "Sorry, too many polygons\r\nUse less Sides or less points";

// The strand store's y is stretched by the proportion of the picture (5 to 4); this takes it back.
constexpr double kProportion = 0.8;
constexpr double kHalfSpan = 800;  // the largest coordinate after scaling
constexpr double kModelUnit = 0.01;
constexpr double kFarthest = 1e6;  // no traced point lies farther out

int pointCount(const StrandStore& strands, int slot) {
  return std::clamp(strands.ThreadCount[slot], 0, kStrandPoints - 1);
}

/// Not-a-number and anything outside the range end inside it.
double held(double value, double low, double high) {
  return std::isnan(value) ? low : std::clamp(value, low, high);
}

TubeSettings withinRanges(TubeSettings s) {
  s.polySides = std::clamp(s.polySides, 3, 200);
  s.polyPoints = std::clamp(s.polyPoints, 1, 50);
  s.polyRadius = static_cast<float>(held(static_cast<double>(s.polyRadius), 1, 10));
  s.polySmooth = std::clamp(s.polySmooth, 3, 20);
  s.polyZF = static_cast<float>(held(static_cast<double>(s.polyZF), 0.25, 10));
  s.ringPercent = static_cast<float>(held(static_cast<double>(s.ringPercent), 0, 100));
  return s;
}

double coordinate(float value) {
  return std::isnan(value) ? 0 : std::clamp(static_cast<double>(value), -kFarthest, kFarthest);
}
double proportionalY(const StrandPoint& p) { return coordinate(p.y) * kProportion; }

/// The centre and the scale that bring the knot to its size in the model.
struct Placement {
  double centreX = 0, centreY = 0, scale = 0;
  double period = 0;       // of a wrapped knot, model units
  bool degenerate = true;  // no strands, or no width

  double x(const StrandPoint& p) const { return (coordinate(p.x) - centreX) * scale; }
  double y(const StrandPoint& p) const { return (proportionalY(p) - centreY) * scale; }
};

template <class Visit>
void forEachPoint(const StrandStore& strands, Visit&& visit) {
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    const int count = pointCount(strands, slot);
    for (int i = 0; i < count; ++i) visit(strands.point(slot, i));
  }
}

/// The scale uses the largest coordinate from the origin, not half the width, so a knot off the centre of its
/// grid comes out smaller.
Placement placementOf(const StrandStore& strands) {
  int minX = 0, maxX = 0, minY = 0, maxY = 0;
  bool first = true;
  forEachPoint(strands, [&](const StrandPoint& p) {
    const int x = toInt32(coordinate(p.x));
    const int y = toInt32(proportionalY(p));
    if (first) {
      minX = maxX = x;
      minY = maxY = y;
      first = false;
    }
    minX = std::min(minX, x);
    maxX = std::max(maxX, x);
    minY = std::min(minY, y);
    maxY = std::max(maxY, y);
  });
  if (strands.wrap) {
    maxX = -strands.wrap.left;
    minX = maxX - strands.wrap.period;
  }
  Placement placed;
  if (minX == maxX || first) return placed;
  const int extent = std::max({maxX, -minX, maxY, -minY});
  placed.centreX = (maxX + minX) / 2.0;
  placed.centreY = (maxY + minY) / 2.0;
  placed.scale = kHalfSpan / extent;
  placed.period = kModelUnit * placed.scale * strands.wrap.period;
  placed.degenerate = false;
  return placed;
}

float leastCoordinate(const StrandStore& strands, const Placement& placed) {
  std::int16_t least = 0;
  const double halfPeriod = placed.period / (2 * kModelUnit);
  forEachPoint(strands, [&](const StrandPoint& p) {
    const double x = strands.wrap ? -halfPeriod : placed.x(p);
    least = std::min({least, toInt16(x), toInt16(placed.y(p))});
  });
  return static_cast<float>(least);
}

float signOf(float z) { return z > 0 ? 1.0F : z < 0 ? -1.0F : 0.0F; }

/// Control points of one strand in model units, with the last order - 1 of them repeated in front.
void controlPoints(const StrandStore& strands, int slot, const Placement& placed,
                   const TubeSettings& settings, std::vector<Vec3>& out) {
  const int count = pointCount(strands, slot);
  const int before = settings.polySmooth - 1;
  out.resize(static_cast<std::size_t>(count) + static_cast<std::size_t>(before));
  for (int k = 0; k < count + before; ++k) {
    const StrandPoint p = strands.turned(slot, k - before);
    out[k] = {static_cast<float>(kModelUnit * placed.x(p)), static_cast<float>(-kModelUnit * placed.y(p)),
              signOf(p.z) * settings.polyZF};
  }
}

/// Weight t belongs to the point t places before the last of `order` points.
Vec3 weighted(const Vec3* points, const double* weights, int order) {
  double x = 0, y = 0, z = 0;
  for (int t = 0; t < order; ++t) {
    const Vec3& p = points[order - 1 - t];
    x += weights[t] * static_cast<double>(p.x);
    y += weights[t] * static_cast<double>(p.y);
    z += weights[t] * static_cast<double>(p.z);
  }
  return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
}

void widen(Vec3& low, Vec3& high, const Vec3& p) {
  low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
  high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
}

void sampleStrands(const StrandStore& strands, const Placement& placed, const TubeSettings& settings,
                   TubeModel& out) {
  const BsplineTable table(settings.polySmooth, settings.polyPoints);
  std::vector<Vec3> control;
  std::size_t ring = 0;
  for (const TubeStrand& strand : out.strands) {
    controlPoints(strands, strand.slot, placed, settings, control);
    const int count = strand.ringCount / settings.polyPoints;
    for (int point = 0; point < count; ++point) {
      for (int phase = 0; phase < settings.polyPoints; ++phase) {
        const Vec3 sample = weighted(control.data() + point, table.weights(phase), settings.polySmooth);
        widen(out.curveMinimum, out.curveMaximum, sample);
        out.centres[ring++] = sample;
      }
    }
  }
}

/// Wraps the flat samples round the y axis: the knot's width takes the given share of a turn.
/// A wrapped knot's period goes round exactly once.
void bendIntoRing(TubeModel& model, double period, float ringPercent) {
  const double left = period > 0 ? -period / 2 : static_cast<double>(model.curveMinimum.x);
  const double right = period > 0 ? period / 2 : static_cast<double>(model.curveMaximum.x);
  const double share = period > 0 ? 1 : static_cast<double>(ringPercent) / 100;
  if (share <= 0 || right <= left) return;
  const double step = share / (right - left) * kTwoPi;
  for (Vec3& p : model.centres) {
    const double angle = (static_cast<double>(p.x) - left) * step;
    const double radius = right + static_cast<double>(p.z);
    p.x = static_cast<float>(radius * std::cos(angle));
    p.z = static_cast<float>(radius * std::sin(angle));
  }
}

/// Two half axes of the cross-section, square to the way from a ring's centre to the next one's.
struct Section {
  Vec3 a, b;
};

Section sectionOf(const Vec3& from, const Vec3& to, float radius) {
  const double tx = static_cast<double>(to.x) - static_cast<double>(from.x);
  const double ty = static_cast<double>(to.y) - static_cast<double>(from.y);
  const double tz = static_cast<double>(to.z) - static_cast<double>(from.z);
  double ax, ay, az, bx, by, bz;
  CrossProduct(ax, ay, az, tx, ty, tz, 0.0, 0.0, 1.0);
  const double lengthA = std::sqrt(ax * ax + ay * ay + az * az);
  if (lengthA == 0) return {};
  const double toA = static_cast<double>(radius) / lengthA;
  ax *= toA;
  ay *= toA;
  CrossProduct(bx, by, bz, ax, ay, az, tx, ty, tz);
  const double toB = static_cast<double>(radius) / std::sqrt(bx * bx + by * by + bz * bz);
  return {{static_cast<float>(ax), static_cast<float>(ay), 0},
          {static_cast<float>(bx * toB), static_cast<float>(by * toB), static_cast<float>(bz * toB)}};
}

struct Turn {
  float sine, cosine;
};

std::vector<Turn> turnsOf(int sides) {
  std::vector<Turn> turns(static_cast<std::size_t>(sides));
  for (int m = 0; m < sides; ++m) {
    const double angle = kTwoPi / sides * m;
    turns[m] = {static_cast<float>(std::sin(angle)), static_cast<float>(std::cos(angle))};
  }
  return turns;
}

void layOut(const StrandStore& strands, const TubeSettings& settings, const SlotColours& colours,
            TubeModel& out) {
  int rings = 0;
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    const int count = pointCount(strands, slot);
    if (count == 0) continue;
    const Colour colour = colours[slot];
    TubeStrand strand;
    strand.slot = slot;
    strand.factors = {static_cast<float>(redOf(colour)) / 255, static_cast<float>(greenOf(colour)) / 255,
                      static_cast<float>(blueOf(colour)) / 255};
    strand.firstRing = rings;
    strand.ringCount = count * settings.polyPoints;
    rings += strand.ringCount;
    out.strands.push_back(strand);
  }
  out.centres.resize(static_cast<std::size_t>(rings));
}

}  // namespace

std::int64_t polygonBudget(const StrandStore& strands, const TubeSettings& settings) {
  const TubeSettings s = withinRanges(settings);
  std::int64_t points = 0;
  for (int slot = 1; slot < kStrandSlots; ++slot) points += pointCount(strands, slot);
  return points * s.polySides * s.polyPoints;
}

Status buildTube(const StrandStore& strands, const TubeSettings& settings, const SlotColours& colours,
                 TubeModel& out) {
  const TubeSettings corrected = withinRanges(settings);
  const Placement placed = placementOf(strands);
  if (placed.degenerate) {
    out.clear();
    return {};
  }
  if (polygonBudget(strands, corrected) > kMostQuads) return refused(kTooManyPolygonsBudget);

  out.clear();
  out.sides = corrected.polySides;
  out.radius = corrected.polyRadius / 10;
  out.minimumCoordinate = leastCoordinate(strands, placed);
  out.curveMinimum = {9999, 9999, 9999};
  out.curveMaximum = {-9999, -9999, -9999};
  layOut(strands, corrected, colours, out);
  sampleStrands(strands, placed, corrected, out);
  if (strands.wrap) {
    out.curveMaximum.x = static_cast<float>(placed.period / 2);
    out.curveMinimum.x = -out.curveMaximum.x;
  }
  bendIntoRing(out, placed.period, corrected.ringPercent);
  if (const Status swept = sweepTube(out); !swept) return swept;
  joinRings(out);
  return {};
}

TubeSettings coarserSettings(TubeSettings settings, std::int64_t quads, std::int64_t most) {
  TubeSettings s = withinRanges(settings);
  if (quads <= most) return s;
  const double share = static_cast<double>(most) / static_cast<double>(quads);
  const int faces = static_cast<int>(s.polySides * s.polyPoints * share);  // for each point
  constexpr int kRound = 8;  // sides that still look round from afar
  s.polySides = std::clamp(static_cast<int>(s.polySides * std::sqrt(share)), std::min(s.polySides, kRound),
                           s.polySides);
  s.polyPoints = std::clamp(faces / s.polySides, 1, s.polyPoints);
  if (s.polySides * s.polyPoints > faces) s.polySides = std::clamp(faces / s.polyPoints, 3, s.polySides);
  return s;
}

Status sweepTube(TubeModel& model) {
  const auto quads = static_cast<std::int64_t>(model.centres.size()) * model.sides;
  if (quads > kMostQuads) return refused(kTooManyPolygonsBuild);
  const std::vector<Turn> turns = turnsOf(model.sides);
  model.vertices.resize(static_cast<std::size_t>(quads));
  model.QuadCount = static_cast<int>(quads);
  model.joins.clear();
  Vec3* corner = model.vertices.data();
  for (const TubeStrand& strand : model.strands) {
    const Vec3* centres = model.centres.data() + strand.firstRing;
    for (int r = 0; r < strand.ringCount; ++r) {
      const Vec3& p = centres[r];
      const auto [a, b] = sectionOf(p, centres[r + 1 == strand.ringCount ? 0 : r + 1], model.radius);
      for (const auto& [sine, cosine] : turns) {
        *corner++ = {p.x + a.x * sine + b.x * cosine, p.y + a.y * sine + b.y * cosine, p.z + b.z * cosine};
      }
    }
  }
  return {};
}

}  // namespace lorivan
