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
    EXPECT_TRUE(gridIsNew() && enabled("cmd2D"));
    EXPECT_FALSE(main->knotDrawn() || commandEnabled("mnuFileSaveEMF"));
    EXPECT_EQ(w->surface(kGrid).count(DrawKind::fillPath), 0);
    EXPECT_EQ(asked(), 0U);
  }
}

TEST_F(FieldsTest, StyleFieldsKeepTheGridAndDrawTheKnotAgain) {
  const std::pair<Param, const char*> values[] = {{Param::Width, "9"},       {Param::Edge, "2"},
                                                  {Param::Swish, "12"},      {Param::Smooth, "4"},
                                                  {Param::StartColour, "3"}, {Param::PicKnotBackColour, "9"}};
  for (const auto& [p, value] : values) {
    SCOPED_TRACE(parameterSpec(p).field);
    start();
    markGrid();
    enter(p, value);
    EXPECT_FALSE(gridIsNew() || main->knotDrawn());
    click("cmd2D");
    const auto old = pixels();
    const std::string first = text(p);
    enter(p, std::string(parameterSpec(p).value));
    ASSERT_NE(text(p), first);
    EXPECT_TRUE(!gridIsNew() && main->knotDrawn() && commandEnabled("mnuFileSaveEMF"));
    EXPECT_NE(pixels(), old);
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
  EXPECT_TRUE(nothingWaits({Param::Width, Param::Edge}));
  EXPECT_EQ(clears(), before);
  EXPECT_FALSE(gridIsNew());
}

TEST_F(FieldsTest, LeavingAFieldOrPickingACommandAppliesItAndTheCorrectionIsTold) {
  start();
  w->userTypes(fieldControl(Param::XNo), "30");
  EXPECT_EQ(lines(), 12);
  w->userFocuses(fieldControl(Param::YNo));
  EXPECT_EQ(text(Param::XNo), "20");
  EXPECT_EQ(lines(), 20 * 3 + 21 * 2);
  w->userTypes(fieldControl(Param::XNo), "4");
  pick("mnuFileNewGrid");
  EXPECT_EQ(lines(), 4 * 3 + 5 * 2);
  enter(Param::PolySides, "many");
  EXPECT_EQ(w->status(), "Sides: \"many\" became 5 (3 to 200)");
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
  EXPECT_EQ(text(Param::Scale), "20");
  EXPECT_TRUE(!gridIsNew() && main->knotDrawn());
  w->userPressesEnter();
  EXPECT_EQ(asked(), 1U);

  platform.dialogs.answerConfirm(true);
  enter(Param::Scale, "25");
  EXPECT_TRUE(gridIsNew() && !main->knotDrawn());
  enter(Param::Scale, "26");
  EXPECT_EQ(asked(), 2U);

  enter(Param::XNo, "10");
  click("cmd2D");
  platform.dialogs.answerConfirm(true);
  enter(Param::Scale, "60");  // does not fit, and is lowered silently
  const int fitted = std::stoi(text(Param::Scale));
  EXPECT_TRUE(fitted > 15 && fitted < 21) << fitted;
  EXPECT_EQ(main->knot().graph.CellSize, fitted);
  w->userPressesEnter();
  EXPECT_EQ(asked(), 3U);
}

TEST_F(FieldsTest, ShapesCorrectTheirCountsAndShowTheirOffset) {
  start();
  choose(Shape::Circular);
  EXPECT_EQ(text(Param::XNo), "4");
  EXPECT_FALSE(visible("vtCrossOffset"));
  choose(Shape::Cross);
  EXPECT_TRUE(visible("vtCrossOffset"));
  EXPECT_EQ(w->text(controlId("lblXF")), "CO");
  enter(Param::CrossOffset, "7");
  EXPECT_EQ(text(Param::CrossOffset), "1");
  choose(Shape::SquareSquare);
  EXPECT_FALSE(visible("lblXF"));
}

TEST_F(FieldsTest, ColoursFollowTheirFields) {
  start();
  enterAll({{Param::StartColour, "-9"}, {Param::PicKnotBackColour, "1"}});
  EXPECT_EQ(background(Param::StartColour), QBColor(9));
  EXPECT_EQ(w->textColour(fieldControl(Param::StartColour)), 0U);
  EXPECT_EQ(background(Param::PicKnotBackColour), QBColor(1));
  EXPECT_EQ(w->textColour(fieldControl(Param::PicKnotBackColour)), 0xFFFFFFU);
  EXPECT_EQ(w->surface(kGrid).pixel({1, 1}), QBColor(1));
  click("cmd2D");
  platform.dialogs.answerColour(0x445566);
  click("txtCol8");
  EXPECT_EQ(lastAsked().colour, QBColor(9));
  EXPECT_EQ(background(Param::StartColour), 0x445566U);
  const auto calls = w->surface(kGrid).calls();
  EXPECT_TRUE(std::ranges::any_of(calls, [](const DrawCall& c) { return c.colour == 0x445566; }));
  platform.dialogs.answerColour(std::nullopt);
  const int before = clears();
  click("txtCol3");
  EXPECT_EQ(clears(), before);
}

TEST_F(FieldsTest, UndoStepsBackTheLatestChangeWithoutDrawing) {
  start();
  enterAll({{Param::Width, "9"}, {Param::Edge, "3"}, {Param::Width, "10"}});
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
  enterAll({{Param::XNo, "5"}, {Param::XNo, "6"}});
  pick("mnuEditUndo");
  EXPECT_EQ(text(Param::XNo), "5");
  enter(Param::XNo, "4");
  for (const char* value : {"5", "2"}) {
    pick("mnuEditUndo");
    EXPECT_EQ(text(Param::XNo), value);
  }
  EXPECT_EQ(lines(), 4 * 3 + 5 * 2);
}

}  // namespace
}  // namespace lorivan
