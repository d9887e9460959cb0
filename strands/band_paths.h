// The bands as plain lines, for drawing programs that want paths to edit: what the metafile is made of.
#pragma once

#include "platform/metafile.h"
#include "strands/knot_drawing.h"

namespace lorivan {

/// Strokes all bands of the knot in drawing order, in whole units of the view: two closed paths for each
/// strand, black and its colour, then two open ones for each stretch that lies over others. Neither grid nor
/// background.
void strokeBands(Metafile& metafile, const KnotCurve& curve, const KnotStyle& style, const GridView& view);

}  // namespace lorivan
