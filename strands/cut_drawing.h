// A knot for machines that follow lines: closed outlines of what can be seen of its bands, or the lines along
// their middles, no line twice.
#pragma once

#include "strands/band_outline.h"
#include "strands/knot_drawing.h"
#include "strands/vector_surface.h"

namespace lorivan {

struct CutOptions {
  bool outlines = true;    // else the centre lines alone
  bool broken = true;      // centre lines alone: they end where a strand passes under another
  double kerf = 0;         // width of a cut in millimetres: outlines lie half of it further out
  double millimetres = 0;  // width of the view's whole picture
  // Or, of outlines: millimetres that what is cut out has across, or down; both: at most.
  std::optional<double> width = {}, height = {};
};

/// One piece to be cut out: its contour, or an outer one and a hole.
using CutShape = std::vector<BandContour>;

struct CutStrand {
  int slot = 0;
  Colour colour = 0;
  std::vector<CutShape> shapes;
  std::vector<std::vector<PointF>> centres;  // chains; one that repeats its first point at its end is closed
};

/// Units are the view's.
struct CutDrawing {
  std::vector<CutStrand> strands;
  bool outlines = true;    // then the centre lines are a layer that is not shown at first
  double millimetres = 0;  // width of the view's whole picture
  double bandWidth = 0;    // of outlines, millimetres, before the kerf
  double narrowed = 1;     // the part of the bands' width that this is
  bool apart = true;       // false: pieces overlap, whatever their width
  bool complete = true;    // false, with no strands: there are more than kMostCrossings
  int tight = 0;           // places where pieces are cut short, or narrower, for want of room
  PictureBox box;          // of what is shown; empty, with left above right, without strands
};

/// Pieces are as wide as the coloured bands. Outlines keep 0.1 mm of room between them, or a twelfth of a
/// narrow band: where edges are thinner than that and the kerf, bands beneath end earlier. Where pieces would
/// overlap, or most crossings have no room, all bands are narrowed until that is over, down to an eighth.
/// Strands that even then touch keep their width, and their outlines cross: each strand is one whole band
/// then where the cut takes more than twice as much as a band and most crossings have no room. Of a wrapped
/// knot one period is cut out; its pieces end straight at the seams.
CutDrawing cutDrawing(const KnotCurve& curve, const KnotStyle& style, const GridView& view,
                      const CutOptions& options);

/// Draws it as hairlines, a group for each strand in a group for each kind. No background.
void drawCut(VectorSurface& surface, const CutDrawing& drawing);

}  // namespace lorivan
