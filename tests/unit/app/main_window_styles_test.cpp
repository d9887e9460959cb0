// The Style menu: previews that change nothing, and styles that stay; the knot of a first start.
#include "app/presets.h"
#include "main_window_driver.h"

namespace lorivan {
namespace {

TEST_F(MainWindowTest, AStylePreviewLeavesTheKnotAsItWas) {
  start();
  click("cmd2D");
  const auto before = pixels();
  const std::string width = text(Param::Width), told = w->status();
  w->userHighlights(kFirstStyle + 4);
  EXPECT_NE(pixels(), before) << "the style is shown";
  EXPECT_EQ(text(Param::Width), width);
  w->userHighlights(kNoCommand);
  EXPECT_EQ(pixels(), before);
  EXPECT_EQ(w->status(), told);
}

TEST_F(MainWindowTest, AChosenStyleFillsTheFieldsAndDrawsTheKnot) {
  start();
  w->userPicks(kFirstStyle + 1);
  KnotFields expected = firstRunFields();
  applyPreset(expected, 1);
  for (const Param p : {Param::Width, Param::Edge, Param::Swish, Param::Smooth, Param::StartColour})
    EXPECT_EQ(text(p), expected.text(p));
  EXPECT_TRUE(main->knotDrawn());
}

TEST_F(MainWindowTest, AFirstStartShowsAKnot) {
  MainWindowOptions options;
  options.drawAtStart = true;
  start(options);
  EXPECT_TRUE(main->knotDrawn());
}

}  // namespace
}  // namespace lorivan
