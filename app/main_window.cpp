#include "app/main_window.h"

#include <algorithm>

#include "base/numbers.h"

namespace lorivan {
namespace {

struct ControlHandler {
  ControlId control;
  void (*run)(MainWindow&);
};

constexpr ControlHandler kButtons[] = {
    {controlId("cmdNewGrid"), [](MainWindow& w) { w.cmdNewGrid_Click(); }},
    {controlId("cmdOldGrid"), [](MainWindow& w) { w.cmdOldGrid_Click(); }},
    {controlId("cmdRandknot"), [](MainWindow& w) { w.cmdRandknot_Click(); }},
    {controlId("cmd2D"), [](MainWindow& w) { w.cmd2D_Click(); }},
    {controlId("cmd3D"), [](MainWindow& w) { w.cmd3D_Click(); }},
    {controlId("cmd2DView"), [](MainWindow& w) { w.cmd2DView_Click(); }},
    {controlId("cmd3DView"), [](MainWindow& w) { w.cmd3DView_Click(); }},
};

// Check boxes that are not here are read when they are needed.
constexpr ControlHandler kChoices[] = {
    {controlId("lstType"), [](MainWindow& w) { w.lstType_Click(); }},
    {controlId("chkShowGrid"), [](MainWindow& w) { w.chkShowGrid_Click(); }},
    {controlId("chkShowCrossings"), [](MainWindow& w) { w.chkShowCrossings_Click(); }},
    {controlId("chkMirror"), [](MainWindow& w) { w.chkMirror_Click(); }},
    {controlId("chkAnimate"), [](MainWindow& w) { w.chkAnimate_Click(); }},
    {controlId("chkHeightMap"), [](MainWindow& w) { w.chkHeightMap_Click(); }},
};

struct CommandHandler {
  CommandId command;
  void (*run)(MainWindow&);
  bool duringWork = false;  // leaves knot and fields alone: an animation goes on
};

constexpr CommandHandler kCommands[] = {
    {commandId("mnuFileNewGrid"), [](MainWindow& w) { w.cmdNewGrid_Click(); }},
    {commandId("mnuFileRandom"), [](MainWindow& w) { w.cmdRandknot_Click(); }},
    {commandId("mnuFileLoad"), [](MainWindow& w) { w.mnuFileLoad_Click(); }},
    {commandId("mnuFileSave"), [](MainWindow& w) { w.mnuFileSave_Click(); }},
    {commandId("mnuFileSaveBMP"), [](MainWindow& w) { w.mnuFileSaveBMP_Click(); }, true},
    {commandId("mnuFileSaveEMF"), [](MainWindow& w) { w.mnuFileSaveEMF_Click(); }},
    {commandId("mnuFileSave3D"), [](MainWindow& w) { w.mnuFileSave3D_Click(); }},
    {commandId("mnuFileExit"), [](MainWindow& w) { w.mnuFileExit_Click(); }, true},
    {commandId("mnuEditCopy"), [](MainWindow& w) { w.mnuEditCopy_Click(); }, true},
    {commandId("mnuEditUndo"), [](MainWindow& w) { w.mnuEditUndo_Click(); }},
    {commandId("mnuShapeBlank"), [](MainWindow& w) { w.mnuShapeBlank_Click(); }},
    {commandId("mnuShapeView"), [](MainWindow& w) { w.mnuShapeView_Click(); }},
    {commandId("mnuShapeMakeStandard"), [](MainWindow& w) { w.mnuShapeMakeStandard_Click(); }},
    {commandId("mnuShapeLoadPicture"), [](MainWindow& w) { w.mnuShapeLoadPicture_Click(); }},
    {commandId("mnuShapeClear"), [](MainWindow& w) { w.mnuShapeClear_Click(); }},
    {commandId("mnuShapeMakeGrid"), [](MainWindow& w) { w.mnuShapeMakeGrid_Click(); }},
    {commandId("mnuShapeAutoGrid"), [](MainWindow& w) { w.mnuShapeAutoGrid_Click(); }},
    {commandId("mnuShapeGridOnOff"), [](MainWindow& w) { w.mnuShapeGridOnOff_Click(); }},
    {commandId("mnuShapeSnap"), [](MainWindow& w) { w.mnuShapeSnap_Click(); }},
    {commandId("mnuShapeUndo"), [](MainWindow& w) { w.mnuShapeUndo_Click(); }},
    {commandId("mnuShapeLoadFile"), [](MainWindow& w) { w.mnuShapeLoadFile_Click(); }},
    {commandId("mnuShapeSaveFile"), [](MainWindow& w) { w.mnuShapeSaveFile_Click(); }},
    {commandId("mnuHelpHelp"), [](MainWindow& w) { w.showHelp("help/index.html"); }, true},
    {commandId("mnuHelpCustom"), [](MainWindow& w) { w.showHelp("help/custom.html"); }, true},
    {commandId("mnuHelp3D"), [](MainWindow& w) { w.showHelp("help/3d.html"); }, true},
    {commandId("mnuHelpFAQ"), [](MainWindow& w) { w.showHelp("help/faq.html"); }, true},
    {commandId("mnuHelpAbout"), [](MainWindow& w) { w.showHelp("help/about.html"); }, true},
};

}  // namespace

MainWindow::MainWindow(Platform& platform, MainWindowOptions options)
    : platform_(platform), options_(std::move(options)) {
  fields_.reserve(kParamCount);
  for (const ParamSpec& spec : parameterTable()) {
    ValidTextLimits limits{std::string(spec.min), std::string(spec.max), std::string(spec.fallback), "0.0"};
    fields_.push_back({ValidText(std::move(limits), std::string(spec.value),
                                 [this] { return platform_.clock().secondsOfDay(); }),
                       {}});
  }
}

WindowEvents MainWindow::makeEvents() {
  WindowEvents events;
  events.confirmed = [this](ControlId control) {
    if (const auto p = parameterOf(control)) userConfirmed(*p);
  };
  events.left = [this](ControlId control) {
    if (const auto p = parameterOf(control)) {
      field(*p).typed = window_->text(control);
      setField(*p, window_->text(control));
    }
  };
  events.clicked = [this](ControlId control) { onClicked(control); };
  events.changed = [this](ControlId control) { onChanged(control); };
  events.command = [this](CommandId command) { onCommand(command); };
  events.highlighted = [this](CommandId command) { highlightedCommand(command); };
  events.mouse = [this](ControlId picture, const MouseEvent& event) { userMoved(picture, event); };
  events.key = [this](const KeyEvent& key) { return userPressed(key); };
  events.resized = [this](ControlId picture) { onResized(picture); };
  events.fileDropped = [this](const std::string& path) { act([this, path] { fileDropped(path); }); };
  events.closeQuery = [this] { return closeQuery(); };
  events.started = [this] { act([this] { onStarted(); }); };
  return events;
}

void MainWindow::onClicked(ControlId control) {
  if (control == controlId("cmd2D") && window_->text(control) == kStopCaption)
    stop_ = true;
  else
    act([this, control] { press(control); });
}

void MainWindow::press(ControlId control) {
  confirmPending();
  if (control >= kFirstColourBox && control < kFirstColourBox + kColourBoxes)
    txtCol_Click(control - kFirstColourBox);
  for (const ControlHandler& row : kButtons)
    if (row.control == control && window_->enabled(control)) row.run(*this);
}

void MainWindow::onChanged(ControlId control) {
  for (const ControlHandler& row : kChoices)
    if (row.control == control) act([this, &row] { row.run(*this); });
}

void MainWindow::onCommand(CommandId command) {
  if (command >= kFirstStyle && command <= kLastStyle)
    return act([this, command] {
      confirmPending();
      mnuStyle_Click(command - kFirstStyle);
    });
  for (const CommandHandler& row : kCommands) {
    if (row.command != command) continue;
    const auto choose = [this, &row] {
      if (working_ == 0) confirmPending();
      if (window_->commandEnabled(row.command)) row.run(*this);
    };
    if (row.duringWork && working_ > 0)
      choose();
    else
      act(choose);
  }
}

void MainWindow::onMouse(ControlId picture, const MouseEvent& event) {
  if (picture == controlId("picGrid")) picGrid_Mouse(event);
  if (picture == controlId("picKnot")) picKnot_Mouse(event);
  if (picture == controlId("picNav")) picNav_Mouse(event);
  if (picture == controlId("picShape")) picShape_Mouse(event);
}

bool MainWindow::onKey(const KeyEvent& key) { return frmLorivan_KeyDown(key); }

void MainWindow::onResized(ControlId picture) {
  if (picture == controlId("picGrid") && !starting_) paintPicture();
  const bool solid = picture == controlId("picKnot") || picture == controlId("picNav");
  if (solid && !starting_) solidChanged();
  if (picture == controlId("picShape") && shapeShown()) RedrawCustom();
}

void MainWindow::confirmPending() {
  for (int i = 0; i < kParamCount; ++i) {
    const auto p = static_cast<Param>(i);
    if (window_->text(fieldControl(p)) != field(p).text.Value()) fieldConfirmed(p);
  }
}

void MainWindow::setField(Param p, std::string_view text) {
  ValidText& value = field(p).text;
  value.setValue(text);
  window_->setText(fieldControl(p), value.Value());
}

void MainWindow::setApplied(Param p, std::string_view text) {
  setField(p, text);
  field(p).lastApplied = field(p).text.Value();
}

float MainWindow::number(Param p) const {
  return static_cast<float>(parseNumber(field(p).text.Value()).value_or(0));
}

int MainWindow::whole(Param p) const { return toInt32(number(p)); }

Shape MainWindow::shape() const {
  return static_cast<Shape>(std::clamp(window_->selected(controlId("lstType")), 0, kShapeCount - 1));
}

KnotFields MainWindow::knotFields() const {
  KnotFields fields;
  for (int i = 0; i < kParamCount; ++i) {
    const auto p = static_cast<Param>(i);
    fields.text(p) = field(p).text.Value();
  }
  for (int i = 0; i < kCheckCount; ++i)
    fields.checks[static_cast<std::size_t>(i)] = checked(static_cast<Check>(i));
  fields.shape = shape();
  fields.boxes = boxes_;
  return fields;
}

void MainWindow::complain(const std::string& text) { window_->message(text, "Lorivan", MessageIcon::none); }

}  // namespace lorivan
