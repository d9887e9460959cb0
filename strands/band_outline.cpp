#include "strands/band_outline.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "strands/band_exits.h"
#include "strands/band_touches.h"
#include "strands/offset_side.h"
#include "strands/untangle.h"

namespace lorivan {
namespace {

constexpr double kFitShare = 0.008;  // of the band's width that a fitted curve may stray
constexpr double kFinest = 0.025;    // pixels: what no picture shows, while it is a small part of the width
constexpr double kThin = 3;          // pixels: bands of pictures that are cut less finely
constexpr double kThinShare = 0.05;  // of their width, that they may stray
constexpr double kStrayShare = 0.1;  // of the tolerance that a centre line may lie off its samples
constexpr double kNarrow = 10;       // pixels: bands whose strands need fewer samples
constexpr double kPictureStray = 0.03;  // pixels that it may in a picture
constexpr double kSharp = 0.2;          // radians from one sample to the next but one
constexpr double kFlat = 0.8;           // tangent of the angle between a band's end and its sides
constexpr double kLeastHole = 4;        // squares of half the width; what a fold surrounds is smaller
constexpr int kUsualContour = 40;       // points
constexpr double kStraight = 0.1;       // radians that an edge may turn for a band's end to be one arc

double toleranceOf(const OutlineOptions& options) {
  return std::max(options.band * kFitShare, std::min(options.band * 2 * kFitShare, kFinest));
}

/// Tolerance of what is cut by distances.
double detailOf(const OutlineOptions& options) {
  const bool isThin = !options.fitted && options.band <= kThin;
  return isThin ? options.band * kThinShare : toleranceOf(options);
}

class Outliner {
 public:
  Outliner(const std::vector<BandLoop>& loops, const Seam& seam, const OutlineOptions& options)
      : loops_(loops),
        options_(options),
        half_(std::max(options.band / 2 + options.grow, 0.0)),
        clear_(options.outer / 2 + options.gap - options.grow),
        tolerance_(toleranceOf(options)),
        detail_(detailOf(options)),
        fit_(options.fitted ? tolerance_ : 0),
        seam_(seam),
        exits_(loops, seam, half_, clear_, tolerance_) {}

  BandOutlines run() {
    BandOutlines outlines;
    outlines.strands.reserve(loops_.size());
    const std::vector<BandCrossing>& crossings = exits_.crossings();
    if (options_.uncut) return uncut();
    outlines.complete = crossings.size() <= kMostCrossings;
    if (!outlines.complete) return outlines;
    leaveAll();
    outlines.complete = !isTooMuch();
    // Nobody needs the touches where too much is to be clipped without them: finding them takes longer.
    if (outlines.complete) findTouches();
    outlines.complete = outlines.complete && clipped_ <= options_.mostClipped;
    outlines.crowded = crowded_;
    std::size_t at = 0;
    for (std::size_t l = 0; l < loops_.size() && outlines.complete; ++l) {
      const std::size_t begin = at;
      while (at < crossings.size() && crossings[at].under == static_cast<int>(l)) ++at;
      outlines.strands.push_back(outline(static_cast<int>(l), begin, at));
    }
    outlines.lost = lost_;
    outlines.beside = static_cast<int>(touches_.touches.size());
    return outlines;
  }

 private:
  const BandLoop& loop(int number) const { return loops_[number]; }

  BandOutlines uncut() {
    BandOutlines outlines;
    beside_.resize(loops_.size());
    for (std::size_t l = 0; l < loops_.size(); ++l)
      outlines.strands.push_back(outline(static_cast<int>(l), 0, 0));
    return outlines;
  }

  bool isTooMuch() const {
    const bool isCrowded = static_cast<std::size_t>(crowded_) * 2 > exits_.crossings().size();
    return clipped_ > options_.mostClipped || (options_.unlessCrowded && isCrowded);
  }

  /// A strand that lies under others at the crossings from number `begin` on.
  StrandOutline outline(int number, std::size_t begin, std::size_t end) {
    const BandLoop& band = loop(number);
    StrandOutline made;
    made.slot = band.slot();
    const int calm = calmPlace(band);
    if (options_.centres) {
      made.centre = centreLine(band, calm, calm + band.size());
      if (band.isRing()) made.centre.back() = made.centre.front();
    }
    if (options_.spines) {
      band.appendAll(made.spine);
    }
    if (options_.rings) made.ring = ring(band, calm, options_.outer / 2 + options_.grow, &made.folded);
    if (begin == end) {
      const BandPiece whole{band, static_cast<double>(calm), static_cast<double>(calm + band.size())};
      if (!beside_[number].empty()) clipped(whole, {}, besidesOf(number, whole), made);
      if (made.stretches.empty()) made.stretches.push_back({ring(band, calm, half_), {}});
      made.stretches.front().centre = made.centre;
      return made;
    }
    made.stretches.reserve(end - begin);
    // From one crossing that cuts the band in two to the next one.
    std::size_t first = begin;
    while (first + 1 < end && !isSevered(first)) ++first;
    for (std::size_t i = first; i < first + (end - begin); i += ends_.size() / 2) {
      takeEnds(band, begin, end, i);
      stretch(number, made);
    }
    return made;
  }

  bool isSevered(std::size_t crossing) const {
    const BandEnd &back = back_[crossing], &on = on_[crossing];
    return back.isPlain || on.isPlain || back.limit || on.limit || back.isCrowded() || on.isCrowded() ||
           !exits_.goesOnBeside(exits_.crossings()[crossing]);
  }

  /// The ends that a stretch from crossing `from` on has: of its beginning, of both ways at every crossing at
  /// which it goes on, and of its end; each is taken once. Numbers past the strand's last crossing are in the
  /// next lap.
  void takeEnds(const BandLoop& band, std::size_t begin, std::size_t end, std::size_t from) {
    const std::size_t count = end - begin;
    const auto take = [&](std::vector<BandEnd>& ends, std::size_t i) {
      BandEnd& one = ends_.emplace_back(std::move(ends[i < end ? i : i - count]));
      if (i < end) return;
      for (BandExit& exit : one.side) exit.place += band.size();
      one.lap = band.size();
      one.over = one.over.moved(band.lap());
      if (one.limit) one.limit->at.x += band.lap();
      if (one.neck) one.neck->at.x += band.lap();
    };
    ends_.clear();
    take(on_, from);
    for (std::size_t i = from + 1;; ++i) {
      take(back_, i);
      if (i == from + count || isSevered(i < end ? i : i - count)) return;
      take(on_, i);
    }
  }

  /// Finds where bands have no room beside each other. Clasps change what covers the ends at their crossings.
  void findTouches() {
    touches_ = findBandTouches(loops_, exits_.crossings(), exits_.passings(), seam_, {half_ + clear_});
    for (const BandClasp& clasp : touches_.clasps) exits_.setRivals(clasp.one, clasp.two);
    beside_.resize(loops_.size());
    for (const BandTouch& touch : touches_.touches) {
      beside_[touch.one].push_back({touch.first, touch.besideFirst, touch.distance});
      beside_[touch.two].push_back({touch.second, touch.besideSecond, touch.distance});
    }
    for (const BandClasp& clasp : touches_.clasps)
      for (const std::size_t number : {clasp.one, clasp.two}) {
        count(number, -1);
        back_[number] = exits_.leave(exits_.crossings()[number], -1);
        on_[number] = exits_.leave(exits_.crossings()[number], 1);
        count(number, 1);
      }
  }

  /// Finds both ends at every crossing, of which those of one strand follow one another, and counts.
  void leaveAll() {
    const std::vector<BandCrossing>& crossings = exits_.crossings();
    back_.reserve(crossings.size());
    on_.reserve(crossings.size());
    for (const BandCrossing& c : crossings) {
      back_.push_back(exits_.leave(c, -1));
      on_.push_back(exits_.leave(c, 1));
      count(back_.size() - 1, 1);
      if (clipped_ > options_.mostClipped) return;
    }
  }
  void count(std::size_t crossing, int times) {
    const BandEnd &back = back_[crossing], &on = on_[crossing];
    crowded_ += times * (back.isCrowded() || on.isCrowded());
    clipped_ += times * (mustClip(back) || mustClip(on));
  }
  static bool mustClip(const BandEnd& end) { return !end.isPlain || end.isCrowded(); }

  /// A good sample to begin a ring at: the one that is furthest, in samples, from any sharp bend.
  static int calmPlace(const BandLoop& band) {
    const int size = band.size();
    int last = -1, first = -1, calm = 0, longest = 0;
    const auto endRun = [&](int end) {
      if (end - last <= longest) return;
      longest = end - last;
      calm = (last + longest / 2) % size;
    };
    for (int i = 0; i < size; ++i) {
      const Vec before = band.tangent(i - 1), after = band.tangent(i + 1);
      if (std::fabs(cross(before, after)) < kSharp * dot(before, after)) continue;
      if (last >= 0) endRun(i);
      if (first < 0) first = i;
      last = i;
    }
    if (first >= 0) endRun(first + size);
    return calm;
  }

  std::vector<PointF> centreLine(const BandLoop& band, double from, double to) {
    std::vector<PointF> chain;
    followSide(band, from, to, 0, line_);
    chain.push_back(toPointF(line_.points.front().at));
    appendSide(line_, tolerance_, chain);
    return chain;
  }

  std::vector<BandContour> ring(const BandLoop& band, int calm, double half, bool* folded = nullptr) {
    if (!band.isRing()) return wayRound(band, calm, half, folded);
    std::vector<BandContour> contours;
    for (const int sense : {-1, 1}) {
      followSide(band, calm, calm + band.size(), sense * half, line_);
      if (folded != nullptr) *folded |= !line_.corners.empty();
      if (line_.points.size() < 4) continue;  // nothing left: a disc has no hole
      if (sense > 0) reverseSide(line_);
      BandContour contour{toPointF(line_.points.front().at)};
      appendSide(line_, line_.corners.empty() ? fit_ : tolerance_, contour);
      contour.back() = contour.front();
      if (line_.corners.empty() || folded != nullptr)
        contours.push_back(std::move(contour));
      else
        std::ranges::move(simple(std::move(contour)), std::back_inserter(contours));
    }
    return contours;
  }

  /// One lap of a band that goes round a cylinder, cut off straight where it begins again.
  std::vector<BandContour> wayRound(const BandLoop& band, int calm, double half, bool* folded) {
    BandContour contour;
    bool hasFolds = false;
    for (const int side : {-1, 1}) {
      followSide(band, calm, calm + band.size(), side * half, line_);
      hasFolds |= !line_.corners.empty();
      if (side > 0) reverseSide(line_);
      appendStraightTo(line_.points.front().at, contour);
      appendSide(line_, tolerance_, contour);
    }
    appendStraightTo({contour.front().x, contour.front().y}, contour);
    contour.back() = contour.front();
    if (folded != nullptr) *folded |= hasFolds;
    if (!hasFolds || folded != nullptr) return {std::move(contour)};
    return simple(std::move(contour));
  }

  static void appendStraightTo(Vec to, BandContour& contour) {
    if (contour.empty()) return contour.push_back(toPointF(to));
    const Vec from{contour.back().x, contour.back().y}, way = unit(to - from);
    appendArc({from, way}, {to, way}, contour);
  }

  LinePoint capPoint(const BandLoop& band, double place, double foot, int side, const BandLoop& over) const {
    return {offsetPoint(band.spot(place), side == 0 ? -half_ : half_), unit(over.spot(foot).along)};
  }

  static bool isNearlyStraight(const BandLoop& loop, double from, double to, Vec along) {
    for (int i = static_cast<int>(std::floor(from)); i <= to + 1; ++i) {
      const Vec here = loop.tangent(i);
      if (std::fabs(cross(here, along)) > kStraight * std::fabs(dot(here, along))) return false;
    }
    return true;
  }

  static bool isFlat(Vec a, Vec b) { return std::fabs(cross(a, b)) < kFlat * std::fabs(dot(a, b)); }

  /// Whether a bend between two places comes near to folding a side.
  bool mayFold(const BandLoop& band, double from, double to) const {
    for (int i = static_cast<int>(std::floor(from)); i < to; ++i)
      if (band.bendsWithin(i, half_ / kTightBend)) return true;
    return false;
  }

  /// The end of a band along the edge of the one that covers it, from one of its sides to the other.
  void cap(const BandLoop& band, const BandEnd& end, int fromSide, double fit, BandContour& contour) {
    const BandLoop& over = end.over;
    const BandExit &a = end.side[fromSide], &b = end.side[1 - fromSide];
    LinePoint from = capPoint(band, a.place, a.foot, fromSide, over);
    LinePoint to = capPoint(band, b.place, b.foot, 1 - fromSide, over);
    const Vec way = to.at - from.at;
    for (const auto& [exit, edge] : {std::pair(&a, from.along), std::pair(&b, to.along)}) {
      const Vec along = band.spot(exit->place).along;
      mayCross_ |= isFlat(way, along) || isFlat(edge, along);
    }
    const double sense = b.foot >= a.foot ? 1 : -1;
    from.along = from.along * sense;
    to.along = to.along * sense;
    if (!a.free || !b.free || dot(from.along, way) <= 0 || dot(to.along, way) <= 0) {
      from.along = to.along = unit(way);
      appendArc(from, to, contour);
      return;
    }
    if (isNearlyStraight(over, std::min(a.foot, b.foot), std::max(a.foot, b.foot), from.along)) {
      appendArc(from, to, contour);
      return;
    }
    const double side = cross(over.spot(a.foot).along, from.at - over.spot(a.foot).at) > 0 ? clear_ : -clear_;
    followSide(over, std::min(a.foot, b.foot), std::max(a.foot, b.foot), side, edge_, fit <= 0);
    mayCross_ |= !edge_.corners.empty();
    if (sense < 0) reverseSide(edge_);
    dropBehind(from, edge_);
    reverseSide(edge_);
    dropBehind({to.at, to.along * -1}, edge_);
    reverseSide(edge_);
    const Vec middle = edge_.points[edge_.points.size() / 2].at - from.at;
    bow_ += std::max(0.0, cross(unit(way), middle));
    appendSide(edge_, fit, contour);
  }

  /// Lets a side begin at a point: what it has behind that, at the rest of a fold, is left out.
  static void dropBehind(const LinePoint& begin, OffsetSide& side) {
    std::size_t behind = 0;
    while (behind + 2 < side.points.size() && dot(side.points[behind + 1].at - begin.at, begin.along) <= 0)
      ++behind;
    side.points.erase(side.points.begin(), side.points.begin() + static_cast<std::ptrdiff_t>(behind));
    side.points.front() = begin;
    std::erase_if(side.corners, [&](std::size_t corner) { return corner <= behind; });
    for (std::size_t& corner : side.corners) corner -= behind;
  }

  void stretch(int number, StrandOutline& made) {
    const BandLoop& band = loop(number);
    BandEnd &begin = ends_.front(), &end = ends_.back();
    const BandPiece piece{band, begin.crossing->underAt + begin.lap, end.crossing->underAt + end.lap,
                          cutInCorner(begin, 1), cutInCorner(end, -1)};
    const std::vector<BandBeside> besides = besidesOf(number, piece);
    const std::size_t before = made.stretches.size();
    if (!besides.empty() || std::ranges::any_of(ends_, mustClip))
      cut(piece, besides, made);
    else
      plain(band, begin, end, made);
    lost_ += made.stretches.size() == before;
    if (options_.centres && made.stretches.size() > before) addCentres(band, before, made);
  }

  /// Stretches on both sides of a crossing keep apart by an edge where they come near to being seen beside
  /// it; but where the covering band lies between them only the one beyond that has something to lose there.
  std::optional<LinePoint> cutInCorner(const BandEnd& end, int direction) const {
    if (!end.neck) return {};
    const bool tip = isLeftOf(end, end.neck->at);
    if (tip == leadsLeft(end, direction) && tip != leadsLeft(end, -direction)) return {};
    const Vec onwards = end.neck->along * direction;
    return LinePoint{end.neck->at + onwards * ((clear_ - half_) / 2), onwards};
  }

  /// On which side of the band that covers an end a point lies, and the band itself two samples on.
  static bool isLeftOf(const BandEnd& end, Vec p) {
    const BandLoop::Spot over = end.over.spot(end.over.nearest(p, end.crossing->overAt));
    return cross(over.along, p - over.at) < 0;
  }
  bool leadsLeft(const BandEnd& end, int direction) const {
    const double place = end.crossing->underAt + end.lap + 2 * direction;
    return isLeftOf(end, loop(end.crossing->under).spot(place).at);
  }

  /// Each between two crossings; of one piece in several parts the later ones have no outline.
  void addCentres(const BandLoop& band, std::size_t at, StrandOutline& made) {
    const auto middle = [](const BandEnd& end) { return (end.side[0].place + end.side[1].place) / 2; };
    for (std::size_t i = 0; i + 1 < ends_.size(); i += 2) {
      if (i > 0) at = made.stretches.size(), made.stretches.emplace_back();
      made.stretches[at].centre = centreLine(band, middle(ends_[i]), middle(ends_[i + 1]));
    }
  }

  void plain(const BandLoop& band, BandEnd& begin, BandEnd& end, StrandOutline& made) {
    int gone = 0;
    for (const int side : {0, 1}) {
      double &a = begin.side[side].place, &b = end.side[side].place;
      if (b - a > 1e-3) continue;
      a = b = (a + b) / 2;
      ++gone;
    }
    if (gone == 2) return;
    BandContour contour = around(band, begin, end, fit_);
    const double from = std::min(begin.side[0].place, begin.side[1].place);
    const double to = std::max(end.side[0].place, end.side[1].place);
    const bool isFinal = fit_ == tolerance_;
    if ((!mayCross_ && !mayFold(band, from, to)) || (!isFinal && !crossesItself(contour))) {
      made.stretches.emplace_back().contours.push_back(std::move(contour));
      return;
    }
    if (!isFinal) contour = around(band, begin, end, tolerance_);
    addStretches(simple(std::move(contour)), made);
  }

  /// Along one side of a stretch, its end, back along the other side, and its beginning.
  BandContour around(const BandLoop& band, const BandEnd& begin, const BandEnd& end, double fit) {
    mayCross_ = false;
    bow_ = 0;
    BandContour contour;
    contour.reserve(kUsualContour);
    const auto wayFrom = [&contour](PointF p) {
      return std::hypot(contour.back().x - p.x, contour.back().y - p.y);
    };
    appendSideOf(band, begin, end, 0, fit, contour);
    const double first = wayFrom(contour.front());
    cap(band, end, 0, fit, contour);
    const PointF corner = contour.back();
    appendSideOf(band, begin, end, 1, fit, contour);
    const double second = wayFrom(corner);
    cap(band, begin, 1, fit, contour);
    contour.back() = contour.front();
    // Both ends may meet where they bow further into the stretch than they are apart.
    mayCross_ |= std::min(first, second) < bow_;
    return contour;
  }

  std::vector<BandContour> simple(BandContour contour) const {
    return untangled(std::move(contour), half_ * tolerance_, kLeastHole * half_ * half_);
  }

  /// One stretch for each outer contour; the holes belong to the first one.
  static void addStretches(std::vector<BandContour> contours, StrandOutline& made) {
    const std::size_t before = made.stretches.size();
    if (contours.size() == 1) {
      if (contourArea(contours.front()) > 0)
        made.stretches.emplace_back().contours.push_back(std::move(contours.front()));
      return;
    }
    const auto holes = std::stable_partition(contours.begin(), contours.end(),
                                             [](const BandContour& c) { return contourArea(c) > 0; });
    for (auto outer = contours.begin(); outer != holes; ++outer)
      made.stretches.emplace_back().contours.push_back(std::move(*outer));
    for (auto hole = holes; hole != contours.end() && holes != contours.begin(); ++hole)
      made.stretches[before].contours.push_back(std::move(*hole));
  }

  /// A band that covers another one as far as it lies beside it.
  static void endBefore(const BandPiece& beside, double crossing, BandPiece& cover) {
    const auto same = cover.loop.sameLine(beside.loop);
    if (!same) return;
    double from = beside.from + *same, to = beside.to + *same;
    if (cover.loop.isRing()) {
      const double size = cover.loop.size(), apart = (from + to) / 2 - crossing;
      const double move = std::remainder(apart, size) - apart;
      from += move;
      to += move;
    }
    if (from > crossing) cover.to = std::min(cover.to, from);
    if (to < crossing) cover.from = std::max(cover.from, to);
  }

  /// Where a whole ring lies under one band, and changes places with it on one side, that line holds for all
  /// of the cover.
  static void joinLimited(std::vector<BandCover>& covers) {
    BandCover &one = covers.front(), &two = covers.back();
    if (one.limit.has_value() == two.limit.has_value()) return;
    one.piece.from = two.piece.from = std::min(one.piece.from, two.piece.from);
    one.piece.to = two.piece.to = std::max(one.piece.to, two.piece.to);
    (one.limit ? two : one) = one.limit ? one : two;
    covers.pop_back();
  }

  void cut(const BandPiece& piece, const std::vector<BandBeside>& besides, StrandOutline& made) {
    BandEnd &begin = ends_.front(), &end = ends_.back();
    std::vector<BandCover> covers;
    for (const BandEnd& one : ends_) covers.push_back(exits_.coverOf(one, piece));
    if (begin.crossing == end.crossing && piece.loop.isRing() && covers.size() == 2) joinLimited(covers);
    for (const BandBeside& beside : besides)
      for (std::size_t i = 0; i < ends_.size() && i < covers.size(); ++i)
        endBefore(beside.other, ends_[i].crossing->overAt, covers[i].piece);
    if (clipped(piece, covers, besides, made)) return;
    // Without what lies beside it, where that could not be followed.
    if (!besides.empty() && std::ranges::any_of(ends_, mustClip) && clipped(piece, covers, {}, made)) return;
    plain(piece.loop, begin, end, made);
  }

  /// What runs beside a stretch with no room between.
  std::vector<BandBeside> besidesOf(int number, const BandPiece& piece) const {
    std::vector<BandBeside> besides;
    const double size = piece.loop.size();
    for (const BandBeside& beside : beside_[number])
      for (const double lap : {-size, 0.0, size}) {
        const double from = beside.own.from + lap, to = beside.own.to + lap;
        if (to <= piece.from || from >= piece.to) continue;
        // Of a whole ring it is there once, though it may reach across its ends.
        const double middle = (from + to) / 2;
        if (piece.to - piece.from >= size && (middle < piece.from || middle >= piece.to)) continue;
        const double move = piece.loop.spot(from).at.x - beside.own.loop.spot(beside.own.from).at.x;
        BandPiece other = beside.other;
        other.loop = other.loop.moved(move);
        besides.push_back({{piece.loop, from, to}, other, beside.distance});
      }
    return besides;
  }

  /// A stretch with ends that are not plain, or another band beside it. It is cut by distances, with as much
  /// of the bands as is near. False where that did not succeed.
  bool clipped(const BandPiece& piece, const std::vector<BandCover>& covers,
               const std::vector<BandBeside>& besides, StrandOutline& made) {
    auto chains = clipBand(piece, half_, covers, besides, clear_, tolerance_, detail_);
    if (!chains) return false;
    std::vector<BandContour> all;
    for (BandContour& chain : *chains) std::ranges::move(simple(std::move(chain)), std::back_inserter(all));
    addStretches(std::move(all), made);
    return true;
  }

  void appendSideOf(const BandLoop& band, const BandEnd& begin, const BandEnd& end, int side, double fit,
                    BandContour& contour) {
    const double from = begin.side[side].place, to = end.side[side].place;
    if (contour.empty())
      contour.push_back(toPointF(offsetPoint(band.spot(from), side == 0 ? -half_ : half_)));
    if (from >= to) return;
    followSide(band, from, to, side == 0 ? -half_ : half_, line_, fit <= 0);
    mayCross_ |= !line_.corners.empty();
    if (side == 1) reverseSide(line_);
    appendSide(line_, fit, contour);
  }

  const std::vector<BandLoop>& loops_;
  const OutlineOptions& options_;
  double half_, clear_, tolerance_, detail_;
  double fit_;  // tolerance of plain contours
  const Seam& seam_;
  BandExits exits_;
  BandTouches touches_;
  std::vector<std::vector<BandBeside>> beside_;  // of each loop
  std::vector<BandEnd> back_, on_;               // of each crossing
  std::vector<BandEnd> ends_;                    // of the stretch that is being made, see takeEnds()
  OffsetSide line_, edge_;
  int clipped_ = 0, crowded_ = 0, lost_ = 0;
  double bow_ = 0;         // how far its ends reach into it
  bool mayCross_ = false;  // whether the contour that is being made may cross itself
};

}  // namespace

BandOutlines bandOutlines(const KnotCurve& curve, const GridView& view, const OutlineOptions& options) {
  // Wider bands over samples as near to one another have no room: every sample tells where they are cut.
  const bool isNarrow = options.outer <= kNarrow;
  const double most = options.fitted ? kStrayShare * toleranceOf(options) : kPictureStray;
  const std::vector<BandLoop> loops = bandLoops(curve, view, isNarrow ? most : 0);
  return Outliner(loops, seamOf(curve, view), options).run();
}

double contourArea(const BandContour& contour) {
  // Green's theorem on one cubic, exactly.
  double area = 0;
  for (std::size_t i = 0; i + 3 < contour.size(); i += 3) {
    const auto p = [&](std::size_t k) {
      return Vec{contour[i + k].x, contour[i + k].y} - Vec{contour[0].x, contour[0].y};
    };
    area += (6 * cross(p(0), p(1)) + 3 * cross(p(0), p(2)) + cross(p(0), p(3)) + 3 * cross(p(1), p(2)) +
             3 * cross(p(1), p(3)) + 6 * cross(p(2), p(3))) /
            20;
  }
  return area;
}

}  // namespace lorivan
