#include "graph/strand_runs.h"

#include <algorithm>

namespace lorivan {
namespace {

constexpr std::size_t kNextSide = 1, kSecondPoint = 2;

std::size_t endAt(int line, bool atSecond, bool nextSide) {
  return 4 * static_cast<std::size_t>(line) + (atSecond ? kSecondPoint : 0) + (nextSide ? kNextSide : 0);
}

/// The end by which a strand leaves a line that it has come to by `entry`.
std::size_t across(std::size_t entry, bool wall) {
  return entry ^ (wall ? kSecondPoint | kNextSide : kSecondPoint);
}

}  // namespace

StrandRuns::StrandRuns(const KnotGraph& graph) {
  const auto lines = static_cast<std::size_t>(graph.LastLine + 1);
  corner_.assign(4 * lines, -1);
  part_.assign(lines, false);
  walls_.assign(lines, false);
  for (std::size_t j = 0; j < lines; ++j) walls_[j] = graph.Lines[j].Kind == kWall;

  for (int i = 0; i <= graph.LastPoint; ++i) {
    const GridPoint& point = graph.Points[static_cast<std::size_t>(i)];
    for (int k = 0; k < point.NbCount; ++k) {
      const auto slot = static_cast<std::size_t>(k),
                 after = static_cast<std::size_t>((k + 1) % point.NbCount);
      const int from = point.NbLine[slot], to = point.NbLine[after];
      const std::size_t a = endAt(from, !isFirstEnd(graph, point, slot), true);
      const std::size_t b = endAt(to, !isFirstEnd(graph, point, after), false);
      corner_[a] = static_cast<std::int32_t>(b);
      corner_[b] = static_cast<std::int32_t>(a);
    }
  }
  for (std::size_t j = 0; j < lines; ++j)
    part_[j] =
        std::all_of(corner_.begin() + static_cast<std::ptrdiff_t>(4 * j),
                    corner_.begin() + static_cast<std::ptrdiff_t>(4 * j + 4), [](int c) { return c >= 0; });
}

/// Calls visit(entry, isFirst) for every line that a strand comes to, strand by strand.
template <class Visit>
void StrandRuns::walk(const Walls& walls, Visit visit) const {
  thread_local std::vector<char> seen;
  seen.assign(corner_.size(), 0);
  for (std::size_t start = 0; start < corner_.size(); ++start) {
    if (seen[start] || !part_[start / 4]) continue;
    std::size_t entry = start;
    do {
      visit(entry, entry == start);
      const std::size_t exit = across(entry, walls[entry / 4]);
      seen[entry] = seen[exit] = 1;
      entry = static_cast<std::size_t>(corner_[exit]);
    } while (entry != start);
  }
}

StrandRuns::Counts StrandRuns::count(const Walls& walls) const {
  Counts counts;
  int length = 0;
  bool drawn = false;
  const auto close = [&] {
    if (length == 0) return;
    ++(drawn ? counts.strands : counts.wallLoops);
    if (drawn) counts.longest = std::max(counts.longest, length);
  };
  walk(walls, [&](std::size_t entry, bool first) {
    if (first) {
      close();
      length = 0;
      drawn = false;
    }
    ++length;
    drawn = drawn || !walls[entry / 4];
  });
  close();
  return counts;
}

StrandRuns::Tour StrandRuns::tour(const Walls& walls) const {
  Tour tour;
  tour.passages.resize(part_.size());
  walk(walls, [&](std::size_t entry, bool first) {
    if (first) tour.lengths.push_back(0);
    const Passage passage{static_cast<int>(tour.lengths.size()) - 1, tour.lengths.back()++,
                          (entry & kSecondPoint) != 0};
    auto& two = tour.passages[entry / 4];
    two[two[0].strand < 0 ? 0 : 1] = passage;
  });
  return tour;
}

StrandRuns::Change StrandRuns::changeAt(const std::array<Passage, 2>& line) {
  const auto& [one, other] = line;
  if (one.strand != other.strand) return Change::join;
  return one.back == other.back ? Change::split : Change::none;
}

}  // namespace lorivan
