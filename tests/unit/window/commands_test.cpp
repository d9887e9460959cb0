// Every command once, and what it must change.
#include "design/edits.h"
#include "design/presets.h"
#include "main_window_driver.h"
#include "window/save_options.h"

namespace lorivan {
namespace {

using namespace std::string_literals;

class CommandsTest : public MainWindowTest {
 protected:
  using Action = std::function<void()>;
  using Sight = std::function<bool()>;
  struct Row {
    const char *name, *words;  // "menu|text|shortcut", as the program starts
    Action before;             // makes it possible, or answers its dialogs
    Sight done;
  };

  /// A knot is drawn, nothing is open, nothing else was done.
  void drawnKnot() { startDrawn({{}, false, seededRandom(7)}); }
  void square() { drawSquare(), enter(Param::GridSize, "4"); }
  Action file(const std::string& name) {
    return [this, name] { platform.dialogs.answerFile(folder.file(name)); };
  }
  /// The lines of the dialog of saving options: texts of entries, and boxes that are checked where there is
  /// one.
  static std::vector<OptionLine> withLines(const std::vector<std::string>& texts) {
    std::vector<OptionLine> lines = saveOptionsDialog({}).lines;
    for (std::size_t i = 0; i < texts.size(); ++i)
      lines[i].isBox ? void(lines[i].on = !texts[i].empty()) : void(lines[i].text = texts[i]);
    return lines;
  }
  bool wrote(const std::string& name) const { return !Folder::contents(folder.file(name)).empty(); }
  bool helped(const std::string& page) {
    const auto& pages = platform.help().pages;
    return !pages.empty() && pages.back() == "help/" + page + ".html";
  }
  bool shows(Picture picture) {
    return bench().picture() == picture && visible("picGrid") == (picture == Picture::flat) &&
           visible("picKnot") == (picture == Picture::solid) &&
           visible("picShape") == (picture == Picture::sheet);
  }
  /// The drawing that was copied is that of a document without the grid behind its knot.
  bool copiedBare() {
    const std::string svg = platform.clipboard().drawing.svg;
    const bool differs = checked("chkShowGrid") != copied(pixels());
    if (checked("chkShowGrid")) click("chkShowGrid");
    return differs && copied(pixels()) && svg.find("grid\"") == std::string::npos;
  }
  int strands() { return countKnot(bench().knot().graph, bench().knot().strands).strands; }
  Sight symmetric(const Symmetry& symmetry) {
    return [this, symmetry] { return bench().symmetry.inForce() == symmetry; };
  }
  Sight drawnIn(const Symmetry& symmetry) {
    return [this, symmetry] { return bench().sheet.symmetry() == symmetry && shows(Picture::sheet); };
  }
  std::vector<Row> rows();
  std::string words(const CommandRow& row) const {
    std::string all = std::string(row.menu) + (row.submenu.empty() ? "" : ">") + std::string(row.submenu) +
                      '|' + commandText(row.name) + '|' + std::string(row.shortcut);
    return row.alternative.empty() ? all : all + '|' + std::string(row.alternative);
  }

  Folder folder;
  Document was;
  std::vector<std::uint32_t> shown;
};

// clang-format off
std::vector<CommandsTest::Row> CommandsTest::rows() {
  const std::string knot = folder.write("k.qzd", "20,4\r\n25,3,4\r\n");
  const std::string shape = folder.write("s.qzc", "7500 6000\r\n1\r\n1500 1500\r\n0\r\n");
  RecordingSurface dot(20, 20);
  dot.dot({10, 10}, 12, 0);
  const std::string picture = folder.write("p.bmp", *platform.encodePicture(dot, PictureFormat::bmp));
  const std::string drawing = folder.write("d.svg", "<svg><path d='M0 0h9v9z'/></svg>");
  const Action none = [] {};
  const auto answer = [this](std::string path) { return [this, path] { platform.dialogs.answerFile(path); }; };
  std::vector<Row> all;
  const auto add = [&](const std::vector<Row>& rows) { all.insert(all.end(), rows.begin(), rows.end()); };
  add({
    {"mnuFileNewGrid", "&File|&New grid|Ctrl+N", [this] { markGrid(); }, [this] { return gridIsNew() && !drawn(); }},
    {"mnuFileRandom", "&File|&Random knot|Ctrl+R", none, [this] { return drawn() && lines() != 12 && bench().session.history().undoName() == "Random knot"; }},
    {"mnuFileLoad", "&File|&Load knot file...|Ctrl+O", answer(knot), [this] { return text(Param::YNo) == "4" && document().fields.shape == Shape::Circular; }}});
  for (int i = 0; i < kRecentFiles; ++i)
    all.push_back({nullptr, nullptr, [this, i] {
      for (int k = 0; k <= i; ++k) w->userDrops(folder.write(std::to_string(k) + ".qzd", "20,0\r\n25,3,4\r\n"));
      click("cmdNewGrid");  // no file is open any more
    }, [this, i] { return bench().session.path() == folder.file("0.qzd") && commandText("mnuFileRecent" + std::to_string(i)).starts_with("&" + std::to_string((i + 1) % 10) + " "); }});
  add({
    {"mnuFileSave", "&File|&Save knot file|Ctrl+S", answer(folder.file("saved.qzd")), [this] { return wrote("saved.qzd"); }},
    {"mnuFileSaveAs", "&File|Save knot file &as...|Ctrl+Shift+S", [this, knot] { w->userDrops(knot), file("other.qzd")(); }, [this] { return wrote("other.qzd"); }},
    {"mnuFileSaveBMP", "&File|Save &picture...|", file("p2.bmp"), [this] { return wrote("p2.bmp"); }},
    {"mnuFileSaveEMF", "&File|Save knot as &EMF...|", file("k.emf"), [this] { return wrote("k.emf"); }},
    {"mnuFileSave3D", "&File|Save knot as &3D file|", [this] { click("optSTL"), file("k.stl")(); }, [this] { return wrote("k.stl") && (file("k.3mf")(), pick("mnuFileSave3D"), Folder::contents(folder.file("k.3mf")).starts_with("PK")); }},
    {"mnuFileSaveAnimation", "&File|Save ani&mation...|", file("k.svg"), [this] { return Folder::contents(folder.file("k.svg")).find("@keyframes") != std::string::npos; }},
    {"mnuFileSaveOptions", "&File|Saving &options...|", [this] { platform.dialogs.answerOptions(withLines({"80.5", "", "640", "", "x"})); }, [this] {
      return bench().saveOptions == OutputOptions{.width = 640, .millimetres = 80.5, .outline = true};
    }},
    {"mnuFilePrint", "&File|Prin&t...|Ctrl+P", [this] { platform.dialogs.answerPrint(true); }, [this] { return w->printed() && lastAsked().title == "Knot, Square-Square" && statusStarts("Printed, 19") && w->status().ends_with(" mm"); }},
    {"mnuFileExit", "&File|E&xit|", [this] { platform.dialogs.answerConfirm(true); }, [this] { return w->closed(); }},
    {"mnuEditUndoStep", "&Edit|&Undo|Ctrl+Z", [this] { enter(Param::Width, "9"); }, [this] { return document().fields.text(Param::Width) == "7" && text(Param::Width) == "7"; }},
    {"mnuEditRedoStep", "&Edit|&Redo|Ctrl+Y|Ctrl+Shift+Z", [this] { enter(Param::Width, "9"), pick("mnuEditUndoStep"); }, [this] { return document().fields.text(Param::Width) == "9"; }},
    {"mnuEditUndo", "&Edit|Undo &field|", [this] { enter(Param::Width, "9"); }, [this] { return document().fields.text(Param::Width) == "9" && text(Param::Width) == "7"; }},
    {"mnuEditCopy", "&Edit|&Copy picture|Ctrl+C", [this] { click("cmd3DView"); }, [this] { return copied(pixels(kSolid)) && !copied(pixels()) && (click("cmd2DView"), pick("mnuEditCopy"), copied(pixels())); }},
    {"mnuEditCopyDrawing", "&Edit|Copy as &vector|Ctrl+Shift+C", none, [this] { return copiedBare() && platform.clipboard().drawing.svg.starts_with("<?xml") && platform.clipboard().drawing.metafile.size() > 1000; }},
    {"mnuEditLines", "&Edit|&Lines by keyboard|F6", none, [this] { return w->focused() == kGrid && statusStarts("Crossing; a click changes it"); }},
    {"mnuSymmetryNone", "&Edit>&Symmetry|&None|", [this] { pick("mnuSymmetryBoth"); }, [this] { return bench().symmetry.inForce() == kNoSymmetry; }},
    {"mnuSymmetryLeftRight", "&Edit>&Symmetry|&Left-right|", none, symmetric(kLeftRight)},
    {"mnuSymmetryTopBottom", "&Edit>&Symmetry|&Top-bottom|", none, symmetric(kTopBottom)},
    {"mnuSymmetryBoth", "&Edit>&Symmetry|&Both|", none, symmetric(kBothMirrors)},
    {"mnuSymmetryHalfTurn", "&Edit>&Symmetry|&Half turn|", none, symmetric(kHalfTurn)}});
  for (int i = 0; i < 7; ++i)
    all.push_back({nullptr, nullptr, [this] { choose(Shape::Circular), enter(Param::XNo, "18"); }, symmetric({false, false, std::array{3, 4, 6, 9, 12, 18, 36}[static_cast<std::size_t>(i)]})});
  for (int i = 1; i <= 6; ++i)
    all.push_back({nullptr, nullptr, [this, i] { enter(Param::YNo, "4"), click("cmd2D"), pick(i == 1 ? "mnuStrands2" : "mnuStrands1"); }, [this, i] { return strands() == i && w->commandChecked(w->command("mnuStrands" + std::to_string(i))); }});
  add({
    {"mnuStrandsMost", "&Edit>S&trands|As &many as possible|", none, [this] { return strands() > 3; }},
    {"mnuStrandsOther", "&Edit>S&trands|&Other number...|", [this] { platform.dialogs.answerInput(" 4 "); }, [this] { return strands() == 4; }},
    {"mnuEditFitFrame", "&Edit|Fit to fr&ame...|", [this] { platform.dialogs.answerInput("200 x 40"); }, [this] { return document().fields.whole(Param::XNo) > 2 * document().fields.whole(Param::YNo) && statusStarts("Save it 200 mm wide"); }},
    {"mnuEditFitRing", "&Edit|Fit to ri&ng...|", [this] { platform.dialogs.answerInput("18.2 x 6"); }, [this] { return text(Param::RingPerc) == "100" && text(Param::XNo) == "20" && shows(Picture::solid); }},
    {"mnuView2D", "V&iew|&2D picture|Ctrl+2", [this] { click("cmd3DView"); }, [this] { return shows(Picture::flat); }},
    {"mnuView3D", "V&iew|&3D picture|Ctrl+3", none, [this] { return shows(Picture::solid); }},
    {"mnuViewFront", "V&iew|Front &view|", [this] { click("cmd3DView"), enter(Param::Theta, "30"), enter(Param::Psi, "40"); }, [this] { return text(Param::Theta) == "0" && text(Param::Psi) == "0" && document().fields.text(Param::Theta) == "0" && shows(Picture::solid); }},
    {"mnuViewWhole", "V&iew|&Whole picture|Ctrl+0", [this] { was = document(), shown = pixels(), w->userMouse(kGrid, {.action = MouseAction::wheel, .x = 90, .y = 90, .steps = 3}); }, [this] { return pixels() == shown && document() == was; }},
    {"mnuViewCheckModel", "V&iew|Chec&k model...|", [this] { platform.dialogs.answerInput("60"), platform.dialogs.answerMessage(); }, [this] { return shows(Picture::solid) && w->status().starts_with("3 separate pieces, touching at 0 of 12"); }},
    {"mnuViewFitRadius", "V&iew|Fit r&adius...|", [this] { platform.dialogs.answerInput("2"); }, [this] { return bench().session.history().undoName() == "Fit radius"; }},
    {"mnuViewFitPicture", "V&iew|&Fit picture|Ctrl+9", none, [this] { return document().fields.fitPicture && w->commandChecked(w->command("mnuViewFitPicture")); }},
    {"mnuViewClassic", "V&iew|&Classic joints|", none, [this] { return document().fields.check(Check::Classic) && w->commandChecked(w->command("mnuViewClassic")) && count(DrawKind::wideCurve) > 0; }},
    {"mnuViewDrawAtOnce", "V&iew|&Draw at once|", [this] { click("cmdOldGrid"); }, [this] { return drawn() && bench().drawAtOnce && w->commandChecked(w->command("mnuViewDrawAtOnce")); }},
    {"mnuViewVariations", "V&iew|Va&riations|Ctrl+Shift+R", none, [this] { return bench().picture() == Picture::variations && visible("picGrid") && bench().variations.random(); }},
    {"mnuViewVariationsOf", "V&iew|Variations &of fields...|", [this] { platform.dialogs.answerInput("X Y"); }, [this] { return bench().picture() == Picture::variations && bench().variations.count() == 12; }},
    {"mnuLanguageSystem", "V&iew>&Language|&System|", [this] { pick("mnuLanguageDeutsch"); }, [this] { return bench().language.empty(); }},
    {"mnuLanguageEnglish", "V&iew>&Language|&English|", none, [this] { return bench().language == "en"; }},
    {"mnuLanguageDeutsch", "V&iew>&Language|&Deutsch|", none, [this] { return bench().language == "de" && statusStarts("Deutsch from"); }},
    {"mnuShapeBlank", "&Shape|&Blank|", [this] { square(); }, [this] { return bench().sheet.shape().ShapeLineCount == 0 && shows(Picture::sheet) && document().fields.shape == Shape::Custom; }},
    {"mnuShapeView", "&Shape|&View|", none, [this] { return shows(Picture::sheet) && (pick("mnuShapeView"), shows(Picture::flat)); }},
    {"mnuShapeMakeStandard", "&Shape|&Make from Standard|", none, [this] { return bench().sheet.shape().ShapeLineCount == 12 && shows(Picture::sheet); }},
    {"mnuShapeLoadPicture", "&Shape|Load &Picture...|", answer(picture), [this] { return bench().sheet.picture().shown() && shows(Picture::sheet); }},
    {"mnuShapeTrace", "&Shape|Trac&e Picture|", [this, picture] { w->userDrops(picture); }, [this] { return bench().sheet.shape().ShapeLineCount > 4 && shows(Picture::sheet); }},
    {"mnuShapeClear", "&Shape|&Clear|", [this, picture] { w->userDrops(picture); }, [this] { return !bench().sheet.picture().shown(); }},
    {"mnuShapeMakeGrid", "&Shape|New G&rid|", [this] { square(); }, [this] { return lines() == 4 && shows(Picture::flat); }},
    {"mnuShapeAutoGrid", "&Shape|&AutoGrid|", [this] { square(), click("chkShapeT"); }, [this] { return lines() == 40 && shows(Picture::flat); }},
    {"mnuShapeFill", "&Shape|&Fill Outline|", [this] { square(); }, [this] { return lines() > 4 && shows(Picture::flat); }},
    {"mnuShapeGridOnOff", "&Shape|Alignment &Grid|", [this] { pick("mnuShapeView"); }, [this] { return w->surface(kSheet).count(DrawKind::segment) == 40; }},
    {"mnuShapeSnap", "&Shape|Snap &to Grid|", none, [this] { return bench().sheet.snap() && w->commandChecked(w->command("mnuShapeSnap")); }},
    {"mnuSheetNone", "&Shape>Draw in s&ymmetry|&None|", [this] { pick("mnuSheetBoth"); }, drawnIn(kNoSymmetry)},
    {"mnuSheetLeftRight", "&Shape>Draw in s&ymmetry|&Left-right|", none, drawnIn(kLeftRight)},
    {"mnuSheetTopBottom", "&Shape>Draw in s&ymmetry|&Top-bottom|", none, drawnIn(kTopBottom)},
    {"mnuSheetBoth", "&Shape>Draw in s&ymmetry|&Both|", none, drawnIn(kBothMirrors)}});
  for (int turns = 2; turns <= kMostSheetTurns; ++turns)
    all.push_back({nullptr, nullptr, none, drawnIn({false, false, turns})});
  add({
    {"mnuSheetMirrored", "&Shape>Draw in s&ymmetry|Turns &mirrored, too|", [this] { pick("mnuSheetTurns5"); }, drawnIn({true, false, 5})},
    {"mnuShapeSmooth", "&Shape|Smoot&h outline|", [this] { square(); }, [this] { return bench().sheet.shape().smooth && w->commandChecked(w->command("mnuShapeSmooth")); }},
    {"mnuShapeUndo", "&Shape|&Undo|", [this] { square(); }, [this] { return bench().sheet.shape().ShapeLineCount == 3; }},
    {"mnuShapeLoadOutline", "&Shape|Load &outline...|", answer(drawing), [this] { return bench().sheet.shape().ShapeLineCount == 3 && shows(Picture::sheet); }},
    {"mnuShapeLoadFile", "&Shape|&Load file...|", answer(shape), [this] { return bench().sheet.shape().ShapePointCount == 1 && shows(Picture::sheet); }},
    {"mnuShapeSaveFile", "&Shape|&Save file...|", answer(folder.file("saved.qzc")), [this] { return wrote("saved.qzc"); }}});
  for (int i = 0; i < static_cast<int>(presetTable().size()); ++i)
    all.push_back({nullptr, nullptr, [this] { enter(Param::Width, "9"), was = document(); }, [this, i] {
      return document() == withFittedStyle(was, i) && drawn() && bench().session.history().undoName() == "Style "s + std::string(presetTable()[i].name);
    }});
  add({
    {"mnuHelpHelp", "&Help|How to &use Lorivan|F1", none, [this] { return helped("index"); }},
    {"mnuHelpCustom", "&Help|&Custom knots|", none, [this] { return helped("custom"); }},
    {"mnuHelp3D", "&Help|How to work in &3D|", none, [this] { return helped("3d"); }},
    {"mnuHelpFAQ", "&Help|&Frequently Asked Questions|", none, [this] { return helped("faq"); }},
    {"mnuHelpAbout", "&Help|&About|", none, [this] { return helped("about"); }}});
  return all;
}

TEST_F(CommandsTest, EveryCommandDoesItsOwn) {
  const std::vector<Row> expected = rows();
  ASSERT_EQ(expected.size(), commandRows().size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    const Row& row = expected[i];
    const CommandRow& command = commandRows()[i];
    SCOPED_TRACE(command.name);
    drawnKnot();
    if (row.name != nullptr) {
      EXPECT_EQ(row.name, command.name);
      EXPECT_EQ(words(command), row.words);
    }
    row.before();
    EXPECT_FALSE(row.done()) << "before it was picked";
    pick(command.name);
    EXPECT_TRUE(row.done());
  }
  EXPECT_EQ(commandText("mnuStyle0").substr(0, 3) + commandText("mnuStyle9").substr(0, 3), "&1 &0 ");
}
// clang-format on

}  // namespace
}  // namespace lorivan
