#include "platform/common/wide_registers.h"

namespace lorivan {

#if defined(__x86_64__) && defined(__GNUC__)

namespace {

__attribute__((target("avx"), noinline)) void clearUpperParts() { __builtin_ia32_vzeroupper(); }

}  // namespace

void leaveWideRegisters() {
  if (__builtin_cpu_supports("avx")) clearUpperParts();
}

#else

void leaveWideRegisters() {}

#endif

}  // namespace lorivan
