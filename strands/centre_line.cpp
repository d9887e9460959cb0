#include "strands/centre_line.h"

namespace lorivan {
namespace {

constexpr double kTurn = 0.15;            // radians that a line may turn between two of its points
constexpr double kStray = 0.4;            // of a probe that a chord may lie beside its curve
constexpr int kFewHalvings = 6;           // of a piece between two samples
constexpr std::size_t kUsualPoints = 64;  // of a piece

/// A piece as points, near enough to one another for chords to stand for the curve, and for the lines up to
/// `far` beside it.
class PointList {
 public:
  PointList(const BandPiece& piece, double far, double probe)
      : loop_(piece.loop), most_(kStray * 8 * probe), turn_(std::min(kTurn, std::sqrt(most_ / far))) {
    BandLoop::Spot last = loop_.spot(piece.from);
    points_.reserve(kUsualPoints);
    add(last);
    for (double from = piece.from; from < piece.to;) {
      const double to = std::min(std::floor(from + 1 + 1e-6), piece.to);
      const BandLoop::Spot next = loop_.spot(to);
      add(from, last, to, next, kFewHalvings);
      from = to;
      last = next;
    }
  }
  std::vector<LinePoint> take() { return std::move(points_); }

 private:
  void add(const BandLoop::Spot& spot) { points_.push_back({spot.at, unit(spot.along)}); }
  void add(double from, const BandLoop::Spot& a, double to, const BandLoop::Spot& b, int depth) {
    const double sine = std::fabs(cross(a.along, b.along)), cosine = dot(a.along, b.along);
    const bool bends = cosine <= 0 || sine > turn_ * cosine || lengthOf(b.at - a.at) * sine > most_ * cosine;
    if (depth > 0 && bends) {
      const double middle = (from + to) / 2;
      const BandLoop::Spot m = loop_.spot(middle);
      add(from, a, middle, m, depth - 1);
      add(middle, m, to, b, depth - 1);
      return;
    }
    add(b);
  }

  const BandLoop& loop_;
  double most_;  // times the turn, eight times as far as a chord may stray
  double turn_;  // between two points
  std::vector<LinePoint> points_;
};

}  // namespace

std::vector<LinePoint> pointsAlong(const BandPiece& piece, double far, double probe) {
  return PointList(piece, far, probe).take();
}

}  // namespace lorivan
