#include "model3d/solid_field.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "model3d/vec3_math.h"

namespace lorivan {

using namespace vec;

namespace {

constexpr float kFar = 1e30F;

/// The larger of two fields: what lies in both.
FieldReading both(const FieldReading& one, const FieldReading& two) {
  const FieldReading& more = one.value >= two.value ? one : two;
  const FieldReading& less = one.value >= two.value ? two : one;
  FieldReading reading = more;
  if (std::fabs(less.value) < std::fabs(more.rival)) {
    reading.rival = less.value;
    reading.rivalSlope = less.slope;
  }
  return reading;
}

}  // namespace

SolidField::SolidField(const TubeModel& model, const CentreLines& lines, const SolidShape& shape)
    : lines_(lines), shape_(shape), radius_(model.radius), blend_(shape.filletAt(model.radius)) {
  cut_ = lines.low().z - kCutShare * radius_;
  const float margin = radius_ + (hasPlate() ? kPlateMargin * radius_ : 0);
  if (hasPlate()) outline_ = PlateOutline(model.centres, margin);
  bottom_ = hasPlate() ? cut_ - shape.plate : shape.flat ? cut_ : lines.low().z - radius_;
  low_ = {lines.low().x - margin, lines.low().y - margin, bottom_};
  high_ = {lines.high().x + margin, lines.high().y + margin, lines.high().z + radius_};
}

/// Parts of one strand are not rounded against each other where they follow each other: the second distance
/// grows towards the first one's place on the strand, without a step.
float SolidField::penalty(float way) const {
  const float from = 2 * radius_, to = 4 * radius_;
  if (way >= to) return 0;
  return way <= from ? kFar : 2 * blend_ * (to - way) / (way - from);
}

FieldReading SolidField::tubes(const Vec3& p, Segments near) const {
  float least = kFar;
  std::uint32_t first = 0;
  Vec3 away;
  for (const std::uint32_t segment : near) {
    const Vec3 apart = lines_.segments()[segment].apart(p);
    const float square = dot(apart, apart);
    if (square < least) {
      least = square;
      first = segment;
      away = apart;
    }
  }
  if (least == kFar) return {kFar, {0, 0, 1}, kFar, {}};
  const float distance = std::sqrt(least);
  FieldReading one{distance - radius_, unit(away), kFar, {}};
  if (one.value > blend_) return one;
  FieldReading two{kFar, {}, kFar, {}};
  for (const std::uint32_t segment : near) {
    const float extra = penalty(lines_.wayBetween(first, segment));
    if (extra >= 2 * blend_ + radius_) continue;
    const Vec3 apart = lines_.segments()[segment].apart(p);
    const float value = length(apart) - radius_ + extra;
    if (value < two.value) two = {value, unit(apart), kFar, {}};
  }
  return join(one, two);
}

/// What lies in one of them, with a round corner where two surfaces meet; where they do so at a right angle
/// it has the fillet's radius.
FieldReading SolidField::join(const FieldReading& one, const FieldReading& two) const {
  const float r = blend_;
  if (one.value < r && two.value < r) {
    const float u = r - one.value, v = r - two.value, size = std::sqrt(u * u + v * v);
    return {r - size, (one.slope * u + two.slope * v) * (1 / size), kFar, {}};
  }
  return one.value <= two.value ? one : two;
}

FieldReading SolidField::plate(const Vec3& p) const {
  const PlateOutline::Edge edge = outline_.at(p.x, p.y);
  return both({edge.distance, {edge.outX, edge.outY, 0}, kFar, {}}, {p.z - cut_, {0, 0, 1}, kFar, {}});
}

FieldReading SolidField::at(const Vec3& p, Segments near) const {
  FieldReading reading = tubes(p, near);
  if (hasPlate()) reading = join(reading, plate(p));
  if (hasPlate() || shape_.flat) reading = both(reading, {bottom_ - p.z, {0, 0, -1}, kFar, {}});
  return reading;
}

/// Whether two of the segments belong to different stretches, so that their tubes may meet.
bool SolidField::meet(Segments near) const {
  for (std::size_t i = 0; i < near.size(); ++i)
    for (std::size_t j = i + 1; j < near.size(); ++j)
      if (lines_.wayBetween(near[i], near[j]) > 2 * radius_) return true;
  return false;
}

/// The nearest segment is found for all nodes at once; only nodes near a rounding are read one by one.
void SolidField::values(const Lattice& lattice, Segments near, Values& values) const {
  Values x, y, z;
  std::size_t n = 0;
  const auto place = [&](float base, int first, int i) {
    return base + lattice.step * static_cast<float>(first + i);
  };
  for (int k = 0; k < kSide; ++k)
    for (int j = 0; j < kSide; ++j)
      for (int i = 0; i < kSide; ++i, ++n) {
        x[n] = place(lattice.base.x, lattice.first[0], i);
        y[n] = place(lattice.base.y, lattice.first[1], j);
        z[n] = place(lattice.base.z, lattice.first[2], k);
      }
  values.fill(kFar);
  for (const std::uint32_t number : near) {
    const CentreSegment segment = lines_.segments()[number];
    for (n = 0; n < kNodes; ++n) {
      const Vec3 apart = segment.apart({x[n], y[n], z[n]});
      const float square = dot(apart, apart);
      values[n] = square < values[n] ? square : values[n];
    }
  }
  std::array<float, std::size_t{kSide} * kSide> outline{};
  if (hasPlate())
    for (n = 0; n < outline.size(); ++n) outline[n] = outline_.at(x[n], y[n]).distance;
  const bool rounded = hasPlate() || meet(near);
  for (n = 0; n < kNodes; ++n) {
    values[n] = values[n] < kFar ? std::sqrt(values[n]) - radius_ : kFar;
    if (rounded && values[n] < blend_)
      values[n] = at({x[n], y[n], z[n]}, near).value;
    else if (hasPlate())
      values[n] =
          std::max(std::min(values[n], std::max(outline[n % outline.size()], z[n] - cut_)), bottom_ - z[n]);
    else if (shape_.flat)
      values[n] = std::max(values[n], bottom_ - z[n]);
  }
}

}  // namespace lorivan
