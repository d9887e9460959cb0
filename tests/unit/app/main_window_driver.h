// Opens the main window on the back end without a screen and plays its user.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include "app/main_window.h"
#include "platform/none/none_platform.h"

namespace lorivan {

inline constexpr ControlId kGrid = controlId("picGrid");

class MainWindowTest : public ::testing::Test {
 protected:
  void start(MainWindowOptions options = {}) {
    main.reset();
    main = std::make_unique<MainWindow>(platform, std::move(options));
    const Status opened = main->open();
    ASSERT_TRUE(opened);
    w = platform.window();
    EXPECT_TRUE(main->run());
  }
  void TearDown() override { EXPECT_TRUE(platform.dialogs.allAnswersUsed()); }

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
  void choose(Shape shape) { w->userChooses(controlId("lstType"), static_cast<int>(shape)); }
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
  Colour background(Param p) const { return w->background(fieldControl(p)); }
  bool statusStarts(const std::string& text) const { return w->status().starts_with(text); }
  /// Picks a command whose file dialog is answered so.
  void pickFile(std::string_view command, const std::string& path) {
    platform.dialogs.answerFile(path);
    pick(command);
  }
  void click(std::string_view button) { w->userClicks(w->control(button)); }
  void pick(std::string_view command) { w->userPicks(w->command(command)); }
  bool enabled(std::string_view name) const { return w->enabled(w->control(name)); }
  bool commandEnabled(std::string_view name) const { return w->commandEnabled(w->command(name)); }
  bool visible(std::string_view name) const { return w->visible(w->control(name)); }
  int lines() const { return main->knot().graph.LastLine + 1; }
  const GridLine& line(int j) const { return main->knot().graph.Lines[static_cast<std::size_t>(j)]; }
  int clears() const { return w->surface(kGrid).clears(); }
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
  bool gridIsNew() const { return line(0).Kind == kOrdinary; }

  NonePlatform platform;
  std::unique_ptr<MainWindow> main;
  NoneWindow* w = nullptr;
};

/// A folder of its own that is removed with everything in it.
struct Folder {
  Folder()
      : path(std::filesystem::temp_directory_path() / ("lorivan_window_" + std::to_string(counter()++))) {
    std::filesystem::create_directories(path);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() { std::filesystem::remove_all(path); }
  std::string file(const std::string& name) const { return (path / name).string(); }
  static int& counter() {
    static int count = 0;
    return count;
  }
  std::filesystem::path path;
};

}  // namespace lorivan
