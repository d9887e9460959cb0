#include "graph/strand_solver.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

#include "base/random.h"
#include "graph/fewest_changes.h"

namespace lorivan {
namespace {

/// Line ends that all counts of one search may visit together: about 120 ms of one core.
constexpr std::int64_t kMostVisits = 30'000'000;
/// What the search for the fewest lines may spend, in about the same time, and after the one for many.
constexpr std::int64_t kEffort = 1'500'000, kEffortForMany = 400'000;

/// Lines that change together, and what they become.
struct Move {
  const std::vector<int>* orbit;
  bool toWalls;
};

using Score = StrandScore;

class Search {
 public:
  Search(const KnotGraph& graph, const StrandGoal& goal)
      : runs_(graph),
        goal_(goal),
        orbits_(graph, goal.symmetry),
        start_(runs_.walls()),
        first_(runs_.count(start_)) {
    for (const std::vector<int>& orbit : orbits_.all())
      if (std::ranges::all_of(orbit, [&](int j) { return canChange(graph, j); }))
        for (const bool toWalls : {true, false}) moves_.push_back({&orbit, toWalls});
    wanted_ = goal.strands.value_or(goal.mostStrands);
  }

  Result<StrandPlan> run();

 private:
  bool canChange(const KnotGraph& graph, int line) const {
    return runs_.isPart(line) && graph.Lines[static_cast<std::size_t>(line)].Kind != kReversed;
  }

  Score scoreOf(const StrandRuns::Counts& counts, int changed) const;
  Score evaluate(const Walls& walls);
  /// Makes the move; false when it changes nothing.
  static bool make(const Move& move, Walls& walls);
  void keep(const Walls& walls, const Score& score);
  bool mayGoOn() const { return visits_ < kMostVisits; }

  void joinStrands();
  void climb();
  void anneal(const Rnd& random, std::int64_t visits);
  void tidy();
  void findFewest(std::int64_t effort);
  void findMany();
  std::vector<int> changedLines(const Walls& walls) const;
  std::size_t bestMove(const Walls& walls, Score& best);
  std::size_t bestSingleLine(const Walls& walls, Score& best);
  bool solved() const { return goal_.strands && best_.distance == 0; }

  StrandRuns runs_;
  const StrandGoal& goal_;
  LineOrbits orbits_;
  Walls start_;
  StrandRuns::Counts first_;
  std::vector<Move> moves_;
  int wanted_ = 1;
  std::int64_t visits_ = 0;
  Walls bestWalls_;
  Score best_;
};

/// Strands that would be too long, more than can be drawn, and loops that are never drawn are worse than a
/// wrong number.
Score Search::scoreOf(const StrandRuns::Counts& counts, int changed) const {
  constexpr int kFault = 10'000;
  Score score;
  score.distance = std::abs(counts.strands - wanted_) +
                   kFault * (std::max(0, counts.wallLoops - first_.wallLoops) +
                             std::max(0, counts.strands - goal_.mostStrands)) +
                   (counts.strands == 0 || counts.longest > goal_.longest ? 100 * kFault : 0);
  score.changed = changed;
  // A number that was asked for is shared out evenly; many strands come from many short ones.
  score.shape = goal_.strands ? counts.longest : -counts.longest;
  return score;
}

Score Search::evaluate(const Walls& walls) {
  visits_ += 4 * runs_.lineCount();
  int changed = 0;
  for (std::size_t j = 0; j < walls.size(); ++j) changed += walls[j] != start_[j];
  return scoreOf(runs_.count(walls), changed);
}

bool Search::make(const Move& move, Walls& walls) {
  bool changed = false;
  for (const int j : *move.orbit) {
    changed |= walls[static_cast<std::size_t>(j)] != move.toWalls;
    walls[static_cast<std::size_t>(j)] = move.toWalls;
  }
  return changed;
}

void Search::keep(const Walls& walls, const Score& score) {
  if (!(score < best_)) return;
  best_ = score;
  bestWalls_ = walls;
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
    const int line = move.orbit->front();
    const auto& two = tour.passages[static_cast<std::size_t>(line)];
    if (left <= 0 || move.toWalls == walls[static_cast<std::size_t>(line)]) continue;
    if (!isDrawn(two[0]) || !isDrawn(two[1])) continue;
    const int a = find(two[0].strand), b = find(two[1].strand);
    if (a == b) continue;
    strand[static_cast<std::size_t>(std::max(a, b))] = std::min(a, b);
    make(move, walls);
    --left;
  }
  keep(walls, evaluate(walls));
}

/// Without a symmetry what every line would do is known from one tour.
std::size_t Search::bestSingleLine(const Walls& walls, Score& best) {
  visits_ += 8 * runs_.lineCount();
  const StrandRuns::Tour tour = runs_.tour(walls);
  const int strands = runs_.count(walls).strands;
  std::size_t found = moves_.size();
  for (std::size_t i = 0; i < moves_.size(); ++i) {
    const auto line = static_cast<std::size_t>(moves_[i].orbit->front());
    if (walls[line] == moves_[i].toWalls) continue;
    const auto& two = tour.passages[line];
    const StrandRuns::Change change = StrandRuns::changeAt(two);
    if (change == StrandRuns::Change::none) continue;
    const bool splits = change == StrandRuns::Change::split;
    Score score;
    score.distance = std::abs(strands + (splits ? 1 : -1) - wanted_);
    score.changed = walls[line] == start_[line] ? 1 : -1;
    const int part = std::abs(two[1].place - two[0].place);
    const int shorter = std::min(part, tour.lengths[static_cast<std::size_t>(two[0].strand)] - part);
    score.shape = splits == goal_.strands.has_value() ? -shorter : shorter;
    if (!(score < best)) continue;
    // What the tour does not tell: a part without crossings is no strand.
    Walls changed = walls;
    make(moves_[i], changed);
    const StrandRuns::Counts counts = runs_.count(changed);
    visits_ += 4 * runs_.lineCount();
    if (std::abs(counts.strands - wanted_) != score.distance || counts.wallLoops > first_.wallLoops) continue;
    best = score;
    found = i;
  }
  return found;
}

std::size_t Search::bestMove(const Walls& walls, Score& best) {
  if (goal_.symmetry.isNone()) return bestSingleLine(walls, best);
  std::size_t found = moves_.size();
  for (std::size_t i = 0; i < moves_.size() && mayGoOn(); ++i) {
    Walls changed = walls;
    if (!make(moves_[i], changed)) continue;
    const Score score = evaluate(changed);
    if (!(score < best)) continue;
    best = score;
    found = i;
  }
  return found;
}

/// Takes the best move again and again until none comes nearer.
void Search::climb() {
  Walls walls = start_;
  Score reached = best_;
  while (mayGoOn() && reached.distance > 0) {
    Score best;
    const std::size_t move = bestMove(walls, best);
    if (move == moves_.size() || best.distance >= reached.distance) return;
    make(moves_[move], walls);
    reached = evaluate(walls);
    keep(walls, reached);
  }
}

/// Simulated annealing (S. Kirkpatrick et al., 1983): moves at random, and ever fewer of those that lead
/// away.
void Search::anneal(const Rnd& random, std::int64_t visits) {
  constexpr double kStrand = 8, kHot = 6, kCold = 0.3;
  const auto energy = [&](const Score& score) { return kStrand * score.distance; };
  const std::int64_t steps = visits / (4 * runs_.lineCount());
  Walls walls = start_;
  double reached = energy(evaluate(walls));
  for (std::int64_t step = 0; step < steps; ++step) {
    const double heat = kHot * std::pow(kCold / kHot, static_cast<double>(step) / static_cast<double>(steps));
    const auto drawn = static_cast<std::size_t>(random() * static_cast<double>(moves_.size()));
    Walls changed = walls;
    if (!make(moves_[std::min(drawn, moves_.size() - 1)], changed)) continue;
    const Score score = evaluate(changed);
    if (random() >= std::exp((reached - energy(score)) / heat)) continue;
    keep(changed, score);
    reached = energy(score);
    walls.swap(changed);
  }
}

/// Takes back what was changed without need.
void Search::tidy() {
  for (const Move& move : moves_) {
    Walls walls = bestWalls_;
    if (make(move, walls)) keep(walls, evaluate(walls));
  }
}

/// The number that is wanted, by small sets of lines.
void Search::findFewest(std::int64_t effort) {
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
  fewest.run(effort, std::abs(first_.strands - wanted_));  // one line joins or splits at most once
  Walls walls = start_;
  for (const int j : fewest.lines()) walls[static_cast<std::size_t>(j)] = !walls[static_cast<std::size_t>(j)];
  keep(walls, fewest.score());
}

void Search::findMany() {
  const Rnd random = seededRandom(1);
  for (int round = 4; round > 0 && mayGoOn(); --round) anneal(random, (kMostVisits - visits_) / round);
  tidy();
  // Then the fewest lines for what was reached.
  wanted_ = runs_.count(bestWalls_).strands;
  best_ = evaluate(bestWalls_);
  findFewest(kEffortForMany);
}

std::vector<int> Search::changedLines(const Walls& walls) const {
  std::vector<int> lines;
  for (std::size_t j = 0; j < walls.size(); ++j)
    if (walls[j] != start_[j]) lines.push_back(static_cast<int>(j));
  return lines;
}

Result<StrandPlan> Search::run() {
  const Score asItIs = evaluate(start_);
  keep(start_, asItIs);
  if (!solved() && !moves_.empty()) {
    if (goal_.symmetry.isNone() && first_.strands > wanted_) joinStrands();
    if (!solved()) climb();
    const int least = std::abs(first_.strands - wanted_);  // one line joins or splits at most once
    if (!goal_.strands)
      findMany();
    else if (!solved() || best_.changed > least)
      findFewest(kEffort);
  }
  StrandPlan plan;
  plan.strands = runs_.count(bestWalls_).strands;
  plan.lines = changedLines(bestWalls_);
  if (!goal_.strands || best_.distance == 0) return plan;
  return impossibleKnot("no walls " + std::string(goal_.symmetry.isNone() ? "" : "in this symmetry ") +
                        "give " + std::to_string(wanted_) + (wanted_ == 1 ? " strand" : " strands") +
                        "; the nearest found is " + std::to_string(plan.strands));
}

}  // namespace

Result<StrandPlan> planStrands(const KnotGraph& graph, const StrandGoal& goal) {
  return Search(graph, goal).run();
}

}  // namespace lorivan
