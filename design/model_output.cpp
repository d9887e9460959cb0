#include "design/model_output.h"

#include <algorithm>
#include <vector>

#include "base/numbers.h"
#include "design/source.h"
#include "export/grey_png.h"
#include "export/height_map.h"
#include "export/writers.h"

namespace lorivan {
namespace {

constexpr int kThumbnailWidth = 256;

/// A small picture of the model for lists of files.
Result<std::string> makeThumbnail(const OutputJob& job) {
  auto surface = job.platform.createSurface(kThumbnailWidth, GridView::heightFor(kThumbnailWidth));
  if (!surface) return surface.error();
  if (const Status drawn = drawSolid(job, **surface, true, false); !drawn) return drawn.error();
  if (const std::string fault = (*surface)->fault(); !fault.empty()) return unwritable(fault);
  return job.platform.encodePicture(**surface, PictureFormat::png);
}

Result<const TubeModel*> modelOf(const OutputJob& job, int sides) {
  auto model = job.model->get(job.knot, job.document.fields, job.colours, sides);
  if (model && (*model)->QuadCount == 0)
    return impossibleKnot("the knot has no strands that a model could be made of");
  return model;
}

}  // namespace

Status drawSolid(const OutputJob& job, Surface& surface, bool transparent, bool heights) {
  const auto model = job.model->get(job.knot, job.document.fields, job.colours, 0);
  if (!model) return model.error();
  PictureLook look = pictureLook(job.document.fields);
  look.transparent = transparent;
  look.heightMap = heights;
  if (transparent)
    surface.clearTransparent(look.background);
  else
    surface.clear(look.background);
  ModelPicture().render(**model, lightSettings(job.document.fields), viewState(job.document.fields), {}, look,
                        surface.lendPixels());
  return {};
}

Status makeModel(const ExportFormat& format, const OutputJob& job, Sink& sink) {
  const auto model = modelOf(job, format.sides);
  if (!model) return model.error();
  const std::string source = format.carriesSource ? sourceOf(job) : std::string();
  const std::string title = titleOf(job.document);
  const std::string materials(fileNameOf(materialsBeside(format, job.options, job.fileName)));
  std::string thumbnail;
  if (format.write == writeThreeMf) {
    auto picture = makeThumbnail(job);
    if (!picture) return picture.error();
    thumbnail = std::move(*picture);
  }
  ModelFileOptions options{wantedWidth(format, job, **model), source, job.progress};
  options.cornerOrigin = job.options.cornerOrigin;
  options.shared = job.options.weld;
  options.binary = job.options.binary;
  if (job.options.relief)
    options.relief = {job.options.width.value_or(kReliefWidth), job.options.base.value_or(kReliefBase)};
  options.title = title;
  options.thumbnail = thumbnail;
  options.materialFile = materials;
  return writeModelFile(format, job.platform, job.knot, job.document.fields, **model, options, sink);
}

/// A height map that other programs carve from: its levels have a true depth, which the file and a note tell.
Result<std::string> makeReliefPicture(const OutputJob& job) {
  constexpr double kLevels = 65535;
  const auto model = modelOf(job, 0);
  if (!model) return model.error();
  const GridSize size = heightMapSize(**model, job.options.width.value_or(kPictureWidth), SamplesAt::middles);
  const int height = static_cast<int>(std::min<long long>(size.rows, kLongestSide + 1));
  if (const Status fits = checkPictureSize(size.columns, height); !fits) return fits.error();
  const auto map = heightMapOf(**model, size.columns, SamplesAt::middles);
  if (!map) return map.error();
  std::vector<std::uint16_t> levels(map->heights.size());
  std::ranges::transform(map->heights, levels.begin(), [&](float z) {
    return static_cast<std::uint16_t>(toInt32(static_cast<double>(z) / map->top * kLevels));
  });
  const double width = job.options.millimetres.value_or(kStandardMillimetres);
  const std::string perLevel = shortestText(static_cast<float>(map->top * width / kLevels));
  const std::pair<std::string_view, std::string> texts[] = {{"Title", titleOf(job.document)},
                                                            {"Millimetres per level", perLevel}};
  GreyPicture picture{map->columns, map->rows, levels, {}, texts};
  if (job.options.millimetres) picture.pixelsPerMetre = map->columns / width * 1000;
  std::string bytes = greyPng(picture);
  if (bytes.empty()) return unwritable("the picture could not be deflated");
  if (job.note)
    job.note(perLevel + " mm per level, " + std::string(MyFormat(static_cast<float>(map->top * width))) +
             " mm from 0 to 65535 at a width of " + shortestText(static_cast<float>(width)) + " mm");
  return withPngSource(std::move(bytes), sourceOf(job));
}

std::string materialsBeside(const ExportFormat& format, const OutputOptions& options,
                            const std::string& fileName) {
  if (!options.weld || format.write != writeObj || fileName.empty()) return {};
  return fileName.substr(0, fileName.size() - format.extension.size()) + "mtl";
}

Status makeMaterials(const OutputJob& job, Sink& sink) {
  const auto model = modelOf(job, 0);
  if (!model) return model.error();
  return writeMaterials({.model = **model, .curve = job.knot.curve}, sink);
}

}  // namespace lorivan
