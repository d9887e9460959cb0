// How often a test tries what it draws at random, or what it does with every shape and size.
#pragma once

namespace lorivan {

/// All of them natively. Sanitizers and Wine, where each takes longer, see a fourth of them.
#ifdef LORIVAN_FEWER_TRIES
constexpr int kOneTryOf = 4;
#else
constexpr int kOneTryOf = 1;
#endif

constexpr int tries(int all) { return all / kOneTryOf; }

/// Whether this one of the combinations of a loop is not for here.
constexpr bool isLeftOut(int index) { return index % kOneTryOf != 0; }

}  // namespace lorivan
