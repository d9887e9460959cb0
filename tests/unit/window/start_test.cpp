// The main window's start-up, its settings and its exit.
#include <sstream>

#include "design/edits.h"
#include "main_window_driver.h"

namespace lorivan {
namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

/// "key=value key=value"
Pairs pairs(const std::string& text) {
  std::istringstream words(text);
  Pairs all;
  for (std::string word; words >> word;)
    all.emplace_back(word.substr(0, word.find('=')), word.substr(word.find('=') + 1));
  return all;
}

class StartTest : public MainWindowTest {
 protected:
  void rememberUser() { platform.userFolder_ = folder.path.string(); }
  Folder folder;
};

TEST_F(StartTest, AFirstRunShowsTheFirstGrid) {
  start();
  EXPECT_EQ(w->title(), "Lorivan - V3.44k ");
  EXPECT_TRUE(w->shown());
  std::string fields, checks, states;
  for (int i = 0; i < kParamCount; ++i) fields += text(static_cast<Param>(i)) + ' ';
  EXPECT_EQ(fields, "2 2 0 20 12 7 30 10 2 1 4 9 5 4 5 4 2 0 15 0 0 0 0.3 0.9 0.5 10 -1100 ");
  for (const CheckSpec& row : checkTable()) checks += bench().form.checked(*findCheck(row.field)) ? '1' : '0';
  EXPECT_EQ(checks, "11001000000010");
  for (const SettingRow& row : settingTable())
    if (std::get_if<WindowState>(&row.owner) != nullptr) states.append(row.fallback) += ' ';
  EXPECT_EQ(states, "0 0 0 False False  1 False True 0 0 False None   ");
  EXPECT_EQ(count(DrawKind::segment), 12 * 3);
  for (const char* off : {"cmd3D", "cmd2DView", "cmd3DView", "vtAnimate", "chkLoop", "lblAnimate"})
    EXPECT_FALSE(enabled(off)) << off;
  EXPECT_THROW(click("cmd3D"), std::logic_error) << "nobody can press it";
  for (const char* off : {"mnuFileSave3D", "mnuFileSaveEMF", "mnuShapeMakeGrid", "mnuShapeAutoGrid",
                          "mnuShapeClear", "mnuShapeUndo", "mnuEditUndoStep", "mnuEditRedoStep", "mnuView3D"})
    EXPECT_FALSE(commandEnabled(off)) << off;
  for (const char* hidden : {"picKnot", "picShape", "vtCrossOffset", "lblXF", "Check1"})
    EXPECT_FALSE(visible(hidden)) << hidden;
  EXPECT_EQ(w->background(kFirstColourBox + 8), QBColor(9));
  EXPECT_EQ(background(Param::PicKnotBackColour), 0xFFFFFFU);
  EXPECT_EQ(background(Param::StartColour), QBColor(12));
}

// Every key with a value of its own, which is not what it falls back to.
TEST_F(StartTest, EverySettingIsReadByItsOwnerAndWrittenBack) {
  const Pairs fields = pairs(
      "txtXNo=3 txtyNo=5 txtStartColour=-7 txtWidth=11 txtEdge=6 txtScale=12 txtSwish=13 "
      "txtAnimate=8 txtSmooth=4 txtSkew=1.25 txtCrossOffset=-2 txtPolySides=9 txtPolyPoints=7 "
      "txtPolyRadius=3.5 txtPolySmooth=12 txtPolyZF=0.75 txtRingPerc=60 txtpicKnotBackColour=14 "
      "txtGridSize=33");
  const Pairs checks = pairs(
      "chkShowGrid=0 chkShowCrossings=0 chkDXF2D=1 chkFullyCrossed=1 chkShapeT=0 chkHeightMap=1 "
      "chkAnimate=1 chkLoop=1 chkConstantShape=1 chkFitBands=1 chkClassic=1 chkSmooth=0 "
      "chkWrap=1");
  const Pairs states = pairs(
      "LastX=600 LastY=450 LastWidth=15000 LastHeight=12000 Maximised=True lsttype=10 "
      "GridOn=True SnapOn=True LastFolder=/some/ 3DSave=5 DrawAtOnce=False FitPicture=True Symmetry=6 "
      "SaveOptions=120,,2000,1,1,0.2,0,1,1 Language=en");
  platform.settings().values.clear();
  for (const Pairs& settings : {fields, checks, states})
    for (const auto& [key, value] : settings) stored(key) = value;
  for (int box = 0; box < kColourBoxes; ++box)
    stored(std::to_string(box) + "txtCol") = std::to_string(1000 + box);
  for (int i = 0; i < kRecentFiles; ++i) stored("Recent" + std::to_string(i)) = "/r" + std::to_string(i);
  const auto before = platform.settings().values;
  EXPECT_EQ(before.size(), settingTable().size());
  start();
  // By their names, since two owners may have exchanged their rows.
  for (const auto& [key, value] : fields) {
    std::string name = "vt" + key.substr(3);
    name[2] = static_cast<char>(std::toupper(name[2]));
    EXPECT_EQ(w->text(w->control(name)), value) << key;
    EXPECT_EQ(document().fields.text(*findParameter(name)), value) << key;
  }
  for (const auto& [key, value] : checks)
    EXPECT_EQ(bench().form.checked(*findCheck(key)), value == "1") << key;
  for (int box = 0; box < kColourBoxes; ++box)
    EXPECT_EQ(w->background(kFirstColourBox + box), static_cast<Colour>(1000 + box));
  const WindowPlace place = w->place();
  EXPECT_TRUE(place.left == 40 && place.top == 30 && place.width == 1000 && place.height == 800 &&
              w->maximised());
  EXPECT_TRUE(document().fields.shape == Shape::Spiral && w->text(controlId("lblXF")) == "SO");
  EXPECT_TRUE(bench().sheet.alignmentGrid() && bench().sheet.snap() && checked("optSTL") &&
              !bench().drawAtOnce);
  EXPECT_TRUE(w->commandChecked(w->command("mnuShapeGridOnOff")) &&
              w->commandChecked(w->command("mnuShapeSnap")));
  EXPECT_FALSE(w->commandChecked(w->command("mnuViewDrawAtOnce")));
  pickFile("mnuFileLoad", "");
  EXPECT_EQ(lastAsked().initial, "/some/*.qzd");
  EXPECT_EQ(commandText("mnuFileRecent9"), "&0 /r9");

  platform.settings().flushed = unwritable("no room");
  exit();
  EXPECT_EQ(lastAsked().text, "Are you sure you want to exit?");
  EXPECT_EQ(w->status(), "The settings could not be kept: no room");
  EXPECT_EQ(platform.settings().values, before);
}

TEST_F(StartTest, OnlyAgreedExitsSaveAlsoWhatIsNotConfirmed) {
  platform.settings().values.clear();
  start();
  for (const int agreed : {0, 1, 2}) {
    w->userTypes(fieldControl(Param::Width), "99");
    platform.dialogs.answerConfirm(agreed > 0);
    if (agreed > 0) platform.dialogs.answerSave(agreed == 1 ? SaveAnswer::cancel : SaveAnswer::discard);
    agreed == 2 ? w->userCloses() : pick("mnuFileExit");
    EXPECT_EQ(w->closed(), agreed == 2);
    EXPECT_EQ(platform.settings().values.empty(), agreed < 2);
  }
  EXPECT_EQ(stored("txtWidth"), "30");
}

TEST_F(StartTest, NonsenseInTheSettingsIsCorrected) {
  const Pairs nonsense = pairs(
      "txtXNo=many txtScale=1e99 txtSkew= lsttype=77 chkShowGrid=maybe 3DSave=12 4txtCol=red 5txtCol=-1 "
      "LastX=99999999 LastY=99999999 GridOn=perhaps SnapOn=True DrawAtOnce= SaveOptions=-3,,many,1,0,0.2");
  for (const auto& [key, value] : nonsense) stored(key) = value;
  start();
  expectTexts({{Param::XNo, "2"}, {Param::Scale, "6"}, {Param::Skew, "1"}});  // e reads as a decimal point
  EXPECT_EQ(w->selected(kShapes), 0);
  EXPECT_FALSE(checked("chkShowGrid"));
  EXPECT_TRUE(checked("optPOV") && !checked("optXYZ")) << "one format is always chosen";
  EXPECT_TRUE(bench().drawAtOnce);
  EXPECT_EQ(bench().saveOptions, OutputOptions{.transparent = true}) << "a cut goes with outlines alone";
  EXPECT_EQ(w->background(kFirstColourBox + 4), 0U);
  EXPECT_EQ(w->background(kFirstColourBox + 5), 0xFFFFFFU);
  EXPECT_TRUE(w->place().left == 1920 - w->place().width && w->place().top == 1080 - w->place().height);
  EXPECT_TRUE(!bench().sheet.alignmentGrid() && bench().sheet.snap());
  MainWindow unshown(platform, {});
  ASSERT_TRUE(unshown.open());
  EXPECT_EQ(platform.window()->place().top, 1080 - platform.window()->place().height);
  platform.window()->moveTo(0, 900);  // as when a frame grows around the window that is shown
  EXPECT_TRUE(unshown.run());
  EXPECT_EQ(platform.window()->place().top, 1080 - platform.window()->place().height);
  stored("LastX") = stored("LastY") = "-300";
  start();
  EXPECT_TRUE(w->place().left == 0 && w->place().top == 0);
}

TEST_F(StartTest, AScreenThatIsTooLowEndsTheProgram) {
  platform.screen = {0, 0, 800, 599};
  platform.dialogs.answerMessage();
  start();
  EXPECT_FALSE(w->shown());
}

TEST_F(StartTest, TheFirstStartWelcomesAndLaterOnesShowTheLastKnot) {
  platform.settings().values.clear();
  rememberUser();
  start({.knotFile = {}, .random = {}, .welcome = true});
  EXPECT_TRUE(drawn() && statusStarts("Welcome!") && document().fields.shape == Shape::Circular);
  EXPECT_FALSE(commandEnabled("mnuEditUndoStep"));
  enter(Param::Theta, "30");
  bench().step("Wall", stepLine(document(), 3, 1));
  drawSquare();
  const Document last = document();
  exit(SaveAnswer::discard);
  start();
  EXPECT_TRUE(document().fields == last.fields);
  for (int j = 0; j < lines(); ++j) EXPECT_EQ(line(j).Kind, (*last.lines)[j].Kind);
  EXPECT_EQ(line(3).Kind, kWall);
  EXPECT_TRUE(drawn() && !bench().session.modified());
  EXPECT_TRUE(document().outline == last.outline) << "a custom shape as well";
  // A field that was stepped back goes into the settings and the knot alike.
  enter(Param::Width, "12");
  w->userFocuses(fieldControl(Param::Edge));
  pick("mnuEditUndo");
  EXPECT_EQ(document().fields.text(Param::Width), "12") << "shown, not applied";
  exit();
  start();
  EXPECT_TRUE(text(Param::Width) == last.fields.text(Param::Width) && line(3).Kind == kWall);
  // A file may have fields that its grid would not be built with.
  bench().begin("Load", withField(document(), Param::Scale, "99"), After::draw);
  exit();
  start();
  EXPECT_TRUE(text(Param::Scale) == "99" && line(3).Kind == kWall);
  // Settings of another program version, or by hand: they win over the last knot.
  exit();
  stored("txtXNo") = "5";
  start();
  EXPECT_EQ(text(Param::XNo), "5");
  EXPECT_FALSE(document().lines || document().outline);
  exit();
  stored("lsttype") = "3";
  start();
  EXPECT_EQ(static_cast<int>(document().fields.shape), 3);
}

TEST_F(StartTest, WithoutMemoryTheKnotIsKeptAsideForTheNextStart) {
  rememberUser();
  start();
  clickLine(3);
  platform.dialogs.answerFile(folder.file("knot.png"));
  platform.dialogs.answerMessage();
  platform.outOfMemory = true;
  pick("mnuFileSaveBMP");
  EXPECT_TRUE(w->closed());
  EXPECT_EQ(main->run().error().kind, ErrorKind::limit);
  platform.outOfMemory = false;
  main.reset();
  platform.dialogs.answerConfirm(true);
  start();
  EXPECT_EQ(line(3).Kind, kWall);
}

TEST_F(StartTest, AKnotOfACrashIsOfferedOnce) {
  rememberUser();
  const std::string copy = folder.file("unsaved-1.qzd");
  for (const bool taken : {true, false}) {
    start();
    EXPECT_EQ(asked(), 0U);
    clickLine(3);
    EXPECT_TRUE(std::filesystem::exists(copy)) << "kept with the step";
    undo();
    EXPECT_FALSE(std::filesystem::exists(copy)) << "nothing to keep";
    pick("mnuEditRedoStep");
    const Document lost = document();
    main.reset();  // the end of a process that saves nothing
    platform.dialogs.answerConfirm(taken);
    start();
    EXPECT_EQ(line(3).Kind == kWall, taken);
    EXPECT_EQ(document().lines == lost.lines && bench().session.modified() && drawn(), taken);
    if (taken) {
      EXPECT_EQ(w->status().substr(0, 11), "Recovered: ");
      undo();
      EXPECT_FALSE(bench().session.modified()) << "undo goes back behind it";
      pick("mnuEditRedoStep");
      exit(SaveAnswer::discard);
    }
    platform.dialogs.forget();
    std::filesystem::remove(folder.file("last.qzd"));
  }
  start();
  EXPECT_EQ(asked(), 0U) << "declined is gone";
  EXPECT_FALSE(std::filesystem::exists(copy));
}

}  // namespace
}  // namespace lorivan
