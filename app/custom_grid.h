// The graph of a shape of one's own, ready to be drawn and traced.
#pragma once

#include "app/knot_fields.h"
#include "custom/custom_shape.h"
#include "graph/graph.h"

namespace lorivan {

/// Lays an AutoGrid inside the shape's outline, as vtGridSize, chkShapeT and the stretch say. On any error
/// the graph stays as it was. Points are collected.
Status autoGridOf(KnotGraph& graph, const CustomShape& shape, const KnotFields& fields);

/// Makes the shape's own lines the grid. On any error the graph stays as it was. Points are collected.
Status lineGridOf(KnotGraph& graph, const CustomShape& shape, const KnotFields& fields);

/// Whether the strands of a grid made from a shape will run together: strands side by side, seldom
/// further apart than 0.6 of a line's length, are wider than that.
bool strandsRunTogether(const KnotGraph& graph, const KnotFields& fields, const KnotStyle& style);

/// The errors of the two above that are shown in a message box; the others go to the status line.
bool isGridMessage(const Error& error);

}  // namespace lorivan
