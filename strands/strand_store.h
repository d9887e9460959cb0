// The traced strands, as 2-D drawing, the tube model and the exports read them.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "graph/graph.h"

namespace lorivan {

inline constexpr int kStrandSlots = 41;     // slots 0 to 40; slot 0 is never used
inline constexpr int kStrandPoints = 6001;  // points 0 to 6000 of a slot

/// One corner of a strand's closed control polygon: an apex (even numbers, z = 0) or a crossing at a line's
/// midpoint (odd numbers, z = +1 over or -1 under).
struct StrandPoint {
  float x = 0;  // negated x of the grid
  float y = 0;  // y of the grid divided by the vertical stretch factor
  float z = 0;  // height mark
};

/// A slot is one strand and its number is the strand's colour number.
struct StrandStore {
  StrandStore() : ThreadPoints(static_cast<std::size_t>(kStrandSlots) * kStrandPoints) {}

  std::vector<StrandPoint> ThreadPoints;                 // slot-major
  Wrap wrap;                                             // of the graph that the strands run through
  std::array<std::int32_t, kStrandSlots> turns{};        // periods that a strand goes to the right in one lap
  std::array<std::int32_t, kStrandSlots> ThreadCount{};  // points of each slot; 0: the slot is empty
  int lost = 0;                                          // strands whose slot a later one took

  StrandPoint& point(int slot, int number) {
    return ThreadPoints[static_cast<std::size_t>(slot) * kStrandPoints + static_cast<std::size_t>(number)];
  }
  const StrandPoint& point(int slot, int number) const {
    return const_cast<StrandStore*>(this)->point(slot, number);
  }
  /// How far x, which is negated, changes in one lap of a strand; not 0 for one that goes round a cylinder.
  float lap(int slot) const { return static_cast<float>(-turns[slot] * int{wrap.period}); }
  /// Any point of a strand, whichever lap its number is in, below 0 too.
  StrandPoint turned(int slot, int number) const {
    const int count = ThreadCount[slot];
    const int laps = number >= 0 ? number / count : -((count - 1 - number) / count);
    StrandPoint p = point(slot, number - laps * count);
    if (laps != 0 && turns[slot] != 0) p.x += static_cast<float>(laps) * lap(slot);
    return p;
  }
  /// Points 0 to count of a slot; the last is a copy of the first, a lap further on. Empty for an unused
  /// slot.
  std::span<const StrandPoint> closed(int slot) const {
    const std::int32_t count = ThreadCount[slot];
    if (count == 0) return {};
    return {&point(slot, 0), static_cast<std::size_t>(count) + 1};
  }
};

}  // namespace lorivan
