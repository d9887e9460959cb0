// The 3-D model and its view, as a user meets them.
#include <cmath>

#include "base/numbers.h"
#include "main_window_driver.h"

namespace lorivan {
namespace {

class ModelTest : public MainWindowTest {
 protected:
  int paints() { return w->surface(kSolid).clears(); }
  /// With the 3-D view shown.
  void startSolid() {
    start();
    click("cmd2D");
    click("cmd3DView");
  }
  void expectShown(bool solid, const std::string& after) {
    SCOPED_TRACE(after);
    EXPECT_EQ(visible("picKnot"), solid);
    EXPECT_EQ(visible("picGrid"), !solid);
    EXPECT_EQ(enabled("cmd3DView"), !solid);
    EXPECT_EQ(enabled("cmd2DView"), solid);
    EXPECT_TRUE(commandEnabled("mnuFileSave3D"));
  }
  void turn(PointI from, PointI to) {
    w->userMouse(kSolid, {MouseAction::press, 1, from.x, from.y});
    w->userMouse(kSolid, {MouseAction::move, 1, (from.x + to.x) / 2, (from.y + to.y) / 2});
    w->userMouse(kSolid, {MouseAction::move, 1, to.x, to.y});
    w->userMouse(kSolid, {MouseAction::release, 1, to.x, to.y});
  }
  double number(Param p) const { return parseNumber(text(p)).value_or(-1); }
};

TEST_F(ModelTest, ViewsSwitchAndNeverBuild) {
  start();
  click("cmd2D");
  expectShown(false, "Create 2D");
  EXPECT_FALSE(enabled("cmd3D"));
  EXPECT_EQ(w->text(controlId("txtNPoly")), "960");
  EXPECT_EQ(paints(), 0);
  click("cmd3DView");
  expectShown(true, "3D View");
  EXPECT_GT(w->surface(kSolid).inked(), 10000);
  EXPECT_EQ(w->status(), "3 strands, 12 crossings, 960 polygons");
  click("cmd2DView");
  enter(Param::PolySides, "9");
  EXPECT_EQ(w->status(), "Press Create 3D to show the changed 3D values");
  click("cmd3DView");
  EXPECT_EQ(w->text(controlId("txtNPoly")), "960");
  EXPECT_EQ(w->status(),
            "3 strands, 12 crossings, 960 polygons; press Create 3D to show the changed 3D values");
  EXPECT_TRUE(enabled("cmd3D"));
  const auto old = pixels(kSolid);
  click("cmd3D");
  expectShown(true, "Create 3D");
  EXPECT_EQ(w->text(controlId("txtNPoly")), "1728");
  EXPECT_EQ(w->focused(), kSolid) << "Space must not press the button that leaves the view";
  EXPECT_NE(pixels(kSolid), old);
  EXPECT_FALSE(enabled("cmd3D"));
}

TEST_F(ModelTest, TooManyPolygonsLeaveThePictureAsItIs) {
  start();
  enter(Param::XNo, "10");
  enter(Param::YNo, "10");
  click("cmd2D");
  click("cmd3DView");
  const auto old = pixels(kSolid);
  enter(Param::PolySides, "200");
  enter(Param::PolyPoints, "50");
  platform.dialogs.answerMessage();
  click("cmd3D");
  EXPECT_EQ(lastAsked().text,
            "Sorry, too many polygons for the program to handle\r\nReduce Sides and/or Points");
  expectShown(true, "refused");
  EXPECT_EQ(pixels(kSolid), old);
  EXPECT_TRUE(enabled("cmd3D"));
  EXPECT_EQ(w->text(controlId("cmd3D")), "Create &3D");
  platform.dialogs.answerMessage();
  click("cmd2D");
  EXPECT_TRUE(drawn() && visible("picGrid") && enabled("cmd3D"));
  enter(Param::PolySides, "20");
  click("cmd3D");
  expectShown(true, "a large model");
  EXPECT_GE(w->busyTimes(), 2);
  EXPECT_FALSE(w->busy());
}

TEST_F(ModelTest, AllWaysOfTurningAgree) {
  startSolid();
  enter(Param::Theta, "270");
  const auto byField = pixels(kSolid);
  startSolid();
  for (int i = 0; i < 10; ++i) EXPECT_TRUE(w->userPresses({Key::left}));
  const auto byKeys = pixels(kSolid);
  std::size_t different = 0;
  for (std::size_t i = 0; i < byKeys.size(); ++i) different += byKeys[i] != byField[i] ? 1 : 0;
  EXPECT_LT(different, byKeys.size() / 100);
  startSolid();
  turn({200, 100}, {279, 100});
  EXPECT_NEAR(number(Param::Theta), 270, 1);
  w->userResizes(1000);
  turn({300, 300}, {300, 340});  // starts where it is pressed, and counts reference pixels
  EXPECT_NEAR(number(Param::Theta), 270, 1);
  EXPECT_NEAR(number(Param::Phi), 360 - 0.4 * 180 / kPi, 0.1);
  startSolid();
  const double radius = w->surface(kNav).width() / 2.25, centre = radius * (1 + 0.05 * 2.25);
  w->userClicksAt(kNav, 1, toInt32(centre - radius * std::sqrt(std::sin(kPi / 4))), toInt32(centre));
  EXPECT_NEAR(number(Param::Theta), 270, 4);  // to a pixel
}

TEST_F(ModelTest, ATurnLeavesNothingToApplyOrToUndo) {
  startSolid();
  EXPECT_EQ(w->text(controlId("txtRDistance")), "20");
  enter(Param::PolyZF, "3");
  turn({100, 100}, {160, 140});
  const std::string turned = text(Param::Theta);
  EXPECT_NE(turned, "0");
  EXPECT_LE(turned.size(), 6U);
  turn({100, 100}, {160, 140});
  const int before = paints();
  for (const Param p : {Param::Theta, Param::Phi, Param::Psi, Param::Ka}) w->userFocuses(fieldControl(p));
  EXPECT_EQ(paints(), before);
  for (const std::string& back : {turned, std::string("0")}) {
    pick("mnuEditUndoStep");
    EXPECT_EQ(text(Param::Theta), back) << "a drag is one step";
    EXPECT_EQ(commandText("mnuEditRedoStep"), "&Redo Turn");
  }
  pick("mnuEditRedoStep");
  pick("mnuEditUndo");
  EXPECT_EQ(text(Param::PolyZF), "2");
  EXPECT_EQ(text(Param::Theta), turned);
}

TEST_F(ModelTest, ArrowsTurnTheirWayAndBack) {
  startSolid();
  const struct {
    Key key, back;
    Param field;
    const char* degrees;
  } rows[] = {{Key::left, Key::right, Param::Theta, "351"},
              {Key::right, Key::left, Param::Theta, "9"},
              {Key::up, Key::down, Param::Phi, "9"},
              {Key::down, Key::up, Param::Phi, "351"}};
  for (const auto& row : rows) {
    w->userPresses({row.key});
    EXPECT_EQ(text(row.field), row.degrees);
    EXPECT_EQ(document().fields.text(row.field), row.degrees);
    w->userPresses({row.back});
    EXPECT_EQ(text(row.field), "0") << "never 360";
  }
  for (int i = 0; i < 160; ++i) {  // four times round, each way
    w->userPresses({i < 80 ? Key::left : Key::right});
    EXPECT_NE(text(Param::Theta), "360");
  }
  click("cmd2DView");
  EXPECT_FALSE(w->userPresses({Key::left}));
  const Colour light = w->surface(kNav).pixel({1, 1});
  w->userColours(0x202020, 0xFFFFFF);
  EXPECT_NE(w->surface(kNav).pixel({1, 1}), light);
}

TEST_F(ModelTest, LightActsAtOnceAndTheBackgroundWithTheNextBuildOrKey) {
  startSolid();
  for (const auto& [p, value] : {std::pair{Param::Ka, "0.9"}, {Param::KDist, "-5000"}, {Param::NFact, "1"}}) {
    const auto old = pixels(kSolid);
    enter(p, value);
    EXPECT_NE(pixels(kSolid), old) << parameterSpec(p).field;
  }
  enter(Param::PicKnotBackColour, "20");
  EXPECT_EQ(text(Param::PicKnotBackColour), "15");
  EXPECT_FALSE(enabled("cmd3D"));
  enter(Param::PicKnotBackColour, "1");
  EXPECT_TRUE(enabled("cmd3D"));
  EXPECT_EQ(w->surface(kSolid).pixel({1, 1}), QBColor(15));
  w->userPresses({Key::down});
  EXPECT_EQ(w->surface(kSolid).pixel({1, 1}), QBColor(1));
  w->userResizes(800);
  EXPECT_GT(w->surface(kSolid).inked(), 30000);
}

}  // namespace
}  // namespace lorivan
