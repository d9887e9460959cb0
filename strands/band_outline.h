// The bands of a knot as shapes: what can be seen of every strand, as closed outlines.
//
// Units are the view's pixels, x to the right and y downwards, true to proportion and unrounded. A contour is
// a closed chain of cubic Bezier segments, 3 n + 1 points of which the last repeats the first. The area that
// it surrounds, by the shoelace formula with these x and y, is positive (on the screen it runs clockwise); a
// hole's is negative.
#pragma once

#include <limits>
#include <vector>

#include "strands/knot_curve.h"

namespace lorivan {

using BandContour = std::vector<PointF>;

/// Of crossings that are cut by distances, in a picture that has to keep up with the user.
inline constexpr int kMostClippedLive = 400;

/// All in pixels of the view.
struct OutlineOptions {
  double band = 10;      // width of the shapes
  double outer = 10;     // width of a band with its edges: a band that passes under one ends there
  double gap = 0;        // further distance between that edge and the end of the band beneath
  double grow = 0;       // moves every outline outwards, or inwards below 0: half the width of a cut
  bool centres = false;  // whether strands and stretches get their centre lines
  bool rings = false;    // whether strands get their whole bands with edges
  /// Few segments that are true to the tolerance of files; else what a picture of these pixels needs, made
  /// faster.
  bool fitted = true;
  bool spines = false;  // whether strands get their `spine`
  /// Stretches that are cut by distances take some time. Where more crossings than this have such ends, there
  /// are no outlines.
  int mostClipped = std::numeric_limits<int>::max();
  bool unlessCrowded =
      false;           // no outlines where bands do not come out before they cross again at most crossings
  bool uncut = false;  // whole bands, as if nothing lay above or beside them
};

/// What can be seen between two crossings under other bands, or between more of them where that is one piece:
/// then further stretches follow that have a centre line alone.
struct BandStretch {
  std::vector<BandContour> contours;  // one, and its holes; of a whole ring in any order
  std::vector<PointF> centre;         // chain along the middle: open, or closed for a ring
};

struct StrandOutline {
  int slot = 0;
  std::vector<PointF> centre;     // chain along the whole strand, closed; one lap of it round a cylinder
  std::vector<PointF> spine;      // the same line, and only this one, in many segments
  std::vector<BandContour> ring;  // the whole band, `outer` wide, covered or not; it may cross itself
  bool folded = false;            // the ring had folds: where bends follow closely it may miss a corner
  std::vector<BandStretch> stretches;
};

struct BandOutlines {
  std::vector<StrandOutline> strands;  // by slot
  int crowded = 0;       // crossings without room: the band beneath does not come out before it crosses again
  int lost = 0;          // stretches of which nothing is left
  int beside = 0;        // places where two bands without room between them end at the middle
  bool complete = true;  // see OutlineOptions::mostClipped and ::unlessCrowded, and kMostCrossings
};

/// A band is all that lies no further than half its width from its centre line. So where that has a corner,
/// as with a smoothness of 2, the band is round on the outer side, and its sides meet on the inner one; the
/// legs of one bend are one band, and no edge lies between them. Where a corner lies beneath another one,
/// what is seen of it inside leads from one leg to the other, and both are one stretch, unless that neck is
/// narrower than half an edge: there it is cut.
///
/// The outlines of all strands; no error passes 0.02 of the band's width. Where bends are tighter than half
/// the width the outline has a corner instead of a fold. Where nothing of a stretch is left between the bands
/// that cover its ends, it is left out; where one of them cuts it in two, there are two. Of a wrapped knot
/// every stretch is there once, whole, wherever that is: the seam cuts nothing. Bands that do not cross but
/// lie nearer to each other than their width end on both sides of the middle between them, and two that cross
/// twice without room on both sides of a line half way; an edge and the gap lie between. Outlines overlap
/// only where three bands have no room between their crossings.
BandOutlines bandOutlines(const KnotCurve& curve, const GridView& view, const OutlineOptions& options);

/// The area inside a closed contour, see above for its sign.
double contourArea(const BandContour& contour);

}  // namespace lorivan
