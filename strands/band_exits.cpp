#include "strands/band_exits.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "strands/change_line.h"

namespace lorivan {
namespace {

constexpr double kMostOfWay = 0.98;  // to the strand's next crossing that a covering band may reach
constexpr int kMostSteps = 24;
constexpr int kLegSamples = 12;         // along a covering band, on which it may come back
constexpr double kAhead = 0.95;         // cosine of the turn from which on a covering band may come back
constexpr double kFlatAhead = 0.985;    // the same at flat crossings
constexpr double kFarLeg = 6;           // times the width that is covered, where that is looked for
constexpr double kLegAhead = 0.6;       // that cosine where a side came out as it should
constexpr double kLegBend = 1.25;       // times that width: bends of that radius lead back
constexpr double kLegReach = 1.2;       // times the way to where a straight band comes out
constexpr double kMostDelay = 2;        // times the way out from under one leg, for the other one
constexpr double kBeyond = 3;           // samples that a covering band is followed beyond an exit
constexpr int kWayParts = 16;           // at which two bands are compared between two crossings
constexpr double kFlatCrossing = 0.6;   // sine of the angle below which a crossing is flat
constexpr double kBent = 0.972;         // cosine of a turn within a sample that may mislead Newton's steps
constexpr double kTurned = 0.8;         // cosine of one that does, where a side comes out
constexpr double kStraightEnd = 0.985;  // cosine of the turn along one that counts as straight
constexpr double kSlanted = 2.5;        // times the way out of one side, for the other one
constexpr double kRoundEnd = 0.4;       // cosine of the turn along a band's end that is no plain one
constexpr double kClearStep = 0.5;      // samples
constexpr int kTipSteps = 6;            // towards the point where the sides of a corner meet
constexpr double kLeastTurn = 0.1;      // sine of a corner's turn of which that is looked for
constexpr double kCoverReach = 8;      // times the width that is covered: where a covering band may come back
constexpr double kFarthestAbove = 40;  // the same where it lies above the other all the way
constexpr double kDive = 0.04;        // of the width that is covered, from where on a side has dived in again
constexpr double kLeaving = 0.35;     // sine of the angle at which it does not
constexpr double kDiveWay = 12;       // times that width, along a side on which that is looked for
constexpr double kFreed = 1.6;        // times it: a side as far away has come out for good
constexpr double kGapStep = 0.2;      // of the distance at which bands have room, along a covering band
constexpr double kAlmostApart = 0.9;  // of that distance
constexpr int kLongEye = 200;         // samples between two crossings

/// How much a loop bends from each of its samples to the next one: the square of the turn by the way. Endless
/// where it turns back.
std::vector<double> bendsOf(const BandLoop& band) {
  std::vector<double> bends(static_cast<std::size_t>(band.size()));
  Vec a = band.tangent(0), from = band.point(0);
  for (int i = 0; i < band.size(); ++i) {
    const Vec b = band.tangent(i + 1), to = band.point(i + 1), chord = to - from;
    const double turn = cross(a, b);
    const double bend = turn * turn / (dot(a, a) * dot(b, b) * dot(chord, chord));
    bends[static_cast<std::size_t>(i)] = dot(a, b) < 0 ? HUGE_VAL : bend;
    a = b;
    from = to;
  }
  return bends;
}

/// Whether two bands cross at such an angle that a small bend brings one back to the other.
bool isFlat(Vec a, Vec b) {
  const double area = cross(a, b);
  return area * area < kFlatCrossing * kFlatCrossing * dot(a, a) * dot(b, b);
}

/// Whether a line turns at once on one side of a place, of which the direction is known.
bool isBent(const BandLoop& loop, double place, Vec along) {
  const int low = static_cast<int>(std::floor(place + 0.5));
  const double least = kBent * lengthOf(along);
  return dot(loop.direction(low - 1), along) < least || dot(loop.direction(low + 1), along) < least;
}

/// Whether one side comes out much later than the other.
bool isSlanted(const BandCrossing& c, const BandEnd& end) {
  const double one = std::fabs(end.side[0].place - c.underAt), two = std::fabs(end.side[1].place - c.underAt);
  return std::max(one, two) > kSlanted * std::min(one, two);
}

/// The line beside a centre line: where it is, and how fast it goes for each sample.
struct Beside {
  Beside(const BandLoop::Spot& s, double distance) {
    const double inverse = 1 / std::sqrt(dot(s.along, s.along));
    at = s.at + quarter(s.along) * (distance * inverse);
    share = 1 - distance * cross(s.along, s.bend) * (inverse * inverse * inverse);
  }
  Vec at;
  double share;  // of the centre line's speed; below 0 in a fold
};

/// The point of a line, between two samples, that is nearest to another one: near that of the chords.
Vec nearestBetween(const BandLoop& loop, int from, int to, Vec p) {
  double place = from, least = HUGE_VAL;
  for (int i = from; i < to; ++i) {
    const Vec way = loop.point(i + 1) - loop.point(i), off = p - loop.point(i);
    const double t = std::clamp(dot(off, way) / std::max(dot(way, way), 1e-12), 0.0, 1.0);
    const Vec away = off - way * t;
    if (const double square = dot(away, away); square < least) {
      least = square;
      place = i + t;
    }
  }
  return loop.spot(std::clamp(loop.nearest(p, place), static_cast<double>(from), static_cast<double>(to))).at;
}

}  // namespace

BandExits::BandExits(std::span<const BandLoop> loops, std::vector<BandCrossing> crossings, const Seam& seam,
                     double half, double clear, double tolerance)
    : loops_(loops),
      half_(half),
      clear_(clear),
      tolerance_(tolerance),
      crossings_(std::move(crossings)),
      passings_(bandPassings(loops.size(), crossings_)),
      overs_(loops.size()) {
  if (seam)
    for (const BandCrossing& c : crossings_) moved_.push_back(loop(c.over).moved(c.turn * seam.width));
  for (std::size_t l = 0; l < loops.size(); ++l)
    for (const BandPassing& p : passings_[l])
      if (p.isOver) overs_[l].push_back(&crossings_[p.crossing]);
  for (const BandLoop& band : loops) bends_.push_back(bendsOf(band));
  meetings_.reserve(crossings_.size());
  for (const BandCrossing& c : crossings_) {
    Meeting& made = meetings_.emplace_back();
    made.under = loop(c.under).spot(c.underAt);
    made.over = overOf(c).spot(c.overAt);
    made.isFlat = isFlat(made.under.along, made.over.along);
    made.mayReturn = mayReturn(c, made.over, made.isFlat ? kFlatAhead : kAhead);
    made.hasLegs =
        made.mayReturn &&
        (made.isFlat || mayLeadBack(c, made.over, farthestExit(made.under.along, made.over.along)));
    made.mayDive = made.isFlat || made.mayReturn || isBent(loop(c.under), c.underAt, made.under.along) ||
                   isBent(loop(c.over), c.overAt, made.over.along);
    made.neck = neckBeside(c, made);
  }
}

/// Whether a covering band bends so far, or so tightly, near a crossing that another leg of it may hide what
/// comes out.
bool BandExits::mayReturn(const BandCrossing& c, const BandLoop::Spot& s, double ahead) const {
  const BandLoop& over = overOf(c);
  const double least = ahead * ahead * dot(s.along, s.along), far = kFarLeg * clear_;
  for (const int sense : {-1, 1}) {
    int i = static_cast<int>(std::floor(c.overAt));
    for (int steps = 0; steps < 2 * kLegSamples; i += sense, ++steps) {
      const Vec along = over.tangent(i), away = over.point(i) - s.at;
      const double same = dot(along, s.along);
      if (same < 0 || same * same < least * dot(along, along) || isTight(c.over, i, clear_)) return true;
      if (dot(away, away) > far * far) break;
    }
  }
  return false;
}

/// The same up to a distance from the crossing, for a side that came out as it should: as far from the
/// covering band as a circle is wide that touches that. A line that bends less than the circle has to turn
/// right round to come back to it.
bool BandExits::mayLeadBack(const BandCrossing& c, const BandLoop::Spot& s, double far) const {
  const BandLoop& over = overOf(c);
  const double least = kLegAhead * lengthOf(s.along);
  for (const int sense : {-1, 1}) {
    int i = static_cast<int>(std::floor(c.overAt));
    for (int steps = 0; steps < 2 * kLegSamples; i += sense, ++steps) {
      if (dot(over.direction(i), s.along) < least || over.bendsWithin(i, kLegBend * clear_)) return true;
      const Vec away = over.point(i) - s.at;
      if (dot(away, away) > far * far) break;
    }
  }
  return false;
}

/// How far from a crossing of straight lines a covering band would have to be to hide what comes out there.
double BandExits::farthestExit(Vec under, Vec over) const {
  const double length = std::sqrt(dot(under, under) * dot(over, over));
  const double sine = std::fabs(cross(under, over)) / length, cosine = std::fabs(dot(under, over)) / length;
  return std::min(kFarLeg * clear_, kLegReach * (clear_ + (clear_ + half_ * cosine) / sine));
}

/// How far it is from a place on a loop to its next crossing, on or back.
double BandExits::room(int number, double place, int direction) const {
  const auto& all = passings_[number];
  const double lap = loop(number).size();
  if (direction > 0) {
    const auto next = std::ranges::upper_bound(all, place + 1e-9, {}, &BandPassing::place);
    return next == all.end() ? all.front().place + lap - place : next->place - place;
  }
  const auto next = std::ranges::lower_bound(all, place - 1e-9, {}, &BandPassing::place);
  return next == all.begin() ? place - (all.back().place - lap) : place - (next - 1)->place;
}

/// A crossing of a strand with itself, left towards itself: there it may come half the way.
double BandExits::mostOfRoom(const BandCrossing& c, int direction) const {
  const double way = room(c.under, c.underAt, direction);
  const double next = loop(c.under).wrapped(c.underAt + direction * way) - c.overAt;
  return (c.under == c.over && std::fabs(next) < 1e-6 ? 0.5 : kMostOfWay) * way;
}

BandEnd BandExits::leave(const BandCrossing& c, int direction) const {
  const double most = mostOfRoom(c, direction);
  BandEnd end{.side = {}, .crossing = &c, .over = overOf(c), .limit = limitOf(c, direction), .isPlain = true};
  for (const int side : {0, 1})
    end.side[side] = leaveAlong(c, side == 0 ? -half_ : half_, direction, most, end.isPlain);
  const BandExit &a = end.side[0], &b = end.side[1];
  const BandLoop& over = loop(c.over);
  const double turn = dot(over.direction(static_cast<int>(std::lround(a.foot))),
                          over.direction(static_cast<int>(std::lround(b.foot))));
  end.isPlain = end.isPlain && !end.limit && turn > kRoundEnd &&
                isCalm(c.under, std::min({a.place, b.place, c.underAt}),
                       std::max({a.place, b.place, c.underAt}), 1.5, half_) &&
                isCalm(c.over, std::min(a.foot, b.foot), std::max(a.foot, b.foot), 1, clear_);
  if (const auto& neck = meetings_[numberOf(c)].neck) end.neck = neck->tip;
  end.isPlain = end.isPlain && !end.neck;
  if (end.isCrowded())
    for (BandExit& exit : end.side) exit.place = c.underAt;
  else if (end.isPlain && (meetings_[numberOf(c)].mayDive || (turn < kStraightEnd && isSlanted(c, end))))
    end.isPlain = staysClear(c, -half_, direction, a) && staysClear(c, half_, direction, b);
  return end;
}

/// Whether a line turns so far at a place that the sides of its band meet further away, at 1 / cos(turn / 2)
/// of half its width, than an outer side of a covering band that turns there as well.
bool BandExits::hasNeck(const BandLoop& loop, double place) const {
  const int low = static_cast<int>(std::floor(place + 0.5));
  const double least = 2 * (half_ + tolerance_) / (half_ + clear_);
  return (1 + dot(loop.direction(low - 2), loop.direction(low + 2))) / 2 < least * least;
}

/// The sharpest corner within two samples of a place: where both sides meet on its inside, and the way along
/// it.
LinePoint BandExits::innerTip(const BandLoop& loop, double place) const {
  const auto chord = [&](int i) { return unit(loop.point(i + 1) - loop.point(i)); };
  const int low = static_cast<int>(std::floor(place + 0.5));
  int corner = low;
  double least = 1;
  for (int i = low - 2; i <= low + 2; ++i)
    if (const double turn = dot(chord(i - 1), chord(i)); turn < least) {
      least = turn;
      corner = i;
    }
  const Vec in = chord(corner - 1), out = chord(corner), inside = unit(out - in);
  LinePoint tip{loop.point(corner) + inside * half_, unit(in + out)};
  for (int step = 0; step < kTipSteps; ++step) {
    const Vec a = tip.at - nearestBetween(loop, corner - kLegSamples, corner, tip.at);
    const Vec b = tip.at - nearestBetween(loop, corner, corner + kLegSamples, tip.at);
    const double farA = lengthOf(a), farB = lengthOf(b), area = cross(a, b);
    if (std::fabs(area) <= kLeastTurn * farA * farB) break;  // such sides lie on one another
    // Both distances become half the width.
    const double missA = (half_ - farA) * farA, missB = (half_ - farB) * farB;
    tip.at = tip.at + (quarter(a) * missB - quarter(b) * missA) * (1 / area);
  }
  return tip;
}

/// The part of the lower band that may be seen right beside a crossing, inside a corner that lies beneath the
/// outer side of another one.
std::optional<BandExits::Neck> BandExits::neckBeside(const BandCrossing& c, const Meeting& meeting) const {
  if (!meeting.mayDive || !hasNeck(loop(c.under), c.underAt) ||
      !isBent(overOf(c), c.overAt, meeting.over.along))
    return {};
  const BandLoop& over = overOf(c);
  const LinePoint tip = innerTip(loop(c.under), c.underAt);
  const int middle = static_cast<int>(std::floor(c.overAt));
  const double far =
      lengthOf(tip.at - nearestBetween(over, middle - kLegSamples, middle + kLegSamples + 1, tip.at));
  if (far - clear_ <= (half_ - clear_) / 2 - tolerance_) return {};
  return Neck{tip, far - clear_};
}

/// Whether a side surely came out of the covering band at an exit, and goes away from it.
bool BandExits::leavesWell(const BandCrossing& c, double distance, int direction,
                           const BandExit& exit) const {
  const BandLoop& under = loop(c.under);
  const BandLoop::Spot s = under.spot(exit.place), o = overOf(c).spot(exit.foot);
  const int next = static_cast<int>(std::floor(exit.place)) + (direction > 0 ? 1 : 0);
  if (dot(under.direction(next), s.along) < kTurned * lengthOf(s.along)) return false;
  const Vec away = offsetPoint(s, distance) - o.at;
  const double far = lengthOf(away);
  return std::fabs(far - clear_) < kDive * clear_ &&
         std::fabs(dot(away, o.along)) < kDive * clear_ * lengthOf(o.along) &&
         direction * dot(s.along, away) > kLeaving * lengthOf(s.along) * far;
}

/// Whether a side came out where it becomes clear of the covering band, and remains so on its way from it.
/// Where both lines run almost side by side, or a corner lies in the crossing itself, it may dive in again.
bool BandExits::staysClear(const BandCrossing& c, double distance, int direction,
                           const BandExit& exit) const {
  if (leavesWell(c, distance, direction, exit)) return true;
  const BandLoop &under = loop(c.under), &over = overOf(c);
  const double end = room(c.under, c.underAt, direction) - (exit.place - c.underAt) * direction;
  double foot = exit.foot, samples = 0;
  for (double way = 0; samples < end && way < kDiveWay * clear_;) {
    const BandLoop::Spot spot = under.spot(exit.place + direction * samples);
    const Vec at = offsetPoint(spot, distance);
    foot = over.nearest(at, foot);
    const double far = lengthOf(at - over.spot(foot).at);
    if (far < (1 - kDive) * clear_ || (samples == 0 && far > (1 + kDive) * clear_)) return false;
    if (far > kFreed * clear_) return true;
    const double speed = std::max(lengthOf(spot.along), 1e-9),
                 step = std::min(1.0, kGapStep * clear_ / speed);
    samples += step;
    way += step * speed;
  }
  return true;
}

/// Whether no bend between two places, and a few samples further, comes near to folding a line at a distance
/// beside it. Samples that were left out count as well.
bool BandExits::isCalm(int number, double from, double to, double further, double distance) const {
  const BandLoop& band = loop(number);
  from -= further / band.samplesAt(from);
  to += further / band.samplesAt(to);
  for (int i = static_cast<int>(std::floor(from)); i < to; ++i)
    if (isTight(number, i, distance)) return false;
  return true;
}

void BandExits::setRivals(std::size_t one, std::size_t two) {
  for (const auto& rivals : {std::pair(one, two), std::pair(two, one)})
    rivals_.insert(std::ranges::upper_bound(rivals_, rivals), rivals);
}

std::optional<LinePoint> BandExits::limitOf(const BandCrossing& c, int direction) const {
  for (auto rival = std::ranges::lower_bound(rivals_, std::pair(numberOf(c), std::size_t{0}));
       rival != rivals_.end() && rival->first == numberOf(c); ++rival) {
    const BandLoop& under = loop(c.under);
    const double way = room(c.under, c.underAt, direction);
    const double next = c.underAt + direction * way;
    const double apart = std::fabs(under.wrapped(next) - crossings_[rival->second].overAt);
    if (crossings_[rival->second].over != c.under || std::min(apart, under.size() - apart) > 1e-6) continue;
    // A line that has no other crossings comes there the long way round as well.
    if (const double rest = under.size() - way;
        way > rest && std::fabs(room(c.under, c.underAt, -direction) - rest) < 1e-6)
      continue;
    const BandLoop& over = overOf(c);
    const double back = over.wrapped(crossings_[rival->second].underAt - c.overAt);
    const double most = back < over.size() / 2.0 ? back : back - over.size();
    const LinePoint line = changeLine(under, c.underAt, next, over, c.overAt, c.overAt + most);
    // Half the width of the edge is on this side.
    return LinePoint{line.at - quarter(line.along) * ((half_ - clear_) / 2), line.along};
  }
  return std::nullopt;
}

BandCover BandExits::coverOf(const BandEnd& end, const BandPiece& band) const {
  const BandCrossing& c = *end.crossing;
  double back = 0, on = 0;
  for (const BandExit& exit : end.side) {
    back = std::max(back, c.overAt - exit.foot + kBeyond);
    on = std::max(on, exit.foot - c.overAt + kBeyond);
  }
  const bool isLimited = end.limit.has_value();
  const Leg legs{band.from - end.lap, band.to - end.lap};
  const BandPiece piece{end.over, c.overAt - coverReach(c, legs, -1, back, isLimited),
                        c.overAt + coverReach(c, legs, 1, on, isLimited)};
  return {piece, end.limit};
}

/// As far as the covering band may come back, but at most to where both come apart, or half the way to where
/// the lower band crosses over it (nearly there, where a line limits it anyway), and not beyond the lower
/// band's own beginning.
double BandExits::coverReach(const BandCrossing& c, const Leg& band, int direction, double least,
                             bool isLimited) const {
  const BandLoop &over = overOf(c), &under = loop(c.under);
  double most = over.size() / 2.0;
  const auto wayTo = [&](double place) { return over.wrapped((place - c.overAt) * direction); };
  const double gap =
      std::max(wayToGap(c, direction, {band.from, c.underAt}), wayToGap(c, direction, {c.underAt, band.to}));
  if (gap < HUGE_VAL) least = std::max(least, gap);
  const Vec apart = over.spot(c.overAt + direction * std::min(gap, most)).at;
  const auto& overs = overs_[c.under];
  const auto begin = std::ranges::lower_bound(overs, under.wrapped(band.from), {}, &BandCrossing::overAt);
  for (std::size_t i = 0, at = static_cast<std::size_t>(begin - overs.begin()); i < overs.size(); ++i, ++at) {
    const BandCrossing& o = *overs[at % overs.size()];
    if (under.wrapped(o.overAt - band.from) >= band.to - band.from) break;
    if (o.under != c.over || &o == &c) continue;
    const bool isClear = gap < wayTo(o.underAt) &&
                         lengthOf(under.spot(under.nearest(apart, o.overAt)).at - apart) > half_ + clear_;
    const double way = wayTo(o.underAt);
    if (isClear)
      most = std::min(most, gap);
    else if (isLimited)
      most = std::min(most, way * kMostOfWay);
    else
      most = std::min(most, widest(c, o, band, direction * way));
  }
  if (isSelf(c)) {
    const bool isOwn = over.wrapped(c.overAt - band.from) < band.to - band.from;
    const double end = isOwn == (direction > 0) ? band.to : band.from;
    most = std::min(most, wayTo(end) * (isOwn ? 0.5 : 1));
    // What the band itself does beyond that is a bend of its own.
    if (isOwn && gap < HUGE_VAL) most = std::min(most, least);
  }
  // Exactly as far as it may, so that small differences never move the end by a step.
  double reach = 0, rest = kCoverReach * clear_;
  for (; reach < most && rest > 0; ++reach) {
    const double way = lengthOf(over.spot(c.overAt + direction * (reach + 0.5)).along);
    if (way >= rest) reach += rest / way - 1;
    rest -= way;
  }
  return std::min(std::max(reach, least), most);
}

/// How far along the covering band from a crossing, up to another one at which the lower band lies over it,
/// both are furthest apart; about half the way where they remain near.
double BandExits::widest(const BandCrossing& c, const BandCrossing& o, const Leg& band, double way) const {
  const BandLoop &over = overOf(c), &under = loop(c.under);
  const double there = band.from + under.wrapped(o.overAt - band.from);
  const int from = static_cast<int>(std::floor(std::min(c.underAt, there)));
  const int to = static_cast<int>(std::ceil(std::max(c.underAt, there)));
  double best = 0.5, most = kAlmostApart * (half_ + clear_);
  for (int k = 1; k < kWayParts && to - from < kLongEye; ++k) {
    const double part = static_cast<double>(k) / kWayParts;
    const Vec at = over.spot(c.overAt + way * part).at;
    const double far = lengthOf(nearestBetween(under, from, to, at) - at);
    if (far <= most) continue;
    most = far;
    best = part;
  }
  return std::fabs(way) * best;
}

/// How far along the covering band from a crossing it comes apart from a part of the lower one, in samples:
/// what covers that beyond is another crossing's. Endless where they do not soon.
double BandExits::wayToGap(const BandCrossing& c, int direction, const Leg& leg) const {
  if (!(leg.from < leg.to)) return 0;
  const BandLoop &over = overOf(c), &under = loop(c.under);
  const double reach = half_ + clear_, sense = leg.from < c.underAt ? -1 : 1;
  double way = 0, samples = 0, foot = c.underAt, ahead = c.underAt;
  const auto nearest = [&](Vec at, double guess) {
    return std::clamp(under.nearest(at, guess), leg.from, leg.to);
  };
  for (BandLoop::Spot spot = over.spot(c.overAt);
       way < kFarthestAbove * clear_ && samples < over.size() / 2.0;) {
    const Vec before = spot.at;
    samples += std::min(1.0, kGapStep * reach / std::max(lengthOf(spot.along), 1e-9));
    spot = over.spot(c.overAt + direction * samples);
    const double gone = lengthOf(spot.at - before);
    ahead += sense * std::min(1.0, gone / std::max(lengthOf(under.spot(ahead).along), 1e-9));
    foot = nearest(spot.at, foot);
    double far = lengthOf(under.spot(foot).at - spot.at);
    // From a corner the leg may lead on beside the covering band, which its beginning does not tell.
    if (far > reach && meetings_[numberOf(c)].mayDive) {
      foot = nearest(spot.at, std::clamp(ahead, leg.from, leg.to));
      far = lengthOf(under.spot(foot).at - spot.at);
    }
    if (far > reach) return samples;
    way += gone;
  }
  return HUGE_VAL;
}

/// Where a side comes out from under the covering band, whose other leg may lie near as well.
BandExit BandExits::leaveAlong(const BandCrossing& c, double distance, int direction, double most,
                               bool& isPlain) const {
  BandExit exit{c.underAt, c.overAt, true};
  const Meeting& meeting = meetings_[numberOf(c)];
  const bool atOnce = leaveAtOnce(c, distance, direction, most, exit);
  if (!atOnce) exit = leaveStepwise(c, distance, direction, most, {c.underAt, c.overAt, true});
  if (!(atOnce ? meeting.hasLegs : meeting.mayReturn)) return exit;
  if (meeting.isFlat)
    if (const auto first = firstClear(c, distance, direction, (exit.place - c.underAt) * direction))
      exit = leaveStepwise(c, distance, direction, most, *first);
  const BandExit first = exit;
  for (int leg = 0; leg < 2 && exit.free && findNearerLeg(c, distance, exit); ++leg) {
    exit = leaveStepwise(c, distance, direction, most, exit);
    isPlain = false;
  }
  // A leg that runs on beside the side does not hide it all the way.
  const bool isFar = std::fabs(exit.place - c.underAt) > kMostDelay * std::fabs(first.place - c.underAt);
  return exit.free && isFar ? first : exit;
}

/// At a flat crossing a side may be clear of the covering band much sooner than where Newton's steps lead: a
/// place between two samples or near one where that is so, up to `most` samples away.
std::optional<BandExit> BandExits::firstClear(const BandCrossing& c, double distance, int direction,
                                              double most) const {
  const BandLoop &under = loop(c.under), &over = overOf(c);
  BandExit exit{c.underAt, c.overAt, true};
  const int steps = static_cast<int>(std::clamp(most / kClearStep, 0.0, 2.0 * under.size())) - 1;
  for (int step = 1; step < steps; ++step) {
    exit.place = c.underAt + direction * step * kClearStep;
    const Vec at = offsetPoint(under.spot(exit.place), distance);
    exit.foot = over.nearest(at, exit.foot);
    if (lengthOf(at - over.spot(exit.foot).at) > clear_ + tolerance_) return exit;
  }
  return std::nullopt;
}

/// Looks along the covering band for a bend that brings it nearer to an exit than it may be.
bool BandExits::findNearerLeg(const BandCrossing& c, double distance, BandExit& exit) const {
  const BandLoop& over = overOf(c);
  const Vec at = offsetPoint(loop(c.under).spot(exit.place), distance);
  const double least = (clear_ - 4 * tolerance_) * (clear_ - 4 * tolerance_);
  double nearest = least;
  const int start = static_cast<int>(std::lround(exit.foot));
  for (const int sense : {-1, 1}) {
    Vec from = over.point(start) - at;
    for (int i = start, steps = 0; steps < kLegSamples; i += sense, ++steps) {
      const Vec next = over.point(i + sense) - at, way = next - from;
      // Samples of straight lines may lie far apart.
      const double on = -dot(from, way);
      const double part = on > 0 ? std::min(on / dot(way, way), 1.0) : 0;
      const Vec chord = from + way * part;
      from = next;
      if (dot(chord, chord) > 16 * clear_ * clear_) break;
      if (dot(chord, chord) >= nearest || (isSelf(c) && isOwn(c, exit.place, i))) continue;
      const Vec away = over.spot(i + sense * part).at - at;
      const double square = dot(away, away);
      if (square >= nearest) continue;
      nearest = square;
      exit.foot = i + sense * part;
    }
  }
  return nearest < least;
}

/// Whether a place on a strand's upper pass is already the part that comes out.
bool BandExits::isOwn(const BandCrossing& c, double place, int sample) const {
  const double lap = loop(c.under).size(),
               apart = std::fabs(loop(c.under).wrapped(place) - loop(c.under).wrapped(sample));
  return std::min(apart, lap - apart) < 2 * kLegSamples;
}

/// Meets the side with the covering band's edge by Newton's steps in both places. At plain crossings that
/// takes two or three; false where they lead elsewhere.
bool BandExits::leaveAtOnce(const BandCrossing& c, double distance, int direction, double most,
                            BandExit& exit) const {
  const BandLoop &under = loop(c.under), &over = overOf(c);
  double edge = 0, expected = 0;
  // What a step leaves is the square of the gap by the diameter of a bend, which seldom is a quarter of the
  // band's.
  const double settled = std::max(tolerance_ / 2, half_ / 8) * tolerance_ / 2;
  for (int step = 0; step < 6; ++step) {
    const Meeting& meeting = meetings_[numberOf(c)];
    const BandLoop::Spot s = step == 0 ? meeting.under : under.spot(exit.place);
    const BandLoop::Spot o = step == 0 ? meeting.over : over.spot(exit.foot);
    if (step == 0) edge = cross(o.along, s.along) * direction > 0 ? clear_ : -clear_;
    const Beside side(s, distance), hem(o, edge);
    const Vec gap = hem.at - side.at;
    // The first step knows only straight lines: a bend in the crossing itself would mislead it.
    const Vec a = step == 0 ? s.along : s.along * side.share, b = step == 0 ? o.along : o.along * hem.share;
    const double area = cross(a, b);
    if ((step > 0 && (side.share <= 0 || hem.share <= 0)) || !(std::fabs(area) > 1e-9)) return false;
    const bool isLast = step > 0 && dot(gap, gap) < settled;
    exit.place += cross(gap, b) / area;
    exit.foot += cross(gap, a) / area;
    const double travelled = (exit.place - c.underAt) * direction;
    if (step == 0) expected = travelled;
    if (isLast) return travelled > 0.4 * expected && travelled < std::min(most, 2.5 * expected);
    if (std::fabs(travelled) > most || std::fabs(exit.foot - c.overAt) > most) return false;
  }
  return false;
}

/// Walks along one side, away from the crossing, until it is clear of the covering band: by Newton's steps
/// where the side leads away from that band, else by as much as is missing at least.
BandExit BandExits::leaveStepwise(const BandCrossing& c, double distance, int direction, double most,
                                  BandExit exit) const {
  const BandLoop &under = loop(c.under), &over = overOf(c);
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

}  // namespace lorivan
