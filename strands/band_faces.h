// Which parts of bands may lie beside each other, told by the faces that their centre lines leave.
#pragma once

#include <span>
#include <vector>

#include "strands/band_crossings.h"

namespace lorivan {

inline constexpr char kMayTouch = 1, kMayClasp = 2;

/// Lines that come near to each other without crossing bound one face. In most knots every face is wide and
/// has a few sides, which a few products tell.
class BandFaces {
 public:
  BandFaces(std::span<const BandLoop> loops, std::span<const BandCrossing> crossings,
            std::span<const std::vector<BandPassing>> passings)
      : loops_(loops), crossings_(crossings), passings_(passings) {}

  /// Marks the arcs from passing to passing, of all loops one after the other, that may come nearer than
  /// `reach` to one of the same face, or cross the same one again. False where lines do not hang together, or
  /// the crossings are not those of a plane: then the faces say nothing.
  bool mark(double reach, std::vector<char>& marks);

 private:
  struct Arc {
    int from = 0, to = 0;  // crossings
    bool fromOver = false, toOver = false;
    Vec a, b, along;       // its ends, and the unit vector from one to the other
    double beyond = 0;     // how far it goes on past its chord's ends
    double bulge[2] = {};  // how far it lies beside the chord on each side
    Vec middle;
    double radius = 0;            // of a circle round it
    double cosine = 1, sine = 0;  // of the largest angle between it and the chord
  };
  struct Corner {
    int out[2], in[2];  // arcs, under and over
    Vec at, along[2];   // where both lines go, as unit vectors
    bool isLeft;        // whether the upper line goes to the side that quarter() points away from
  };

  const Arc& arc(int half) const { return arcs_[static_cast<std::size_t>(half / 2)]; }
  Vec heading(int half) const { return half % 2 == 0 ? arc(half).along : arc(half).along * -1; }
  double inner(int half) const { return arc(half).bulge[half % 2]; }
  bool hangTogether() const;
  void makeArcs();
  Arc makeArc(const BandLoop& loop, const BandPassing& from, const BandPassing& to) const;
  int next(int half) const;
  void markFace();
  bool mayBeNear(const Arc& a, const Arc& b) const;
  void markPair(int one, int two);
  bool leadApart(int one, int two) const;
  bool areApart(int one, int two) const;
  static double furthest(const Arc& a, Vec way);

  std::span<const BandLoop> loops_;
  std::span<const BandCrossing> crossings_;
  std::span<const std::vector<BandPassing>> passings_;
  std::vector<Arc> arcs_;
  std::vector<Corner> corners_;  // of each crossing
  std::vector<int> face_;        // arcs, twice their number and one more where they are passed backwards
  double reach_ = 0;
  std::vector<char>* marks_ = nullptr;
};

}  // namespace lorivan
