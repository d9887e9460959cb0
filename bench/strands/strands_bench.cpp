// From fields to traced and smoothed strands, for every standard shape at 20 x 20 cells, and plans for their
// number.
#include "copy_ratio.h"
#include "graph/strand_solver.h"
#include "knot_maker.h"

namespace lorivan {
namespace {

/// Arguments: the shape, and its cells across and up.
void fieldsToStrands(benchmark::State& state) {
  const auto shape = static_cast<Shape>(state.range(0));
  const auto cells = static_cast<int>(state.range(1));
  const GridFields fields = fieldsOf(shape, cells, cells);
  KnotGraph graph;
  StrandStore store;
  KnotCurve curve;
  TraceSettings settings;
  const CopyRatio ratio(state);
  for (auto _ : state) {
    const auto grid = buildStandardGrid(graph, fields);
    if (!grid || !CalcGrid(graph)) state.SkipWithError("no grid");
    settings.circular = usesCircularRule(shape, grid->fields.XNo);
    if (!traceStrands(graph, settings, store)) state.SkipWithError("no knot");
    sampleStrands(store, 3, samplesPerPoint(grid->fields.scale), curve);
    benchmark::DoNotOptimize(curve.X.data());
  }
  state.SetLabel(std::string(shapeTable()[static_cast<std::size_t>(shape)].name));
}
BENCHMARK(fieldsToStrands)
    ->ArgsProduct({benchmark::CreateDenseRange(0, kShapeCount - 2, 1), {20}})
    ->ArgsProduct({{0}, {1, 2, 4, 10}})
    ->Unit(benchmark::kMillisecond);

/// Strands planned at 20 x 20 cells; arguments: shape, and 0 for as many as possible.
void plan(benchmark::State& state) {
  const MadeKnot knot = makeKnot(fieldsOf(static_cast<Shape>(state.range(0)), 20, 20));
  StrandGoal goal;
  if (state.range(1) > 0) goal.strands = static_cast<int>(state.range(1));
  goal.symmetry.leftRight = state.range(2) != 0;
  const CopyRatio ratio(state);
  for (auto _ : state) benchmark::DoNotOptimize(planStrands(*knot.graph, goal));
}
BENCHMARK(plan)
    ->ArgsProduct({{static_cast<int>(Shape::SquareSquare), static_cast<int>(Shape::Circular),
                    static_cast<int>(Shape::Star)},
                   {0, 1, 30},
                   {0, 1}})
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lorivan
