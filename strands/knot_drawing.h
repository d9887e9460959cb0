// The 2-D picture of a knot: black bands with the coloured shapes inside them that can be seen. The classic
// way lays a coloured band along every black one, then every stretch that lies over another once more on top.
#pragma once

#include "graph/grid_drawing.h"
#include "strands/colours.h"
#include "strands/knot_curve.h"

namespace lorivan {

/// The fields that style the bands.
struct KnotStyle {
  float width = 7;       // half the outer width, pixels of the 500-pixel picture
  float edge = 5;        // black edge on each side, same pixels
  int startColour = 12;  // negative: every strand takes colour |startColour|
  StrandColours colours;

  double outerWidth() const;
  double innerWidth() const;
  /// Number of a strand slot's colour, and the colour of its band.
  int colourNumber(int slot) const;
  Colour bandColour(int slot) const;
};

/// Zooms the view out just enough that the grid's lines and the knot with its bands lie in the picture.
void fitView(GridView& view, const KnotGraph& graph, const KnotCurve& curve, const KnotStyle& style);
void fitView(GridView& view, const GridBox& grid, const GridBox& strands, const KnotStyle& style);
void fitView(GridView& view, const KnotGraph& graph);

/// Zooms in or out, and moves, until the knot fills the picture but for a margin of one part in twenty.
void fillView(GridView& view, const KnotCurve& curve, const KnotStyle& style);
void fillView(GridView& view, const GridBox& strands, const KnotStyle& style);
void fillView(GridView& view, const KnotGraph& graph);

/// Draws all strands over what the surface holds, from their outlines. Where bands are so many and thin that
/// nobody sees the difference, and with `quick` where very many run into one another, pixels get laid bands
/// (drawLaidBands), which take less time.
void drawKnot(Surface& surface, const KnotCurve& curve, const KnotStyle& style, const GridView& view,
              bool quick = false);
/// The same in the classic way. Surfaces with pixels get rounded points (loopPoints).
void drawClassicKnot(Surface& surface, const KnotCurve& curve, const KnotStyle& style, const GridView& view);
/// The edges alone, of whole bands. They reach as far as the knot, and nothing has to be cut for them.
void drawKnotEdges(Surface& surface, const KnotCurve& curve, const KnotStyle& style, const GridView& view);

struct PictureOptions {
  Colour background = 0xFFFFFF;
  bool transparent = false;
  bool showGrid = true;  // the grid stays visible under the knot
  bool classic = false;  // over-stretches are laid on top, see drawClassicKnot()
  GridDrawOptions grid;
  bool quick = false;  // see drawKnot
};

/// What lies under the knot: background, and the grid when wanted. The graph is only read.
void drawPictureGround(Surface& surface, const KnotGraph& graph, const GridView& view,
                       const PictureOptions& options);

/// The whole picture: background, grid when wanted, knot. The graph is only read.
void drawKnotPicture(Surface& surface, const KnotGraph& graph, const KnotCurve& curve, const KnotStyle& style,
                     const GridView& view, const PictureOptions& options);

}  // namespace lorivan
