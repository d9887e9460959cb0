// The 2-D knot: tracing, drawing, following the tracer step by step.
#include "app/main_window.h"
#include "base/numbers.h"

namespace lorivan {

void MainWindow::cmd2D_Click() {
  const ControlId button = controlId("cmd2D");
  if (window_->text(button) == kStopCaption) {
    stop_ = true;
    return;
  }
  stop_ = false;
  if (knot_.graph.NoGrid) return;
  const Working working(*this);
  const std::string caption = window_->text(button);
  window_->setText(button, checked(Check::Animate) ? std::string(kStopCaption) : "wait...");
  enableCommand(commandId("mnuFileSaveEMF"), true);
  const bool made = CalcThread();
  window_->setText(button, caption);
  if (!made) return;
  status(knotSummary());
  modelFollowsKnot();
}

void MainWindow::ClearThread() {
  knotDrawn_ = false;
  for (int j = 0; j <= knot_.graph.LastLine; ++j) knot_.graph.Lines[static_cast<std::size_t>(j)].Passes = 0;
  cmdOldGrid_Click();
}

bool MainWindow::CalcThread() { return checked(Check::Animate) ? CalcAniThread() : drawKnotAtOnce(); }

bool MainWindow::drawKnotAtOnce() {
  if (!traced()) return false;
  knotDrawn_ = true;
  showPicture(Shown::grid);
  paintKnot();
  return true;
}

bool MainWindow::traced() {
  const TraceWatcher watcher = stepWatcher();
  if (watcher) paintGrid();
  const auto end = traceKnot(knot_, knotFields(), watcher);
  if (!end) {
    const std::string& text = end.error().message;
    window_->message(text, std::string(text == kKnotErrorText ? kKnotErrorTitle : "Lorivan"),
                     MessageIcon::none);
    status("No knot can be drawn on this grid");
    return false;
  }
  if (*end == TraceEnd::complete) return true;
  knotDrawn_ = false;  // what the steps drew stays to be looked at
  gridShown();
  status("The trace was abandoned");
  return false;
}

void MainWindow::paintKnot() {
  const KnotFields fields = knotFields();
  Surface& surface = window_->surface(controlId("picGrid"));
  const KnotStyle style = knotStyle(fields, colours_);
  view_ = viewOf(knot_, fields, style, surface.width(), true);
  drawKnotPicture(surface, knot_.graph, knot_.curve, style, view_, pictureOptions(fields));
  surface.refresh();
  if (const std::string fault = surface.fault(); !fault.empty()) status("The picture is not whole: " + fault);
}

std::string MainWindow::knotSummary() const {
  const KnotCounts counts = countKnot(knot_.graph, knot_.strands);
  const auto number = [](int n, const char* what) {
    return std::to_string(n) + ' ' + what + (n == 1 ? "" : "s");
  };
  return number(counts.strands, "strand") + ", " + number(counts.crossings, "crossing");
}

TraceWatcher MainWindow::stepWatcher() {
  if (!options_.stepDisplay || !window_->checked(controlId("Check1"))) return {};
  return [this](const TraceStep& step) { return showStep(step); };
}

bool MainWindow::showStep(const TraceStep& step) {
  Surface& surface = window_->surface(controlId("picGrid"));
  const auto at = [this](PointF p) { return view_.pixel(p.x, p.y); };
  const Pen pen{view_.penWidth(1), colours_.display[static_cast<std::size_t>(step.slot)], false};
  surface.segment(at(step.A), at(step.X), pen);
  surface.segment(at(step.X), at(step.B), pen);
  const std::pair<PointF, int> dots[] = {{step.R, 15}, {step.A, 11}, {step.B, 1}, {step.X, 12}};
  for (const auto& [point, colour] : dots) surface.dot(at(point), view_.penWidth(3), QBColor(colour));
  surface.refresh();
  return !window_->inputBox("Hi", "OK", "OK").empty();
}

}  // namespace lorivan
