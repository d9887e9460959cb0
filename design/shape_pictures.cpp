#include "design/shape_pictures.h"

#include <algorithm>
#include <array>

#include "design/contact_sheet.h"
#include "design/edits.h"
#include "design/fit.h"

namespace lorivan {
namespace {

constexpr int kWidth = 60, kHeight = 48;  // several pixels for each one of a list
constexpr Colour kBand = 0xFFFFFF, kGround = 0;
constexpr BandShares kBoldBands{0.62F, 0.13F};

/// Few cells: the shape is to be seen where there is room for a letter or two.
struct Cells {
  const char *across, *down;
};
constexpr Cells cellsOf(Shape shape) {
  switch (shape) {
    case Shape::Triangle:
      return {"3", "3"};
    case Shape::Hexagonal:
    case Shape::Octagonal:
    case Shape::RegularHexagonal:
      return {"2", "2"};
    case Shape::Circular:
      return {"4", "1"};
    case Shape::Cross:
      return {"3", "1"};
    case Shape::Star:
      return {"5", "2"};
    case Shape::Spiral:
      return {"6", "2"};
    case Shape::SquareSquare:
    case Shape::SquareTriangle:
    case Shape::Diamond1:
    case Shape::Diamond2:
    case Shape::Custom:
      break;
  }
  return {"3", "2"};
}

/// White bands on black whose edges are black, too: its brightness is the coverage.
Result<Document> smallKnot(Shape shape) {
  const Cells cells = cellsOf(shape);
  Document document = withField(Document(), Param::XNo, cells.across);
  document = withField(withField(document, Param::YNo, cells.down), Param::CrossOffset, "0");
  auto made = chooseShape(document, shape);
  if (!made) return made;
  made->fields.boxes.fill(kBand);
  made->fields.boxes[kColourBoxes - 1] = kGround;
  return fitBands(*made, kBoldBands);
}

ItemPicture coverOf(const Surface& surface) {
  ItemPicture picture{surface.width(), surface.height(), {}};
  for (int y = 0; y < picture.height; ++y)
    for (int x = 0; x < picture.width; ++x)
      picture.cover.push_back(static_cast<std::uint8_t>(greenOf(surface.pixel({x, y}))));
  return picture;
}

/// A hand-drawn outline, for the shape that is one's own.
void drawOutline(Surface& surface) {
  const std::array<PointF, 13> loop = {{{12, 37},
                                        {3, 27},
                                        {8, 11},
                                        {20, 10},
                                        {30, 8},
                                        {29, 18},
                                        {40, 13},
                                        {53, 7},
                                        {58, 22},
                                        {50, 31},
                                        {42, 43},
                                        {22, 47},
                                        {12, 37}}};
  surface.wideCurve({loop, 4, kBand, CapStyle::round});
  for (const PointI corner : {PointI{12, 37}, {20, 10}, {40, 13}, {50, 31}}) surface.dot(corner, 9, kBand);
}

}  // namespace

std::vector<ItemPicture> shapePictures(Platform& platform) {
  std::vector<ItemPicture> pictures(kShapeCount);
  const auto surface = platform.createSurface(kWidth, kHeight);
  if (!surface) return pictures;
  SheetLayout whole;
  whole.pictureWidth = kWidth;
  whole.pictureHeight = kHeight;
  const auto knot = std::make_unique<Knot>();
  for (int i = 0; i < kShapeCount; ++i) {
    const auto shape = static_cast<Shape>(i);
    (*surface)->clear(kGround);
    if (shape == Shape::Custom) {
      drawOutline(**surface);
    } else {
      const auto document = smallKnot(shape);
      if (!document || !makeKnot(*document, *knot)) continue;
      const StrandColours colours = strandColours(document->fields.boxes);
      if (!drawOnSheet(**surface, whole, 0, {platform, *document, *knot, colours})) continue;
    }
    pictures[i] = coverOf(**surface);
  }
  return pictures;
}

}  // namespace lorivan
