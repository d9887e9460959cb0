#include "design/model_output.h"

#include <algorithm>
#include <vector>

#include "base/numbers.h"
#include "design/solid_model.h"
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

void tellPieces(const OutputJob& job, int pieces, const Contacts& contacts) {
  if (job.note && contacts.crossings > 0) job.note(piecesText(pieces, contacts));
}

/// What a model writer is told beside the model.
struct FileTexts {
  std::string source, title, thumbnail, materials, remark;
};

Result<FileTexts> textsFor(const ExportFormat& format, const OutputJob& job) {
  FileTexts texts;
  if (format.carriesSource) texts.source = sourceOf(job);
  texts.title = titleOf(job.document);
  texts.materials = fileNameOf(materialsBeside(format, job.options, job.fileName));
  if (format.write != writeThreeMf) return texts;
  auto picture = makeThumbnail(job);
  if (!picture) return picture.error();
  texts.thumbnail = std::move(*picture);
  return texts;
}

Status writeWith(const ExportFormat& format, const OutputJob& job, const FileTexts& texts,
                 const TubeModel& model, std::optional<double> millimetres, const TriangleMesh* solid,
                 Sink& sink) {
  ModelFileOptions options{millimetres, texts.source, job.progress};
  options.cornerOrigin = job.options.cornerOrigin;
  options.shared = job.options.weld;
  options.binary = job.options.binary;
  if (job.options.relief && canBeRelief(format))
    options.relief = {job.options.width.value_or(kReliefWidth), job.options.base.value_or(kReliefBase)};
  options.title = texts.title;
  options.thumbnail = texts.thumbnail;
  options.materialFile = texts.materials;
  options.solid = solid;
  options.remark = texts.remark;
  return writeModelFile(format, job.platform, job.knot, job.document.fields, model, options, sink);
}

/// Plates and roundings have millimetres where the format has, whether a width is asked for or not.
OutputOptions bodyOptions(const ExportFormat& format, OutputOptions options) {
  const bool standard = format.write == writeThreeMf || format.write == writeGlb;
  if (standard && !options.millimetres && !options.tube) options.millimetres = kStandardMillimetres;
  return options;
}

Status writeBody(const ExportFormat& format, const OutputJob& job, Sink& sink) {
  const auto made = makeBody(job.knot, job.document.fields, bodyOptions(format, job.options));
  if (!made) return made.error();
  tellPieces(job, made->body.pieces, made->contacts);
  auto texts = textsFor(format, job);
  if (!texts) return texts.error();
  texts->remark = piecesText(made->body.pieces, made->contacts);
  return writeWith(format, job, *texts, made->lines, made->millimetres, &made->body.mesh, sink);
}

/// The tubes, as thick as they are to be.
Status writeTubes(const ExportFormat& format, const OutputJob& job, Sink& sink) {
  const auto built = modelOf(job, format.sides);
  if (!built) return built.error();
  const auto texts = textsFor(format, job);
  if (!texts) return texts.error();
  const bool sized = job.options.tube && format.width == WidthOf::model;
  TubeModel own;
  if (sized) own = **built;
  const TubeModel& model = sized ? own : **built;
  const auto millimetres = sized ? sizeTubes(own, job.options) : Result(wantedWidth(format, job, model));
  if (!millimetres) return millimetres.error();
  if (job.note && format.takesSolid && !(job.options.relief && canBeRelief(format))) {
    const Verdict verdict = inspectModel(job.knot, job.document.fields, model);
    tellPieces(job, verdict.pieces, {verdict.pieces, verdict.crossings, verdict.touching});
    if (verdict.folds > 0 || verdict.overlap.found)
      job.note(tr("the model overlaps itself; fusing the strands to one body heals it"));
  }
  return writeWith(format, job, *texts, model, *millimetres, nullptr, sink);
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

bool canBeRelief(const ExportFormat& format) {
  return format.identifier == "png" || format.write == writeStl || format.write == writeThreeMf;
}

Status makeModel(const ExportFormat& format, const OutputJob& job, Sink& sink) {
  return job.options.solid && format.takesSolid ? writeBody(format, job, sink)
                                                : writeTubes(format, job, sink);
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
  const auto wanted = wantedModelWidth(job.options, **model);
  const double width = wanted.value_or(kStandardMillimetres);
  const std::string perLevel = shortestText(static_cast<float>(map->top * width / kLevels));
  const std::pair<std::string_view, std::string> texts[] = {{"Title", titleOf(job.document)},
                                                            {"Millimetres per level", perLevel}};
  GreyPicture picture{map->columns, map->rows, levels, {}, texts};
  if (wanted) picture.pixelsPerMetre = map->columns / width * 1000;
  std::string bytes = greyPng(picture);
  if (bytes.empty()) return unwritable("the picture could not be deflated");
  if (job.note)
    job.note(tr("{1} mm per level, {2} mm from 0 to 65535 at a width of {3} mm", perLevel,
                MyFormat(static_cast<float>(map->top * width)),
                shortestText(static_cast<float>(roundHalfEven(width * 1000) / 1000))));
  return withPngSource(std::move(bytes), sourceOf(job));
}

std::string materialsBeside(const ExportFormat& format, const OutputOptions& options,
                            const std::string& fileName) {
  if (!options.weld || options.solid || format.write != writeObj || fileName.empty()) return {};
  return fileName.substr(0, fileName.size() - format.extension.size()) + "mtl";
}

Status makeMaterials(const OutputJob& job, Sink& sink) {
  const auto model = modelOf(job, 0);
  if (!model) return model.error();
  return writeMaterials({.model = **model, .curve = job.knot.curve}, sink);
}

}  // namespace lorivan
