// How strands run through a graph, without drawing any: only what they cross and where they turn back.
//
// Every line has four ends where strands meet it: at its first and at its second point, each on the side
// towards the previous and on the side towards the next neighbour there. Round a point, the corner between
// two neighbours joins an end of one line with an end of the other. A crossing joins the ends on like sides
// of both points, a wall those on unlike sides. Strands are the cycles of these joints, so what a change of
// one line does is known from the two places where strands pass it.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "graph/graph.h"

namespace lorivan {

/// Which lines of a graph are walls, by line.
using Walls = std::vector<bool>;

class StrandRuns {
 public:
  /// Of a graph whose neighbours are ordered (CalcGrid).
  explicit StrandRuns(const KnotGraph& graph);

  int lineCount() const { return static_cast<int>(part_.size()); }
  /// Whether strands meet the line. They do not meet lines of kind 0, nor those that an equal line hides.
  bool isPart(int line) const { return part_[line]; }
  const Walls& walls() const { return walls_; }

  struct Counts {
    int strands = 0;    // with a crossing, so that they are drawn
    int wallLoops = 0;  // between walls alone: never drawn
    int longest = 0;    // lines that the longest strand passes
    bool operator==(const Counts&) const = default;
  };
  Counts count(const Walls& walls) const;

  /// One of the two places where strands pass a line.
  struct Passage {
    int strand = -1;         // -1: none
    int place = 0;           // how many lines the strand has passed before
    int crossings = 0;       // and how many of these were crossings
    std::uint8_t entry = 0;  // the line's end that the strand comes in by
    bool operator==(const Passage&) const = default;
  };
  struct Tour {
    std::vector<std::array<Passage, 2>> passages;  // by line
    std::vector<int> lengths;                      // lines passed, by strand; wall loops are strands here
    std::vector<int> crossings;                    // crossings among them, 0 for a wall loop
  };
  Tour tour(const Walls& walls) const;

  /// What changing a line between crossing and wall does to the number of cycles.
  enum class Change { none, join, split };
  static Change changeAt(const std::array<Passage, 2>& line);

 private:
  template <class Visit>
  void walk(const Walls& walls, Visit visit) const;

  std::vector<std::int32_t> corner_;  // the end that a corner joins with each
  std::vector<bool> part_;
  Walls walls_;
};

/// Counts what changing a few lines gives, in the time that these few take: it cuts the strands where the
/// lines are and joins the pieces anew.
class ChangedRuns {
 public:
  ChangedRuns(const StrandRuns& runs, const Walls& walls);

  /// With these lines, each named once and part of the runs, turned from crossing to wall or back.
  StrandRuns::Counts count(const std::vector<int>& lines);

 private:
  /// A place where a strand is cut. The piece that begins here ends at the strand's next cut.
  struct Cut {
    const StrandRuns::Passage* passage = nullptr;
    std::int32_t line = 0;
    std::int32_t next = 0;    // the cut that the piece ends at
    std::int32_t before = 0;  // the cut whose piece ends here
    std::int32_t length = 0;  // of the piece
    std::int32_t crossings = 0;
    bool walked = false;
  };
  void cutAt(const std::vector<int>& lines);
  void measurePieces(StrandRuns::Counts& counts);
  void joinPieces(StrandRuns::Counts& counts);
  int longestOfOthers() const;

  StrandRuns::Tour tour_;
  std::vector<char> walls_;
  StrandRuns::Counts whole_;
  std::vector<int> byLength_;  // the drawn strands, longest first
  std::vector<std::uint64_t> order_;
  std::vector<Cut> cuts_;                              // by strand and place
  std::vector<std::array<std::int32_t, 4>> cutAtEnd_;  // by line: the cut that an end belongs to
  std::vector<char> isCut_;                            // by strand, of the call that runs
};

}  // namespace lorivan
