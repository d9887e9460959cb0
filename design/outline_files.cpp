#include "design/outline_files.h"

#include "base/sink.h"
#include "design/source.h"
#include "outlines/dxf_outline.h"
#include "outlines/svg_outline.h"

namespace lorivan {
namespace {

constexpr std::size_t kLargestDrawing = 64'000'000;

bool isOneOf(std::string_view path, std::string_view extensions) {
  const std::string extension = extensionOf(path);
  return !extension.empty() &&
         (' ' + std::string(extensions) + ' ').find(' ' + extension + ' ') != std::string::npos;
}

Result<FittedOutline> readPicture(Platform& platform, const std::string& path) {
  const auto picture = platform.loadPicture(path, kLargestLoaded.width, kLargestLoaded.height);
  if (!picture) return picture.error();
  auto traced = traceOutline((*picture)->lendPixels());
  if (!traced) return traced.error();
  const GridBox box = boxOf(traced->loops);
  return fitTraced(std::move(*traced), box);
}

}  // namespace

bool isDrawing(std::string_view path) { return isOneOf(path, kDrawingExtensions); }

bool isPicture(std::string_view path) { return isOneOf(path, kPictureExtensions); }

bool isOutlineFile(const std::string& path) {
  return (isDrawing(path) || isPicture(path)) && !holdsKnot(path);
}

Result<FittedOutline> readOutlineFile(Platform& platform, const std::string& path) {
  if (isPicture(path)) return readPicture(platform, path);
  const auto text = readFile(path, kLargestDrawing);
  if (!text) return text.error();
  const auto drawing = extensionOf(path) == "dxf" ? readDxfOutline(*text) : readSvgOutline(*text);
  if (!drawing) return drawing.error();
  return fitDrawing(*drawing);
}

std::string notesOf(const FittedOutline& fitted) {
  std::string all;
  for (const std::string& note : fitted.notes) all += "; " + note;
  return all;
}

}  // namespace lorivan
