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
  expectTexts({{Param::XNo, "2"}, {Param::Scale, "30"}, {Param::Edge, "4"}, {Param::KDist, "-1100"}});
  EXPECT_EQ(text(Param::Smooth), "2") << "0 is stored and corrected";
  EXPECT_EQ(lines(), 12);
  EXPECT_EQ(w->surface(kGrid).count(DrawKind::segment), 12 * 3);
  for (const char* on : {"cmdNewGrid", "cmdOldGrid", "cmdRandknot", "cmd2D"}) EXPECT_TRUE(enabled(on)) << on;
  for (const char* off : {"cmd3D", "cmd2DView", "cmd3DView", "vtAnimate", "chkLoop"})
    EXPECT_FALSE(enabled(off)) << off;
  EXPECT_FALSE(commandEnabled("mnuFileSave3D") || commandEnabled("mnuFileSaveEMF"));
  for (const char* hidden : {"picKnot", "picShape", "vtCrossOffset", "lblXF", "Check1"})
    EXPECT_FALSE(visible(hidden)) << hidden;
  EXPECT_EQ(w->background(kFirstColourBox + 8), QBColor(9));
  EXPECT_EQ(background(Param::PicKnotBackColour), 0xFFFFFFU);
  EXPECT_EQ(background(Param::StartColour), QBColor(12));
}

TEST_F(StartTest, EverythingComesBackAfterAnExit) {
  start();
  choose(Shape::Spiral);
  enterAll({{Param::XNo, "5"},
            {Param::YNo, "3"},
            {Param::Skew, "1.25"},
            {Param::CrossOffset, "-2"},
            {Param::StartColour, "-7"},
            {Param::PolyZF, "0.75"},
            {Param::GridSize, "33"},
            {Param::PicKnotBackColour, "4"}});
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
  EXPECT_TRUE(w->closed());
  EXPECT_EQ(platform.settings().flushes, 1);
  EXPECT_EQ(platform.settings().values.size(), 15U + 35U);
  const std::pair<const char*, const char*> keys[] = {{"txtyNo", "3"},        {"txtpicKnotBackColour", "4"},
                                                      {"2txtCol", "1193046"}, {"LastX", "600"},
                                                      {"GridOn", "False"},    {"3DSave", "5"}};
  for (const auto& [key, value] : keys) EXPECT_EQ(stored(platform, key), value) << key;

  start();
  for (const ParamSpec& spec : parameterTable())
    EXPECT_TRUE(spec.key.empty() || w->text(w->control(spec.field)) == before[spec.field]) << spec.field;
  for (const char* on : {"chkDXF2D", "chkAnimate", "chkConstantShape", "optSTL"})
    EXPECT_TRUE(w->checked(w->control(on))) << on;
  for (const char* off : {"chkShowGrid", "chkShapeT", "chkLoop", "optPOV"})
    EXPECT_FALSE(w->checked(w->control(off))) << off;
  EXPECT_EQ(w->text(controlId("lblXF")), "SO");
  EXPECT_TRUE(visible("vtCrossOffset") && enabled("chkLoop"));
  EXPECT_EQ(w->background(kFirstColourBox + 2), 0x123456U);
  EXPECT_EQ(w->surface(kGrid).background(), QBColor(4));
  EXPECT_TRUE(w->place().left == 40 && w->place().top == 30);
}

TEST_F(StartTest, OnlyAgreedExitsSaveAlsoWhatIsNotConfirmed) {
  start();
  w->userTypes(fieldControl(Param::Width), "99");
  platform.dialogs.answerConfirm(false);
  pick("mnuFileExit");
  EXPECT_FALSE(w->closed());
  EXPECT_TRUE(platform.settings().values.empty());
  w->userTypes(fieldControl(Param::Width), "99");
  platform.dialogs.answerConfirm(true);
  w->userCloses();
  EXPECT_EQ(stored(platform, "txtWidth"), "30");
}

TEST_F(StartTest, NonsenseInTheSettingsIsCorrected) {
  const std::pair<const char*, const char*> nonsense[] = {
      {"txtXNo", "many"},       {"txtScale", "1e99"}, {"txtSkew", ""},       {"lsttype", "77"},
      {"chkShowGrid", "maybe"}, {"3DSave", "12"},     {"4txtCol", "red"},    {"5txtCol", "-1"},
      {"LastX", "99999999"},    {"LastY", "-300"},    {"GridOn", "perhaps"}, {"SnapOn", "True"}};
  for (const auto& [key, value] : nonsense) stored(platform, key) = value;
  start();
  expectTexts({{Param::XNo, "2"}, {Param::Scale, "6"}, {Param::Skew, "1"}});  // e reads as a decimal point
  EXPECT_EQ(w->selected(controlId("lstType")), 0);
  EXPECT_FALSE(w->checked(controlId("chkShowGrid")));
  for (const ControlId option : kSaveFormats) EXPECT_FALSE(w->checked(option));
  EXPECT_EQ(w->background(kFirstColourBox + 4), 0U);
  EXPECT_EQ(w->background(kFirstColourBox + 5), 0xFFFFFFU);
  EXPECT_TRUE(w->place().left == 1920 - w->place().width && w->place().top == 0);
  EXPECT_FALSE(w->commandChecked(commandId("mnuShapeGridOnOff")));
  EXPECT_TRUE(w->commandChecked(commandId("mnuShapeSnap")));
}

TEST_F(StartTest, AScreenThatIsTooLowEndsTheProgram) {
  platform.screen = {0, 0, 800, 599};
  platform.dialogs.answerMessage();
  start();
  EXPECT_FALSE(w->shown());
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
