// The angles of a view, and the sort.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

#include "model3d/key_sort.h"
#include "model3d/m3ops.h"

namespace lorivan {
namespace {

TEST(CheckAngles, WrapsOnceAndKeepsOffHalfATurn) {
  for (const auto& [given, kept] : {std::pair{-0.5, kTwoPi - 0.5},
                                    {7, 7 - kTwoPi},
                                    {kPi, kPi + 0.02},
                                    {20, 20 - kTwoPi},
                                    {-13, kTwoPi - 13},
                                    {kPi + 0.015, kPi + 0.015}}) {
    ViewState view;
    view.ViewPhi = static_cast<float>(given);
    CheckAngles(view);
    EXPECT_NEAR(view.ViewPhi, kept, 1e-5) << given;
  }
}

std::vector<float> keysOf(int pattern, std::size_t count, const Rnd& random) {
  std::vector<float> keys(count);
  for (std::size_t i = 0; i < count; ++i) {
    const auto up = static_cast<float>(i);
    const auto any = static_cast<float>(random() - 0.5);
    const float rare[] = {-0.0F, 0.0F, kInfinitelyFar, -std::numeric_limits<float>::max(), 1e-40F};
    const float choices[] = {any,         4.5F,       up, -up, std::floor(any * 8), i < count / 2 ? up : -up,
                             any * 1e38F, rare[i % 5]};
    keys[i] = choices[pattern];
  }
  return keys;
}

TEST(Sort, AnyKeysComeOutAscendingAndEqualOnesInOrder) {
  const Rnd random = seededRandom(7);
  KeySorter sorter;
  for (const std::size_t count : {0, 1, 2, 12, 13, 14, 300, 4095, 4096, 50000})
    for (int pattern = 0; pattern < 8; ++pattern) {
      const std::vector<float> before = keysOf(pattern, count, random);
      std::vector<float> keys = before;
      std::vector<std::int32_t> index(count), expected(count);
      std::iota(expected.begin(), expected.end(), 0);
      std::stable_sort(expected.begin(), expected.end(),
                       [&](std::int32_t a, std::int32_t b) { return before[a] < before[b]; });
      sorter.sort(keys, index);
      EXPECT_EQ(index, expected) << "pattern " << pattern << " of " << count;
      for (std::size_t i = 0; i < count; ++i) ASSERT_EQ(keys[i], before[index[i]]);
    }
}

TEST(Sort, QuickSortKeepsToItsRangeAndNeverDegenerates) {
  for (int pattern = 0; pattern < 8; ++pattern)
    for (const double draw : {0.0, 0.5, 0.999999}) {  // the worst pivots, too
      const std::vector<float> before = keysOf(pattern, 100000, seededRandom(3));
      std::vector<float> keys = before;
      std::vector<std::int32_t> index(keys.size());
      std::iota(index.begin(), index.end(), 0);
      int draws = 0;
      QuickSortKeys(keys, 100, 99899, index, [&] {
        ++draws;
        return draw;
      });
      EXPECT_TRUE(std::is_sorted(keys.begin() + 100, keys.end() - 100));
      for (std::size_t i = 0; i < keys.size(); ++i) {
        const auto from = static_cast<std::size_t>(index[i]);
        ASSERT_TRUE(keys[i] == before[from] && ((i >= 100 && i < 99900) || from == i)) << i;
      }
      EXPECT_LT(draws, 50000) << "one draw for each split";
    }
}

}  // namespace
}  // namespace lorivan
