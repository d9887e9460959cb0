#include "outlines/few_points.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <queue>
#include <tuple>
#include <utility>

#include "graph/grid_view.h"

namespace lorivan {
namespace {

constexpr double kCandidateShare = 0.25;  // of the tolerance: how closely the points to choose from follow
constexpr double kCoarserShares[] = {0.5, 1};  // where there would be too many of them
constexpr int kMostCandidates = 3000;
constexpr std::size_t kMostLooks = 40'000'000;  // at points, for the fewest
constexpr double kNever = std::numeric_limits<double>::infinity();

/// Takes points out of a piece, the one that matters least first.
class Thinning {
 public:
  explicit Thinning(const OutlinePiece& piece)
      : points_(piece.points),
        closed_(piece.closed),
        count_(static_cast<int>(piece.points.size())),
        kept_(count_),
        version_(points_.size(), 0) {
    for (int i = 0; i < count_; ++i) {
      before_.push_back(i - 1);
      after_.push_back(i + 1);
    }
    if (count_ == 0) return;
    before_.front() = closed_ ? count_ - 1 : -1;
    after_.back() = closed_ ? 0 : -1;
  }

  /// Those that stay when each goes for itself, the cheapest first, as long as that costs no more than this.
  void thin(double most) {
    offers_ = {};
    for (int i = 0; i < count_; ++i)
      if (keeps(i)) offer(i);
    while (!offers_.empty() && kept_ > (closed_ ? 3 : 2)) {
      const Offer best = offers_.top();
      offers_.pop();
      if (best.version != version_[index(best.point)]) continue;
      if (best.cost > most) break;
      drop(best.point);
    }
  }

  int left() const { return kept_; }

  /// Of those that are left the fewest within the tolerance; of equally few the ones that fit best. Looks no
  /// further ahead than its time allows; true where that has left fewer points, from which it may see
  /// further.
  bool takeFewest(double tolerance) {
    std::vector<int> way = keptFrom(sharpest());
    if (way.size() < 3) return false;
    const int before = kept_;
    bool cutShort = false;
    if (closed_) way.push_back(way.front());
    std::vector<Best> best(way.size());
    best.front() = {0, 0, -1};
    const std::size_t mostLooks = kMostLooks / way.size();
    for (std::size_t i = 0; i + 1 < way.size(); ++i)
      for (std::size_t j = i + 1, misses = 0, looks = 0; j < way.size() && misses < kMostMisses; ++j) {
        looks += pointsBetween(way[i], way[j]);
        if (looks > mostLooks && j > i + 1) {
          cutShort = true;
          break;
        }
        const double off = j == i + 1 ? 0 : bandOf(way[i], way[j]);
        misses = off > tolerance ? misses + 1 : 0;
        if (off > tolerance) continue;
        const Best through{best[i].lines + 1, best[i].squares + off * off, static_cast<int>(i)};
        if (through < best[j]) best[j] = through;
      }
    if (best.back().lines < (closed_ ? 3 : 1)) return false;
    std::vector<bool> stays(points_.size(), false);
    for (int k = static_cast<int>(way.size()) - 1; k >= 0; k = best[index(k)].from)
      stays[index(way[index(k)])] = true;
    for (const int i : way)
      if (keeps(i) && !stays[index(i)]) unlink(i);
    return cutShort && kept_ < before;
  }

  /// Of two points that are too close the one goes whose going changes less. `ends`: points close to the ends
  /// of an open piece go, too.
  void keepApart(double spacing, bool ends) {
    while (kept_ > (closed_ ? 3 : 2)) {
      int worst = -1;
      double least = kNever;
      for (int i = 0; i < count_; ++i) {
        if (!keeps(i) || after_[index(i)] < 0) continue;
        const int next = after_[index(i)];
        if (distance(at(i), at(next)) >= spacing) continue;
        if (!ends && (before_[index(i)] < 0 || after_[index(next)] < 0)) continue;
        for (const int end : {i, next})
          if (const double cost = costOf(end); cost < least) least = cost, worst = end;
      }
      if (worst < 0) return;
      drop(worst);
    }
  }

  /// The points that are left, moved to where the lines that fit the points between them best meet.
  /// Ends that lie on an upright axis, beyond which the piece goes on as its image, stay on it.
  std::vector<Spot> result(double tolerance, std::optional<double> axis) const {
    std::vector<Spot> left;
    for (int i = 0; i < count_; ++i) {
      if (!keeps(i)) continue;
      const bool isEnd = before_[index(i)] < 0 || after_[index(i)] < 0;
      left.push_back(isEnd && axis ? settledOn(*axis, i, tolerance) : settled(i, tolerance));
    }
    return left;
  }

 private:
  struct Offer {
    double cost;
    int span;  // points between those that would be joined: of equal offers the shortest, for speed
    int point, version;
    bool operator<(const Offer& o) const {
      return std::tie(cost, span, point) > std::tie(o.cost, o.span, o.point);
    }
  };
  struct Line {
    Spot through, along;
  };
  /// How a point is reached with the fewest lines.
  struct Best {
    int lines = std::numeric_limits<int>::max() / 2;
    double squares = 0;
    int from = -1;
    bool operator<(const Best& o) const { return lines != o.lines ? lines < o.lines : squares < o.squares; }
  };
  static constexpr std::size_t kMostMisses = 12;  // a line further on that fits again is no surprise

  static std::size_t index(int i) { return static_cast<std::size_t>(i); }
  Spot at(int i) const { return points_[index(i)]; }
  bool keeps(int i) const { return version_[index(i)] >= 0; }

  /// How far points would lie off the line without this one.
  double costOf(int i) const {
    const int a = before_[index(i)], b = after_[index(i)];
    return a < 0 || b < 0 ? kNever : bandOf(a, b);
  }

  /// Half the width of the band along the line from one point to another that holds those between them: how
  /// far they lie off where the line is moved to their middle.
  double bandOf(int a, int b) const {
    const Spot from = at(a), along = at(b) - from;
    const double reach = length(along);
    double low = 0, high = 0, beyond = 0;
    for (int k = following(a); k != b; k = following(k)) {
      const Spot away = at(k) - from;
      if (!(reach > 0)) {
        beyond = std::max(beyond, length(away));
        continue;
      }
      const double off = cross(along, away) / reach, place = dot(along, away) / reach;
      low = std::min(low, off);
      high = std::max(high, off);
      beyond = std::max({beyond, -place, place - reach});
    }
    return std::max((high - low) / 2, beyond);
  }

  /// Where a closed piece turns most of the points that are left; the beginning of an open one.
  int sharpest() const {
    int best = 0;
    double most = -1;
    for (int i = 0; closed_ && i < count_; ++i) {
      if (!keeps(i)) continue;
      const double turn = degreesBetween(at(i) - at(before_[index(i)]), at(after_[index(i)]) - at(i));
      if (turn > most + 1e-6) most = turn, best = i;
    }
    return best;
  }

  std::vector<int> keptFrom(int start) const {
    std::vector<int> way;
    for (int i = start; i >= 0; i = after_[index(i)]) {
      way.push_back(i);
      if (after_[index(i)] == start) break;
    }
    return way;
  }

  std::size_t pointsBetween(int a, int b) const { return index(a < b ? b - a : b - a + count_); }
  int following(int i) const { return i + 1 == count_ ? 0 : i + 1; }

  void offer(int i) {
    const double cost = costOf(i);
    if (!(cost < kNever)) return;
    const int ahead = after_[index(i)] - before_[index(i)];
    offers_.push({cost, ahead > 0 ? ahead : ahead + count_, i, ++version_[index(i)]});
  }

  void unlink(int i) {
    const int a = before_[index(i)], b = after_[index(i)];
    version_[index(i)] = -1;
    after_[index(a)] = b;
    before_[index(b)] = a;
    --kept_;
  }

  void drop(int i) {
    const int a = before_[index(i)], b = after_[index(i)];
    unlink(i);
    offer(a);
    offer(b);
  }

  /// By least squares through the way from one point to another, every stretch of it by its length.
  std::optional<Line> lineThrough(int a, int b) const {
    if (following(a) == b) return Line{at(a), at(b) - at(a)};
    double weight = 0, xx = 0, xy = 0, yy = 0;
    Spot sum;
    const auto visit = [&](auto take) {
      for (int k = a; k != b; k = following(k))
        take(at(k), at(following(k)), distance(at(k), at(following(k))));
    };
    visit([&](Spot p, Spot q, double w) { weight += w, sum = sum + (w / 2) * (p + q); });
    if (!(weight > 0)) return {};
    const Spot middle = (1 / weight) * sum;
    visit([&](Spot p, Spot q, double w) {
      const Spot m = 0.5 * (p + q) - middle, d = q - p;
      xx += w * (m.x * m.x + d.x * d.x / 12);
      xy += w * (m.x * m.y + d.x * d.y / 12);
      yy += w * (m.y * m.y + d.y * d.y / 12);
    });
    const double angle = 0.5 * std::atan2(2 * xy, xx - yy);
    return Line{middle, {std::cos(angle), std::sin(angle)}};
  }

  Spot settledOn(double axis, int end, double tolerance) const {
    const auto line = before_[index(end)] < 0 ? lineThrough(end, after_[index(end)])
                                              : lineThrough(before_[index(end)], end);
    if (!line || std::fabs(line->along.x) <= 0.02 * length(line->along)) return at(end);
    const Spot meet = line->through + ((axis - line->through.x) / line->along.x) * line->along;
    return {axis, at(end).y + std::clamp(meet.y - at(end).y, -tolerance, tolerance)};
  }

  Spot settled(int i, double tolerance) const {
    const int a = before_[index(i)], b = after_[index(i)];
    if (a < 0 || b < 0) return at(i);
    const auto in = lineThrough(a, i), out = lineThrough(i, b);
    if (!in || !out) return at(i);
    const double across = cross(in->along, out->along);
    // Also where two points are one, so that a line has no direction.
    if (std::fabs(across) <= 0.02 * length(in->along) * length(out->along)) return at(i);
    const Spot meet = in->through + (cross(out->through - in->through, out->along) / across) * in->along;
    const Spot move = meet - at(i);
    return at(i) + std::min(1.0, tolerance / std::max(length(move), 1e-12)) * move;
  }

  const std::vector<Spot>& points_;
  bool closed_;
  int count_, kept_;
  std::vector<int> version_;  // of a point's offer; -1 for points that are gone
  std::vector<int> before_, after_;
  std::priority_queue<Offer> offers_;
};

OutlinePiece thinned(const OutlinePiece& piece, double tolerance, double spacing,
                     std::optional<double> axis = {}) {
  Thinning thinning(piece);
  thinning.thin(tolerance * kCandidateShare);
  for (const double share : kCoarserShares)
    if (thinning.left() > kMostCandidates) thinning.thin(tolerance * share);
  while (thinning.takeFewest(tolerance)) {
  }
  thinning.keepApart(spacing, !axis);
  return {thinning.result(tolerance, axis), piece.closed};
}

Spot mirrored(Spot p, double axis) { return {2 * axis - p.x, p.y}; }

/// Pieces that are mirrored at an upright line through the middle of their box.
class Mirror {
 public:
  Mirror(const std::vector<OutlinePiece>& pieces, double tolerance) : pieces_(pieces), tolerance_(tolerance) {
    for (const OutlinePiece& piece : pieces) {
      GridBox box;
      for (const Spot p : piece.points) box.add(p.x, p.y), all_.add(p.x, p.y);
      boxes_.push_back(box);
    }
    axis_ = (all_.left + all_.right) / 2;
  }

  /// The pieces with few points, or nothing where they are not mirrored.
  std::optional<std::vector<OutlinePiece>> thinned(double tolerance, double spacing) const {
    std::vector<OutlinePiece> made(pieces_.size());
    std::vector<bool> done(pieces_.size(), false);
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
      if (done[i]) continue;
      const auto image = imageOf(i);
      if (!image || done[*image]) return {};
      const auto piece = *image == i ? ownImage(pieces_[i], tolerance, spacing)
                                     : std::optional(withFewPoints(pieces_[i], tolerance, spacing));
      if (!piece) return {};
      done[i] = done[*image] = true;
      made[i] = *piece;
      if (*image == i) continue;
      for (Spot& p : (made[*image] = *piece).points) p = mirrored(p, axis_);
    }
    return made;
  }

 private:
  std::optional<std::size_t> imageOf(std::size_t i) const {
    for (std::size_t j = i; j < pieces_.size(); ++j)
      if (pieces_[j].closed && pieces_[i].closed && boxesMatch(boxes_[i], boxes_[j]) &&
          liesOn(pieces_[i], pieces_[j]) && (i == j || liesOn(pieces_[j], pieces_[i])))
        return j;
    return {};
  }

  bool boxesMatch(const GridBox& a, const GridBox& b) const {
    const auto near = [&](double p, double q) { return std::fabs(p - q) <= tolerance_; };
    return near(2 * axis_ - a.left, b.right) && near(2 * axis_ - a.right, b.left) && near(a.top, b.top) &&
           near(a.bottom, b.bottom);
  }

  /// Whether the image of one piece lies on the other. Most points lie next to the one before: the search
  /// goes from there to both sides.
  bool liesOn(const OutlinePiece& piece, const OutlinePiece& other) const {
    const std::size_t count = other.points.size();
    std::size_t near = 0;
    for (const Spot p : piece.points) {
      const Spot image = mirrored(p, axis_);
      const auto fits = [&](std::size_t side) {
        const Spot end = other.points[side + 1 == count ? 0 : side + 1];
        return distance(image, nearestOn(image, other.points[side], end)) <= tolerance_;
      };
      std::size_t tried = 0, side = near;
      while (tried < count && !fits(side)) {
        ++tried;
        side = (near + (tried % 2 == 1 ? (tried + 1) / 2 : count - tried / 2)) % count;
      }
      if (tried == count) return false;
      near = side;
    }
    return true;
  }

  /// The left half of a piece that is its own image, and its image.
  std::optional<OutlinePiece> ownImage(const OutlinePiece& piece, double tolerance, double spacing) const {
    const auto half = leftHalf(piece);
    if (!half) return {};
    std::vector<Spot> left = lorivan::thinned({*half, false}, tolerance, spacing, axis_).points;
    if (left.size() < 3) return {};
    // Where the line crosses the axis level there is no corner; next to a corner no point is too close.
    const auto level = [&](Spot end, Spot next) { return std::fabs(end.y - next.y) < tolerance / 4; };
    const auto crowded = [&](Spot end, Spot next) {
      return left.size() > 4 && !level(end, next) && distance(end, next) < spacing;
    };
    if (crowded(left[0], left[1])) left.erase(left.begin() + 1);
    if (crowded(left.back(), left.end()[-2])) left.erase(left.end() - 2);
    OutlinePiece made{left, true};
    for (std::size_t k = left.size() - 1; k-- > 1;) made.points.push_back(mirrored(left[k], axis_));
    if (made.points.size() > 3 && level(left.back(), left.end()[-2]))
      made.points.erase(made.points.begin() + static_cast<std::ptrdiff_t>(left.size() - 1));
    if (made.points.size() > 3 && level(left[0], left[1])) made.points.erase(made.points.begin());
    return made;
  }

  /// From the axis to the axis; nothing where the piece crosses the axis elsewhere, too.
  std::optional<std::vector<Spot>> leftHalf(const OutlinePiece& piece) const {
    const std::size_t count = piece.points.size();
    const auto leftAt = [&](std::size_t k) { return piece.points[k % count].x < axis_; };
    std::vector<std::size_t> entries;
    for (std::size_t k = 0; k < count; ++k)
      if (!leftAt(k) && leftAt(k + 1)) entries.push_back(k);
    if (entries.size() != 1) return {};
    const auto onAxis = [&](std::size_t k) {
      const Spot a = piece.points[k % count], b = piece.points[(k + 1) % count];
      return Spot{axis_, a.y + (axis_ - a.x) / (b.x - a.x) * (b.y - a.y)};
    };
    std::vector<Spot> half{onAxis(entries[0])};
    std::size_t k = entries[0] + 1;
    for (; leftAt(k); ++k)
      if (distance(piece.points[k % count], half.back()) > 1e-9) half.push_back(piece.points[k % count]);
    half.push_back(onAxis(k - 1));
    if (half.size() < 3) return {};
    return half;
  }

  const std::vector<OutlinePiece>& pieces_;
  double tolerance_, axis_ = 0;
  GridBox all_;
  std::vector<GridBox> boxes_;
};

std::vector<OutlinePiece> swapped(std::vector<OutlinePiece> pieces) {
  for (OutlinePiece& piece : pieces)
    for (Spot& p : piece.points) std::swap(p.x, p.y);
  return pieces;
}

}  // namespace

OutlinePiece withFewPoints(const OutlinePiece& piece, double tolerance, double spacing) {
  return thinned(piece, tolerance, spacing);
}

std::vector<OutlinePiece> withFewPoints(const std::vector<OutlinePiece>& pieces, double tolerance,
                                        double spacing) {
  if (auto made = Mirror(pieces, tolerance).thinned(tolerance, spacing)) return std::move(*made);
  const std::vector<OutlinePiece> turned = swapped(pieces);
  if (const auto made = Mirror(turned, tolerance).thinned(tolerance, spacing)) return swapped(*made);
  std::vector<OutlinePiece> all;
  for (const OutlinePiece& piece : pieces) all.push_back(withFewPoints(piece, tolerance, spacing));
  return all;
}

}  // namespace lorivan
