// What is printed, and pictures that move or stand beside the shapes' names.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "design/animated_png.h"
#include "design/contact_sheet.h"
#include "design/edits.h"
#include "design/lettering.h"
#include "design/printing.h"
#include "design/shape_pictures.h"
#include "grids.h"
#include "platform/none/none_platform.h"
#include "platform/none/recording_surface.h"
#include "png_chunks.h"

namespace lorivan {
namespace {

struct Printed {
  NonePage page{true};
  PrintedSize size;
  GridBox box;  // of all shapes, dots; its bottom is above
  bool landscape = false;
};

/// Prints a grid of squares on a sheet as the job wants it, or always on its side.
Printed printed(int x, int y, const OutputOptions& options) {
  NonePlatform platform;
  const Document document = withField(withCheck(gridOf(Shape::SquareSquare, x, y), Check::ShowGrid, true),
                                      Param::PicKnotBackColour, "3");
  const auto knot = knotOf(document);
  const StrandColours colours = strandColours(document.fields.boxes);
  const OutputJob job{platform, document, *knot, colours, options};
  Printed result;
  result.landscape = printsLandscape(job);
  const auto size = printKnot(job, result.page);
  EXPECT_TRUE(size) << size.error().message;
  result.size = *size;
  for (const DrawCall& call : result.page.drawn().calls()) {
    const bool band = call.kind == DrawKind::wideCurve;
    EXPECT_TRUE(band || call.kind == DrawKind::fillPath || call.points.empty()) << "bare paper is the ground";
    const float half = band ? call.size / 2 : 0;
    for (const PointF p : call.points)
      for (const float side : {-half, half}) result.box.add(p.x + side, p.y + side);
  }
  return result;
}

TEST(Printing, KnotsStandInTheMiddleInTheirTrueSize) {
  const Printed wide = printed(5, 2, {.millimetres = 120});
  EXPECT_NEAR(wide.box.right - wide.box.left, 480, 3);
  EXPECT_NEAR(wide.box.left + wide.box.right, wide.page.drawn().width(), 4);
  EXPECT_NEAR(wide.box.top + wide.box.bottom, wide.page.drawn().height(), 4);
  EXPECT_NEAR(wide.size.width, 120, 0.1);
  EXPECT_TRUE(wide.landscape && wide.size.whole);
  EXPECT_FALSE(printed(2, 5, {}).landscape);
  // The page is 277 by 190 mm: too wide, too high.
  EXPECT_FALSE(printed(5, 2, {.millimetres = 300}).size.whole);
  EXPECT_FALSE(printed(2, 5, {.height = 200}).size.whole);
}

TEST(Printing, WithoutASizeTheKnotFillsThePageOneWay) {
  for (const auto& [x, y] : {std::pair{5, 2}, {2, 5}}) {
    const Printed fitted = printed(x, y, {});
    const double across = (fitted.box.right - fitted.box.left) / fitted.page.drawn().width();
    const double down = (fitted.box.top - fitted.box.bottom) / fitted.page.drawn().height();
    EXPECT_NEAR(std::max(across, down), 1, 0.01) << x;
    EXPECT_TRUE(fitted.size.whole);
  }
}

TEST(Printing, TheModelIsAPictureInTheMiddle) {
  const Printed solid = printed(3, 2, {.solidView = true});
  ASSERT_EQ(solid.page.placed.size(), 1U);
  const NonePage::Placed& placed = solid.page.placed[0];
  EXPECT_EQ(placed.width * 4, placed.height * 5);
  EXPECT_EQ(placed.height, solid.page.drawn().height());
  EXPECT_NEAR(2 * placed.corner.x + placed.width, solid.page.drawn().width(), 1);
}

TEST(AnimatedPng, HasItsFramesInOrderBehindTheStillPicture) {
  NonePlatform platform;
  const auto frame = [&](int width, Colour colour) {
    auto surface = platform.createSurface(width, 8);
    (*surface)->clear(colour);
    return *platform.encodePicture(**surface, PictureFormat::png);
  };
  AnimatedPng file(frame(10, 0), true);
  EXPECT_FALSE(file.finish());
  for (const Colour colour : {0x0000FF, 0x00FF00, 0xFF0000}) EXPECT_TRUE(file.add(frame(10, colour), 40));
  EXPECT_FALSE(file.add(frame(11, 0), 40));
  for (const std::string& broken : {std::string(), std::string("GIF89a"), frame(10, 0).substr(0, 20)})
    EXPECT_FALSE(file.add(broken, 40));
  std::string names;
  std::uint32_t sequence = 0;
  for (const auto& [name, data] : pngChunks(*file.finish())) {
    const bool numbered = name == "fcTL" || name == "fdAT";
    EXPECT_TRUE(!numbered || big32(data.data()) == sequence++);
    EXPECT_TRUE(name != "acTL" || (big32(data.data()) == 3 && big32(data.data() + 4) == 0));
    names += name + ' ';
  }
  EXPECT_EQ(names, "IHDR acTL IDAT fcTL fdAT fcTL fdAT fcTL fdAT IEND ");
}

TEST(ShapePictures, EveryShapeHasOneOfItsOwnThatCanBeSeen) {
  NonePlatform platform;
  const std::vector<ItemPicture> pictures = shapePictures(platform);
  ASSERT_EQ(pictures.size(), std::size_t{kShapeCount});
  std::set<std::string> different;
  for (const ItemPicture& picture : pictures) {
    double ink = 0;
    int rows = 0;
    for (int y = 0; y < picture.height; ++y) {
      const auto row = picture.cover.begin() + static_cast<std::ptrdiff_t>(y) * picture.width;
      rows += *std::max_element(row, row + picture.width) > 128;
      for (int x = 0; x < picture.width; ++x) ink += row[x] / 255.0;
    }
    const double share = ink / static_cast<double>(picture.cover.size());
    EXPECT_TRUE(share > 0.12 && share < 0.7) << different.size() << ": " << share;
    EXPECT_GT(rows, picture.height / 2) << different.size();
    EXPECT_TRUE(different.insert({picture.cover.begin(), picture.cover.end()}).second);
  }
}

TEST(Sheet, CaptionsStayUnderTheirPictureAndAreLegible) {
  const SheetLayout layout = sheetLayout(2, 2, 600);
  for (const std::size_t length : {1U, 20U, 35U, 60U, 400U}) {
    RecordingSurface sheet(layout.width, layout.height);
    sheet.clear(0xFFFFFF);
    drawSheetCaption(sheet, layout, 1, std::string(length, 'n'), 0xFFFFFF);
    const int left = layout.corner(1).x, right = left + layout.pictureWidth;
    int strokes = 0;
    float low = 1e9F, high = 0;
    for (const DrawCall& call : sheet.calls())
      for (const PointF& at : call.points) {
        ++strokes;
        EXPECT_TRUE(at.x >= static_cast<float>(left) && at.x <= static_cast<float>(right)) << length;
        low = std::min(low, at.y);
        high = std::max(high, at.y);
      }
    EXPECT_GT(strokes, 0);
    EXPECT_GT(high - low, 5) << length << " letters of " << layout.pictureWidth << " pixels";
  }
  const double room = letteringWidth("Columns 3…");
  EXPECT_EQ(shortenedTo("Columns 3, Rows 5", room), "Columns 3…");
  EXPECT_EQ(shortenedTo("Columns 3, Rows 5", letteringWidth("Columns …")), "Columns…");
  EXPECT_EQ(shortenedTo("Größe 5", letteringWidth("Größ…")), "Größ…");
  EXPECT_EQ(shortenedTo("Columns 3", letteringWidth("Columns 3")), "Columns 3");
}

}  // namespace
}  // namespace lorivan
