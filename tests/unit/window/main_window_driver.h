// Opens the main window on the back end without a screen and plays its user.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "design/settings_table.h"
#include "platform/none/none_platform.h"
#include "scratch_folder.h"
#include "window/captions.h"
#include "window/commands.h"
#include "window/main_window.h"

namespace lorivan {

inline constexpr ControlId kGrid = controlId("picGrid"), kSolid = controlId("picKnot"),
                           kSheet = controlId("picShape"), kNav = controlId("picNav"),
                           kShapes = controlId("lstType");

class MainWindowTest : public ::testing::Test {
 protected:
  /// Knots are drawn when they are asked for, unless the settings are cleared.
  MainWindowTest() { stored("DrawAtOnce") = "False"; }
  void start(MainWindowOptions options = {}) {
    main.reset();
    main = std::make_unique<MainWindow>(platform, std::move(options));
    const Status opened = main->open();
    ASSERT_TRUE(opened);
    w = platform.window();
    EXPECT_TRUE(main->run());
  }
  void startDrawn(MainWindowOptions options = {}) { start(std::move(options)), click("cmd2D"); }
  void TearDown() override { EXPECT_TRUE(platform.dialogs.allAnswersUsed()); }
  /// Agrees to the exit question, and answers whether changes are to be saved.
  void exit(std::optional<SaveAnswer> changes = {}) {
    platform.dialogs.answerConfirm(true);
    if (changes) platform.dialogs.answerSave(*changes);
    w->userCloses();
    EXPECT_TRUE(w->closed());
  }
  std::string& stored(const std::string& key) { return platform.settings().values[{"Settings", key}]; }

  Workbench& bench() { return main->bench(); }
  const Document& document() { return main->bench().document(); }
  bool drawn() { return main->bench().knotDrawn(); }
  std::string text(Param p) const { return w->text(fieldControl(p)); }
  /// Types into a field and presses Enter, some seconds after what was done before.
  void enter(Param p, const std::string& value) {
    platform.clock().advance(5000);
    w->userEnters(fieldControl(p), value);
  }
  using Values = std::initializer_list<std::pair<Param, const char*>>;
  void enterAll(Values values) {
    for (const auto& [p, value] : values) enter(p, value);
  }
  void expectTexts(Values values) const {
    for (const auto& [p, value] : values) EXPECT_EQ(text(p), value) << parameterSpec(p).field;
  }
  void choose(Shape shape) { w->userChooses(kShapes, static_cast<int>(shape)); }
  /// Whether going through fields leaves the picture as it is: nothing waits to be applied.
  bool nothingWaits(std::initializer_list<Param> fields, ControlId picture = kGrid) {
    const int before = w->surface(picture).clears();
    for (const Param p : fields) w->userFocuses(fieldControl(p));
    return w->surface(picture).clears() == before;
  }
  std::vector<std::uint32_t> pixels(ControlId picture = kGrid) {
    const auto shown = w->surface(picture).pixels();
    return {shown.begin(), shown.end()};
  }
  /// Whether the clipboard holds a picture of these pixels.
  bool copied(const std::vector<std::uint32_t>& shown) {
    const auto& picture = platform.clipboard().picture;
    return picture && std::ranges::equal(picture->pixels(), shown);
  }
  Colour background(Param p) const { return w->background(fieldControl(p)); }
  bool statusStarts(const std::string& text) const { return w->status().starts_with(text); }
  /// Picks a command whose file dialog is answered so, and the question whether changes are to be saved.
  void pickFile(std::string_view command, const std::string& path, std::optional<SaveAnswer> changes = {}) {
    platform.dialogs.answerFile(path);
    if (changes) platform.dialogs.answerSave(*changes);
    pick(command);
  }
  /// What a file holds that a command has written.
  std::string saved(std::string_view command, const std::string& path) {
    pickFile(command, path);
    return Folder::contents(path);
  }
  /// Picks a command that ends in a message box after its file dialog.
  void pickFileInVain(std::string_view command, const std::string& path) {
    platform.dialogs.answerFile(path);
    platform.dialogs.answerMessage();
    pick(command);
  }
  void pickInput(std::string_view command, const std::string& text) {
    platform.dialogs.answerInput(text);
    pick(command);
  }
  void undo(int steps = 1) {
    for (; steps > 0; --steps) pick("mnuEditUndoStep");
  }
  void click(std::string_view button) { w->userClicks(w->control(button)); }
  void pick(std::string_view command) { w->userPicks(w->command(command)); }
  bool enabled(std::string_view name) const { return w->enabled(w->control(name)); }
  bool checked(std::string_view name) const { return w->checked(w->control(name)); }
  bool commandEnabled(std::string_view name) const { return w->commandEnabled(w->command(name)); }
  std::string commandText(std::string_view name) const { return w->commandText(w->command(name)); }
  bool visible(std::string_view name) const { return w->visible(w->control(name)); }
  int lines() { return bench().knot().graph.LastLine + 1; }
  const GridLine& line(int j) { return bench().knot().graph.Lines[j]; }
  int clears() const { return w->surface(kGrid).clears(); }
  int count(DrawKind kind) const { return w->surface(kGrid).count(kind); }
  std::size_t asked() const { return platform.dialogs.asked().size(); }
  const AskedDialog& lastAsked() const { return platform.dialogs.asked().back(); }

  /// Clicks the middle of a line; the grid must be shown at its normal zoom.
  void clickLine(int j, int button = 1) {
    const GridView view(stretchFactor(std::stof(text(Param::Skew))), w->surface(kGrid).width());
    const PointI at = view.pixel(line(j).MidX, line(j).MidY);
    w->userClicksAt(kGrid, button, at.x, at.y);
  }
  /// A new grid forgets clicked walls, the old grid shown again keeps them.
  void markGrid() {
    clickLine(0);
    ASSERT_EQ(line(0).Kind, kWall);
  }
  bool gridIsNew() { return line(0).Kind == kOrdinary; }
  void drag(ControlId picture, PointI from, PointI to, int button = 1) {
    w->userMouse(picture, {MouseAction::press, button, from.x, from.y});
    w->userMouse(picture, {MouseAction::move, button, (from.x + to.x) / 2, (from.y + to.y) / 2});
    w->userMouse(picture, {MouseAction::move, button, to.x, to.y});
    w->userMouse(picture, {MouseAction::release, button, to.x, to.y});
  }
  /// A closed square with its corners at 100 and 300, on a blank sheet.
  void drawSquare() {
    pick("mnuShapeBlank");
    const PointI way[] = {{200, 200}, {100, 100}, {300, 100}, {300, 300}, {100, 300}, {100, 100}};
    for (int k = 0; k < 5; ++k) drag(kSheet, way[k], way[k + 1]);
  }

  NonePlatform platform;
  std::unique_ptr<MainWindow> main;
  NoneWindow* w = nullptr;
};

}  // namespace lorivan
