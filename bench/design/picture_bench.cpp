// Outlines and pictures of the largest knot of every standard shape, as the window shows it: with the first
// fields' bands, which mostly run together there, and with bands that fit.
#include <memory>

#include "copy_ratio.h"
#include "design/edits.h"
#include "design/fit.h"
#include "design/knot.h"
#include "platform/qt/platform_qt.h"
#include "strands/band_outline.h"

namespace lorivan {
namespace {

struct Largest {
  /// Arguments of the benchmark: the shape, and whether bands fit.
  explicit Largest(benchmark::State& state) {
    Document grid;
    for (const auto& [p, text] : {std::pair{Param::XNo, "20"}, {Param::YNo, "20"}, {Param::Smooth, "4"}})
      grid = withField(grid, p, text);
    grid.fields.shape = static_cast<Shape>(state.range(0));
    document = *newGrid(grid);
    if (state.range(1) != 0) document = fitBands(document);
    if (!makeKnot(document, *knot)) state.SkipWithError("no knot");
    style = knotStyle(document.fields, strandColours(document.fields.boxes));
    const auto& shape = shapeTable()[static_cast<std::size_t>(document.fields.shape)];
    state.SetLabel(std::string(shape.name) + (state.range(1) != 0 ? ", fitted" : ""));
  }
  GridView view(int width) const { return viewOf(*knot, document.fields, style, width, true); }

  Document document;
  std::unique_ptr<Knot> knot = std::make_unique<Knot>();
  KnotStyle style;
};

void largestOutlines(benchmark::State& state) {
  const Largest largest(state);
  const GridView view = largest.view(kReferenceWidth);
  OutlineOptions options;
  options.band = largest.style.innerWidth();
  options.outer = largest.style.outerWidth();
  const CopyRatio ratio(state);
  for (auto _ : state) benchmark::DoNotOptimize(bandOutlines(largest.knot->curve, view, options));
}
BENCHMARK(largestOutlines)
    ->ArgsProduct({benchmark::CreateDenseRange(0, kShapeCount - 2, 1), {0, 1}})
    ->Unit(benchmark::kMillisecond);

/// A further argument: the width in pixels.
void largestPicture(benchmark::State& state) {
  PlatformQt platform("");
  const Largest largest(state);
  const GridView view = largest.view(static_cast<int>(state.range(2)));
  const auto surface = platform.createSurface(view.width, view.height());
  PictureOptions options;
  options.showGrid = false;
  options.quick = true;
  const CopyRatio ratio(state);
  for (auto _ : state) {
    drawKnotPicture(**surface, largest.knot->graph, largest.knot->curve, largest.style, view, options);
    benchmark::DoNotOptimize((*surface)->lendPixels());
  }
}
BENCHMARK(largestPicture)
    ->ArgsProduct({benchmark::CreateDenseRange(0, kShapeCount - 2, 1), {0, 1}, {500, 4000}})
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lorivan
