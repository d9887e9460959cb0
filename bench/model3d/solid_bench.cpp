// Fusing strands to a body of about a million triangles, and the verdict on a model of nearly a million
// quads.
#include <cmath>

#include "base/numbers.h"
#include "copy_ratio.h"
#include "model3d/solid_body.h"
#include "model3d/verdict.h"

namespace lorivan {
namespace {

/// One strand woven over the whole picture, heights as a trace leaves them: apex, over, apex, under.
TubeModel woven(int points, int across, int down, const TubeSettings& settings) {
  StrandStore store;
  for (int i = 0; i < points; ++i) {
    const double angle = kTwoPi * i / points;
    const float height = i % 2 == 0 ? 0.0F : i % 4 == 1 ? 1.0F : -1.0F;
    store.point(1, i) = {static_cast<float>(90 * std::sin(across * angle + 0.3)),
                         static_cast<float>(88 * std::sin(down * angle)), height};
  }
  store.point(1, points) = store.point(1, 0);
  store.ThreadCount[1] = points;
  TubeModel model;
  if (!buildTube(store, settings, {}, model)) model.clear();
  return model;
}

void fuseStrands(benchmark::State& state) {
  TubeSettings settings;
  settings.polySides = 3;
  settings.polyPoints = 16;
  settings.polyRadius = 3;
  settings.polyZF = 0.6F;
  const TubeModel model = woven(400, 7, 8, settings);
  SolidShape shape;
  shape.fillet = state.range(0) != 0 ? 0.1F : 0;
  shape.plate = state.range(1) != 0 ? 0.5F : 0;
  const CopyRatio ratio(state);
  std::size_t triangles = 0;
  for (auto _ : state) {
    const auto body = fuse(model, shape);
    if (!body) return state.SkipWithError("refused");
    triangles = body->mesh.triangles.size();
  }
  state.counters["triangles"] = static_cast<double>(triangles);
}
BENCHMARK(fuseStrands)->Args({0, 0})->Args({1, 0})->Args({1, 1})->Unit(benchmark::kMillisecond);

void judge(benchmark::State& state) {
  TubeSettings settings;
  settings.polySides = static_cast<int>(state.range(0));
  settings.polyPoints = static_cast<int>(600 / state.range(0));
  settings.polyRadius = 2;
  const TubeModel model = woven(1600, 19, 20, settings);
  const CopyRatio ratio(state);
  for (auto _ : state)
    benchmark::DoNotOptimize(inspect(model, {}, crossingWindow(settings), TubeForm::polygons));
  state.counters["quads"] = model.QuadCount;
}
BENCHMARK(judge)->Arg(12)->Arg(40)->Arg(200)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lorivan
