// Building and showing tube models: a knot of the default size, and one of nearly a million quads. The
// counter copy_ratio is the time over that of a plain copy of the model's vertices.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <vector>

#include "base/numbers.h"
#include "model3d/renderer.h"
#include "model3d/rotator.h"
#include "model3d/tube_builder.h"

namespace lorivan {
namespace {

/// One strand woven over the whole picture, heights as a trace leaves them: apex, over, apex, under.
StrandStore woven(int points, int across, int down) {
  StrandStore store;
  for (int i = 0; i < points; ++i) {
    const double angle = kTwoPi * i / points;
    const float height = i % 2 == 0 ? 0.0F : i % 4 == 1 ? 1.0F : -1.0F;
    store.point(1, i) = {static_cast<float>(90 * std::sin(across * angle + 0.3)),
                         static_cast<float>(88 * std::sin(down * angle)), height};
  }
  store.point(1, points) = store.point(1, 0);
  store.ThreadCount[1] = points;
  return store;
}

struct Case {
  StrandStore strands;
  TubeSettings settings;
};

/// 0: 24 points with the settings of a first run. 1: 960000 quads.
Case caseOf(std::int64_t number) {
  TubeSettings large;
  large.polySides = 40;
  large.polyPoints = 15;
  large.polyRadius = 2;
  return number == 0 ? Case{woven(24, 2, 3), {}} : Case{woven(1600, 19, 20), large};
}

double copySeconds(std::size_t bytes) {
  const std::vector<char> source(bytes, 'a');
  std::vector<char> target(bytes);
  double best = 1;
  for (int round = 0; round < 5; ++round) {
    const auto start = std::chrono::steady_clock::now();
    target = source;
    benchmark::DoNotOptimize(target.data());
    benchmark::ClobberMemory();
    const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start;
    best = std::min(best, spent.count());
  }
  return best;
}

template <class Work>
void measure(benchmark::State& state, int quads, std::size_t bytes, Work&& work) {
  const auto start = std::chrono::steady_clock::now();
  for (auto _ : state) work();
  const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start;
  state.counters["quads"] = quads;
  state.counters["copy_ratio"] = spent.count() / static_cast<double>(state.iterations()) / copySeconds(bytes);
}

void BM_Build(benchmark::State& state) {
  const Case built = caseOf(state.range(0));
  TubeModel model;
  const auto build = [&] {
    if (!buildTube(built.strands, built.settings, SlotColours{}, model)) state.SkipWithError("refused");
  };
  build();
  measure(state, model.QuadCount, model.vertices.size() * sizeof(Vec3), build);
}
BENCHMARK(BM_Build)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void BM_Show(benchmark::State& state) {
  const Case built = caseOf(state.range(0));
  const auto width = static_cast<int>(state.range(1)), height = width * 4 / 5;
  TubeModel model;
  SlotColours colours;
  colours.fill(0x3060E0);
  if (!buildTube(built.strands, built.settings, colours, model)) state.SkipWithError("refused");
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  Renderer renderer;
  ViewState view;
  measure(state, model.QuadCount, pixels.size() * sizeof(pixels[0]), [&] {
    turnByKey(view, 37);
    renderer.render(model, {}, view, 0xFFFFFF, false, {pixels.data(), width, height, width});
  });
}
BENCHMARK(BM_Show)->Args({0, 500})->Args({0, 1000})->Args({0, 2000})->Args({1, 500})->Args({1, 1000})->Unit(
    benchmark::kMillisecond);

}  // namespace
}  // namespace lorivan
