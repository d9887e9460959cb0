#include "app/custom_grid.h"

#include <cmath>
#include <utility>

#include "base/numbers.h"
#include "custom/autogrid.h"
#include "custom/planar_grid.h"

namespace lorivan {
namespace {

GridView shapeView(const KnotFields& fields) { return GridView(stretchFactor(fields.number(Param::Skew))); }

/// A grid that was refused is in the tables all the same, so it is made beside the one in use.
Status takeOver(KnotGraph& graph, KnotGraph made, Status status) {
  if (status) status = collectPoints(made);
  if (status) graph = std::move(made);
  return status;
}

}  // namespace

Status autoGridOf(KnotGraph& graph, const CustomShape& shape, const KnotFields& fields) {
  KnotGraph made;
  const AutoGridOptions options{fields.whole(Param::GridSize), fields.check(Check::ShapeT)};
  const Status status = AutoGrid(made, shape, shapeView(fields), options);
  return takeOver(graph, std::move(made), status);
}

Status lineGridOf(KnotGraph& graph, const CustomShape& shape, const KnotFields& fields) {
  KnotGraph made;
  const Status status = makeGridFromShape(made, shape, shapeView(fields));
  return takeOver(graph, std::move(made), status);
}

bool strandsRunTogether(const KnotGraph& graph, const KnotFields& fields, const KnotStyle& style) {
  const GridView view = shapeView(fields);
  double sum = 0;
  for (int j = 0; j <= graph.LastLine; ++j) {
    const GridLine& line = graph.Lines[static_cast<std::size_t>(j)];
    sum +=
        std::hypot(view.pixelX(line.X1) - view.pixelX(line.X2), view.pixelY(line.Y1) - view.pixelY(line.Y2));
  }
  return 0.6 * sum < style.outerWidth() * (graph.LastLine + 1);
}

bool isGridMessage(const Error& error) {
  return error.message == kTooComplicated || error.message == kTooManyLines;
}

}  // namespace lorivan
