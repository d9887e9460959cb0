#include "window/grid_symmetry.h"

#include <algorithm>

#include "base/numbers.h"

namespace lorivan {
namespace {

struct Named {
  Symmetry symmetry;
  std::string_view name;
};
constexpr Named kNames[] = {
    {kNoSymmetry, "None"}, {kLeftRight, "LeftRight"}, {kTopBottom, "TopBottom"}, {kBothMirrors, "Both"}};

bool sameLines(const Shared<KnotLines>& a, const Shared<KnotLines>& b) {
  const auto sameEnds = [](const KnotLine& x, const KnotLine& y) {
    return x.X1 == y.X1 && x.Y1 == y.Y1 && x.X2 == y.X2 && x.Y2 == y.Y2;
  };
  if (!a || !b) return static_cast<bool>(a) == static_cast<bool>(b);
  return a.sameAs(b) || std::ranges::equal(*a, *b, sameEnds);
}

}  // namespace

std::string symmetryName(const Symmetry& symmetry) {
  for (const Named& named : kNames)
    if (named.symmetry == symmetry) return std::string(named.name);
  return std::to_string(symmetry.turns);
}

Symmetry symmetryOf(std::string_view name) {
  for (const Named& named : kNames)
    if (named.name == name) return named.symmetry;
  return {false, false, static_cast<int>(parseInteger(name, 2, kMostTurns).value_or(1))};
}

void GridSymmetry::choose(const Symmetry& symmetry, const KnotGraph& graph) {
  chosen_ = symmetry;
  orbits_.emplace(graph, inForce());
}

bool GridSymmetry::follow(const Document& document, const KnotGraph& graph) {
  const bool same = sameLines(lines_, document.lines);
  lines_ = document.lines;
  if (same) return false;
  findOrbits(graph);
  return true;
}

void GridSymmetry::findOrbits(const KnotGraph& graph) {
  const bool any = lines_ && graph.LastLine >= 0;
  leftRight_ = any && LineOrbits(graph, kLeftRight).complete();
  topBottom_ = any && LineOrbits(graph, kTopBottom).complete();
  turns_ = any ? possibleTurns(graph) : std::vector<int>();
  halfTurn_ = std::erase(turns_, 2) > 0;
  orbits_.emplace(graph, inForce());
}

bool GridSymmetry::allows(const Symmetry& symmetry) const {
  if (symmetry.leftRight && !leftRight_) return false;
  if (symmetry.topBottom && !topBottom_) return false;
  if (symmetry.turns <= 2) return symmetry.turns == 1 || halfTurn_;
  return std::ranges::find(turns_, symmetry.turns) != turns_.end();
}

std::vector<int> GridSymmetry::imagesOf(int line) const {
  if (line < 0 || !lines_ || line >= std::ssize(*lines_) || !orbits_) return {};
  return orbits_->of(line);
}

}  // namespace lorivan
