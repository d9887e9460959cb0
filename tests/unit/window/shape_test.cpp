// Drawing a shape of one's own in the window, its files, and the knots made from it.
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
  bool twoPassesEach() {
    for (int j = 0; j < lines(); ++j)
      if (line(j).Passes != 2) return false;
    return true;
  }
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
  pick("mnuEditUndoStep");
  EXPECT_TRUE(document() == smooth && shape().smooth);
  pick("mnuEditUndoStep");
  pick("mnuEditUndoStep");
  EXPECT_EQ(w->status().find("Undone"), 0U) << w->status();
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
  pickFile("mnuShapeLoadFile", path);
  EXPECT_EQ(lastAsked().file.initialName, folder.file("*.qzc"));
  expectOnSheet();
  EXPECT_TRUE(w->selected(controlId("lstType")) == 12 && at(3, 300, 300));
  EXPECT_FALSE(enabled("cmd2D") || commandEnabled("mnuFileSaveEMF") || commandEnabled("mnuShapeClear"));
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
  pick("mnuEditUndoStep");
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
  const auto middle = [&] { return w->surface(kSheet).pixel({250, 200}); };
  const Colour paleBlue = makeColour(165, 165, 235);
  pickFile("mnuShapeLoadPicture", path);
  expectOnSheet();
  EXPECT_EQ(middle(), paleBlue);
  EXPECT_EQ(w->surface(kSheet).pixel({20, 200}), 0xFFFFFFU);  // the sheet is wider
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

}  // namespace
}  // namespace lorivan
