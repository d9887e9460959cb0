#include "base/memory_reserve.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>

#include "base/system_files.h"

namespace lorivan {
namespace {

constexpr std::size_t kReserve = std::size_t{4} << 20;

std::atomic<void*> reserve = nullptr;

void giveReserve() {
  void* const block = reserve.exchange(nullptr);
  if (block == nullptr) throw std::bad_alloc();
  std::free(block);
}

[[noreturn]] void endInWords() {
  try {
    if (const auto fault = std::current_exception()) std::rethrow_exception(fault);
  } catch (const std::bad_alloc&) {
    std::fprintf(stderr, "lorivan: %s\n", kOutOfMemory);
    removeScraps();
    std::_Exit(kStatusWithoutMemory);
  } catch (...) {
  }
  std::abort();
}

}  // namespace

void reserveMemory() {
  std::free(reserve.exchange(std::malloc(kReserve)));
  std::set_new_handler(giveReserve);
  std::set_terminate(endInWords);
}

}  // namespace lorivan
