#include "custom/sheet_symmetry.h"

#include <algorithm>

namespace lorivan {
namespace {

constexpr double kTurn = 6.283185307179586;

/// A full turn's k-th of n parts; quarter turns are exact.
Isometry turned(int k, int n, Spot centre) {
  static constexpr double kSines[] = {0, 1, 0, -1};
  if (4 * k % n == 0) {
    const double s = kSines[4 * k / n % 4], c = kSines[(4 * k / n + 1) % 4];
    return {c, -s, s, c, centre};
  }
  const double c = std::cos(kTurn * k / n), s = std::sin(kTurn * k / n);
  return {c, -s, s, c, centre};
}

bool mirrors(const Isometry& map) { return map.xx * map.yy - map.xy * map.yx < 0; }

}  // namespace

SheetSymmetry::SheetSymmetry(const Symmetry& chosen, Spot centre) : centre_(centre) {
  const bool both = chosen.leftRight && chosen.topBottom;
  const int turns = std::max(1, both && chosen.turns % 2 != 0 ? 2 * chosen.turns : chosen.turns);
  for (int k = 0; k < turns; ++k) maps_.push_back(turned(k, turns, centre));
  if (!chosen.leftRight && !chosen.topBottom) return;
  const double x = chosen.leftRight ? -1 : 1;
  for (int k = 0; k < turns; ++k) {
    const Isometry turn = maps_[k];
    maps_.push_back({x * turn.xx, -x * turn.xy, x * turn.yx, -x * turn.yy, centre});
  }
}

Spot SheetSymmetry::ontoAxis(Spot p, double reach) const {
  const auto turnsNear = [&](Spot spot) {
    return std::ranges::any_of(maps_, [&](const Isometry& map) {
      return !mirrors(map) && &map != &maps_.front() && distance(map(spot), spot) <= reach;
    });
  };
  Spot onAxis = p;
  double least = reach;
  for (const Isometry& map : maps_) {
    const double off = distance(map(p), p);
    if (!mirrors(map) || off > least) continue;
    least = off;
    onAxis = 0.5 * (p + map(p));
  }
  return turnsNear(p) || turnsNear(onAxis) ? centre_ : onAxis;
}

Spot SheetSymmetry::heldLike(Spot p, Spot fixed) const {
  constexpr double kSame = 0.01;
  for (std::size_t g = 1; g < maps_.size(); ++g) {
    if (distance(maps_[g](fixed), fixed) > kSame) continue;
    if (!mirrors(maps_[g])) return centre_;
    p = 0.5 * (p + maps_[g](p));
  }
  return p;
}

Spot SheetSymmetry::within(Spot p, Spot low, Spot high) const {
  const double halfWidth = std::max(0.0, std::min(centre_.x - low.x, high.x - centre_.x));
  const double halfHeight = std::max(0.0, std::min(centre_.y - low.y, high.y - centre_.y));
  p = {std::clamp(p.x, centre_.x - halfWidth, centre_.x + halfWidth),
       std::clamp(p.y, centre_.y - halfHeight, centre_.y + halfHeight)};
  double share = 1;
  for (const Isometry& map : maps_) {
    const Spot off = map(p) - centre_;
    if (std::fabs(off.x) > halfWidth) share = std::min(share, halfWidth / std::fabs(off.x));
    if (std::fabs(off.y) > halfHeight) share = std::min(share, halfHeight / std::fabs(off.y));
  }
  return share < 1 ? centre_ + share * (p - centre_) : p;
}

std::vector<Spot> SheetSymmetry::rays() const {
  std::vector<Spot> all;
  const bool mirrored = std::ranges::any_of(maps_, mirrors);
  for (std::size_t g = 0; g < maps_.size() && !isNone(); ++g) {
    const Isometry& map = maps_[g];
    if (mirrored != mirrors(map)) continue;
    if (!mirrored) {
      all.push_back(map(centre_ + Spot{0, -1}) - centre_);
      continue;
    }
    const double angle = std::atan2(map.xy, map.xx) / 2;
    for (const double side : {1.0, -1.0}) all.push_back(side * Spot{std::cos(angle), std::sin(angle)});
  }
  return all;
}

}  // namespace lorivan
