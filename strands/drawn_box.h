// How far the drawn knot reaches, as it is written into files: bands with their edges, curves exactly.
#pragma once

#include "strands/knot_drawing.h"
#include "strands/vector_surface.h"

namespace lorivan {

/// In the view's units; without strands empty, with left above right. `classic` as in PictureOptions.
PictureBox drawnBox(const KnotCurve& curve, const KnotStyle& style, const GridView& view, bool classic);

/// The same for what strokeBands() writes.
PictureBox strokedBox(const KnotCurve& curve, const KnotStyle& style, const GridView& view);

}  // namespace lorivan
