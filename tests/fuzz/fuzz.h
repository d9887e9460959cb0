// The fuzzers' entry functions, and how they state what must hold. Each takes any bytes, feeds them to one
// reader or one road of the program, and ends the process where something that must hold does not.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace lorivan::fuzz {

using Bytes = std::span<const std::uint8_t>;

constexpr std::int64_t kMostPolygons = 6000;  // a fuzzer has to be fast

void knotText(Bytes bytes);     // a knot file
void shapeText(Bytes bytes);    // a file of a custom shape
void source(Bytes bytes);       // a knot inside a picture, drawing or model
void svgOutline(Bytes bytes);   // a drawing as an outline
void dxfOutline(Bytes bytes);   // the same
void picture(Bytes bytes);      // a picture that is traced
void shapeGrid(Bytes bytes);    // a custom shape, its grids and their knots
void graph(Bytes bytes);        // any lines, their knot, its outlines and its model
void commandLine(Bytes bytes);  // arguments, their knot and its files
void settings(Bytes bytes);     // what is kept from one start to the next

inline std::string_view textOf(Bytes bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

inline std::vector<std::string> linesOf(Bytes bytes) {
  std::istringstream text{std::string(textOf(bytes))};
  std::vector<std::string> lines;
  for (std::string line; std::getline(text, line);) lines.push_back(line);
  return lines;
}

inline void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

/// Takes bytes one after the other; behind the last one come zeros.
class Draws {
 public:
  explicit Draws(Bytes bytes) : bytes_(bytes) {}

  bool empty() const { return at_ >= bytes_.size(); }
  int byte() { return empty() ? 0 : bytes_[at_++]; }
  /// 0 to n - 1.
  int below(int n) { return n <= 256 ? byte() % n : (byte() * 256 + byte()) % n; }
  /// Any 16-bit number.
  std::int16_t number() { return static_cast<std::int16_t>(byte() * 256 + byte()); }

 private:
  Bytes bytes_;
  std::size_t at_ = 0;
};

}  // namespace lorivan::fuzz
