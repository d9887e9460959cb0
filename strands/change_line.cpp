#include "strands/change_line.h"

namespace lorivan {
namespace {

constexpr double kStraightArc = 0.1;  // of the way between two crossings that a straight line strays
constexpr int kArcParts = 16;
constexpr double kLeastSlant = 0.4;  // sine of the angle between that way and the line half way

/// The place between two others where a line is furthest from the straight way, or about half way where it
/// is straight itself.
Vec middleOf(const BandLoop& loop, double from, double to) {
  const Vec a = loop.spot(from).at, b = loop.spot(to).at;
  const double least = dot(b - a, b - a) * kStraightArc * kStraightArc;
  double sum = 0, places = 0;
  for (int k = 1; k < kArcParts; ++k) {
    const double place = from + (to - from) * k / kArcParts;
    const double far = cross(unit(b - a), loop.spot(place).at - a), weight = far * far + least;
    sum += weight * weight;
    places += place * weight * weight;
  }
  return loop.spot(sum > 0 ? places / sum : (from + to) / 2).at;
}

}  // namespace

LinePoint changeLine(const BandLoop& a, double fromA, double toA, const BandLoop& b, double fromB,
                     double toB) {
  const Vec here = a.spot(fromA).at, there = a.spot(toA).at, across = there - here;
  const Vec one = middleOf(a, fromA, toA), two = middleOf(b, fromB, toB);
  LinePoint line{(one + two) * 0.5, unit(two - one)};
  if (cross(line.along, across) < 0) line.along = line.along * -1;
  const bool isBetween = cross(line.along, here - line.at) < 0 && cross(line.along, there - line.at) > 0;
  if (!isBetween || cross(line.along, unit(across)) < kLeastSlant)
    line = {(here + there) * 0.5, quarter(unit(across)) * -1};
  return line;
}

}  // namespace lorivan
