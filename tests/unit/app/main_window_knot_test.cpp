// Grids, knots, random knots, the mouse on the grid and knot files, as a user meets them.
#include "app/knot_file.h"
#include "base/sink.h"
#include "main_window_driver.h"

namespace lorivan {
namespace {

using KnotTest = MainWindowTest;

TEST_F(KnotTest, Create2DDrawsTheKnotAndOldGridTakesItAway) {
  start();
  const auto count = [&](DrawKind kind) { return w->surface(kGrid).count(kind); };
  click("cmd2D");
  EXPECT_TRUE(main->knotDrawn() && commandEnabled("mnuFileSaveEMF"));
  EXPECT_EQ(w->status(), "3 strands, 12 crossings");
  EXPECT_GT(count(DrawKind::fillPath), 6);
  EXPECT_EQ(count(DrawKind::segment), 36);
  const auto drawn = pixels();
  click("cmd2D");
  EXPECT_EQ(pixels(), drawn);
  click("chkShowGrid");
  EXPECT_EQ(count(DrawKind::segment), 0);
  w->userResizes(800);
  EXPECT_GT(count(DrawKind::fillPath), 6);
  click("cmdOldGrid");
  EXPECT_FALSE(main->knotDrawn() || commandEnabled("mnuFileSaveEMF"));
  EXPECT_EQ(count(DrawKind::fillPath), 0);
  click("chkShowCrossings");
  EXPECT_EQ(count(DrawKind::segment), 12);
}

TEST_F(KnotTest, ClicksStepALineThroughItsKindsAndRedrawTheKnot) {
  start();
  for (const int kind : {2, 3, 0, 1}) {
    clickLine(3);
    EXPECT_EQ(line(3).Kind, kind);
  }
  clickLine(3, 2);
  EXPECT_EQ(line(3).Kind, 0);
  EXPECT_EQ(w->status(), "Line 4 is taken out: strands pass as if it were not there");
  EXPECT_EQ(w->pointer(kGrid), PointerShape::hand);
  w->userMouse(kGrid, {MouseAction::move, 0, 3, 3});
  EXPECT_EQ(w->pointer(kGrid), PointerShape::arrow);
  const int before = clears();
  w->userClicksAt(kGrid, 1, 3, 3);
  EXPECT_EQ(clears(), before);
  clickLine(3);
  click("cmd2D");
  clickLine(2);
  EXPECT_EQ(w->status(), "Line 3 is a wall: strands turn back at it; 2 strands, 11 crossings");
  click("cmdOldGrid");
  EXPECT_EQ(line(2).Kind, kWall);
}

TEST_F(KnotTest, RandomDrawsAKnotAndKeepsTheShapeWhenTold) {
  start({{}, false, [] { return 0.5; }});
  click("cmdRandknot");
  EXPECT_TRUE(main->knotDrawn() && !w->busy());
  EXPECT_EQ(w->selected(controlId("lstType")), 6);
  EXPECT_EQ(background(Param::StartColour), QBColor(8));
  EXPECT_TRUE(nothingWaits({Param::XNo, Param::Scale, Param::Width, Param::StartColour}));
  click("chkConstantShape");
  choose(Shape::Custom);
  for (const int shape : {0, 7}) {
    click("cmdRandknot");
    EXPECT_EQ(w->selected(controlId("lstType")), shape);
    w->userChooses(controlId("lstType"), 7);
  }
}

TEST_F(KnotTest, ManyPressesAtOnceMakeKnotsOneAfterTheOther) {
  start();
  for (int i = 0; i < 15; ++i) w->later([this] { click("cmdRandknot"); });
  w->processEvents();
  EXPECT_TRUE(main->knotDrawn());
  EXPECT_EQ(w->text(controlId("cmdRandknot")), "&Random");
  platform.dialogs.answerConfirm(true);
  w->later([this] { w->userCloses(); });
  click("cmdRandknot");
  EXPECT_TRUE(w->closed() && !main->knotDrawn());
  EXPECT_FALSE(platform.settings().values.empty());
}

TEST_F(KnotTest, TheStepDisplayFollowsTheTracerUntilItIsTold) {
  start({{}, true, {}});
  ASSERT_TRUE(w->checked(controlId("Check1")));
  platform.dialogs.answerInput("OK");
  platform.dialogs.answerInput("");
  click("cmd2D");
  EXPECT_EQ(lastAsked().text + lastAsked().title + lastAsked().initial, "HiOKOK");
  EXPECT_EQ(w->surface(kGrid).count(DrawKind::dot), 8);
  EXPECT_FALSE(main->knotDrawn());
}

TEST_F(KnotTest, AKnotComesBackFromItsFile) {
  const Folder folder;
  const std::string path = folder.file("knot.qzd");
  start();
  choose(Shape::SquareTriangle);
  enterAll({{Param::XNo, "3"}, {Param::Width, "11"}});
  clickLine(1);
  pickFile("mnuFileSave", path);
  const FileDialogSpec& dialog = lastAsked().file;
  EXPECT_TRUE(dialog.save && dialog.overwritePrompt);
  EXPECT_EQ(dialog.initialName, "/program/*.qzd");
  EXPECT_EQ(w->title(), "Lorivan - V3.44k  " + path);

  const std::string saved = *readFile(path, kLargestKnotFile);
  choose(Shape::Circular);
  enter(Param::Width, "5");
  pickFile("mnuFileLoad", path);
  EXPECT_EQ(lastAsked().initial, folder.file("*.qzd"));
  EXPECT_EQ(w->selected(controlId("lstType")), 1);
  expectTexts({{Param::Width, "11"}, {Param::XNo, "3"}});
  EXPECT_EQ(line(1).Kind, kOrdinary);
  EXPECT_TRUE(main->knotDrawn() && statusStarts("Loaded " + path + ": "));
  EXPECT_TRUE(nothingWaits({Param::Width, Param::XNo, Param::Edge}));
  click("cmdOldGrid");
  pickFile("mnuFileSave", folder.file("again.qzd"));
  EXPECT_EQ(*readFile(folder.file("again.qzd"), kLargestKnotFile), saved);
  platform.dialogs.answerFile(folder.file("missing/knot.qzd"));
  platform.dialogs.answerMessage();
  pick("mnuFileSave");
  EXPECT_EQ(lastAsked().text, "Sorry, there was a problem with that file");
  for (const char* cancelled : {"mnuFileSave", "mnuFileLoad"}) pickFile(cancelled, "");
  pickFile("mnuFileSave", folder.file("missing/*.QZD"));

  start({path, false, {}});
  EXPECT_TRUE(main->knotDrawn() && text(Param::Width) == "11");
  w->userDrops(folder.file("other.txt"));
  EXPECT_EQ(w->status(), "other.txt is no knot file (*.qzd), shape file (*.qzc) or picture");
}

TEST_F(KnotTest, ShortAndBrokenFilesSetWhatTheyHold) {
  const Folder folder;
  ASSERT_TRUE(writeFile(folder.file("old.qzd"), "20,0\r\n25,3,4\r\n"));
  ASSERT_TRUE(writeFile(folder.file("bad.qzd"), "20,3\r\n26,3,4\r\n1,2,3\r\n"));
  start();
  enter(Param::Width, "9");
  w->userDrops(folder.file("old.qzd"));
  expectTexts({{Param::Scale, "25"}, {Param::YNo, "4"}, {Param::Width, "9"}});
  EXPECT_EQ(main->knot().graph.CellSize, 20);
  EXPECT_EQ(lines(), 0);
  start();
  w->userDrops(folder.file("bad.qzd"));
  EXPECT_EQ(w->status(), "Could not load " + folder.file("bad.qzd") + ": line 3: ends after 3 of 8 values");
  EXPECT_EQ(w->selected(controlId("lstType")), 3);
  EXPECT_EQ(text(Param::Scale), "26");
  EXPECT_EQ(w->title(), "Lorivan - V3.44k ");
  w->userDrops(folder.file("missing.qzd"));
  EXPECT_TRUE(statusStarts("Could not load"));
  EXPECT_EQ(asked(), 0U);
  click("cmd2D");
  EXPECT_TRUE(main->knotDrawn());
}

}  // namespace
}  // namespace lorivan
