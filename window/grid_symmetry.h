// The symmetry that walls are set in: the one that was chosen, where the grid has it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "design/document.h"
#include "graph/line_symmetry.h"

namespace lorivan {

inline constexpr Symmetry kNoSymmetry{}, kLeftRight{true, false, 1}, kTopBottom{false, true, 1},
    kBothMirrors{true, true, 1}, kHalfTurn{false, false, 2};

/// How settings name it, and back; an unknown name is none.
std::string symmetryName(const Symmetry& symmetry);
Symmetry symmetryOf(std::string_view name);

class GridSymmetry {
 public:
  /// `graph` is the one that follow() was told last.
  void choose(const Symmetry& symmetry, const KnotGraph& graph);
  const Symmetry& chosen() const { return chosen_; }
  /// The one chosen, or none while the grid does not have it.
  const Symmetry& inForce() const { return allows(chosen_) ? chosen_ : kNoSymmetry; }

  /// True when the lines lie otherwise than before, whatever their kinds.
  bool follow(const Document& document, const KnotGraph& graph);

  bool allows(const Symmetry& symmetry) const;
  /// The turns above 2 that the grid has.
  const std::vector<int>& turns() const { return turns_; }
  /// The line and its images.
  std::vector<int> imagesOf(int line) const;

 private:
  void findOrbits(const KnotGraph& graph);

  Symmetry chosen_;
  Shared<KnotLines> lines_;
  std::vector<int> turns_;
  bool leftRight_ = false, topBottom_ = false, halfTurn_ = false;
  std::optional<LineOrbits> orbits_;  // of the symmetry in force
};

}  // namespace lorivan
