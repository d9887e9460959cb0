// Sorting of single-precision keys together with an index array, for painting from back to front.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "base/random.h"

namespace lorivan {

/// keys[lo..hi] ascending, index permuted in step. For short ranges: the work grows with the square.
void SelectionSortKeys(std::span<float> keys, int lo, int hi, std::span<std::int32_t> index);

/// keys[lo..hi] ascending, index permuted in step, equal keys in no fixed order. A quicksort (C. A. R. Hoare,
/// 1962) with random pivots; ranges of fewer than 13 keys go to SelectionSortKeys, and a range that splits
/// badly too often is finished as a heap, so n keys never take more than n log n work or 2 log2(n) levels.
void QuickSortKeys(std::span<float> keys, int lo, int hi, std::span<std::int32_t> index, const Rnd& random);

/// Puts whole key arrays in order and keeps its working memory for the next time.
class KeySorter {
 public:
  /// Sorts `keys` ascending and fills `index` with the positions that the keys had; equal keys keep their
  /// order. n log n work for any keys; the keys must not be NaN. Both spans have the same length.
  void sort(std::span<float> keys, std::span<std::int32_t> index);

 private:
  void radixSort(std::span<float> keys, std::span<std::int32_t> index);

  Rnd random_ = seededRandom(1);
  std::vector<std::uint64_t> pairs_, spare_;  // key bits above, position below
};

}  // namespace lorivan
