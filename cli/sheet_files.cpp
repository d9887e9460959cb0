#include "cli/sheet_files.h"

#include <algorithm>

namespace lorivan {
namespace {

constexpr int kUnitsPerPixel = 10;  // of vector pictures
constexpr double kMillimetresPerPixel = 25.4 / 96;

}  // namespace

Status SheetFiles::open(Sheet& sheet) const {
  const int columns = columns_ > 0 ? columns_ : sheetColumns(count_);
  const int width = options_.width.value_or(std::min(kLongestSide, columns * kSheetPictureWidth));
  const bool vector = extensionOf(sheet.name) == "svg";
  if (width > kLongestSide) return checkPictureSize(width, 1);
  sheet.layout = sheetLayout(count_, columns, vector ? width * kUnitsPerPixel : width);
  if (vector) {
    auto made = std::make_unique<SvgSurface>(
        VectorPage{sheet.layout.width, sheet.layout.height,
                   options_.millimetres.value_or(width * kMillimetresPerPixel), "Knots"});
    sheet.vector = made.get();
    sheet.surface = std::move(made);
  } else {
    auto made = platform_.createSurface(sheet.layout.width, sheet.layout.height);
    if (!made) return made.error();
    sheet.surface = std::move(*made);
  }
  if (options_.transparent)
    sheet.surface->clearTransparent(ground_);
  else
    sheet.surface->clear(ground_);
  return {};
}

Status SheetFiles::draw(int place, const OutputJob& job) {
  if (!drawn()) {
    ground_ = pictureOptions(job.document.fields).background;
    for (Sheet& sheet : sheets_)
      if (const Status opened = open(sheet); !opened) return opened;
  }
  for (Sheet& sheet : sheets_)
    if (const Status done = drawOnSheet(*sheet.surface, sheet.layout, place, job); !done) return done;
  return {};
}

void SheetFiles::setCaption(int place, const std::string& caption) { captions_.emplace_back(place, caption); }

Result<std::string> SheetFiles::finish(std::size_t number) {
  Sheet& sheet = sheets_[number];
  for (const auto& [place, caption] : captions_)
    drawSheetCaption(*sheet.surface, sheet.layout, place, caption, ground_);
  if (const std::string fault = sheet.surface->fault(); !fault.empty()) return unwritable(fault);
  if (sheet.vector != nullptr) return sheet.vector->finish();
  const bool bitmap = extensionOf(sheet.name) == "bmp";
  return platform_.encodePicture(*sheet.surface, bitmap ? PictureFormat::bmp : PictureFormat::png);
}

}  // namespace lorivan
