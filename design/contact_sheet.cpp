#include "design/contact_sheet.h"
#include "design/model_output.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "design/lettering.h"
#include "design/placed_surface.h"

namespace lorivan {
namespace {

constexpr double kMargin = 0.06, kCaption = 0.13, kCaptionCapitals = 0.055;  // parts of a picture's width
constexpr double kLeastCapitals = 0.033;                                     // smaller ones are hard to read
constexpr double kSheetShape = std::numbers::sqrt2;                          // width to height
constexpr double kCaptionShare = 0.94;                                       // of its width, for a long one
constexpr int kLayoutRounds = 3;

/// Width and height of a whole sheet whose pictures are 1 wide.
double widthInPictures(int columns) { return columns + (columns + 1) * kMargin; }
double heightInPictures(int rows) { return rows * (0.8 + kCaption) + (rows + 1) * kMargin; }

int rowsOf(int count, int columns) { return std::max(1, (count + columns - 1) / columns); }

SheetLayout layoutOf(int count, int columns, double picture) {
  SheetLayout layout;
  layout.columns = columns;
  layout.rows = rowsOf(count, columns);
  layout.pictureWidth = std::max(1, static_cast<int>(picture));
  layout.pictureHeight = GridView::heightFor(layout.pictureWidth);
  layout.caption = static_cast<int>(std::lround(kCaption * layout.pictureWidth));
  layout.margin = static_cast<int>(std::lround(kMargin * layout.pictureWidth));
  return layout;
}

int cellsHeight(const SheetLayout& layout) {
  return layout.rows * (layout.pictureHeight + layout.caption + layout.margin) - layout.margin;
}

/// The cells in the middle of a picture of this size; what rounding leaves over lies at its sides.
SheetLayout within(SheetLayout layout, int width, int height) {
  const int cells = layout.columns * (layout.pictureWidth + layout.margin) - layout.margin;
  layout.width = width;
  layout.height = height;
  layout.left = (width - cells) / 2;
  layout.top = (height - cellsHeight(layout)) / 2;
  return layout;
}

/// Enlarges the view, and the bands with it, until the knot fills the picture.
void enlarge(GridView& view, KnotStyle& style, const KnotCurve& curve) {
  const KnotStyle before = style;
  const double zoom = view.zoom;
  for (int round = 0; round < kLayoutRounds; ++round) {
    fillView(view, curve, style);
    const auto factor = static_cast<float>(zoom / view.zoom);
    style.width = before.width * factor;
    style.edge = before.edge * factor;
  }
}

Status drawFlat(Surface& surface, const OutputJob& job) {
  KnotStyle style = knotStyle(job.document.fields, job.colours);
  GridView view = viewOf(job.knot, job.document.fields, style, surface.width(), true);
  enlarge(view, style, job.knot.curve);
  PictureOptions options = pictureOptions(job.document.fields);
  options.showGrid = false;
  drawKnotPicture(surface, job.knot.graph, job.knot.curve, style, view, options);
  return {};
}

}  // namespace

Colour inkOn(Colour ground) {
  const int light = 299 * redOf(ground) + 587 * greenOf(ground) + 114 * blueOf(ground);
  return light > 128'000 ? 0 : 0xFFFFFF;
}

PointI SheetLayout::corner(int place) const {
  return {left + place % columns * (pictureWidth + margin),
          top + place / columns * (pictureHeight + caption + margin)};
}

int SheetLayout::placeAt(int x, int y) const {
  const int across = pictureWidth + margin, down = pictureHeight + caption + margin;
  if (x < left || y < top || (x - left) % across >= pictureWidth || (y - top) % down >= down - margin)
    return -1;
  const int column = (x - left) / across, row = (y - top) / down;
  return column < columns && row < rows ? row * columns + column : -1;
}

int sheetColumns(int count) {
  int best = 1;
  double least = HUGE_VAL;
  for (int columns = 1; columns <= count; ++columns) {
    const int rows = rowsOf(count, columns);
    const double shape = widthInPictures(columns) / heightInPictures(rows);
    const double empty = static_cast<double>(rows * columns - count) / count;
    const double cost = std::abs(std::log(shape / kSheetShape)) + empty;
    if (cost < least) best = columns;
    least = std::min(least, cost);
  }
  return best;
}

SheetLayout sheetLayout(int count, int columns, int width) {
  SheetLayout layout = layoutOf(count, columns, width / widthInPictures(columns));
  return within(layout, width, layout.margin + cellsHeight(layout) + layout.margin);
}

SheetLayout sheetLayoutWithin(int count, int columns, int width, int height) {
  const double picture =
      std::min(width / widthInPictures(columns), height / heightInPictures(rowsOf(count, columns)));
  return within(layoutOf(count, columns, picture), width, height);
}

void drawSheetCaption(Surface& sheet, const SheetLayout& layout, int place, const std::string& caption,
                      Colour ground) {
  const PointI corner = layout.corner(place);
  const double room = layout.pictureWidth;
  const std::string shown = shortenedTo(caption, kCaptionShare / kLeastCapitals);
  const double width = letteringWidth(shown);
  const double capitals = std::min(kCaptionCapitals * room, width > 0 ? kCaptionShare * room / width : room);
  drawLettering(sheet, shown,
                {static_cast<float>(corner.x + (room - capitals * width) / 2),
                 static_cast<float>(corner.y + layout.pictureHeight + (layout.caption + capitals) / 2)},
                capitals, inkOn(ground));
}

Status drawOnSheet(Surface& sheet, const SheetLayout& layout, int place, const OutputJob& job) {
  PlacedSurface surface(sheet, layout.corner(place), layout.pictureWidth, layout.pictureHeight);
  return job.options.solidView && sheet.isRaster()
             ? drawSolid(job, surface, false, job.document.fields.check(Check::HeightMap))
             : drawFlat(surface, job);
}

}  // namespace lorivan
