#include "strands/band_clip.h"

#include <algorithm>
#include <numeric>

#include "strands/curve_fit.h"
#include "strands/offset_side.h"

namespace lorivan {
namespace {

constexpr double kTurn = 0.08;    // radians that a line may turn between two of its points
constexpr int kMostHalvings = 6;  // of a piece between two samples
constexpr double kProbe = 0.35;   // tolerances beside a border at which its two sides are looked at
constexpr double kJoin = 60;      // tolerances that ends of borders may lie apart
constexpr double kSmooth = 0.94;  // cosine of the turn from which on there is a corner

struct Chord {
  Vec a, b;
};

double squareToChord(Vec p, const Chord& chord) {
  const Vec way = chord.b - chord.a, off = p - chord.a;
  const double square = dot(way, way);
  const double t = square > 0 ? std::clamp(dot(off, way) / square, 0.0, 1.0) : 0;
  const Vec away = off - way * t;
  return dot(away, away);
}

/// Places along a piece, near enough to one another for chords to stand for the curve.
class PlaceList {
 public:
  PlaceList(const BandPiece& piece, double tolerance) : loop_(*piece.loop), most_(2 * tolerance) {
    places_.push_back(piece.from);
    while (places_.back() < piece.to) {
      const double from = places_.back(), to = std::min(std::floor(from + 1 + 1e-6), piece.to);
      add(from, loop_.spot(from), to, loop_.spot(to), kMostHalvings);
    }
  }
  std::vector<double> take() { return std::move(places_); }

 private:
  void add(double from, const BandLoop::Spot& a, double to, const BandLoop::Spot& b, int depth) {
    const double sine = std::fabs(cross(a.along, b.along)), cosine = dot(a.along, b.along);
    const bool bends = cosine <= 0 || sine > kTurn * cosine || lengthOf(b.at - a.at) * sine > most_ * cosine;
    if (depth > 0 && bends) {
      const double middle = (from + to) / 2;
      const BandLoop::Spot m = loop_.spot(middle);
      add(from, a, middle, m, depth - 1);
      add(middle, m, to, b, depth - 1);
      return;
    }
    places_.push_back(to);
  }

  const BandLoop& loop_;
  double most_;  // times the turn, eight times as far as a chord may stray
  std::vector<double> places_;
};

/// A centre line as chords, for asking how near a point is.
class CentreLine {
 public:
  CentreLine(const BandPiece& piece, double tolerance) {
    const std::vector<double> places = PlaceList(piece, kProbe * tolerance).take();
    Vec before = piece.loop->spot(piece.from).at;
    begin_ = {before, piece.loop->spot(piece.from).along};
    for (std::size_t i = 1; i < places.size(); ++i) {
      const Vec at = piece.loop->spot(places[i]).at;
      add({before, at});
      before = at;
    }
    end_ = {before, piece.loop->spot(piece.to).along};
  }

  /// Whether a line may touch the band: for sure not, where this is false.
  bool isNear(Vec a, Vec b, double half) const {
    Box line{a, a};
    line.add(b);
    return all_.isWithin(line, half) &&
           std::ranges::any_of(boxes_, [&](const Box& box) { return box.isWithin(line, half); });
  }

  /// Whether a point is within the band around the line, `half` to each side, with straight ends.
  bool isInBand(Vec p, double half) const {
    double least = half * half;
    std::size_t nearest = chords_.size();
    if (all_.squareTo(p) >= least) return false;
    for (std::size_t b = 0; b < boxes_.size(); ++b) {
      if (boxes_[b].squareTo(p) >= least) continue;
      const std::size_t end = std::min((b + 1) * kBlock, chords_.size());
      for (std::size_t i = b * kBlock; i < end; ++i)
        if (const double square = squareToChord(p, chords_[i]); square < least) {
          least = square;
          nearest = i;
        }
    }
    if (nearest == chords_.size()) return false;
    if (nearest == 0 && dot(p - begin_.at, begin_.along) < 0) return false;
    return nearest + 1 < chords_.size() || dot(p - end_.at, end_.along) <= 0;
  }

 private:
  static constexpr std::size_t kBlock = 8;
  struct Box {
    Vec low, high;
    void add(Vec p) {
      low = {std::min(low.x, p.x), std::min(low.y, p.y)};
      high = {std::max(high.x, p.x), std::max(high.y, p.y)};
    }
    bool isWithin(const Box& o, double far) const {
      return low.x - far <= o.high.x && o.low.x <= high.x + far && low.y - far <= o.high.y &&
             o.low.y <= high.y + far;
    }
    double squareTo(Vec p) const {
      const Vec away{std::max({low.x - p.x, p.x - high.x, 0.0}), std::max({low.y - p.y, p.y - high.y, 0.0})};
      return dot(away, away);
    }
  };

  void add(const Chord& chord) {
    if (chords_.empty()) all_ = {chord.a, chord.a};
    if (chords_.size() % kBlock == 0) boxes_.push_back({chord.a, chord.a});
    for (const Vec p : {chord.a, chord.b}) {
      boxes_.back().add(p);
      all_.add(p);
    }
    chords_.push_back(chord);
  }

  std::vector<Chord> chords_;
  std::vector<Box> boxes_;  // of blocks of chords
  Box all_;
  LinePoint begin_, end_;
};

/// A part of a line that may be a border. What it surrounds would lie on the side that quarter() points to.
struct Border {
  LinePoint from, to;
  int curve;
  int cover;  // whose edge it is; below 0: a side or an end of the band
  std::vector<double> cuts;
};

class BandClipper {
 public:
  BandClipper(const BandPiece& band, double half, std::span<const BandPiece> covers, double clear,
              double tolerance)
      : band_(band), half_(half), clear_(clear), tolerance_(tolerance) {
    addSide(band, -half, false);
    addEnd(*band.loop, band.to, -half);
    addSide(band, half, true);
    addEnd(*band.loop, band.from, half);
    for (const BandPiece& cover : covers) {
      covers_.push_back({CentreLine(cover, tolerance_), isOwn(cover)});
      const int number = static_cast<int>(covers_.size()) - 1;
      addSide(cover, clear, false, number);
      addSide(cover, -clear, true, number);
      addEnd(*cover.loop, cover.to, clear, number);
      addEnd(*cover.loop, cover.from, -clear, number);
    }
  }

  std::vector<std::vector<PointF>> run() {
    cutAll();
    for (const Border& border : lines_) keepParts(border);
    return chain();
  }

 private:
  struct Cover {
    CentreLine line;
    bool isOwn;  // a part of the band itself
  };

  bool isOwn(const BandPiece& cover) const {
    const double middle = (cover.from + cover.to) / 2;
    if (cover.loop != band_.loop) return false;
    return band_.from + band_.loop->wrapped(middle - band_.from) < band_.to;
  }

  void addSide(const BandPiece& piece, double distance, bool backwards, int cover = -1) {
    OffsetSide side;
    const std::vector<double> places = PlaceList(piece, kProbe * tolerance_).take();
    for (const double place : places) {
      const BandLoop::Spot spot = piece.loop->spot(place);
      side.points.push_back({offsetPoint(spot, distance), unit(spot.along)});
    }
    if (backwards) reverseSide(side);
    for (std::size_t i = 1; i < side.points.size(); ++i)
      if (cover < 0 || line_.isNear(side.points[i - 1].at, side.points[i].at, half_))
        lines_.push_back({side.points[i - 1], side.points[i], curves_, cover, {}});
    ++curves_;
  }

  /// The straight end of a piece, beginning on the side at `from`.
  void addEnd(const BandLoop& loop, double place, double from, int cover = -1) {
    const BandLoop::Spot spot = loop.spot(place);
    const Vec a = offsetPoint(spot, from), b = offsetPoint(spot, -from);
    lines_.push_back({{a, unit(b - a)}, {b, unit(b - a)}, curves_++, cover, {}});
  }

  void cutAll() {
    // In the order of their left ends, so that only lines that lie side by side are compared.
    const auto left = [this](std::size_t i) { return std::min(lines_[i].from.at.x, lines_[i].to.at.x); };
    const auto right = [this](std::size_t i) { return std::max(lines_[i].from.at.x, lines_[i].to.at.x); };
    std::vector<std::size_t> order(lines_.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::sort(order, {}, left);
    for (std::size_t i = 0; i < order.size(); ++i)
      for (std::size_t k = i + 1; k < order.size() && left(order[k]) <= right(order[i]); ++k)
        cutBoth(std::min(order[i], order[k]), std::max(order[i], order[k]));
  }

  void cutBoth(std::size_t i, std::size_t k) {
    Border &one = lines_[i], &two = lines_[k];
    if (k == i + 1 && one.curve == two.curve) return;
    const Vec r = one.to.at - one.from.at, s = two.to.at - two.from.at, between = two.from.at - one.from.at;
    const double area = cross(r, s);
    if (area == 0) return;
    const double t = cross(between, s) / area, u = cross(between, r) / area;
    if (t < 0 || t > 1 || u < 0 || u > 1) return;
    one.cuts.push_back(t);
    two.cuts.push_back(u);
  }

  bool isCovered(Vec p, const Cover* except) const {
    return std::ranges::any_of(covers_, [&](const Cover& c) { return &c != except && hides(c, p); });
  }
  bool hides(const Cover& c, Vec p) const {
    return c.line.isInBand(p, clear_) && !(c.isOwn && c.line.isInBand(p, half_));
  }

  /// Whether what surely lies beside a line is the border of what its own band is: not within a fold of it.
  /// What other bands are there is asked for on the line itself, so that nothing is lost at flat angles.
  bool isBorder(const Border& border, Vec middle, Vec aside) const {
    if (border.cover < 0)
      return line_.isInBand(middle + aside, half_) && !line_.isInBand(middle - aside, half_) &&
             !isCovered(middle, nullptr);
    const Cover& cover = covers_[static_cast<std::size_t>(border.cover)];
    return line_.isInBand(middle, half_) && hides(cover, middle - aside) && !hides(cover, middle + aside) &&
           !isCovered(middle, &cover);
  }

  void keepParts(const Border& border) {
    std::vector<double> cuts = border.cuts;
    std::ranges::sort(cuts);
    cuts.push_back(1);
    const Vec way = border.to.at - border.from.at, aside = quarter(unit(way)) * (kProbe * tolerance_);
    double from = 0;
    for (const double to : cuts) {
      if (to <= from) continue;
      if (isBorder(border, border.from.at + way * ((from + to) / 2), aside))
        kept_.push_back({pointOf(border, from), pointOf(border, to), border.curve, border.cover, {}});
      from = to;
    }
  }

  static LinePoint pointOf(const Border& border, double t) {
    const LinePoint &a = border.from, &b = border.to;
    return {a.at + (b.at - a.at) * t, unit(a.along * (1 - t) + b.along * t)};
  }

  std::vector<std::vector<PointF>> chain() const {
    std::vector<std::vector<PointF>> contours;
    const std::vector<std::size_t> next = followers();
    std::vector<bool> used(kept_.size(), false);
    for (std::size_t first = 0; first < kept_.size(); ++first) {
      if (used[first]) continue;
      std::vector<std::size_t> ring;
      for (std::size_t at = first; at < kept_.size() && !used[at]; at = next[at]) {
        used[at] = true;
        ring.push_back(at);
      }
      if (isWorthIt(ring)) contours.push_back(fit(std::move(ring)));
    }
    return contours;
  }

  /// For every border the one that goes on where it ends, the nearest ones first: in narrow corners a little
  /// is missing between them. A number past the end means none.
  std::vector<std::size_t> followers() const {
    struct Join {
      double away;
      std::size_t from, to;
    };
    std::vector<std::size_t> next(kept_.size(), kept_.size());
    std::vector<bool> reached(kept_.size(), false);
    for (std::size_t i = 0; i + 1 < kept_.size(); ++i)
      if (lengthOf(kept_[i + 1].from.at - kept_[i].to.at) == 0) {
        next[i] = i + 1;
        reached[i + 1] = true;
      }
    std::vector<Join> joins;
    for (std::size_t i = 0; i < kept_.size(); ++i)
      for (std::size_t k = 0; next[i] == kept_.size() && k < kept_.size(); ++k)
        if (const double away = lengthOf(kept_[k].from.at - kept_[i].to.at);
            !reached[k] && k != i && away < kJoin * tolerance_)
          joins.push_back({away, i, k});
    std::ranges::sort(joins, {}, &Join::away);
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
    const auto goesOn = [&](const Border& a, const Border& b) {
      return a.curve == b.curve && lengthOf(a.to.at - b.from.at) == 0 &&
             dot(a.to.at - a.from.at, b.to.at - b.from.at) >
                 kSmooth * lengthOf(a.to.at - a.from.at) * lengthOf(b.to.at - b.from.at);
    };
    // Begins at a corner.
    for (std::size_t i = 0; i < ring.size(); ++i)
      if (!goesOn(kept_[ring[(i + ring.size() - 1) % ring.size()]], kept_[ring[i]])) {
        std::ranges::rotate(ring, ring.begin() + static_cast<std::ptrdiff_t>(i));
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
      if (i + 1 < ring.size() && goesOn(line, kept_[ring[i + 1]])) continue;
      fitCurve(run, tolerance_, contour);
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
  double half_, clear_, tolerance_;
  CentreLine line_{band_, tolerance_};
  std::vector<Cover> covers_;
  int curves_ = 0;
  std::vector<Border> lines_, kept_;
};

/// Pieces of one loop that overlap become one: an edge must not lie within its own copy.
std::vector<BandPiece> joined(std::span<const BandPiece> pieces) {
  std::vector<BandPiece> out;
  for (BandPiece piece : pieces) {
    const double lap = piece.loop->size();
    for (std::size_t i = 0; i < out.size();) {
      const double shift = std::round((out[i].from + out[i].to - piece.from - piece.to) / 2 / lap) * lap;
      const bool meet =
          out[i].loop == piece.loop && out[i].from <= piece.to + shift && piece.from + shift <= out[i].to;
      if (!meet) {
        ++i;
        continue;
      }
      piece.from = std::min(out[i].from, piece.from + shift);
      piece.to = std::min(std::max(out[i].to, piece.to + shift), piece.from + lap);
      out.erase(out.begin() + static_cast<std::ptrdiff_t>(i));
    }
    out.push_back(piece);
  }
  return out;
}

}  // namespace

std::vector<std::vector<PointF>> clipBand(const BandPiece& band, double half,
                                          std::span<const BandPiece> covers, double clear, double tolerance) {
  return BandClipper(band, half, joined(covers), clear, tolerance).run();
}

}  // namespace lorivan
