#include "strands/seam_cut.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "strands/flat_path.h"

namespace lorivan {
namespace {

using Segment = std::array<PointF, 4>;
using Chain = std::vector<PointF>;

constexpr int kSamples = 24;     // samples of a segment, between which it meets the seam at most once
constexpr int kHalvings = 40;    // on the way to where it does
constexpr double kPoint = 1e-3;  // pixels; what is left of a shape is larger

/// One seam, and the side of it that stays: 1 to its right, -1 to its left.
struct SeamEdge {
  double x = 0;
  int side = 1;
  bool holds(double at) const { return (at - x) * side > 0; }
};

Segment segmentAt(const Chain& chain, std::size_t i) {
  return {chain[i], chain[i + 1], chain[i + 2], chain[i + 3]};
}

double across(const Segment& s, double t) {
  const double u = 1 - t;
  return u * u * u * s[0].x + 3 * u * u * t * s[1].x + 3 * u * t * t * s[2].x + t * t * t * s[3].x;
}

PointF between(PointF a, PointF b, double t) {
  return {static_cast<float>(a.x + (b.x - a.x) * t), static_cast<float>(a.y + (b.y - a.y) * t)};
}

/// De Casteljau: the segment's part from one place to a later one.
Segment partOf(Segment s, double from, double to) {
  const auto split = [](const Segment& p, double t, bool first) {
    const PointF a = between(p[0], p[1], t), b = between(p[1], p[2], t), c = between(p[2], p[3], t);
    const PointF d = between(a, b, t), e = between(b, c, t), middle = between(d, e, t);
    return first ? Segment{p[0], a, d, middle} : Segment{middle, e, c, p[3]};
  };
  if (to < 1) s = split(s, to, true);
  if (from > 0) s = split(s, to < 1 ? from / to : from, false);
  return s;
}

/// The places where a segment meets an edge, ascending.
std::vector<double> meetings(const Segment& s, const SeamEdge& edge) {
  const auto [low, high] = std::minmax({s[0].x, s[1].x, s[2].x, s[3].x});
  std::vector<double> found;
  if (edge.x < low || edge.x > high) return found;
  for (int i = 0; i < kSamples; ++i) {
    double from = static_cast<double>(i) / kSamples, to = static_cast<double>(i + 1) / kSamples;
    const bool begins = edge.holds(across(s, from));
    if (begins == edge.holds(across(s, to))) continue;
    for (int k = 0; k < kHalvings; ++k) {
      const double middle = (from + to) / 2;
      (begins == edge.holds(across(s, middle)) ? from : to) = middle;
    }
    found.push_back((from + to) / 2);
  }
  return found;
}

/// The parts of a chain inside an edge. Those that begin or end there do so exactly on it. `whole` tells that
/// nothing was cut off.
class ChainCutter {
 public:
  explicit ChainCutter(const SeamEdge& edge) : edge_(edge) {}

  std::vector<Chain> cut(const Chain& chain) {
    for (std::size_t i = 0; i + 3 < chain.size(); i += 3) addSegment(segmentAt(chain, i));
    const bool endsInside = goesOn_;
    if (parts_.size() > 1 && startsInside_ && endsInside && isClosed(chain)) {
      Chain& last = parts_.back();
      last.insert(last.end(), parts_.front().begin() + 1, parts_.front().end());
      parts_.front() = std::move(last);
      parts_.pop_back();
    }
    return std::move(parts_);
  }
  bool isWhole() const { return !wasCut_; }

 private:
  void addSegment(const Segment& s) {
    std::vector<double> places = meetings(s, edge_);
    places.insert(places.begin(), 0);
    places.push_back(1);
    for (std::size_t k = 0; k + 1 < places.size(); ++k) {
      const bool inside = edge_.holds(across(s, (places[k] + places[k + 1]) / 2));
      if (isFirst_) startsInside_ = inside;
      isFirst_ = false;
      wasCut_ |= !inside;
      if (inside) add(partOf(s, places[k], places[k + 1]), k > 0, k + 2 < places.size());
      goesOn_ = inside;
    }
  }
  void add(Segment part, bool fromEdge, bool toEdge) {
    if (fromEdge) part[0].x = static_cast<float>(edge_.x);
    if (toEdge) part[3].x = static_cast<float>(edge_.x);
    if (!goesOn_) parts_.push_back({part[0]});
    parts_.back().insert(parts_.back().end(), part.begin() + 1, part.end());
  }

  SeamEdge edge_;
  std::vector<Chain> parts_;
  bool isFirst_ = true, startsInside_ = false, goesOn_ = false, wasCut_ = false;
};

void appendLine(PointF to, Chain& chain) {
  const PointF from = chain.back();
  for (const double t : {1.0 / 3, 2.0 / 3, 1.0}) chain.push_back(between(from, to, t));
}

/// Joins parts that begin and end on one edge: what a shape covers of it lies between every second pair of
/// neighbouring ends.
std::vector<BandContour> closed(std::vector<Chain> parts) {
  struct End {
    float y;
    std::size_t part;
    bool begins;
  };
  std::vector<End> ends;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    ends.push_back({parts[i].front().y, i, true});
    ends.push_back({parts[i].back().y, i, false});
  }
  std::ranges::stable_sort(ends, {}, &End::y);
  std::vector<std::size_t> next(parts.size(), parts.size());
  std::vector<bool> reached(parts.size(), false);
  for (std::size_t k = 0; k + 1 < ends.size(); k += 2) {
    if (ends[k].begins == ends[k + 1].begins) continue;
    const End &end = ends[k].begins ? ends[k + 1] : ends[k], &begin = ends[k].begins ? ends[k] : ends[k + 1];
    next[end.part] = begin.part;
    reached[begin.part] = true;
  }
  // A contour that crosses itself may leave ends of one kind side by side: any order closes it.
  for (std::size_t i = 0; i < parts.size(); ++i)
    if (next[i] == parts.size()) {
      next[i] = static_cast<std::size_t>(std::ranges::find(reached, false) - reached.begin());
      reached[next[i]] = true;
    }
  std::vector<BandContour> contours;
  std::vector<bool> used(parts.size(), false);
  for (std::size_t first = 0; first < parts.size(); ++first) {
    if (used[first]) continue;
    Chain contour = parts[first];
    used[first] = true;
    for (std::size_t at = next[first]; at != first; at = next[at]) {
      used[at] = true;
      appendLine(parts[at].front(), contour);
      contour.insert(contour.end(), parts[at].begin() + 1, parts[at].end());
    }
    appendLine(contour.front(), contour);
    contour.back() = contour.front();
    contours.push_back(std::move(contour));
  }
  return contours;
}

std::vector<BandContour> insideOf(const std::vector<BandContour>& shape, const SeamEdge& edge) {
  std::vector<BandContour> kept;
  std::vector<Chain> open;
  for (const BandContour& contour : shape) {
    ChainCutter cutter(edge);
    std::vector<Chain> parts = cutter.cut(contour);
    std::ranges::move(parts, std::back_inserter(cutter.isWhole() ? kept : open));
  }
  std::ranges::move(closed(std::move(open)), std::back_inserter(kept));
  std::erase_if(kept, [](const BandContour& c) { return std::fabs(contourArea(c)) < kPoint; });
  return kept;
}

bool surrounds(const Reach& outer, const Reach& inner) {
  return outer.low <= inner.low && inner.high <= outer.high;
}

/// One shape for each outer contour, with the holes that lie within its reach.
void addShapes(std::vector<BandContour> contours, std::vector<std::vector<BandContour>>& shapes) {
  const auto holes = std::stable_partition(contours.begin(), contours.end(),
                                           [](const BandContour& c) { return contourArea(c) > 0; });
  std::vector<Reach> reaches;
  for (auto outer = contours.begin(); outer != holes; ++outer) {
    reaches.emplace_back().add(*outer);
    shapes.push_back({std::move(*outer)});
  }
  for (auto hole = holes; hole != contours.end(); ++hole) {
    Reach reach;
    reach.add(*hole);
    for (std::size_t i = 0; i < reaches.size(); ++i) {
      if (!surrounds(reaches[i], reach) && i + 1 < reaches.size()) continue;
      shapes[shapes.size() - reaches.size() + i].push_back(std::move(*hole));
      break;
    }
  }
}

}  // namespace

std::vector<std::vector<BandContour>> cutAtSeam(const Seam& seam, const std::vector<BandContour>& shape,
                                                double grow) {
  std::vector<std::vector<BandContour>> shapes;
  if (!seam) return {shape};
  Reach reach;
  for (const BandContour& contour : shape) reach.add(contour);
  eachCopy(seam, reach.low - grow, reach.high + grow, [&](double right) {
    std::vector<BandContour> copy;
    for (const BandContour& contour : shape) copy.push_back(movedRight(contour, right));
    for (const SeamEdge edge : {SeamEdge{seam.left - grow, 1}, SeamEdge{seam.right() + grow, -1}})
      copy = insideOf(copy, edge);
    addShapes(std::move(copy), shapes);
  });
  return shapes;
}

std::vector<std::vector<PointF>> chainsAtSeam(const Seam& seam, const std::vector<PointF>& chain) {
  if (!seam) return {chain};
  std::vector<Chain> all;
  Reach reach;
  reach.add(chain);
  eachCopy(seam, reach.low, reach.high, [&](double right) {
    for (const Chain& part : ChainCutter({seam.left, 1}).cut(movedRight(chain, right)))
      std::ranges::move(ChainCutter({seam.right(), -1}).cut(part), std::back_inserter(all));
  });
  return all;
}

}  // namespace lorivan
