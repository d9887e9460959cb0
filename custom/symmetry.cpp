#include "custom/symmetry.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <unordered_map>

#include "base/numbers.h"

namespace lorivan {
namespace {

struct Matrix {
  double xx, xy, yx, yy;
};

constexpr double kRoot = 0.8660254037844386;  // sine of 60 degrees

// clang-format off
constexpr Matrix kSame{1, 0, 0, 1}, kHalf{-1, 0, 0, -1}, kLeft{0, -1, 1, 0}, kRight{0, 1, -1, 0},
                 kLeftRight{-1, 0, 0, 1}, kTopBottom{1, 0, 0, -1}, kRising{0, 1, 1, 0}, kFalling{0, -1, -1, 0};
// Turns by 60, 120, 240 and 300 degrees, and mirrors at axes of 30, 60, 120 and 150 degrees.
constexpr Matrix kTurn60{0.5, -kRoot, kRoot, 0.5}, kTurn120{-0.5, -kRoot, kRoot, -0.5},
                 kTurn240{-0.5, kRoot, -kRoot, -0.5}, kTurn300{0.5, kRoot, -kRoot, 0.5},
                 kAxis30{0.5, kRoot, kRoot, -0.5}, kAxis60{-0.5, kRoot, kRoot, 0.5},
                 kAxis120{-0.5, -kRoot, -kRoot, 0.5}, kAxis150{0.5, -kRoot, -kRoot, -0.5};
// clang-format on

/// What squares and triangles have in common, larger groups first.
const std::vector<std::vector<Matrix>> kCommonGroups = {
    {kSame, kHalf, kLeftRight, kTopBottom}, {kSame, kLeftRight}, {kSame, kTopBottom}, {kSame, kHalf}};

const std::vector<std::vector<Matrix>> kSquareGroups = {
    {kSame, kHalf, kLeft, kRight, kLeftRight, kTopBottom, kRising, kFalling},
    kCommonGroups[0],
    {kSame, kHalf, kLeft, kRight},
    {kSame, kHalf, kRising, kFalling},
    kCommonGroups[1],
    kCommonGroups[2],
    kCommonGroups[3],
    {kSame, kRising},
    {kSame, kFalling},
};

/// Those with turns by a third.
const std::vector<std::vector<Matrix>> kTriangleGroups = {
    {kSame, kHalf, kLeftRight, kTopBottom, kTurn60, kTurn120, kTurn240, kTurn300, kAxis30, kAxis60, kAxis120,
     kAxis150},
    {kSame, kHalf, kTurn60, kTurn120, kTurn240, kTurn300},
    {kSame, kTurn120, kTurn240, kLeftRight, kAxis30, kAxis150},
    {kSame, kTurn120, kTurn240, kTopBottom, kAxis60, kAxis120},
    {kSame, kTurn120, kTurn240},
};

bool liesOn(const Outline& outline, Spot p, double tolerance) {
  return std::ranges::any_of(outline.sides(), [&](const OutlineSide& side) {
    return distance(p, nearestOn(p, side.a, side.b)) <= tolerance;
  });
}

bool leavesInPlace(const Isometry& map, const Outline& outline, double tolerance) {
  return std::ranges::all_of(outline.sides(), [&](const OutlineSide& side) {
    return liesOn(outline, map(side.a), tolerance) &&
           liesOn(outline, map(0.5 * (side.a + side.b)), tolerance);
  });
}

/// The middle of all sides by their lengths: every symmetry of the outline leaves it in place.
Spot middleOfSides(const Outline& outline) {
  Spot sum;
  double whole = 0;
  for (const auto& [a, b] : outline.sides()) {
    const double side = distance(a, b);
    sum = sum + (side / 2) * (a + b);
    whole += side;
  }
  return (1 / whole) * sum;
}

/// The first of the groups that leaves the outline in place; empty when none does.
Symmetries firstGroup(const std::vector<std::vector<Matrix>>& groups, Spot centre, const Outline& outline,
                      double tolerance) {
  for (const std::vector<Matrix>& group : groups) {
    Symmetries all;
    for (const auto& [xx, xy, yx, yy] : group) all.push_back({xx, xy, yx, yy, centre});
    if (std::all_of(all.begin() + 1, all.end(),
                    [&](const Isometry& map) { return leavesInPlace(map, outline, tolerance); }))
      return all;
  }
  return {};
}

}  // namespace

PointI Isometry::operator()(PointI p) const {
  const Spot image = (*this)(Spot{static_cast<double>(p.x), static_cast<double>(p.y)});
  return {toInt32(image.x), toInt32(image.y)};
}

Symmetries symmetriesOf(const Outline& outline, bool triangles, double tolerance) {
  const GridBox& box = outline.box();
  const Spot centre{(box.left + box.right) / 2, (box.bottom + box.top) / 2};
  Symmetries group;
  if (triangles) group = firstGroup(kTriangleGroups, middleOfSides(outline), outline, tolerance);
  if (group.empty())
    group = firstGroup(triangles ? kCommonGroups : kSquareGroups, centre, outline, tolerance);
  if (group.empty()) group.push_back({.centre = centre});
  return group;
}

Images::Images(std::span<const Spot> spots, const Symmetries& group, double grain)
    : images_(group.size(), std::vector<int>(spots.size(), -1)) {
  std::unordered_map<std::int64_t, int> at;  // by place; no lattice has 2^31 grains across
  at.reserve(spots.size());
  const auto placeOf = [&](Spot p) {
    return std::llround((p.x - group[0].centre.x) / grain) * (std::int64_t{1} << 32) +
           std::llround((p.y - group[0].centre.y) / grain);
  };
  for (std::size_t i = 0; i < spots.size(); ++i) at.emplace(placeOf(spots[i]), static_cast<int>(i));
  for (std::size_t g = 0; g < group.size(); ++g)
    for (std::size_t i = 0; i < spots.size(); ++i)
      if (const auto found = at.find(placeOf(group[g](spots[i]))); found != at.end())
        images_[g][i] = found->second;
}

bool Images::complete() const {
  return std::ranges::all_of(images_,
                             [](const auto& image) { return std::ranges::find(image, -1) == image.end(); });
}

int Images::leader(int item) const {
  int least = item;
  for (const std::vector<int>& image : images_)
    if (const int there = image[item]; there >= 0) least = std::min(least, there);
  return least;
}

void Images::spread(std::vector<bool>& flags) const {
  const std::vector<bool> set = flags;
  for (const std::vector<int>& image : images_)
    for (std::size_t i = 0; i < set.size(); ++i)
      if (set[i] && image[i] >= 0) flags[image[i]] = true;
}

}  // namespace lorivan
