// What the user puts into the form, and what follows from a change of each field.
#include "main_window_driver.h"

namespace lorivan {
namespace {

using FieldsTest = MainWindowTest;

TEST_F(FieldsTest, WhateverIsMovedIsTheDocuments) {
  start();
  choose(Shape::Cross);  // with an offset
  click("chkAnimate");   // with a speed
  for (int i = 0; i < kParamCount; ++i) {
    const auto p = static_cast<Param>(i);
    const std::string before = document().fields.text(p);
    w->userSteps(fieldControl(p), before == parameterSpec(p).max ? -1 : 1);
    EXPECT_NE(document().fields.text(p), before) << parameterSpec(p).field;
    EXPECT_EQ(document().fields.text(p), text(p)) << parameterSpec(p).field;
  }
  for (int i = 0; i < kCheckCount; ++i) {
    const auto c = static_cast<Check>(i);
    if (c == Check::Loop || c == Check::Animate || c == Check::Wrap || checkControl(c) < 0) continue;
    const bool before = document().fields.check(c);
    click(checkSpec(c).field);
    EXPECT_NE(document().fields.check(c), before) << checkSpec(c).field;
    EXPECT_EQ(document().fields.check(c), w->checked(checkControl(c))) << checkSpec(c).field;
  }
}

TEST_F(FieldsTest, EachFieldHasItsFollowUp) {
  const auto expectFollows = [&](Param p, bool knotStays, bool offers3D) {
    SCOPED_TRACE(parameterSpec(p).field);
    start();
    choose(Shape::Cross);
    markGrid();
    click("cmd2D");
    const auto old = pixels();
    w->userSteps(fieldControl(p), parameterSpec(p).max == text(p) ? -1 : 1);
    EXPECT_EQ(gridIsNew(), p == Param::XNo) << "its arm gets another place; else walls stay with their cells";
    EXPECT_EQ(drawn(), knotStays);
    EXPECT_EQ(commandEnabled("mnuFileSaveEMF") && commandEnabled("mnuFileSave3D"), knotStays);
    EXPECT_EQ(pixels() == old, offers3D);
    EXPECT_EQ(enabled("cmd3D"), offers3D || p == Param::PicKnotBackColour);
    EXPECT_EQ(w->status() == "Press Create 3D to show the changed 3D values", offers3D);
    EXPECT_EQ(asked(), 0U);
  };
  for (const Param p : {Param::XNo, Param::YNo, Param::CrossOffset, Param::Skew})
    expectFollows(p, false, false);
  for (const Param p :
       {Param::Width, Param::Edge, Param::Swish, Param::Smooth, Param::StartColour, Param::PicKnotBackColour})
    expectFollows(p, true, false);
  for (const Param p : {Param::PolySides, Param::PolyPoints, Param::PolyRadius, Param::PolySmooth,
                        Param::PolyZF, Param::RingPerc})
    expectFollows(p, true, true);
}

TEST_F(FieldsTest, WithDrawAtOnceEveryChangeShowsTheKnot) {
  platform.settings().values.clear();
  start();
  EXPECT_TRUE(drawn());
  EXPECT_EQ(w->status(), "3 strands, 12 crossings");
  for (const Param p : {Param::XNo, Param::Scale, Param::Skew, Param::Width}) {
    const auto old = pixels();
    w->userSteps(fieldControl(p), 2);
    EXPECT_TRUE(drawn() && pixels() != old) << parameterSpec(p).field;
  }
  click("cmdOldGrid");
  EXPECT_TRUE(!drawn() && statusStarts("Square-Square, 4 x 2, scale 32: "));
  clickLine(3);
  EXPECT_TRUE(drawn());
  EXPECT_TRUE(statusStarts("Line 4 is a wall: strands turn back at it; ")) << w->status();
  enterAll({{Param::PolySides, "200"}, {Param::PolyPoints, "50"}, {Param::XNo, "20"}, {Param::YNo, "12"}});
  EXPECT_TRUE(drawn() && asked() == 0 && w->busyTimes() == 0) << "no box for a model nobody asked for";
}

TEST_F(FieldsTest, WrapIsOfferedToShapesThatHaveTwoBorders) {
  platform.settings().values.clear();
  start();
  click("chkWrap");
  EXPECT_TRUE(drawn() && lines() == 2 * 3 + 2 * 2) << "no right border";
  EXPECT_EQ(text(Param::RingPerc), "100");
  enter(Param::RingPerc, "50");
  EXPECT_TRUE(text(Param::RingPerc) == "100" && w->status().find("50 became 100") != std::string::npos);
  clickLine(6);
  EXPECT_EQ(line(6).Kind, kWall) << "the seam's line";
  choose(Shape::SquareTriangle);
  enter(Param::XNo, "3");
  EXPECT_TRUE(text(Param::XNo) == "4" && w->status().ends_with("Columns: 3 became 4 for this shape"));
  choose(Shape::Star);
  EXPECT_TRUE(visible("chkWrap") && !enabled("chkWrap") && drawn());
  choose(Shape::Cross);
  EXPECT_TRUE(!visible("chkWrap") && visible("vtCrossOffset"));
  choose(Shape::SquareSquare);
  click("chkWrap");
  EXPECT_FALSE(bench().knot().graph.wrap);
  undo();
  EXPECT_TRUE(bench().knot().graph.wrap && checked("chkWrap") && drawn());
}

TEST_F(FieldsTest, TypedTextIsCorrectedAndTheCorrectionTold) {
  start();
  markGrid();
  const int before = clears();
  for (const char* same : {"2", "2", " 2 ", "2,0"}) enter(Param::XNo, same);
  EXPECT_TRUE(nothingWaits({Param::Width, Param::Edge}) && clears() == before && !gridIsNew());
  w->userTypes(fieldControl(Param::XNo), "30");
  EXPECT_EQ(lines(), 12);
  w->userFocuses(fieldControl(Param::YNo));
  EXPECT_TRUE(text(Param::XNo) == "20" && lines() == 20 * 3 + 21 * 2);
  w->userTypes(fieldControl(Param::XNo), "4");
  pick("mnuFileNewGrid");
  EXPECT_EQ(lines(), 4 * 3 + 5 * 2);
  enter(Param::PolySides, "many");
  EXPECT_EQ(w->status(), "Sides: \"many\" became 5 (3 to 200)");
  enter(Param::XNo, "3.6");
  EXPECT_EQ(text(Param::XNo) + document().fields.text(Param::XNo), "44") << "whole numbers are written back";
  w->userTypes(fieldControl(Param::Width), "12");
  w->userEscapes();
  EXPECT_TRUE(text(Param::Width) == "7" && nothingWaits({Param::Edge, Param::Width}));
  choose(Shape::Circular);
  enter(Param::XNo, "none");
  EXPECT_TRUE(text(Param::XNo) == "4" && w->status().ends_with("; Columns: 2 became 4 for this shape"))
      << w->status();
}

TEST_F(FieldsTest, WhatIsPointedAtIsExplainedUnlessThereIsNews) {
  start();
  platform.clock().advance(5000);
  const std::string before = w->status();
  w->userPoints(fieldControl(Param::GridSize));
  EXPECT_TRUE(statusStarts("AutoGrid cells (AGS): ") && w->status().ends_with(", 1 to 100")) << w->status();
  w->userPoints(controlId("cmdRandknot"));
  EXPECT_EQ(w->status(), "Create a random knot");
  w->userPoints(-1);
  EXPECT_EQ(w->status(), before);
  w->userTypes(fieldControl(Param::Width), "99");
  w->userFocuses(fieldControl(Param::Edge));
  const std::string news = w->status();
  EXPECT_TRUE(news.find("\"99\" became 30") != std::string::npos) << news;
  w->userPoints(fieldControl(Param::Edge));
  EXPECT_EQ(w->status(), news) << "there is time to read it";
}

TEST_F(FieldsTest, StepsOfOneFieldAreOneStepBackUntilItIsLeft) {
  start();
  const ControlId width = fieldControl(Param::Width), ka = fieldControl(Param::Ka);
  for (int i = 0; i < 5; ++i) w->userSteps(width, 1);
  w->userSteps(width, -2);
  EXPECT_EQ(text(Param::Width), "10");
  EXPECT_EQ(commandText("mnuEditUndoStep"), "&Undo Width 10");
  w->userFocuses(fieldControl(Param::Edge));
  w->userSteps(width, 30);
  EXPECT_EQ(text(Param::Width), "30");
  for (const char* back : {"10", "7"}) {
    undo();
    EXPECT_EQ(text(Param::Width), back);
  }
  for (int i = 0; i < 10; ++i) w->userSteps(ka, 1);
  EXPECT_EQ(text(Param::Ka), "0.8") << "on the step's own grid";
  w->userTypes(width, "20");
  w->userSteps(width, 1);
  EXPECT_EQ(document().fields.text(Param::Width), "21") << "from what stands in the field";
}

TEST_F(FieldsTest, ScaleAsksOnlyWhenAKnotIsDrawn) {
  start();
  markGrid();
  enter(Param::Scale, "20");
  EXPECT_TRUE(!gridIsNew() && asked() == 0 && bench().knot().graph.CellSize == 20);
  click("cmd2D");
  const std::string undo = commandText("mnuEditUndoStep");
  platform.dialogs.answerConfirm(false);
  enter(Param::Scale, "25");
  EXPECT_EQ(lastAsked().text, "Changing scale will erase your current grid. OK to continue?");
  EXPECT_TRUE(text(Param::Scale) == "20" && !gridIsNew() && drawn() &&
              commandText("mnuEditUndoStep") == undo);
  w->userPressesEnter();
  EXPECT_EQ(asked(), 1U);
  platform.dialogs.answerConfirm(false);
  w->userSteps(fieldControl(Param::Scale), 1);
  EXPECT_EQ(asked(), 2U);
  EXPECT_EQ(text(Param::Scale), "20");
  pick("mnuEditUndo");
  EXPECT_EQ(text(Param::Scale), "30") << "the refused one is in no history";
  enter(Param::Scale, "20");
  click("cmd2D");
  platform.dialogs.answerConfirm(true);
  enter(Param::Scale, "25");
  EXPECT_TRUE(!gridIsNew() && !drawn()) << "walls stay with their cells";
  enter(Param::XNo, "10");
  click("cmd2D");
  platform.dialogs.answerConfirm(true);
  enter(Param::Scale, "60");  // does not fit, and is lowered silently
  const int fitted = std::stoi(text(Param::Scale));
  EXPECT_TRUE(fitted > 15 && fitted < 21) << fitted;
  enter(Param::XNo, "2");
  EXPECT_TRUE(text(Param::Scale) == "60" && asked() == 4) << "asked for, and fits now";
}

TEST_F(FieldsTest, ColoursAndLabelsFollowTheirFields) {
  start();
  enterAll({{Param::StartColour, "-9"}, {Param::PicKnotBackColour, "1"}});
  EXPECT_EQ(background(Param::StartColour), QBColor(9));
  EXPECT_EQ(background(Param::PicKnotBackColour), QBColor(1));
  for (const Param p : {Param::StartColour, Param::PicKnotBackColour}) {
    const double a = relativeLuminance(background(p)), b = relativeLuminance(w->textColour(fieldControl(p)));
    EXPECT_GE((std::max(a, b) + 0.05) / (std::min(a, b) + 0.05), 4.5) << "legible";
  }
  EXPECT_EQ(w->surface(kGrid).pixel({1, 1}), QBColor(1));
  click("cmd2D");
  platform.dialogs.answerColour(0x445566);
  click("txtCol8");
  EXPECT_EQ(lastAsked().colour, QBColor(9));
  EXPECT_EQ(background(Param::StartColour), 0x445566U);
  const auto calls = w->surface(kGrid).calls();
  EXPECT_TRUE(std::ranges::any_of(calls, [](const DrawCall& c) { return c.colour == 0x445566; }));
  undo();
  EXPECT_EQ(background(Param::StartColour), QBColor(9));
  platform.dialogs.answerColour(std::nullopt);
  const int before = clears();
  click("txtCol3");
  EXPECT_EQ(clears(), before);
  for (const auto& [shape, label] :
       {std::pair{Shape::Circular, ""}, {Shape::Cross, "CO"}, {Shape::Spiral, "SO"}}) {
    choose(shape);
    EXPECT_EQ(visible("vtCrossOffset") && visible("lblXF"), *label != 0);
    EXPECT_TRUE(*label == 0 || w->text(controlId("lblXF")) == label);
  }
  click("chkAnimate");
  EXPECT_TRUE(enabled("vtAnimate") && enabled("chkLoop"));
}

TEST_F(FieldsTest, UndoFieldStepsBackTheLatestChangeWithoutDrawing) {
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
  for (int i = 0; i < 40; ++i) pick("mnuEditUndo");  // nothing is left to step back to in the end
  enterAll({{Param::XNo, "5"}, {Param::XNo, "4"}});
  for (const char* value : {"5", "2"}) {
    pick("mnuEditUndo");
    EXPECT_EQ(text(Param::XNo), value);
  }
  EXPECT_EQ(lines(), 4 * 3 + 5 * 2);
}

}  // namespace
}  // namespace lorivan
