// The 3-D model and its view, as a user meets them.
#include <array>
#include <cmath>

#include "base/numbers.h"
#include "main_window_driver.h"

namespace lorivan {
namespace {

class ModelTest : public MainWindowTest {
 protected:
  void startSolid() { startDrawn(), click("cmd3DView"); }
  bool shows(bool solid) const {
    return visible("picKnot") == solid && visible("picGrid") != solid && enabled("cmd3DView") != solid &&
           enabled("cmd2DView") == solid && commandEnabled("mnuFileSave3D");
  }
  std::string polygons() const { return w->text(controlId("txtNPoly")); }
  void turn(PointI from, PointI to) { drag(kSolid, from, to); }
  double number(Param p) const { return parseNumber(text(p)).value_or(-1); }
};

TEST_F(ModelTest, ViewsSwitchAndNeverBuild) {
  startDrawn();
  EXPECT_TRUE(shows(false) && !enabled("cmd3D") && polygons() == "960" && w->surface(kSolid).clears() == 0);
  click("cmd3DView");
  EXPECT_TRUE(shows(true));
  EXPECT_GT(w->surface(kSolid).inked(), 10000);
  EXPECT_EQ(w->status(), "3 strands, 12 crossings, 960 polygons");
  click("cmd2DView");
  enter(Param::PolySides, "9");
  click("cmd3DView");
  EXPECT_EQ(w->status(),
            "3 strands, 12 crossings, 960 polygons; press Create 3D to show the changed 3D values");
  EXPECT_TRUE(enabled("cmd3D") && polygons() == "960");
  const auto old = pixels(kSolid);
  click("cmd3D");
  EXPECT_TRUE(shows(true) && !enabled("cmd3D") && polygons() == "1728" && pixels(kSolid) != old);
  EXPECT_EQ(w->focused(), kSolid) << "Space must not press the button that leaves the view";
}

TEST_F(ModelTest, TooManyPolygonsLeaveThePictureAsItIs) {
  start();
  enterAll({{Param::XNo, "10"}, {Param::YNo, "10"}});
  click("cmd2D");
  click("cmd3DView");
  const auto old = pixels(kSolid);
  enterAll({{Param::PolySides, "200"}, {Param::PolyPoints, "50"}});
  std::string behind;
  platform.dialogs.otherwise = [&](const AskedDialog&) {
    behind = w->status();
    return DialogQueue::Answer();
  };
  click("cmd3D");
  platform.dialogs.otherwise = nullptr;
  EXPECT_TRUE(behind.starts_with("No model: it would have ")) << behind;
  EXPECT_EQ(lastAsked().text,
            "Sorry, too many polygons for the program to handle\r\nReduce Sides and/or Points");
  EXPECT_TRUE(shows(true) && pixels(kSolid) == old && enabled("cmd3D"));
  EXPECT_EQ(w->text(controlId("cmd3D")), "Create &3D");
  platform.dialogs.answerMessage();
  click("cmd2D");
  EXPECT_TRUE(drawn() && visible("picGrid") && enabled("cmd3D"));
  enter(Param::PolySides, "20");
  click("cmd3D");
  EXPECT_TRUE(shows(true) && w->busyTimes() >= 2 && !w->busy());
}

TEST_F(ModelTest, DragsAndTheRotatorCountReferencePixels) {
  startSolid();
  turn({200, 100}, {279, 100});
  EXPECT_NEAR(number(Param::Theta), 270, 1);
  w->userResizes(1000);
  turn({300, 300}, {300, 340});  // starts where it is pressed
  EXPECT_NEAR(number(Param::Theta), 270, 1);
  EXPECT_NEAR(number(Param::Phi), 360 - 0.4 * 180 / kPi, 0.1);
  startSolid();
  const double radius = w->surface(kNav).width() / 2.25, centre = radius * (1 + 0.05 * 2.25);
  w->userClicksAt(kNav, 1, toInt32(centre - radius * std::sqrt(std::sin(kPi / 4))), toInt32(centre));
  EXPECT_NEAR(number(Param::Theta), 270, 4);  // to a pixel
  const std::string first = text(Param::Theta);
  w->userClicksAt(kNav, 1, toInt32(centre + 9), toInt32(centre));
  undo();
  EXPECT_EQ(text(Param::Theta), first) << "every click is a step";
}

TEST_F(ModelTest, ATurnLeavesNothingToApplyOrToUndo) {
  startSolid();
  EXPECT_EQ(w->text(controlId("txtRDistance")), "20");
  enter(Param::PolyZF, "3");
  turn({100, 100}, {160, 140});
  const std::string turned = text(Param::Theta);
  EXPECT_TRUE(turned != "0" && turned.size() <= 6);
  turn({100, 100}, {160, 140});
  EXPECT_TRUE(nothingWaits({Param::Theta, Param::Phi, Param::Psi, Param::Ka}, kSolid));
  for (const std::string& back : {turned, std::string("0")}) {
    undo();
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
  const std::tuple<Key, Key, Param, const char*> rows[] = {{Key::left, Key::right, Param::Theta, "351"},
                                                           {Key::right, Key::left, Param::Theta, "9"},
                                                           {Key::up, Key::down, Param::Phi, "9"},
                                                           {Key::down, Key::up, Param::Phi, "351"}};
  for (const auto& [key, back, field, degrees] : rows) {
    w->userPresses({key});
    EXPECT_TRUE(text(field) == degrees && document().fields.text(field) == degrees) << text(field);
    w->userPresses({back});
    EXPECT_EQ(text(field), "0") << "never 360";
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
  EXPECT_TRUE(text(Param::PicKnotBackColour) == "15" && !enabled("cmd3D"));
  enter(Param::PicKnotBackColour, "1");
  EXPECT_TRUE(enabled("cmd3D"));
  EXPECT_EQ(w->surface(kSolid).pixel({1, 1}), QBColor(15));
  w->userPresses({Key::down});
  EXPECT_TRUE(w->surface(kSolid).pixel({1, 1}) == QBColor(1) && !enabled("cmd3D"));
  w->userResizes(800);
  EXPECT_GT(w->surface(kSolid).inked(), 30000);
}

TEST_F(ModelTest, TheVerdictIsToldAndItsPlacesAreMarked) {
  startSolid();
  const auto plain = pixels(kSolid);
  platform.dialogs.answerInput("80,5");
  platform.dialogs.answerMessage();
  pick("mnuViewCheckModel");
  for (const char* line :
       {"3 separate pieces, touching at 0 of 12 crossings", "closed: yes", " mm at ", "gold18k"})
    EXPECT_NE(lastAsked().text.find(line), std::string::npos) << lastAsked().text;
  EXPECT_TRUE(shows(true) && pixels(kSolid) != plain && polygons() == "960");
  pickInput("mnuViewCheckModel", "wide");
  EXPECT_EQ(w->status(), "\"wide\" is no length in millimetres");
  click("cmd2D");
  click("cmd3DView");
  EXPECT_EQ(pixels(kSolid), plain) << "marks go with the next build";
}

TEST_F(ModelTest, TheLensIsTheWindowsAndNoStep) {
  startSolid();
  const auto first = pixels(kSolid);
  const Document before = document();
  const int inked = w->surface(kSolid).inked();
  w->userMouse(kSolid, {.action = MouseAction::wheel, .x = 250, .y = 200, .steps = 2});
  EXPECT_GT(w->surface(kSolid).inked(), inked * 5 / 4);
  const auto closer = pixels(kSolid);
  EXPECT_TRUE(w->userPresses({Key::minus}) && w->userPresses({Key::plus}) && pixels(kSolid) == closer);
  drag(kSolid, {100, 100}, {400, 100}, 3);
  EXPECT_LT(w->surface(kSolid).inked(), inked) << "moved out to the right";
  for (const int end : {-4000, 4000}) {
    drag(kSolid, {250, 200}, {end, end}, 3);
    EXPECT_GT(w->surface(kSolid).inked(), 0) << "a part of it stays in sight";
  }
  w->userMouse(kSolid, {MouseAction::doubleClick, 1, 3, 3});
  EXPECT_GT(w->surface(kSolid).inked(), inked);
  EXPECT_TRUE(document() == before && commandText("mnuEditUndoStep") != "&Undo Turn");
  pick("mnuViewFront");
  EXPECT_EQ(pixels(kSolid), first);
  click("chkSmooth");
  EXPECT_NE(pixels(kSolid), first);
  undo();
  EXPECT_EQ(pixels(kSolid), first);
}

TEST_F(ModelTest, AnotherKnotIsShownWhole) {
  startSolid();
  const auto first = pixels(kSolid);
  EXPECT_TRUE(w->userPresses({Key::plus}));
  const auto closer = pixels(kSolid);
  pick("mnuViewClassic");  // the same knot
  EXPECT_EQ(pixels(kSolid), closer);
  pick("mnuFileRandom");
  undo();
  click("cmd3DView");
  EXPECT_EQ(pixels(kSolid), first);
}

TEST_F(ModelTest, AStrandIsPickedAndRecolouredInEveryShading) {
  for (const char* const smooth : {"on", "off"}) {
    startSolid();
    if (smooth[1] == 'f') click("chkSmooth");
    const auto unmarked = pixels(kSolid);
    const Document before = document();
    PointI on{250, 200};
    while (bench().solid.strandAt(on.x, on.y) == 0) ++on.x;
    const int slot = bench().solid.strandAt(on.x, on.y);
    w->userClicksAt(kSolid, 1, on.x, on.y);
    EXPECT_EQ(bench().flat.markedStrand(), slot) << smooth;
    EXPECT_TRUE(statusStarts("Strand ") && w->status().find(" grid units long") != std::string::npos)
        << w->status();
    const auto marked = pixels(kSolid);
    EXPECT_NE(marked, unmarked);
    EXPECT_EQ(document(), before);
    pick("mnuEditCopy");
    EXPECT_TRUE(copied(unmarked)) << "marks stay here";
    EXPECT_EQ(pixels(kSolid), marked);

    platform.dialogs.answerColour(0x123456);
    w->userMouse(kSolid, {MouseAction::press, 1, on.x, on.y});
    w->userMouse(kSolid, {MouseAction::doubleClick, 1, on.x, on.y});
    EXPECT_EQ(document().fields.boxes[std::size_t(slot - 1)], 0x123456U);
    EXPECT_TRUE(w->userPresses({Key::escape}) && bench().flat.markedStrand() == 0);
    EXPECT_FALSE(w->userPresses({Key::escape}));
    turn(on, {on.x + 40, on.y});
    EXPECT_EQ(bench().flat.markedStrand(), 0) << "a drag turns";
    // The mark follows into the 2-D picture and back.
    click("cmd2DView");
    const auto flat = pixels();
    click("cmd3DView");
    for (on = {250, 200}; bench().solid.strandAt(on.x, on.y) != slot;) on = {on.x + 1, on.y};
    std::vector<double> lengths;
    for (const double width : {100.0, 250.0}) {
      bench().saveOptions.millimetres = width;
      w->userClicksAt(kSolid, 1, on.x, on.y);
      const std::size_t begin = w->status().find(": ") + 2, end = w->status().find(" mm long");
      ASSERT_NE(end, std::string::npos) << w->status();
      lengths.push_back(parseNumber(w->status().substr(begin, end - begin)).value_or(0));
    }
    EXPECT_GT(lengths[0], 100) << "once round a third of the knot, and more";
    EXPECT_NEAR(lengths[1] / lengths[0], 2.5, 0.01);
    click("cmd2DView");
    EXPECT_NE(pixels(), flat);
    w->userClicksAt(kGrid, 1, 2, 2);
    EXPECT_EQ(pixels(), flat);
  }
}

TEST_F(ModelTest, ALargeModelIsStoodInForWhileItIsDragged) {
  start();
  enterAll({{Param::XNo, "10"}, {Param::YNo, "10"}, {Param::PolySides, "24"}, {Param::PolyPoints, "10"}});
  click("cmd2D");
  click("cmd3DView");
  ASSERT_GT(bench().solid.shownPolygons(), 60'000);
  const std::string told = polygons();
  for (const char* const smooth : {"on", "off"}) {
    w->userMouse(kSolid, {MouseAction::press, 1, 100, 100});
    w->userMouse(kSolid, {MouseAction::move, 1, 100, 100});
    w->userMouse(kSolid, {MouseAction::move, 1, 130, 120});
    EXPECT_LE(bench().solid.shownPolygons(), 60'000);
    const auto meanwhile = pixels(kSolid);
    const int inked = w->surface(kSolid).inked();
    w->userMouse(kSolid, {MouseAction::release, 1, 130, 120});
    EXPECT_TRUE(bench().solid.shownPolygons() > 60'000 && polygons() == told) << smooth;
    EXPECT_NE(pixels(kSolid), meanwhile);
    EXPECT_NEAR(w->surface(kSolid).inked(), inked, inked / 50);
    click("chkSmooth");
  }
}

TEST_F(ModelTest, SizesThatWereAskedForAreProposedAgain) {
  startSolid();
  for (const auto& [command, sizes] :
       {std::pair<const char*, std::array<const char*, 2>>{"mnuEditFitFrame", {"150 x 90", "120 by"}},
        {"mnuEditFitRing", {"17 x 5", "17 x"}},
        {"mnuViewFitRadius", {"1.5", "-1"}}})
    for (const char* const size : {sizes[0], sizes[1], ""}) {
      pickInput(command, size);
      EXPECT_EQ(lastAsked().initial == sizes[0], size != sizes[0]) << command << ' ' << lastAsked().initial;
    }
  pickInput("mnuEditFitFrame", "150 x 90");
  const std::string stretch = text(Param::Skew);
  bench().saveOptions.outline = true;
  pickInput("mnuEditFitFrame", "150 x 90");
  EXPECT_NE(lastAsked().text.find("what is cut out"), std::string::npos);
  EXPECT_NE(text(Param::Skew), stretch);
}

}  // namespace
}  // namespace lorivan
