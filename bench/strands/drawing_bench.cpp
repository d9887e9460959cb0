// The 2-D picture of a 20 x 20 knot at screen and at print size.
#include "copy_ratio.h"
#include "knot_maker.h"
#include "platform/qt/platform_qt.h"

namespace lorivan {
namespace {

void drawPicture(benchmark::State& state) {
  PlatformQt platform("");
  const MadeKnot knot = makeKnot(fieldsOf(Shape::SquareSquare, 20, 20));
  KnotStyle style;
  style.width = 2;
  style.edge = 1;
  style.colours = strandColours(firstColourBoxes());
  GridView view(0.8F, static_cast<int>(state.range(0)));
  fitView(view, *knot.graph, knot.curve, style);
  auto surface = platform.createSurface(view.width, view.height());
  PictureOptions options;
  options.showGrid = false;
  const CopyRatio ratio(state);
  for (auto _ : state) drawKnotPicture(**surface, *knot.graph, knot.curve, style, view, options);
}
BENCHMARK(drawPicture)->Arg(500)->Arg(4000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lorivan
