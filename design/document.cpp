#include "design/document.h"

namespace lorivan {
namespace {

GridLine gridLine(const KnotLine& line) {
  GridLine made;
  made.X1 = line.X1;
  made.Y1 = line.Y1;
  made.X2 = line.X2;
  made.Y2 = line.Y2;
  made.MidX = line.MidX;
  made.MidY = line.MidY;
  made.Kind = line.Kind;
  made.Passes = line.Passes;
  made.Angle = line.Angle;
  return made;
}

std::size_t sizeOf(const CustomShape& shape) {
  return sizeof(shape) +
         sizeof(float) * (shape.ShapeX.capacity() + shape.ShapeY.capacity() +
                          shape.ShapeLineEnds[0].capacity() + shape.ShapeLineEnds[1].capacity());
}

}  // namespace

KnotLines linesOf(const KnotGraph& graph) {
  KnotLines lines;
  lines.reserve(static_cast<std::size_t>(graph.LastLine + 1));
  for (int j = 0; j <= graph.LastLine; ++j) {
    const GridLine& l = graph.Lines[j];
    lines.push_back({l.X1, l.Y1, l.X2, l.Y2, l.MidX, l.MidY, l.Kind, l.Passes, l.Angle});
  }
  return lines;
}

Wrap wrapOf(const Document& document) {
  if (!isWrapped(document.fields)) return {};
  return wrapOf(document.fields.shape, document.CellSize, document.fields.whole(Param::XNo));
}

Status takeLines(KnotGraph& graph, const Document& document) {
  startLines(graph);
  graph.CellSize = document.CellSize;
  graph.NoGrid = !document.lines;
  graph.wrap = wrapOf(document);
  if (document.lines) {
    if (document.lines->size() > kMostLines) return refused(std::string(kTooManyLines));
    for (const KnotLine& line : *document.lines) graph.Lines[graph.NextLine++] = gridLine(line);
  }
  if (const Status made = finishLines(graph); !made) return made;
  return collectPoints(graph);
}

Document withPasses(const Document& document, const KnotGraph& graph) {
  Document counted = document;
  if (!document.lines || static_cast<int>(document.lines->size()) != graph.LastLine + 1) return counted;
  KnotLines lines = *document.lines;
  for (std::size_t j = 0; j < lines.size(); ++j) lines[j].Passes = graph.Lines[j].Passes;
  counted.lines = Shared(std::move(lines));
  return counted;
}

const CustomShape& outlineOf(const Document& document) {
  static const CustomShape empty;
  return document.outline ? *document.outline : empty;
}

std::size_t sizeBeside(const Document& step, const Document& neighbour) {
  std::size_t bytes = sizeof(Document);
  if (step.lines && !step.lines.sameAs(neighbour.lines)) bytes += step.lines->capacity() * sizeof(KnotLine);
  if (step.outline && !step.outline.sameAs(neighbour.outline)) bytes += sizeOf(*step.outline);
  return bytes;
}

}  // namespace lorivan
