// The 2-D picture of a 20 x 20 knot at screen and at print size.
#include "copy_ratio.h"
#include "knot_maker.h"
#include "platform/qt/platform_qt.h"

namespace lorivan {
namespace {

/// Arguments: the shape, the width in pixels, and whether joints are classic.
void drawPicture(benchmark::State& state) {
  PlatformQt platform("");
  const MadeKnot knot = makeKnot(fieldsOf(static_cast<Shape>(state.range(0)), 20, 20));
  KnotStyle style;
  style.width = 2;
  style.edge = 1;
  style.colours = strandColours(firstColourBoxes());
  GridView view(0.8F, static_cast<int>(state.range(1)));
  fitView(view, *knot.graph, knot.curve, style);
  auto surface = platform.createSurface(view.width, view.height());
  PictureOptions options;
  options.showGrid = false;
  options.classic = state.range(2) != 0;
  const CopyRatio ratio(state, pictureBytes(static_cast<std::size_t>(state.range(1))));
  for (auto _ : state) {
    drawKnotPicture(**surface, *knot.graph, knot.curve, style, view, options);
    benchmark::DoNotOptimize((*surface)->lendPixels());
  }
}
BENCHMARK(drawPicture)->ArgsProduct({{0, 3, 4, 9}, {500, 4000}, {0, 1}})->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lorivan
