// AutoGrids of outlines with as many lines as a shape holds: a smooth one, one of spikes, one that crosses
// itself all over, a spiral that lies beside itself.
#include <cmath>

#include "copy_ratio.h"
#include "custom/autogrid.h"

namespace lorivan {
namespace {

enum Sort { kSmooth, kSpikes, kScribble, kSpiral };

/// Eight turns outwards and back again beside them.
void addSpiral(CustomShape& shape) {
  const int half = kMostShapeLines / 2;
  for (int i = 0; i < 2 * half; ++i) {
    const double way = static_cast<double>(i < half ? i : 2 * half - 1 - i) / half;
    const double angle = 16 * 3.141592653589793 * way, radius = 18 + 150 * way + (i < half ? -5.6 : 5.6);
    shape.addPoint(static_cast<float>(250 + radius * std::cos(angle)),
                   static_cast<float>(200 + radius * std::sin(angle)));
  }
}

CustomShape outlineOf(Sort sort) {
  CustomShape shape;
  if (sort == kSpiral) addSpiral(shape);
  for (int i = 0; i < kMostShapeLines && sort != kSpiral; ++i) {
    const double turn = 2 * 3.141592653589793 * i / kMostShapeLines;
    const double radius = sort == kSpikes   ? 60 + 80 * (i % 2)
                          : sort == kSmooth ? 110 + 30 * std::sin(9 * turn)
                                            : 140;
    const double angle = sort == kScribble ? 13 * turn + 0.3 * std::sin(7 * turn) : turn;
    shape.addPoint(
        static_cast<float>(245 + radius * std::cos(angle)),
        static_cast<float>(192 + radius * std::sin(angle) * (sort == kScribble ? std::cos(turn) : 1)));
  }
  for (int i = 0; i < kMostShapeLines; ++i) shape.addLine(i + 1, (i + 1) % kMostShapeLines + 1);
  return shape;
}

void autoGrid(benchmark::State& state) {
  const CustomShape shape = outlineOf(static_cast<Sort>(state.range(0)));
  KnotGraph graph;
  const CopyRatio ratio(state);
  for (auto _ : state) {
    if (const auto made =
            AutoGrid(graph, shape, GridView(), {state.range(0) == kSpiral ? 40 : 26, state.range(1) != 0});
        !made)
      benchmark::DoNotOptimize(made.error().message.data());
    benchmark::DoNotOptimize(graph.Lines.data());
  }
  state.SetLabel(std::to_string(graph.LastLine + 1) + " lines");
}
BENCHMARK(autoGrid)
    ->ArgsProduct({{kSmooth, kSpikes, kScribble, kSpiral}, {0, 1}})
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lorivan
