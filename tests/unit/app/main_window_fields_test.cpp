// What a change of each field sets going, and the way back.
#include "main_window_driver.h"

namespace lorivan {
namespace {

using FieldsTest = MainWindowTest;

TEST_F(FieldsTest, GridFieldsBuildANewGridWithoutAsking) {
  for (const auto& [p, value] :
       {std::pair{Param::XNo, "3"}, {Param::YNo, "3"}, {Param::CrossOffset, "1"}, {Param::Skew, "2"}}) {
    SCOPED_TRACE(parameterSpec(p).field);
    start();
    w->setVisible(fieldControl(p), true);
    markGrid();
    click("cmd2D");
    ASSERT_TRUE(main->knotDrawn());
    enter(p, value);
    EXPECT_TRUE(gridIsNew());
    EXPECT_FALSE(main->knotDrawn());
    EXPECT_TRUE(enabled("cmd2D"));
    EXPECT_FALSE(commandEnabled("mnuFileSaveEMF"));
    EXPECT_EQ(w->surface(kGrid).count(DrawKind::wideCurve), 0);
    EXPECT_EQ(asked(), 0U);
  }
}

TEST_F(FieldsTest, StyleFieldsKeepTheGridAndDrawTheKnotAgain) {
  for (const auto& [p, value] : {std::pair{Param::Width, "9"},
                                 {Param::Edge, "2"},
                                 {Param::Swish, "12"},
                                 {Param::Smooth, "4"},
                                 {Param::StartColour, "3"},
                                 {Param::PicKnotBackColour, "9"}}) {
    SCOPED_TRACE(parameterSpec(p).field);
    start();
    markGrid();
    enter(p, value);
    EXPECT_FALSE(gridIsNew());
    EXPECT_FALSE(main->knotDrawn());
    click("cmd2D");
    const std::vector<std::uint32_t> old(w->surface(kGrid).pixels().begin(),
                                         w->surface(kGrid).pixels().end());
    const std::string first = text(p);
    enter(p, std::string(parameterSpec(p).value));
    ASSERT_NE(text(p), first);
    EXPECT_FALSE(gridIsNew());
    EXPECT_TRUE(main->knotDrawn());
    EXPECT_FALSE(std::ranges::equal(old, w->surface(kGrid).pixels()));
    EXPECT_TRUE(commandEnabled("mnuFileSaveEMF"));
  }
}

TEST_F(FieldsTest, ModelFieldsOnlyOfferToBuildTheModel) {
  for (const Param p : {Param::PolySides, Param::PolyPoints, Param::PolyRadius, Param::PolySmooth,
                        Param::PolyZF, Param::RingPerc}) {
    SCOPED_TRACE(parameterSpec(p).field);
    start();
    const int before = clears();
    enter(p, "7");
    EXPECT_TRUE(enabled("cmd3D"));
    EXPECT_EQ(clears(), before);
  }
}

TEST_F(FieldsTest, ATextThatStaysTheSameDoesNothing) {
  start();
  markGrid();
  const int before = clears();
  for (const char* same : {"2", "2", " 2 ", "2,0"}) enter(Param::XNo, same);
  w->userFocuses(fieldControl(Param::Width));
  w->userFocuses(controlId("cmd2D"));
  EXPECT_EQ(clears(), before);
  EXPECT_FALSE(gridIsNew());
  EXPECT_EQ(text(Param::XNo), "2");
}

TEST_F(FieldsTest, LeavingAFieldAppliesItAndTheCorrectionIsTold) {
  start();
  w->userTypes(fieldControl(Param::XNo), "30");
  EXPECT_EQ(lines(), 12);
  w->userFocuses(fieldControl(Param::YNo));
  EXPECT_EQ(text(Param::XNo), "20");
  EXPECT_EQ(lines(), 20 * 3 + 21 * 2);
  enter(Param::PolySides, "many");
  EXPECT_EQ(text(Param::PolySides), "5");
  EXPECT_EQ(w->status(), "Sides: \"many\" became 5 (3 to 200)");
}

TEST_F(FieldsTest, MenusApplyWhatWasTyped) {
  start();
  w->userTypes(fieldControl(Param::XNo), "4");
  pick("mnuFileNewGrid");
  EXPECT_EQ(lines(), 4 * 3 + 5 * 2);
}

TEST_F(FieldsTest, ScaleAsksOnlyWhenAKnotIsDrawn) {
  start();
  markGrid();
  enter(Param::Scale, "20");
  EXPECT_TRUE(gridIsNew());
  EXPECT_EQ(asked(), 0U);
  EXPECT_EQ(main->knot().graph.CellSize, 20);

  click("cmd2D");
  markGrid();
  platform.dialogs.answerConfirm(false);
  enter(Param::Scale, "25");
  EXPECT_EQ(lastAsked().text, "Changing scale will erase your current grid. OK to continue?");
  EXPECT_EQ(lastAsked().title, "Scale change warning");
  EXPECT_EQ(text(Param::Scale), "20");
  EXPECT_FALSE(gridIsNew());
  EXPECT_TRUE(main->knotDrawn());
  w->userPressesEnter();
  EXPECT_EQ(asked(), 1U);

  platform.dialogs.answerConfirm(true);
  enter(Param::Scale, "25");
  EXPECT_TRUE(gridIsNew());
  EXPECT_FALSE(main->knotDrawn());
  EXPECT_EQ(main->knot().graph.CellSize, 25);
  enter(Param::Scale, "26");
  EXPECT_EQ(asked(), 2U);
}

TEST_F(FieldsTest, AScaleThatDoesNotFitIsLoweredSilently) {
  start();
  enter(Param::XNo, "10");
  click("cmd2D");
  platform.dialogs.answerConfirm(true);
  enter(Param::Scale, "60");
  const int fitted = std::stoi(text(Param::Scale));
  EXPECT_LT(fitted, 21);
  EXPECT_GT(fitted, 15);
  EXPECT_EQ(main->knot().graph.CellSize, fitted);
  w->userPressesEnter();
  EXPECT_EQ(asked(), 1U);
}

TEST_F(FieldsTest, ShapesCorrectTheirCountsAndShowTheirOffset) {
  start();
  w->userChooses(controlId("lstType"), static_cast<int>(Shape::Circular));
  EXPECT_EQ(text(Param::XNo), "4");
  EXPECT_FALSE(visible("vtCrossOffset"));
  w->userChooses(controlId("lstType"), static_cast<int>(Shape::Cross));
  EXPECT_TRUE(visible("vtCrossOffset"));
  EXPECT_EQ(w->text(controlId("lblXF")), "CO");
  enter(Param::CrossOffset, "7");
  EXPECT_EQ(text(Param::CrossOffset), "1");
  w->userChooses(controlId("lstType"), static_cast<int>(Shape::Spiral));
  EXPECT_EQ(w->text(controlId("lblXF")), "SO");
  w->userChooses(controlId("lstType"), 0);
  EXPECT_FALSE(visible("lblXF"));
}

TEST_F(FieldsTest, ColoursFollowTheirFields) {
  start();
  enter(Param::StartColour, "-9");
  EXPECT_EQ(w->background(fieldControl(Param::StartColour)), QBColor(9));
  EXPECT_EQ(w->textColour(fieldControl(Param::StartColour)), 0U);
  enter(Param::PicKnotBackColour, "1");
  EXPECT_EQ(w->background(fieldControl(Param::PicKnotBackColour)), QBColor(1));
  EXPECT_EQ(w->textColour(fieldControl(Param::PicKnotBackColour)), 0xFFFFFFU);
  EXPECT_EQ(w->surface(kGrid).pixel({1, 1}), QBColor(1));

  click("cmd2D");
  platform.dialogs.answerColour(0x445566);
  click("txtCol8");
  EXPECT_EQ(lastAsked().colour, QBColor(9));
  EXPECT_EQ(w->background(fieldControl(Param::StartColour)), 0x445566U);
  const auto calls = w->surface(kGrid).calls();
  EXPECT_TRUE(std::ranges::any_of(calls, [](const DrawCall& c) { return c.colour == 0x445566; }));
  platform.dialogs.answerColour(std::nullopt);
  const int before = clears();
  click("txtCol3");
  EXPECT_EQ(clears(), before);
}

TEST_F(FieldsTest, AnimationSwitchesItsControls) {
  start();
  click("chkAnimate");
  EXPECT_TRUE(enabled("vtAnimate"));
  EXPECT_TRUE(enabled("chkLoop"));
  click("chkAnimate");
  EXPECT_FALSE(enabled("vtAnimate"));
}

TEST_F(FieldsTest, UndoStepsBackTheLatestChangeWithoutDrawing) {
  start();
  enter(Param::Width, "9");
  enter(Param::Edge, "3");
  enter(Param::Width, "10");
  const int before = clears();
  for (const auto& [p, value] : {std::pair{Param::Width, "9"}, {Param::Edge, "4"}, {Param::Width, "7"}}) {
    pick("mnuEditUndo");
    EXPECT_EQ(text(p), value);
  }
  EXPECT_EQ(clears(), before);
  w->userEnters(fieldControl(Param::Width), "7");  // the value put back is applied by the next Enter
  EXPECT_GT(clears(), before);
}

TEST_F(FieldsTest, UndoOfARestoredValueShowsTheFallBack) {
  platform.settings().write("Settings", "txtXNo", "5");
  start();
  pick("mnuEditUndo");
  EXPECT_EQ(text(Param::XNo), "2");
  EXPECT_EQ(lines(), 5 * 3 + 6 * 2);
  for (int i = 0; i < 40; ++i) pick("mnuEditUndo");  // nothing is left to step back to in the end
  EXPECT_EQ(text(Param::Width), "7");
}

TEST_F(FieldsTest, UndoOfAValuePutBackTakesTheOneBefore) {
  start();
  enter(Param::XNo, "5");
  enter(Param::XNo, "6");
  pick("mnuEditUndo");
  EXPECT_EQ(text(Param::XNo), "5");
  enter(Param::XNo, "4");
  pick("mnuEditUndo");
  EXPECT_EQ(text(Param::XNo), "5");
  pick("mnuEditUndo");
  EXPECT_EQ(text(Param::XNo), "2");
  EXPECT_EQ(lines(), 4 * 3 + 5 * 2);
}

}  // namespace
}  // namespace lorivan
