// A 16-bit greyscale PNG.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace lorivan {

struct GreyPicture {
  int width = 0, height = 0;
  std::span<const std::uint16_t> levels;      // row by row from the top
  std::optional<double> pixelsPerMetre = {};  // the same across and down
  std::span<const std::pair<std::string_view, std::string>> texts =
      {};  // keyword of at most 79 letters, text
};

/// The file's bytes; empty when memory ran out.
std::string greyPng(const GreyPicture& picture);

}  // namespace lorivan
