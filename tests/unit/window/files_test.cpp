// Pictures and 3-D files as a user saves them.
#include "main_window_driver.h"
#include "window/save_options.h"

namespace lorivan {
namespace {

using FilesTest = MainWindowTest;

/// Width in the header of a bitmap file.
int bitmapWidth(const std::string& bytes) {
  if (bytes.size() < 26 || bytes.rfind("BM", 0) != 0) return 0;
  return static_cast<unsigned char>(bytes[18]) + 256 * static_cast<unsigned char>(bytes[19]);
}

TEST_F(FilesTest, ThePictureThatIsShownIsSaved) {
  const Folder folder;
  start();
  const auto save = [&](const std::string& name) { return saved("mnuFileSaveBMP", folder.file(name)); };
  EXPECT_EQ(bitmapWidth(save("grid.bmp")), 500);
  EXPECT_EQ(save("grid.svg"), "");
  click("cmd2D");
  EXPECT_NE(save("knot.bmp"), Folder::contents(folder.file("grid.bmp")));
  const FileDialogSpec asked = lastAsked().file;
  EXPECT_EQ(asked.title + '|' + asked.filterLabel + '|' + asked.defaultExtension + '|' + asked.initialName,
            "Saving:  Enter your 2D-Knot BMP file name|2D-Knot BMP files|bmp|" + folder.file("*.bmp"));
  EXPECT_EQ(save("knot.PNG").substr(1, 3), "PNG");
  EXPECT_NE(save("knot.svg").find("<path"), std::string::npos);
  EXPECT_EQ(save("knot.jpg"), "");
  EXPECT_TRUE(statusStarts("Could not save " + folder.file("knot.jpg"))) << w->status();
  click("cmd3DView");
  EXPECT_EQ(bitmapWidth(save("solid.bmp")), 500);
  EXPECT_EQ(save("solid.svg"), "");
  click("chkHeightMap");
  EXPECT_EQ(w->status(), "Press Create 3D to show the changed 3D values");
  EXPECT_EQ(bitmapWidth(save("heights.bmp")), 1000);
  EXPECT_EQ(save("missing/heights.bmp"), "");
  EXPECT_TRUE(statusStarts("Cannot write"));
  std::string many = "20,0\r\n30,2,2,12,7,10,3,5";
  for (int x = 0; x < 900; x += 20)
    many += "\r\n" + std::to_string(x) + ",0," + std::to_string(x + 10) + ",0,0,0,1,0";
  platform.dialogs.answerSave(SaveAnswer::discard);
  w->userDrops(folder.write("many.qzd", many));
  click("cmd2D");
  EXPECT_NE(w->status().find("; 6 more strands are not drawn"), std::string::npos) << w->status();
}

TEST_F(FilesTest, TheMetafileHoldsTheKnotAndTellsWhenItCannotBeMade) {
  const Folder folder;
  startDrawn();
  EXPECT_EQ(saved("mnuFileSaveEMF", folder.file("knot.emf")).substr(40, 4), " EMF");
  EXPECT_EQ(lastAsked().file.filterLabel + '|' + lastAsked().file.extensions, "EMF files|emf");
  pickFileInVain("mnuFileSaveEMF", folder.file("missing/knot.emf"));
  EXPECT_TRUE(lastAsked().text.starts_with("Sorry, there was a problem creating the .emf"));
}

class ExportTest : public MainWindowTest {
 protected:
  void SetUp() override {
    start();
    platform.folder = folder.path.string();
    click("cmd2D");
  }
  /// Saves by the option button that is chosen and returns the file.
  std::string save(const std::string& name) { return saved("mnuFileSave3D", folder.file(name)); }
  std::string savePicture(const std::string& name) { return saved("mnuFileSaveBMP", folder.file(name)); }
  std::size_t polygons() const { return std::stoul(w->text(controlId("txtNPoly"))); }
  Folder folder;
};

TEST_F(ExportTest, EachOptionSavesItsFormat) {
  ASSERT_TRUE(writeFile(folder.file("povinit.txt"), "camera {\r\nlocation <1,2,3>\r\n}\r\n"));
  const struct {
    const char *option, *name, *label, *extension, *holds;
  } rows[] = {
      {"optVRML", "a", "(VRML) WRL", "wrl", "#VRML V2.0 utf8\r\n"},
      {"optOBJ", "b", "(Wavefront) OBJ", "obj", "\r\ng qzd"},
      {"optSTL", "c", "(StereoLithography) STL", "stl", "facet normal "},
      {"optXYZ", "d", "(XYZ) XYZ", "xyz", ", "},
      {"optDXF", "e", "(Autocad) DXF", "dxf", "3DFACE"},
      {"chkDXF2D", "f", "(Autocad) DXF", "dxf", "POLYLINE"},
      {"optGemVision", "g", "(GemVision) gmv", "gmv", "Points for 0"},
      {"optPOV", "h", "POV-Ray", "pov", "   location <0,0,"},
  };
  for (const auto& row : rows) {
    click(row.option);
    EXPECT_NE(save(row.name).find(row.holds), std::string::npos) << row.label;
    EXPECT_EQ(lastAsked().title, "Saving:  Enter your " + std::string(row.label) + " file name");
    EXPECT_EQ(lastAsked().file.defaultExtension, row.extension);
    EXPECT_TRUE(statusStarts("Saved as " + folder.file(row.name) + ": ") && !w->busy());
    const bool mesh = findFormat(row.extension, DxfKind::faces)->takesSolid;
    EXPECT_EQ(w->status().ends_with("touching at 0 of 12 crossings: they will move"), mesh) << w->status();
  }
}

TEST_F(ExportTest, FileAndModelFollowTheFields) {
  click("optSTL");
  const std::size_t first = save("a").size();
  click("cmd3DView");
  enter(Param::PolySides, "20");
  const std::size_t before = polygons();
  EXPECT_TRUE(save("a").size() > 3 * first && polygons() == 4 * before && !enabled("cmd3D"));
  enter(Param::PolySides, "21");
  EXPECT_TRUE(enabled("cmd3D"));
  pickFile("mnuFileSave3D", "");
  EXPECT_FALSE(enabled("cmd3D")) << "built before the question for the name";
  enter(Param::PolySides, "20");
  click("cmd3D");
  // Four sides for one format are no new model on the screen.
  click("optGemVision");
  enter(Param::PolySides, "6");
  save("b");
  EXPECT_TRUE(polygons() == 4 * before && text(Param::PolySides) == "6");
}

TEST_F(ExportTest, WhatFailsLeavesTheOldFile) {
  ASSERT_TRUE(writeFile(folder.file("old.pov"), "old"));
  click("optPOV");
  pickFile("mnuFileSave3D", "");
  pickFileInVain("mnuFileSave3D", folder.file("old.pov"));
  EXPECT_EQ(Folder::contents(folder.file("old.pov")), "old");
  EXPECT_TRUE(lastAsked().text.starts_with("Sorry, you are missing the povinit.txt file."));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path), {}), 1);
  click("optSTL");
  EXPECT_EQ(save("missing/knot.stl"), "");
  EXPECT_TRUE(w->status().find("Cannot write") != std::string::npos && !w->busy());
  enter(Param::XNo, "12");
  click("cmd2D");
  enterAll({{Param::PolySides, "200"}, {Param::PolyPoints, "50"}});
  platform.dialogs.answerMessage();
  pick("mnuFileSave3D");
  EXPECT_NE(lastAsked().text.find("too many polygons"), std::string::npos);
}

TEST_F(ExportTest, SavingOptionsReachWhatIsSavedAndFilesOpenAsTheirKnot) {
  startDrawn();
  bench().saveOptions.millimetres = 77;
  bench().saveOptions.transparent = true;
  const std::string svg = savePicture("knot.svg");
  EXPECT_EQ(lastAsked().file.extensions, "bmp");
  EXPECT_GE(lastAsked().file.more.size(), 2U) << "a choice for each kind of picture";
  EXPECT_TRUE(w->status().ends_with("knot.svg, with the saving options"));
  EXPECT_EQ(svg.find("background"), std::string::npos);
  // The dialog stays open as long as an entry is wrong.
  auto lines = saveOptionsDialog({}).lines;
  for (const char* const width : {"x", "0", "60"}) {
    lines[0].text = width;
    platform.dialogs.answerOptions(lines);
  }
  pick("mnuFileSaveOptions");
  EXPECT_NE(lastAsked().text.find("0.01 to 100000"), std::string::npos) << lastAsked().text;
  EXPECT_EQ(bench().saveOptions, OutputOptions{.millimetres = 60});
  lines[2].text = "0";
  EXPECT_EQ(saveOptionsDialog({}).check(lines)->place, 2U);
  lines[2].text = "";
  lines[5].text = "0";
  EXPECT_FALSE(saveOptionsDialog({}).check(lines)) << "no cut";
  lines[5].text = "0.15";
  EXPECT_EQ(saveOptionsDialog({}).check(lines)->place, 5U) << "only outlines have a cut";
  lines[4].on = lines[6].on = true;
  EXPECT_EQ(saveOptionsDialog({}).check(lines)->place, 6U) << "outlines and centre lines are two drawings";
  lines[6].on = false;
  lines[8].on = true;
  EXPECT_EQ(optionsOf(lines),
            (OutputOptions{.millimetres = 60, .solid = true, .outline = true, .kerf = 0.15}));
  EXPECT_EQ(readSaveOptions(saveOptionsText(optionsOf(lines))), optionsOf(lines));
  EXPECT_EQ(readSaveOptions("60,,,0,1,0,1").kerf, std::nullopt) << "kept by a version without cuts";
  platform.dialogs.answerOptions(lines);
  pick("mnuFileSaveOptions");
  const std::string cut = savePicture("cut.svg"), body = save("body.3mf");
  EXPECT_NE(w->status().find(" piece"), std::string::npos) << w->status();
  bench().saveOptions.kerf = 9;
  EXPECT_NE(savePicture("wide.svg"), cut);
  EXPECT_NE(w->status().find("; the kerf is wider than the room"), std::string::npos) << w->status();
  bench().saveOptions.solid = false;
  EXPECT_NE(save("tubes.3mf").size(), body.size());
  const auto tellsOverlap = [&] { return w->status().find("; the bands run together") != std::string::npos; };
  enter(Param::Width, "30");
  savePicture("cut.svg");
  EXPECT_FALSE(tellsOverlap()) << "outlines keep apart";
  lines[1].text = "30";
  EXPECT_EQ(saveOptionsDialog({}).check(lines)->place, 1U) << "bodies have a width";
  bench().saveOptions = {};
  EXPECT_NE(savePicture("knot.svg").find("background"), std::string::npos);
  EXPECT_TRUE(tellsOverlap() && !w->busy()) << w->status();
  bench().saveOptions.transparent = true;
  savePicture("knot.png");
  EXPECT_FALSE(tellsOverlap()) << "it looks as in the window";
  const Document before = document();
  for (const char* name : {"knot.svg", "knot.png"}) {
    enter(Param::Width, "9");
    platform.dialogs.answerSave(SaveAnswer::discard);
    w->userDrops(folder.file(name));
    EXPECT_EQ(document().fields, before.fields) << name << ": " << w->status();
  }
}

}  // namespace
}  // namespace lorivan
