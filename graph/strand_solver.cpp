#include "graph/strand_solver.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numeric>
#include <string>
#include <utility>

#include "base/random.h"
#include "graph/fewest_changes.h"
#include "graph/own_faces.h"

namespace lorivan {
namespace {

// What a search may spend, in changed lines that are counted: about 150 ms of one core in all. The search for
// many strands shares it.
constexpr std::int64_t kEffort = 2'800'000, kEffortForMany = 1'900'000;
// From so many lines on a change takes more time, and this much is left out.
constexpr int kManyLines = 600;
constexpr std::int64_t kLeftOut = 600'000;

// With fewer moves a search for many strands has time to start more often, and to hold faces.
constexpr std::size_t kFewMoves = 256, kVeryFewMoves = 100;
constexpr int kPointsForLine = 2;  // that a strand gets where it passes one

// A fault in a score's distance: far more than strands could be wrong.
constexpr int kFault = 10'000;

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
        wanted_(goal.strands.value_or(goal.mostStrands)),
        effort_(runs_.lineCount() < kManyLines ? kEffort : kEffort - kLeftOut) {
    findMoves(graph);
  }

  Result<StrandPlan> run();

 private:
  int passages(const Walls& walls) const;
  int fewest() const;
  Error unreached(int nearest) const;
  void findMoves(const KnotGraph& graph);
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
  std::vector<WayBundle> walledFaces(const std::vector<ChangeWay>& ways) const;
  void findFewest();
  void scatter(const Rnd& random, std::int64_t effort);
  void findMany();

  StrandRuns runs_;
  const StrandGoal& goal_;
  LineOrbits orbits_;
  Walls start_;
  StrandRuns::Counts first_;
  std::vector<Move> moves_;
  std::size_t orbitMoves_ = 0;                    // so many of them are one orbit each, two by two
  std::vector<std::vector<int>> faces_, rounds_;  // that are their own image: their orbits, their lines
  int wanted_;
  std::int64_t effort_;
  Walls bestWalls_;
  StrandScore best_;
  std::vector<int> lines_;  // that the move tried last changes
};

void Search::findMoves(const KnotGraph& graph) {
  std::vector<bool> changes;  // by orbit
  for (const std::vector<int>& orbit : orbits_.all()) {
    changes.push_back(std::ranges::all_of(
        orbit, [&](int j) { return runs_.isPart(j) && graph.Lines[j].Kind != kReversed; }));
    if (changes.back())
      for (const bool toWalls : {true, false}) moves_.push_back({&orbit, toWalls});
  }
  orbitMoves_ = moves_.size();
  if (goal_.symmetry.isNone()) return;
  faces_ = ownFaces(runs_, orbits_);
  std::erase_if(faces_, [&](const std::vector<int>& face) {
    return !std::ranges::all_of(face, [&](int orbit) { return changes[orbit]; });
  });
  rounds_.resize(faces_.size());
  for (std::size_t i = 0; i < faces_.size(); ++i) {
    for (const int orbit : faces_[i]) {
      const std::vector<int>& lines = orbits_.all()[orbit];
      rounds_[i].insert(rounds_[i].end(), lines.begin(), lines.end());
    }
    for (const bool toWalls : {true, false}) moves_.push_back({&rounds_[i], toWalls});
  }
}

std::vector<int> Search::changedLines(const Walls& walls) const {
  std::vector<int> lines;
  for (std::size_t j = 0; j < walls.size(); ++j)
    if (walls[j] != start_[j]) lines.push_back(static_cast<int>(j));
  return lines;
}

/// Strands that would be too long, more than can be drawn, and loops that are never drawn are worse than a
/// wrong number.
StrandScore Search::scoreOf(const StrandRuns::Counts& counts, int changed) const {
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
  for (const int j : lines_) walls[j] = !walls[j];
  from = stage(walls);
}

/// Changing a line where two strands meet makes them one, whatever else has changed. Loops between walls are
/// left alone: joining one takes a line and saves no strand.
void Search::joinStrands() {
  const StrandRuns::Tour tour = runs_.tour(start_);
  std::vector<int> strand(tour.lengths.size());
  for (std::size_t i = 0; i < strand.size(); ++i) strand[i] = static_cast<int>(i);
  const auto find = [&](int s) {
    while (strand[s] != s) s = strand[s];
    return s;
  };
  const auto isDrawn = [&](const StrandRuns::Passage& passage) { return tour.crossings[passage.strand] > 0; };
  Walls walls = start_;
  int left = first_.strands - wanted_;
  for (const Move& move : moves_) {
    const auto line = static_cast<std::size_t>(move.orbit->front());
    const auto& two = tour.passages[line];
    if (left <= 0 || move.toWalls == start_[line]) continue;
    if (!isDrawn(two[0]) || !isDrawn(two[1])) continue;
    const int a = find(two[0].strand), b = find(two[1].strand);
    if (a == b) continue;
    strand[std::max(a, b)] = std::min(a, b);
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
/// away. Changed lines weigh little, so that the fewest are found on the way; faults weigh no more than a
/// strand, for many ways to the goal lead through a loop too many.
void Search::anneal(const Walls& from, const Rnd& random, std::int64_t effort) {
  constexpr double kHot = 0.7, kCold = 0.05, kOrbit = 0.06, kWrongLoop = 0.8;
  const double line = kOrbit * static_cast<double>(orbits_.all().size()) / runs_.lineCount();
  const auto energy = [&](const StrandScore& score) {
    return score.distance % kFault + kWrongLoop * (score.distance / kFault) + line * score.changed;
  };
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
  for (std::size_t i = 0; i < orbitMoves_; i += 2) {
    const bool wall = random() < share;
    for (const int j : *moves_[i].orbit) walls[j] = wall;
  }
  return walls;
}

/// Blind draws reach what a search from a few places may miss where few orbits change.
void Search::scatter(const Rnd& random, std::int64_t effort) {
  for (const std::int64_t end = effort_ - effort; effort_ > end;) {
    Walls walls = start_;
    const double share = random();
    for (std::size_t i = 0; i < orbitMoves_; i += 2) {
      if (random() >= share) continue;
      const std::vector<int>& orbit = *moves_[i].orbit;
      const bool wall = !start_[orbit.front()];
      for (const int j : orbit) walls[j] = wall;
    }
    effort_ -= runs_.lineCount() / 8 + 40;
    keep(walls, scoreOf(runs_.count(walls), static_cast<int>(changedLines(walls).size())));
  }
}

/// The ways that put walls round the faces that are their own image.
std::vector<WayBundle> Search::walledFaces(const std::vector<ChangeWay>& ways) const {
  std::vector<WayBundle> bundles;
  for (const std::vector<int>& face : faces_) {
    WayBundle bundle;
    for (std::size_t way = 0; way < ways.size(); ++way)
      if (!start_[ways[way].lines.front()] && std::ranges::binary_search(face, ways[way].orbit))
        bundle.push_back(way);
    if (bundle.size() > 1) bundles.push_back(std::move(bundle));
  }
  return bundles;
}

/// The number that is wanted, by small sets of lines.
void Search::findFewest() {
  std::vector<ChangeWay> ways;
  for (std::size_t i = 0; i < orbitMoves_; ++i) {
    const Move& move = moves_[i];
    ChangeWay way{{}, static_cast<int>(move.orbit - orbits_.all().data())};
    for (const int j : *move.orbit)
      if (start_[j] != move.toWalls) way.lines.push_back(j);
    if (!way.lines.empty()) ways.push_back(std::move(way));
  }
  const auto judge = [this](const StrandRuns::Counts& counts, int changed) {
    return scoreOf(counts, changed);
  };
  std::vector<WayBundle> bundles;
  if (goal_.strands || moves_.size() < kFewMoves) bundles = walledFaces(ways);
  FewestChanges fewest(runs_, start_, std::move(ways), std::move(bundles), judge, changedLines(bestWalls_),
                       best_);
  fewest.run(effort_, std::abs(first_.strands - wanted_));  // one line joins or splits at most once
  Walls walls = start_;
  for (const int j : fewest.lines()) walls[j] = !walls[j];
  keep(walls, fewest.score());
}

/// From the start, and from many walls, between which strands are short.
void Search::findMany() {
  const std::int64_t rest = kEffort - kEffortForMany;
  const Rnd random = seededRandom(1);
  const bool few = moves_.size() < kFewMoves;
  scatter(random, moves_.size() < kVeryFewMoves ? kEffort / 3 : kEffort / 10);
  if (few) climb(bestWalls_);
  for (const double share : {1.0, 0.8, 0.6}) climb(randomWalls(random, share));
  for (int round = few ? 9 : 5; round > 0 && effort_ > rest; --round) {
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
  // Where there cannot be so few, the fewest that can be are looked for, to be told.
  const bool tooFew = goal_.strands && wanted_ < fewest();
  if (tooFew) wanted_ = fewest();
  stage(start_);
  if (!moves_.empty() && best_.distance > 0) {
    if (goal_.symmetry.isNone() && first_.strands > wanted_) joinStrands();
    if (best_.distance > 0) climb(start_);
  }
  const int least = std::abs(first_.strands - wanted_);
  if (!goal_.strands && !moves_.empty())
    findMany();
  else if (goal_.strands && (best_.distance > 0 || (best_.changed > least && !tooFew)))
    findFewest();
  StrandPlan plan;
  plan.strands = runs_.count(bestWalls_).strands;
  plan.lines = changedLines(bestWalls_);
  if (!goal_.strands || (best_.distance == 0 && !tooFew)) return plan;
  return unreached(plan.strands);
}

/// How many lines all drawn strands pass together.
int Search::passages(const Walls& walls) const {
  const StrandRuns::Tour tour = runs_.tour(walls);
  int passed = 0;
  for (std::size_t i = 0; i < tour.lengths.size(); ++i)
    if (tour.crossings[i] > 0) passed += tour.lengths[i];
  return passed;
}

/// No walls give fewer: strands that share no line stay apart, unless they are the loops between walls that
/// there may be, and none may be too long.
int Search::fewest() const {
  const StrandRuns::Tour tour = runs_.tour(start_);
  std::vector<std::size_t> parts(tour.lengths.size());
  std::iota(parts.begin(), parts.end(), 0);
  const auto find = [&](int strand) {
    auto part = static_cast<std::size_t>(strand);
    while (parts[part] != part) part = parts[part] = parts[parts[part]];
    return part;
  };
  auto count = static_cast<int>(parts.size());
  for (const auto& [one, other] : tour.passages) {
    if (one.strand < 0 || other.strand < 0 || find(one.strand) == find(other.strand)) continue;
    parts[find(one.strand)] = find(other.strand);
    --count;
  }
  if (first_.wallLoops > 0) return count - first_.wallLoops;  // they may be of any length
  return std::max(count, (passages(start_) + goal_.longest - 1) / goal_.longest);
}

/// Why the wanted number was not found. All strands together pass the same lines whatever their number, so
/// few of them may be too long.
Error Search::unreached(int nearest) const {
  const int passed = passages(bestWalls_), wanted = *goal_.strands;
  if (nearest > wanted && passed > 1LL * wanted * goal_.longest)
    return impossibleKnot(
        trn("{n} strand would have {1} points, more than the {2} that a strand may have; the fewest "
            "found is {3}",
            "{n} strands would have {1} points together, and a strand may have {2}; the "
            "fewest found is {3}",
            wanted, kPointsForLine * passed, kPointsForLine * goal_.longest, nearest));
  return impossibleKnot(goal_.symmetry.isNone()
                            ? trn("no walls give {n} strand; the nearest found is {1}",
                                  "no walls give {n} strands; the nearest found is {1}", wanted, nearest)
                            : trn("no walls in this symmetry give {n} strand; the nearest found is {1}",
                                  "no walls in this symmetry give {n} strands; the nearest found is {1}",
                                  wanted, nearest));
}

}  // namespace

Result<StrandPlan> planStrands(const KnotGraph& graph, const StrandGoal& goal) {
  return Search(graph, goal).run();
}

}  // namespace lorivan
