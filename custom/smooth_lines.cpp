#include "custom/smooth_lines.h"

#include <algorithm>
#include <array>
#include <optional>

namespace lorivan {
namespace {

/// The directions in which curves pass the points of a shape, of length 1; none at corners.
class Tangents {
 public:
  explicit Tangents(const CustomShape& shape) : shape_(shape) {
    neighbours_.resize(static_cast<std::size_t>(shape.ShapePointCount) + 1);
    for (int line = 1; line <= shape.ShapeLineCount; ++line)
      if (shape.lineIsLive(line))
        for (const int end : {0, 1})
          neighbours_[shape.lineEnd(end, line)].push_back(shape.lineEnd(1 - end, line));
  }

  Spot place(int point) const { return {shape_.ShapeX[point], shape_.ShapeY[point]}; }

  /// On the way to `next`. As on the circle through three points: each side counts by the other's length.
  std::optional<Spot> at(int point, int next) const {
    if (isCorner(point)) return std::nullopt;
    const std::vector<int>& around = neighbours_[point];
    const int before = around[around[0] == next ? 1 : 0];
    const Spot in = place(point) - place(before), out = place(next) - place(point);
    const Spot sum = (length(out) / length(in)) * in + (length(in) / length(out)) * out;
    return (1 / length(sum)) * sum;
  }

 private:
  /// By how much the two lines at a point turn, degrees; nothing where there are not two.
  std::optional<double> turnAt(int point) const {
    const std::vector<int>& around = neighbours_[point];
    if (around.size() != 2) return std::nullopt;
    const Spot in = place(point) - place(around[0]), out = place(around[1]) - place(point);
    if (length(in) <= 0 || length(out) <= 0) return std::nullopt;
    return degreesBetween(in, out);
  }

  bool isCorner(int point) const {
    const std::optional<double> turn = turnAt(point);
    if (!turn || *turn >= kKeptCorner) return true;
    return *turn >= kKeptTip && standsOut(point, *turn);
  }

  bool standsOut(int point, double turn) const {
    bool compared = false;
    for (const int beside : neighbours_[point])
      if (const std::optional<double> other = turnAt(beside)) {
        if (kTipStandsOut * *other > turn) return false;
        compared = true;
      }
    return compared;
  }

  const CustomShape& shape_;
  std::vector<std::vector<int>> neighbours_;
};

struct Curve {
  std::array<Spot, 4> control;
  double turn = 0;  // degrees
};

/// A direction mirrored at the chord's middle, so that the curve between both is an arc.
Spot mirroredAlong(Spot direction, Spot chord) {
  const Spot along = (1 / length(chord)) * chord;
  return 2 * dot(direction, along) * along - direction;
}

/// The cubic from one point to the other; nothing for a straight line. The handles' length makes arcs of a
/// circle where both ends lie alike: 4/3 tan(a/2) R on a chord of 2 R sin(a), a being the angle between chord
/// and tangent.
std::optional<Curve> curveBetween(const Tangents& tangents, int from, int to) {
  const Spot a = tangents.place(from), b = tangents.place(to), chord = b - a;
  std::optional<Spot> leaves = tangents.at(from, to), arrives = tangents.at(to, from);
  if (length(chord) <= 0 || (!leaves && !arrives)) return std::nullopt;
  if (arrives) arrives = -1 * *arrives;
  if (!leaves) leaves = mirroredAlong(*arrives, chord);
  if (!arrives) arrives = mirroredAlong(*leaves, chord);
  const double first = degreesBetween(*leaves, chord), last = degreesBetween(*arrives, chord);
  const auto handle = [&](double degrees) {
    const double c = std::cos(degrees / 2 / 57.29577951308232);
    return length(chord) / (3 * c * c);
  };
  return Curve{{a, a + handle(first) * *leaves, b - handle(last) * *arrives, b}, first + last};
}

Spot pointOf(const Curve& curve, double t) {
  const double u = 1 - t;
  return u * u * u * curve.control[0] + 3 * u * u * t * curve.control[1] + 3 * u * t * t * curve.control[2] +
         t * t * t * curve.control[3];
}

int piecesOf(const Curve& curve, const CurvePieces& pieces) {
  constexpr double kExact = 1e-6;  // a turn of just so many pieces is not one more
  const double most = distance(curve.control[0], curve.control[3]) / pieces.shortest;
  return static_cast<int>(std::max(1.0, std::min(std::ceil(curve.turn / pieces.degrees - kExact), most)));
}

}  // namespace

ShapeLines::ShapeLines(const CustomShape& shape, const CurvePieces& pieces) {
  const Tangents tangents(shape);
  for (int point = 1; point <= shape.ShapePointCount; ++point) spots.push_back(tangents.place(point));
  for (int line = 1; line <= shape.ShapeLineCount; ++line) {
    if (!shape.lineIsLive(line)) continue;
    const int from = shape.lineEnd(0, line), to = shape.lineEnd(1, line);
    int last = from - 1;
    if (const auto curve = shape.smooth ? curveBetween(tangents, from, to) : std::nullopt; curve) {
      const int count = piecesOf(*curve, pieces);
      for (int k = 1; k < count; ++k) {
        spots.push_back(pointOf(*curve, static_cast<double>(k) / count));
        lines.push_back({last, static_cast<int>(spots.size()) - 1});
        last = static_cast<int>(spots.size()) - 1;
      }
    }
    lines.push_back({last, to - 1});
  }
}

}  // namespace lorivan
