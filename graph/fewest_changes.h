// Looks for the fewest lines to change until a graph has a wanted number of strands.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "base/random.h"
#include "graph/strand_runs.h"

namespace lorivan {

/// How far from the goal; smaller is better, from the first to the last.
struct StrandScore {
  int distance = 1'000'000'000;  // strands too many or too few, and worse faults
  int changed = 0;               // lines
  int shape = 0;                 // which of two equal ways looks better
  auto operator<=>(const StrandScore&) const = default;
};

/// Judges what a number of changed lines gives.
using StrandJudge = std::function<StrandScore(const StrandRuns::Counts& counts, int changed)>;

/// Lines that change together, and the orbit that they are of: of one orbit only one way is taken.
struct ChangeWay {
  std::vector<int> lines;
  int orbit = 0;
};

/// Ways, by index, that do together what no part of them comes nearer to.
using WayBundle = std::vector<std::size_t>;

class FewestChanges {
 public:
  /// `best`: what is known already, as lines with their score.
  FewestChanges(const StrandRuns& runs, const Walls& start, std::vector<ChangeWay> ways,
                std::vector<WayBundle> bundles, StrandJudge judge, std::vector<int> best,
                const StrandScore& score);

  /// Spends at most so much: a count of c lines costs c + 1. Ends early with a solution of `least` lines.
  void run(std::int64_t effort, int least);

  const std::vector<int>& lines() const { return best_; }
  const StrandScore& score() const { return score_; }

 private:
  bool isDone() const { return effort_ <= 0 || (score_.distance == 0 && score_.changed <= least_); }
  StrandScore evaluate();
  void tryAll(std::size_t ways, std::size_t from);
  void takeBest();
  void exchange();
  void takeMany(const Rnd& random);
  bool tooMany() const;
  bool propose(const Rnd& random);
  void anneal(const Rnd& random, std::int64_t effort, double hot, double weight);
  const WayBundle* nextBundle();
  void annealWith(const WayBundle& bundle, const Rnd& random, std::int64_t effort);

  ChangedRuns runs_;
  std::vector<ChangeWay> ways_;
  std::vector<WayBundle> bundles_;
  StrandJudge judge_;
  std::vector<int> best_;
  StrandScore score_;
  std::int64_t effort_ = 0;
  int least_ = 0;
  double linesOfWay_ = 1;                    // on average
  std::vector<std::size_t> taken_, before_;  // ways
  std::size_t held_ = 0;                     // so many of the taken ones stay
  std::size_t bundle_ = 0;                   // the next to hold
  std::vector<int> lines_;                   // of the ways that are taken
};

}  // namespace lorivan
