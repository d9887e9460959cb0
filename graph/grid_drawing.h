// Shows the knot graph.
#pragma once

#include <array>
#include <vector>

#include "graph/graph.h"
#include "graph/grid_view.h"
#include "platform/surface.h"

namespace lorivan {

struct GridDrawOptions {
  /// Colours of lines by kind: none (the background), ordinary, wall, reversed. On any background but white,
  /// for which they and those of the marks were chosen, colours that do not stand out from it are changed.
  std::array<Colour, 4> KindColour = {0xFFFFFF, 0x000000, 0x0000FF, 0xFF0000};
  bool showCrossings = true;  // mark the two strand directions at every midpoint
};

/// Collects the graph's points (see collectPoints) and draws its lines over what the surface holds. The
/// view's width is the surface's. Fails with kTooManyLines, drawing nothing, when the points do not fit their
/// table.
Status DrawGrid(KnotGraph& graph, Surface& surface, const GridView& view, const GridDrawOptions& options);

/// How far to the right a line is drawn, grid units: 0, and for one of a wrapped graph every whole number of
/// periods that brings a part of it between the seams or onto one of them.
std::vector<int> shownCopies(const KnotGraph& graph, const GridLine& line);

/// Draws the lines, and their crossing marks when wanted, over what the surface holds. Kinds past the table
/// of colours take its last entry.
void drawGridLines(const KnotGraph& graph, Surface& surface, const GridView& view,
                   const GridDrawOptions& options);

}  // namespace lorivan
