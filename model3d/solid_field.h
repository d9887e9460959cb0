// The field whose zero surface is the fused body: distance to the centre lines less the tube's radius,
// rounded where strands meet, joined with a plate or cut by a plane.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>

#include "model3d/centre_lines.h"
#include "model3d/plate_outline.h"

namespace lorivan {

/// Lengths are model units.
struct SolidShape {
  int cells = 8;      // cells for each radius of the tube
  float fillet = 0;   // radius of the rounding between strands, and between strands and plate
  float plate = 0;    // thickness of the base plate; 0: none
  bool flat = false;  // the underside is cut flat

  /// The rounding that a body with such tubes has: at least one and a half cells, since cells show no
  /// sharper hollow.
  float filletAt(float tubeRadius) const {
    return std::max(fillet, 1.5F * tubeRadius / static_cast<float>(cells));
  }
  /// Tubes that are this near to each other are joined by the rounding between them.
  float bridged(float tubeRadius) const { return (2 - 1.41421F) * filletAt(tubeRadius); }
  bool operator==(const SolidShape&) const = default;
};

/// The field at one place: negative inside. Where two surfaces meet in an edge near by, `rival` is the other.
struct FieldReading {
  float value = 0;
  Vec3 slope;  // gradient; of length 1 apart from roundings
  float rival = 1e30F;
  Vec3 rivalSlope;
};

class SolidField {
 public:
  /// Both must outlive the field.
  SolidField(const TubeModel& model, const CentreLines& lines, const SolidShape& shape);

  using Segments = std::span<const std::uint32_t>;  // in rising order

  /// Reads the field with the segments that lie near. Others do not count as long as they lie farther than
  /// reach() from the place.
  FieldReading at(const Vec3& p, Segments near) const;
  float reach() const { return radius_ + blend_; }

  /// A cube of nodes out of one endless lattice.
  struct Lattice {
    Vec3 base;
    float step = 0;
    std::array<int, 3> first{};  // numbers of the cube's first node
  };
  static constexpr int kSide = 9;
  static constexpr std::size_t kNodes = std::size_t{kSide} * kSide * kSide;
  using Values = std::array<float, kNodes>;  // x runs first, z last
  /// The values at all nodes. A node that two cubes share has the same value in both.
  void values(const Lattice& lattice, Segments near, Values& values) const;

  /// Everything that is inside lies between these.
  Vec3 low() const { return low_; }
  Vec3 high() const { return high_; }
  float radius() const { return radius_; }
  bool hasPlate() const { return shape_.plate > 0; }
  float plateTop() const { return cut_; }
  /// Where the body ends below.
  float bottom() const { return bottom_; }

 private:
  FieldReading tubes(const Vec3& p, Segments near) const;
  FieldReading join(const FieldReading& one, const FieldReading& two) const;
  FieldReading plate(const Vec3& p) const;
  float penalty(float way) const;
  bool meet(Segments near) const;

  const CentreLines& lines_;
  SolidShape shape_;
  PlateOutline outline_;
  float radius_, blend_;
  float cut_ = 0, bottom_ = 0;
  Vec3 low_, high_;
};

/// How deep the underside is cut, or a plate takes the strands in, as a share of their radius.
inline constexpr float kCutShare = 0.5F;
/// How far a plate reaches beyond the strands, in their radius.
inline constexpr float kPlateMargin = 1;

}  // namespace lorivan
