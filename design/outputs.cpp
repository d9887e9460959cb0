#include "design/outputs.h"

#include <array>

#include "design/model_output.h"
#include "design/solid_model.h"
#include "design/source.h"
#include "design/vector_outputs.h"
#include "strands/band_paths.h"

namespace lorivan {
namespace {

constexpr int kMetafileWidth = 10000;  // fine enough to look smooth, still within 16 bits

/// With the pass counts that the trace left behind.
std::string textOf(const OutputJob& job) { return documentText(withPasses(job.document, job.knot.graph)); }

Result<std::string> makeKnotFile(const OutputJob& job) { return textOf(job); }

/// Twice the reference picture's size where no size is asked for.
Result<std::string> makeEmf(const OutputJob& job) {
  const KnotStyle style = knotStyle(job.document.fields, job.colours);
  const GridView view = viewOf(job.knot, job.document.fields, style, kMetafileWidth, true);
  const auto pictureWidth = pictureMillimetres(job.options, view, strokedBox(job.knot.curve, style, view),
                                               2 * kReferenceMillimetres);
  if (!pictureWidth) return pictureWidth.error();
  auto metafile = job.platform.createMetafile({view.width, view.height(), *pictureWidth});
  if (!metafile) return metafile.error();
  strokeBands(**metafile, job.knot.curve, style, view);
  return (*metafile)->finish();
}

void drawFlat(const OutputJob& job, Surface& surface, bool transparent) {
  const KnotStyle style = knotStyle(job.document.fields, job.colours);
  const GridView view = viewOf(job.knot, job.document.fields, style, surface.width(), true);
  PictureOptions options = optionsOf(job);
  options.transparent = transparent;
  drawKnotPicture(surface, job.knot.graph, job.knot.curve, style, view, options);
}

/// Height maps are twice as wide as other pictures where no width is asked for.
Result<std::string> makePicture(const OutputJob& job, PictureFormat format) {
  if (job.options.relief && format == PictureFormat::png) return makeReliefPicture(job);
  const bool transparent = job.options.transparent && format == PictureFormat::png;
  const bool heights = job.options.solidView && job.document.fields.check(Check::HeightMap);
  const int width = job.options.width.value_or(heights ? 2 * kPictureWidth : kPictureWidth);
  auto surface = job.platform.createSurface(width, GridView::heightFor(width));
  if (!surface) return surface.error();
  if (!job.options.solidView)
    drawFlat(job, **surface, transparent);
  else if (const Status drawn = drawSolid(job, **surface, transparent, heights); !drawn)
    return drawn.error();
  if (const std::string fault = (*surface)->fault(); !fault.empty()) return unwritable(fault);
  auto bytes = job.platform.encodePicture(**surface, format);
  if (!bytes || format != PictureFormat::png) return bytes;
  return withPngSource(std::move(*bytes), sourceOf(job));
}

/// The formats that are made here and not by a model writer.
struct Maker {
  std::string_view identifier;
  Result<std::string> (*make)(const OutputJob& job);
};

constexpr std::array<Maker, 6> kMakers = {{
    {"qzd", makeKnotFile},
    {"svg", makeSvg},
    {"pdf", makePdf},
    {"png", [](const OutputJob& job) { return makePicture(job, PictureFormat::png); }},
    {"bmp", [](const OutputJob& job) { return makePicture(job, PictureFormat::bmp); }},
    {"emf", makeEmf},
}};

}  // namespace

std::string sourceOf(const OutputJob& job) { return sourceMark(textOf(job)); }

const ExportFormat* outputFormat(const std::string& fileName, const KnotFields& fields,
                                 const OutputOptions& options) {
  const bool flat = fields.check(Check::DXF2D) || asksForCut(options);
  return findFormat(extensionOf(fileName), flat ? DxfKind::flat : DxfKind::faces);
}

bool canBeTransparent(const ExportFormat& format) {
  return format.identifier == "svg" || format.identifier == "pdf" || format.identifier == "png";
}

std::optional<double> wantedWidth(const ExportFormat& format, const OutputJob& job, const TubeModel& model) {
  if (!job.options.height || format.width != WidthOf::drawing) return wantedModelWidth(job.options, model);
  const KnotStyle style = knotStyle(job.document.fields, job.colours);
  const GridView view = viewOf(job.knot, job.document.fields, style, kReferenceWidth, true);
  const PictureBox box = drawnBox(job.knot.curve, style, view, false);
  const double width = box.right - box.left;
  return *wantedScale(job.options, width, box.bottom - box.top) * width;
}

std::string titleOf(const Document& document) {
  return "Knot, " + std::string(shapeTable()[static_cast<std::size_t>(document.fields.shape)].name);
}

PictureOptions optionsOf(const OutputJob& job) {
  PictureOptions options = pictureOptions(job.document.fields);
  options.transparent = job.options.transparent;
  return options;
}

Status makeOutput(const ExportFormat& format, const OutputJob& job, Sink& sink) {
  if (asksForCut(job.options) && isFlatDxf(format)) return makeCutDxf(job, sink);
  if (format.kind == FormatKind::model) return makeModel(format, job, sink);
  for (const Maker& maker : kMakers) {
    if (maker.identifier != format.identifier) continue;
    const auto bytes = maker.make(job);
    if (!bytes) return bytes.error();
    sink.write(*bytes);
    return {};
  }
  return unwritable("the format {1} has no writer", format.identifier);
}

}  // namespace lorivan
