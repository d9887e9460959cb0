// What a knot is: one plain value that everything else is made from. Whatever is done to a knot is a function
// from one Document to another (design/edits.h).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "custom/custom_shape.h"
#include "design/knot_fields.h"
#include "design/shared.h"
#include "graph/graph.h"

namespace lorivan {

/// A line of the graph without what tracing writes into it, except for the pass count that knot files keep.
struct KnotLine {
  std::int16_t X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
  std::int16_t MidX = 0, MidY = 0;
  std::int16_t Kind = 0;
  std::int16_t Passes = 0;
  float Angle = 0;  // as in GridLine; finer than the rounded ends tell where the line was built from fields
  bool operator==(const KnotLine&) const = default;
};
using KnotLines = std::vector<KnotLine>;

/// How wide bands are that fit their grid: the whole band of the distance between crossings, and its edge on
/// each side of the band.
struct BandShares {
  float band = 0.58F, edge = 0.1F;
  bool operator==(const BandShares&) const = default;
};

struct Document {
  KnotFields fields = firstRunFields();
  /// The scale that the user asked for where the grid had to be built smaller; empty: what vtScale shows.
  std::string askedScale;
  BandShares bands;  // of bands that fit, see chkFitBands
  std::int16_t CellSize = 20;
  Shared<KnotLines> lines;      // none: no grid has been made yet
  Shared<CustomShape> outline;  // none: an empty shape
  bool outlineAhead = false;    // the outline was edited since the grid was made

  bool operator==(const Document&) const = default;
};

/// The lines of a graph that is in use.
KnotLines linesOf(const KnotGraph& graph);

/// How the document's lines lie on a cylinder, if they do.
Wrap wrapOf(const Document& document);

/// Gives the graph the document's lines and collects its points; without lines the graph has NoGrid set.
Status takeLines(KnotGraph& graph, const Document& document);

/// The same lines with the pass counts of a graph that was made from them.
Document withPasses(const Document& document, const KnotGraph& graph);

const CustomShape& outlineOf(const Document& document);

/// Bytes that a history needs for `step` beside `neighbour`: what both share is not counted.
std::size_t sizeBeside(const Document& step, const Document& neighbour);

}  // namespace lorivan
