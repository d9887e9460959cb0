#include "app/outputs.h"

#include <array>

#include "app/knot_file.h"
#include "strands/svg_surface.h"

namespace lorivan {
namespace {

constexpr int kVectorWidth = 5000;  // units of a vector picture, ten to a reference pixel
constexpr double kReferenceMillimetres = kReferenceWidth * 25.4 / 96;

Result<std::string> makeKnotFile(const OutputJob& job) { return writeKnotFile(job.fields, job.knot.graph); }

PictureOptions optionsOf(const OutputJob& job) {
  PictureOptions options = pictureOptions(job.fields);
  options.transparent = job.transparent;
  return options;
}

Result<std::string> makeSvg(const OutputJob& job) {
  const KnotStyle style = knotStyle(job.fields, job.colours);
  const GridView view = viewOf(job.knot, job.fields, style, kVectorWidth, true);
  double pictureWidth = kReferenceMillimetres;
  if (job.millimetres) {
    const double knot = knotWidth(job.knot.curve, style, view);
    if (knot <= 0) return Error{"a knot without strands has no width to scale"};
    pictureWidth = *job.millimetres * view.width / knot;
  }
  const auto& shape = shapeTable()[static_cast<std::size_t>(job.fields.shape)];
  SvgSurface surface(view.width, view.height(), pictureWidth, "Knot, " + std::string(shape.name));
  drawKnotPicture(surface, job.knot.graph, job.knot.curve, style, view, optionsOf(job));
  return surface.finish();
}

Result<std::string> makePicture(const OutputJob& job, PictureFormat format) {
  const KnotStyle style = knotStyle(job.fields, job.colours);
  const GridView view = viewOf(job.knot, job.fields, style, job.width, true);
  auto surface = job.platform.createSurface(view.width, view.height());
  if (!surface) return surface.error();
  PictureOptions options = optionsOf(job);
  if (format == PictureFormat::bmp) options.transparent = false;
  drawKnotPicture(**surface, job.knot.graph, job.knot.curve, style, view, options);
  if (const std::string fault = (*surface)->fault(); !fault.empty()) return Error{fault};
  return job.platform.encodePicture(**surface, format);
}

constexpr std::array<OutputFormat, 4> kOutputs = {{
    {"qzd", "Lorivan knot file: settings and grid, to be opened again", makeKnotFile},
    {"svg", "SVG drawing with real curves, in millimetres", makeSvg},
    {"png", "PNG picture", [](const OutputJob& job) { return makePicture(job, PictureFormat::png); }},
    {"bmp", "BMP picture", [](const OutputJob& job) { return makePicture(job, PictureFormat::bmp); }},
}};

}  // namespace

std::span<const OutputFormat> outputTable() { return kOutputs; }

const OutputFormat* findOutput(std::string_view extension) {
  for (const OutputFormat& format : kOutputs)
    if (format.extension == extension) return &format;
  return nullptr;
}

std::string outputExtensions() {
  std::string all;
  for (const OutputFormat& format : kOutputs)
    all += (all.empty() ? "" : ", ") + std::string(format.extension);
  return all;
}

}  // namespace lorivan
