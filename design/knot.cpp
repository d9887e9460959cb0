#include "design/knot.h"

#include <cmath>
#include <utility>

#include "base/texts.h"

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

/// Exchanges knots with the working stages where theirs has the strands that are to be walked.
bool KnotStages::takeOver(const TraceSettings& settings) {
  KnotStages& other = workingStages();
  if (this == &other || other.walked_ != settings || !other.lines_.sameAs(lines_) ||
      other.cellSize_ != cellSize_ || other.wrap_ != wrap_)
    return false;
  const int walk = walk_ + 1;
  std::swap(*this, other);
  walk_ = walk;
  return true;
}

Result<TraceEnd> KnotStages::trace(const Document& document, const TraceWatcher& watcher) {
  if (const Status taken = followGrid(document); !taken) return taken.error();
  const TraceSettings settings = traceSettings(document.fields);
  if (watcher || (walked_ != settings && !takeOver(settings)))
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
  if (knotDrawn) return viewOf(boxesOf(knot), fields, style, pictureWidth);
  GridView view(stretchFactor(fields.number(Param::Skew)), pictureWidth);
  if (fields.fitPicture)
    fillView(view, knot.graph);
  else
    fitView(view, knot.graph);
  return view;
}

KnotBoxes boxesOf(const Knot& knot) {
  return {lineBox(knot.graph), curveBox(knot.curve, knot.stretch), knot.stretch};
}

GridView viewOf(const KnotBoxes& boxes, const KnotFields& fields, const KnotStyle& style, int pictureWidth) {
  // A drawn knot stands at the stretch that it was made with, whatever the field shows meanwhile.
  GridView view(boxes.stretch, pictureWidth);
  if (fields.fitPicture)
    fillView(view, boxes.strands, style);
  else
    fitView(view, boxes.grid, boxes.strands, style);
  return view;
}

KnotStages& workingStages() {
  thread_local KnotStages stages;
  return stages;
}

Status makeKnot(const Document& document, Knot& knot) {
  if (const Status taken = takeLines(knot.graph, document); !taken) return taken;
  const auto walked = walkStrands(knot, traceSettings(document.fields), {});
  if (!walked) return walked.error();
  sampleStrands(knot.strands, document.fields.whole(Param::Smooth),
                samplesPerPoint(document.fields.number(Param::Scale)), knot.curve);
  return {};
}

std::string lostStrands(const Knot& knot) {
  if (knot.strands.lost == 0) return {};
  return trn("{n} more strand is not drawn: there is room for {1}",
             "{n} more strands are not drawn: there is room for {1}", knot.strands.lost, kMostStrands);
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
