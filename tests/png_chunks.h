// The chunks of a PNG file, for tests.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/bytes.h"
#include "base/checksum.h"

namespace lorivan {

struct PngChunk {
  std::string name, data;
};

/// Expects their check sums.
inline std::vector<PngChunk> pngChunks(const std::string& png) {
  std::vector<PngChunk> chunks;
  for (std::size_t at = 8; at + 12 <= png.size(); at += 12 + chunks.back().data.size()) {
    const std::size_t length = big32(png.data() + at);
    chunks.push_back({png.substr(at + 4, 4), png.substr(at + 8, length)});
    EXPECT_EQ(big32(&png.at(at + 8 + length)), crc32(png.substr(at + 4, length + 4))) << chunks.back().name;
  }
  return chunks;
}

}  // namespace lorivan
