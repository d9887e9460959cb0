// Triangles read back from the text of a mesh file, and the facts that a closed mesh obeys.
#pragma once

#include <array>
#include <charconv>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace lorivan {

using ReadTriangle = std::array<std::array<double, 3>, 3>;

/// All numbers of a line after its first word.
inline std::vector<double> numbersOf(std::string_view line) {
  std::vector<double> numbers;
  for (std::size_t at = line.find(' '); at < line.size(); at = line.find(' ', at + 1)) {
    double value = 0;
    if (std::from_chars(line.data() + at + 1, line.data() + line.size(), value).ec == std::errc{})
      numbers.push_back(value);
  }
  return numbers;
}

inline std::vector<std::string_view> linesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  for (std::size_t end = text.find("\r\n"); end != std::string_view::npos; end = text.find("\r\n")) {
    lines.push_back(text.substr(0, end));
    text.remove_prefix(end + 2);
  }
  return lines;
}

inline std::vector<ReadTriangle> readStl(std::string_view text) {
  std::vector<ReadTriangle> triangles;
  std::size_t corner = 0;
  for (const std::string_view line : linesOf(text)) {
    if (line.starts_with("facet")) triangles.emplace_back(), corner = 0;
    if (!line.starts_with("    vertex")) continue;
    const auto numbers = numbersOf(line.substr(4));
    for (std::size_t axis = 0; axis < 3; ++axis) triangles.back()[corner][axis] = numbers.at(axis);
    ++corner;
  }
  return triangles;
}

struct MeshFacts {
  int unmatched = 0;   // places where an edge is not passed as often one way as the other
  int ambiguous = 0;   // edges that more than two triangles share
  int degenerate = 0;  // triangles with a corner twice
  double volume = 0;
};

inline MeshFacts factsOf(const std::vector<ReadTriangle>& triangles) {
  MeshFacts facts;
  std::map<std::pair<std::array<double, 3>, std::array<double, 3>>, int> edges;
  for (const auto& [a, b, c] : triangles) {
    if (a == b || b == c || c == a) ++facts.degenerate;
    ++edges[{a, b}], ++edges[{b, c}], ++edges[{c, a}];
    facts.volume += (a[0] * (b[1] * c[2] - b[2] * c[1]) + a[1] * (b[2] * c[0] - b[0] * c[2]) +
                     a[2] * (b[0] * c[1] - b[1] * c[0])) /
                    6;
  }
  for (const auto& [edge, count] : edges) {
    const auto reverse = edges.find({edge.second, edge.first});
    if (reverse == edges.end() || reverse->second != count) ++facts.unmatched;
    if (count > 1) ++facts.ambiguous;
  }
  return facts;
}

}  // namespace lorivan
