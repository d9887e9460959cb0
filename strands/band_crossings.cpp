#include "strands/band_crossings.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace lorivan {
namespace {

constexpr int kChunk = 2;       // chords that are compared with others as one box
constexpr double kNear = 0.25;  // samples; crossings of the same two stretches that are nearer are one
constexpr double kAside =
    0.1234567;  // of a period from the seam to where the search ends: few crossings lie there
constexpr double kSettled = 3e-4;  // samples; a step of this size leaves about its square
constexpr double kSlack = 1e-3;    // pixels that it goes on there, so that none is lost between both ends

struct Box {
  double left, top, right, bottom;
  void add(Vec p) {
    left = std::min(left, p.x);
    right = std::max(right, p.x);
    top = std::min(top, p.y);
    bottom = std::max(bottom, p.y);
  }
  bool meets(const Box& o) const {
    return left <= o.right && o.left <= right && top <= o.bottom && o.top <= bottom;
  }
};

/// A few chords of a loop, from sample `begin` to sample `end`.
struct Chunk {
  Box box;
  int loop, begin, end;
  int column0, row0, column1, row1;
  int turn = 0;  // periods that it was moved to the right
};

/// What a cell knows of a chunk, lying side by side: most pairs are told apart by it.
struct Entry {
  Entry() = default;
  Entry(std::uint32_t number, const Box& box)
      : chunk(number),
        left(below(box.left)),
        top(below(box.top)),
        right(-below(-box.right)),
        bottom(-below(-box.bottom)) {}
  bool mayMeet(const Entry& o) const {
    return left <= o.right && o.left <= right && top <= o.bottom && o.top <= bottom;
  }
  /// What rounding may have added is taken off.
  static float below(double v) { return static_cast<float>(v - std::fabs(v) * 1e-6); }

  std::uint32_t chunk = 0;
  float left = 0, top = 0, right = 0, bottom = 0;
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
    layCells();
    for (std::size_t cell = 0; cell + 1 < starts_.size(); ++cell)
      for (std::size_t i = starts_[cell]; i < starts_[cell + 1]; ++i)
        for (std::size_t j = i; j < starts_[cell + 1]; ++j)
          if (entries_[i].mayMeet(entries_[j])) meet(entries_[i].chunk, entries_[j].chunk, cell);
    return withoutRepeats();
  }

 private:
  void cutLoops() {
    points_.clear();
    firsts_.clear();
    chunks_.clear();
    for (std::size_t l = 0; l < loops_.size(); ++l) {
      firsts_.push_back(points_.size());
      for (int i = 0; i <= loops_[l].size(); ++i) points_.push_back(loops_[l].point(i));
      for (int begin = 0; begin < loops_[l].size(); begin += kChunk) {
        Chunk chunk{};
        chunk.loop = static_cast<int>(l);
        chunk.begin = begin;
        chunk.end = std::min(begin + kChunk, loops_[l].size());
        const Vec* const points = pointsOf(chunk.loop);
        chunk.box = {points[begin].x, points[begin].y, points[begin].x, points[begin].y};
        for (int i = begin + 1; i <= chunk.end; ++i) chunk.box.add(points[i]);
        if (width_ > 0)
          addCopies(chunk);
        else
          chunks_.push_back(chunk);
      }
    }
  }

  /// At the samples from the first one to where the second lap begins.
  const Vec* pointsOf(int loop) const { return &points_[firsts_[loop]]; }

  /// Round a cylinder: a chunk wherever it reaches into the one period that is searched.
  void addCopies(const Chunk& chunk) {
    const int last = static_cast<int>(std::floor((left_ + width_ + kSlack - chunk.box.left) / width_));
    for (int turn = last; chunk.box.right + turn * width_ >= left_ - kSlack; --turn) {
      Chunk copy = chunk;
      copy.turn = turn;
      copy.box.left += turn * width_;
      copy.box.right += turn * width_;
      chunks_.push_back(copy);
    }
  }

  /// Square cells about as large as a chunk, each with the numbers of the chunks that touch it.
  void layCells() {
    Box all = chunks_.front().box;
    double sizes = 0;
    for (const Chunk& c : chunks_) {
      all.add({c.box.left, c.box.top});
      all.add({c.box.right, c.box.bottom});
      sizes += std::max(c.box.right - c.box.left, c.box.bottom - c.box.top);
    }
    const double extent = std::max(all.right - all.left, all.bottom - all.top);
    const double size = std::max({sizes / static_cast<double>(chunks_.size()), extent / 500, 1e-9});
    columns_ = static_cast<int>((all.right - all.left) / size) + 1;
    const int rows = static_cast<int>((all.bottom - all.top) / size) + 1;
    starts_.assign(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows) + 1, 0);
    for (Chunk& c : chunks_) {
      c.column0 = static_cast<int>((c.box.left - all.left) / size);
      c.column1 = static_cast<int>((c.box.right - all.left) / size);
      c.row0 = static_cast<int>((c.box.top - all.top) / size);
      c.row1 = static_cast<int>((c.box.bottom - all.top) / size);
      eachCell(c, [&](std::size_t cell) { ++starts_[cell + 1]; });
    }
    for (std::size_t i = 1; i < starts_.size(); ++i) starts_[i] += starts_[i - 1];
    entries_.resize(starts_.back());
    next_.assign(starts_.begin(), starts_.end() - 1);
    for (std::size_t i = 0; i < chunks_.size(); ++i)
      eachCell(chunks_[i], [&](std::size_t cell) {
        entries_[next_[cell]++] = {static_cast<std::uint32_t>(i), chunks_[i].box};
      });
  }

  template <class Use>
  void eachCell(const Chunk& c, Use&& use) const {
    for (int row = c.row0; row <= c.row1; ++row)
      for (int column = c.column0; column <= c.column1; ++column)
        use(static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
            static_cast<std::size_t>(column));
  }

  /// Compares two chunks in the first cell that both touch, and only there.
  void meet(std::uint32_t one, std::uint32_t two, std::size_t cell) {
    const Chunk &a = chunks_[one], &b = chunks_[two];
    if (!a.box.meets(b.box)) return;
    const auto firstShared =
        static_cast<std::size_t>(std::max(a.row0, b.row0)) * static_cast<std::size_t>(columns_) +
        static_cast<std::size_t>(std::max(a.column0, b.column0));
    if (cell != firstShared) return;
    if (isOneWay(a, b)) return;
    const Vec *const loop = pointsOf(a.loop), *const other = pointsOf(b.loop);
    const Vec moved{a.turn * width_, 0}, movedToo{b.turn * width_, 0};
    for (int i = a.begin; i < a.end; ++i) {
      const Vec p = loop[i] + moved, q = loop[i + 1] + moved;
      constexpr double slack = 1e-3;
      const Box chord{std::min(p.x, q.x) - slack, std::min(p.y, q.y) - slack, std::max(p.x, q.x) + slack,
                      std::max(p.y, q.y) + slack};
      if (!chord.meets(b.box)) continue;
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
  std::vector<std::size_t> starts_, next_;
  std::vector<Entry> entries_;
  std::vector<Vec> points_;          // of all loops, one after the other, each with its first one again
  std::vector<std::size_t> firsts_;  // of each loop
  std::vector<BandCrossing> found_;
  int columns_ = 0;
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
