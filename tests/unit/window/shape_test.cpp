// Drawing a custom shape in the window, its files, and the knots made from it.
#include "knot_maker.h"
#include "main_window_driver.h"

namespace lorivan {
namespace {

class ShapeTest : public MainWindowTest {
 protected:
  bool at(std::size_t point, float x, float y) {
    return shape().ShapeX[point] == x && shape().ShapeY[point] == y;
  }
  int segments() const { return w->surface(kSheet).count(DrawKind::segment); }
  void mouse(MouseAction action, int button, int x, int y) { w->userMouse(kSheet, {action, button, x, y}); }
  void drag(PointI from, PointI to, int button = 1) { MainWindowTest::drag(kSheet, from, to, button); }
  const CustomShape& shape() { return bench().sheet.shape(); }
  bool viewChecked() const { return w->commandChecked(commandId("mnuShapeView")); }
  void expectOnGrid() const { EXPECT_TRUE(visible("picGrid") && !visible("picShape") && !viewChecked()); }
  void expectOnSheet() const { EXPECT_TRUE(!visible("picGrid") && visible("picShape") && viewChecked()); }
  bool twoPassesEach() { return wronglyPassed(bench().knot().graph) == 0; }
  Folder folder;
};

TEST_F(ShapeTest, ASquareDrawnWithTheMouseBecomesAKnot) {
  start();
  drawSquare();
  expectOnSheet();
  EXPECT_EQ(w->status(), "Shape: 4 points, 4 lines, closed: AutoGrid in the Shape menu fills it");
  EXPECT_FALSE(enabled("cmd2D"));

  click("chkShapeT");  // squares
  pick("mnuShapeAutoGrid");
  EXPECT_TRUE(document().fields.check(Check::FitBands));
  enter(Param::GridSize, "4");
  pick("mnuShapeAutoGrid");
  expectOnGrid();
  EXPECT_EQ(lines(), 2 * 4 * 5);
  EXPECT_EQ(w->status(), "AutoGrid: 40 lines. Create 2D draws the knot");
  pick("mnuShapeView");
  click("cmdRandknot");
  expectOnGrid();
  undo();
  expectOnSheet();  // where the button was pressed
  pick("mnuShapeView");
  click("cmd2D");
  EXPECT_TRUE(drawn() && twoPassesEach());

  enter(Param::Scale, "20");  // erases nothing here: no question
  EXPECT_TRUE(drawn() && lines() == 40);
  pick("mnuShapeView");
  EXPECT_TRUE(enabled("cmd2D"));
  enter(Param::Width, "9");  // drawn anew, behind the sheet
  expectOnSheet();
  drag({100, 100}, {300, 300});
  enter(Param::Skew, "1.5");
  EXPECT_FALSE(enabled("cmd2D"));
  pick("mnuShapeMakeGrid");
  EXPECT_EQ(lines(), 5);
  click("cmd2D");
  EXPECT_TRUE(drawn() && twoPassesEach());
  pick("mnuShapeView");
  ASSERT_TRUE(visible("picShape"));
  click("cmd2DView");
  EXPECT_TRUE(visible("picGrid") && !visible("picShape") && !enabled("cmd2DView")) << "back to the knot";
  choose(Shape::Triangle);
  expectOnGrid();
  const int drawn = shape().ShapeLineCount;
  pick("mnuShapeMakeStandard");
  pick("mnuShapeUndo");
  EXPECT_EQ(shape().ShapeLineCount, drawn);
}

TEST_F(ShapeTest, TheRubberBandFollowsTheMouse) {
  start();
  drawSquare();
  w->userResizes(1000);  // two pixels a unit
  EXPECT_EQ(segments(), 4);
  mouse(MouseAction::press, 1, 200, 200);
  w->userMouse(kSheet, {MouseAction::move, 1, 700, 420, true});  // Shift: level
  EXPECT_EQ(segments(), 5);
  const DrawCall& band = w->surface(kSheet).calls()[w->surface(kSheet).calls().size() - 2];
  EXPECT_TRUE(band.points.size() == 2 && band.points[1].x == 700 && band.points[1].y == 200);
  mouse(MouseAction::release, 1, 500, 420);
  EXPECT_TRUE(segments() == 5 && at(5, 250, 210));
  EXPECT_EQ(w->status(), "Shape: 5 points, 5 lines, 1 loose end");
  mouse(MouseAction::move, 0, 502, 418);
  EXPECT_EQ(w->pointer(kSheet), PointerShape::hand);
  drag({500, 420}, {2000, -50}, 2);  // kept off the borders
  EXPECT_TRUE(at(5, 440, 45));
  const auto told = [this] { return commandText("mnuEditUndoStep"); };
  EXPECT_EQ(told(), "&Undo Move point");
  drag({880, 90}, {880, 90});
  EXPECT_EQ(told(), "&Undo Delete point");
  drag({200, 200}, {600, 200});
  EXPECT_EQ(told(), "&Undo Delete line");
  pick("mnuSheetLeftRight");
  drag({20, 20}, {440, 300});
  drag({440, 300}, {500, 300}, 2);  // its image meets it on the axis
  EXPECT_EQ(told(), "&Undo Move point");
}

TEST_F(ShapeTest, ImagesAreDrawnInOneStepAndCurvesFollowThePoints) {
  start();
  pick("mnuShapeBlank");
  pick("mnuSheetTurns6");
  EXPECT_TRUE(w->commandChecked(commandId("mnuSheetTurns6")));
  pick("mnuSheetMirrored");
  EXPECT_EQ(segments(), 12) << "six axes, each from the middle to both sides";
  drag({20, 20}, {250, 80});
  drag({250, 80}, {354, 140});  // to the next one
  EXPECT_EQ(w->status(), "Shape: 6 points, 6 lines, closed: AutoGrid in the Shape menu fills it");
  pick("mnuSheetNone");
  EXPECT_EQ(segments(), 6);
  pick("mnuShapeSmooth");
  EXPECT_GT(segments(), 36);
  const auto smooth = document();
  pick("mnuShapeSmooth");
  EXPECT_EQ(segments(), 6);
  undo();
  EXPECT_TRUE(document() == smooth && shape().smooth);
  undo(2);
  EXPECT_EQ(w->status().find("Undone: New line; Shape: 6 points"), 0U) << w->status();
  EXPECT_TRUE(shape().ShapePointCount == 6 && shape().ShapeLineCount == 0) << "lines and images are one step";
}

TEST_F(ShapeTest, ShapesAreSavedAndLoaded) {
  start();
  drawSquare();
  const std::string path = folder.file("square.qzc");
  pickFile("mnuShapeSaveFile", path);
  EXPECT_EQ(lastAsked().file.extensions + '|' + lastAsked().file.initialName, "qzc|/program/*.qzc");
  pick("mnuShapeBlank");
  choose(Shape::SquareSquare);
  click("cmd2D");
  EXPECT_TRUE(commandEnabled("mnuFileSaveEMF"));
  pickFile("mnuShapeLoadFile", path, SaveAnswer::discard);
  expectOnSheet();
  EXPECT_TRUE(w->selected(controlId("lstType")) == 12 && at(3, 300, 300));
  EXPECT_FALSE(enabled("cmd2D") || commandEnabled("mnuFileSaveEMF") || commandEnabled("mnuShapeClear"));
  pickFile("mnuShapeLoadFile", "");
  EXPECT_EQ(lastAsked().file.initialName, folder.file("*.qzc"));
  pick("mnuShapeUndo");  // back to what was loaded
  EXPECT_EQ(shape().ShapeLineCount, 4);

  stored("lsttype") = "12";
  start({path, false, {}});
  expectOnSheet();
  EXPECT_TRUE(statusStarts("Loaded " + path)) << w->status();
  w->userDrops(folder.write("empty.qzc", "9000 7500\r\n0\r\n0\r\n"));
  EXPECT_EQ(shape().surfaceWidth, 600);
  pick("mnuShapeMakeGrid");
  EXPECT_EQ(w->status(), "The shape has no lines to make a grid from");
}

TEST_F(ShapeTest, PointsSnapToTheAlignmentGrid) {
  start();
  pick("mnuShapeBlank");
  pick("mnuShapeGridOnOff");
  pick("mnuShapeSnap");
  enter(Param::GridSize, "9");  // 10 divisions
  EXPECT_EQ(segments(), 2 * 9);
  enter(Param::GridSize, "19");
  EXPECT_EQ(segments(), 2 * 19);
  drag({10, 10}, {209, 171});
  EXPECT_TRUE(at(1, 200, 180));
}

TEST_F(ShapeTest, TheSheetComesAndGoesWithItsShape) {
  start();
  choose(Shape::Circular);
  enterAll({{Param::XNo, "8"}, {Param::Scale, "40"}});
  click("cmd2D");
  choose(Shape::Custom);
  expectOnSheet();
  undo();
  expectOnGrid();
  choose(Shape::Custom);
  pick("mnuShapeView");
  const auto shown = pixels();
  click("cmd2D");
  EXPECT_EQ(shown, pixels()) << "strands follow circles no more";
}

TEST_F(ShapeTest, APictureLiesPaleBehindTheShape) {
  start();
  RecordingSurface picture(40, 40);
  picture.clear(makeColour(0, 0, 200));
  const auto path = folder.write("blue.bmp", *platform.encodePicture(picture, PictureFormat::bmp));
  const auto at = [&](int x, int y) { return w->surface(kSheet).pixel({x, y}); };
  const auto middle = [&] { return at(250, 200); };
  const Colour paleBlue = makeColour(165, 165, 235);
  pickFile("mnuShapeLoadPicture", path);
  expectOnSheet();
  EXPECT_EQ(middle(), paleBlue);
  // As large as the frame is high, in its middle; the frame's left line is seen beside it, its top line over
  // it.
  EXPECT_TRUE(at(97, 300) == paleBlue && at(387, 300) == paleBlue && at(150, 47) == paleBlue);
  EXPECT_TRUE(at(92, 300) == 0xFFFFFFU && at(392, 300) == 0xFFFFFFU && at(150, 38) == 0xFFFFFFU);
  std::set<Colour> frame;
  for (int x = 150; x < 160; ++x) frame.insert(at(x, 45));
  EXPECT_GT(frame.size(), 1U);
  w->userDrops(folder.write("broken.png", "no picture"));
  EXPECT_NE(w->status().find("broken.png: "), std::string::npos) << w->status();
  drag({200, 150}, {310, 260});
  const std::string shape = folder.write("s.qzc", "7500 6000\r\n1\r\n100 100\r\n0\r\n");
  platform.dialogs.answerSave(SaveAnswer::discard);
  const std::function<void()> ways[] = {[&] { w->userDrops(shape); }, [&] { pick("mnuShapeClear"); },
                                        [&] { pick("mnuShapeBlank"); }};
  for (const auto& clear : ways) {
    w->userDrops(path);
    EXPECT_EQ(middle(), paleBlue);
    clear();
    EXPECT_EQ(middle(), 0xFFFFFFU);
  }
}

TEST_F(ShapeTest, APictureIsTracedWhereItLies) {
  start();
  RecordingSurface picture(200, 100);
  picture.clear(0xFFFFFF);
  picture.dot({50, 50}, 60, 0);
  const auto path = folder.write("disc.bmp", *platform.encodePicture(picture, PictureFormat::bmp));
  EXPECT_FALSE(commandEnabled("mnuShapeTrace"));
  drawSquare();
  w->userDrops(path);
  pick("mnuShapeTrace");
  expectOnSheet();
  EXPECT_TRUE(statusStarts("Shape: ")) << w->status();
  const double unit = 395.0 / 200;
  for (int k = 1; k <= shape().ShapePointCount; ++k)
    EXPECT_NEAR(std::hypot(shape().ShapeX[k] - (45 + 50.5 * unit), shape().ShapeY[k] - (192.5 + 0.5 * unit)),
                30 * unit, 2.5);
  EXPECT_EQ(commandText("mnuEditUndoStep"), "&Undo Trace picture");
  undo();
  EXPECT_TRUE(shape().ShapeLineCount == 4 && commandEnabled("mnuShapeTrace"));
}

TEST_F(ShapeTest, OutlinesOfDrawingsComeOntoTheSheet) {
  start();
  choose(Shape::Star);
  const std::string ring = folder.write(
      "ring.svg",
      "<svg><circle r='9'/>\n<text/><rect x='-4' y='-4' width='8' height='8' fill='#fff'/></svg>");
  const std::string plate =
      folder.write("plate.dxf", "0\nSECTION\n2\nENTITIES\n0\nCIRCLE\n40\n5\n0\nENDSEC\n");
  pickFile("mnuShapeLoadOutline", ring);
  expectOnSheet();
  EXPECT_TRUE(statusStarts("Loaded " + ring + ". Shape: ")) << w->status();
  EXPECT_TRUE(w->status().ends_with(
      "a click with Ctrl one region alone; texts were left out: turn them into paths first"));
  EXPECT_TRUE(document().fields.shape == Shape::Custom && shape().ShapePointCount > 20);
  pick("mnuShapeAutoGrid");
  expectOnGrid();
  const int whole = lines();

  // What is too complicated names what is not, and Fill Outline takes that.
  enter(Param::GridSize, "90");
  platform.dialogs.answerMessage();
  pick("mnuShapeAutoGrid");
  EXPECT_TRUE(statusStarts("The largest AG factor that works here is ") && lines() == whole) << w->status();
  const std::string told = w->status();
  pick("mnuShapeFill");
  EXPECT_NE(told.find(" is " + text(Param::GridSize) + ": Fill Outline"), std::string::npos) << told;
  EXPECT_GT(lines(), whole);
  undo(2);
  EXPECT_TRUE(lines() == whole && text(Param::GridSize) == "20");

  // A click with Ctrl in the ring's hole fills the hole alone; one beside the ring changes nothing.
  pick("mnuShapeView");
  w->userMouse(kSheet, {MouseAction::move, 0, 243, 193, false, true});
  EXPECT_EQ(w->pointer(kSheet), PointerShape::hand);
  const auto ctrlClick = [&](int x, int y) {
    for (const MouseAction action : {MouseAction::press, MouseAction::release})
      w->userMouse(kSheet, {action, 1, x, y, false, true});
  };
  ctrlClick(243, 193);
  expectOnGrid();
  EXPECT_TRUE(statusStarts("Fill region: ")) << w->status();
  EXPECT_LT(lines(), whole) << "cells as large as those of the whole drawing";
  for (int j = 0; j < lines(); ++j) EXPECT_LE(std::abs(line(j).X1), 40);
  undo();
  EXPECT_EQ(lines(), whole);
  expectOnSheet();  // where the step was made
  pick("mnuEditRedoStep");
  expectOnGrid();
  undo();
  expectOnSheet();
  ctrlClick(20, 20);
  expectOnSheet();
  EXPECT_TRUE(lines() == whole && w->status() == "There is no closed outline round that place")
      << w->status();

  w->userDrops(plate);
  EXPECT_TRUE(statusStarts("Loaded " + plate)) << w->status();
  undo(2);
  EXPECT_EQ(document().fields.shape, Shape::Custom);
  undo();
  EXPECT_EQ(document().fields.shape, Shape::Star) << "one step for each";
  pickFile("mnuFileLoad", folder.write("bad.svg", "<svg>\n<path d='M0 x'/></svg>"));  // as if dropped
  EXPECT_TRUE(w->status().ends_with("bad.svg: line 2: a path cannot be read at \"x\"")) << w->status();
}

}  // namespace
}  // namespace lorivan
