// The traced strands, as 2-D drawing, the tube model and the exports read them.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

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
  std::array<std::int32_t, kStrandSlots> ThreadCount{};  // points of each slot; 0: the slot is empty

  StrandPoint& point(int slot, int number) {
    return ThreadPoints[static_cast<std::size_t>(slot) * kStrandPoints + static_cast<std::size_t>(number)];
  }
  const StrandPoint& point(int slot, int number) const {
    return const_cast<StrandStore*>(this)->point(slot, number);
  }
  /// Points 0 to count of a slot; the last is a copy of the first. Empty for an unused slot.
  std::span<const StrandPoint> closed(int slot) const {
    const std::int32_t count = ThreadCount[static_cast<std::size_t>(slot)];
    if (count == 0) return {};
    return {&point(slot, 0), static_cast<std::size_t>(count) + 1};
  }
};

}  // namespace lorivan
