// Grids, knots, random knots, the mouse on the grid and knot files, as a user meets them.
#include <deque>

#include "app/knot_file.h"
#include "base/sink.h"
#include "main_window_driver.h"

namespace lorivan {
namespace {

using KnotTest = MainWindowTest;

Rnd scripted(std::deque<double> draws, double rest = 0.5) {
  return [draws, rest]() mutable {
    if (draws.empty()) return rest;
    const double draw = draws.front();
    draws.pop_front();
    return draw;
  };
}

TEST_F(KnotTest, Create2DDrawsTheKnotAndOldGridTakesItAway) {
  start();
  click("cmd2D");
  EXPECT_TRUE(main->knotDrawn());
  EXPECT_EQ(w->status(), "3 strands, 12 crossings");
  EXPECT_EQ(w->text(controlId("cmd2D")), "Create &2D");
  EXPECT_TRUE(commandEnabled("mnuFileSaveEMF"));
  EXPECT_GT(w->surface(kGrid).count(DrawKind::wideCurve), 6);
  EXPECT_EQ(w->surface(kGrid).count(DrawKind::segment), 36);
  const int inked = w->surface(kGrid).inked();
  click("cmd2D");
  EXPECT_EQ(w->surface(kGrid).inked(), inked);
  click("chkShowGrid");
  EXPECT_EQ(w->surface(kGrid).count(DrawKind::segment), 0);
  w->userResizes(800);
  EXPECT_GT(w->surface(kGrid).inked(), inked);
  click("cmdOldGrid");
  EXPECT_FALSE(main->knotDrawn());
  EXPECT_EQ(w->surface(kGrid).count(DrawKind::wideCurve), 0);
  EXPECT_FALSE(commandEnabled("mnuFileSaveEMF"));
  click("chkShowCrossings");
  EXPECT_EQ(w->surface(kGrid).count(DrawKind::segment), 12);
}

TEST_F(KnotTest, ClicksStepALineThroughItsKinds) {
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
}

TEST_F(KnotTest, AClickRedrawsTheKnotThatIsShown) {
  start();
  click("cmd2D");
  clickLine(2);
  EXPECT_TRUE(main->knotDrawn());
  EXPECT_EQ(w->status(), "Line 3 is a wall: strands turn back at it; 2 strands, 11 crossings");
  click("cmdOldGrid");
  EXPECT_EQ(line(2).Kind, kWall);
  click("cmd2D");
  EXPECT_EQ(w->status(), "2 strands, 11 crossings");
}

TEST_F(KnotTest, RandomTakesItsDrawsInOrder) {
  MainWindowOptions options;
  //              shape  X    Y    scale swish (twice) offset smooth width edge colour
  options.random = scripted({0.7, 0.25, 0.1, 0.3, 0.99, 0.5, 0.25, 0.4, 0.99, 0.2, 0.6});
  start(options);
  click("cmdRandknot");
  EXPECT_EQ(w->selected(controlId("lstType")), 8);  // Cross
  for (const auto& [p, value] : {std::pair{Param::XNo, "4"},
                                 {Param::YNo, "3"},
                                 {Param::Scale, "29"},
                                 {Param::Swish, "12"},
                                 {Param::CrossOffset, "-1"},
                                 {Param::Smooth, "4"},
                                 {Param::Width, "7"},
                                 {Param::Edge, "4"},
                                 {Param::StartColour, "10"}})
    EXPECT_EQ(text(p), value) << parameterSpec(p).field;
  EXPECT_TRUE(main->knotDrawn());
  EXPECT_EQ(w->busyTimes(), 1);
  EXPECT_FALSE(w->busy());
  EXPECT_EQ(w->text(controlId("cmdRandknot")), "&Random");
  EXPECT_EQ(w->background(fieldControl(Param::StartColour)), QBColor(10));
  EXPECT_EQ(asked(), 0U);
  // All of it counts as acted on.
  const int before = clears();
  for (const Param p : {Param::XNo, Param::Scale, Param::Width, Param::StartColour})
    w->userFocuses(fieldControl(p));
  EXPECT_EQ(clears(), before);
}

TEST_F(KnotTest, RandomKeepsTheShapeWhenTold) {
  MainWindowOptions options;
  options.random = scripted({});
  start(options);
  click("chkConstantShape");
  w->userChooses(controlId("lstType"), 12);
  click("cmdRandknot");
  EXPECT_EQ(w->selected(controlId("lstType")), 0);
  w->userChooses(controlId("lstType"), 7);
  click("cmdRandknot");
  EXPECT_EQ(w->selected(controlId("lstType")), 7);
}

TEST_F(KnotTest, ManyPressesAtOnceMakeKnotsOneAfterTheOther) {
  start();
  for (int i = 0; i < 15; ++i) w->later([this] { click("cmdRandknot"); });
  w->processEvents();
  EXPECT_TRUE(main->knotDrawn());
  EXPECT_EQ(w->text(controlId("cmdRandknot")), "&Random");
  for (int i = 0; i < 15; ++i) click("cmdRandknot");
  EXPECT_TRUE(main->knotDrawn());
}

TEST_F(KnotTest, ClosingWhileARandomKnotIsMadeEndsQuietly) {
  start();
  platform.dialogs.answerConfirm(true);
  w->later([this] { w->userCloses(); });
  click("cmdRandknot");
  EXPECT_TRUE(w->closed());
  EXPECT_FALSE(main->knotDrawn());
  EXPECT_FALSE(platform.settings().values.empty());
}

TEST_F(KnotTest, TheStepDisplayFollowsTheTracerUntilItIsTold) {
  start({{}, true, {}});
  ASSERT_TRUE(w->checked(controlId("Check1")));
  platform.dialogs.answerInput("OK");
  platform.dialogs.answerInput("");
  click("cmd2D");
  EXPECT_EQ(lastAsked().text, "Hi");
  EXPECT_EQ(lastAsked().title, "OK");
  EXPECT_EQ(lastAsked().initial, "OK");
  EXPECT_EQ(w->surface(kGrid).count(DrawKind::dot), 8);
  EXPECT_FALSE(main->knotDrawn());
}

TEST_F(KnotTest, AKnotComesBackFromItsFile) {
  const Folder folder;
  start();
  w->userChooses(controlId("lstType"), 1);
  enter(Param::XNo, "3");
  enter(Param::Width, "11");
  clickLine(1);
  platform.dialogs.answerFile(folder.file("knot.qzd"));
  pick("mnuFileSave");
  const FileDialogSpec& dialog = lastAsked().file;
  EXPECT_TRUE(dialog.save && dialog.overwritePrompt);
  EXPECT_EQ(dialog.title, "Saving knot configuration - Enter your Lorivan file name");
  EXPECT_EQ(dialog.initialName, "/program/*.qzd");
  EXPECT_EQ(w->title(), "Lorivan - V3.44k  " + folder.file("knot.qzd"));

  const std::vector<GridLine> saved(main->knot().graph.Lines.begin(),
                                    main->knot().graph.Lines.begin() + lines());
  w->userChooses(controlId("lstType"), 4);
  enter(Param::Width, "5");
  platform.dialogs.answerFile(folder.file("knot.qzd"));
  pick("mnuFileLoad");
  EXPECT_EQ(lastAsked().title, "Enter your Lorivan file name");
  EXPECT_EQ(lastAsked().initial, folder.file("*.qzd"));
  EXPECT_EQ(w->selected(controlId("lstType")), 1);
  EXPECT_EQ(text(Param::Width), "11");
  EXPECT_EQ(text(Param::XNo), "3");
  EXPECT_EQ(main->knot().graph.CellSize, 30);
  ASSERT_EQ(static_cast<std::size_t>(lines()), saved.size());
  for (int j = 0; j < lines(); ++j) {
    EXPECT_EQ(line(j).MidX, saved[static_cast<std::size_t>(j)].MidX);
    EXPECT_EQ(line(j).Kind, saved[static_cast<std::size_t>(j)].Kind);
    EXPECT_EQ(line(j).Angle, saved[static_cast<std::size_t>(j)].Angle);
  }
  EXPECT_TRUE(main->knotDrawn());
  EXPECT_EQ(w->status().rfind("Loaded " + folder.file("knot.qzd") + ": ", 0), 0U);
  // Nothing is left to apply.
  const int before = clears();
  w->userFocuses(fieldControl(Param::Width));
  w->userFocuses(fieldControl(Param::XNo));
  w->userFocuses(fieldControl(Param::Edge));
  EXPECT_EQ(clears(), before);

  start({folder.file("knot.qzd"), false, {}});
  EXPECT_EQ(text(Param::Width), "11");
  EXPECT_TRUE(main->knotDrawn());
  w->userDrops(folder.file("other.txt"));
  EXPECT_EQ(w->status(), "other.txt is no knot file (*.qzd), shape file (*.qzc) or picture");
  w->userDrops(folder.file("knot.qzd"));
  EXPECT_TRUE(main->knotDrawn());
}

TEST_F(KnotTest, AFileOfThreeValuesKeepsTheOtherFields) {
  const Folder folder;
  ASSERT_TRUE(writeFile(folder.file("old.qzd"), "20,0\r\n25,3,4\r\n"));
  start();
  enter(Param::Width, "9");
  w->userDrops(folder.file("old.qzd"));
  EXPECT_EQ(text(Param::Scale), "25");
  EXPECT_EQ(text(Param::YNo), "4");
  EXPECT_EQ(text(Param::Width), "9");
  EXPECT_EQ(main->knot().graph.CellSize, 20);
  EXPECT_EQ(lines(), 0);
}

TEST_F(KnotTest, ABadFileIsToldInTheStatusLineAlone) {
  const Folder folder;
  ASSERT_TRUE(writeFile(folder.file("bad.qzd"), "20,3\r\n25,3,4\r\n1,2,3\r\n"));
  start();
  w->userDrops(folder.file("bad.qzd"));
  EXPECT_EQ(w->status(), "Could not load " + folder.file("bad.qzd") + ": line 3: ends after 3 of 8 values");
  EXPECT_EQ(w->selected(controlId("lstType")), 3);
  EXPECT_EQ(text(Param::Scale), "25");
  EXPECT_EQ(w->title(), "Lorivan - V3.44k ");
  w->userDrops(folder.file("missing.qzd"));
  EXPECT_NE(w->status().find("Could not load"), std::string::npos);
  EXPECT_EQ(asked(), 0U);
  click("cmd2D");
  EXPECT_TRUE(main->knotDrawn());
}

TEST_F(KnotTest, SavingWhereNothingCanBeWrittenIsTold) {
  const Folder folder;
  start();
  platform.dialogs.answerFile(folder.file("missing/knot.qzd"));
  platform.dialogs.answerMessage();
  pick("mnuFileSave");
  EXPECT_EQ(lastAsked().text, "Sorry, there was a problem with that file");
  EXPECT_EQ(lastAsked().title, "");
  for (const std::string& cancelled : {std::string(), folder.file("missing/*.QZD")}) {
    platform.dialogs.answerFile(cancelled);
    pick("mnuFileSave");
  }
  platform.dialogs.answerFile("");
  pick("mnuFileLoad");
  EXPECT_EQ(asked(), 5U);
}

TEST_F(KnotTest, NewFnameNamesFilesToSave) {
  start();
  platform.dialogs.answerFile("/maker/knots/ring.stl");
  EXPECT_EQ(main->NewFname("STL", "stl"), "/maker/knots/ring.stl");
  EXPECT_EQ(lastAsked().title, "Saving:  Enter your STL file name");
  EXPECT_EQ(lastAsked().file.filterLabel, "STL files");
  platform.dialogs.answerFile("/maker/knots/*.STL");
  EXPECT_EQ(main->NewFname("STL", "stl"), "");
  EXPECT_EQ(lastAsked().initial, "/maker/knots/*.stl");
}

}  // namespace
}  // namespace lorivan
