#include "graph/fewest_changes.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace lorivan {
namespace {

constexpr double kHotStart = 1.1, kWarmStart = 0.45;  // what annealing begins with
constexpr int kRounds = 8;
constexpr double kWeightFar = 0.1;        // of changed lines, where any solution is welcome
constexpr std::size_t kMostTogether = 3;  // ways that are tried in all their combinations

}  // namespace

FewestChanges::FewestChanges(const StrandRuns& runs, const Walls& start, std::vector<ChangeWay> ways,
                             std::vector<WayBundle> bundles, StrandJudge judge, std::vector<int> best,
                             const StrandScore& score)
    : runs_(runs, start),
      ways_(std::move(ways)),
      bundles_(std::move(bundles)),
      judge_(std::move(judge)),
      best_(std::move(best)),
      score_(score) {
  std::size_t lines = 0;
  for (const ChangeWay& way : ways_) lines += way.lines.size();
  if (!ways_.empty()) linesOfWay_ = static_cast<double>(lines) / static_cast<double>(ways_.size());
}

/// Of the ways that are taken; keeps them when they are the best so far.
StrandScore FewestChanges::evaluate() {
  lines_.clear();
  for (const std::size_t way : taken_)
    lines_.insert(lines_.end(), ways_[way].lines.begin(), ways_[way].lines.end());
  effort_ -= static_cast<std::int64_t>(lines_.size()) + 1;
  const StrandScore score = judge_(runs_.count(lines_), static_cast<int>(lines_.size()));
  if (score < score_) {
    score_ = score;
    best_ = lines_;
    std::ranges::sort(best_);
  }
  return score;
}

/// So many more ways, from this one on.
void FewestChanges::tryAll(std::size_t ways, std::size_t from) {
  for (std::size_t way = from; way < ways_.size() && !isDone(); ++way) {
    if (std::ranges::any_of(taken_, [&](std::size_t t) { return ways_[t].orbit == ways_[way].orbit; }))
      continue;
    taken_.push_back(way);
    if (ways == 1)
      evaluate();
    else
      tryAll(ways - 1, way + 1);
    taken_.pop_back();
  }
}

/// Takes a way more, or one less, or another one instead. False when that is not possible.
bool FewestChanges::propose(const Rnd& random) {
  const auto draw = [&](std::size_t count) {
    return std::min(static_cast<std::size_t>(random() * static_cast<double>(count)), count - 1);
  };
  const double kind = random();
  if (kind < 0.6 && taken_.size() > held_) {
    std::swap(taken_[held_ + draw(taken_.size() - held_)], taken_.back());
    taken_.pop_back();
    if (kind < 0.3) return true;
  }
  const std::size_t way = draw(ways_.size());
  const auto sameOrbit =
      std::ranges::find_if(taken_, [&](std::size_t t) { return ways_[t].orbit == ways_[way].orbit; });
  if (sameOrbit == taken_.end()) {
    taken_.push_back(way);
    return true;
  }
  if (*sameOrbit == way || sameOrbit < taken_.begin() + static_cast<std::ptrdiff_t>(held_)) return false;
  *sameOrbit = way;
  return true;
}

/// Whether the ways that are taken could be no better than what is known.
bool FewestChanges::tooMany() const {
  if (score_.distance != 0) return false;
  std::size_t lines = 0;
  for (const std::size_t way : taken_) lines += ways_[way].lines.size();
  return static_cast<int>(lines) > score_.changed;
}

/// Simulated annealing (S. Kirkpatrick et al., 1983) on small sets of changes.
void FewestChanges::anneal(const Rnd& random, std::int64_t effort, double hot, double weight) {
  constexpr double kStrand = 2, kCold = 0.2;
  const std::int64_t end = std::max<std::int64_t>(0, effort_ - effort);
  const auto energy = [&](const StrandScore& score) {
    return kStrand * std::min(score.distance, 10'000) + weight * score.changed / linesOfWay_;
  };
  double reached = energy(evaluate());
  for (const std::int64_t all = effort_ - end; effort_ > end && !isDone();) {
    const double heat =
        kCold * std::pow(hot / kCold, static_cast<double>(effort_ - end) / static_cast<double>(all));
    before_ = taken_;
    if (!propose(random) || tooMany()) {
      --effort_;
      taken_ = before_;
      continue;
    }
    const double next = energy(evaluate());
    if (next > reached && random() >= std::exp((reached - next) / heat))
      taken_ = before_;
    else
      reached = next;
  }
}

void FewestChanges::takeBest() {
  taken_.clear();
  for (std::size_t way = 0; way < ways_.size(); ++way)
    if (std::ranges::all_of(ways_[way].lines,
                            [&](int line) { return std::ranges::binary_search(best_, line); }))
      taken_.push_back(way);
}

/// Far from the start there may be solutions where there are none near it.
void FewestChanges::takeMany(const Rnd& random) {
  taken_.clear();
  const double share = random();
  for (std::size_t way = 0; way < ways_.size(); ++way) {
    const bool free = taken_.empty() || ways_[taken_.back()].orbit != ways_[way].orbit;
    if (random() < share && free) taken_.push_back(way);
  }
}

/// One way in the place of every two that are taken, again and again while that helps.
void FewestChanges::exchange() {
  for (bool better = true; better && score_.distance == 0;) {
    better = false;
    takeBest();
    const std::vector<std::size_t> all = taken_;
    const auto pairs = static_cast<std::int64_t>(all.size() * all.size() / 2);
    if (pairs * static_cast<std::int64_t>(ways_.size()) * score_.changed > effort_ / 4) return;
    for (std::size_t i = 0; i < all.size() && !better; ++i)
      for (std::size_t k = i + 1; k < all.size() && !better; ++k) {
        taken_ = all;
        taken_.erase(taken_.begin() + static_cast<std::ptrdiff_t>(k));
        taken_.erase(taken_.begin() + static_cast<std::ptrdiff_t>(i));
        const int before = score_.changed;
        tryAll(1, 0);
        better = score_.changed < before;
      }
  }
}

/// The bundles take turns, but for those that are too many lines already.
const WayBundle* FewestChanges::nextBundle() {
  for (std::size_t i = 0; i < bundles_.size(); ++i) {
    const WayBundle& bundle = bundles_[bundle_++ % bundles_.size()];
    taken_ = bundle;
    if (!tooMany()) return &bundle;
  }
  return nullptr;
}

void FewestChanges::annealWith(const WayBundle& bundle, const Rnd& random, std::int64_t effort) {
  taken_ = bundle;
  held_ = bundle.size();
  if (!tooMany()) anneal(random, effort, kHotStart, 1);
  held_ = 0;
}

void FewestChanges::run(std::int64_t effort, int least) {
  if (ways_.empty()) return;
  effort_ = effort;
  least_ = least;
  double combinations = 1;
  for (std::size_t ways = 1; ways <= kMostTogether && !isDone(); ++ways) {
    combinations *= static_cast<double>(ways_.size()) / static_cast<double>(ways);
    const double cost = combinations * (static_cast<double>(ways) * linesOfWay_ + 1);
    if (cost > static_cast<double>(effort_) / 3) break;
    taken_.clear();
    tryAll(ways, 0);
    if (score_.distance == 0 && score_.changed <= static_cast<int>(ways)) return;  // there is none with fewer
  }
  const Rnd random = seededRandom(1);
  for (int round = kRounds; round > 0 && !isDone(); --round) {
    const WayBundle* const bundle = nextBundle();
    const std::int64_t share = effort_ / (bundle != nullptr ? 2 * round : round);
    if (round % 2 == 0) {
      taken_.clear();
      anneal(random, share, kHotStart, 1);
    } else if (score_.distance > 0) {
      takeMany(random);
      anneal(random, share, kHotStart, kWeightFar);
    } else {
      takeBest();
      anneal(random, share, kWarmStart, 1);
    }
    exchange();
    if (bundle != nullptr) annealWith(*bundle, random, share);
  }
}

}  // namespace lorivan
