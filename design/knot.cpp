#include "design/knot.h"

#include <cmath>

namespace lorivan {
namespace {

Result<TraceEnd> walkStrands(Knot& knot, const TraceSettings& settings, const TraceWatcher& watcher) {
  KnotGraph& graph = knot.graph;
  graph.KnotError = false;
  for (int j = 0; j <= graph.LastLine; ++j) graph.Lines[j].Passes = 0;
  if (const Status ordered = CalcGrid(graph); !ordered) return ordered.error();
  knot.stretch = settings.stretch;
  return traceStrands(graph, settings, knot.strands, watcher);
}

}  // namespace

Status KnotStages::followGrid(const Document& document) {
  const Wrap wrap = wrapOf(document);
  const bool same = cellSize_ == document.CellSize && wrap_ == wrap && lines_ == document.lines;
  if (same && static_cast<bool>(lines_) != knot_->graph.NoGrid) {
    lines_ = document.lines;  // equal, but perhaps another copy
    return {};
  }
  walked_.reset();
  lines_ = document.lines;
  cellSize_ = document.CellSize;
  wrap_ = wrap;
  return takeLines(knot_->graph, document);
}

Result<TraceEnd> KnotStages::trace(const Document& document, const TraceWatcher& watcher) {
  if (const Status taken = followGrid(document); !taken) return taken.error();
  const TraceSettings settings = traceSettings(document.fields);
  if (watcher || walked_ != settings)
    if (const auto end = walk(settings, watcher); !end || *end != TraceEnd::complete) return end;
  const Curve wanted{document.fields.whole(Param::Smooth),
                     samplesPerPoint(document.fields.number(Param::Scale))};
  if (sampled_ != wanted) sampleStrands(knot_->strands, wanted.order, wanted.samples, knot_->curve);
  sampled_ = wanted;
  return TraceEnd::complete;
}

Result<TraceEnd> KnotStages::walk(const TraceSettings& settings, const TraceWatcher& watcher) {
  walked_.reset();
  sampled_.reset();
  auto end = walkStrands(*knot_, settings, watcher);
  if (!end || *end != TraceEnd::complete) return end;
  walked_ = settings;
  ++walk_;
  return end;
}

GridView viewOf(const Knot& knot, const KnotFields& fields, const KnotStyle& style, int pictureWidth,
                bool knotDrawn) {
  // A drawn knot stands at the stretch that it was made with, whatever the field shows meanwhile.
  GridView view(knotDrawn ? knot.stretch : stretchFactor(fields.number(Param::Skew)), pictureWidth);
  if (fields.fitPicture && knotDrawn)
    fillView(view, knot.curve, style);
  else if (fields.fitPicture)
    fillView(view, knot.graph);
  else if (knotDrawn)
    fitView(view, knot.graph, knot.curve, style);
  else
    fitView(view, knot.graph);
  return view;
}

Status makeKnot(const Document& document, Knot& knot) {
  if (const Status taken = takeLines(knot.graph, document); !taken) return taken;
  const auto walked = walkStrands(knot, traceSettings(document.fields), {});
  if (!walked) return walked.error();
  sampleStrands(knot.strands, document.fields.whole(Param::Smooth),
                samplesPerPoint(document.fields.number(Param::Scale)), knot.curve);
  return {};
}

bool strandsRunTogether(const Document& document) {
  if (!document.lines) return false;
  const GridView view(stretchFactor(document.fields.number(Param::Skew)));
  double sum = 0;
  for (const KnotLine& line : *document.lines)
    sum +=
        std::hypot(view.pixelX(line.X1) - view.pixelX(line.X2), view.pixelY(line.Y1) - view.pixelY(line.Y2));
  const KnotStyle style = knotStyle(document.fields, {});
  return 0.6 * sum < style.outerWidth() * static_cast<double>(document.lines->size());
}

}  // namespace lorivan
