// What is left when memory runs out: enough to end in order.
#pragma once

namespace lorivan {

/// Sets some memory aside. The first time that memory is refused, the refused call gets it and goes on; only
/// the next refusal throws. Where an exception cannot be caught the program ends with kStatusWithoutMemory, a
/// sentence on the error output, and without scraps. A second call fills the reserve up again.
void reserveMemory();

inline constexpr int kStatusWithoutMemory = 5;  // as when an output cannot be written
inline constexpr char kOutOfMemory[] = "there is not enough memory for this";

}  // namespace lorivan
