// The tube model as a mesh on the grid of a text file's three decimals: what the mesh formats write.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "base/result.h"
#include "export/scene.h"

namespace lorivan {

/// A position in thousandths of a unit, exactly as its text says.
struct MeshPoint {
  std::int32_t x = 0, y = 0, z = 0;
  friend bool operator==(const MeshPoint&, const MeshPoint&) = default;
};

/// Every model unit as `scale` units of the file, cut off to three decimals. modelScale() has made sure that
/// they fit.
MeshPoint meshPoint(const Vec3& at, double scale);
/// The same for many.
std::vector<MeshPoint> meshPoints(std::span<const Vec3> places, double scale);

/// Whether the three lie on one line, or coincide.
inline bool isFlat(const MeshPoint& a, const MeshPoint& b, const MeshPoint& c) {
  const auto span = [](std::int32_t from, std::int32_t to) {
    return static_cast<double>(to) - static_cast<double>(from);
  };
  const double ux = span(a.x, b.x), uy = span(a.y, b.y), uz = span(a.z, b.z);
  const double vx = span(a.x, c.x), vy = span(a.y, c.y), vz = span(a.z, c.z);
  return uy * vz == uz * vy && uz * vx == ux * vz && ux * vy == uy * vx;
}

/// For tables of places; all 64 bits are mixed.
inline std::uint64_t hashOf(const MeshPoint& p) {
  const std::uint64_t h = static_cast<std::uint32_t>(p.x) * 0x9E3779B97F4A7C15U +
                          static_cast<std::uint32_t>(p.y) * 0xBF58476D1CE4E5B9U +
                          static_cast<std::uint32_t>(p.z) * 0x94D049BB133111EBU;
  const std::uint64_t mixed = (h ^ h >> 32) * 0xD6E8FEB86659FD93U;
  return mixed ^ mixed >> 32;
}

/// From where to where a model reaches along an axis, model units.
struct ModelSpan {
  double low = 0, high = 0;
  bool empty = true;
  double size() const { return high - low; }
};
struct ModelBox {
  ModelSpan x, y, z;
};
ModelBox modelBox(const TubeModel& model);

/// File units for each model unit: 1, or what makes the model `millimetres` wide. Fails for a width that is
/// none, and when a coordinate would pass two million.
Result<double> modelScale(const TubeModel& model, std::optional<double> millimetres);

/// What is left of a quad with the corners A, B, C, D once corners that coincide are one; of a whole quad,
/// the diagonal that cuts it without a needless flat triangle.
enum class Cut : std::uint8_t { gone, alongAC, alongBD, withoutA, withoutB, withoutC, withoutD };

/// The corners (0 to 3) of the polygon that is left, counter-clockwise seen from outside. A fan from the
/// first of them gives its triangles.
inline std::span<const std::uint8_t> polygonCorners(Cut cut) {
  struct Row {
    std::size_t count;
    std::array<std::uint8_t, 4> corners;
  };
  static constexpr std::array<Row, 7> rows = {{{0, {}},
                                               {4, {0, 1, 2, 3}},
                                               {4, {1, 2, 3, 0}},
                                               {3, {1, 2, 3}},
                                               {3, {0, 2, 3}},
                                               {3, {0, 1, 3}},
                                               {3, {0, 1, 2}}}};
  const Row& row = rows[static_cast<std::size_t>(cut)];
  return {row.corners.data(), row.count};
}

/// A mesh whose every edge is met from both sides, however coarse three decimals are:
/// - corners that coincide in the text are one corner; quads that shrink to a line are left out, those that
///   shrink to a triangle are one. What goes on one side of an edge goes on the other.
/// - a ring that the sweep gave no radius takes over the one before it, so the tube keeps its thickness
/// there.
/// - where the sweep turns a ring by more than half a side against the one before, sides are joined to the
///   nearest ones, so the tube is not wrung.
/// - where tubes touch so that they would share an edge, a corner moves by a thousandth.
class TubeMesh {
 public:
  struct Ring {
    std::uint32_t firstPoint = 0;  // index of its side 0
    int shift = 0;                 // side 0 is joined to this side of the strand's next ring
  };
  struct Strand {
    int slot = 0;
    std::array<float, 3> factors{};
    std::size_t firstRing = 0, ringCount = 0;
  };
  /// One quad; its corners are indices into points().
  struct Face {
    std::array<std::uint32_t, 4> corner{};
    Cut cut = Cut::gone;
  };

  TubeMesh(const TubeModel& model, double scale);

  const std::vector<MeshPoint>& points() const { return points_; }
  /// Gives them away: points() is empty from then on.
  std::vector<MeshPoint> takePoints() { return std::exchange(points_, {}); }
  const std::vector<Strand>& strands() const { return strands_; }
  std::size_t ringCount() const { return rings_.size(); }

  /// The first of the strand's points; its rings follow one another, `sides` points each.
  std::uint32_t firstPoint(const Strand& strand) const { return rings_[strand.firstRing].firstPoint; }
  std::uint32_t pointCount(const Strand& strand) const {
    return static_cast<std::uint32_t>(strand.ringCount) * sides_;
  }
  /// Whether two points stand at one place. Where none do every point is a corner of whole quads.
  bool anyShared() const { return anyShared_; }
  /// The first point of the whole mesh that stands where this one does.
  std::uint32_t samePlace(std::uint32_t point) const { return anyShared_ ? same_[point] : point; }

  /// Whether a polygon is left.
  bool empty() const;
  std::size_t triangleCount() const;

  /// Corners of all the mesh's polygons, each counted in every polygon that it belongs to.
  std::size_t cornerCount() const;

  /// Calls `use` with each quad between ring `number` (0 to ringCount - 1) of the strand and the next.
  template <class Use>
  void eachFace(const Strand& strand, std::size_t number, Use&& use) const;

 private:
  void addStrand(const TubeModel& model, const TubeStrand& strand, double scale);
  void findShared();
  void comparePlaces(const std::vector<std::uint32_t>& suspects);
  void markShared(std::uint32_t point, std::uint32_t first);
  void cutFaces();
  Cut diagonalOf(const std::array<std::uint32_t, 4>& corner) const;
  Cut cutOf(const std::array<std::uint32_t, 4>& corner) const;
  std::vector<std::uint32_t> pointsToMove() const;
  void movePoint(std::uint32_t point, int round);

  std::uint32_t sides_;
  std::vector<MeshPoint> points_;   // as the model's vertices
  std::vector<MeshPoint> centres_;  // as the model's rings
  std::vector<Ring> rings_;
  std::vector<Strand> strands_;
  bool anyShared_ = false;
  std::vector<std::uint32_t> same_;   // for each point the first one at its place; empty: its own
  std::vector<std::uint8_t> shared_;  // for each point whether another stands at its place; empty: none
  std::vector<Cut> cuts_;             // for each ring, for each side
};

/// The scene's mesh at the width that the scene asks for, else at `standard`. Fails for more polygons than a
/// model may have, and when nothing of the model is left in three decimals.
Result<TubeMesh> sceneMesh(const ExportScene& scene, std::optional<double> standard = {});

template <class Use>
void TubeMesh::eachFace(const Strand& strand, std::size_t number, Use&& use) const {
  const std::size_t ring = strand.firstRing + number;
  const std::size_t next = number + 1 < strand.ringCount ? ring + 1 : strand.firstRing;
  const std::uint32_t near = rings_[ring].firstPoint, far = rings_[next].firstPoint;
  auto farSide = static_cast<std::uint32_t>(rings_[ring].shift);
  for (std::uint32_t side = 0; side < sides_; ++side) {
    const std::uint32_t nextSide = side + 1 < sides_ ? side + 1 : 0;
    const std::uint32_t nextFarSide = farSide + 1 < sides_ ? farSide + 1 : 0;
    use(Face{{near + side, near + nextSide, far + nextFarSide, far + farSide}, cuts_[ring * sides_ + side]});
    farSide = nextFarSide;
  }
}

}  // namespace lorivan
