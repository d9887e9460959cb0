#include "strands/band_crossings.h"

#include <algorithm>
#include <iterator>

#include "strands/box_cells.h"

namespace lorivan {
namespace {

constexpr int kChunk = 4;            // chords that are compared with others as one box
constexpr double kChunkCells = 500;  // across and down
constexpr double kNear = 0.25;       // samples; crossings of the same two stretches that are nearer are one
constexpr double kAside =
    0.1234567;  // of a period from the seam to where the search ends: few crossings lie there
constexpr double kSettled = 3e-4;  // samples; a step of this size leaves about its square
constexpr double kSlack = 1e-3;    // pixels that it goes on there, so that none is lost between both ends

/// Places where chords meet, of which a few each are one crossing: then there are too many.
constexpr std::size_t kEnough = 8 * kMostCrossings;

/// A few chords of a loop, from sample `begin` to sample `end`.
struct Chunk {
  int loop, begin, end;
  int turn = 0;  // periods that it was moved to the right
};

class CrossingSearch {
 public:
  /// Made once and asked again and again, it keeps the memory of its tables.
  std::vector<BandCrossing> find(std::span<const BandLoop> loops, const Seam& seam) {
    loops_ = loops;
    width_ = seam.width;
    left_ = seam.left + kAside * seam.width;
    cutLoops();
    if (chunks_.empty()) return {};
    found_.clear();
    cells_.lay(kChunkCells);
    cells_.eachMeeting([this](std::size_t one, std::size_t two) { meet(one, two); });
    return withoutRepeats();
  }

 private:
  void cutLoops() {
    points_.clear();
    firsts_.clear();
    chunks_.clear();
    cells_.boxes().clear();
    for (std::size_t l = 0; l < loops_.size(); ++l) {
      firsts_.push_back(points_.size());
      for (int i = 0; i <= loops_[l].size(); ++i) points_.push_back(loops_[l].point(i));
      for (int begin = 0; begin < loops_[l].size(); begin += kChunk) {
        const Chunk chunk{static_cast<int>(l), begin, std::min(begin + kChunk, loops_[l].size())};
        const Vec* const points = pointsOf(chunk.loop);
        Box box{points[begin].x, points[begin].y, points[begin].x, points[begin].y};
        for (int i = begin + 1; i <= chunk.end; ++i) box.add(points[i]);
        if (width_ > 0)
          addCopies(chunk, box);
        else
          add(chunk, box);
      }
    }
  }

  /// At the samples from the first one to where the second lap begins.
  const Vec* pointsOf(int loop) const { return &points_[firsts_[loop]]; }

  /// Round a cylinder: a chunk wherever it reaches into the one period that is searched.
  void addCopies(const Chunk& chunk, const Box& box) {
    const int last = static_cast<int>(std::floor((left_ + width_ + kSlack - box.left) / width_));
    for (int turn = last; box.right + turn * width_ >= left_ - kSlack; --turn)
      add({chunk.loop, chunk.begin, chunk.end, turn},
          {box.left + turn * width_, box.top, box.right + turn * width_, box.bottom});
  }
  void add(const Chunk& chunk, const Box& box) {
    chunks_.push_back(chunk);
    cells_.boxes().push_back(box);
  }

  /// Compares two chunks whose boxes meet.
  void meet(std::size_t one, std::size_t two) {
    const Chunk &a = chunks_[one], &b = chunks_[two];
    if (found_.size() > kEnough || isOneWay(a, b)) return;
    const Vec *const loop = pointsOf(a.loop), *const other = pointsOf(b.loop);
    const Vec moved{a.turn * width_, 0}, movedToo{b.turn * width_, 0};
    for (int i = a.begin; i < a.end; ++i) {
      const Vec p = loop[i] + moved, q = loop[i + 1] + moved;
      constexpr double slack = 1e-3;
      const Box chord{std::min(p.x, q.x) - slack, std::min(p.y, q.y) - slack, std::max(p.x, q.x) + slack,
                      std::max(p.y, q.y) + slack};
      if (!chord.meets(cells_.box(two))) continue;
      for (int j = one == two ? i + 1 : b.begin; j < b.end; ++j)
        if (touches(chord, other[j] + movedToo, other[j + 1] + movedToo)) compare(a, i, b, j);
    }
  }

  /// Whether two chunks are neighbours, or one, in which no chord leads back: they can not meet.
  bool isOneWay(const Chunk& a, const Chunk& b) const {
    if (a.loop != b.loop || a.turn != b.turn || (&a != &b && a.end != b.begin && b.end != a.begin))
      return false;
    const Vec* const loop = pointsOf(a.loop);
    const int begin = std::min(a.begin, b.begin), end = std::max(a.end, b.end);
    if (end - begin > 2 * kChunk) return false;
    const Vec way = loop[end] - loop[begin];
    for (int i = begin; i < end; ++i)
      if (dot(loop[i + 1] - loop[i], way) <= 0) return false;
    return true;
  }

  static bool touches(const Box& box, Vec a, Vec b) {
    return std::min(a.x, b.x) <= box.right && std::max(a.x, b.x) >= box.left &&
           std::min(a.y, b.y) <= box.bottom && std::max(a.y, b.y) >= box.top;
  }

  /// Neighbours, also those where one lap ends and the next one begins.
  bool touchAnyway(const Chunk& one, int i, const Chunk& two, int j) const {
    if (one.loop != two.loop) return false;
    const BandLoop& loop = loops_[one.loop];
    const int apart = j - i, turn = two.turn - one.turn, end = loop.size() - 1;
    if (std::abs(apart) <= 1 && turn == 0) return true;
    return std::abs(apart) == end && turn == (apart > 0 ? -loop.turns() : loop.turns());
  }

  void compare(const Chunk& chunkA, int i, const Chunk& chunkB, int j) {
    const int loopA = chunkA.loop, loopB = chunkB.loop, turn = chunkB.turn - chunkA.turn;
    const Vec *const one = pointsOf(loopA), *const two = pointsOf(loopB);
    const Vec moved{turn * width_, 0};
    const Vec a = one[i], c = two[j] + moved;
    const Vec r = one[i + 1] - a, s = two[j + 1] + moved - c;
    const double area = cross(r, s);
    if (area == 0 || touchAnyway(chunkA, i, chunkB, j)) return;
    const double t = cross(c - a, s) / area, u = cross(c - a, r) / area;
    constexpr double slack = 1e-4;  // lines often meet at a sample of both; repeats are dropped
    if (t < -slack || t > 1 + slack || u < -slack || u > 1 + slack) return;
    if (width_ > 0) {
      const double x = a.x + t * r.x + chunkA.turn * width_;
      if (x < left_ - kSlack || x > left_ + width_ + kSlack) return;  // another copy of it is found
    }
    add(loopA, i + t, loopB, j + u, turn);
  }

  /// From where two chords meet to where the curves do.
  static void refine(const BandLoop& one, double& a, const BandLoop& two, double& b, double moved) {
    const double a0 = a, b0 = b;
    for (int step = 0; step < 3; ++step) {
      const BandLoop::Spot p = one.spot(a), q = two.spot(b);
      const Vec gap = q.at + Vec{moved, 0} - p.at;
      const double area = cross(p.along, q.along);
      if (std::fabs(area) < 1e-9) break;
      const double moveA = cross(gap, q.along) / area, moveB = cross(gap, p.along) / area;
      a += std::clamp(moveA, -0.5, 0.5);
      b += std::clamp(moveB, -0.5, 0.5);
      if (std::max(std::fabs(moveA), std::fabs(moveB)) < kSettled) break;
    }
    if (std::fabs(a - a0) > 1 || std::fabs(b - b0) > 1) {
      a = a0;
      b = b0;
    }
  }

  void add(int loopA, double a, int loopB, double b, int turn) {
    const BandLoop &one = loops_[loopA], &two = loops_[loopB];
    refine(one, a, two, b, turn * width_);
    const double highA = one.height(a), highB = two.height(b);
    turn += laps(two, b) * two.turns() - laps(one, a) * one.turns();
    a = one.wrapped(a);
    b = two.wrapped(b);
    const bool aIsUnder = highA < highB || (highA == highB && (loopA < loopB || (loopA == loopB && a < b)));
    found_.push_back(aIsUnder ? BandCrossing{loopA, loopB, a, b, turn}
                              : BandCrossing{loopB, loopA, b, a, -turn});
  }

  /// How many laps a place lies beyond the first one.
  static int laps(const BandLoop& loop, double place) {
    return static_cast<int>(std::lround((place - loop.wrapped(place)) / loop.size()));
  }

  /// The number of laps, -1 to 1, that bring one place in the first lap next to another.
  int lapsBetween(int loop, double a, double b) const {
    return static_cast<int>(std::lround((a - b) / loops_[loop].size()));
  }

  double apart(int loop, double a, double b) const {
    const double d = std::fabs(a - b);
    return std::min(d, loops_[loop].size() - d);
  }

  bool isSame(const BandCrossing& a, const BandCrossing& b) const {
    if (a.under != b.under || a.over != b.over || apart(a.under, a.underAt, b.underAt) >= kNear ||
        apart(a.over, a.overAt, b.overAt) >= kNear)
      return false;
    const int moved = lapsBetween(a.under, a.underAt, b.underAt) * loops_[a.under].turns() -
                      lapsBetween(a.over, a.overAt, b.overAt) * loops_[a.over].turns();
    return a.turn == b.turn + moved;
  }

  std::vector<BandCrossing> withoutRepeats() {
    std::sort(found_.begin(), found_.end(), [](const BandCrossing& a, const BandCrossing& b) {
      return a.under != b.under ? a.under < b.under : a.underAt < b.underAt;
    });
    std::vector<BandCrossing> kept;
    kept.reserve(found_.size());
    std::size_t firstOfLoop = 0;
    for (const BandCrossing& c : found_) {
      if (kept.empty() || kept[firstOfLoop].under != c.under) firstOfLoop = kept.size();
      const bool known =
          kept.size() > firstOfLoop && (isSame(kept.back(), c) || isSame(kept[firstOfLoop], c));
      if (!known) kept.push_back(c);
    }
    return kept;
  }

  std::span<const BandLoop> loops_;
  double width_ = 0, left_ = 0;  // of the period that is searched, pixels; no width: all of the plane
  std::vector<Chunk> chunks_;
  BoxCells cells_;
  std::vector<Vec> points_;          // of all loops, one after the other, each with its first one again
  std::vector<std::size_t> firsts_;  // of each loop
  std::vector<BandCrossing> found_;
};

}  // namespace

std::vector<BandCrossing> findBandCrossings(std::span<const BandLoop> loops, const Seam& seam) {
  thread_local CrossingSearch search;
  return search.find(loops, seam);
}

std::vector<std::vector<BandPassing>> bandPassings(std::size_t loops,
                                                   std::span<const BandCrossing> crossings) {
  std::vector<std::vector<BandPassing>> overs(loops), all(loops);
  for (std::size_t i = 0; i < crossings.size(); ++i)
    overs[crossings[i].over].push_back({crossings[i].overAt, static_cast<int>(i), true});
  std::vector<BandPassing> unders;
  std::size_t at = 0;
  for (std::size_t l = 0; l < loops; ++l) {
    unders.clear();
    for (; at < crossings.size() && crossings[at].under == static_cast<int>(l); ++at)
      unders.push_back({crossings[at].underAt, static_cast<int>(at), false});
    std::ranges::sort(overs[l], {}, &BandPassing::place);
    all[l].reserve(unders.size() + overs[l].size());
    std::ranges::merge(unders, overs[l], std::back_inserter(all[l]), {}, &BandPassing::place,
                       &BandPassing::place);
  }
  return all;
}

}  // namespace lorivan
