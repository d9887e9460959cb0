#include "app/main_window.h"

#include <algorithm>

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
};

constexpr CommandHandler kCommands[] = {
    {commandId("mnuFileNewGrid"), [](MainWindow& w) { w.cmdNewGrid_Click(); }},
    {commandId("mnuFileRandom"), [](MainWindow& w) { w.cmdRandknot_Click(); }},
    {commandId("mnuFileLoad"), [](MainWindow& w) { w.mnuFileLoad_Click(); }},
    {commandId("mnuFileSave"), [](MainWindow& w) { w.mnuFileSave_Click(); }},
    {commandId("mnuFileExit"), [](MainWindow& w) { w.mnuFileExit_Click(); }},
    {commandId("mnuEditUndo"), [](MainWindow& w) { w.mnuEditUndo_Click(); }},
    {commandId("mnuHelpHelp"), [](MainWindow& w) { w.showHelp("help/index.html"); }},
    {commandId("mnuHelpCustom"), [](MainWindow& w) { w.showHelp("help/custom.html"); }},
    {commandId("mnuHelp3D"), [](MainWindow& w) { w.showHelp("help/3d.html"); }},
    {commandId("mnuHelpFAQ"), [](MainWindow& w) { w.showHelp("help/faq.html"); }},
    {commandId("mnuHelpAbout"), [](MainWindow& w) { w.showHelp("help/about.html"); }},
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
  // While work is going on only Stop and closing get through.
  events.confirmed = [this](ControlId control) {
    if (const auto p = parameterOf(control); p && working_ == 0) fieldConfirmed(*p);
  };
  events.left = [this](ControlId control) {
    if (const auto p = parameterOf(control); p && working_ == 0) setField(*p, window_->text(control));
  };
  events.clicked = [this](ControlId control) { onClicked(control); };
  events.changed = [this](ControlId control) {
    if (working_ == 0) onChanged(control);
  };
  events.command = [this](CommandId command) {
    if (working_ == 0 || command == commandId("mnuFileExit")) onCommand(command);
  };
  events.highlighted = [this](CommandId command) { highlightedCommand(command); };
  events.mouse = [this](ControlId picture, const MouseEvent& event) {
    if (working_ == 0) onMouse(picture, event);
  };
  events.key = [this](const KeyEvent& key) { return working_ == 0 && onKey(key); };
  events.resized = [this](ControlId picture) { onResized(picture); };
  events.fileDropped = [this](const std::string& path) {
    if (working_ == 0) fileDropped(path);
  };
  events.closeQuery = [this] { return closeQuery(); };
  events.started = [this] { onStarted(); };
  return events;
}

void MainWindow::onClicked(ControlId control) {
  if (working_ > 0) {
    if (control == controlId("cmd2D") && window_->text(control) == kStopCaption) stop_ = true;
    return;
  }
  confirmPending();
  if (control >= kFirstColourBox && control < kFirstColourBox + kColourBoxes)
    txtCol_Click(control - kFirstColourBox);
  for (const ControlHandler& row : kButtons)
    if (row.control == control && window_->enabled(control)) row.run(*this);
}

void MainWindow::onChanged(ControlId control) {
  for (const ControlHandler& row : kChoices)
    if (row.control == control) row.run(*this);
}

void MainWindow::onCommand(CommandId command) {
  if (working_ == 0) confirmPending();
  if (command >= kFirstStyle && command <= kLastStyle) return mnuStyle_Click(command - kFirstStyle);
  for (const CommandHandler& row : kCommands)
    if (row.command == command && window_->commandEnabled(command)) row.run(*this);
}

void MainWindow::onMouse(ControlId picture, const MouseEvent& event) {
  if (picture == controlId("picGrid")) picGrid_Mouse(event);
  if (picture == controlId("picKnot")) picKnot_Mouse(event);
  if (picture == controlId("picNav")) picNav_Mouse(event);
}

bool MainWindow::onKey(const KeyEvent& key) { return frmLorivan_KeyDown(key); }

void MainWindow::onResized(ControlId picture) {
  if (picture == controlId("picGrid") && !starting_) paintPicture();
  const bool solid = picture == controlId("picKnot") || picture == controlId("picNav");
  if (solid && !starting_) solidChanged();
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
