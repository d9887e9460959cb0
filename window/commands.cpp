#include "window/commands.h"

#include <algorithm>
#include <vector>

#include "base/numbers.h"
#include "base/texts.h"
#include "design/names.h"
#include "window/handlers.h"
#include "window/languages.h"
#include "window/summaries.h"

namespace lorivan {
namespace {

constexpr std::string_view kFile = "&File", kEdit = "&Edit", kView = "V&iew", kShape = "&Shape",
                           kStyle = "Sty&le", kHelp = "&Help", kRecent = "Open re&cent",
                           kSymmetry = "&Symmetry", kStrands = "S&trands",
                           kSheetSymmetry = "Draw in s&ymmetry", kLanguage = "&Language";

bool hasKnot(const Workbench& b) { return b.knotDrawn(); }
bool knotIsCurrent(const Workbench& b) { return b.knotDrawn() && b.gridIsCurrent(); }
/// The knot, flat or in 3D, is in front.
bool canPrint(const Workbench& b) {
  return b.knotDrawn() && (b.picture() == Picture::flat || b.picture() == Picture::solid);
}
bool hasOutline(const Workbench& b) { return static_cast<bool>(b.document().outline); }
bool hasGrid(const Workbench& b) { return b.hasGrid(); }
bool outlineHasLines(const Workbench& b) { return hasLines(b.sheet.shape()); }
bool solidInFront(const Workbench& b) { return b.solidShown(); }
bool flatHasLines(const Workbench& b) {
  return b.picture() == Picture::flat && static_cast<bool>(b.document().lines);
}
bool flatIsBehind(const Workbench& b) { return b.flatIsBehind(); }
bool canShowSolid(const Workbench& b) { return b.knotDrawn() && !b.solidShown(); }

/// "&Undo Random knot"
std::string undoText(const Workbench& b) {
  const std::string step = marksDoubled(b.session.history().undoName());
  return step.empty() ? tr("&Undo") : tr("&Undo {1}", step);
}

std::string redoText(const Workbench& b) {
  const std::string step = marksDoubled(b.session.history().redoName());
  return step.empty() ? tr("&Redo") : tr("&Redo {1}", step);
}

/// "&1 knot.qzd": the file's name behind its digit.
std::string recentText(const Workbench& b, std::size_t place) {
  if (place >= b.recentFiles.size()) return {};
  return '&' + std::to_string((place + 1) % 10) + ' ' + marksDoubled(b.recentFiles[place]);
}

template <std::size_t Place>
constexpr CommandRow recentRow(std::string_view name) {
  return {.name = name,
          .menu = kFile,
          .run = [](Handlers& h) { h.mnuFileRecent_Click(Place); },
          .words = [](const Workbench& b) { return recentText(b, Place); },
          .submenu = kRecent};
}

template <const Symmetry& Which>
constexpr CommandRow symmetryRow(std::string_view name, std::string_view text) {
  return {.name = name,
          .menu = kEdit,
          .text = text,
          .run = [](Handlers& h) { h.mnuSymmetry_Click(Which); },
          .enabled = [](const Workbench& b) { return b.symmetry.allows(Which); },
          .checked = [](const Workbench& b) { return b.symmetry.inForce() == Which; },
          .submenu = kSymmetry};
}

/// "&4-fold turn"; more than nine have no letter.
std::string turnsText(const Workbench& b, std::size_t place) {
  if (place >= b.symmetry.turns().size()) return {};
  const int turns = b.symmetry.turns()[place];
  return tr("{1}-fold turn", std::string(turns < 10 ? "&" : "").append(std::to_string(turns)));
}

template <std::size_t Place>
constexpr CommandRow turnsRow(std::string_view name) {
  return {.name = name,
          .menu = kEdit,
          .run = [](Handlers& h) { h.mnuSymmetryTurns_Click(Place); },
          .enabled = [](const Workbench& b) { return Place < b.symmetry.turns().size(); },
          .checked =
              [](const Workbench& b) {
                const auto& turns = b.symmetry.turns();
                return Place < turns.size() && b.symmetry.inForce().turns == turns[Place];
              },
          .words = [](const Workbench& b) { return turnsText(b, Place); },
          .submenu = kSymmetry};
}

template <int Number>
constexpr CommandRow strandsRow(std::string_view name, std::string_view text) {
  return {.name = name,
          .menu = kEdit,
          .text = text,
          .run = [](Handlers& h) { h.mnuStrands_Click(Number); },
          .enabled = hasGrid,
          .checked =
              [](const Workbench& b) {
                return b.knotDrawn() && countKnot(b.knot().graph, b.knot().strands).strands == Number;
              },
          .submenu = kStrands};
}

template <const Symmetry& Which>
constexpr CommandRow sheetRow(std::string_view name, std::string_view text) {
  return {.name = name,
          .menu = kShape,
          .text = text,
          .run = [](Handlers& h) { h.mnuSheetSymmetry_Click(Which); },
          .checked = [](const Workbench& b) { return b.sheet.symmetry() == Which; },
          .submenu = kSheetSymmetry};
}

template <int Turns>
constexpr CommandRow sheetTurnsRow(std::string_view name, std::string_view text) {
  return {.name = name,
          .menu = kShape,
          .text = text,
          .run = [](Handlers& h) { h.mnuSheetTurns_Click(Turns); },
          .checked = [](const Workbench& b) { return b.sheet.symmetry().turns == Turns; },
          .submenu = kSheetSymmetry};
}

/// Ten styles have a digit for their mnemonic, 0 for the tenth.
std::string styleText(int place) {
  const std::string name = styleName(place);
  std::string text = "&";
  if (place < 10) text.append(std::to_string((place + 1) % 10)) += ' ';
  return text + name;
}

template <int Place>
constexpr CommandRow styleRow(std::string_view name) {
  return {name,
          kStyle,
          "",
          "",
          [](Handlers& h) { h.mnuStyle_Click(Place); },
          nullptr,
          nullptr,
          [](const Workbench&) { return styleText(Place); }};
}

/// Of languages(); no place: nothing, which stands for the system's.
std::string_view languageCode(int place) { return place < 0 ? std::string_view() : languages()[place].code; }

/// The language's own name; no place: that of the system.
template <int Place>
constexpr CommandRow languageRow(std::string_view name) {
  return {.name = name,
          .menu = kView,
          .run = [](Handlers& h) { h.mnuLanguage_Click(languageCode(Place)); },
          .checked = [](const Workbench& b) { return b.language == languageCode(Place); },
          .words =
              [](const Workbench&) {
                if constexpr (Place < 0) return tr("&System");
                return std::string("&").append(languages()[Place].name);
              },
          .submenu = kLanguage};
}

constexpr bool kSeparator = true, kDuringWork = true, kKeepsUndone = true;

// clang-format off
constexpr auto kCommandRows = std::to_array<CommandRow>({
    {"mnuFileNewGrid", kFile, "&New grid", "Ctrl+N", [](Handlers& h) { h.mnuFileNewGrid_Click(); }},
    {"mnuFileRandom", kFile, "&Random knot", "Ctrl+R", [](Handlers& h) { h.cmdRandknot_Click(); }},
    {"mnuFileLoad", kFile, "&Load knot file...", "Ctrl+O", [](Handlers& h) { h.mnuFileLoad_Click(); }, nullptr, nullptr, nullptr, kSeparator},
    recentRow<0>("mnuFileRecent0"), recentRow<1>("mnuFileRecent1"), recentRow<2>("mnuFileRecent2"),
    recentRow<3>("mnuFileRecent3"), recentRow<4>("mnuFileRecent4"), recentRow<5>("mnuFileRecent5"),
    recentRow<6>("mnuFileRecent6"), recentRow<7>("mnuFileRecent7"), recentRow<8>("mnuFileRecent8"),
    recentRow<9>("mnuFileRecent9"),
    {"mnuFileSave", kFile, "&Save knot file", "Ctrl+S", [](Handlers& h) { h.mnuFileSave_Click(); }},
    {"mnuFileSaveAs", kFile, "Save knot file &as...", "Ctrl+Shift+S", [](Handlers& h) { h.mnuFileSaveAs_Click(); }},
    {"mnuFileSaveBMP", kFile, "Save &picture...", "", [](Handlers& h) { h.mnuFileSaveBMP_Click(); }, nullptr, nullptr, nullptr, kSeparator, kDuringWork},
    {"mnuFileSaveEMF", kFile, "Save knot as &EMF...", "", [](Handlers& h) { h.mnuFileSaveEMF_Click(); }, knotIsCurrent},
    {"mnuFileSave3D", kFile, "Save knot as &3D file", "", [](Handlers& h) { h.mnuFileSave3D_Click(); }, hasKnot},
    {"mnuFileSaveAnimation", kFile, "Save ani&mation...", "", [](Handlers& h) { h.mnuFileSaveAnimation_Click(); }, knotIsCurrent},
    {"mnuFileSaveOptions", kFile, "Saving &options...", "", [](Handlers& h) { h.mnuFileSaveOptions_Click(); }},
    {"mnuFilePrint", kFile, "Prin&t...", "Ctrl+P", [](Handlers& h) { h.mnuFilePrint_Click(); }, canPrint, nullptr, nullptr, kSeparator},
    {"mnuFileExit", kFile, "E&xit", "", [](Handlers& h) { h.mnuFileExit_Click(); }, nullptr, nullptr, nullptr, kSeparator, kDuringWork},

    {"mnuEditUndoStep", kEdit, "&Undo", "Ctrl+Z", [](Handlers& h) { h.mnuEditUndoStep_Click(); },
     [](const Workbench& b) { return b.session.history().canUndo(); }, nullptr,
     undoText},
    {"mnuEditRedoStep", kEdit, "&Redo", "Ctrl+Y", [](Handlers& h) { h.mnuEditRedoStep_Click(); },
     [](const Workbench& b) { return b.session.history().canRedo(); }, nullptr,
     redoText, false, false, false, {}, "Ctrl+Shift+Z"},
    {"mnuEditUndo", kEdit, "Undo &field", "", [](Handlers& h) { h.mnuEditUndo_Click(); }, nullptr, nullptr, nullptr, false, false, kKeepsUndone},
    {"mnuEditCopy", kEdit, "&Copy picture", "Ctrl+C", [](Handlers& h) { h.mnuEditCopy_Click(); }, nullptr, nullptr, nullptr, kSeparator, kDuringWork},
    {"mnuEditCopyDrawing", kEdit, "Copy as &vector", "Ctrl+Shift+C", [](Handlers& h) { h.mnuEditCopyDrawing_Click(); }, knotIsCurrent},
    {"mnuEditLines", kEdit, "&Lines by keyboard", "F6", [](Handlers& h) { h.mnuEditLines_Click(); }, flatHasLines, nullptr, nullptr, kSeparator},
    symmetryRow<kNoSymmetry>("mnuSymmetryNone", "&None"), symmetryRow<kLeftRight>("mnuSymmetryLeftRight", "&Left-right"),
    symmetryRow<kTopBottom>("mnuSymmetryTopBottom", "&Top-bottom"), symmetryRow<kBothMirrors>("mnuSymmetryBoth", "&Both"),
    symmetryRow<kHalfTurn>("mnuSymmetryHalfTurn", "&Half turn"),
    turnsRow<0>("mnuSymmetryTurns0"), turnsRow<1>("mnuSymmetryTurns1"), turnsRow<2>("mnuSymmetryTurns2"),
    turnsRow<3>("mnuSymmetryTurns3"), turnsRow<4>("mnuSymmetryTurns4"), turnsRow<5>("mnuSymmetryTurns5"),
    turnsRow<6>("mnuSymmetryTurns6"),
    strandsRow<1>("mnuStrands1", "&1 strand"), strandsRow<2>("mnuStrands2", "&2 strands"),
    strandsRow<3>("mnuStrands3", "&3 strands"), strandsRow<4>("mnuStrands4", "&4 strands"),
    strandsRow<5>("mnuStrands5", "&5 strands"), strandsRow<6>("mnuStrands6", "&6 strands"),
    {"mnuStrandsMost", kEdit, "As &many as possible", "", [](Handlers& h) { h.mnuStrandsMost_Click(); }, hasGrid, nullptr, nullptr, false, false, false, kStrands},
    {"mnuStrandsOther", kEdit, "&Other number...", "", [](Handlers& h) { h.mnuStrandsOther_Click(); }, hasGrid, nullptr, nullptr, false, false, false, kStrands},

    {"mnuEditFitFrame", kEdit, "Fit to fr&ame...", "", [](Handlers& h) { h.mnuEditFitFrame_Click(); }, hasGrid, nullptr, nullptr, kSeparator},
    {"mnuEditFitRing", kEdit, "Fit to ri&ng...", "", [](Handlers& h) { h.mnuEditFitRing_Click(); }, hasGrid},

    {"mnuView2D", kView, "&2D picture", "Ctrl+2", [](Handlers& h) { h.cmd2DView_Click(); }, flatIsBehind},
    {"mnuView3D", kView, "&3D picture", "Ctrl+3", [](Handlers& h) { h.cmd3DView_Click(); }, canShowSolid},
    {"mnuViewFront", kView, "Front &view", "", [](Handlers& h) { h.mnuViewFront_Click(); }, solidInFront},
    {"mnuViewWhole", kView, "&Whole picture", "Ctrl+0", [](Handlers& h) { h.mnuViewWhole_Click(); },
     [](const Workbench& b) { return b.picture() != Picture::sheet; }},
    {"mnuViewCheckModel", kView, "Chec&k model...", "", [](Handlers& h) { h.mnuViewCheckModel_Click(); }, hasKnot, nullptr, nullptr, kSeparator},
    {"mnuViewFitRadius", kView, "Fit r&adius...", "", [](Handlers& h) { h.mnuViewFitRadius_Click(); }, hasKnot},
    {"mnuViewFitPicture", kView, "&Fit picture", "Ctrl+9", [](Handlers& h) { h.mnuViewFitPicture_Click(); }, nullptr,
     [](const Workbench& b) { return b.document().fields.fitPicture; }, nullptr, kSeparator},
    {"mnuViewClassic", kView, "&Classic joints", "", [](Handlers& h) { h.mnuViewClassic_Click(); }, nullptr,
     [](const Workbench& b) { return b.document().fields.check(Check::Classic); }},
    {"mnuViewDrawAtOnce", kView, "&Draw at once", "", [](Handlers& h) { h.mnuViewDrawAtOnce_Click(); }, nullptr,
     [](const Workbench& b) { return b.drawAtOnce; }},

    {"mnuViewVariations", kView, "Va&riations", "Ctrl+Shift+R", [](Handlers& h) { h.mnuViewVariations_Click(); }, nullptr, nullptr, nullptr, kSeparator},
    {"mnuViewVariationsOf", kView, "Variations &of fields...", "", [](Handlers& h) { h.mnuViewVariationsOf_Click(); }, hasGrid},
    languageRow<-1>("mnuLanguageSystem"), languageRow<0>("mnuLanguageEnglish"), languageRow<1>("mnuLanguageDeutsch"),

    {"mnuShapeBlank", kShape, "&Blank", "", [](Handlers& h) { h.mnuShapeBlank_Click(); }},
    {"mnuShapeView", kShape, "&View", "", [](Handlers& h) { h.mnuShapeView_Click(); }, nullptr,
     [](const Workbench& b) { return b.picture() == Picture::sheet; }},
    {"mnuShapeMakeStandard", kShape, "&Make from Standard", "", [](Handlers& h) { h.mnuShapeMakeStandard_Click(); }},
    {"mnuShapeLoadPicture", kShape, "Load &Picture...", "", [](Handlers& h) { h.mnuShapeLoadPicture_Click(); }, nullptr, nullptr, nullptr, kSeparator},
    {"mnuShapeTrace", kShape, "Trac&e Picture", "", [](Handlers& h) { h.mnuShapeTrace_Click(); },
     [](const Workbench& b) { return b.sheet.picture().shown(); }},
    {"mnuShapeClear", kShape, "&Clear", "", [](Handlers& h) { h.mnuShapeClear_Click(); },
     [](const Workbench& b) { return b.sheet.picture().shown(); }},
    {"mnuShapeMakeGrid", kShape, "New G&rid", "", [](Handlers& h) { h.mnuShapeMakeGrid_Click(); }, hasOutline, nullptr, nullptr, kSeparator},
    {"mnuShapeAutoGrid", kShape, "&AutoGrid", "", [](Handlers& h) { h.mnuShapeAutoGrid_Click(); }, outlineHasLines},
    {"mnuShapeFill", kShape, "&Fill Outline", "", [](Handlers& h) { h.mnuShapeFill_Click(); }, outlineHasLines},
    {"mnuShapeGridOnOff", kShape, "Alignment &Grid", "", [](Handlers& h) { h.mnuShapeGridOnOff_Click(); }, nullptr,
     [](const Workbench& b) { return b.sheet.alignmentGrid(); }, nullptr, kSeparator},
    {"mnuShapeSnap", kShape, "Snap &to Grid", "", [](Handlers& h) { h.mnuShapeSnap_Click(); }, nullptr,
     [](const Workbench& b) { return b.sheet.snap(); }},
    sheetRow<kNoSymmetry>("mnuSheetNone", "&None"), sheetRow<kLeftRight>("mnuSheetLeftRight", "&Left-right"),
    sheetRow<kTopBottom>("mnuSheetTopBottom", "&Top-bottom"), sheetRow<kBothMirrors>("mnuSheetBoth", "&Both"),
    sheetTurnsRow<2>("mnuSheetTurns2", "&2-fold turn"), sheetTurnsRow<3>("mnuSheetTurns3", "&3-fold turn"),
    sheetTurnsRow<4>("mnuSheetTurns4", "&4-fold turn"), sheetTurnsRow<5>("mnuSheetTurns5", "&5-fold turn"),
    sheetTurnsRow<6>("mnuSheetTurns6", "&6-fold turn"), sheetTurnsRow<7>("mnuSheetTurns7", "&7-fold turn"),
    sheetTurnsRow<8>("mnuSheetTurns8", "&8-fold turn"), sheetTurnsRow<9>("mnuSheetTurns9", "&9-fold turn"),
    sheetTurnsRow<10>("mnuSheetTurns10", "1&0-fold turn"), sheetTurnsRow<11>("mnuSheetTurns11", "&11-fold turn"),
    sheetTurnsRow<12>("mnuSheetTurns12", "12-&fold turn"),
    {"mnuSheetMirrored", kShape, "Turns &mirrored, too", "", [](Handlers& h) { h.mnuSheetMirrored_Click(); },
     [](const Workbench& b) { return b.sheet.symmetry().turns > 1; },
     [](const Workbench& b) { return b.sheet.symmetry().turns > 1 && b.sheet.symmetry().leftRight; },
     nullptr, false, false, false, kSheetSymmetry},
    {"mnuShapeSmooth", kShape, "Smoot&h outline", "", [](Handlers& h) { h.mnuShapeSmooth_Click(); }, outlineHasLines,
     [](const Workbench& b) { return b.sheet.shape().smooth; }},
    {"mnuShapeUndo", kShape, "&Undo", "", [](Handlers& h) { h.mnuShapeUndo_Click(); },
     [](const Workbench& b) { return b.sheet.undoKept(); }, nullptr, nullptr, kSeparator},
    {"mnuShapeLoadOutline", kShape, "Load &outline...", "", [](Handlers& h) { h.mnuShapeLoadOutline_Click(); }, nullptr, nullptr, nullptr, kSeparator},
    {"mnuShapeLoadFile", kShape, "&Load file...", "", [](Handlers& h) { h.mnuShapeLoadFile_Click(); }},
    {"mnuShapeSaveFile", kShape, "&Save file...", "", [](Handlers& h) { h.mnuShapeSaveFile_Click(); }},

    styleRow<0>("mnuStyle0"), styleRow<1>("mnuStyle1"), styleRow<2>("mnuStyle2"), styleRow<3>("mnuStyle3"),
    styleRow<4>("mnuStyle4"), styleRow<5>("mnuStyle5"), styleRow<6>("mnuStyle6"), styleRow<7>("mnuStyle7"),
    styleRow<8>("mnuStyle8"), styleRow<9>("mnuStyle9"), styleRow<10>("mnuStyle10"),

    {"mnuHelpHelp", kHelp, "How to &use Lorivan", "F1", [](Handlers& h) { h.showHelp("index.html"); }, nullptr, nullptr, nullptr, false, kDuringWork},
    {"mnuHelpCustom", kHelp, "&Custom knots", "", [](Handlers& h) { h.showHelp("custom.html"); }, nullptr, nullptr, nullptr, false, kDuringWork},
    {"mnuHelp3D", kHelp, "How to work in &3D", "", [](Handlers& h) { h.showHelp("3d.html"); }, nullptr, nullptr, nullptr, false, kDuringWork},
    {"mnuHelpFAQ", kHelp, "&Frequently Asked Questions", "", [](Handlers& h) { h.showHelp("faq.html"); }, nullptr, nullptr, nullptr, false, kDuringWork},
    {"mnuHelpAbout", kHelp, "&About", "", [](Handlers& h) { h.showHelp("about.html"); }, nullptr, nullptr, nullptr, kSeparator, kDuringWork},
});
// clang-format on

}  // namespace

std::span<const CommandRow> commandRows() { return kCommandRows; }

CommandId commandId(std::string_view name) {
  return static_cast<CommandId>(std::ranges::find(kCommandRows, name, &CommandRow::name) -
                                kCommandRows.begin());
}

std::span<const CommandSpec> commandTable() {
  static const std::vector<CommandSpec> table = [] {
    std::vector<CommandSpec> specs;
    for (const CommandRow& row : kCommandRows)
      specs.push_back({row.name, row.menu, row.text, row.shortcut, row.checked != nullptr,
                       row.separatorBefore, row.submenu, row.alternative});
    return specs;
  }();
  return table;
}

void sortOutCommands(Workbench& bench) {
  for (std::size_t i = 0; i < kCommandRows.size(); ++i) {
    const CommandRow& row = kCommandRows[i];
    const auto command = static_cast<CommandId>(i);
    const bool on = row.enabled == nullptr || row.enabled(bench);
    if (on != bench.window.commandEnabled(command)) bench.window.setCommandEnabled(command, on);
    if (row.checked != nullptr) bench.window.setCommandChecked(command, row.checked(bench));
    if (row.words == nullptr) continue;
    const std::string text = row.words(bench);
    bench.window.setCommandVisible(command, !text.empty());
    if (!text.empty()) bench.window.setCommandText(command, text);
  }
}

int styleOf(CommandId command) {
  constexpr std::string_view prefix = "mnuStyle";
  if (command < 0 || static_cast<std::size_t>(command) >= kCommandRows.size()) return -1;
  const std::string_view name = kCommandRows[command].name;
  if (!name.starts_with(prefix)) return -1;
  return static_cast<int>(parseInteger(name.substr(prefix.size()), 0, 99).value_or(-1));
}

}  // namespace lorivan
