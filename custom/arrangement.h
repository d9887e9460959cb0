// Any lines made into a plane graph: near points joined, crossing lines split.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "base/points.h"
#include "base/result.h"
#include "custom/geometry.h"

namespace lorivan {

using NodePair = std::array<int, 2>;

struct Arrangement {
  std::vector<PointI> nodes;    // all different
  std::vector<NodePair> edges;  // all different; they meet at nodes only
};

/// How spots become the whole coordinates of nodes: multiplied, then rounded half to even.
struct NodeScale {
  double x = 1, y = 1;
};

/// Spots closer than `join` to an earlier one are taken as that one; a line that passes closer than `join` to
/// a spot is led through it; crossings make new nodes. Rounding to whole coordinates can make lines touch or
/// cross anew; those are split again until none do. Lines without length and repeated ones are dropped. Fails
/// when there would be more than `mostEdges`. Coordinates must stay below 2^24 after scaling.
Result<Arrangement> arrange(std::span<const Spot> spots, std::span<const NodePair> lines, double join,
                            NodeScale scale, std::size_t mostEdges);

}  // namespace lorivan
