#include "export/formats.h"

#include <array>
#include <vector>

#include "base/numbers.h"
#include "export/writers.h"

namespace lorivan {
namespace {

constexpr std::string_view kDxf = "dxf";
constexpr bool kSolid = true;
constexpr bool kCarriesSource = true;

// clang-format off
constexpr auto kFormats = std::to_array<ExportFormat>({
    {"qzd", "qzd", "Lorivan", "Lorivan knot file: settings and grid, to be opened again", FormatKind::knotFile},
    {"svg", "svg", "SVG", "SVG drawing with real curves, in millimetres; with --animate it draws itself", FormatKind::vector, WidthOf::drawing, {}, 0, 0, nullptr,
     false, kCarriesSource},
    {"pdf", "pdf", "PDF", "PDF page with real curves, in millimetres", FormatKind::vector, WidthOf::drawing, {}, 0, 0, nullptr,
     false, kCarriesSource},
    {"png", "png", "PNG", "PNG picture of the 2-D or 3-D view; with --animate numbered frames", FormatKind::picture,
     WidthOf::nothing, {}, 0, 0, nullptr, false, kCarriesSource},
    {"bmp", "bmp", "Bitmap", "BMP picture of the 2-D or 3-D view; with --animate numbered frames", FormatKind::picture},
    {"emf", "emf", "Enhanced Metafile", "EMF drawing of the 2-D knot", FormatKind::vector, WidthOf::drawing},
    {"pov", "pov", "POV-Ray", "POV-Ray scene", FormatKind::model, WidthOf::nothing, "optPOV", 1, 0, writePov},
    {"vrml", "wrl", "(VRML) WRL", "VRML 2.0 world", FormatKind::model, WidthOf::model, "optVRML", 2, 0, writeVrml},
    {"obj", "obj", "(Wavefront) OBJ", "Wavefront OBJ model", FormatKind::model, WidthOf::model, "optOBJ", 3, 0, writeObj, kSolid},
    {"stl", "stl", "(StereoLithography) STL", "StereoLithography model", FormatKind::model, WidthOf::model, "optSTL", 5, 0,
     writeStl, kSolid},
    {"3mf", "3mf", "(3D Manufacturing) 3MF", "3MF model for printers: millimetres, a coloured object for each strand", FormatKind::model,
     WidthOf::model, {}, 0, 0, writeThreeMf, kSolid, kCarriesSource},
    {"glb", "glb", "(glTF) GLB", "glTF 2.0 model in metres, with materials", FormatKind::model, WidthOf::model, {}, 0, 0, writeGlb,
     kSolid, kCarriesSource},
    {"xyz", "xyz", "(XYZ) XYZ", "list of the model's points", FormatKind::model, WidthOf::model, "optXYZ", 7, 0, writeXyz},
    {"gemvision", "gmv", "(GemVision) gmv", "GemVision points", FormatKind::model, WidthOf::nothing, "optGemVision", 6, 4,
     writeGemVision},
    {"dxf3d", kDxf, "(Autocad) DXF", "AutoCAD 3-D faces, or 2-D polylines with 2D DXF (chkDXF2D) or outlines (--outline)", FormatKind::model, WidthOf::model,
     "optDXF", 4, 0, writeDxf3D},
    {"dxf2d", kDxf, "(Autocad) DXF", "", FormatKind::model, WidthOf::drawing, "optDXF", 4, 0, writeDxf2D},
});
// clang-format on

bool isChosen(const ExportFormat& format, DxfKind dxf) {
  return format.extension != kDxf || isFlatDxf(format) == (dxf == DxfKind::flat);
}

/// "svg, emf and flat dxf"
std::string enumerated(const std::vector<std::string>& names) {
  std::string text;
  for (std::size_t i = 0; i < names.size(); ++i)
    text += (i == 0 ? "" : i + 1 == names.size() ? " and " : ", ") + names[i];
  return text;
}

}  // namespace

bool isFlatDxf(const ExportFormat& format) { return format.write == writeDxf2D; }

bool hasBinaryForm(const ExportFormat& format) { return format.write == writeStl; }

std::span<const ExportFormat> exportFormats() { return kFormats; }

const ExportFormat* findFormat(std::string_view extension, DxfKind dxf) {
  const std::string wanted = lowerCase(extension);
  for (const ExportFormat& format : kFormats)
    if (format.extension == wanted && isChosen(format, dxf)) return &format;
  return nullptr;
}

const ExportFormat* findSavedFormat(int saveNumber, DxfKind dxf) {
  for (const ExportFormat& format : kFormats)
    if (saveNumber > 0 && format.saveNumber == saveNumber && isChosen(format, dxf)) return &format;
  return nullptr;
}

std::string formatList() {
  std::string list;
  for (const ExportFormat& format : kFormats)
    if (!format.summary.empty())
      list.append(format.extension).append("  ").append(format.summary).append("\n");
  return list;
}

std::string formatExtensions() {
  std::string all;
  for (const ExportFormat& format : kFormats) {
    if (format.summary.empty()) continue;
    if (!all.empty()) all += ", ";
    all += format.extension;
  }
  return all;
}

std::string formatsWithWidth(WidthOf width) {
  std::vector<std::string> names;
  for (const ExportFormat& format : kFormats)
    if (format.width == width)
      names.push_back((isFlatDxf(format) ? "flat " : "") + std::string(format.extension));
  return enumerated(names);
}

std::string formatsWithSolid() {
  std::vector<std::string> names;
  for (const ExportFormat& format : kFormats)
    if (format.takesSolid) names.emplace_back(format.extension);
  return enumerated(names);
}

std::string formatsWithSource() {
  std::vector<std::string> names;
  for (const ExportFormat& format : kFormats)
    if (format.carriesSource) names.emplace_back(format.extension);
  return enumerated(names);
}

}  // namespace lorivan
