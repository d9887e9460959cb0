// Flat DXF of outlines or centre lines in millimetres.
#pragma once

#include "base/sink.h"
#include "strands/cut_drawing.h"
#include "strands/flat_path.h"

namespace lorivan {

/// How far the lines of a file may stray from the curves, in millimetres.
inline constexpr double kFlatTolerance = 0.01;

/// Writes the drawing of DXF's 2004 edition: lightweight polylines, a layer for each strand with its true
/// colour. With outlines the centre lines are on a layer of their own that is off.
Status writeCutDxf(const CutDrawing& drawing, const CutPlace& place, bool arcs, Sink& sink);

/// The index of the standard palette that is nearest to a colour; 7 for black and white.
int nearestColourIndex(Colour colour);

}  // namespace lorivan
