// The 3-D model: one closed tube of quadrilaterals round every strand.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "base/colour.h"
#include "base/result.h"
#include "strands/strand_store.h"

namespace lorivan {

inline constexpr int kMostQuads = 999999;

struct Vec3 {
  float x = 0, y = 0, z = 0;
};

/// The fields that shape the tube, already corrected to their ranges.
struct TubeSettings {
  int polySides = 5;      // 3 to 200
  int polyPoints = 4;     // samples for each control point, 1 to 50
  float polyRadius = 5;   // tube radius times ten
  int polySmooth = 4;     // B-spline order, 3 to 20
  float polyZF = 2;       // height of an over point
  float ringPercent = 0;  // 0 flat, 75 bracelet, 100 ring
  bool operator==(const TubeSettings&) const = default;
};

/// The tube of one strand: rings of `sides` vertices swept along its centre line. Ring r of the strand is
/// ring firstRing + r of the model; its quads join ring r to ring r + 1, and the last ring to the first.
struct TubeStrand {
  int slot = 0;                    // strand and colour number, 1 to 40
  std::array<float, 3> factors{};  // red, green, blue, each 0 to 1
  int firstRing = 0;
  int ringCount = 0;
};

/// The whole model. Vertices are shared: quad (strand s, ring r, side m) has the corners
/// Q(r, m), Q(r, m + 1), Q(r + 1, n + 1), Q(r + 1, n) with ring and side numbers wrapping round; n is m + the
/// ring's join, which is 0 wherever sections follow each other.
struct TubeModel {
  int sides = 0;
  float radius = 0;                 // tube radius, model units
  std::vector<Vec3> centres;        // one for each ring
  std::vector<Vec3> vertices;       // ring-major: vertices[ring * sides + side]
  std::vector<std::uint8_t> joins;  // by ring, see above; none: all 0
  std::vector<TubeStrand> strands;  // in slot order
  int QuadCount = 0;
  float minimumCoordinate = 0;      // least x or y of the scaled control points; sets the picture's scale
  Vec3 curveMinimum, curveMaximum;  // extremes of the sampled centre lines before they are bent into a ring

  const Vec3& vertex(int ring, int side) const {
    return vertices[static_cast<std::size_t>(ring) * static_cast<std::size_t>(sides) +
                    static_cast<std::size_t>(side)];
  }
  /// The side of the next ring that side 0 of a ring is joined to.
  int join(int ring) const { return joins.empty() ? 0 : joins[ring]; }
  void clear() {
    sides = QuadCount = 0;
    centres.clear();
    vertices.clear();
    joins.clear();
    strands.clear();
  }
};

/// Positions in TubeModel::vertices of a quad's corners 1 to 4.
using QuadCorners = std::array<int, 4>;

/// Calls visit(quad, corners, strand) for every quad in the model's order: strand by strand, ring by ring,
/// side by side; quad counts from 0, strand is the position in TubeModel::strands.
template <class Visit>
void forEachQuad(const TubeModel& model, Visit&& visit) {
  int quad = 0;
  for (int s = 0; s < static_cast<int>(model.strands.size()); ++s) {
    const TubeStrand& strand = model.strands[s];
    for (int r = 0; r < strand.ringCount; ++r) {
      const int here = (strand.firstRing + r) * model.sides;
      const int there = (strand.firstRing + (r + 1 == strand.ringCount ? 0 : r + 1)) * model.sides;
      int n = model.join(strand.firstRing + r);
      for (int m = 0; m < model.sides; ++m) {
        const int next = m + 1 == model.sides ? 0 : m + 1, nextThere = n + 1 == model.sides ? 0 : n + 1;
        visit(quad++, QuadCorners{here + m, here + next, there + nextThere, there + n}, s);
        n = nextThere;
      }
    }
  }
}

/// Finds the corners of single quads, in any order. Keeps its memory from one model to the next.
class QuadIndex {
 public:
  void build(const TubeModel& model) {
    sides_ = model.sides;
    joins_ = model.joins;
    joins_.resize(model.centres.size());
    nextRing_.resize(model.centres.size());
    ringStrand_.resize(model.centres.size());
    for (std::size_t s = 0; s < model.strands.size(); ++s) {
      const TubeStrand& strand = model.strands[s];
      for (int r = 0; r < strand.ringCount; ++r) {
        const auto ring = static_cast<std::size_t>(strand.firstRing) + static_cast<std::size_t>(r);
        nextRing_[ring] = (strand.firstRing + (r + 1 == strand.ringCount ? 0 : r + 1)) * sides_;
        ringStrand_[ring] = static_cast<std::uint8_t>(s);
      }
    }
  }
  QuadCorners corners(int quad) const {
    const int ring = quad / sides_;
    const int side = quad - ring * sides_;
    const auto after = [this](int m) { return m + 1 == sides_ ? 0 : m + 1; };
    const int joined = (side + joins_[ring]) % sides_;
    const int here = ring * sides_, there = nextRing_[ring];
    return {here + side, here + after(side), there + after(joined), there + joined};
  }
  /// Position of the quad's strand in TubeModel::strands.
  std::size_t strand(int quad) const { return ringStrand_[quad / sides_]; }

 private:
  int sides_ = 1;
  std::vector<std::int32_t> nextRing_;  // first vertex of the ring that follows a ring
  std::vector<std::uint8_t> ringStrand_, joins_;
};

}  // namespace lorivan
