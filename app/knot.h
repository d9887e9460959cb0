// One knot on its way from fields to a picture: graph, strands and curve, each made from the one before.
#pragma once

#include "app/knot_fields.h"

namespace lorivan {

struct Knot {
  KnotGraph graph;
  StrandStore strands;
  KnotCurve curve;
  float stretch = 0.8F;  // that the strands were traced with
};

/// Orders the neighbours, walks the strands and samples their curves. The lines' pass counters are set back
/// first, so it can be run again on the same graph. Errors are the program's messages.
Result<TraceEnd> traceKnot(Knot& knot, const KnotFields& fields, const TraceWatcher& watcher = {});

/// The view that shows the whole grid, and with `knotDrawn` the whole knot, in a picture of this width.
GridView viewOf(const Knot& knot, const KnotFields& fields, const KnotStyle& style, int pictureWidth,
                bool knotDrawn);

}  // namespace lorivan
