// Drawing a shape of one's own in the window, its files, and the knots made from it.
#include <fstream>

#include "app/trace_picture.h"
#include "base/random.h"
#include "base/sink.h"
#include "main_window_driver.h"

namespace lorivan {
namespace {

constexpr ControlId kSheet = controlId("picShape");

class ShapeTest : public MainWindowTest {
 protected:
  bool at(std::size_t point, float x, float y) const {
    return shape().ShapeX[point] == x && shape().ShapeY[point] == y;
  }
  int segments() const { return w->surface(kSheet).count(DrawKind::segment); }
  void mouse(MouseAction action, int button, int x, int y) { w->userMouse(kSheet, {action, button, x, y}); }
  void drag(PointI from, PointI to, int button = 1) {
    mouse(MouseAction::press, button, from.x, from.y);
    mouse(MouseAction::move, button, to.x, to.y);
    mouse(MouseAction::release, button, to.x, to.y);
  }
  /// A closed square with its corners at 100 and 300.
  void drawSquare() {
    pick("mnuShapeBlank");
    const PointI way[] = {{200, 200}, {100, 100}, {300, 100}, {300, 300}, {100, 300}, {100, 100}};
    for (int k = 0; k < 5; ++k) drag(way[k], way[k + 1]);
  }
  const CustomShape& shape() const { return main->customShape(); }
  bool viewChecked() const { return w->commandChecked(commandId("mnuShapeView")); }
  void expectOnGrid() const { EXPECT_TRUE(visible("picGrid") && !visible("picShape") && !viewChecked()); }
  void expectOnSheet() const { EXPECT_TRUE(!visible("picGrid") && visible("picShape") && viewChecked()); }
  bool twoPassesEach() const {
    for (int j = 0; j < lines(); ++j)
      if (line(j).Passes != 2) return false;
    return true;
  }
  std::string write(const std::string& name, const std::string& bytes) const {
    const std::string path = folder.file(name);
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
  }
  Folder folder;
};

TEST_F(ShapeTest, ASquareDrawnWithTheMouseBecomesAKnot) {
  start();
  for (const char* off : {"mnuShapeMakeGrid", "mnuShapeAutoGrid", "mnuShapeClear", "mnuShapeUndo"})
    EXPECT_FALSE(commandEnabled(off)) << off;
  drawSquare();
  expectOnSheet();
  EXPECT_EQ(w->status(), "Shape: 4 points, 4 lines, closed: AutoGrid in the Shape menu fills it");
  EXPECT_FALSE(enabled("cmd2D"));

  click("chkShapeT");  // squares
  pick("mnuShapeAutoGrid");
  EXPECT_NE(w->status().find("will run together"), std::string::npos) << "20 cells are too many";
  enter(Param::GridSize, "4");
  pick("mnuShapeAutoGrid");
  expectOnGrid();
  EXPECT_EQ(lines(), 2 * 4 * 5);
  EXPECT_EQ(w->status(), "AutoGrid: 40 lines. Create 2D draws the knot");
  click("cmd2D");
  EXPECT_TRUE(main->knotDrawn() && twoPassesEach());

  enter(Param::Scale, "20");  // erases nothing here: no question
  EXPECT_TRUE(main->knotDrawn() && lines() == 40);
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
  EXPECT_TRUE(main->knotDrawn() && twoPassesEach());
  click("cmd3DView");
  pick("mnuShapeView");
  expectOnSheet();
  EXPECT_TRUE(enabled("cmd3DView") && !enabled("cmd2DView") && !visible("picKnot"));
  choose(Shape::Triangle);
  expectOnGrid();
  choose(Shape::Custom);
  expectOnSheet();
  pick("mnuShapeMakeStandard");
  pick("mnuShapeMakeGrid");
  EXPECT_EQ(lines(), 9);
  pick("mnuShapeBlank");
  EXPECT_FALSE(commandEnabled("mnuShapeAutoGrid"));
  pick("mnuShapeUndo");
  EXPECT_GT(shape().ShapeLineCount, 3);
}

TEST_F(ShapeTest, TheRubberBandFollowsTheMouse) {
  start();
  drawSquare();
  w->userResizes(1000);  // two pixels a unit
  ASSERT_EQ(segments(), 4);
  mouse(MouseAction::press, 1, 200, 200);
  mouse(MouseAction::move, 1, 500, 420);
  EXPECT_EQ(segments(), 5);
  w->userMouse(kSheet, {MouseAction::move, 1, 700, 420, true});  // Shift: level
  const std::vector<PointF> band = w->surface(kSheet).calls()[w->surface(kSheet).calls().size() - 2].points;
  ASSERT_EQ(band.size(), 2U);
  EXPECT_EQ(band[1].x, 700);
  EXPECT_EQ(band[1].y, 200);
  mouse(MouseAction::release, 1, 500, 420);
  EXPECT_EQ(segments(), 5);  // the new line
  EXPECT_TRUE(at(5, 250, 210));
  EXPECT_EQ(w->status(), "Shape: 5 points, 5 lines, 1 loose end");
  mouse(MouseAction::move, 0, 502, 418);
  EXPECT_EQ(w->pointer(kSheet), PointerShape::hand);
  drag({500, 420}, {2000, -50}, 2);  // kept off the borders
  EXPECT_TRUE(at(5, 440, 45));
}

TEST_F(ShapeTest, ShapesAreSavedAndLoaded) {
  start();
  drawSquare();
  const std::string path = folder.file("square.qzc");
  pickFile("mnuShapeSaveFile", path);
  const FileDialogSpec dialog = lastAsked().file;
  EXPECT_TRUE(dialog.save && dialog.overwritePrompt);
  EXPECT_EQ(dialog.extensions + '|' + dialog.initialName, "qzc|/program/*.qzc");
  const std::string title = w->title();

  pick("mnuShapeBlank");
  choose(Shape::SquareSquare);
  click("cmd2D");
  pickFile("mnuShapeLoadFile", path);
  EXPECT_EQ(lastAsked().file.initialName, folder.file("*.qzc"));
  expectOnSheet();
  EXPECT_TRUE(w->selected(controlId("lstType")) == 12 && at(3, 300, 300));
  EXPECT_FALSE(enabled("cmd2D") || commandEnabled("mnuFileSaveEMF") || commandEnabled("mnuShapeClear"));
  pick("mnuShapeUndo");  // back to what was loaded
  EXPECT_EQ(shape().ShapeLineCount, 4);

  const std::string bad = write("bad.qzc", "7500 6000\r\n1\r\n10 nan\r\n0\r\n");
  for (const std::string& file : {bad, folder.file("none.qzc")}) {
    pickFile("mnuShapeLoadFile", file);
    EXPECT_TRUE(statusStarts("Could not load")) << w->status();
    EXPECT_EQ(shape().ShapeLineCount, 4);
    EXPECT_EQ(w->title(), title);
  }
  w->userDrops(bad);
  EXPECT_NE(w->status().find("bad.qzc: line 3: nan"), std::string::npos) << w->status();
  for (const std::string& name : {std::string(), folder.file("*.qzc")}) pickFile("mnuShapeSaveFile", name);
  EXPECT_FALSE(std::filesystem::exists(folder.file("*.qzc")));

  platform.settings().values[{"Settings", "lsttype"}] = "12";
  start({path, false, {}});
  expectOnSheet();
  EXPECT_TRUE(statusStarts("Loaded " + path)) << w->status();
  w->userDrops(write("empty.qzc", "9000 7500\r\n0\r\n0\r\n"));
  EXPECT_EQ(shape().surfaceWidth, 600);
  pick("mnuShapeMakeGrid");
  EXPECT_EQ(w->status(), "The shape has no lines to make a grid from");
}

TEST_F(ShapeTest, GridAndSnapAreKept) {
  start();
  pick("mnuShapeGridOnOff");
  pick("mnuShapeSnap");
  enter(Param::GridSize, "9");  // 10 divisions
  platform.dialogs.answerConfirm(true);
  w->userCloses();
  start();
  pick("mnuShapeBlank");
  EXPECT_TRUE(w->commandChecked(commandId("mnuShapeGridOnOff")) &&
              w->commandChecked(commandId("mnuShapeSnap")));
  EXPECT_EQ(segments(), 2 * 9);
  enter(Param::GridSize, "19");
  EXPECT_EQ(segments(), 2 * 19);
  drag({10, 10}, {209, 171});
  EXPECT_TRUE(at(1, 200, 180));
  pick("mnuShapeGridOnOff");
  EXPECT_EQ(segments(), 0);
}

TEST_F(ShapeTest, APictureLiesPaleBehindTheShape) {
  start();
  RecordingSurface picture(40, 40);
  picture.clear(makeColour(0, 0, 200));
  const auto bytes = platform.encodePicture(picture, PictureFormat::bmp);
  ASSERT_TRUE(bytes);
  const std::string path = write("blue.bmp", *bytes);
  const auto middle = [&] { return w->surface(kSheet).pixel({250, 200}); };
  const Colour paleBlue = makeColour(165, 165, 235);
  pickFile("mnuShapeLoadPicture", path);
  expectOnSheet();
  EXPECT_EQ(middle(), paleBlue);
  EXPECT_EQ(w->surface(kSheet).pixel({20, 200}), 0xFFFFFFU);  // the sheet is wider
  w->userDrops(write("broken.png", "no picture"));
  EXPECT_NE(w->status().find("broken.png: "), std::string::npos) << w->status();
  drag({200, 150}, {300, 250});
  EXPECT_EQ(middle(), paleBlue);
  pick("mnuShapeClear");
  EXPECT_EQ(middle(), 0xFFFFFFU);
  EXPECT_FALSE(commandEnabled("mnuShapeClear"));
}

// Ten thousand deeds of somebody who does not look: tables, menus and buttons stay as they have to be.
TEST_F(ShapeTest, NothingBreaksUnderARandomUser) {
  start();
  const Rnd random = seededRandom(5);
  const auto draw = [&](int n) { return static_cast<int>(random() * static_cast<float>(n)) % n; };
  // Often near points, so that drags join them; the picture is at its reference size.
  const auto place = [&]() -> PointI {
    const auto point = static_cast<std::size_t>(1 + draw(shape().ShapePointCount + 1));
    if (draw(3) == 0 || !shape().pointIsLive(static_cast<int>(point)))
      return {draw(520) - 10, draw(420) - 10};
    return {toInt32(shape().ShapeX[point]), toInt32(shape().ShapeY[point])};
  };
  int knots = 0;
  platform.dialogs.answerMessage();
  for (int step = 0; step < 10000; ++step) {
    const std::size_t before = asked();
    const int deed = draw(200);
    const auto command = static_cast<CommandId>(commandId("mnuShapeBlank") + deed);
    if (command <= commandId("mnuShapeUndo") && command != commandId("mnuShapeLoadPicture")) {
      if (w->commandEnabled(command)) w->userPicks(command);
    } else if (deed == 20) {
      enter(Param::GridSize, std::to_string(1 + draw(12)));
    } else if (deed == 21 && draw(4) == 0) {
      w->userChooses(controlId("lstType"), draw(13));
    } else if (visible("picShape")) {
      const PointI at = place();
      w->userMouse(kSheet, {static_cast<MouseAction>(draw(4)), draw(3), at.x, at.y, draw(2) == 0});
    } else if (enabled("cmd2D") && !main->knotDrawn() && draw(4) == 0) {
      click("cmd2D");
      knots += main->knotDrawn() ? 1 : 0;
    } else if (draw(3) == 0) {
      pick("mnuShapeView");
    }
    if (asked() > before) platform.dialogs.answerMessage();
    ASSERT_LE(shape().ShapeLineCount, kMostShapeLines);
    ASSERT_EQ(viewChecked(), visible("picShape"));
    ASSERT_FALSE(enabled("cmd2D") && main->knot().graph.NoGrid);
    for (int k = 1; k <= shape().ShapeLineCount; ++k)
      ASSERT_EQ(shape().lineIsLive(k), shape().lineEnd(0, k) > 0) << "step " << step << ", line " << k;
  }
  EXPECT_GT(knots, 10);
  w->message("", "", MessageIcon::none);  // takes the answer that is left
}

}  // namespace
}  // namespace lorivan
