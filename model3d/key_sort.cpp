// Quicksort and selection sort as described by their interfaces; long arrays take a radix sort.
#include "model3d/key_sort.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <numeric>

namespace lorivan {

namespace {

struct Rows {
  std::span<float> keys;
  std::span<std::int32_t> index;

  float key(int i) const { return keys[i]; }
  void copy(int to, int from) const {
    keys[to] = keys[from];
    index[to] = index[from];
  }
  void swap(int a, int b) const {
    std::swap(keys[a], keys[b]);
    std::swap(index[a], index[b]);
  }
};

void sink(const Rows& rows, int lo, int root, int count) {
  for (int child = 2 * root + 1; child < count; child = 2 * root + 1) {
    if (child + 1 < count && rows.key(lo + child) < rows.key(lo + child + 1)) ++child;
    if (rows.key(lo + root) >= rows.key(lo + child)) return;
    rows.swap(lo + root, lo + child);
    root = child;
  }
}

void heapSort(const Rows& rows, int lo, int hi) {
  const int count = hi - lo + 1;
  for (int root = count / 2 - 1; root >= 0; --root) sink(rows, lo, root, count);
  for (int last = count - 1; last > 0; --last) {
    rows.swap(lo, lo + last);
    sink(rows, lo, 0, last);
  }
}

/// Splits lo..hi round the key at `pivot` by moving a hole between the ends; gives the pivot's final place.
/// Keys equal to the pivot go to its right.
int partition(const Rows& rows, int lo, int hi, int pivot) {
  const float value = rows.key(pivot);
  const std::int32_t number = rows.index[pivot];
  rows.copy(pivot, lo);
  int hole = lo;
  while (true) {
    while (hi > lo && rows.key(hi) >= value) --hi;
    hole = lo;
    if (hi <= lo) break;
    rows.copy(lo++, hi);
    while (lo < hi && rows.key(lo) < value) ++lo;
    hole = hi;
    if (lo >= hi) break;
    rows.copy(hi, lo);
  }
  rows.keys[hole] = value;
  rows.index[hole] = number;
  return hole;
}

void quickSort(const Rows& rows, int lo, int hi, const Rnd& random, int levels) {
  while (hi - lo >= 12) {
    if (levels-- == 0) return heapSort(rows, lo, hi);
    const auto pivot = static_cast<int>(std::floor(random() * (hi - lo + 1) + lo));
    const int middle = partition(rows, lo, hi, std::min(pivot, hi));
    if (middle - lo < hi - middle) {
      quickSort(rows, lo, middle - 1, random, levels);
      lo = middle + 1;
    } else {
      quickSort(rows, middle + 1, hi, random, levels);
      hi = middle - 1;
    }
  }
  SelectionSortKeys(rows.keys, lo, hi, rows.index);
}

/// Bits that compare as unsigned numbers as the floats themselves do; both zeros give the same bits.
std::uint32_t orderedBits(float key) {
  const auto bits = std::bit_cast<std::uint32_t>(key + 0.0F);
  return bits & 0x80000000U ? ~bits : bits | 0x80000000U;
}

float fromOrderedBits(std::uint32_t bits) {
  return std::bit_cast<float>(bits & 0x80000000U ? bits & 0x7FFFFFFFU : ~bits);
}

constexpr int kDigitBits = 11;
constexpr int kDigits = 3;
constexpr std::size_t kBuckets = 1U << kDigitBits;

std::size_t digit(std::uint64_t pair, int place) {
  return static_cast<std::size_t>(pair >> (32 + kDigitBits * place)) & (kBuckets - 1);
}

}  // namespace

void SelectionSortKeys(std::span<float> keys, int lo, int hi, std::span<std::int32_t> index) {
  const Rows rows{keys, index};
  for (int i = lo; i < hi; ++i) {
    int least = i;
    for (int j = i + 1; j <= hi; ++j) {
      if (rows.key(j) < rows.key(least)) least = j;
    }
    if (least != i) rows.swap(i, least);
  }
}

void QuickSortKeys(std::span<float> keys, int lo, int hi, std::span<std::int32_t> index, const Rnd& random) {
  if (hi <= lo) return;
  const int levels = 2 * std::bit_width(static_cast<unsigned>(hi - lo + 1));
  quickSort({keys, index}, lo, hi, random, levels);
}

void KeySorter::sort(std::span<float> keys, std::span<std::int32_t> index) {
  constexpr std::size_t kWorthTables = 4096;
  if (keys.size() >= kWorthTables) return radixSort(keys, index);
  std::iota(index.begin(), index.end(), 0);
  QuickSortKeys(keys, 0, static_cast<int>(keys.size()) - 1, index, random_);
  for (std::size_t i = 0; i < keys.size();) {
    std::size_t end = i + 1;
    while (end < keys.size() && keys[end] == keys[i]) ++end;
    std::sort(index.begin() + static_cast<std::ptrdiff_t>(i),
              index.begin() + static_cast<std::ptrdiff_t>(end));
    i = end;
  }
}

void KeySorter::radixSort(std::span<float> keys, std::span<std::int32_t> index) {
  const std::size_t count = keys.size();
  pairs_.resize(count);
  spare_.resize(count);
  std::array<std::array<std::uint32_t, kBuckets>, kDigits> starts{};
  for (std::size_t i = 0; i < count; ++i) {
    pairs_[i] = static_cast<std::uint64_t>(orderedBits(keys[i])) << 32 | i;
    for (int place = 0; place < kDigits; ++place) {
      ++starts[place][digit(pairs_[i], place)];
    }
  }
  for (int place = 0; place < kDigits; ++place) {
    auto& start = starts[place];
    if (start[digit(pairs_[0], place)] == count) continue;
    std::exclusive_scan(start.begin(), start.end(), start.begin(), 0U);
    for (const std::uint64_t pair : pairs_) spare_[start[digit(pair, place)]++] = pair;
    pairs_.swap(spare_);
  }
  for (std::size_t i = 0; i < count; ++i) {
    keys[i] = fromOrderedBits(static_cast<std::uint32_t>(pairs_[i] >> 32));
    index[i] = static_cast<std::int32_t>(pairs_[i] & 0xFFFFFFFFU);
  }
}

}  // namespace lorivan
