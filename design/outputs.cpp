#include "design/outputs.h"

#include <array>

#include "design/document_text.h"
#include "design/solid_model.h"
#include "strands/animated_svg.h"
#include "strands/band_paths.h"
#include "strands/svg_surface.h"

namespace lorivan {
namespace {

constexpr int kVectorWidth = 5000;     // units of a vector picture, ten to a reference pixel
constexpr int kMetafileWidth = 10000;  // fine enough to look smooth, still within 16 bits
constexpr double kReferenceMillimetres = kReferenceWidth * 25.4 / 96;

PictureOptions optionsOf(const OutputJob& job) {
  PictureOptions options = pictureOptions(job.document.fields);
  options.transparent = job.options.transparent;
  return options;
}

/// With the pass counts that the trace left behind.
Result<std::string> makeKnotFile(const OutputJob& job) {
  return documentText(withPasses(job.document, job.knot.graph));
}

/// Width of the whole picture that gives the drawn knot the width asked for; `standard` when none was.
Result<double> pictureMillimetres(const OutputJob& job, const KnotStyle& style, const GridView& view,
                                  double standard) {
  if (!job.options.millimetres) return standard;
  const double knot = knotWidth(job.knot.curve, style, view);
  if (knot <= 0) return impossibleKnot("a knot without strands has no width to scale");
  return *job.options.millimetres * view.width / knot;
}

Result<std::string> makeSvg(const OutputJob& job) {
  const KnotStyle style = knotStyle(job.document.fields, job.colours);
  const GridView view = viewOf(job.knot, job.document.fields, style, kVectorWidth, true);
  const auto pictureWidth = pictureMillimetres(job, style, view, kReferenceMillimetres);
  if (!pictureWidth) return pictureWidth.error();
  const auto& shape = shapeTable()[static_cast<std::size_t>(job.document.fields.shape)];
  const std::string title = "Knot, " + std::string(shape.name);
  if (job.options.animate)
    return animatedSvg(
        job.knot.graph, job.knot.curve, style, view,
        {optionsOf(job), *pictureWidth, title, frameDelay(job.document.fields.number(Param::Animate)),
         job.document.fields.check(Check::Loop)});
  SvgSurface surface(view.width, view.height(), *pictureWidth, title);
  drawKnotPicture(surface, job.knot.graph, job.knot.curve, style, view, optionsOf(job));
  return surface.finish();
}

/// Twice the reference picture's size where no size is asked for.
Result<std::string> makeEmf(const OutputJob& job) {
  const KnotStyle style = knotStyle(job.document.fields, job.colours);
  const GridView view = viewOf(job.knot, job.document.fields, style, kMetafileWidth, true);
  const auto pictureWidth = pictureMillimetres(job, style, view, 2 * kReferenceMillimetres);
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

Status drawSolid(const OutputJob& job, Surface& surface, bool transparent) {
  const auto model = job.model->get(job.knot, job.document.fields, job.colours, 0);
  if (!model) return model.error();
  const Colour background = optionsOf(job).background;
  if (transparent)
    surface.clearTransparent(background);
  else
    surface.clear(background);
  Renderer().render(**model, lightSettings(job.document.fields), viewState(job.document.fields), background,
                    job.document.fields.check(Check::HeightMap), surface.lendPixels(), transparent);
  return {};
}

/// Height maps are twice as wide as other pictures where no width is asked for.
Result<std::string> makePicture(const OutputJob& job, PictureFormat format) {
  const bool transparent = job.options.transparent && format == PictureFormat::png;
  const bool heights = job.options.solidView && job.document.fields.check(Check::HeightMap);
  const int width = job.options.width.value_or(heights ? 2 * kPictureWidth : kPictureWidth);
  auto surface = job.platform.createSurface(width, GridView::heightFor(width));
  if (!surface) return surface.error();
  if (!job.options.solidView)
    drawFlat(job, **surface, transparent);
  else if (const Status drawn = drawSolid(job, **surface, transparent); !drawn)
    return drawn.error();
  if (const std::string fault = (*surface)->fault(); !fault.empty()) return unwritable(fault);
  return job.platform.encodePicture(**surface, format);
}

void tellPieces(const OutputJob& job, int pieces, const Contacts& contacts) {
  if (job.note && contacts.crossings > 0) job.note(piecesText(pieces, contacts));
}

Status writeBody(const ExportFormat& format, const OutputJob& job, Sink& sink) {
  const auto made = makeBody(job.knot, job.document.fields, job.options);
  if (!made) return made.error();
  tellPieces(job, made->body.pieces, made->contacts);
  return writeModelFile(
      format, job.platform, job.knot, job.document.fields, made->lines,
      {made->millimetres, job.progress, &made->body.mesh, piecesText(made->body.pieces, made->contacts)},
      sink);
}

/// The tubes, as thick as they are to be.
Status writeTubes(const ExportFormat& format, const OutputJob& job, Sink& sink) {
  const auto built = job.model->get(job.knot, job.document.fields, job.colours, format.sides);
  if (!built) return built.error();
  if ((*built)->QuadCount == 0)
    return impossibleKnot("the knot has no strands that a model could be made of");
  const bool sized = job.options.tube && format.width == WidthOf::model;
  TubeModel own;
  if (sized) own = **built;
  const TubeModel& model = sized ? own : **built;
  const auto millimetres = sized ? sizeTubes(own, job.options) : Result(job.options.millimetres);
  if (!millimetres) return millimetres.error();
  if (format.takesSolid) {
    const Contacts contacts = modelContacts(job.knot, job.document.fields, model);
    tellPieces(job, contacts.pieces, contacts);
  }
  return writeModelFile(format, job.platform, job.knot, job.document.fields, model,
                        {*millimetres, job.progress}, sink);
}

/// The formats that are made here and not by a model writer.
struct Maker {
  std::string_view identifier;
  Result<std::string> (*make)(const OutputJob& job);
};

constexpr std::array<Maker, 5> kMakers = {{
    {"qzd", makeKnotFile},
    {"svg", makeSvg},
    {"png", [](const OutputJob& job) { return makePicture(job, PictureFormat::png); }},
    {"bmp", [](const OutputJob& job) { return makePicture(job, PictureFormat::bmp); }},
    {"emf", makeEmf},
}};

}  // namespace

const ExportFormat* outputFormat(const std::string& fileName, const KnotFields& fields) {
  return findFormat(extensionOf(fileName), fields.check(Check::DXF2D) ? DxfKind::flat : DxfKind::faces);
}

Status makeOutput(const ExportFormat& format, const OutputJob& job, Sink& sink) {
  if (format.kind == FormatKind::model)
    return job.options.solid && format.takesSolid ? writeBody(format, job, sink)
                                                  : writeTubes(format, job, sink);
  for (const Maker& maker : kMakers) {
    if (maker.identifier != format.identifier) continue;
    const auto bytes = maker.make(job);
    if (!bytes) return bytes.error();
    sink.write(*bytes);
    return {};
  }
  return unwritable("the format " + std::string(format.identifier) + " has no writer");
}

}  // namespace lorivan
