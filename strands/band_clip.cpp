#include "strands/band_clip.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "strands/centre_line.h"
#include "strands/curve_fit.h"
#include "strands/offset_side.h"

namespace lorivan {
namespace {

constexpr double kProbe = 0.35;     // tolerances beside a border at which its two sides are looked at
constexpr double kJoin = 60;        // tolerances that ends of borders may lie apart
constexpr double kSpur = 12;        // tolerances that a border may go on too far
constexpr double kExact = 1e-6;     // pixels that copies of one point may lie apart
constexpr double kPastSide = 1.15;  // of half a band, to where the middle between two bands is followed
constexpr double kFarBeside = 3;    // times the width that is covered: no band lies further beside another
constexpr double kEdgeShare = 0.8;  // of the distance of two bands, that an edge between them takes at most
constexpr int kMiddleSteps = 24;    // towards a point of that middle; each one about halves what is left
constexpr double kSmooth = 0.94;    // cosine of the turn from which on there is a corner

/// A part of a line that may be a border. What it surrounds would lie on the side that quarter() points to.
struct Border {
  LinePoint from, to;
  int curve;
  int cover;  // whose edge it is; below 0: a side or an end of the band
};

class BandClipper {
 public:
  BandClipper(const BandPiece& band, double half, std::span<const BandCover> covers,
              std::span<const BandBeside> besides, double clear, double tolerance, double detail)
      : band_(band),
        half_(half),
        clear_(clear),
        tolerance_(tolerance),
        detail_(detail),
        points_(pointsAlong(band, std::max(half, clear), kProbe * detail)),
        line_(points_) {
    addSides(points_, half, -1);
    addCut(band.cutFrom);
    addCut(band.cutTo);
    for (const BandCover& cover : covers) {
      const std::vector<LinePoint> points = pointsOf(nearPart(cover.piece));
      covers_.push_back({CentreLine(points), isOwn(cover.piece), cover.limit, {}, 0});
      addSides(points, -clear, lastCover());
      if (cover.limit) addLimit(*cover.limit);
    }
    for (const BandBeside& beside : besides) {
      // A touch may be far longer than the part of the band that is clipped.
      const std::vector<LinePoint> points = pointsOf(nearPart(beside.own));
      covers_.push_back({CentreLine(pointsOf(nearPart(beside.other))),
                         isOwn(beside.other),
                         {},
                         CentreLine(points),
                         std::min(clear - half, kEdgeShare * beside.distance)});
      addMiddle(points);
    }
  }

  std::optional<std::vector<std::vector<PointF>>> run() {
    cutAll();
    keepParts();
    dropSpurs();
    auto contours = chain();
    if (closed_) return contours;
    // A border is missing: every part is judged by itself now.
    careful_ = true;
    kept_.clear();
    runs_.clear();
    keepParts();
    contours = chain();
    if (!closed_) return std::nullopt;
    return contours;
  }

 private:
  struct Cover {
    CentreLine line;
    bool isOwn;                      // a part of the band itself
    std::optional<LinePoint> limit;  // see BandCover
    std::optional<CentreLine> own;   // of a band beside: the part of this one that is there
    double edge;                     // and what lies between both
  };
  struct Run {
    std::size_t begin, end;  // of the parts that were kept
  };
  struct Cut {
    std::size_t line;
    double at;  // 0 to 1
  };

  std::vector<LinePoint> pointsOf(const BandPiece& piece) const {
    return pointsAlong(piece, std::max(half_, clear_), kProbe * detail_);
  }
  int lastCover() const { return static_cast<int>(covers_.size()) - 1; }

  /// What is cut off at an end in a bend: it is narrow, and so near.
  void addCut(const std::optional<LinePoint>& cut) {
    if (!cut) return;
    const Vec across = quarter(cut->along) * -1, way = across * (clear_ - half_);
    lines_.push_back({{cut->at - way, across}, {cut->at + way, across}, curves_++, -1});
    cutsOff_.push_back(*cut);
  }
  bool isInBand(Vec p) const {
    return line_.isInBand(p, half_) && std::ranges::none_of(cutsOff_, [&](const LinePoint& cut) {
             return dot(p - cut.at, cut.along) < 0 && lengthOf(p - cut.at) < clear_ - half_;
           });
  }

  void addLimit(const LinePoint& limit) {
    const Vec way = limit.along * (2 * (half_ + clear_));
    lines_.push_back({{limit.at - way, limit.along}, {limit.at + way, limit.along}, curves_++, lastCover()});
  }

  /// Where a band ends beside the one that was added last: as far from the middle between both centre lines
  /// as half an edge is wide.
  void addMiddle(const std::vector<LinePoint>& points) {
    const CentreLine& other = covers_.back().line;
    const auto far = [&](Vec p) { return other.distance(p, kFarBeside * clear_); };
    const auto nearest = std::ranges::min_element(points, {}, [&](const LinePoint& p) { return far(p.at); });
    const Vec aside = quarter(nearest->along) * half_;
    const double side = far(nearest->at + aside) < far(nearest->at - aside) ? 1 : -1;
    std::vector<LinePoint> border;
    double way = half_;
    const double step = std::sqrt(half_ * detail_);
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
      const LinePoint &a = points[i], &b = points[i + 1];
      const int parts = 1 + static_cast<int>(lengthOf(b.at - a.at) / step);
      for (int k = 0; k < parts; ++k) {
        const double t = static_cast<double>(k) / parts;
        addMiddlePoint({a.at + (b.at - a.at) * t, unit(a.along * (1 - t) + b.along * t)}, side, way, border);
      }
    }
    addMiddlePoint(points.back(), side, way, border);
    addCurve(border, side);
  }

  /// `way` is how far out it lies, of the point before at first.
  void addMiddlePoint(const LinePoint& p, double side, double& way, std::vector<LinePoint>& border) {
    const Vec out = quarter(p.along) * side;
    const Cover& beside = covers_.back();
    for (int step = 0; step < kMiddleSteps; ++step) {
      const double missing = beside.line.distance(p.at + out * way, kFarBeside * clear_) - way - beside.edge;
      if (std::fabs(missing) < detail_ / 50) break;
      const double next = std::clamp(way + missing / 2, -half_, kPastSide * half_);
      if (std::exchange(way, next) == next) break;
    }
    if (way < kPastSide * half_)
      border.push_back({p.at + out * way, p.along});
    else
      addCurve(border, side);
  }

  /// Adds the lines from point to point, in the other sense on the right side, and empties the list.
  void addCurve(std::vector<LinePoint>& points, double side) {
    const std::size_t n = points.size();
    if (side > 0) std::ranges::reverse(points);
    std::vector<Vec> along;
    for (std::size_t i = 0; n > 1 && i < n; ++i)
      along.push_back(unit(points[std::min(i + 1, n - 1)].at - points[i > 0 ? i - 1 : 0].at));
    for (std::size_t i = 0; i + 1 < n; ++i)
      lines_.push_back({{points[i].at, along[i]}, {points[i + 1].at, along[i + 1]}, curves_, lastCover()});
    if (n > 1) ++curves_;
    points.clear();
  }

  bool isOwn(const BandPiece& cover) const {
    const auto same = band_.loop.sameLine(cover.loop);
    if (!same) return false;
    const double middle = (cover.from + cover.to) / 2 + *same;
    if (!band_.loop.isRing()) return band_.from <= middle && middle < band_.to;
    return band_.from + band_.loop.wrapped(middle - band_.from) < band_.to;
  }

  /// Another piece without ends that are too far away to hide anything.
  BandPiece nearPart(BandPiece cover) const {
    const auto isFar = [&](double from, double to) {
      return !line_.isNear(cover.loop.spot(from).at, cover.loop.spot(to).at, 1.1 * (half_ + clear_));
    };
    while (cover.from + 2 < cover.to && isFar(cover.from, cover.from + 1)) ++cover.from;
    while (cover.from + 2 < cover.to && isFar(cover.to - 1, cover.to)) --cover.to;
    return cover;
  }

  /// Both sides and the straight ends of a piece, round it.
  void addSides(const std::vector<LinePoint>& points, double distance, int cover) {
    lines_.reserve(lines_.size() + 2 * points.size());
    const auto beside = [](const LinePoint& p, double away) {
      return LinePoint{p.at + quarter(p.along) * away, p.along};
    };
    const auto addEnd = [&](Vec from, Vec to) {
      if (lengthOf(points.back().at - points.front().at) < kExact) return;
      if (cover >= 0 && !line_.isNear(from, to, half_)) return;
      const Vec along = unit(to - from);
      lines_.push_back({{from, along}, {to, along}, curves_, cover});
    };
    const LinePoint &first = points.front(), &last = points.back();
    LinePoint before = beside(first, -distance);
    for (std::size_t i = 1; i < points.size(); ++i) {
      const LinePoint next = beside(points[i], -distance);
      addSide(before, next, cover);
      before = next;
    }
    ++curves_;
    addEnd(before.at, beside(last, distance).at);
    ++curves_;
    before = beside({last.at, last.along * -1}, -distance);
    for (std::size_t i = points.size() - 1; i-- > 0;) {
      const LinePoint next = beside({points[i].at, points[i].along * -1}, -distance);
      addSide(before, next, cover);
      before = next;
    }
    ++curves_;
    addEnd(before.at, beside(first, -distance).at);
    ++curves_;
  }

  void addSide(const LinePoint& from, const LinePoint& to, int cover) {
    if (cover < 0 || line_.isNear(from.at, to.at, half_)) lines_.push_back({from, to, curves_, cover});
  }

  /// A line's box, a little too large, turned so that there is most room across.
  struct Span {
    float begin, end, low, high;
    std::uint32_t line;
  };

  void takeSpans(std::vector<Span>& spans) const {
    LineBox all{points_.front().at, points_.front().at};
    for (const Border& line : lines_) all.add(line.from.at);
    const bool isUpright = all.high.y - all.low.y > all.high.x - all.low.x;
    const auto below = [](double v) { return static_cast<float>(v - std::fabs(v) * 1e-6); };
    spans.clear();
    for (std::size_t i = 0; i < lines_.size(); ++i) {
      const auto turned = [&](Vec p) { return isUpright ? Vec{p.y, p.x} : p; };
      const Vec a = turned(lines_[i].from.at), b = turned(lines_[i].to.at);
      spans.push_back({below(std::min(a.x, b.x)), -below(-std::max(a.x, b.x)), below(std::min(a.y, b.y)),
                       -below(-std::max(a.y, b.y)), static_cast<std::uint32_t>(i)});
    }
    std::ranges::sort(spans, {}, &Span::begin);
  }

  /// In the order in which lines begin only those that lie side by side are compared.
  void cutAll() {
    thread_local std::vector<Span> spans;
    thread_local std::vector<std::uint32_t> near;
    takeSpans(spans);
    near.resize(spans.size());
    for (std::size_t i = 0; i < spans.size(); ++i) {
      const Span one = spans[i];
      std::size_t count = 0;
      // Which of them are beside it cannot be foretold.
      for (std::size_t k = i + 1; k < spans.size() && spans[k].begin <= one.end; ++k) {
        near[count] = spans[k].line;
        count += std::size_t{spans[k].low <= one.high} & std::size_t{one.low <= spans[k].high};
      }
      for (std::size_t k = 0; k < count; ++k)
        cutBoth(std::min(one.line, near[k]), std::max(one.line, near[k]));
    }
    std::ranges::sort(
        cuts_, [](const Cut& a, const Cut& b) { return a.line != b.line ? a.line < b.line : a.at < b.at; });
  }

  void cutBoth(std::size_t i, std::size_t k) {
    const Border &one = lines_[i], &two = lines_[k];
    if (k == i + 1 && one.curve == two.curve) return;
    const Vec r = one.to.at - one.from.at, s = two.to.at - two.from.at, between = two.from.at - one.from.at;
    const double area = cross(r, s);
    if (area == 0) return;
    const double t = cross(between, s) / area, u = cross(between, r) / area;
    if (t < 0 || t > 1 || u < 0 || u > 1) return;
    cuts_.push_back({i, t});
    cuts_.push_back({k, u});
  }

  bool isCovered(Vec p, const Cover* except) const {
    return std::ranges::any_of(covers_, [&](const Cover& c) { return &c != except && hides(c, p); });
  }
  bool hides(const Cover& c, Vec p) const {
    if (c.own) return isBeyondMiddle(c, p);
    if (c.limit && dot(quarter(c.limit->along), p - c.limit->at) >= 0) return false;
    // Its own sides belong to it, whichever way they were rounded.
    return c.line.isInBand(p, clear_) && !(c.isOwn && c.line.isInBand(p, half_ + kProbe / 2 * detail_));
  }

  /// Of two bands that are one and the same each hides only what is on the other one's side of the middle.
  bool isBeyondMiddle(const Cover& c, Vec p) const {
    const double there = c.line.distance(p, clear_);
    if (there >= clear_) return false;
    const double here = (c.isOwn ? *c.own : line_).distance(p, clear_);
    return there < here + c.edge && !(c.isOwn && there < here);
  }

  /// Whether what surely lies beside a line is the border of what its own band is: not within a fold of it.
  /// What other bands are there is asked for on the line itself, so that nothing is lost at flat angles.
  bool isBorder(const Border& border, Vec middle, Vec aside) const {
    if (border.cover < 0)
      return !isCovered(middle, nullptr) && isInBand(middle + aside) &&
             (!isInBand(middle - aside) || isCovered(middle - aside, nullptr));
    const Cover& cover = covers_[border.cover];
    return isInBand(middle) && hides(cover, middle - aside) && !hides(cover, middle + aside) &&
           !isCovered(middle, &cover);
  }

  /// Between two cuts a line is a border or none.
  void keepParts() {
    std::vector<Border> run;
    auto cut = cuts_.begin();
    for (std::size_t i = 0; i < lines_.size(); ++i) {
      const Border& line = lines_[i];
      if (!run.empty() && !goesOn(run.back(), line)) keepRun(run);
      double from = 0;
      for (; cut != cuts_.end() && cut->line == i; ++cut) {
        if (cut->at > from)
          run.push_back({pointOf(line, from), pointOf(line, cut->at), line.curve, line.cover});
        keepRun(run);
        from = cut->at;
      }
      if (from < 1) run.push_back({pointOf(line, from), line.to, line.curve, line.cover});
    }
    keepRun(run);
  }

  /// Whether a line continues another one, in the same sense: at a fold's ends it does not.
  static bool goesOn(const Border& a, const Border& b) {
    return a.curve == b.curve && lengthOf(a.to.at - b.from.at) == 0 &&
           (dot(a.to.at - a.from.at, a.to.along) > 0) == (dot(b.to.at - b.from.at, b.to.along) > 0);
  }

  /// Where a few parts of a run agree they speak for all of it.
  void keepRun(std::vector<Border>& run) {
    const std::size_t n = run.size();
    if (n > 0) {
      const bool is = isBorder(run[n / 3]);
      const bool agree = !careful_ && (n < 2 || isBorder(run[n - 1 - n / 3]) == is);
      const std::size_t begin = kept_.size();
      for (const Border& part : run)
        if (agree ? is : isBorder(part)) kept_.push_back(part);
      if (kept_.size() > begin) runs_.push_back({begin, kept_.size()});
    }
    run.clear();
  }

  /// Where borders meet at a flat angle, the one that is left there may seem to go on for a little way. Such
  /// parts that lead nowhere, or come from nowhere, go, so that contours do not turn back at their ends.
  void dropSpurs() {
    const auto meet = [](Vec a, Vec b) { return dot(b - a, b - a) < kExact * kExact; };
    const auto first = [this](const Run& r) { return kept_[r.begin].from.at; };
    const auto last = [this](const Run& r) { return kept_[r.end - 1].to.at; };
    const auto isSpur = [&](const Run& r) {
      if (lengthOf(last(r) - first(r)) > kSpur * tolerance_) return false;
      bool comes = false, goes = false, hasRival = false;
      for (const Run& o : runs_) {
        if (&o == &r) continue;
        comes |= meet(last(o), first(r));
        goes |= meet(first(o), last(r));
        hasRival |= meet(first(o), first(r)) || meet(last(o), last(r));
      }
      return hasRival && (!comes || !goes);
    };
    for (bool found = true; std::exchange(found, false);)
      if (const auto spur = std::ranges::find_if(runs_, isSpur); spur != runs_.end()) {
        runs_.erase(spur);
        found = true;
      }
    std::vector<Border> kept;
    for (const Run& r : runs_)
      for (std::size_t i = r.begin; i < r.end; ++i) kept.push_back(kept_[i]);
    kept_ = std::move(kept);
  }

  bool isBorder(const Border& part) const {
    const Vec way = part.to.at - part.from.at;
    return isBorder(part, part.from.at + way * 0.5, quarter(unit(way)) * (kProbe * detail_));
  }

  static LinePoint pointOf(const Border& border, double t) {
    const LinePoint &a = border.from, &b = border.to;
    return {a.at + (b.at - a.at) * t, unit(a.along * (1 - t) + b.along * t)};
  }

  std::vector<std::vector<PointF>> chain() {
    std::vector<std::vector<PointF>> contours;
    closed_ = true;
    const std::vector<std::size_t> next = followers();
    std::vector<bool> used(kept_.size(), false);
    for (std::size_t first = 0; first < kept_.size(); ++first) {
      if (used[first]) continue;
      std::vector<std::size_t> ring;
      for (std::size_t at = first; at < kept_.size() && !used[at]; at = next[at]) {
        used[at] = true;
        ring.push_back(at);
      }
      if (!isWorthIt(ring)) continue;
      closed_ &= lengthOf(kept_[ring.front()].from.at - kept_[ring.back()].to.at) <
                 std::max(half_, kJoin * tolerance_);
      contours.push_back(fit(std::move(ring)));
    }
    return contours;
  }

  /// For every border the one that goes on where it ends, the nearest ones first: in narrow corners a little
  /// is missing between them. A number past the end means none.
  std::vector<std::size_t> followers() const {
    struct Join {
      double square;  // of the distance
      std::size_t from, to;
    };
    std::vector<std::size_t> next(kept_.size(), kept_.size());
    std::vector<bool> reached(kept_.size(), false);
    for (std::size_t i = 0; i + 1 < kept_.size(); ++i)
      if (const Vec way = kept_[i + 1].from.at - kept_[i].to.at; way.x == 0 && way.y == 0) {
        next[i] = i + 1;
        reached[i + 1] = true;
      }
    std::vector<Join> joins;
    const double most = kJoin * tolerance_ * kJoin * tolerance_;
    for (std::size_t i = 0; i < kept_.size(); ++i) {
      if (next[i] < kept_.size()) continue;
      for (std::size_t k = 0; k < kept_.size(); ++k) {
        if (reached[k] || k == i) continue;
        const Vec way = kept_[k].from.at - kept_[i].to.at;
        if (const double square = dot(way, way); square < most) joins.push_back({square, i, k});
      }
    }
    std::ranges::sort(joins, {}, &Join::square);
    for (const Join& join : joins) {
      if (next[join.from] < kept_.size() || reached[join.to]) continue;
      next[join.from] = join.to;
      reached[join.to] = true;
    }
    return next;
  }

  bool isWorthIt(const std::vector<std::size_t>& ring) const {
    double area = 0;
    const Vec origin = kept_[ring.front()].from.at;
    for (const std::size_t i : ring) area += cross(kept_[i].from.at - origin, kept_[i].to.at - origin) / 2;
    return std::fabs(area) > half_ * tolerance_ && ring.size() > 2;
  }

  std::vector<PointF> fit(std::vector<std::size_t> ring) const {
    const auto isSmooth = [&](const Border& a, const Border& b) {
      return a.curve == b.curve && lengthOf(a.to.at - b.from.at) == 0 &&
             dot(a.to.at - a.from.at, b.to.at - b.from.at) >
                 kSmooth * lengthOf(a.to.at - a.from.at) * lengthOf(b.to.at - b.from.at);
    };
    // Begins at a corner.
    for (std::size_t i = 0; i < ring.size(); ++i)
      if (!isSmooth(kept_[ring[(i + ring.size() - 1) % ring.size()]], kept_[ring[i]])) {
        std::rotate(ring.begin(), ring.begin() + static_cast<std::ptrdiff_t>(i), ring.end());
        break;
      }
    std::vector<PointF> contour{toPointF(kept_[ring.front()].from.at)};
    std::vector<LinePoint> run;
    Vec end = kept_[ring.front()].from.at;
    for (std::size_t i = 0; i < ring.size(); ++i) {
      const Border& line = kept_[ring[i]];
      if (run.empty()) {
        join(end, line.from.at, contour);
        run.push_back(line.from);
      }
      run.push_back(line.to);
      end = line.to.at;
      if (i + 1 < ring.size() && isSmooth(line, kept_[ring[i + 1]])) continue;
      fitCurve(run, detail_, contour);
      run.clear();
    }
    join(end, kept_[ring.front()].from.at, contour);
    contour.back() = contour.front();
    return contour;
  }

  static void join(Vec from, Vec to, std::vector<PointF>& contour) {
    if (lengthOf(to - from) < 1e-6) return;
    const Vec along = unit(to - from);
    appendArc({from, along}, {to, along}, contour);
  }

  const BandPiece& band_;
  double half_, clear_, tolerance_, detail_;
  std::vector<LinePoint> points_;  // along the band
  CentreLine line_;
  std::vector<LinePoint> cutsOff_;  // at ends in bends: what lies behind them
  std::vector<Cover> covers_;
  int curves_ = 0;
  std::vector<Cut> cuts_;
  std::vector<Run> runs_;
  std::vector<Border> lines_, kept_;
  bool closed_ = true;    // whether all contours led back to where they began
  bool careful_ = false;  // whether every part of a run is judged by itself
};

/// Pieces of one loop that overlap become one: an edge must not lie within its own copy.
std::vector<BandCover> joined(std::span<const BandCover> covers) {
  std::vector<BandCover> out;
  for (BandCover cover : covers) {
    BandPiece& piece = cover.piece;
    const double lap = piece.loop.size();
    for (std::size_t i = 0; i < out.size();) {
      const BandPiece& o = out[i].piece;
      const auto same = o.loop.sameLine(piece.loop);
      const double shift = piece.loop.isRing()
                               ? std::round((o.from + o.to - piece.from - piece.to) / 2 / lap) * lap
                               : same.value_or(0);
      const bool meet = same && o.from <= piece.to + shift && piece.from + shift <= o.to;
      if (!meet || out[i].limit || cover.limit) {
        ++i;
        continue;
      }
      piece.from = std::min(o.from, piece.from + shift);
      piece.to = std::max(o.to, piece.to + shift);
      if (piece.loop.isRing()) piece.to = std::min(piece.to, piece.from + lap);
      piece.loop = o.loop;
      out.erase(out.begin() + static_cast<std::ptrdiff_t>(i));
    }
    out.push_back(cover);
  }
  return out;
}

}  // namespace

std::optional<std::vector<std::vector<PointF>>> clipBand(const BandPiece& band, double half,
                                                         std::span<const BandCover> covers,
                                                         std::span<const BandBeside> besides, double clear,
                                                         double tolerance, double detail) {
  return BandClipper(band, half, joined(covers), besides, clear, tolerance, detail).run();
}

}  // namespace lorivan
