// A knot from a few numbers, for tests.
#pragma once

#include <memory>

#include "base/numbers.h"
#include "base/random.h"
#include "strands/knot_drawing.h"
#include "strands/tracing.h"

namespace lorivan {

struct MadeKnot {
  std::unique_ptr<KnotGraph> graph = std::make_unique<KnotGraph>();
  std::unique_ptr<StrandStore> store = std::make_unique<StrandStore>();
  GridFields fields;
  TraceSettings settings;
  KnotCurve curve;
  std::string error;  // empty: the knot was made

  /// Orders, traces and samples what the graph holds.
  void trace(int order = 3) {
    settings.stretch = stretchFactor(fields.skew);
    settings.circular = usesCircularRule(fields.shape, fields.XNo);
    graph->KnotError = false;
    if (const Status ordered = CalcGrid(*graph); !ordered) error = ordered.error().message;
    if (!error.empty()) return;
    const auto traced = traceStrands(*graph, settings, *store);
    if (!traced) error = traced.error().message;
    if (error.empty()) sampleStrands(*store, order, samplesPerPoint(fields.scale), curve);
  }
};

inline MadeKnot makeKnot(const GridFields& fields, const TraceSettings& settings = {},
                         const Rnd* random = nullptr) {
  MadeKnot knot;
  knot.settings = settings;
  const auto grid = buildStandardGrid(*knot.graph, fields, random);
  knot.fields = grid ? grid->fields : fields;
  grid ? knot.trace() : void(knot.error = grid.error().message);
  return knot;
}

inline GridFields fieldsOf(Shape shape, int x, int y, float scale = 30, int offset = 0) {
  return {.shape = shape, .XNo = x, .YNo = y, .scale = scale, .crossOffset = offset};
}

inline GridFields wrappedFieldsOf(Shape shape, int x, int y, float scale = 30) {
  return {.shape = shape, .XNo = x, .YNo = y, .scale = scale, .wrapped = true};
}

/// Lines that strands cross but did not cross exactly twice.
inline int wronglyPassed(const KnotGraph& graph) {
  int wrong = 0;
  for (int j = 0; j <= graph.LastLine; ++j) {
    const GridLine& line = graph.Lines[j];
    wrong += line.Kind != kNoLine && line.Kind != kWall && line.Passes != 2 ? 1 : 0;
  }
  return wrong;
}

}  // namespace lorivan
