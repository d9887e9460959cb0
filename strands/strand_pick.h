// One strand of a drawn knot: which one lies at a place, how long it is, and its mark in the picture.
#pragma once

#include "strands/knot_drawing.h"

namespace lorivan {

/// The slot of the strand that can be seen at a place of the picture, in pixels; 0 where there is none. Of
/// bands that lie over each other it is the upper one.
int strandAt(const KnotCurve& curve, const KnotStyle& style, const GridView& view, double x, double y);

/// Length of a strand's centre line, in grid units.
double strandLength(const KnotCurve& curve, int slot, float stretch);

/// The same in pixels of a view.
double strandLength(const KnotCurve& curve, int slot, const GridView& view);

/// How often a strand passes a crossing; one with itself counts twice.
int crossingsPassed(const StrandStore& store, int slot);

/// Draws a thin bright outline round what can be seen of a strand; round all of it where it takes too long to
/// tell that.
void drawStrandMark(Surface& surface, const KnotCurve& curve, const KnotStyle& style, const GridView& view,
                    int slot);

}  // namespace lorivan
