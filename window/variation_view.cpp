#include "window/variation_view.h"

#include <algorithm>
#include <array>
#include <memory>

#include "strands/svg_surface.h"
#include "window/form_table.h"

namespace lorivan {
namespace {

constexpr ControlId kSheetPicture = controlId("picGrid");
constexpr int kVectorWidth = 10'000;
constexpr double kVectorMillimetres = 2 * kReferenceWidth * 25.4 / 96;

}  // namespace

void VariationView::take(std::vector<Variation> variations, const Document& document, std::string step) {
  variations_ = std::move(variations);
  step_ = std::move(step);
  ground_ = pictureOptions(document.fields).background;
  const auto own = std::ranges::find(variations_, document, &Variation::document);
  mark_ = own == variations_.end() ? 0 : static_cast<int>(own - variations_.begin());
}

SheetLayout VariationView::layoutOn(const Surface& surface) const {
  const int count = static_cast<int>(variations_.size());
  SheetLayout best;
  for (int columns = 1; columns <= count; ++columns) {
    const SheetLayout layout = sheetLayoutWithin(count, columns, surface.width(), surface.height());
    if (layout.pictureWidth > best.pictureWidth) best = layout;
  }
  return best;
}

void VariationView::drawAll(Surface& surface, const SheetLayout& layout) const {
  surface.clear(ground_);
  const auto knot = std::make_unique<Knot>();
  int place = 0;
  for (const Variation& variation : variations_) {
    const StrandColours colours = strandColours(variation.document.fields.boxes);
    if (makeKnot(variation.document, *knot))
      static_cast<void>(drawOnSheet(surface, layout, place, {platform_, variation.document, *knot, colours}));
    drawSheetCaption(surface, layout, place++, variation.caption, ground_);
  }
}

void VariationView::paint() {
  Surface& surface = window_.surface(kSheetPicture);
  drawAll(surface, layoutOn(surface));
  drawMark(inkOn(ground_));
}

Result<std::string> VariationView::svg() const {
  SvgSurface surface({kVectorWidth, GridView::heightFor(kVectorWidth), kVectorMillimetres, "Variations"});
  drawAll(surface, layoutOn(surface));
  return surface.finish();
}

void VariationView::setPlain(bool plain) { drawMark(plain ? ground_ : inkOn(ground_)); }

/// A frame in the margin round the marked one.
void VariationView::drawMark(Colour colour) {
  Surface& surface = window_.surface(kSheetPicture);
  const SheetLayout layout = layoutOn(surface);
  const PointI corner = layout.corner(mark_);
  const int out = layout.margin / 2, right = corner.x + layout.pictureWidth + out,
            bottom = corner.y + layout.pictureHeight + layout.caption + out;
  const std::array<PointI, 4> frame = {
      {{corner.x - out, corner.y - out}, {right, corner.y - out}, {right, bottom}, {corner.x - out, bottom}}};
  surface.polygonOutline(frame, {std::max(1, surface.width() / 250), colour, false});
  surface.refresh();
}

void VariationView::mark(int place) {
  if (place == mark_) return;
  drawMark(ground_);
  mark_ = place;
  drawMark(inkOn(ground_));
}

bool VariationView::markAt(int x, int y) {
  const int place = layoutOn(window_.surface(kSheetPicture)).placeAt(x, y);
  if (place < 0 || place >= static_cast<int>(variations_.size())) return false;
  mark(place);
  return true;
}

bool VariationView::moveMark(Key key) {
  const int columns = layoutOn(window_.surface(kSheetPicture)).columns;
  const int by = key == Key::left    ? -1
                 : key == Key::right ? 1
                 : key == Key::up    ? -columns
                 : key == Key::down  ? columns
                                     : 0;
  const int place = mark_ + by;
  if (by != 0 && place >= 0 && place < static_cast<int>(variations_.size())) mark(place);
  return by != 0;
}

}  // namespace lorivan
