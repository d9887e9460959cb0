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
    const GridPoint& point = graph.Points[i];
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
    if (first) {
      tour.lengths.push_back(0);
      tour.crossings.push_back(0);
    }
    const Passage passage{static_cast<int>(tour.lengths.size()) - 1, tour.lengths.back()++,
                          tour.crossings.back(), static_cast<std::uint8_t>(entry % 4)};
    if (!walls[entry / 4]) ++tour.crossings.back();
    auto& two = tour.passages[entry / 4];
    two[two[0].strand < 0 ? 0 : 1] = passage;
  });
  return tour;
}

StrandRuns::Change StrandRuns::changeAt(const std::array<Passage, 2>& line) {
  const auto& [one, other] = line;
  if (one.strand != other.strand) return Change::join;
  const bool sameWay = ((one.entry ^ other.entry) & kSecondPoint) == 0;
  return sameWay ? Change::split : Change::none;
}

ChangedRuns::ChangedRuns(const StrandRuns& runs, const Walls& walls)
    : tour_(runs.tour(walls)), walls_(walls.begin(), walls.end()), whole_(runs.count(walls)) {
  for (std::size_t s = 0; s < tour_.lengths.size(); ++s)
    if (tour_.crossings[s] > 0) byLength_.push_back(static_cast<int>(s));
  std::ranges::sort(byLength_, std::ranges::greater(), [&](int s) { return tour_.lengths[s]; });
  cutAtEnd_.resize(walls.size());
  isCut_.resize(tour_.lengths.size());
}

/// Cuts in the order of strands and places, by one number each: strand, place, line and passage.
void ChangedRuns::cutAt(const std::vector<int>& lines) {
  order_.clear();
  for (const int line : lines)
    for (std::size_t which = 0; which < 2; ++which) {
      const StrandRuns::Passage& passage = tour_.passages[line][which];
      order_.push_back(static_cast<std::uint64_t>(passage.strand) << 48 |
                       static_cast<std::uint64_t>(passage.place) << 24 |
                       static_cast<std::uint64_t>(line) << 1 | which);
    }
  std::ranges::sort(order_);
  cuts_.resize(order_.size());
  for (std::size_t i = 0; i < order_.size(); ++i) {
    const std::size_t line = (order_[i] & 0xFFFFFF) >> 1;
    Cut& cut = cuts_[i];
    cut.passage = &tour_.passages[line][order_[i] & 1];
    cut.line = static_cast<std::int32_t>(line);
    cut.walked = false;
    const std::size_t entry = cut.passage->entry;
    // An entry is told from an exit by its sign.
    cutAtEnd_[line][entry] = ~static_cast<std::int32_t>(i);
    cutAtEnd_[line][across(entry, walls_[line] != 0)] = static_cast<std::int32_t>(i);
  }
}

void ChangedRuns::measurePieces(StrandRuns::Counts& counts) {
  for (std::size_t i = 0, first = 0; i < cuts_.size(); ++i) {
    Cut& cut = cuts_[i];
    const auto strand = static_cast<std::size_t>(cut.passage->strand);
    const bool last = i + 1 == cuts_.size() || cuts_[i + 1].passage->strand != cut.passage->strand;
    const StrandRuns::Passage& end = *cuts_[last ? first : i + 1].passage;
    cut.next = static_cast<std::int32_t>(last ? first : i + 1);
    cuts_[cut.next].before = static_cast<std::int32_t>(i);
    const int own = walls_[cut.line] != 0 ? 0 : 1;
    cut.length = end.place - cut.passage->place - 1 + (last ? tour_.lengths[strand] : 0);
    cut.crossings = end.crossings - cut.passage->crossings - own + (last ? tour_.crossings[strand] : 0);
    if (!last) continue;
    isCut_[strand] = 1;
    --(tour_.crossings[strand] > 0 ? counts.strands : counts.wallLoops);
    first = i + 1;
  }
}

/// Along a piece to its end, over the changed line to the next one, forwards or backwards.
void ChangedRuns::joinPieces(StrandRuns::Counts& counts) {
  for (std::size_t start = 0; start < cuts_.size(); ++start) {
    if (cuts_[start].walked) continue;
    int length = 0, crossings = 0;
    auto piece = static_cast<std::int32_t>(start);
    bool forwards = true;
    do {
      Cut& walked = cuts_[piece];
      walked.walked = true;
      const Cut& at = forwards ? cuts_[walked.next] : walked;
      const auto line = static_cast<std::size_t>(at.line);
      const bool wall = walls_[line] == 0;
      length += walked.length + 1;
      crossings += walked.crossings + (wall ? 0 : 1);
      const std::size_t end = forwards ? at.passage->entry : across(at.passage->entry, !wall);
      const std::int32_t cut = cutAtEnd_[line][across(end, wall)];
      forwards = cut >= 0;
      piece = forwards ? cut : cuts_[~cut].before;
    } while (piece != static_cast<std::int32_t>(start) || !forwards);
    ++(crossings > 0 ? counts.strands : counts.wallLoops);
    if (crossings > 0) counts.longest = std::max(counts.longest, length);
  }
}

int ChangedRuns::longestOfOthers() const {
  for (const int s : byLength_)
    if (isCut_[s] == 0) return tour_.lengths[s];
  return 0;
}

StrandRuns::Counts ChangedRuns::count(const std::vector<int>& lines) {
  StrandRuns::Counts counts = whole_;
  cutAt(lines);
  measurePieces(counts);
  counts.longest = longestOfOthers();
  joinPieces(counts);
  for (const Cut& cut : cuts_) isCut_[cut.passage->strand] = 0;
  return counts;
}

}  // namespace lorivan
