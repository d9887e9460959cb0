#include "strands/band_outline.h"

#include <algorithm>
#include <cmath>

#include "strands/band_crossings.h"
#include "strands/offset_side.h"

namespace lorivan {
namespace {

constexpr double kFitShare = 0.008;  // of the band's width that a fitted curve may stray
constexpr double kMostOfWay = 0.98;  // to the strand's next crossing that a covering band may reach
constexpr int kMostSteps = 24;
constexpr int kLegSamples = 12;    // along a covering band, on which it may come back
constexpr double kMostDelay = 2;   // times the way out from under one leg, for the other one
constexpr double kSharp = 0.2;     // radians from one sample to the next but one
constexpr double kOverlap = 0.3;   // samples that a piece laid on top reaches further than its edge
constexpr double kCalmBend = 2.5;  // of the bend that folds a side
constexpr double kStraight = 0.1;  // radians that an edge may turn for a band's end to be one arc

/// Where one side of a band comes out from under another.
struct Exit {
  double place = 0;  // on the band's loop
  double foot = 0;   // the nearest place on the covering loop
  bool free = true;  // false: it did not come out before the strand's next crossing
};

/// Both sides of a band, at one end of a stretch; index 0 is the side below 0.
struct End {
  Exit side[2];
  int cover = 0;
  bool isCrowded() const { return !side[0].free || !side[1].free; }
};

class Outliner {
 public:
  Outliner(const std::vector<BandLoop>& loops, const OutlineOptions& options)
      : loops_(loops),
        options_(options),
        half_(std::max(options.band / 2 + options.grow, 0.0)),
        clear_(options.outer / 2 + options.gap - options.grow),
        tolerance_(options.band * kFitShare),
        crossings_(findBandCrossings(loops)),
        ways_(loops.size()) {
    for (const BandCrossing& c : crossings_) {
      ways_[static_cast<std::size_t>(c.under)].push_back(c.underAt);
      ways_[static_cast<std::size_t>(c.over)].push_back(c.overAt);
    }
    for (auto& ways : ways_) std::sort(ways.begin(), ways.end());
  }

  BandOutlines run() {
    BandOutlines outlines;
    outlines.strands.reserve(loops_.size());
    auto at = crossings_.begin();
    for (std::size_t l = 0; l < loops_.size(); ++l) {
      const auto begin = at;
      while (at != crossings_.end() && at->under == static_cast<int>(l)) ++at;
      outlines.strands.push_back(outline(static_cast<int>(l), {begin, at}));
    }
    for (std::size_t i = 0; i < crowded_.size(); ++i)
      crowded_[i].stretch = freeStretch(loop(crowdedOver_[i].first), crowdedOver_[i]);
    outlines.crowded = std::move(crowded_);
    return outlines;
  }

 private:
  const BandLoop& loop(int number) const { return loops_[static_cast<std::size_t>(number)]; }

  /// The number of the stretch that a place on a loop belongs to, if both its ends have room.
  int freeStretch(const BandLoop& band, std::pair<int, double> over) const {
    for (const Span& span : spans_)
      if (span.loop == over.first &&
          ((over.second >= span.from && over.second <= span.to) || (over.second + band.size() <= span.to)))
        return span.isCrowded ? -1 : span.stretch;
    return -1;
  }

  StrandOutline outline(int number, std::span<const BandCrossing> unders) {
    const BandLoop& band = loop(number);
    StrandOutline made;
    made.slot = band.slot();
    const int calm = calmPlace(band);
    if (options_.centres) {
      made.centre = centreLine(band, calm, calm + band.size());
      made.centre.back() = made.centre.front();
    }
    if (options_.rings) made.ring = ring(band, calm, options_.outer / 2 + options_.grow, &made.folded);
    if (unders.empty()) {
      made.stretches.push_back({ring(band, calm, half_), made.centre});
      return made;
    }
    std::vector<End> back, on;
    for (const BandCrossing& c : unders) {
      back.push_back(leave(c, -1));
      on.push_back(leave(c, 1));
      if (back.back().isCrowded() || on.back().isCrowded()) layOnTop(c);
    }
    for (std::size_t i = 0; i < unders.size(); ++i) {
      const bool isLast = i + 1 == unders.size();
      const End &begin = on[i], &end = back[isLast ? 0 : i + 1];
      const std::size_t before = made.stretches.size();
      stretch(band, begin, end, isLast ? band.size() : 0, made);
      const BandCrossing& next = unders[isLast ? 0 : i + 1];
      if (made.stretches.size() > before)
        spans_.push_back({number, static_cast<int>(before), unders[i].underAt,
                          next.underAt + (isLast ? band.size() : 0), begin.isCrowded() || end.isCrowded()});
    }
    return made;
  }

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
    std::vector<BandContour> contours;
    for (const int sense : {-1, 1}) {
      followSide(band, calm, calm + band.size(), sense * half, line_);
      if (folded != nullptr) *folded |= !line_.corners.empty();
      if (line_.points.size() < 4) continue;  // nothing left: a disc has no hole
      if (sense > 0) reverseSide(line_);
      BandContour contour{toPointF(line_.points.front().at)};
      appendSide(line_, tolerance_, contour);
      contour.back() = contour.front();
      contours.push_back(std::move(contour));
    }
    return contours;
  }

  /// How far it is from a place on a loop to its next crossing, on or back.
  double room(int number, double place, int direction) const {
    const auto& ways = ways_[static_cast<std::size_t>(number)];
    const double lap = loop(number).size();
    if (direction > 0) {
      const auto next = std::upper_bound(ways.begin(), ways.end(), place + 1e-9);
      return next == ways.end() ? ways.front() + lap - place : *next - place;
    }
    const auto next = std::lower_bound(ways.begin(), ways.end(), place - 1e-9);
    return next == ways.begin() ? place - (ways.back() - lap) : place - *(next - 1);
  }

  /// A crossing of a strand with itself, left towards itself: there it may come half the way.
  double mostOfRoom(const BandCrossing& c, int direction) const {
    const double way = room(c.under, c.underAt, direction);
    const double next = loop(c.under).wrapped(c.underAt + direction * way) - c.overAt;
    return (c.under == c.over && std::fabs(next) < 1e-6 ? 0.5 : kMostOfWay) * way;
  }

  End leave(const BandCrossing& c, int direction) const {
    const double most = mostOfRoom(c, direction);
    End end;
    end.cover = c.over;
    for (const int side : {0, 1}) end.side[side] = leaveAlong(c, side == 0 ? -half_ : half_, direction, most);
    if (end.isCrowded())
      for (Exit& exit : end.side) exit.place = c.underAt;
    return end;
  }

  /// The piece of the band above that hides the one beneath.
  void layOnTop(const BandCrossing& c) {
    const BandCrossing turned{c.over, c.under, c.overAt, c.underAt};
    double ends[2], covers[2];
    for (const int direction : {-1, 1}) {
      const double most = 0.5 * room(c.over, c.overAt, direction);
      double reach = 0;
      for (const double distance : {-clear_, clear_})
        reach = std::max(reach, std::fabs(leaveAlong(turned, distance, direction, most).place - c.overAt));
      if (c.under == c.over) reach = unfoldedReach(loop(c.over), c.overAt, direction, reach);
      reach = calmReach(loop(c.over), c.overAt, direction, reach, options_.outer / 2);
      ends[direction > 0] = c.overAt + direction * reach;
      // An edge that ends in a bend reaches across the band: the colour goes on for as long as it is wide.
      const double speed = lengthOf(loop(c.over).spot(ends[direction > 0]).along);
      const double further = std::min(reach + options_.outer / (2 * speed), most);
      covers[direction > 0] = c.overAt + direction * calmReach(loop(c.over), c.overAt, direction,
                                                               std::max(reach + kOverlap, further), half_);
    }
    const BandLoop& over = loop(c.over);
    crowdedOver_.emplace_back(c.over, c.overAt);
    crowded_.push_back({over.slot(), piece(over, ends[0], ends[1], options_.outer / 2 + options_.grow),
                        piece(over, covers[0], covers[1], half_), -1});
  }

  /// A piece of a band with straight ends.
  BandContour piece(const BandLoop& band, double from, double to, double half) {
    BandContour contour;
    for (const int sense : {-1, 1}) {
      followSide(band, from, to, sense * half, line_);
      if (sense > 0) reverseSide(line_);
      const Vec begin = line_.points.front().at;
      if (contour.empty())
        contour.push_back(toPointF(begin));
      else
        appendLine(begin, contour);
      appendSide(line_, tolerance_, contour);
    }
    appendLine({contour.front().x, contour.front().y}, contour);
    contour.back() = contour.front();
    return contour;
  }

  static void appendLine(Vec to, BandContour& contour) {
    const Vec from{contour.back().x, contour.back().y}, way = unit(to - from);
    appendArc({from, way}, {to, way}, contour);
  }

  /// How much of a reach lies before the first bend that is tighter than half the band.
  double unfoldedReach(const BandLoop& band, double place, int direction, double reach) const {
    constexpr double step = 0.25;
    for (double way = step; way < reach; way += step) {
      const BandLoop::Spot s = band.spot(place + direction * way);
      const double speed = lengthOf(s.along);
      if (std::fabs(cross(s.along, s.bend)) * half_ > speed * speed * speed) return way;
    }
    return reach;
  }

  /// A reach that does not end within a bend that is tighter than `half`: a piece that ends there is folded.
  static double calmReach(const BandLoop& band, double place, int direction, double reach, double half) {
    constexpr double step = 0.25;
    double calm = reach;
    while (calm > step) {
      const BandLoop::Spot s = band.spot(place + direction * calm);
      const double speed = lengthOf(s.along);
      if (std::fabs(cross(s.along, s.bend)) * half < kCalmBend * speed * speed * speed) return calm;
      calm -= step;
    }
    return reach;
  }

  /// How fast the line beside a spot goes, for each sample.
  static Vec speedBeside(const BandLoop::Spot& s, double distance) {
    const double square = dot(s.along, s.along);
    return s.along * (1 - distance * cross(s.along, s.bend) / (square * std::sqrt(square)));
  }

  /// Where a side comes out from under the covering band, whose other leg may lie near as well.
  Exit leaveAlong(const BandCrossing& c, double distance, int direction, double most) const {
    Exit exit{c.underAt, c.overAt, true};
    if (!leaveAtOnce(c, distance, direction, most, exit))
      exit = leaveStepwise(c, distance, direction, most, {c.underAt, c.overAt, true});
    const Exit first = exit;
    for (int leg = 0; leg < 2 && exit.free && findNearerLeg(c, distance, exit); ++leg)
      exit = leaveStepwise(c, distance, direction, most, exit);
    // A leg that runs on beside the side does not hide it all the way.
    const bool isFar = std::fabs(exit.place - c.underAt) > kMostDelay * std::fabs(first.place - c.underAt);
    return exit.free && isFar ? first : exit;
  }

  /// Looks along the covering band for a bend that brings it nearer to an exit than it may be.
  bool findNearerLeg(const BandCrossing& c, double distance, Exit& exit) const {
    const BandLoop& over = loop(c.over);
    const Vec at = offsetPoint(loop(c.under).spot(exit.place), distance);
    const double least = (clear_ - 4 * tolerance_) * (clear_ - 4 * tolerance_);
    double nearest = least;
    const int start = static_cast<int>(std::lround(exit.foot));
    for (const int sense : {-1, 1})
      for (int i = start, steps = 0; steps < kLegSamples; i += sense, ++steps) {
        const Vec away = over.point(i) - at;
        if (dot(away, away) > 16 * clear_ * clear_) break;
        if (dot(away, away) >= nearest || (c.under == c.over && isOwn(c, exit.place, i))) continue;
        nearest = dot(away, away);
        exit.foot = i;
      }
    return nearest < least;
  }

  /// Whether a place on a strand's upper pass is already the part that comes out.
  bool isOwn(const BandCrossing& c, double place, int sample) const {
    const double lap = loop(c.under).size(),
                 apart = std::fabs(loop(c.under).wrapped(place) - loop(c.under).wrapped(sample));
    return std::min(apart, lap - apart) < 2 * kLegSamples;
  }

  /// Meets the side with the covering band's edge by Newton's steps in both places. At plain crossings that
  /// takes two or three; false where they lead elsewhere.
  bool leaveAtOnce(const BandCrossing& c, double distance, int direction, double most, Exit& exit) const {
    const BandLoop &under = loop(c.under), &over = loop(c.over);
    double edge = 0, expected = 0;
    for (int step = 0; step < 6; ++step) {
      const BandLoop::Spot s = under.spot(exit.place), o = over.spot(exit.foot);
      if (step == 0) edge = cross(o.along, s.along) * direction > 0 ? clear_ : -clear_;
      const Vec gap = offsetPoint(o, edge) - offsetPoint(s, distance);
      // The first step knows only straight lines: a bend in the crossing itself would mislead it.
      const Vec a = step == 0 ? s.along : speedBeside(s, distance),
                b = step == 0 ? o.along : speedBeside(o, edge);
      const double area = cross(a, b);
      if (dot(a, s.along) <= 0 || dot(b, o.along) <= 0 || !(std::fabs(area) > 1e-9)) return false;
      const double travelled = (exit.place - c.underAt) * direction;
      if (dot(gap, gap) < tolerance_ * tolerance_ / 64)
        return travelled > 0.4 * expected && travelled < std::min(most, 2.5 * expected);
      exit.place += cross(gap, b) / area;
      exit.foot += cross(gap, a) / area;
      if (step == 0) expected = (exit.place - c.underAt) * direction;
      if (std::fabs(exit.place - c.underAt) > most || std::fabs(exit.foot - c.overAt) > most) return false;
    }
    return false;
  }

  /// Walks along one side, away from the crossing, until it is clear of the covering band: by Newton's steps
  /// where the side leads away from that band, else by as much as is missing at least.
  Exit leaveStepwise(const BandCrossing& c, double distance, int direction, double most, Exit exit) const {
    const BandLoop &under = loop(c.under), &over = loop(c.over);
    for (int step = 0; step < kMostSteps; ++step) {
      const BandLoop::Spot s = under.spot(exit.place);
      const Vec at = offsetPoint(s, distance);
      exit.foot = over.nearest(at, exit.foot);
      const Vec away = at - over.spot(exit.foot).at;
      const double far = lengthOf(away), missing = clear_ - far;
      if (std::fabs(missing) < tolerance_ / 20) return exit;
      const double speed = lengthOf(s.along);
      const double shrink = std::max(0.2, 1 - distance * cross(s.along, s.bend) / (speed * speed * speed));
      const double climb = far > 0 ? direction * dot(s.along, away) / far * shrink : 0;
      const double move = climb > 0.3 * speed * shrink ? missing / climb : missing / (speed * shrink);
      const double travelled = (exit.place - c.underAt) * direction + std::min(move, most / 3);
      if (travelled >= most) return {c.underAt + direction * most, exit.foot, false};
      exit.place = c.underAt + direction * std::max(travelled, 0.0);
    }
    return exit;
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

  /// The end of a band along the edge of the one that covers it, from one of its sides to the other.
  void cap(const BandLoop& band, const End& end, int fromSide, BandContour& contour) {
    const BandLoop& over = loop(end.cover);
    const Exit &a = end.side[fromSide], &b = end.side[1 - fromSide];
    LinePoint from = capPoint(band, a.place, a.foot, fromSide, over);
    LinePoint to = capPoint(band, b.place, b.foot, 1 - fromSide, over);
    const Vec way = to.at - from.at;
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
    followSide(over, std::min(a.foot, b.foot), std::max(a.foot, b.foot), side, edge_);
    if (sense < 0) reverseSide(edge_);
    dropBehind(from, edge_);
    reverseSide(edge_);
    dropBehind({to.at, to.along * -1}, edge_);
    reverseSide(edge_);
    appendSide(edge_, tolerance_, contour);
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

  void stretch(const BandLoop& band, End begin, End end, double lap, StrandOutline& made) {
    for (Exit& exit : end.side) exit.place += lap;
    int gone = 0;
    for (const int side : {0, 1}) {
      double &a = begin.side[side].place, &b = end.side[side].place;
      if (b - a > 1e-3) continue;
      a = b = (a + b) / 2;
      ++gone;
    }
    if (gone == 2) return;
    BandStretch stretch;
    BandContour contour;
    appendSideOf(band, begin, end, 0, contour);
    cap(band, end, 0, contour);
    appendSideOf(band, begin, end, 1, contour);
    cap(band, begin, 1, contour);
    contour.back() = contour.front();
    stretch.contours.push_back(std::move(contour));
    if (options_.centres)
      stretch.centre = centreLine(band, (begin.side[0].place + begin.side[1].place) / 2,
                                  (end.side[0].place + end.side[1].place) / 2);
    made.stretches.push_back(std::move(stretch));
  }

  void appendSideOf(const BandLoop& band, const End& begin, const End& end, int side, BandContour& contour) {
    const double from = begin.side[side].place, to = end.side[side].place;
    if (contour.empty())
      contour.push_back(toPointF(offsetPoint(band.spot(from), side == 0 ? -half_ : half_)));
    if (from >= to) return;
    followSide(band, from, to, side == 0 ? -half_ : half_, line_);
    if (side == 1) reverseSide(line_);
    appendSide(line_, tolerance_, contour);
  }

  const std::vector<BandLoop>& loops_;
  const OutlineOptions& options_;
  double half_, clear_, tolerance_;
  std::vector<BandCrossing> crossings_;
  std::vector<std::vector<double>> ways_;  // places of a loop's crossings, over and under
  std::vector<CrowdedCrossing> crowded_;
  std::vector<std::pair<int, double>> crowdedOver_;  // loop and place of each one's upper band
  /// From one crossing under another band to the next.
  struct Span {
    int loop, stretch;
    double from, to;
    bool isCrowded;
  };
  std::vector<Span> spans_;
  OffsetSide line_, edge_;
};

}  // namespace

BandOutlines bandOutlines(const KnotCurve& curve, const GridView& view, const OutlineOptions& options) {
  const std::vector<BandLoop> loops = bandLoops(curve, view);
  return Outliner(loops, options).run();
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
