// Building and showing tube models: a knot of the default size, and one of nearly a million quads.
#include <cmath>
#include <vector>

#include "base/numbers.h"
#include "copy_ratio.h"
#include "model3d/model_picture.h"
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

SlotColours colours() {
  SlotColours all;
  all.fill(0x3060E0);
  return all;
}

void buildModel(benchmark::State& state) {
  const Case wanted = caseOf(state.range(0));
  TubeModel model;
  const CopyRatio ratio(state);
  for (auto _ : state) {
    if (!buildTube(wanted.strands, wanted.settings, colours(), model)) state.SkipWithError("refused");
  }
  state.counters["quads"] = model.QuadCount;
}
BENCHMARK(buildModel)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

/// Arguments: the case, the picture's width in pixels, and whether it is smooth. Every picture is turned by a
/// key press.
void turnAndShow(benchmark::State& state) {
  const Case wanted = caseOf(state.range(0));
  const auto width = static_cast<int>(state.range(1)), height = width * 4 / 5;
  TubeModel model;
  if (!buildTube(wanted.strands, wanted.settings, colours(), model)) state.SkipWithError("refused");
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  ModelPicture renderer;
  PictureLook look;
  look.smooth = state.range(2) != 0;
  ViewState view;
  const CopyRatio ratio(state, pixels.size() * 4);
  for (auto _ : state) {
    turnByKey(view, 37);
    renderer.render(model, {}, view, {}, look, {pixels.data(), width, height, width});
  }
  state.counters["quads"] = model.QuadCount;
}
BENCHMARK(turnAndShow)
    ->ArgsProduct({{0, 1}, {500, 1000}, {0, 1}})
    ->Args({0, 2000, 0})
    ->Args({0, 2000, 1})
    ->Unit(benchmark::kMillisecond);

/// A frame while a model is dragged. Arguments: its quads, the picture's width, and whether it is smooth.
void drag(benchmark::State& state) {
  TubeSettings settings;
  settings.polySides = state.range(0) > 100'000 ? 40 : 8;
  settings.polyPoints = state.range(0) > 100'000 ? 15 : 5;
  settings.polyRadius = 2;
  const auto points = static_cast<int>(state.range(0) / (settings.polySides * settings.polyPoints));
  const StrandStore strands = woven(points, 19, 20);
  TubeModel model;
  const auto shown = coarserSettings(settings, state.range(0), kQuickModel);
  if (!buildTube(strands, shown, colours(), model)) state.SkipWithError("refused");
  const auto width = static_cast<int>(state.range(1)), height = width * 4 / 5;
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  ModelPicture renderer;
  PictureLook look;
  look.smooth = state.range(2) != 0;
  look.draft = true;
  ViewState view;
  const CopyRatio ratio(state, pixels.size() * 4);
  for (auto _ : state) {
    turnByKey(view, 37);
    renderer.render(model, {}, view, {}, look, {pixels.data(), width, height, width});
  }
  state.counters["shown"] = model.QuadCount;
}
BENCHMARK(drag)
    ->ArgsProduct({{1'000, 100'000, 960'000}, {500, 1000, 2000}, {0, 1}})
    ->Unit(benchmark::kMillisecond);

/// How cost grows with the model. Arguments: quads, and whether the model is built or shown.
void grown(benchmark::State& state) {
  TubeSettings settings;
  settings.polySides = 20;
  settings.polyPoints = 10;
  settings.polyRadius = 2;
  const StrandStore strands = woven(static_cast<int>(state.range(0) / 200), 19, 20);
  TubeModel model;
  if (!buildTube(strands, settings, colours(), model)) state.SkipWithError("refused");
  std::vector<std::uint32_t> pixels(500 * 400);
  ModelPicture renderer;
  PictureLook look;
  look.smooth = true;
  ViewState view;
  const bool shown = state.range(1) != 0;
  const CopyRatio ratio(state, shown ? pixels.size() * 4 : model.vertices.size() * sizeof(Vec3));
  for (auto _ : state) {
    turnByKey(view, 37);
    if (shown)
      renderer.render(model, {}, view, {}, look, {pixels.data(), 500, 400, 500});
    else
      benchmark::DoNotOptimize(buildTube(strands, settings, colours(), model));
  }
  state.SetLabel(shown ? "shown" : "built");
}
BENCHMARK(grown)->ArgsProduct({{1'000, 10'000, 100'000, 990'000}, {0, 1}})->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lorivan
