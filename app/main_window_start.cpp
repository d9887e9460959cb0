// Start-up and exit: what the settings keep, and everything in its order.
#include <algorithm>

#include "app/command_line.h"
#include "app/main_window.h"
#include "base/numbers.h"

namespace lorivan {
namespace {

constexpr int kTwipsPerPixel = 15;
constexpr int kLeastScreenHeight = 600;

/// Settings that are no numbers read as 0.
double numberOf(const std::string& text) { return parseNumber(text).value_or(0); }

bool truthOf(const std::string& text) { return lowerCase(text) == "true" || numberOf(text) != 0; }

/// Left or top such that a window of `size` stays on a screen of `room`.
int keptOnScreen(const std::string& twips, int size, int room) {
  return std::max(0, std::min(toInt32(numberOf(twips) / kTwipsPerPixel), room - size));
}

std::string twips(int pixels) { return shortestText(static_cast<float>(pixels) * kTwipsPerPixel); }

}  // namespace

Status MainWindow::open() {
  events_ = makeEvents();
  auto made = platform_.createWindow({formTable(), commandTable(), "Lorivan"}, events_);
  if (!made) return made.error();
  window_ = std::move(*made);
  tooSmall_ = screenTooSmall();
  if (tooSmall_) return {};
  starting_ = true;
  window_->setVisible(controlId("Check1"), options_.stepDisplay);
  window_->setChecked(controlId("Check1"), options_.stepDisplay);
  setCaption({});
  random_ = options_.random ? options_.random : seededRandom(platform_.clock().seed());
  std::vector<std::string> shapes;
  for (const ShapeSpec& row : shapeTable()) shapes.emplace_back(row.name);
  window_->setItems(controlId("lstType"), shapes);
  for (int i = 0; i < kParamCount; ++i)
    window_->setText(fieldControl(static_cast<Param>(i)), fields_[static_cast<std::size_t>(i)].text.Value());
  restoreSettings();
  SortOutAnimation();
  showOffsetField();
  for (Field& f : fields_) f.lastApplied = f.text.Value();
  disableForStart();
  for (const ControlId turned : {controlId("picKnot"), controlId("picNav")})
    window_->setPointer(turned, PointerShape::hand);
  UpdateRotator();
  vtGridSize_Changed();
  cmdNewGrid_Click();
  starting_ = false;
  colourBackField();
  colourStartField();
  return {};
}

bool MainWindow::screenTooSmall() {
  if (window_->screen().height / window_->scaling() >= kLeastScreenHeight) return false;
  window_->message(
      "Sorry, this program only works at resolutions of SuperVGA (800*600, small fonts) or better", "",
      MessageIcon::none);
  return true;
}

Status MainWindow::run() {
  if (tooSmall_) return {};
  window_->show();
  // Only now is the frame's own size known.
  const WindowPlace place = window_->place(), screen = window_->screen();
  const int left = std::max(0, std::min(place.left, screen.width - place.width));
  const int top = std::max(0, std::min(place.top, screen.height - place.height));
  if (left != place.left || top != place.top) window_->moveTo(left, top);
  window_->run();
  return settingsKept_;
}

void MainWindow::onStarted() {
  if (!options_.knotFile.empty())
    openFile(options_.knotFile);
  else if (options_.drawAtStart)
    cmd2D_Click();
}

void MainWindow::setCaption(const std::string& file) {
  const std::string base = "Lorivan - V" + std::string(kVersion) + ' ';
  window_->setTitle(file.empty() ? base : base + ' ' + file);
}

void MainWindow::disableForStart() {
  for (const ControlId control : {controlId("cmdOldGrid"), controlId("cmd3DView"), controlId("cmd2DView"),
                                  controlId("cmd3D"), controlId("cmd2D")})
    enable(control, false);
  for (std::size_t i = 0; i < menus::kRows.size(); ++i)
    enableCommand(static_cast<CommandId>(i), menus::kRows[i].atStart == AtStart::enabled);
  showPicture(Shown::grid);
}

void MainWindow::restoreSettings() {
  for (const SettingRow& row : settingTable()) {
    const std::string text = platform_.settings().read(kSettingsSection, row.key, row.fallback);
    std::visit([&](const auto& owner) { restore(owner, text); }, row.owner);
  }
  colours_ = strandColours(boxes_);
}

void MainWindow::restore(ColourBoxNumber box, const std::string& text) {
  const auto number = parseInteger(text, INT32_MIN, INT32_MAX).value_or(0);
  const Colour colour = static_cast<Colour>(number) & 0xFFFFFF;
  boxes_[static_cast<std::size_t>(box.box)] = colour;
  window_->setColours(kFirstColourBox + box.box, colour, 0);
}

void MainWindow::restore(Param p, const std::string& text) { setField(p, text); }

void MainWindow::restore(Check c, const std::string& text) {
  window_->setChecked(checkControl(c), numberOf(text) == 1);
}

void MainWindow::restore(WindowState state, const std::string& text) {
  const WindowPlace place = window_->place(), screen = window_->screen();
  switch (state) {
    case WindowState::left:
      window_->moveTo(keptOnScreen(text, place.width, screen.width), place.top);
      break;
    case WindowState::top:
      window_->moveTo(place.left, keptOnScreen(text, place.height, screen.height));
      break;
    case WindowState::shape: {
      const double index = numberOf(text);
      window_->select(controlId("lstType"), index >= 0 && index < kShapeCount ? static_cast<int>(index) : 0);
      break;
    }
    case WindowState::gridOn:
      desk_.editor.setAlignmentGrid(truthOf(text));
      window_->setCommandChecked(commandId("mnuShapeGridOnOff"), truthOf(text));
      break;
    case WindowState::snapOn:
      desk_.editor.setSnap(truthOf(text));
      window_->setCommandChecked(commandId("mnuShapeSnap"), truthOf(text));
      break;
    case WindowState::lastFolder:
      lastFolder_ = text;
      break;
    case WindowState::saveFormat:
      for (std::size_t i = 0; i < kSaveFormats.size(); ++i)
        window_->setChecked(kSaveFormats[i], numberOf(text) == static_cast<double>(i + 1));
      break;
  }
}

bool MainWindow::closeQuery() {
  if (tooSmall_) return true;
  if (!window_->confirm("Are you sure you want to exit?", "Exit check")) return false;
  saveSettings();
  stop_ = true;
  deeds_.clear();
  return true;
}

void MainWindow::saveSettings() {
  // Text typed but not confirmed is corrected; nothing is drawn any more.
  for (int i = 0; i < kParamCount; ++i) {
    const auto p = static_cast<Param>(i);
    if (window_->text(fieldControl(p)) != field(p).text.Value()) setField(p, window_->text(fieldControl(p)));
  }
  Settings& settings = platform_.settings();
  for (const SettingRow& row : settingTable())
    settings.write(kSettingsSection, row.key,
                   std::visit([&](const auto& owner) { return kept(owner); }, row.owner));
  // The window closes all the same.
  settingsKept_ = settings.flush();
  if (!settingsKept_) status("The settings could not be kept: " + settingsKept_.error().message);
}

std::string MainWindow::kept(ColourBoxNumber box) const {
  return std::to_string(boxes_[static_cast<std::size_t>(box.box)]);
}

std::string MainWindow::kept(Param p) const { return field(p).text.Value(); }

std::string MainWindow::kept(Check c) const { return checked(c) ? "1" : "0"; }

std::string MainWindow::kept(WindowState state) const {
  switch (state) {
    case WindowState::left:
      return twips(window_->place().left);
    case WindowState::top:
      return twips(window_->place().top);
    case WindowState::shape:
      return std::to_string(static_cast<int>(shape()));
    case WindowState::gridOn:
      return desk_.editor.alignmentGrid() ? "True" : "False";
    case WindowState::snapOn:
      return desk_.editor.snap() ? "True" : "False";
    case WindowState::lastFolder:
      return lastFolder_;
    case WindowState::saveFormat:
      break;
  }
  for (std::size_t i = 0; i < kSaveFormats.size(); ++i)
    if (window_->checked(kSaveFormats[i])) return std::to_string(i + 1);
  return "0";
}

void MainWindow::showHelp(std::string_view page) {
  if (const Status opened = platform_.help().open(std::string(page)); !opened) status(opened.error().message);
}

}  // namespace lorivan
