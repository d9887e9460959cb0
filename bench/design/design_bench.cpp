// Sheets of twelve variations from fields to pixels, one of many random knots as SVG, and knots of a size.
#include <memory>

#include "copy_ratio.h"
#include "design/contact_sheet.h"
#include "design/edits.h"
#include "design/fit_size.h"
#include "design/random_knot.h"
#include "design/variations.h"
#include "platform/qt/platform_qt.h"

namespace lorivan {
namespace {

Document gridOf(int cells) {
  const std::string text = std::to_string(cells);
  return *newGrid(withField(withField(Document(), Param::XNo, text), Param::YNo, text));
}

void drawSheet(Platform& platform, Surface& surface, const std::vector<Variation>& variations) {
  const SheetLayout layout = sheetLayoutWithin(kVariations, 4, surface.width(), surface.height());
  const auto knot = std::make_unique<Knot>();
  surface.clear(0xFFFFFF);
  for (int i = 0; i < static_cast<int>(variations.size()); ++i) {
    const Document& document = variations[i].document;
    const StrandColours colours = strandColours(document.fields.boxes);
    if (makeKnot(document, *knot))
      benchmark::DoNotOptimize(drawOnSheet(surface, layout, i, {platform, document, *knot, colours}));
  }
}

/// Argument: the sheet's width in pixels.
void randomSheet(benchmark::State& state) {
  PlatformQt platform("");
  const auto surface = platform.createSurface(static_cast<int>(state.range(0)),
                                              GridView::heightFor(static_cast<int>(state.range(0))));
  const Document document = gridOf(2);
  const Rnd random = seededRandom(1);
  const CopyRatio ratio(state);
  for (auto _ : state) drawSheet(platform, **surface, randomVariations(document, random));
}
BENCHMARK(randomSheet)->Arg(500)->Arg(1600)->Unit(benchmark::kMillisecond);

void sheetAlongSwish(benchmark::State& state) {
  PlatformQt platform("");
  const auto surface = platform.createSurface(1000, 800);
  const Document document = gridOf(static_cast<int>(state.range(0)));
  const CopyRatio ratio(state);
  for (auto _ : state) drawSheet(platform, **surface, variationsAlong(document, Param::Swish));
}
BENCHMARK(sheetAlongSwish)->Arg(2)->Arg(20)->Unit(benchmark::kMillisecond);

/// From a seed to the bytes of its SVG.
void randomSvg(benchmark::State& state) {
  PlatformQt platform("");
  const auto knot = std::make_unique<Knot>();
  std::uint64_t seed = 0;
  const CopyRatio ratio(state);
  for (auto _ : state) {
    const Rnd random = seededRandom(++seed);
    const Document document = *randomKnot(Document(), random);
    if (!makeKnot(document, *knot)) continue;
    const StrandColours colours = strandColours(document.fields.boxes);
    MemorySink sink;
    benchmark::DoNotOptimize(
        makeOutput(*findFormat("svg", DxfKind::faces), {platform, document, *knot, colours}, sink));
  }
}
BENCHMARK(randomSvg)->Unit(benchmark::kMillisecond);

void sizes(benchmark::State& state) {
  const Document document = gridOf(4);
  const CopyRatio ratio(state);
  for (auto _ : state)
    benchmark::DoNotOptimize(state.range(0) == 0 ? fitFrame(document, 200, 120) : fitRing(document, 18.2, 6));
}
BENCHMARK(sizes)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lorivan
