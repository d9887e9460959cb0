// From samples to a pixel.
#pragma once

#include <algorithm>
#include <cstdint>

namespace lorivan {

/// Sums of the parts of 0xAARRGGBB samples, two 16-bit parts each: at most 257 samples.
struct SampleSum {
  std::uint32_t redBlue = 0, alphaGreen = 0;
  void add(std::uint32_t sample) {
    redBlue += sample & 0x00FF00FF;
    alphaGreen += sample >> 8 & 0x00FF00FF;
  }
  /// The mean; with `transparent`, samples are either full or empty, and the mean is one with straight alpha.
  std::uint32_t mean(std::uint32_t samples, bool transparent) const {
    const std::uint32_t alpha = alphaGreen >> 16;
    const std::uint32_t weight = transparent ? std::max(alpha / 255, 1U) : samples;
    const auto part = [weight](std::uint32_t sum) { return (sum + weight / 2) / weight; };
    return (alpha + samples / 2) / samples << 24 | part(redBlue >> 16) << 16 |
           part(alphaGreen & 0xFFFF) << 8 | part(redBlue & 0xFFFF);
  }
};

}  // namespace lorivan
