// The yardstick of all benchmarks: how long a plain copy of one megabyte takes, measured once in this run.
#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstring>
#include <vector>

namespace lorivan {

/// Seconds for copying one megabyte, the best of many.
inline double copySeconds() {
  static const double best = [] {
    std::vector<char> from(1 << 20, 1), to(1 << 20);
    double least = 1;
    for (int i = 0; i < 200; ++i) {
      const auto start = std::chrono::steady_clock::now();
      std::memcpy(to.data(), from.data(), from.size());
      benchmark::DoNotOptimize(to.data());
      benchmark::ClobberMemory();
      least =
          std::min(least, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    return least;
  }();
  return best;
}

/// Reports the benchmark's mean time as a multiple of the copy ("copies").
class CopyRatio {
 public:
  explicit CopyRatio(benchmark::State& state)
      : state_(state), copy_(copySeconds()), start_(std::chrono::steady_clock::now()) {}
  ~CopyRatio() {
    const double took = std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
    state_.counters["copies"] = took / static_cast<double>(state_.iterations()) / copy_;
  }

 private:
  benchmark::State& state_;
  double copy_;
  std::chrono::steady_clock::time_point start_;
};

}  // namespace lorivan
