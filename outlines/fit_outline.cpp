#include "outlines/fit_outline.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/numbers.h"
#include "custom/planar_grid.h"
#include "custom/shape_editor.h"

namespace lorivan {
namespace {

constexpr double kMeet = 1;                       // ends this close are one, shape units
constexpr double kSpacing = kJoinReach + 0.25;    // points closer than kJoinReach would be joined later
constexpr double kFine = 1.0 / 8000;              // of the drawing's size: how exactly curves are followed
constexpr double kLeastSize = 1e-9;               // of a drawing, its own units
constexpr double kStep = 0.5, kMostSmoothed = 4;  // steps of pixels: a part of their side, but not too much
constexpr double kCoarser = 1.25, kMuchCoarser = 3;  // from one tolerance to the next
constexpr double kMostTolerance = 50;                // beyond it nothing would be left of an outline
constexpr double kFarthest = 1e15;                   // of a drawing's coordinates
constexpr std::size_t kMostDrawnPoints = 1'000'000;
constexpr std::size_t kMostOpenPieces = 4000;

/// Joins open pieces, each to the nearest free end within reach, and closes those that come back.
class EndJoiner {
 public:
  explicit EndJoiner(std::vector<OutlinePiece> pieces) : pieces_(std::move(pieces)) {}

  std::vector<OutlinePiece> run() {
    for (std::size_t i = 0; i < pieces_.size(); ++i)
      while (!gone(i) && !pieces_[i].closed && (closes(i) || extends(i))) {
      }
    std::erase_if(pieces_, [](const OutlinePiece& piece) { return piece.points.size() < 2; });
    return std::move(pieces_);
  }

 private:
  bool gone(std::size_t i) const { return pieces_[i].points.empty(); }

  bool closes(std::size_t i) {
    std::vector<Spot>& points = pieces_[i].points;
    if (points.size() < 4 || distance(points.front(), points.back()) > kMeet) return false;
    points.pop_back();
    pieces_[i].closed = true;
    return true;
  }

  /// At its end, then at its beginning.
  bool extends(std::size_t i) { return appends(i) || (std::ranges::reverse(pieces_[i].points), appends(i)); }

  bool appends(std::size_t i) {
    std::vector<Spot>& points = pieces_[i].points;
    std::size_t best = i;
    double least = kMeet;
    bool backwards = false;
    for (std::size_t j = 0; j < pieces_.size(); ++j) {
      if (j == i || gone(j) || pieces_[j].closed) continue;
      const double front = distance(points.back(), pieces_[j].points.front());
      const double back = distance(points.back(), pieces_[j].points.back());
      if (std::min(front, back) > least || (best != i && std::min(front, back) >= least)) continue;
      best = j;
      least = std::min(front, back);
      backwards = back < front;
    }
    if (best == i) return false;
    std::vector<Spot> more = std::exchange(pieces_[best].points, {});
    if (backwards) std::ranges::reverse(more);
    points.insert(points.end(), more.begin() + 1, more.end());
    return true;
  }

  std::vector<OutlinePiece> pieces_;
};

/// Points that repeat the one before go.
void dropRepeats(OutlinePiece& piece) {
  auto& points = piece.points;
  const auto same = [](Spot a, Spot b) { return distance(a, b) < 1e-6; };
  points.erase(std::unique(points.begin(), points.end(), same), points.end());
  while (piece.closed && points.size() > 1 && same(points.front(), points.back())) points.pop_back();
  piece.closed = piece.closed && points.size() > 2;  // there and back is one line
}

/// Shape units for a unit of the box, where it is laid into the frame.
double frameScale(const ShapeFrame& frame, const GridBox& within) {
  return std::min((frame.right - frame.left) / std::max(within.right - within.left, kLeastSize),
                  (frame.bottom - frame.top) / std::max(within.top - within.bottom, kLeastSize));
}

/// False for a box without a size.
bool layIntoFrame(std::vector<OutlinePiece>& pieces, const GridBox& within) {
  const ShapeFrame frame = frameOf(CustomShape());
  if (!(std::max(within.right - within.left, within.top - within.bottom) > kLeastSize)) return false;
  const double scale = frameScale(frame, within);
  const Spot from{(within.left + within.right) / 2, (within.bottom + within.top) / 2};
  const Spot to{(frame.left + frame.right) / 2, (frame.top + frame.bottom) / 2};
  for (OutlinePiece& piece : pieces)
    for (Spot& p : piece.points) p = to + scale * (p - from);
  return true;
}

/// Loops that would shrink to a point when their points are joined.
std::size_t dropSpecks(std::vector<OutlinePiece>& pieces) {
  return std::erase_if(pieces, [](const OutlinePiece& piece) {
    const GridBox box = boxOf({piece});
    return std::hypot(box.right - box.left, box.top - box.bottom) < 2 * kJoinReach ||
           (piece.closed && piece.points.size() < 3);
  });
}

struct Amount {
  std::size_t points = 0, lines = 0;
  bool fits() const { return points <= kMostShapePoints && lines <= kMostShapeLines; }
};

Amount amountOf(const std::vector<OutlinePiece>& pieces) {
  Amount sum;
  for (const OutlinePiece& piece : pieces) {
    sum.points += piece.points.size();
    sum.lines += piece.points.size() - (piece.closed ? 0 : 1);
  }
  return sum;
}

/// With as many points as a shape holds, if that can be: the tolerance grows until they fit, which is noted.
std::vector<OutlinePiece> thatFit(const std::vector<OutlinePiece>& pieces, double tolerance,
                                  std::vector<std::string>& notes) {
  double used = tolerance;
  std::vector<OutlinePiece> few = withFewPoints(pieces, used, kSpacing);
  while (!amountOf(few).fits() && used < kMostTolerance) {
    used *= amountOf(few).lines > 3 * kMostShapeLines ? kMuchCoarser : kCoarser;
    few = withFewPoints(pieces, used, kSpacing);
  }
  if (used > tolerance)
    notes.push_back(tr("made coarser, to within {1} units, for a shape holds {2} lines", roundedUp(used, 10),
                       kMostShapeLines));
  return few;
}

CustomShape shapeFrom(const std::vector<OutlinePiece>& pieces) {
  CustomShape shape;
  const ShapeFrame frame = frameOf(shape);
  for (const OutlinePiece& piece : pieces) {
    const int first = shape.ShapePointCount + 1;
    for (const Spot p : piece.points)
      shape.addPoint(std::clamp(static_cast<float>(p.x), frame.left, frame.right),
                     std::clamp(static_cast<float>(p.y), frame.top, frame.bottom));
    for (int point = first; point < shape.ShapePointCount; ++point) shape.addLine(point, point + 1);
    if (piece.closed) shape.addLine(shape.ShapePointCount, first);
  }
  return shape;
}

}  // namespace

GridBox boxOf(const std::vector<OutlinePiece>& pieces) {
  GridBox box;
  for (const OutlinePiece& piece : pieces)
    for (const Spot p : piece.points) box.add(p.x, p.y);
  return box;
}

Result<FittedOutline> fitOutline(std::vector<OutlinePiece> pieces, const GridBox& within, double tolerance) {
  const Error empty = unreadable("there is no outline in it");
  if (within.empty() || !layIntoFrame(pieces, within)) return empty;
  for (OutlinePiece& piece : pieces) dropRepeats(piece);
  std::erase_if(pieces, [](const OutlinePiece& piece) { return piece.points.size() < 2; });
  const auto open = std::ranges::count(pieces, false, &OutlinePiece::closed);
  if (static_cast<std::size_t>(open) > kMostOpenPieces)
    return unreadable("it has {1} open lines, more than can be joined", open);
  pieces = EndJoiner(std::move(pieces)).run();
  FittedOutline fitted;
  if (const std::size_t specks = dropSpecks(pieces); specks > 0)
    fitted.notes.push_back(trn("{n} speck left out", "{n} specks left out", static_cast<long long>(specks)));
  if (pieces.empty()) return empty;
  const std::vector<OutlinePiece> few = thatFit(pieces, tolerance, fitted.notes);
  if (!amountOf(few).fits())
    return unreadable("it is too intricate for a shape of {1} lines", kMostShapeLines);
  fitted.shape = shapeFrom(few);
  return fitted;
}
Result<FittedOutline> fitTraced(TracedPicture traced, const GridBox& within) {
  const double step = kStep * traced.grain * frameScale(frameOf(CustomShape()), within);
  auto fitted =
      fitOutline(std::move(traced.loops), within, std::clamp(step, kTracedTolerance, kMostSmoothed));
  if (fitted && traced.specks > 0)
    fitted->notes.insert(fitted->notes.begin(),
                         trn("{n} speck of the picture left out", "{n} specks of the picture left out",
                             static_cast<long long>(traced.specks)));
  if (fitted && traced.lightOnDark) fitted->notes.insert(fitted->notes.begin(), tr("light on a dark ground"));
  return fitted;
}

Result<FittedOutline> fitDrawing(const Drawing& drawing) {
  GridBox hull;
  for (const CurveChain& chain : drawing.chains)
    for (const Spot p : chain.points) {
      if (!(std::fabs(p.x) < kFarthest && std::fabs(p.y) < kFarthest))
        return unreadable("its coordinates are too large");
      hull.add(p.x, p.y);
    }
  std::vector<OutlinePiece> pieces;
  const double size = std::max(hull.right - hull.left, hull.top - hull.bottom);
  std::size_t points = 0;
  for (const CurveChain& chain : drawing.chains) {
    pieces.push_back({flattened(chain, std::max(size * kFine, 1e-12)), chain.closed});
    points += pieces.back().points.size();
    if (points > kMostDrawnPoints) return unreadable("it is larger than an outline can be");
  }
  const GridBox box = boxOf(pieces);
  auto fitted = fitOutline(std::move(pieces), box, kDrawnTolerance);
  if (fitted)
    fitted->notes.insert(fitted->notes.begin(), drawing.notes.begin(), drawing.notes.end());
  else if (!drawing.notes.empty())
    return Error{fitted.error().kind, fitted.error().message + "; " + drawing.notes.front()};
  return fitted;
}

}  // namespace lorivan
