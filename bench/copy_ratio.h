// The yardstick of all benchmarks: how long a plain copy of as many bytes takes, measured in the same run.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <ctime>
#include <vector>

namespace lorivan {

constexpr std::size_t kMegabyte = 1 << 20;

/// Processor time of this process.
inline double processorSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

/// Processor seconds for copying so many bytes in memory, the best of many; of more than 64 megabytes as much
/// for each as of these.
inline double copySeconds(std::size_t bytes = kMegabyte) {
  const std::size_t size = std::clamp<std::size_t>(bytes, 1, 64 * kMegabyte);
  std::vector<char> from(size, 1), to(size, 2);
  const auto turns = static_cast<int>(std::max<std::size_t>(1, 8 * kMegabyte / size));
  double least = 1e9;
  for (int round = 0; round < 12; ++round) {
    const double start = processorSeconds();
    for (int i = 0; i < turns; ++i) {
      std::memcpy(to.data(), from.data(), size);
      benchmark::DoNotOptimize(to.data());
      benchmark::ClobberMemory();
    }
    least = std::min(least, (processorSeconds() - start) / turns);
  }
  return least * static_cast<double>(bytes) / static_cast<double>(size);
}

/// Reports the benchmark's mean processor time as a multiple of the copy ("copies"): of the picture's pixels,
/// of the bytes that are written, of a megabyte where there is nothing of that kind.
class CopyRatio {
 public:
  explicit CopyRatio(benchmark::State& state, std::size_t bytes = kMegabyte)
      : state_(state), copy_(copySeconds(bytes)), start_(processorSeconds()) {}
  ~CopyRatio() {
    const double took = processorSeconds() - start_;
    state_.counters["copies"] = took / static_cast<double>(state_.iterations()) / copy_;
  }

 private:
  benchmark::State& state_;
  double copy_;
  double start_;
};

/// The bytes of a picture that is 5 wide to 4 high.
inline std::size_t pictureBytes(std::size_t width) { return width * (width * 4 / 5) * 4; }

}  // namespace lorivan
