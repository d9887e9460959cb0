// Which lines of a graph are each other's image, so that walls can be set in symmetry.
#pragma once

#include <vector>

#include "graph/graph.h"

namespace lorivan {

/// Turning by a full turn's `turns`-th part, and mirroring at the upright and at the level axis, all about
/// the middle of the lines. Turns of a wrapped graph move it along by that part of its period, but for the
/// half turn.
struct Symmetry {
  bool leftRight = false, topBottom = false;
  int turns = 1;
  bool isNone() const { return !leftRight && !topBottom && turns == 1; }
  bool operator==(const Symmetry&) const = default;
};

inline constexpr int kMostTurns = 40;

/// For every line the lines that change with it, itself first; ascending but for that. Lines that are not
/// there (kind 0) take part like all others. A line whose image is no line of the graph has fewer companions.
class LineOrbits {
 public:
  LineOrbits(const KnotGraph& graph, const Symmetry& symmetry);

  const std::vector<int>& of(int line) const { return orbits_[indexOf(line)]; }
  /// Of the line's orbit in `all`.
  int indexOf(int line) const { return number_[line]; }
  /// Every orbit once.
  const std::vector<std::vector<int>>& all() const { return orbits_; }
  /// Whether every line has an image: the graph, its kinds aside, is as symmetrical.
  bool complete() const { return complete_; }

 private:
  std::vector<int> number_;
  std::vector<std::vector<int>> orbits_;
  bool complete_ = true;
};

/// The turns above 1 that the graph allows, ascending.
std::vector<int> possibleTurns(const KnotGraph& graph);

}  // namespace lorivan
