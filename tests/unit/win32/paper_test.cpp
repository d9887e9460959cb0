// The page that printers get, drawn on a context that can be looked at.
#include <gtest/gtest.h>

#include <vector>

#include "platform/win32/handles.h"
#include "platform/win32/platform_win32.h"
#include "platform/win32/printing.h"
#include "unit/platform_contract/box_path.h"
#include "unit/win32/gui_objects.h"

namespace lorivan::win32 {
namespace {

constexpr Colour kRed = 0x0000FF;

/// A context that a test can look at, as a printer would be drawn on.
struct SmallPaper {
  SmallPaper() : bitmap(CreateBitmap(200, 160, 1, 32, nullptr)), selected(context.get(), bitmap.get()) {
    PatBlt(context.get(), 0, 0, 200, 160, WHITENESS);
  }
  OwnedMemoryContext context{CreateCompatibleDC(nullptr)};
  OwnedBitmap bitmap;
  Selection selected;
};

TEST(PaperTest, ShapesKeepTheirWindingAndNoObjectIsLeftOnAnyWay) {
  PlatformWin32 platform;
  const auto picture = std::move(*platform.createSurface(10, 8));
  picture->clear(0x00FF00);
  const std::vector<std::vector<PointF>> frame = {contract::boxPath(20, 20, 100, 100),
                                                  contract::boxPath(80, 40, 40, 80)};
  const std::vector<PointF> band = {{120, 20}, {140, 20}, {160, 20}, {180, 20}};
  const PointI corners[] = {{120, 60}, {180, 60}, {180, 80}};
  const SmallPaper paper;
  PaperPage page(paper.context.get());
  Surface& surface = page.surface();
  const auto drawAll = [&] {
    surface.clear(0xFFFFFF);
    surface.fillPath(frame, kRed);
    surface.wideCurve({band, 10, kRed, CapStyle::flat});
    surface.fillPolygon(corners, kRed);
    surface.polygonOutline(corners, {3, 0, true});
    surface.polyline(corners, {3, 0});
    surface.segment({10, 150}, {190, 150}, {3, kRed});
    surface.circle({30, 130}, 8, {1, kRed});
    surface.dot({60, 130}, 9, kRed);
    EXPECT_TRUE(page.place(*picture, {100, 110}, 50, 30));
    EXPECT_EQ(surface.fault(), "");
  };
  drawAll();
  const auto at = [&](int x, int y) { return GetPixel(paper.context.get(), x, y); };
  EXPECT_TRUE(at(30, 60) == kRed && at(90, 90) == kRed && at(60, 60) == 0xFFFFFF) << "a hole";
  EXPECT_TRUE(at(150, 17) == kRed && at(150, 23) == kRed && at(150, 30) == 0xFFFFFF);
  EXPECT_TRUE(at(60, 130) == kRed && at(30, 130) == 0xFFFFFF && at(125, 125) == 0x00FF00);
  const ObjectCounts before = countGuiObjects();
  for (int i = 0; i < 20; ++i) drawAll();
  surface.fillPath(std::vector<std::vector<PointF>>{{{0, 0}}}, kRed);  // nothing to draw
  EXPECT_EQ(surface.fault(), "");
  EXPECT_EQ(countGuiObjects().graphics, before.graphics);
}

}  // namespace
}  // namespace lorivan::win32
