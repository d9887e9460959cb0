// Bands laid on one another, stretch by stretch, as on a table: what pictures of very many crossings are
// painted from, since nobody has to find out there where a band ends under another one.
#pragma once

#include "strands/knot_drawing.h"

namespace lorivan {

/// Paints whole strands and, on top, their stretches that lie over others, on a surface that has pixels.
/// Where bands are thin or run together it shows what their outlines show, in half of the time.
void drawLaidBands(Surface& surface, const KnotCurve& curve, const KnotStyle& style, const GridView& view);

/// Whether a knot has so many crossings, and bands so thin, that nobody sees how they are drawn; or, where
/// `crowded` is asked for, bands wider than its crossings lie apart.
bool isFinelyWoven(const KnotCurve& curve, const KnotStyle& style, const GridView& view, bool crowded);

}  // namespace lorivan
