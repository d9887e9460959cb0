#include "model3d/rings.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"

namespace lorivan {
namespace {

double dotOf(const Triple& a, const Triple& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

Triple between(const Vec3& from, const Vec3& to) {
  return {static_cast<double>(to.x) - static_cast<double>(from.x),
          static_cast<double>(to.y) - static_cast<double>(from.y),
          static_cast<double>(to.z) - static_cast<double>(from.z)};
}

/// From sides 0 and 1, which lie a step of `sine` and `cosine` apart.
RingFrame frameOf(const TubeModel& model, int ring, double sine, double cosine) {
  const Vec3& centre = model.centres[ring];
  const Triple b = between(centre, model.vertex(ring, 0)), next = between(centre, model.vertex(ring, 1));
  const double share = 1 / sine;
  const Triple a = {(next.x - b.x * cosine) * share, (next.y - b.y * cosine) * share,
                    (next.z - b.z * cosine) * share};
  return {a, b};
}

/// The frame that a ring without radius takes over from the one before it. The sweep leaves a ring without
/// radius where the tube runs along z; across that direction every a will do.
RingFrame takenOver(const TubeModel& model, int ring, int next, const RingFrame& before) {
  const Triple along = between(model.centres[ring], model.centres[next]);
  const double size = std::sqrt(dotOf(along, along));
  if (size == 0) return before;  // two samples at one place
  const Triple a = before.a, t = {along.x * (1 / size), along.y * (1 / size), along.z * (1 / size)};
  return {a, {a.y * t.z - a.z * t.y, a.z * t.x - a.x * t.z, a.x * t.y - a.y * t.x}};
}

bool hasRadius(const RingFrame& frame, double radius) {
  return dotOf(frame.b, frame.b) > 1e-6 * radius * radius;
}

void repairStrand(TubeModel& model, const TubeStrand& strand) {
  std::vector<int> repaired;
  const std::vector<RingFrame> frames = ringFrames(model, strand, repaired);
  for (const int ring : repaired)
    for (int side = 0; side < model.sides; ++side) {
      const int at = strand.firstRing + ring;
      model.vertices[at * model.sides + side] = onRing(model, at, frames[ring], side);
    }
}

}  // namespace

std::vector<RingFrame> ringFrames(const TubeModel& model, const TubeStrand& strand,
                                  std::vector<int>& repaired) {
  const double radius = static_cast<double>(model.radius), step = kTwoPi / model.sides;
  const double sine = std::sin(step), cosine = std::cos(step);
  std::vector<RingFrame> frames;
  frames.reserve(static_cast<std::size_t>(strand.ringCount));
  for (int i = 0; i < strand.ringCount; ++i)
    frames.push_back(frameOf(model, strand.firstRing + i, sine, cosine));
  const auto whole = std::find_if(frames.rbegin(), frames.rend(),
                                  [radius](const RingFrame& frame) { return hasRadius(frame, radius); });
  RingFrame before = whole != frames.rend() ? *whole : RingFrame{{radius, 0, 0}, {0, radius, 0}};
  for (int i = 0; i < strand.ringCount; ++i) {
    RingFrame& frame = frames[i];
    if (!hasRadius(frame, radius)) {
      const int next = i + 1 < strand.ringCount ? i + 1 : 0;
      frame = takenOver(model, strand.firstRing + i, strand.firstRing + next, before);
      repaired.push_back(i);
    }
    before = frame;
  }
  return frames;
}

Vec3 onRing(const TubeModel& model, int ring, const RingFrame& frame, int side) {
  const double turn = kTwoPi * side / model.sides, s = std::sin(turn), c = std::cos(turn);
  const Vec3& centre = model.centres[ring];
  const auto sum = [=](float middle, double a, double b) {
    return static_cast<float>(static_cast<double>(middle) + a * s + b * c);
  };
  return {sum(centre.x, frame.a.x, frame.b.x), sum(centre.y, frame.a.y, frame.b.y),
          sum(centre.z, frame.a.z, frame.b.z)};
}

/// The turn psi with the greatest sum of products of partners is atan2(b.a' - a.b', a.a' + b.b').
int nearestSide(const RingFrame& one, const RingFrame& two, int sides, double radius) {
  const double along = dotOf(one.a, two.a) + dotOf(one.b, two.b);
  const double across = dotOf(one.b, two.a) - dotOf(one.a, two.b);
  if (std::fabs(across) * sides < along) return 0;  // far less than half a side: tan(pi / sides) > 1 / sides
  const double tiny = 1e-6 * radius * radius;
  if (!(std::fabs(along) > tiny || std::fabs(across) > tiny)) return 0;  // opposed: no side is nearest
  return (toInt32(std::atan2(across, along) / (kTwoPi / sides)) + sides) % sides;
}

void joinRings(TubeModel& model) {
  const double radius = static_cast<double>(model.radius), step = kTwoPi / model.sides;
  const double sine = std::sin(step), cosine = std::cos(step);
  model.joins.resize(model.centres.size());
  for (const TubeStrand& strand : model.strands) {
    const auto frame = [&](int i) { return frameOf(model, strand.firstRing + i, sine, cosine); };
    bool whole = true;
    for (int i = 0; i < strand.ringCount && whole; ++i) whole = hasRadius(frame(i), radius);
    if (!whole) repairStrand(model, strand);
    RingFrame here = frame(0);
    for (int i = 0; i < strand.ringCount; ++i) {
      const RingFrame next = frame(i + 1 < strand.ringCount ? i + 1 : 0);
      model.joins[strand.firstRing + i] =
          static_cast<std::uint8_t>(nearestSide(here, next, model.sides, radius));
      here = next;
    }
  }
}

}  // namespace lorivan
