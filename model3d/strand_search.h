// Finds where strands of a model come nearest to each other, without looking at every pair of segments.
#pragma once

#include <cstdint>
#include <vector>

#include "model3d/centre_lines.h"
#include "model3d/triangle_distance.h"

namespace lorivan {

/// What stands for the tubes: round ones, or the model's own polygons.
enum class TubeForm { round, polygons };

/// Of one strand only parts that do not follow each other count: along the strand they lie apart by two
/// tubes' thickness, as far as two crossings at least, and by twice as much as across. So bends and curls
/// between crossings are no gaps.
class StrandSearch {
 public:
  /// `window`: rings before and after a crossing that belong to it, half the way to the turns beside it.
  StrandSearch(const TubeModel& model, const CentreLines& lines, int window);

  /// The places where two strands, or two parts of one, come nearest, if that is nearer than `within`; else
  /// the distance is `within` or more. Between round tubes it is negative where they run into each other,
  /// between polygons it is 0 there.
  Apart nearest(TubeForm form, float within) const;
  /// The same between two strands.
  Apart nearest(TubeForm form, std::size_t one, std::size_t two, float within) const;
  /// The same between the rings that belong to a crossing's two.
  Apart nearCrossing(TubeForm form, int over, int under, float within) const;

 private:
  /// A stretch of one strand in a ball.
  struct Ball {
    Vec3 middle;
    float radius = 0;
    std::uint32_t from = 0, to = 0;     // segments
    std::uint32_t left = 0, right = 0;  // its halves; 0: none
  };
  struct Search {
    TubeForm form;
    Apart best;
    /// Polygons come no nearer than to cut each other.
    bool isSettled() const { return form == TubeForm::polygons && best.distance <= 0; }
  };

  std::uint32_t addBall(std::uint32_t from, std::uint32_t to);
  void descend(Search& search, std::uint32_t one, std::uint32_t two) const;
  bool canCount(const Ball& one, const Ball& two, float apart) const;
  void compare(Search& search, std::uint32_t one, std::uint32_t two) const;
  void comparePolygons(Apart& best, std::uint32_t one, std::uint32_t two) const;
  float reach(std::uint32_t ring, const Vec3& from, const Vec3& towards) const;
  bool runThrough(std::uint32_t one, std::uint32_t two, const Nearest& centres) const;

  const TubeModel& model_;
  const CentreLines& lines_;
  int window_;
  float leastWay_;
  QuadIndex quads_;
  std::vector<Ball> balls_;
  std::vector<std::uint32_t> roots_;  // of each strand
};

}  // namespace lorivan
