#include "strands/tracing.h"

#include <cmath>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "base/numbers.h"

namespace lorivan {
namespace {

constexpr std::string_view kKnotErrorText = "Sorry, there's an error in calculating that knot";

float angleOf(PointF from, PointF to) {
  float angle = 0;
  FindAngle(to.x - from.x, to.y - from.y, angle);
  return angle;
}

/// A point of the graph as the walk comes to it: of a wrapped one so many periods further to the right.
struct Stop {
  int point = 0, turn = 0;
};

float quarterTurn(float angle) {
  return static_cast<float>(angle >= 4.712389F ? angle - 1.5 * kPi : angle + kPi / 2);
}

float halfTurn(float angle) { return static_cast<float>(angle < kPiF ? angle + kPi : angle - kPi); }

/// Whether two directions point more or less the same way, seen across the full turn.
bool pointsAlong(float a, float b) {
  constexpr double reach = 1.3707963;  // a quarter turn less 0.2
  return std::fabs(a - b) < reach || std::fabs(a - (b + kTwoPi)) < reach ||
         std::fabs(a - (b - kTwoPi)) < reach;
}

/// Whether two spots lie at clearly different distances from the middle of the view.
bool lieOnDifferentRings(PointF a, PointF b) {
  const double aa = static_cast<double>(a.x) * a.x + static_cast<double>(a.y) * a.y;
  const double bb = static_cast<double>(b.x) * b.x + static_cast<double>(b.y) * b.y;
  return aa + bb > 0 && std::fabs((bb - aa) / (bb + aa)) >= 0.01;
}

/// One strand's walk: from line to line, turning in angular order alternately to the next and the previous
/// neighbour.
class Walk {
 public:
  Walk(KnotGraph& graph, const TraceSettings& settings, StrandStore& store, const TraceWatcher& watcher)
      : graph_(graph), settings_(settings), store_(store), watcher_(watcher) {}

  enum class Outcome { closed, endless, abandoned };

  Outcome run(int slot, int start, int startSlot, int startLine);

 private:
  /// A turn round one point, from the middle of one line to the middle of the next.
  struct Corner {
    const GridLine& in;
    const GridLine& out;
    PointF A, B, C;  // the two midpoints, and the spot between them
  };

  /// A corner with the sign that its apex was found with.
  struct Turned {
    Corner corner;
    int sign;
  };

  GridLine& line(int index) { return graph_.Lines[index]; }
  const GridPoint& point(const Stop& stop) const { return graph_.Points[stop.point]; }
  PointF midpoint(const Stop& a, const Stop& b) const {
    const int x = point(a).X + point(b).X + (a.turn + b.turn) * graph_.wrap.period;
    return {static_cast<float>(x) / 2, static_cast<float>(point(a).Y + point(b).Y) / 2};
  }
  bool isBack(const GridPoint& turn, std::size_t k, int incoming) const;

  void enterStartLine(int index);
  bool stepOver(int incoming, int& outgoing, Stop& next);
  PointF apex(const Corner& corner) const;
  PointF swungApex(const Corner& corner) const;
  PointF wallApex(const Corner& corner) const;
  bool store(int number, PointF apexPoint, PointF crossing);
  Stop startStop(int start, int slot, int index);
  TraceStep shown(TraceStep step) const;
  void turnAgain(int turns, const std::vector<Turned>& corners);
  bool isClosed(const Stop& first, const Stop& second, bool sameLine) const;

  KnotGraph& graph_;
  const TraceSettings& settings_;
  StrandStore& store_;
  const TraceWatcher& watcher_;

  int slot_ = 0;
  int sign_ = -1;  // s: turns to the next (+1) or the previous (-1) neighbour
  int walls_ = 0;  // w
  Stop previous_, current_;
  PointF reference_;  // R: the previous apex
};

/// Sign and first reference point of a strand that starts on a line.
void Walk::enterStartLine(int index) {
  GridLine& start = line(index);
  sign_ = start.Passes == 1 ? -start.Over : -1;
  // Only before its first pass: a reversed line that has been passed already would have its strand walked
  // twice and another one lost.
  if (start.Kind == kReversed && start.Passes == 0) sign_ = -sign_;
  start.Over = static_cast<std::int16_t>(sign_);

  const double d = graph_.halfCell(), theta = start.Angle;
  if (sign_ < 1) {
    // For level lines drawn from right to left, and those just below, the reference lies on the other side.
    const double up = d * std::sin(theta + kPi / 2);
    reference_ = {static_cast<float>(start.MidX + d * std::cos(theta + kPi / 2)),
                  static_cast<float>(theta < 0.001 ? start.MidY - up : start.MidY + up)};
  } else {
    reference_ = {static_cast<float>(start.MidX + d * std::cos(theta)),
                  static_cast<float>(start.MidY + d * std::sin(theta))};
  }
}

/// Whether a neighbour is where the walk came from. Round a cylinder two lines may lead to one point, and a
/// line from a point to itself.
bool Walk::isBack(const GridPoint& turn, std::size_t k, int incoming) const {
  if (turn.Nb[k] != previous_.point) return false;
  return !graph_.wrap || (turn.NbLine[k] == incoming && turn.NbTurn[k] == previous_.turn - current_.turn);
}

/// Chooses the outgoing line at the current point and marks its crossing. False when the neighbour is no
/// point.
bool Walk::stepOver(int incoming, int& outgoing, Stop& next) {
  const GridPoint& turn = point(current_);
  int k = 0;
  while (k < turn.NbCount && !isBack(turn, static_cast<std::size_t>(k), incoming)) ++k;
  int m = k + sign_;
  sign_ = -sign_;
  if (m > turn.NbCount - 1) m = 0;
  if (m < 0) m = turn.NbCount > 0 ? turn.NbCount - 1 : 0;
  if (turn.NbCount == 0) return false;
  outgoing = turn.NbLine[m];
  next = {turn.Nb[m], current_.turn + turn.NbTurn[m]};
  if (next.point > graph_.LastPoint) return false;

  GridLine& out = line(outgoing);
  if (out.Kind == kWall) {
    sign_ = -sign_;
    ++walls_;
  }
  ++out.Passes;
  out.Over = static_cast<std::int16_t>(out.Kind == kWall && walls_ < 2 ? -sign_ : sign_);
  return true;
}

/// The apex of an ordinary corner swings out of the straight way by the swish.
PointF Walk::swungApex(const Corner& corner) const {
  const auto& [in, out, A, B, C] = corner;
  if (settings_.circular && lieOnDifferentRings(A, B)) return C;
  float beta = in.Angle;
  if (beta < 0) beta = static_cast<float>(beta + kTwoPi);
  if (sign_ > 0) beta = quarterTurn(beta);
  if (out.Kind == kWall) beta = quarterTurn(beta);
  if (!pointsAlong(beta, angleOf(A, reference_))) beta = halfTurn(beta);
  const double swing = settings_.swish * 0.12 * std::sin(static_cast<double>(beta) - angleOf(B, A));
  return {static_cast<float>(C.x - (C.y - A.y) * swing), static_cast<float>(C.y + (C.x - A.x) * swing)};
}

/// A strand that comes from a wall leaves at a right angle, on the side of the wall that it came on.
PointF Walk::wallApex(const Corner& corner) const {
  const PointF A = corner.A, R = reference_;
  const PointF X{A.x - (A.y - R.y), A.y + (A.x - R.x)};
  // The line's own place, or where the walk has come to it round a cylinder.
  const auto moved = static_cast<float>(A.x - corner.in.MidX - graph_.wrap.nearest(A.x - corner.in.MidX));
  const float onwards = graph_.wrap ? moved : 0;
  const PointF middle{static_cast<float>(corner.in.MidX) + onwards, static_cast<float>(corner.in.MidY)};
  const float wall =
      angleOf(middle, {static_cast<float>(corner.in.X1) + onwards, static_cast<float>(corner.in.Y1)});
  const auto fromWall = [&](PointF spot) {
    const double turn = static_cast<double>(angleOf(middle, spot)) - wall;
    return turn < 0 ? turn + kTwoPi : turn;
  };
  const bool sameSide = (fromWall(R) > kPi) == (fromWall(X) > kPi);
  return sameSide ? X : PointF{A.x + (A.y - R.y), A.y - (A.x - R.x)};
}

PointF Walk::apex(const Corner& corner) const {
  const auto& [in, out, A, B, C] = corner;
  PointF X = in.Kind == kWall ? wallApex(corner) : swungApex(corner);
  if (in.Kind == kWall && out.Kind == kWall) {
    if (A.y == B.y) X.x = C.x;
    if (A.x == B.x) X.y = C.y;
  }
  return X;
}

/// Stores one apex and the crossing after it; false when the strand has grown too long.
bool Walk::store(int number, PointF apexPoint, PointF crossing) {
  if (number > kStrandPoints - 2) return false;
  const int height = settings_.mirror ? -sign_ : sign_;
  store_.point(slot_, number) = {-apexPoint.x, apexPoint.y / settings_.stretch, 0};
  store_.point(slot_, number + 1) = {-crossing.x, crossing.y / settings_.stretch, static_cast<float>(height)};
  return true;
}

Walk::Outcome Walk::run(int slot, int start, int startSlot, int startLine) {
  slot_ = slot;
  walls_ = 0;
  enterStartLine(startLine);
  const int firstSign = sign_;
  const Stop first = startStop(start, startSlot, startLine);
  const GridPoint& from = point(first);
  const Stop second{from.Nb[startSlot], first.turn + from.NbTurn[startSlot]};
  if (second.point > graph_.LastPoint) return Outcome::endless;
  previous_ = first;
  current_ = second;
  int incoming = startLine, count = 0;
  std::vector<Turned> corners;
  do {
    int outgoing = 0;
    Stop next;
    if (!stepOver(incoming, outgoing, next)) return Outcome::endless;
    const PointF A = midpoint(previous_, current_), B = midpoint(current_, next);
    const Corner corner{line(incoming), line(outgoing), A, B, {(A.x + B.x) / 2, (A.y + B.y) / 2}};
    const PointF X = apex(corner);
    if (graph_.wrap) corners.push_back({corner, sign_});
    incoming = outgoing;
    if (walls_ > 0) --walls_;
    if (!store(count, X, B)) return Outcome::endless;
    count += 2;
    if (watcher_ && !watcher_(shown({slot, reference_, A, B, X}))) return Outcome::abandoned;
    reference_ = X;
    previous_ = current_;
    current_ = next;
  } while (!isClosed(first, second, incoming == startLine) || sign_ != firstSign);
  store_.ThreadCount[slot] = count;
  store_.turns[slot] = previous_.turn - first.turn;
  turnAgain(previous_.turn - first.turn, corners);
  store_.point(slot, count) = store_.turned(slot, count);
  return Outcome::closed;
}

/// A step that went round a cylinder is shown where it ends in the first period.
TraceStep Walk::shown(TraceStep step) const {
  const auto turned =
      static_cast<float>(graph_.wrap.turn(static_cast<double>(step.B.x)) * graph_.wrap.period);
  for (PointF* p : {&step.R, &step.A, &step.B, &step.X}) p->x -= turned;
  return step;
}

/// The first corner was turned by a guess of the apex before it. Round a cylinder, where all corners may look
/// alike, one that swung the wrong way is seen: the strand's last apex tells better.
void Walk::turnAgain(int turns, const std::vector<Turned>& corners) {
  reference_.x -= static_cast<float>(turns * graph_.wrap.period);
  for (std::size_t i = 0; i < corners.size(); ++i) {
    sign_ = corners[i].sign;
    reference_ = apex(corners[i].corner);
    StrandPoint& stored = store_.point(slot_, static_cast<int>(2 * i));
    const StrandPoint turned{-reference_.x, reference_.y / settings_.stretch, 0};
    if (stored.x == turned.x && stored.y == turned.y) return;
    stored = turned;
  }
}

/// Where a line lies decides where a strand that starts on it does.
Stop Walk::startStop(int start, int slot, int index) {
  Stop first{start, 0};
  if (!graph_.wrap) return first;
  const GridLine& from = line(index);
  first.turn =
      graph_.wrap.turn(isFirstEnd(graph_, point(first), static_cast<std::size_t>(slot)) ? from.X1 : from.X2);
  return first;
}

/// Whether the walk is at the line that it began on, and in the same direction.
bool Walk::isClosed(const Stop& first, const Stop& second, bool sameLine) const {
  if (previous_.point != first.point || current_.point != second.point) return false;
  return !graph_.wrap || (sameLine && current_.turn - previous_.turn == second.turn - first.turn);
}

/// Hands out slots: one further for every strand, from 40 back to 1, until all strands that are kept have
/// one.
class SlotCounter {
 public:
  explicit SlotCounter(int startColour) : slot_(std::abs(startColour) - 1) {
    if (slot_ < 0) slot_ = 0;
  }
  int next() {
    if (started_ < kMostStrands) slot_ = slot_ >= kStrandSlots - 1 ? 1 : slot_ + 1;
    ++started_;
    return slot_;
  }
  int lost() const { return std::max(0, started_ - kMostStrands); }

 private:
  int slot_;
  int started_ = 0;
};

bool canStart(const GridLine& line) { return line.Passes < 2 && line.Kind != kWall; }

}  // namespace

bool usesCircularRule(Shape shape, int xNo) {
  if (shape == Shape::Spiral) return xNo < 5;
  return shapeTable()[static_cast<std::size_t>(shape)].circular;
}

Result<TraceEnd> traceStrands(KnotGraph& graph, const TraceSettings& settings, StrandStore& store,
                              const TraceWatcher& watcher) {
  if (graph.KnotError) return impossibleKnot(kKnotErrorText);
  store.ThreadCount.fill(0);
  store.turns.fill(0);
  store.lost = 0;
  store.wrap = graph.wrap;
  SlotCounter slots(settings.startColour);
  Walk walk(graph, settings, store, watcher);
  for (int start = 0; start <= graph.LastPoint; ++start) {
    const GridPoint& point = graph.Points[start];
    for (int k = 0; k < point.NbCount; ++k) {
      const int startLine = point.NbLine[k];
      for (int attempt = 0; attempt < 2; ++attempt) {
        if (!canStart(graph.Lines[startLine])) break;
        const Walk::Outcome outcome = walk.run(slots.next(), start, k, startLine);
        if (outcome == Walk::Outcome::abandoned) return TraceEnd::abandoned;
        if (outcome == Walk::Outcome::closed) continue;
        graph.KnotError = true;
        return impossibleKnot(kKnotErrorText);
      }
    }
  }
  store.lost = slots.lost();
  return TraceEnd::complete;
}

KnotCounts countKnot(const KnotGraph& graph, const StrandStore& store) {
  KnotCounts counts;
  for (const std::int32_t points : store.ThreadCount) counts.strands += points > 0 ? 1 : 0;
  for (int j = 0; j <= graph.LastLine; ++j) {
    const GridLine& line = graph.Lines[j];
    counts.crossings += line.Kind != kNoLine && line.Kind != kWall && line.Passes == 2 ? 1 : 0;
  }
  return counts;
}

}  // namespace lorivan
