// What libFuzzer calls: one of the entry functions, which the build names.
#include "fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  lorivan::fuzz::LORIVAN_FUZZ_ENTRY({data, size});
  return 0;
}
