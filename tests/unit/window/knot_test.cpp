// Grids, knots, random knots, styles and the mouse on the grid, as a user meets them.
#include "design/presets.h"
#include "main_window_driver.h"

namespace lorivan {
namespace {

using KnotTest = MainWindowTest;

TEST_F(KnotTest, Create2DDrawsTheKnotAndOldGridTakesItAway) {
  startDrawn();
  EXPECT_EQ(w->status(), "3 strands, 12 crossings");
  EXPECT_EQ(count(DrawKind::fillPath), 3);
  EXPECT_EQ(count(DrawKind::segment), 36);
  click("chkShowGrid");
  EXPECT_EQ(count(DrawKind::segment), 0);
  w->userResizes(800);
  EXPECT_EQ(count(DrawKind::fillPath), 3);
  click("cmd3DView");
  click("cmdOldGrid");
  EXPECT_EQ(w->status(), "Square-Square, 2 x 2, scale 30: 12 lines");
  EXPECT_FALSE(drawn() || commandEnabled("mnuFileSaveEMF") || commandEnabled("mnuFileSave3D") ||
               enabled("cmd3DView") || enabled("cmd2DView") || enabled("cmd3D") || visible("picKnot"));
  EXPECT_EQ(w->text(controlId("txtNPoly")), "");
  EXPECT_EQ(count(DrawKind::fillPath), 0);
  click("chkShowCrossings");
  EXPECT_TRUE(count(DrawKind::fillPath) == 0 && count(DrawKind::segment) == 12);
  markGrid();
  click("cmdOldGrid");
  EXPECT_FALSE(gridIsNew());
  click("cmdNewGrid");
  EXPECT_TRUE(gridIsNew());
}

TEST_F(KnotTest, ClicksStepALineThroughItsKindsAndRedrawTheKnot) {
  start();
  for (const int kind : {2, 3, 0, 1}) {
    clickLine(3);
    EXPECT_EQ(line(3).Kind, kind);
  }
  clickLine(3, 2);
  EXPECT_EQ(w->status(), "Line 4 is taken out: strands pass as if it were not there");
  EXPECT_EQ(w->pointer(kGrid), PointerShape::hand);
  const int before = clears();
  w->userClicksAt(kGrid, 1, 3, 3);
  EXPECT_TRUE(w->pointer(kGrid) == PointerShape::arrow && clears() == before);
  clickLine(3);
  click("cmd2D");
  clickLine(2);
  EXPECT_EQ(w->status(), "Line 3 is a wall: strands turn back at it; 2 strands, 11 crossings");
}

TEST_F(KnotTest, ClosingTheWindowEndsRandom) {
  start();
  const Document last = document();
  platform.dialogs.answerConfirm(true);
  w->later([this] { w->userCloses(); });
  click("cmdRandknot");
  EXPECT_TRUE(w->closed() && document() == last);
}

TEST_F(KnotTest, TheStepDisplayFollowsTheTracerUntilItIsTold) {
  start({{}, true, {}});
  ASSERT_TRUE(checked("Check1"));
  platform.dialogs.answerInput("OK");
  platform.dialogs.answerInput("");
  click("cmd2D");
  EXPECT_EQ(lastAsked().text + lastAsked().title + lastAsked().initial, "HiOKOK");
  EXPECT_EQ(count(DrawKind::dot), 8);
  EXPECT_FALSE(drawn());
}

TEST_F(KnotTest, AKnotErrorIsBoxedOnlyForWhoAskedForTheKnot) {
  std::string star = "20,0\r\n25,3,4\r\n";  // more lines than can meet in a point
  for (int i = 0; i < 14; ++i) {
    const std::string x = std::to_string(10 * i - 65), middle = std::to_string(5 * i - 32);
    star += "0,0," + x + ",80," + middle + ",40,1,0\r\n";
  }
  const Folder folder;
  stored("DrawAtOnce") = "True";
  start();
  platform.dialogs.answerMessage();
  w->userDrops(folder.write("star.qzd", star));
  ASSERT_EQ(asked(), 1U) << w->status();
  enter(Param::Width, "9");
  EXPECT_TRUE(!drawn() && asked() == 1 && w->status() == "No knot can be drawn on this grid");
  platform.dialogs.answerMessage();
  click("cmd2D");
  EXPECT_EQ(asked(), 2U);
}

TEST_F(KnotTest, AStylePreviewLeavesTheKnotAsItWasInBothViews) {
  startDrawn();
  for (const ControlId picture : {kGrid, kSolid}) {
    const auto before = pixels(picture);
    const Document was = document();
    const std::string told = w->status();
    for (const char* style : {"mnuStyle4", "mnuStyle2"}) {
      w->userHighlights(w->command(style));
      EXPECT_NE(pixels(picture), before) << "the style is shown";
      EXPECT_NE(w->status(), told);
    }
    EXPECT_TRUE(document() == was && text(Param::Width) == "7");
    w->userHighlights(kNoCommand);
    EXPECT_TRUE(pixels(picture) == before && w->status() == told);
    if (picture == kGrid) click("cmd3DView");
  }
  pick("mnuStyle4");
  EXPECT_TRUE(visible("picKnot") && bench().modelCurrent()) << "a style chosen in the 3-D view shows there";
  EXPECT_EQ(w->surface(kSolid).pixel({1, 1}), w->surface(kGrid).background());
  EXPECT_TRUE(w->status().ends_with(" polygons")) << "nothing waits for Create 3D: " << w->status();
}

}  // namespace
}  // namespace lorivan
