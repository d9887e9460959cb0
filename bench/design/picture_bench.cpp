// Outlines and pictures of the largest knot of every standard shape, as the window shows it: with the first
// fields' bands, which mostly run together there, and with bands that fit.
#include <memory>

#include "copy_ratio.h"
#include "design/edits.h"
#include "design/fit.h"
#include "design/knot.h"
#include "design/knot_model.h"
#include "model3d/model_picture.h"
#include "model3d/rotator.h"
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
  const CopyRatio ratio(state, pictureBytes(static_cast<std::size_t>(view.width)));
  for (auto _ : state) {
    drawKnotPicture(**surface, largest.knot->graph, largest.knot->curve, largest.style, view, options);
    benchmark::DoNotOptimize((*surface)->lendPixels());
  }
}
BENCHMARK(largestPicture)
    ->ArgsProduct({benchmark::CreateDenseRange(0, kShapeCount - 2, 1), {0, 1}, {500, 4000}})
    ->Unit(benchmark::kMillisecond);

Document squares(int cells) {
  const std::string text = std::to_string(cells);
  Document document = withField(Document(), Param::XNo, text);
  return fitBands(*newGrid(withField(document, Param::YNo, text)));
}

/// How cost grows with the grid. Arguments: cells across and up, and whether the picture is made or outlines.
void grown(benchmark::State& state) {
  PlatformQt platform("");
  const Document document = squares(static_cast<int>(state.range(0)));
  const auto knot = std::make_unique<Knot>();
  if (!makeKnot(document, *knot)) state.SkipWithError("no knot");
  const KnotStyle style = knotStyle(document.fields, strandColours(document.fields.boxes));
  const GridView view = viewOf(*knot, document.fields, style, kReferenceWidth, true);
  const auto surface = platform.createSurface(view.width, view.height());
  OutlineOptions options;
  options.band = style.innerWidth();
  options.outer = style.outerWidth();
  PictureOptions picture;
  picture.showGrid = false;
  const CopyRatio ratio(state, pictureBytes(kReferenceWidth));
  for (auto _ : state) {
    if (state.range(1) == 0) {
      benchmark::DoNotOptimize(bandOutlines(knot->curve, view, options));
      continue;
    }
    drawKnotPicture(**surface, knot->graph, knot->curve, style, view, picture);
    benchmark::DoNotOptimize((*surface)->lendPixels());
  }
  state.SetLabel(state.range(1) == 0 ? "outlines" : "picture");
}
BENCHMARK(grown)->ArgsProduct({{1, 2, 5, 10, 15, 20}, {0, 1}})->Unit(benchmark::kMillisecond);

/// A step of a live edit: a key in a field of the largest knots, the fields, and so on to the pixels of the
/// window. Argument: the shape.
void edit(benchmark::State& state) {
  PlatformQt platform("");
  Document document = squares(20);
  document.fields.shape = static_cast<Shape>(state.range(0));
  KnotStages stages;
  const auto surface = platform.createSurface(kReferenceWidth, kReferenceHeight);
  PictureOptions options;
  options.showGrid = false;
  options.quick = true;
  int cells = 20;
  const CopyRatio ratio(state, pictureBytes(kReferenceWidth));
  for (auto _ : state) {
    cells = 39 - cells;
    document = *changeField(document, Param::YNo, std::to_string(cells));
    if (!stages.followGrid(document) || !stages.trace(document)) state.SkipWithError("no knot");
    const KnotStyle style = knotStyle(document.fields, strandColours(document.fields.boxes));
    const Knot& knot = stages.knot();
    drawKnotPicture(**surface, knot.graph, knot.curve, style,
                    viewOf(knot, document.fields, style, kReferenceWidth, true), options);
    benchmark::DoNotOptimize((*surface)->lendPixels());
  }
  state.SetLabel(std::string(shapeTable()[state.range(0)].name));
}
BENCHMARK(edit)->DenseRange(0, kShapeCount - 2)->Unit(benchmark::kMillisecond);

/// The smooth picture of the knot that the first fields make, from another side each time.
void firstModel(benchmark::State& state) {
  const Document document = *newGrid(Document());
  const auto knot = std::make_unique<Knot>();
  TubeModel model;
  if (!makeKnot(document, *knot) ||
      !buildModel(*knot, document.fields, strandColours(document.fields.boxes), 0, model))
    state.SkipWithError("no model");
  std::vector<std::uint32_t> pixels(kReferenceWidth * kReferenceHeight);
  ModelPicture renderer;
  PictureLook look = pictureLook(document.fields);
  look.smooth = true;
  ViewState view = viewState(document.fields);
  const CopyRatio ratio(state, pixels.size() * 4);
  for (auto _ : state) {
    turnByKey(view, 37);
    renderer.render(model, lightSettings(document.fields), view, {}, look,
                    {pixels.data(), kReferenceWidth, kReferenceHeight, kReferenceWidth});
  }
}
BENCHMARK(firstModel)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lorivan
