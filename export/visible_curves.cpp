#include "export/visible_curves.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <set>
#include <tuple>

#include "strands/flat_path.h"
#include "strands/seam_cut.h"

namespace lorivan {
namespace {

/// Pieces between two samples; three steps more than the samples alone keep a large cut smooth.
constexpr int kPieces = 4;
/// Part of the way to the next crossing that a gap may take.
constexpr double kMostOfWay = 0.45;

struct Strand {
  int slot = 0;
  std::vector<FlatPoint> points;  // closed
  std::vector<double> height;     // at each point
  std::vector<double> way;        // along the curve to each point, and back to the first one
  double length() const { return way.back(); }
};

double distance(const FlatPoint& a, const FlatPoint& b) { return std::hypot(b.x - a.x, b.y - a.y); }

FlatPoint mix(const FlatPoint& a, const FlatPoint& b, double t) {
  return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t};
}

/// The cardinal curve of tension 0.5 between the two middle values, at t from 0 to 1.
double cardinal(double p0, double p1, double p2, double p3, double t) {
  return p1 + t * 0.5 * (p2 - p0 + t * (2 * p0 - 5 * p1 + 4 * p2 - p3 + t * (3 * (p1 - p2) + p3 - p0)));
}

Strand makeStrand(const KnotCurve& curve, int slot) {
  Strand strand;
  strand.slot = slot;
  const int first = curve.first[slot];
  const int count = curve.last[slot] - first + 1;
  const auto at = [&](const std::vector<float>& values, int i) {
    const int sample = first + (i + count) % count;
    return static_cast<double>(values[sample]);
  };
  for (int i = 0; i < count; ++i)
    for (int piece = 0; piece < kPieces; ++piece) {
      const double t = static_cast<double>(piece) / kPieces;
      const auto value = [&](const std::vector<float>& v) {
        return cardinal(at(v, i - 1), at(v, i), at(v, i + 1), at(v, i + 2), t);
      };
      const FlatPoint p{value(curve.X), value(curve.Y) * kProportion};
      if (!strand.points.empty() && distance(strand.points.back(), p) == 0) continue;
      strand.points.push_back(p);
      strand.height.push_back(at(curve.Z, i) * (1 - t) + at(curve.Z, i + 1) * t);
    }
  double way = 0;
  for (std::size_t i = 0; i < strand.points.size(); ++i) {
    strand.way.push_back(way);
    way += distance(strand.points[i], strand.points[(i + 1) % strand.points.size()]);
  }
  strand.way.push_back(way);
  return strand;
}

std::vector<Strand> makeStrands(const KnotCurve& curve) {
  std::vector<Strand> strands;
  for (int slot = 1; slot < kStrandSlots; ++slot)
    if (curve.used(slot)) strands.push_back(makeStrand(curve, slot));
  return strands;
}

double wrapped(double way, double length) {
  way = std::fmod(way, length);
  return way < 0 ? way + length : way;
}

/// Number of the piece that holds a place on the curve.
std::size_t pieceAt(const Strand& strand, double way) {
  const auto after = std::upper_bound(strand.way.begin(), strand.way.end() - 1, way);
  return static_cast<std::size_t>(after - strand.way.begin()) - 1;
}

const FlatPoint& endOf(const Strand& strand, std::size_t piece) {
  return strand.points[piece + 1 < strand.points.size() ? piece + 1 : 0];
}

FlatPoint pointAt(const Strand& strand, double way) {
  way = wrapped(way, strand.length());
  const std::size_t piece = pieceAt(strand, way);
  const double size = strand.way[piece + 1] - strand.way[piece];
  return mix(strand.points[piece], endOf(strand, piece), size > 0 ? (way - strand.way[piece]) / size : 0);
}

double distanceToPiece(const FlatPoint& p, const FlatPoint& a, const FlatPoint& b) {
  const double dx = b.x - a.x, dy = b.y - a.y, square = dx * dx + dy * dy;
  const double t = square > 0 ? std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / square, 0.0, 1.0) : 0;
  return distance(p, mix(a, b, t));
}

/// Distance to the part of the strand that lies within `reach` (along it) of the place `way`.
double distanceToPart(const Strand& strand, double way, double reach, const FlatPoint& p) {
  reach = std::min(reach, strand.length() / 2);
  const double from = wrapped(way - reach, strand.length());
  double nearest = 1e300, done = 0;
  for (std::size_t piece = pieceAt(strand, from); done <= 2 * reach;) {
    nearest = std::min(nearest, distanceToPiece(p, strand.points[piece], endOf(strand, piece)));
    const double size = strand.way[piece + 1] - strand.way[piece];
    done += std::max(size, strand.length() * 1e-9);
    piece = piece + 1 < strand.points.size() ? piece + 1 : 0;
  }
  return nearest;
}

struct Place {
  std::size_t strand = 0;
  double way = 0;
};

struct Crossing {
  Place under, over;
  double longer = 0;  // of the two pieces that cross
};

/// All pieces of all strands in square cells, so that only near ones are compared. Cells come in sizes, each
/// twice the one below. A piece lies in the smallest cells that it is not longer than, four at most, and
/// looks in those and in all larger ones: a few long pieces make no cell crowded.
class CrossingFinder {
 public:
  explicit CrossingFinder(const std::vector<Strand>& strands) : strands_(strands) {
    takePieces();
    fillBuckets();
  }

  std::vector<Crossing> find() {
    for (std::uint32_t i = 0; i < pieces_.size(); ++i)
      for (const int size : sizes_)
        if (size >= pieces_[i].size)
          eachBucket(i, size, [&](std::size_t bucket) { compareWith(i, size, bucket); });
    removeRepeats();
    return std::move(crossings_);
  }

 private:
  struct Piece {
    std::size_t strand = 0, number = 0;
    int size = 0;  // of its cells, as an exponent of two
  };

  const FlatPoint& begin(const Piece& p) const { return strands_[p.strand].points[p.number]; }
  const FlatPoint& end(const Piece& p) const { return endOf(strands_[p.strand], p.number); }

  double lengthOf(const Piece& p) const {
    return strands_[p.strand].way[p.number + 1] - strands_[p.strand].way[p.number];
  }

  void takePieces() {
    left_ = bottom_ = 1e300;
    double right = -1e300, top = -1e300;
    for (const Strand& strand : strands_)
      for (std::size_t i = 0; i < strand.points.size(); ++i) {
        const FlatPoint& p = strand.points[i];
        left_ = std::min(left_, p.x), right = std::max(right, p.x);
        bottom_ = std::min(bottom_, p.y), top = std::max(top, p.y);
      }
    const double extent = std::max(right - left_, top - bottom_);
    // Shorter pieces than this are as good as points, and cells stay countable.
    const double shortest = std::max(extent * 1e-9, 1e-9);
    for (std::size_t s = 0; s < strands_.size(); ++s)
      for (std::size_t i = 0; i < strands_[s].points.size(); ++i) {
        Piece piece{s, i};
        std::frexp(std::max(lengthOf(piece), shortest), &piece.size);
        pieces_.push_back(piece);
        sizes_.insert(piece.size);
      }
  }

  /// Two passes: count what each bucket holds, then lay the entries one bucket after the other. Cells are
  /// scattered over the buckets; that some share one costs a little time and nothing else.
  void fillBuckets() {
    starts_.assign(std::bit_ceil(2 * pieces_.size() + 1) + 1, 0);
    const auto each = [&](auto&& use) {
      for (std::uint32_t i = 0; i < pieces_.size(); ++i)
        eachBucket(i, pieces_[i].size, [&](std::size_t bucket) { use(bucket, i); });
    };
    each([&](std::size_t bucket, std::uint32_t) { ++starts_[bucket + 1]; });
    for (std::size_t i = 1; i < starts_.size(); ++i) starts_[i] += starts_[i - 1];
    entries_.resize(starts_.back());
    std::vector<std::uint32_t> next(starts_.begin(), starts_.end() - 1);
    each([&](std::size_t bucket, std::uint32_t piece) { entries_[next[bucket]++] = piece; });
  }

  /// The buckets of all cells of a size that the piece may reach into.
  template <class Use>
  void eachBucket(std::uint32_t piece, int size, Use&& use) const {
    const auto index = [size](double way) { return static_cast<std::uint64_t>(std::ldexp(way, -size)); };
    const FlatPoint &a = begin(pieces_[piece]), &b = end(pieces_[piece]);
    const auto [x1, x2] = std::minmax(a.x, b.x);
    const auto [y1, y2] = std::minmax(a.y, b.y);
    for (std::uint64_t row = index(y1 - bottom_); row <= index(y2 - bottom_); ++row)
      for (std::uint64_t column = index(x1 - left_); column <= index(x2 - left_); ++column) {
        std::uint64_t mixed = (row * 0x9E3779B97F4A7C15U + column) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ (mixed >> 32) ^ static_cast<std::uint64_t>(size)) * 0x94D049BB133111EBU;
        use((mixed >> 32) & (starts_.size() - 2));
      }
  }

  /// Every pair once: the shorter one of two looks for the other, the earlier one of two alike.
  void compareWith(std::uint32_t piece, int size, std::size_t bucket) {
    for (std::size_t entry = starts_[bucket]; entry < starts_[bucket + 1]; ++entry) {
      const std::uint32_t other = entries_[entry];
      if (pieces_[other].size != size || (size == pieces_[piece].size && other <= piece)) continue;
      compare(pieces_[std::min(piece, other)], pieces_[std::max(piece, other)]);
    }
  }

  bool areNeighbours(const Piece& p, const Piece& q) const {
    if (p.strand != q.strand) return false;
    const std::size_t count = strands_[p.strand].points.size();
    const std::size_t apart = p.number > q.number ? p.number - q.number : q.number - p.number;
    return apart <= 1 || apart == count - 1;
  }

  void compare(const Piece& p, const Piece& q) {
    if (areNeighbours(p, q)) return;
    const FlatPoint &a = begin(p), &b = end(p), &c = begin(q), &d = end(q);
    const double rx = b.x - a.x, ry = b.y - a.y, sx = d.x - c.x, sy = d.y - c.y;
    const double area = rx * sy - ry * sx;
    if (area == 0) return;
    const double t = ((c.x - a.x) * sy - (c.y - a.y) * sx) / area;
    const double u = ((c.x - a.x) * ry - (c.y - a.y) * rx) / area;
    constexpr double slack = 1e-6;  // lines often meet exactly at a sample of both
    if (t < -slack || t > 1 + slack || u < -slack || u > 1 + slack) return;
    addCrossing(p, t, q, u);
  }

  double heightAt(const Piece& p, double t) const {
    const auto& height = strands_[p.strand].height;
    return height[p.number] * (1 - t) + height[(p.number + 1) % height.size()] * t;
  }
  Place placeAt(const Piece& p, double t) const {
    const Strand& strand = strands_[p.strand];
    const double way = strand.way[p.number] + (strand.way[p.number + 1] - strand.way[p.number]) * t;
    return {p.strand, wrapped(way, strand.length())};
  }

  /// At equal heights the later strand is drawn last, hence on top.
  void addCrossing(const Piece& p, double t, const Piece& q, double u) {
    const double one = heightAt(p, t), two = heightAt(q, u);
    const Place first = placeAt(p, t), second = placeAt(q, u);
    const bool firstIsUnder =
        one < two || (one == two && (p.strand < q.strand || (p.strand == q.strand && p.number < q.number)));
    const double longer = std::max(lengthOf(p), lengthOf(q));
    crossings_.push_back(firstIsUnder ? Crossing{first, second, longer} : Crossing{second, first, longer});
  }

  bool areNear(const Place& a, const Place& b, double reach) const {
    if (a.strand != b.strand) return false;
    const double length = strands_[a.strand].length();
    const double apart = std::fabs(a.way - b.way);
    return std::min(apart, length - apart) < reach;
  }

  /// A meeting at the joint of two pieces is found more than once, and so is one at the border of two cells.
  void removeRepeats() {
    std::vector<Crossing> kept;
    std::size_t firstOfStrand = 0;
    const auto order = [](const Crossing& c) {
      return std::tuple(c.under.strand, c.under.way, c.over.strand, c.over.way);
    };
    std::sort(crossings_.begin(), crossings_.end(),
              [&](const Crossing& a, const Crossing& b) { return order(a) < order(b); });
    for (const Crossing& c : crossings_) {
      const auto isRepeat = [&](const Crossing& k) {
        const double reach = std::max(c.longer, k.longer) * 1e-3;
        return areNear(c.under, k.under, reach) && areNear(c.over, k.over, reach);
      };
      // Sorted as they are, repeats follow one another, but for the last and the first of a strand.
      const bool isKnown = !kept.empty() && (isRepeat(kept.back()) || isRepeat(kept[firstOfStrand]));
      if (kept.empty() || kept.back().under.strand != c.under.strand) firstOfStrand = kept.size();
      if (!isKnown) kept.push_back(c);
    }
    crossings_ = std::move(kept);
  }

  const std::vector<Strand>& strands_;
  std::vector<Piece> pieces_;
  std::set<int> sizes_;
  std::vector<std::uint32_t> starts_, entries_;
  std::vector<Crossing> crossings_;
  double left_ = 0, bottom_ = 0;
};

struct Gap {
  double from = 0, to = 0;  // along the strand; `from` may be below 0 and `to` above its length
};

/// How far from the crossing, backwards or forwards (`sense` -1 or 1), the under strand stays hidden.
double hiddenWay(const std::vector<Strand>& strands, const Crossing& c, double sense, double half,
                 double most) {
  const Strand &under = strands[c.under.strand], &over = strands[c.over.strand];
  const auto isHidden = [&](double way) {
    return distanceToPart(over, c.over.way, 6 * half, pointAt(under, c.under.way + sense * way)) < half;
  };
  double hidden = 0, seen = 0;
  const double step = half / 8;
  while (seen < most && isHidden(seen)) {
    hidden = seen;
    seen += step;
  }
  if (seen >= most) {
    if (isHidden(most)) return most;
    seen = most;
  }
  for (int i = 0; i < 24; ++i) {
    const double middle = (hidden + seen) / 2;
    (isHidden(middle) ? hidden : seen) = middle;
  }
  return seen;
}

/// The crossings of each strand, over or under, in order along it.
std::vector<std::vector<double>> crossingWays(const std::vector<Strand>& strands,
                                              const std::vector<Crossing>& crossings) {
  std::vector<std::vector<double>> ways(strands.size());
  for (const Crossing& c : crossings) {
    ways[c.under.strand].push_back(c.under.way);
    ways[c.over.strand].push_back(c.over.way);
  }
  for (auto& way : ways) std::sort(way.begin(), way.end());
  return ways;
}

/// How far it is from one crossing to the next one backwards and forwards.
Gap roomAround(const std::vector<double>& ways, double way, double length) {
  const auto at = std::lower_bound(ways.begin(), ways.end(), way);
  const double before = at == ways.begin() ? ways.back() - length : *(at - 1);
  const auto next = at + 1;
  const double after = next == ways.end() ? ways.front() + length : *next;
  return {way - before, after - way};
}

std::vector<std::vector<Gap>> findGaps(const std::vector<Strand>& strands, double bandWidth) {
  const std::vector<Crossing> crossings = CrossingFinder(strands).find();
  const auto ways = crossingWays(strands, crossings);
  std::vector<std::vector<Gap>> gaps(strands.size());
  for (const Crossing& c : crossings) {
    const Gap room = roomAround(ways[c.under.strand], c.under.way, strands[c.under.strand].length());
    const double back = hiddenWay(strands, c, -1, bandWidth / 2, room.from * kMostOfWay);
    const double on = hiddenWay(strands, c, 1, bandWidth / 2, room.to * kMostOfWay);
    gaps[c.under.strand].push_back({c.under.way - back, c.under.way + on});
  }
  for (auto& list : gaps)
    std::sort(list.begin(), list.end(), [](const Gap& a, const Gap& b) { return a.from < b.from; });
  return gaps;
}

/// The curve from one place to a later one, which may lie past its end.
FlatLine stretch(const Strand& strand, double from, double to) {
  FlatLine line{strand.slot, false, {pointAt(strand, from)}};
  const double length = strand.length();
  double lap = std::floor(from / length) * length;
  for (std::size_t i = pieceAt(strand, wrapped(from, length)) + 1;; ++i) {
    if (i >= strand.points.size()) {
      i = 0;
      lap += length;
    }
    if (strand.way[i] + lap >= to) break;
    line.points.push_back(strand.points[i]);
  }
  line.points.push_back(pointAt(strand, to));
  return line;
}

/// A chain of Bezier segments as straight lines.
std::vector<FlatPoint> flattened(const std::vector<PointF>& chain, const GridView& view) {
  constexpr double kStray = 0.01;  // pixels of the view
  const double unit = 1 / acrossScale(view);
  std::vector<FlatPoint> points;
  for (const PathVertex& p : flatPath(chain, {unit, view.pixelX(0), view.pixelY(0)}, kStray * unit, false))
    points.push_back({p.x, p.y});
  return points;
}

/// The lines of a wrapped knot between its seams, `broken` where other bands lie over them, unless it is a
/// tangle.
std::vector<FlatLine> periodOfCurves(const KnotCurve& curve, double bandWidth, bool broken) {
  const GridView view(static_cast<float>(kProportion), 5000);
  const Seam seam = seamOf(curve, view);
  OutlineOptions options;
  if (broken) options.band = options.outer = bandWidth * acrossScale(view);
  options.centres = true;
  options.uncut = !broken;
  const BandOutlines outlines = bandOutlines(curve, view, options);
  if (!outlines.complete) return periodOfCurves(curve, bandWidth, false);
  std::vector<FlatLine> lines;
  const auto add = [&](int slot, const std::vector<PointF>& chain) {
    if (chain.size() < 4) return;
    for (const auto& part : chainsAtSeam(seam, chain))
      lines.push_back({slot, isClosed(part), flattened(part, view)});
  };
  for (const StrandOutline& strand : outlines.strands) {
    if (!broken) add(strand.slot, strand.centre);
    for (const BandStretch& stretch : strand.stretches)
      if (broken) add(strand.slot, stretch.centre);
  }
  return lines;
}

}  // namespace

std::vector<FlatLine> wholeCurves(const KnotCurve& curve) {
  if (curve.wrap) return periodOfCurves(curve, 0, false);
  std::vector<FlatLine> lines;
  for (Strand& strand : makeStrands(curve)) lines.push_back({strand.slot, true, std::move(strand.points)});
  return lines;
}

std::vector<FlatLine> visibleCurves(const KnotCurve& curve, double bandWidth) {
  if (!(bandWidth > 0)) return wholeCurves(curve);
  if (curve.wrap) return periodOfCurves(curve, bandWidth, true);
  std::vector<Strand> strands = makeStrands(curve);
  std::erase_if(strands, [](const Strand& strand) { return !(strand.length() > 0); });
  const auto gaps = findGaps(strands, bandWidth);
  std::vector<FlatLine> lines;
  for (std::size_t s = 0; s < strands.size(); ++s) {
    if (gaps[s].empty()) lines.push_back({strands[s].slot, true, strands[s].points});
    for (std::size_t i = 0; i < gaps[s].size(); ++i) {
      const bool isLast = i + 1 == gaps[s].size();
      const double next = isLast ? gaps[s].front().from + strands[s].length() : gaps[s][i + 1].from;
      lines.push_back(stretch(strands[s], gaps[s][i].to, next));
    }
  }
  return lines;
}

}  // namespace lorivan
