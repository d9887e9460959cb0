#include "platform/common/wide_registers.h"

#if defined(__x86_64__) && defined(__GNUC__)
#include <immintrin.h>
#endif

namespace lorivan {

#if defined(__x86_64__) && defined(__GNUC__)

namespace {

__attribute__((target("avx"), noinline)) void clearUpperParts() { _mm256_zeroupper(); }

}  // namespace

void leaveWideRegisters() {
  if (__builtin_cpu_supports("avx")) clearUpperParts();
}

#else

void leaveWideRegisters() {}

#endif

}  // namespace lorivan
