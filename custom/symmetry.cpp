#include "custom/symmetry.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <map>
#include <utility>

#include "base/numbers.h"

namespace lorivan {
namespace {

struct Matrix {
  int xx, xy, yx, yy;
};

// clang-format off
constexpr Matrix kSame{1, 0, 0, 1}, kHalf{-1, 0, 0, -1}, kLeft{0, -1, 1, 0}, kRight{0, 1, -1, 0},
                 kLeftRight{-1, 0, 0, 1}, kTopBottom{1, 0, 0, -1}, kRising{0, 1, 1, 0}, kFalling{0, -1, -1, 0};
// clang-format on

/// The groups of quarter turns and mirrorings, larger ones first.
const std::array<std::vector<Matrix>, 9> kGroups = {{
    {kSame, kHalf, kLeft, kRight, kLeftRight, kTopBottom, kRising, kFalling},
    {kSame, kHalf, kLeftRight, kTopBottom},
    {kSame, kHalf, kLeft, kRight},
    {kSame, kHalf, kRising, kFalling},
    {kSame, kLeftRight},
    {kSame, kTopBottom},
    {kSame, kHalf},
    {kSame, kRising},
    {kSame, kFalling},
}};

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

}  // namespace

Symmetries symmetriesOf(const Outline& outline, double tolerance) {
  const GridBox& box = outline.box();
  const PointI centre{toInt32((box.left + box.right) / 2), toInt32((box.bottom + box.top) / 2)};
  for (const std::vector<Matrix>& group : kGroups) {
    Symmetries all;
    for (const auto& [xx, xy, yx, yy] : group) all.push_back({xx, xy, yx, yy, centre});
    if (std::all_of(all.begin() + 1, all.end(),
                    [&](const Isometry& map) { return leavesInPlace(map, outline, tolerance); }))
      return all;
  }
  return {Isometry{.centre = centre}};
}

Images::Images(std::span<const Spot> spots, const Symmetries& group, double grain)
    : images_(group.size(), std::vector<int>(spots.size(), -1)) {
  using Place = std::pair<std::int64_t, std::int64_t>;
  std::map<Place, int> at;
  const auto placeOf = [&](Spot p) {
    return Place{std::llround((p.x - group[0].centre.x) / grain),
                 std::llround((p.y - group[0].centre.y) / grain)};
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
    if (const int there = image[static_cast<std::size_t>(item)]; there >= 0) least = std::min(least, there);
  return least;
}

void Images::spread(std::vector<bool>& flags) const {
  const std::vector<bool> set = flags;
  for (const std::vector<int>& image : images_)
    for (std::size_t i = 0; i < set.size(); ++i)
      if (set[i] && image[i] >= 0) flags[static_cast<std::size_t>(image[i])] = true;
}

}  // namespace lorivan
