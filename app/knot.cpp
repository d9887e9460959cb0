#include "app/knot.h"

namespace lorivan {

Result<TraceEnd> traceKnot(Knot& knot, const KnotFields& fields, const TraceWatcher& watcher) {
  KnotGraph& graph = knot.graph;
  graph.KnotError = false;
  for (int j = 0; j <= graph.LastLine; ++j) graph.Lines[static_cast<std::size_t>(j)].Passes = 0;
  if (const Status ordered = CalcGrid(graph); !ordered) return ordered.error();
  const TraceSettings settings = traceSettings(fields);
  auto traced = traceStrands(graph, settings, knot.strands, watcher);
  knot.stretch = settings.stretch;
  if (traced)
    sampleStrands(knot.strands, fields.whole(Param::Smooth), samplesPerPoint(fields.number(Param::Scale)),
                  knot.curve);
  return traced;
}

GridView viewOf(const Knot& knot, const KnotFields& fields, const KnotStyle& style, int pictureWidth,
                bool knotDrawn) {
  // A drawn knot stands at the stretch that it was made with, whatever the field shows meanwhile.
  GridView view(knotDrawn ? knot.stretch : stretchFactor(fields.number(Param::Skew)), pictureWidth);
  if (knotDrawn)
    fitView(view, knot.graph, knot.curve, style);
  else
    fitView(view, knot.graph);
  return view;
}

}  // namespace lorivan
