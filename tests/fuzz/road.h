// The road of a knot from its graph to a mesh, with what holds on the way.
#pragma once

#include <cstdint>

#include "fuzz.h"
#include "graph/graph.h"
#include "model3d/tube_builder.h"
#include "strands/tracing.h"

namespace lorivan::fuzz {

struct Road {
  TraceSettings trace;
  TubeSettings tube;
  int order = 3, samples = 5;
  double band = 10, gap = 0;  // of the outlines, pixels
};

/// Anything that the fields allow, but no more than some thousand polygons for each strand.
Road drawRoad(Draws& draws);

/// Orders, traces, samples, outlines and sweeps the graph's lines. False when there is no knot, which only
/// graphs that are not `sound` may lead to.
bool followRoad(KnotGraph& graph, const Road& road, bool sound);

}  // namespace lorivan::fuzz
