#include "model3d/crossings.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <unordered_map>

namespace lorivan {
namespace {

/// One pass of a strand over or under a place.
struct Pass {
  int ring = 0;
  bool over = false;
  StrandPoint at, before, after;  // with the turns before and after it
};

std::uint64_t pointKey(const StrandPoint& p) {
  return static_cast<std::uint64_t>(std::bit_cast<std::uint32_t>(p.x + 0.0F)) << 32 |
         std::bit_cast<std::uint32_t>(p.y + 0.0F);
}

/// On which side of the way from `from` to `to` a point lies.
bool isLeft(const StrandPoint& from, const StrandPoint& to, const StrandPoint& p) {
  return (to.x - from.x) * (p.y - from.y) > (to.y - from.y) * (p.x - from.x);
}

/// One strand's turns lie on both sides of the other's way through the place.
bool doCross(const Pass& a, const Pass& b) {
  const auto side = [&](const StrandPoint& p) {
    const bool first = isLeft(a.before, a.at, p), second = isLeft(a.at, a.after, p);
    // Left of a way that turns left is what lies left of both its parts; else what lies left of one.
    return isLeft(a.before, a.at, a.after) ? first && second : first || second;
  };
  return side(b.before) != side(b.after);
}

}  // namespace

std::vector<RingCrossing> ringCrossings(const StrandStore& strands, const TubeSettings& settings) {
  const int points = std::clamp(settings.polyPoints, 1, 50), order = std::clamp(settings.polySmooth, 3, 20);
  std::unordered_map<std::uint64_t, Pass> waiting;
  std::vector<RingCrossing> crossings;
  int firstRing = 0;
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    const int count = std::clamp(strands.ThreadCount[slot], 0, kStrandPoints - 1);
    for (int i = 0; i < count; ++i) {
      const StrandPoint at = strands.point(slot, i);
      if (at.z == 0) continue;
      // The curve is nearest to a control point half an order after it.
      const int ring = firstRing + (i * points + order * points / 2) % (count * points);
      Pass pass{ring, at.z > 0, at, strands.turned(slot, i - 1), strands.turned(slot, i + 1)};
      // Both passes of one round a cylinder are compared within its first period; x is negated.
      const auto turned =
          static_cast<float>(strands.wrap.turn(static_cast<double>(-at.x)) * int{strands.wrap.period});
      for (StrandPoint* p : {&pass.at, &pass.before, &pass.after}) p->x += turned;
      const auto [other, isFirst] = waiting.emplace(pointKey(pass.at), pass);
      if (isFirst) continue;
      if (other->second.over != pass.over && doCross(other->second, pass))
        crossings.push_back(pass.over ? RingCrossing{ring, other->second.ring}
                                      : RingCrossing{other->second.ring, ring});
      waiting.erase(other);
    }
    firstRing += count * points;
  }
  return crossings;
}

}  // namespace lorivan
