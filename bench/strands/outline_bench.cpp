// The band outlines of every standard shape at 20 x 20 cells, with bands that leave room.
#include "copy_ratio.h"
#include "knot_maker.h"
#include "strands/band_outline.h"

namespace lorivan {
namespace {

void outlines(benchmark::State& state) {
  const auto shape = static_cast<Shape>(state.range(0));
  const MadeKnot knot = makeKnot(fieldsOf(shape, 20, 20));
  GridView view;
  fitView(view, *knot.graph);
  OutlineOptions options;
  options.band = 2;
  options.outer = 4;
  const CopyRatio ratio(state);
  for (auto _ : state) benchmark::DoNotOptimize(bandOutlines(knot.curve, view, options));
  state.SetLabel(std::string(shapeTable()[static_cast<std::size_t>(shape)].name));
}
BENCHMARK(outlines)->DenseRange(0, kShapeCount - 2)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lorivan
