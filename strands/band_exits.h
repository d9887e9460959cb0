// Where bands come out from under the bands that lie over them.
#pragma once

#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "strands/band_clip.h"
#include "strands/band_crossings.h"

namespace lorivan {

/// Of the bend that folds a side: from there on a band counts as bent tightly.
inline constexpr double kTightBend = 0.8;

/// Where one side of a band comes out from under another.
struct BandExit {
  double place = 0;  // on the band's loop
  double foot = 0;   // the nearest place on the covering loop
  bool free = true;  // false: it did not come out before the strand's next crossing
};

/// Both sides of a band, at one end of a stretch; index 0 is the side below 0.
struct BandEnd {
  BandExit side[2];
  const BandCrossing* crossing = nullptr;
  BandLoop over;   // that lies there
  double lap = 0;  // places to add to that of the crossing
  /// Where the lower band soon crosses over the upper one: the line on which they change places, of which
  /// quarter() points away from here.
  std::optional<LinePoint> limit = {};
  /// Where something of the lower band comes near to being seen in a corner beside the crossing: the point
  /// where both sides of it meet.
  std::optional<LinePoint> neck = {};
  bool isPlain = true;  // the edge that covers it and its own sides have neither fold nor corner here
  bool isCrowded() const { return !side[0].free || !side[1].free; }
};

class BandExits {
 public:
  /// For bands `half` to each side, of which `clear` to each side of a covering band's centre line can not be
  /// seen. Exits are true to `tolerance`. The loops must outlive this.
  BandExits(std::span<const BandLoop> loops, const Seam& seam, double half, double clear, double tolerance)
      : BandExits(loops, findBandCrossings(loops, seam), seam, half, clear, tolerance) {}
  /// The same where the loops' crossings are known.
  BandExits(std::span<const BandLoop> loops, std::vector<BandCrossing> crossings, const Seam& seam,
            double half, double clear, double tolerance);

  const std::vector<BandCrossing>& crossings() const { return crossings_; }

  const std::vector<std::vector<BandPassing>>& passings() const { return passings_; }

  /// The end of the stretch that begins (direction 1) or ends (-1) at a crossing.
  BandEnd leave(const BandCrossing& c, int direction) const;

  /// Whether so much of the lower band is seen right beside a crossing that it is not cut in two there. What
  /// is narrower than half an edge is no more than a gap in it.
  bool goesOnBeside(const BandCrossing& c) const {
    const auto& neck = meetings_[numberOf(c)].neck;
    return neck && neck->width > (clear_ - half_) / 2;
  }

  /// Where the line beside the lower band's centre line comes out, at most as far away as `most`.
  BandExit leaveAlong(const BandCrossing& c, double distance, int direction, double most) const {
    bool isPlain = true;
    return leaveAlong(c, distance, direction, most, isPlain);
  }

  /// How far it is from a place on a loop to its next crossing, on or back.
  double room(int number, double place, int direction) const;

  /// The part of the upper band that may cover what comes out at an end of a piece of the lower one.
  BandCover coverOf(const BandEnd& end, const BandPiece& band) const;

  /// Has the bands of two crossings change places half way between them.
  void setRivals(std::size_t one, std::size_t two);

 private:
  const BandLoop& loop(int number) const { return loops_[number]; }
  std::size_t numberOf(const BandCrossing& c) const {
    return static_cast<std::size_t>(&c - crossings_.data());
  }
  /// The upper loop where it crosses the lower one.
  const BandLoop& overOf(const BandCrossing& c) const {
    return moved_.empty() ? loop(c.over) : moved_[numberOf(c)];
  }
  /// Whether a strand crosses itself, and not another of its copies round a cylinder.
  bool isSelf(const BandCrossing& c) const {
    return c.under == c.over && loop(c.under).sameLine(overOf(c)).has_value();
  }
  bool isCalm(int number, double from, double to, double further, double distance) const;
  bool mayReturn(const BandCrossing& c, const BandLoop::Spot& over, double ahead) const;
  bool mayLeadBack(const BandCrossing& c, const BandLoop::Spot& over, double far) const;
  double farthestExit(Vec under, Vec over) const;
  /// Whether the bend from a sample to the next one comes near to folding a line at a distance beside it.
  bool isTight(int number, int sample, double distance) const {
    return bends_[number][loop(number).wrap(sample)] * distance * distance > kTightBend * kTightBend;
  }
  bool hasNeck(const BandLoop& loop, double place) const;
  struct Meeting;
  struct Neck {
    LinePoint tip;
    double width;
  };
  std::optional<Neck> neckBeside(const BandCrossing& c, const Meeting& meeting) const;
  LinePoint innerTip(const BandLoop& loop, double place) const;
  double mostOfRoom(const BandCrossing& c, int direction) const;
  BandExit leaveAlong(const BandCrossing& c, double distance, int direction, double most,
                      bool& isPlain) const;
  bool leaveAtOnce(const BandCrossing& c, double distance, int direction, double most, BandExit& exit) const;
  BandExit leaveStepwise(const BandCrossing& c, double distance, int direction, double most,
                         BandExit exit) const;
  std::optional<BandExit> firstClear(const BandCrossing& c, double distance, int direction,
                                     double most) const;
  bool findNearerLeg(const BandCrossing& c, double distance, BandExit& exit) const;
  bool isOwn(const BandCrossing& c, double place, int sample) const;
  bool leavesWell(const BandCrossing& c, double distance, int direction, const BandExit& exit) const;
  bool staysClear(const BandCrossing& c, double distance, int direction, const BandExit& exit) const;
  /// Places of a lower band, in the lap of its crossing.
  struct Leg {
    double from, to;
  };
  double coverReach(const BandCrossing& c, const Leg& band, int direction, double least,
                    bool isLimited) const;
  double widest(const BandCrossing& c, const BandCrossing& o, const Leg& band, double way) const;
  double wayToGap(const BandCrossing& c, int direction, const Leg& leg) const;
  std::optional<LinePoint> limitOf(const BandCrossing& c, int direction) const;

  std::span<const BandLoop> loops_;
  double half_, clear_, tolerance_;
  std::vector<BandCrossing> crossings_;
  std::vector<BandLoop> moved_;                     // upper loops of a wrapped knot, by crossing
  std::vector<std::vector<BandPassing>> passings_;  // of each loop
  std::vector<std::pair<std::size_t, std::size_t>> rivals_;
  struct Meeting {
    BandLoop::Spot under, over;
    bool isFlat = false, mayReturn = false;
    bool hasLegs = false;  // whether the covering band may lead back to a side that came out as it should
    bool mayDive = false;  // whether its ends are looked at once more
    std::optional<Neck> neck = {};
  };
  std::vector<Meeting> meetings_;                        // of each crossing
  std::vector<std::vector<double>> bends_;               // of each loop, from every sample to the next one
  std::vector<std::vector<const BandCrossing*>> overs_;  // of each loop over others, by the place on it
};

}  // namespace lorivan
