// The program's one kind of random source: uniform numbers in [0, 1), the same for the same seed everywhere.
#pragma once

#include <cstdint>
#include <functional>
#include <random>

namespace lorivan {

/// One draw, uniform in [0, 1). Passed in wherever a choice is made at random, so that a test can script it.
using Rnd = std::function<double()>;

/// A source seeded with `seed`. The engine's output is fixed by the C++ standard; the standard's
/// distributions are not, so the conversion to [0, 1) is done here.
inline Rnd seededRandom(std::uint64_t seed) {
  return [engine = std::mt19937_64(seed)]() mutable { return static_cast<double>(engine() >> 11) * 0x1p-53; };
}

}  // namespace lorivan
