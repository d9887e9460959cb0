#include "strands/band_touches.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include "strands/band_faces.h"
#include "strands/box_cells.h"

namespace lorivan {
namespace {

constexpr double kWayCells = 300;  // across and down
constexpr double kWayTurn = 0.64;  // cosine of the turn at which a way ends
constexpr int kMostNodes = 12;     // of a way
constexpr double kStep = 0.25;     // of the reach along a line that is followed
constexpr double kApart = 0.6;     // of the reach between two places that are compared
constexpr int kMostCompared = 24;  // places of a way
constexpr double kMet = 0.02;      // of the reach: lines that come as near cross
constexpr double kOnto = 1e-3;     // of the reach: which of two lines as near lies on which side is not known
constexpr double kMetPlaces = 4;   // places along a line from where it crosses to where that is so
constexpr int kEyeParts = 12;      // of lines that cross twice, between which their distance is measured
constexpr double kLevel = 1e-6;    // cosine of a right angle, rounded
constexpr int kRounds = 4;         // towards the nearest places of two lines
constexpr double kOneBend = 4;     // times the reach between two places of one bend, along the line
constexpr double kFarthest = 40;   // times the reach that lines are followed side by side
constexpr double kOblique = 0.1;   // of both: places that lie side by side
constexpr double kSure = 0.6;      // of the reach: lines that have come as near surely cross
constexpr double kPart = 8;        // places of a loop
constexpr double kBeyondTouch = 0.5;  // times the reach that a piece goes on beyond it

/// A part of a loop without a sharp turn between two joints, at most as long as from crossing to crossing.
struct Way {
  int loop;
  double from, to;
  int begin, end;  // joints: crossings, or below 0 places where a line was cut
  Vec a, b;        // its ends
  Vec along;       // from one to the other, a unit vector
  double least;    // cosine of the largest angle between the line and `along`
  double bulge;    // how far it lies beside a straight line
  int turn;        // periods that it was moved to the right
};

class TouchSearch {
 public:
  /// Of arcs that have no mark nothing is expected; no marks: everything of all of them.
  TouchSearch(std::span<const BandLoop> loops, std::span<const BandCrossing> crossings,
              std::span<const std::vector<BandPassing>> passings, std::span<const char> marks,
              const Seam& seam, const TouchLimits& limits)
      : loops_(loops),
        crossings_(crossings),
        passings_(passings),
        marks_(marks),
        seam_(seam),
        reach_(limits.reach),
        most_(std::min(limits.most, limits.reach)),
        least_(limits.least),
        isOneEnough_(limits.one),
        lengths_(loops.size()),
        followedAt_(loops.size()) {}

  BandTouches find() {
    cutLoops();
    copies_ = ways_.size();
    if (seam_) addCopies();
    if (ways_.empty()) return std::move(found_);
    for (const Way& way : ways_) cells_.boxes().push_back(boxOf(way));
    cells_.lay(kWayCells);
    cells_.eachMeeting([this](std::size_t one, std::size_t two) {
      if (one != two && !isEnough()) meet(one, two);
    });
    return std::move(found_);
  }

 private:
  /// From one crossing to the next one.
  struct Arc {
    int to = -1, loop = 0;
    double begin = 0, end = 0;
    bool isOver = false;   // at the crossing of the smaller number
    bool fromOne = false;  // whether it begins there
  };

  bool isEnough() const { return isOneEnough_ && !(found_.touches.empty() && found_.clasps.empty()); }

  void cutLoops() {
    arcs_.resize(crossings_.size());
    std::size_t number = 0;
    for (std::size_t l = 0; l < loops_.size(); ++l) {
      const BandPassing whole{0, --joints_, false};
      const std::span<const BandPassing> at =
          passings_.empty() || passings_[l].empty() ? std::span(&whole, 1) : std::span(passings_[l]);
      for (std::size_t i = 0; i < at.size(); ++i, ++number) {
        const char mark = marks_.empty() ? kMayTouch | kMayClasp : marks_[number];
        if (mark == 0) continue;
        const bool isLast = i + 1 == at.size();
        BandPassing end = at[isLast ? 0 : i + 1];
        if (isLast) end.place += loops_[l].size();
        if ((mark & kMayClasp) != 0) noteArc(static_cast<int>(l), at[i], end);
        if ((mark & kMayTouch) != 0) cutWay(static_cast<int>(l), at[i], end);
      }
    }
  }

  /// Two arcs between the same crossings, of which each lies over the other at one of them, are a clasp.
  void noteArc(int number, const BandPassing& from, const BandPassing& to) {
    if (from.crossing < 0 || from.crossing == to.crossing || from.isOver == to.isOver) return;
    const bool isFirst = from.crossing < to.crossing;
    const Arc arc{std::max(from.crossing, to.crossing), number, from.place, to.place,
                  (isFirst ? from : to).isOver,         isFirst};
    const int one = std::min(from.crossing, to.crossing);
    for (const Arc& o : arcs_[one])
      if (o.to == arc.to && o.isOver != arc.isOver && !areOneBend(arc, o))
        if (const double distance = between(arc, o); distance < most_)
          if (const double back = between(o, arc); back < most_)
            found_.clasps.push_back(
                {static_cast<std::size_t>(one), static_cast<std::size_t>(arc.to), std::max(distance, back)});
    for (Arc& o : arcs_[one])
      if (o.to < 0) {
        o = arc;
        break;
      }
  }
  /// Whether a line comes back to itself at once: neither of its legs can end for the other one.
  bool areOneBend(const Arc& a, const Arc& b) const {
    if (a.loop != b.loop) return false;
    const BandLoop& loop = loops_[a.loop];
    const double size = loop.size(), on = loop.wrapped(b.begin - a.end), back = loop.wrapped(a.begin - b.end);
    const double from = on < back ? a.end : b.end;
    const double most = kOneBend * reach_, last = std::min({on, back, size});
    double way = 0;
    for (int i = 0; i < last && way < most; ++i)
      way += lengthOf(loop.point(static_cast<int>(from) + i + 1) - loop.point(static_cast<int>(from) + i));
    return way < most;
  }
  double between(const Arc& a, const Arc& b) const {
    BandLoop other = loops_[b.loop];
    const bool sameSense = (a.fromOne == b.fromOne);
    double most = 0;
    // From the middle on, where it mostly is largest: of what is too far nobody asks for more.
    for (int step = 0; step < kEyeParts - 1 && most < most_; ++step) {
      const int k = kEyeParts / 2 + (step % 2 == 0 ? step / 2 : -(step + 1) / 2);
      const double t = static_cast<double>(k) / kEyeParts, u = sameSense ? t : 1 - t;
      const Vec at = loops_[a.loop].spot(a.begin + (a.end - a.begin) * t).at;
      const double guess = b.begin + (b.end - b.begin) * u;
      if (seam_ && step == 0)
        other = other.moved(std::round((at.x - other.spot(guess).at.x) / seam_.width) * seam_.width);
      most = std::max(most, lengthOf(other.spot(other.nearest(at, guess)).at - at));
    }
    return most;
  }

  /// Ends a way wherever the line has turned far from where it went at first.
  void cutWay(int number, BandPassing from, const BandPassing& to) {
    const BandLoop& loop = loops_[number];
    const int first = static_cast<int>(std::floor(from.place)) + 1;
    Vec start = loop.direction(first);
    for (int i = first, nodes = 0; i < to.place; ++i) {
      const Vec here = loop.direction(i);
      if (dot(here, start) > kWayTurn && ++nodes < kMostNodes) continue;
      if (i - from.place > 1e-3) {
        addWay(number, from, {static_cast<double>(i), --joints_, false});
        from = {static_cast<double>(i), joints_, false};
      }
      start = here;
      nodes = 0;
    }
    addWay(number, from, to);
  }

  void addWay(int number, const BandPassing& from, const BandPassing& to) {
    const BandLoop& loop = loops_[number];
    const Vec a = loop.spot(from.place).at, b = loop.spot(to.place).at;
    Way way{number, from.place, to.place, from.crossing, to.crossing, a, b, unit(b - a), 1, 0, 0};
    const int last = static_cast<int>(std::ceil(to.place));
    for (int i = static_cast<int>(std::floor(from.place)); i <= last; ++i) {
      way.least = std::min(way.least, dot(loop.direction(i), way.along));
      if (i > from.place && i < to.place)
        way.bulge = std::max(way.bulge, std::fabs(cross(loop.point(i) - way.a, way.along)));
    }
    ways_.push_back(way);
  }

  /// Round a cylinder: every way in the first period, and once more beside the seam.
  void addCopies() {
    for (std::size_t i = 0; i < copies_; ++i) {
      Way way = ways_[i];
      const double middle = (way.a.x + way.b.x) / 2;
      move(way, -static_cast<int>(std::floor((middle - seam_.left) / seam_.width)));
      ways_[i] = way;
      const double most = reach_ + std::fabs(way.b.x - way.a.x) + way.bulge;
      if (std::min(way.a.x, way.b.x) - seam_.left > 2 * most) continue;
      move(way, 1);
      ways_.push_back(way);
    }
  }
  void move(Way& way, int turns) const {
    way.turn += turns;
    way.a.x += turns * seam_.width;
    way.b.x += turns * seam_.width;
  }

  Box boxOf(const Way& way) const {
    const double more = way.bulge + most_ / 2;
    return {std::min(way.a.x, way.b.x) - more, std::min(way.a.y, way.b.y) - more,
            std::max(way.a.x, way.b.x) + more, std::max(way.a.y, way.b.y) + more};
  }

  /// Compares two ways whose boxes meet.
  void meet(std::size_t i, std::size_t k) {
    const Way &a = ways_[i], &b = ways_[k];
    if (i >= copies_ && k >= copies_) return;
    const double most = most_ + a.bulge + b.bulge;
    if (!areBeside(a, b, most) && !areBeside(b, a, most) && !spread(a, b)) compare(i, k);
  }

  /// Whether both ends of a way lie too far on one side of another one's line.
  static bool areBeside(const Way& a, const Way& b, double most) {
    const double from = cross(a.along, b.a - a.a), to = cross(a.along, b.b - a.a);
    return (from > most && to > most) || (from < -most && to < -most);
  }

  /// Whether two ways that begin at one joint lead apart from there on.
  static bool spread(const Way& a, const Way& b) {
    const bool fromBegin = a.begin == b.begin || a.begin == b.end,
               fromEnd = a.end == b.begin || a.end == b.end;
    if (fromBegin == fromEnd) return false;
    const Vec one = fromBegin ? a.along : a.along * -1;
    const Vec two = (fromBegin ? a.begin : a.end) == b.begin ? b.along : b.along * -1;
    const double turn = std::min(a.least, b.least);
    return turn > 0 && 2 * turn * turn - 1 > dot(one, two);
  }

  BandLoop placed(const Way& way) const {
    const BandLoop& loop = loops_[way.loop];
    return way.turn != 0 ? loop.moved(way.turn * seam_.width) : loop;
  }

  /// Two stretches that were followed side by side, `sense` below 0 where their places run against each
  /// other.
  struct Followed {
    BandPiece first, second;
    double sense;
  };
  struct Place {
    Vec at, along;
    double place;
  };
  void takePlaces(const Way& way, const BandLoop& loop, std::vector<Place>& places) const {
    const double length = lengthOf(way.b - way.a) + 2 * way.bulge;
    const int parts = std::clamp(static_cast<int>(length / (kApart * reach_)), 3, kMostCompared);
    places.clear();
    for (int i = 0; i <= parts; ++i) {
      const double place = way.from + (way.to - way.from) * i / parts;
      const BandLoop::Spot spot = loop.spot(place);
      places.push_back({spot.at, spot.along, place});
    }
  }

  /// Follows every pair of places that are nearer to each other than those beside them.
  void compare(std::size_t first, std::size_t second) {
    const Way &a = ways_[first], &b = ways_[second];
    const BandLoop one = placed(a), two = placed(b);
    std::vector<Place>&p = places_[0], &q = places_[1];
    // Pairs of one way follow one another.
    if (std::exchange(placesOf_, first) != first) takePlaces(a, one, p);
    takePlaces(b, two, q);
    const std::size_t rows = p.size(), columns = q.size();
    squares_.resize(rows * columns);
    double* next = squares_.data();
    for (const Place& place : p)
      for (const Place& other : q) *next++ = dot(other.at - place.at, other.at - place.at);
    const double most = most_ * most_ + 0.5 * reach_ * reach_;
    const double* square = squares_.data();
    for (std::size_t i = 0; i < rows; ++i)
      for (std::size_t k = 0; k < columns; ++k, ++square) {
        const double here = *square;
        if (here > most || (i > 0 && *(square - columns) < here) ||
            (i + 1 < rows && square[columns] < here) || (k > 0 && *(square - 1) < here) ||
            (k + 1 < columns && square[1] < here))
          continue;
        const Vec apart = p[i].at - q[k].at;
        if (leadsOn(p, i, apart) || leadsOn(q, k, apart * -1)) continue;
        if (meet(a.loop, p[i].place, apart, b.loop, q[k].place)) continue;
        follow(a.loop, one, p[i].place, b.loop, two, q[k].place);
      }
  }

  /// Whether a way's end comes nearer still on the next way.
  static bool leadsOn(const std::vector<Place>& places, std::size_t i, Vec apart) {
    const double climb = dot(apart, places[i].along);
    const double least = kLevel * lengthOf(apart) * lengthOf(places[i].along);
    return (i == 0 && climb > least) || (i + 1 == places.size() && climb < -least);
  }

  void follow(int numberA, const BandLoop& a, double s, int numberB, const BandLoop& b, double t) {
    for (int round = 0; round < kRounds; ++round) {
      t = b.nearest(a.spot(s).at, t);
      const Vec there = b.spot(t).at;
      s = a.nearest(there, s);
      if (meet(numberA, s, there - a.spot(s).at, numberB, t)) return;  // it never becomes more
    }
    const Vec here = a.spot(s).at, there = b.spot(t).at;
    const double least = lengthOf(there - here);
    if (least >= most_ || least < least_ || isMet(numberA, a, s, here, numberB, b, t, there)) return;
    if (wasFollowed(numberA, {a, s, s}, {b, t, t})) return;
    BandTouch touch{numberA, numberB, {a, s, s}, {b, t, t}, {b, t, t}, {a, s, s}, least};
    const double sameSense = dot(a.spot(s).along, b.spot(t).along) < 0 ? -1 : 1;
    for (const int sense : {-1, 1})
      for (const bool isFirst : {true, false}) {
        BandPiece one{a, s, s}, two{b, t, t};
        const bool leadsApart = isFirst ? walk(numberA, one, s, numberB, two, t, sense, touch.distance)
                                        : walk(numberB, two, t, numberA, one, s, sense, touch.distance);
        if (!leadsApart && isSure_) noteFollowed(numberA, one, numberB, two, sameSense);
        if (!leadsApart) return;
        extend(isFirst ? touch.first : touch.besideSecond, one.from, one.to);
        extend(isFirst ? touch.besideFirst : touch.second, two.from, two.to);
      }
    if (isKnown(touch)) return;
    noteFollowed(numberA, touch.first, numberB, touch.second, sameSense);
    found_.touches.push_back(std::move(touch));
  }

  static void extend(BandPiece& piece, double from, double to) {
    piece.from = std::min(piece.from, from);
    piece.to = std::max(piece.to, to);
  }

  /// Whether two places are where lines cross, or lie on one bend.
  bool isMet(int numberA, const BandLoop& a, double s, Vec here, int numberB, const BandLoop& b, double t,
             Vec there) {
    if (meet(numberA, s, there - here, numberB, t)) return true;
    const auto same = a.sameLine(b);
    if (!same) return false;
    const double apart = a.isRing() ? std::remainder(t - s, a.size()) : t + *same - s;
    const int begin = static_cast<int>(std::floor(std::min(s, s + apart)));
    const int end = static_cast<int>(std::ceil(std::max(s, s + apart)));
    return wayTo(numberA, end) - wayTo(numberA, begin) < kOneBend * reach_;
  }

  /// Whether two places as near to each other as lines that cross are beside a crossing of their loops.
  /// Others lie almost on one another.
  bool meet(int one, double s, Vec apart, int two, double t) const {
    const double far = lengthOf(apart);
    if (far >= kMet * reach_) return false;
    if (far < kOnto * reach_ || passings_.empty()) return true;
    const auto isNear = [](double lap, double a, double b) {
      const double way = std::fabs(a - b);
      return std::min(way, lap - way) < kMetPlaces;
    };
    const double lap = loops_[one].size(), lapToo = loops_[two].size();
    const double here = loops_[one].wrapped(s), there = loops_[two].wrapped(t);
    return std::ranges::any_of(passings_[one], [&](const BandPassing& p) {
      const BandCrossing& c = crossings_[p.crossing];
      if (!isNear(lap, p.place, here) || (p.isOver ? c.under : c.over) != two) return false;
      return isNear(lapToo, p.isOver ? c.underAt : c.overAt, there);
    });
  }

  /// How far it is along a loop's chords from its beginning to a sample, of any lap.
  double wayTo(int number, int sample) {
    const BandLoop& loop = loops_[number];
    std::vector<double>& ways = lengths_[number];
    if (ways.empty()) {
      ways.reserve(static_cast<std::size_t>(loop.size()) + 1);
      ways.push_back(0);
      for (int i = 0; i < loop.size(); ++i)
        ways.push_back(ways.back() + lengthOf(loop.point(i + 1) - loop.point(i)));
    }
    const std::size_t within = loop.wrap(sample);
    const int laps = (sample - static_cast<int>(within)) / loop.size();
    return laps * ways.back() + ways[within];
  }

  /// What was seen of two lines on the way along the first one.
  struct Seen {
    double s, low, high;  // the place on it, and those on the other one
    double least;         // distance
  };

  /// Two places side by side, of which the first one goes on.
  struct Pair {
    Pair(const BandLoop& one, double place, const BandLoop& two, double placeOnTwo)
        : a(one), b(two), s(place), t(placeOnTwo), here(one.spot(place)), there(two.spot(placeOnTwo)) {}
    bool isAbove() const { return cross(there.along, here.at - there.at) > 0; }
    double apart() const { return lengthOf(there.at - here.at); }
    /// By a way in pixels, or a whole place where that is less.
    void step(int sense, double way) {
      s += sense * std::min(1.0, way / std::max(lengthOf(here.along), 1e-9));
      here = a.spot(s);
      t = b.nearest(here.at, t);
      there = b.spot(t);
    }
    const BandLoop &a, &b;
    double s, t;
    BandLoop::Spot here, there;
  };

  /// Goes on along a line until it is far from the other one. Where they meet the touch ends in the widest
  /// part of the gap before that; false where there is none.
  bool walk(int number, BandPiece& one, double s, int other, BandPiece& two, double t, int sense,
            double& least) {
    Pair at(one.loop, s, two.loop, t);
    const bool first = at.isAbove();
    Seen seen{s, t, t, least}, beforeGap = seen;
    double way = 0, gap = 0, apart = at.apart();
    bool leadsApart = true;
    const double lap = at.a.isRing() ? at.a.size() : std::numeric_limits<double>::infinity();
    for (double far = 0;
         far < kBeyondTouch * reach_ && way < kFarthest * reach_ && std::fabs(at.s - s) < lap;) {
      const Vec from = at.here.at;
      at.step(sense, kStep * reach_);
      const double apartBefore = std::exchange(apart, at.apart());
      isSure_ = gap == 0 && std::max(apart, apartBefore) < kSure * reach_;
      if (at.isAbove() != first || isMet(number, at.a, at.s, at.here.at, other, at.b, at.t, at.there.at)) {
        leadsApart = gap > 0;
        if (leadsApart) seen = beforeGap;
        break;
      }
      const double gone = lengthOf(at.here.at - from);
      way += gone;
      seen = {at.s, std::min(seen.low, at.t), std::max(seen.high, at.t), std::min(seen.least, apart)};
      far = apart < reach_ ? 0 : far + gone;
      if (apart < std::max(reach_, gap)) continue;
      gap = apart;
      beforeGap = seen;
    }
    extend(one, seen.s, seen.s);
    extend(two, seen.low, seen.high);
    least = seen.least;
    return leadsApart;
  }

  /// From the middle of a piece of the same line to that of another one, in places.
  static std::optional<double> between(const BandPiece& p, const BandPiece& q) {
    const auto same = p.loop.sameLine(q.loop);
    if (!same) return std::nullopt;
    const double apart = (p.from + p.to) / 2 - (q.from + q.to) / 2 - *same;
    return p.loop.isRing() ? std::remainder(apart, p.loop.size()) : apart;
  }
  static bool meetAt(const BandPiece& p, const BandPiece& q) {
    const auto apart = between(p, q);
    return apart && std::fabs(*apart) * 2 < p.to - p.from + q.to - q.from;
  }
  /// Remembers a touch, or which stretches were followed side by side to a crossing: what begins among them
  /// leads there again.
  void noteFollowed(int one, const BandPiece& first, int two, const BandPiece& second, double sense) {
    const auto number = static_cast<std::uint32_t>(followed_.size());
    followed_.push_back({first, second, sense});
    for (const auto& [loop, piece] : {std::pair(one, &first), {two, &second}}) {
      auto& parts = followedAt_[loop];
      if (parts.empty()) parts.resize(static_cast<std::size_t>(loops_[loop].size() / kPart) + 1);
      for (double place = piece->from;; place = std::min(place + kPart, piece->to)) {
        std::vector<std::uint32_t>& part = parts[partOf(loop, place)];
        if (part.empty() || part.back() != number) part.push_back(number);
        if (place >= piece->to) break;
      }
    }
  }
  bool wasFollowed(int loop, const BandPiece& one, const BandPiece& two) const {
    if (followedAt_[loop].empty()) return false;
    return std::ranges::any_of(followedAt_[loop][partOf(loop, one.from)], [&](std::uint32_t number) {
      return areBeside(followed_[number], one, two) || areBeside(followed_[number], two, one);
    });
  }
  /// Whether two places lie side by side on two stretches.
  static bool areBeside(const Followed& both, const BandPiece& a, const BandPiece& b) {
    const auto one = between(both.first, a), two = between(both.second, b);
    if (!one || !two) return false;
    const double length = both.first.to - both.first.from, other = both.second.to - both.second.from;
    return std::fabs(*one) * 2 < length && std::fabs(*two) * 2 < other &&
           std::fabs(*one * other - *two * length * both.sense) < kOblique * length * other;
  }
  std::size_t partOf(int loop, double place) const {
    const BandLoop& whole = loops_[loop];
    return static_cast<std::size_t>(whole.wrapped(place) / kPart);
  }
  /// Whether a touch that is known overlaps another one.
  bool isKnown(const BandTouch& touch) const {
    return std::ranges::any_of(found_.touches, [&](const BandTouch& o) {
      if (std::minmax(o.one, o.two) != std::minmax(touch.one, touch.two)) return false;
      return (meetAt(o.first, touch.first) && meetAt(o.second, touch.second)) ||
             (meetAt(o.first, touch.second) && meetAt(o.second, touch.first));
    });
  }

  std::span<const BandLoop> loops_;
  std::span<const BandCrossing> crossings_;
  std::span<const std::vector<BandPassing>> passings_;
  std::span<const char> marks_;
  Seam seam_;
  double reach_, most_, least_;
  bool isOneEnough_;
  std::vector<std::vector<double>> lengths_;  // of each loop, see wayTo()
  bool isSure_ = false;  // whether other steps on the walk that failed last would have led there as well
  std::vector<Followed> followed_;
  std::vector<std::vector<std::vector<std::uint32_t>>> followedAt_;  // numbers, by loops and parts of them
  std::vector<Way> ways_;
  std::size_t copies_ = 0;                // the number of the first one beside the seam
  std::vector<std::array<Arc, 4>> arcs_;  // of each crossing, to crossings of larger numbers
  BoxCells cells_;
  std::vector<Place> places_[2];                                    // of the ways that are compared
  std::size_t placesOf_ = std::numeric_limits<std::size_t>::max();  // the first of them
  std::vector<double> squares_;                                     // of the distances between them
  int joints_ = 0;
  BandTouches found_;
};

}  // namespace

BandTouches findBandTouches(std::span<const BandLoop> loops, std::span<const BandCrossing> crossings,
                            std::span<const std::vector<BandPassing>> passings, const Seam& seam,
                            const TouchLimits& limits) {
  std::vector<char> marks;
  const double most = std::min(limits.most, limits.reach);
  if (!seam && BandFaces(loops, crossings, passings).mark(most, marks) &&
      std::ranges::all_of(marks, [](char mark) { return mark == 0; }))
    return {};
  return TouchSearch(loops, crossings, passings, marks, seam, limits).find();
}

}  // namespace lorivan
