// The closed loops among the lines of a plane graph, and the regions between them.
#pragma once

#include <optional>
#include <vector>

#include "custom/arrangement.h"
#include "custom/outline.h"

namespace lorivan {

/// A plane graph whose edges can be taken away. It must not outlive the arrangement, whose coordinates are
/// `scale` times those of the sides.
class LoopGraph {
 public:
  LoopGraph(const Arrangement& plane, double scale);

  /// Takes away every edge that lies on no closed loop.
  void dropBridges();
  /// In a part where some node has an odd number of edges, inside and outside cannot be told by counting:
  /// only the outer boundary stays.
  void keepBoundaryOfOddParts();

  std::vector<OutlineSide> sides() const;
  /// The sides of the region that a spot lies in, those of loops within it too; none outside of all loops.
  /// Bridges must have been dropped.
  std::vector<OutlineSide> regionAt(Spot p) const;

 private:
  struct Visit {
    int node, fromEdge;
    std::size_t nextEdge;
  };
  /// For each direction of each edge (2 e forwards, 2 e + 1 backwards) the walk that it belongs to, which has
  /// its region to the right.
  struct Walks {
    std::vector<int> of;
    std::vector<int> first;  // a direction of each walk
  };

  Spot spot(int node) const;
  bool dead(int edge) const { return dead_[edge]; }
  int otherEnd(int edge, int node) const;
  int degree(int node) const;
  void descend(int root, std::vector<int>& order, std::vector<int>& low, int& next);
  std::vector<int> partOf(int start, std::vector<bool>& seen) const;
  int rightmost(int node, Spot direction, int fromEdge) const;
  void keepBoundary(const std::vector<int>& part);
  int tail(int direction) const;
  int following(int direction) const;
  Walks walks() const;
  std::optional<int> leftOf(Spot p) const;

  const Arrangement& plane_;
  double scale_;
  std::vector<std::vector<int>> around_;  // edges at each node
  std::vector<bool> dead_;
};

}  // namespace lorivan
