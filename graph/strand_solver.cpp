#include "graph/strand_solver.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <utility>

#include "base/random.h"
#include "graph/fewest_changes.h"

namespace lorivan {
namespace {

// What a search may spend, in changed lines that are counted: about 150 ms of one core in all. The search for
// many strands shares it.
constexpr std::int64_t kEffort = 2'800'000, kEffortForMany = 1'900'000;

/// Lines that change together, and what they become.
struct Move {
  const std::vector<int>* orbit;
  bool toWalls;
};

/// A graph on the way to the goal.
struct Stage {
  Stage(const StrandRuns& runs, Walls which, int lines)
      : walls(std::move(which)), changed(lines), around(runs, walls) {}
  Walls walls;
  int changed;  // lines that are not as at the start
  ChangedRuns around;
};

class Search {
 public:
  Search(const KnotGraph& graph, const StrandGoal& goal)
      : runs_(graph),
        goal_(goal),
        orbits_(graph, goal.symmetry),
        start_(runs_.walls()),
        first_(runs_.count(start_)),
        wanted_(goal.strands.value_or(goal.mostStrands)) {
    for (const std::vector<int>& orbit : orbits_.all())
      if (std::ranges::all_of(orbit, [&](int j) { return canChange(graph, j); }))
        for (const bool toWalls : {true, false}) moves_.push_back({&orbit, toWalls});
  }

  Result<StrandPlan> run();

 private:
  bool canChange(const KnotGraph& graph, int line) const {
    return runs_.isPart(line) && graph.Lines[static_cast<std::size_t>(line)].Kind != kReversed;
  }
  std::vector<int> changedLines(const Walls& walls) const;
  StrandScore scoreOf(const StrandRuns::Counts& counts, int changed) const;
  void keep(const Walls& walls, const StrandScore& score);
  Stage stage(const Walls& walls);
  StrandScore tryMove(Stage& stage, const Move& move);
  void make(Stage& stage);

  void joinStrands();
  void climb(const Walls& from);
  void anneal(const Walls& from, const Rnd& random, std::int64_t effort);
  Walls randomWalls(const Rnd& random, double share) const;
  void findFewest();
  void findMany();

  StrandRuns runs_;
  const StrandGoal& goal_;
  LineOrbits orbits_;
  Walls start_;
  StrandRuns::Counts first_;
  std::vector<Move> moves_;
  int wanted_;
  std::int64_t effort_ = kEffort;
  Walls bestWalls_;
  StrandScore best_;
  std::vector<int> lines_;  // that the move tried last changes
};

std::vector<int> Search::changedLines(const Walls& walls) const {
  std::vector<int> lines;
  for (std::size_t j = 0; j < walls.size(); ++j)
    if (walls[j] != start_[j]) lines.push_back(static_cast<int>(j));
  return lines;
}

/// Strands that would be too long, more than can be drawn, and loops that are never drawn are worse than a
/// wrong number.
StrandScore Search::scoreOf(const StrandRuns::Counts& counts, int changed) const {
  constexpr int kFault = 10'000;
  StrandScore score;
  score.distance = std::abs(counts.strands - wanted_) +
                   kFault * (std::max(0, counts.wallLoops - first_.wallLoops) +
                             std::max(0, counts.strands - goal_.mostStrands)) +
                   (counts.strands == 0 || counts.longest > goal_.longest ? 100 * kFault : 0);
  score.changed = changed;
  // A number that was asked for is shared out evenly; many strands come from many short ones.
  score.shape = goal_.strands ? counts.longest : -counts.longest;
  return score;
}

void Search::keep(const Walls& walls, const StrandScore& score) {
  if (!(score < best_)) return;
  best_ = score;
  bestWalls_ = walls;
}

Stage Search::stage(const Walls& walls) {
  effort_ -= runs_.lineCount() / 2 + 1;
  Stage made(runs_, walls, static_cast<int>(changedLines(walls).size()));
  keep(walls, scoreOf(runs_.count(walls), made.changed));
  return made;
}

/// What the move would lead to; the worst of all scores where it changes nothing.
StrandScore Search::tryMove(Stage& stage, const Move& move) {
  lines_.clear();
  int changed = stage.changed;
  for (const int line : *move.orbit) {
    const auto j = static_cast<std::size_t>(line);
    if (stage.walls[j] == move.toWalls) continue;
    lines_.push_back(line);
    changed += stage.walls[j] == start_[j] ? 1 : -1;
  }
  effort_ -= static_cast<std::int64_t>(lines_.size()) + 1;
  return lines_.empty() ? StrandScore() : scoreOf(stage.around.count(lines_), changed);
}

/// The move that was tried last.
void Search::make(Stage& from) {
  Walls walls = from.walls;
  for (const int j : lines_) walls[static_cast<std::size_t>(j)] = !walls[static_cast<std::size_t>(j)];
  from = stage(walls);
}

/// Changing a line where two strands meet makes them one, whatever else has changed. Loops between walls are
/// left alone: joining one takes a line and saves no strand.
void Search::joinStrands() {
  const StrandRuns::Tour tour = runs_.tour(start_);
  std::vector<int> strand(tour.lengths.size());
  for (std::size_t i = 0; i < strand.size(); ++i) strand[i] = static_cast<int>(i);
  const auto find = [&](int s) {
    while (strand[static_cast<std::size_t>(s)] != s) s = strand[static_cast<std::size_t>(s)];
    return s;
  };
  const auto isDrawn = [&](const StrandRuns::Passage& passage) {
    return tour.crossings[static_cast<std::size_t>(passage.strand)] > 0;
  };
  Walls walls = start_;
  int left = first_.strands - wanted_;
  for (const Move& move : moves_) {
    const auto line = static_cast<std::size_t>(move.orbit->front());
    const auto& two = tour.passages[line];
    if (left <= 0 || move.toWalls == start_[line]) continue;
    if (!isDrawn(two[0]) || !isDrawn(two[1])) continue;
    const int a = find(two[0].strand), b = find(two[1].strand);
    if (a == b) continue;
    strand[static_cast<std::size_t>(std::max(a, b))] = std::min(a, b);
    walls[line] = move.toWalls;
    --left;
  }
  stage(walls);
}

/// Takes the best move again and again until none comes nearer.
void Search::climb(const Walls& from) {
  Stage here = stage(from);
  int reached = scoreOf(runs_.count(here.walls), 0).distance;
  while (effort_ > 0 && reached > 0) {
    StrandScore best;
    const Move* found = nullptr;
    for (const Move& move : moves_) {
      const StrandScore score = tryMove(here, move);
      if (!(score < best)) continue;
      best = score;
      found = &move;
    }
    if (found == nullptr || best.distance >= reached) return;
    reached = best.distance;
    tryMove(here, *found);
    make(here);
  }
}

/// Simulated annealing (S. Kirkpatrick et al., 1983): moves at random, and ever fewer of those that lead
/// away. Changed lines weigh little, so that the fewest are found on the way.
void Search::anneal(const Walls& from, const Rnd& random, std::int64_t effort) {
  constexpr double kHot = 0.7, kCold = 0.05, kOrbit = 0.06;
  const double line = kOrbit * static_cast<double>(orbits_.all().size()) / runs_.lineCount();
  const auto energy = [&](const StrandScore& score) { return score.distance + line * score.changed; };
  const std::int64_t end = std::max<std::int64_t>(0, effort_ - effort);
  const double all = static_cast<double>(effort_ - end);
  Stage here = stage(from);
  double reached = energy(scoreOf(runs_.count(here.walls), here.changed));
  while (effort_ > end) {
    const double heat = kCold * std::pow(kHot / kCold, static_cast<double>(effort_ - end) / all);
    const auto drawn = static_cast<std::size_t>(random() * static_cast<double>(moves_.size()));
    const StrandScore score = tryMove(here, moves_[std::min(drawn, moves_.size() - 1)]);
    if (lines_.empty() || random() >= std::exp((reached - energy(score)) / heat)) continue;
    reached = energy(score);
    make(here);
  }
}

/// So large a share of all orbits as walls.
Walls Search::randomWalls(const Rnd& random, double share) const {
  Walls walls = start_;
  for (std::size_t i = 0; i < moves_.size(); i += 2) {  // of every orbit there are two moves
    const bool wall = random() < share;
    for (const int j : *moves_[i].orbit) walls[static_cast<std::size_t>(j)] = wall;
  }
  return walls;
}

/// The number that is wanted, by small sets of lines.
void Search::findFewest() {
  std::vector<ChangeWay> ways;
  for (const Move& move : moves_) {
    ChangeWay way{{}, static_cast<int>(move.orbit - orbits_.all().data())};
    for (const int j : *move.orbit)
      if (start_[static_cast<std::size_t>(j)] != move.toWalls) way.lines.push_back(j);
    if (!way.lines.empty()) ways.push_back(std::move(way));
  }
  const auto judge = [this](const StrandRuns::Counts& counts, int changed) {
    return scoreOf(counts, changed);
  };
  FewestChanges fewest(runs_, start_, std::move(ways), judge, changedLines(bestWalls_), best_);
  fewest.run(effort_, std::abs(first_.strands - wanted_));  // one line joins or splits at most once
  Walls walls = start_;
  for (const int j : fewest.lines()) walls[static_cast<std::size_t>(j)] = !walls[static_cast<std::size_t>(j)];
  keep(walls, fewest.score());
}

/// From the start, and from many walls, between which strands are short.
void Search::findMany() {
  const std::int64_t rest = kEffort - kEffortForMany;
  const Rnd random = seededRandom(1);
  for (const double share : {1.0, 0.8, 0.6}) climb(randomWalls(random, share));
  for (int round = 5; round > 0 && effort_ > rest; --round) {
    const Walls from = round == 1 ? start_ : round % 2 == 0 ? bestWalls_ : randomWalls(random, random());
    anneal(from, random, (effort_ - rest) / round);
  }
  climb(bestWalls_);
  // Then the fewest lines for what was reached.
  wanted_ = runs_.count(bestWalls_).strands;
  best_ = scoreOf(runs_.count(bestWalls_), best_.changed);
  effort_ = rest;
  findFewest();
}

Result<StrandPlan> Search::run() {
  stage(start_);
  if (!moves_.empty() && best_.distance > 0) {
    if (goal_.symmetry.isNone() && first_.strands > wanted_) joinStrands();
    if (best_.distance > 0) climb(start_);
  }
  const int least = std::abs(first_.strands - wanted_);
  if (!goal_.strands && !moves_.empty())
    findMany();
  else if (goal_.strands && (best_.distance > 0 || best_.changed > least))
    findFewest();
  StrandPlan plan;
  plan.strands = runs_.count(bestWalls_).strands;
  plan.lines = changedLines(bestWalls_);
  if (!goal_.strands || best_.distance == 0) return plan;
  return impossibleKnot(goal_.symmetry.isNone()
                            ? trn("no walls give {n} strand; the nearest found is {1}",
                                  "no walls give {n} strands; the nearest found is {1}", wanted_,
                                  plan.strands)
                            : trn("no walls in this symmetry give {n} strand; the nearest found is {1}",
                                  "no walls in this symmetry give {n} strands; the nearest found is {1}",
                                  wanted_, plan.strands));
}

}  // namespace

Result<StrandPlan> planStrands(const KnotGraph& graph, const StrandGoal& goal) {
  return Search(graph, goal).run();
}

}  // namespace lorivan
