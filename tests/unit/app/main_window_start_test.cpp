// The main window's start-up, its settings and its exit.
#include "app/settings_table.h"
#include "main_window_driver.h"

namespace lorivan {
namespace {

using StartTest = MainWindowTest;

std::string& stored(NonePlatform& platform, const std::string& key) {
  return platform.settings().values[{"Settings", key}];
}

TEST_F(StartTest, AFirstRunShowsTheFirstGrid) {
  start();
  EXPECT_EQ(w->title(), "Lorivan - V3.44k ");
  EXPECT_TRUE(w->shown());
  EXPECT_EQ(w->items(controlId("lstType")).size(), 13U);
  for (const auto& [p, value] : {std::pair{Param::XNo, "2"},
                                 {Param::Scale, "30"},
                                 {Param::Edge, "4"},
                                 {Param::Smooth, "2"},  // 0 is stored and corrected
                                 {Param::PolyRadius, "5"},
                                 {Param::KDist, "-1100"}})
    EXPECT_EQ(text(p), value) << parameterSpec(p).field;
  EXPECT_EQ(lines(), 12);
  EXPECT_EQ(w->surface(kGrid).count(DrawKind::segment), 12 * 3);
  for (const char* on : {"cmdNewGrid", "cmdOldGrid", "cmdRandknot", "cmd2D"}) EXPECT_TRUE(enabled(on)) << on;
  for (const char* off : {"cmd3D", "cmd2DView", "cmd3DView", "vtAnimate", "chkLoop"})
    EXPECT_FALSE(enabled(off)) << off;
  EXPECT_FALSE(commandEnabled("mnuFileSave3D"));
  EXPECT_FALSE(commandEnabled("mnuFileSaveEMF"));
  EXPECT_TRUE(visible("picGrid"));
  for (const char* hidden : {"picKnot", "picShape", "vtCrossOffset", "lblXF", "Check1"})
    EXPECT_FALSE(visible(hidden)) << hidden;
  EXPECT_TRUE(w->checked(controlId("optPOV")));
  EXPECT_EQ(w->background(kFirstColourBox + 8), QBColor(9));
  EXPECT_EQ(w->background(fieldControl(Param::PicKnotBackColour)), 0xFFFFFFU);
  EXPECT_EQ(w->textColour(fieldControl(Param::PicKnotBackColour)), 0U);
  EXPECT_EQ(w->background(fieldControl(Param::StartColour)), QBColor(12));
  EXPECT_EQ(asked(), 0U);
}

TEST_F(StartTest, EverythingComesBackAfterAnExit) {
  start();
  w->userChooses(controlId("lstType"), 10);
  for (const auto& [p, value] : {std::pair{Param::XNo, "5"},
                                 {Param::YNo, "3"},
                                 {Param::Skew, "1.25"},
                                 {Param::CrossOffset, "-2"},
                                 {Param::StartColour, "-7"},
                                 {Param::PolyZF, "0.75"},
                                 {Param::GridSize, "33"},
                                 {Param::PicKnotBackColour, "4"}})
    enter(p, value);
  for (const char* box : {"chkShowGrid", "chkShapeT", "chkDXF2D", "chkAnimate", "chkConstantShape"})
    click(box);
  enter(Param::Animate, "3");
  click("optSTL");
  platform.dialogs.answerColour(0x123456);
  click("txtCol2");
  w->moveTo(40, 30);
  std::map<std::string_view, std::string> before;
  for (const ParamSpec& spec : parameterTable()) before[spec.field] = w->text(w->control(spec.field));

  platform.settings().flushed = Error{"no room"};
  platform.dialogs.answerConfirm(true);
  w->userCloses();
  EXPECT_EQ(w->status(), "The settings could not be kept: no room");
  EXPECT_EQ(lastAsked().text, "Are you sure you want to exit?");
  EXPECT_EQ(lastAsked().title, "Exit check");
  EXPECT_TRUE(w->closed());
  EXPECT_EQ(platform.settings().flushes, 1);
  EXPECT_EQ(platform.settings().values.size(), 15U + 35U);
  for (const auto& [key, value] : {std::pair{"txtyNo", "3"},
                                   {"lsttype", "10"},
                                   {"txtpicKnotBackColour", "4"},
                                   {"2txtCol", "1193046"},
                                   {"LastX", "600"},
                                   {"GridOn", "False"},
                                   {"3DSave", "5"}})
    EXPECT_EQ(stored(platform, key), value) << key;

  start();
  for (const ParamSpec& spec : parameterTable())
    if (!spec.key.empty()) {
      EXPECT_EQ(w->text(w->control(spec.field)), before[spec.field]) << spec.field;
    }
  for (const auto& [box, on] : {std::pair{"chkShowGrid", false},
                                {"chkShapeT", false},
                                {"chkDXF2D", true},
                                {"chkLoop", false},
                                {"optSTL", true},
                                {"optPOV", false}})
    EXPECT_EQ(w->checked(w->control(box)), on) << box;
  EXPECT_EQ(w->selected(controlId("lstType")), 10);
  EXPECT_EQ(w->text(controlId("lblXF")), "SO");
  EXPECT_TRUE(visible("vtCrossOffset"));
  EXPECT_TRUE(enabled("chkLoop"));
  EXPECT_EQ(w->background(kFirstColourBox + 2), 0x123456U);
  EXPECT_EQ(w->surface(kGrid).background(), QBColor(4));
  EXPECT_EQ(w->place().left, 40);
  EXPECT_EQ(w->place().top, 30);
}

TEST_F(StartTest, CancelKeepsTheWindowAndWritesNothing) {
  start();
  enter(Param::Width, "9");
  platform.dialogs.answerConfirm(false);
  pick("mnuFileExit");
  EXPECT_FALSE(w->closed());
  EXPECT_TRUE(platform.settings().values.empty());
}

TEST_F(StartTest, TextTypedButNotConfirmedIsSavedCorrected) {
  start();
  w->userTypes(fieldControl(Param::Width), "99");
  platform.dialogs.answerConfirm(true);
  w->userCloses();
  EXPECT_EQ(stored(platform, "txtWidth"), "30");
}

TEST_F(StartTest, NonsenseInTheSettingsIsCorrected) {
  for (const auto& [key, value] : {std::pair{"txtXNo", "many"},
                                   {"txtScale", "1e99"},
                                   {"txtSkew", ""},
                                   {"lsttype", "77"},
                                   {"chkShowGrid", "maybe"},
                                   {"3DSave", "12"},
                                   {"4txtCol", "red"},
                                   {"5txtCol", "-1"},
                                   {"LastX", "99999999"},
                                   {"LastY", "-300"},
                                   {"GridOn", "perhaps"},
                                   {"SnapOn", "True"}})
    stored(platform, key) = value;
  start();
  EXPECT_EQ(text(Param::XNo), "2");
  EXPECT_EQ(text(Param::Scale), "6");  // the letter reads as a decimal point
  EXPECT_EQ(text(Param::Skew), "1");
  EXPECT_EQ(w->selected(controlId("lstType")), 0);
  EXPECT_FALSE(w->checked(controlId("chkShowGrid")));
  for (const ControlId option : kSaveFormats) EXPECT_FALSE(w->checked(option));
  EXPECT_EQ(w->background(kFirstColourBox + 4), 0U);
  EXPECT_EQ(w->background(kFirstColourBox + 5), 0xFFFFFFU);
  EXPECT_EQ(w->place().left, 1920 - w->place().width);
  EXPECT_EQ(w->place().top, 0);
  EXPECT_FALSE(w->commandChecked(commandId("mnuShapeGridOnOff")));
  EXPECT_TRUE(w->commandChecked(commandId("mnuShapeSnap")));
}

TEST_F(StartTest, AScreenThatIsTooLowEndsTheProgram) {
  platform.screen = {0, 0, 800, 599};
  platform.dialogs.answerMessage();
  start();
  EXPECT_FALSE(w->shown());
  EXPECT_EQ(lastAsked().text,
            "Sorry, this program only works at resolutions of SuperVGA (800*600, small fonts) or better");
  EXPECT_EQ(lastAsked().title, "");
}

TEST_F(StartTest, HelpOpensItsPages) {
  start();
  for (const char* item : {"mnuHelp3D", "mnuHelpAbout", "mnuHelpCustom", "mnuHelpFAQ", "mnuHelpHelp"})
    pick(item);
  EXPECT_EQ(platform.help().pages.size(), 5U);
  EXPECT_EQ(platform.help().pages.front(), "help/3d.html");
}

}  // namespace
}  // namespace lorivan
