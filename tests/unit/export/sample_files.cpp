// Writes files of all model formats, and outlines for machines, into a folder, for the readers that
// tools/check_exports runs.
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "base/sink.h"
#include "export/cut_dxf.h"
#include "export/formats.h"
#include "export/grey_png.h"
#include "model3d/solid_body.h"
#include "strands/pdf_surface.h"
#include "unit/export/sample_knots.h"

namespace lorivan {
namespace {

struct Sample {
  const char* name;
  Shape shape;
  int xNo, yNo;
  TubeSettings tube;
};

const Sample kSamples[] = {
    {"flat", Shape::SquareSquare, 3, 2, {}},
    {"ring", Shape::SquareSquare, 4, 2, {.polySides = 6, .ringPercent = 100}},
    {"bracelet", Shape::Triangle, 3, 3, {.polySides = 5, .ringPercent = 75}},
    {"round", Shape::Circular, 5, 2, {.polySides = 8, .polyPoints = 6}},
    {"star", Shape::Star, 5, 3, {.polySides = 3, .polyPoints = 1, .polyRadius = 2}},
    {"high", Shape::Spiral, 5, 2, {.polySides = 4, .polyRadius = 10, .polyZF = 10}},
};

/// A format's identifier, empty for all, and a form of it.
constexpr std::pair<std::string_view, std::string_view> kForms[] = {
    {"", ""},        {"stl", "binary"}, {"stl", "relief"}, {"obj", "shared"}, {"3mf", "relief"},
    {"stl", "body"}, {"obj", "body"},   {"3mf", "body"},   {"glb", "body"}};

/// `form` is empty, or names the other form that a format has.
bool writeSample(const Sample& sample, const ExportFormat& format, std::string_view form,
                 const std::string& folder, const std::string& povTemplate) {
  const SampleKnot knot = standardKnot(sample.shape, sample.xNo, sample.yNo, sample.tube);
  ExportScene scene = knot.scene();
  scene.povTemplate = povTemplate;
  scene.binary = form == "binary";
  scene.shared = form == "shared";
  if (form == "relief") scene.relief = {100, 2};
  const auto body = form == "body" ? fuse(knot.model, {.cells = 3}) : Result<SolidBody>(SolidBody());
  if (!body) return false;
  if (form == "body") scene.solid = &body->mesh;
  const std::vector<std::uint16_t> levels(16 * 16, 30000);
  const std::string picture = greyPng({16, 16, levels});
  scene.thumbnail = picture;
  MemorySink sink;
  const Status written = format.write(scene, sink);
  if (!written) std::fprintf(stderr, "%s: %s\n", sample.name, written.error().message.c_str());
  const std::string path = folder + "/" + sample.name + "-" + std::string(format.identifier) + "-" +
                           std::string(form) + "." + std::string(format.extension);
  return written && writeFile(path, sink.bytes);
}

/// The outlines of the bands as a page and as DXF, with lines and with arcs.
bool writeCuts(const Sample& sample, const std::string& folder) {
  const SampleKnot knot = standardKnot(sample.shape, sample.xNo, sample.yNo, sample.tube);
  KnotStyle style;
  style.colours = strandColours(firstColourBoxes());
  style.edge = 2;
  const GridView view(0.8F, 5000);
  CutOptions options;
  options.width = 80;
  const CutDrawing cut = cutDrawing(knot.curve, style, view, options);
  PdfSurface page({view.width, view.height(), cut.millimetres, sample.name, cut.box});
  drawCut(page, cut);
  const std::string path = folder + "/" + sample.name;
  bool written = static_cast<bool>(writeFile(path + "-cut.pdf", page.finish()));
  for (const bool arcs : {false, true}) {
    MemorySink sink;
    const CutPlace place{cut.millimetres / view.width, cut.box.left, cut.box.bottom};
    written = written && writeCutDxf(cut, place, arcs, sink) &&
              writeFile(path + (arcs ? "-arcs.dxf" : "-cut.dxf"), sink.bytes);
  }
  return written;
}

}  // namespace
}  // namespace lorivan

/// Arguments: the folder to fill, and the POV-Ray template.
int main(int count, char** words) {
  if (count != 3) return 2;
  const auto povTemplate = lorivan::readFile(words[2], 1 << 20);
  if (!povTemplate) return 3;
  for (const auto& sample : lorivan::kSamples) {
    if (!lorivan::writeCuts(sample, words[1])) return 5;
    for (const auto& format : lorivan::exportFormats())
      for (const auto& [identifier, form] : lorivan::kForms)
        if (format.write != nullptr && (identifier.empty() || identifier == format.identifier) &&
            !lorivan::writeSample(sample, format, form, words[1], *povTemplate))
          return 5;
  }
  return 0;
}
