// The knot that draws itself, and what the user can do while it does.
#include <algorithm>

#include "app/main_window.h"
#include "strands/animation.h"

namespace lorivan {
namespace {

/// The longest time in milliseconds that the window is left alone between two looks at its events.
constexpr std::int64_t kLongestNap = 20;

}  // namespace

/// Traces, and draws frame after frame until it is done, stopped, or something else is to be done. False when
/// there is no knot or the window was closed.
bool MainWindow::CalcAniThread() {
  if (!traced()) return false;
  showPicture(Shown::grid);
  const KnotFields fields = knotFields();
  const KnotStyle style = knotStyle(fields, colours_);
  Surface& surface = window_->surface(controlId("picGrid"));
  view_ = viewOf(knot_, fields, style, surface.width(), true);
  AnimatedDrawing animation(knot_.graph, knot_.curve, style, view_, pictureOptions(fields));
  animation_ = &animation;
  status(knotSummary() + "; Stop or Esc ends the drawing");
  const bool alive = play(animation);
  animation_ = nullptr;
  knotDrawn_ = true;
  return alive;
}

bool MainWindow::play(AnimatedDrawing& animation) {
  while (true) {
    animation.setSpeed(knotFields().number(Param::Animate));
    animation.setLoop(window_->checked(controlId("chkLoop")));
    // Another one after the window was resized.
    Surface& surface = window_->surface(controlId("picGrid"));
    const std::optional<int> wait = animation.nextFrame(surface);
    surface.refresh();
    if (!wait) return true;
    if (!attend(*wait)) return false;
    if (stop_ || !deeds_.empty()) return true;
  }
}

/// Handles events for so many milliseconds, at least once; returns early when the animation is to end. False
/// when the window was closed.
bool MainWindow::attend(int milliseconds) {
  const Clock& clock = platform_.clock();
  const std::int64_t end = clock.milliseconds() + milliseconds;
  while (true) {
    const std::int64_t left = end - clock.milliseconds();
    if (left > 0) platform_.clock().sleep(static_cast<int>(std::min(left, kLongestNap)));
    if (!window_->processEvents()) return false;
    if (stop_ || !deeds_.empty() || clock.milliseconds() >= end) return true;
  }
}

void MainWindow::repaintAnimation() {
  const KnotFields fields = knotFields();
  Surface& surface = window_->surface(controlId("picGrid"));
  view_ = viewOf(knot_, fields, knotStyle(fields, colours_), surface.width(), true);
  animation_->repaint(surface, view_);
}

void MainWindow::chkAnimate_Click() {
  SortOutAnimation();
  // A drawing that was ended halfway is completed.
  if (knotDrawn_ && !checked(Check::Animate)) paintPicture();
}

void MainWindow::vtAnimate_Changed() {
  if (animation_ != nullptr) return;  // the next frame takes the new speed
  SortOutAnimation();
  ClearThread();
}

void MainWindow::SortOutAnimation() {
  const bool on = checked(Check::Animate);
  enable(controlId("chkLoop"), on);
  enable(controlId("lblAnimate"), on);
  enable(fieldControl(Param::Animate), on);
}

void MainWindow::act(std::function<void()> deed) {
  deeds_.push_back(std::move(deed));
  if (working_ > 0) return;
  while (!deeds_.empty()) {
    const std::function<void()> next = std::move(deeds_.front());
    deeds_.pop_front();
    next();
  }
}

void MainWindow::userConfirmed(Param p) {
  Field& f = field(p);
  const bool isNew = window_->text(fieldControl(p)) != f.text.Value() || f.text.Value() != f.lastApplied;
  if (p == Param::Animate && animation_ != nullptr)
    fieldConfirmed(p);
  else if (isNew || working_ == 0)
    act([this, p] { fieldConfirmed(p); });
  else
    f.typed.clear();
}

void MainWindow::userMoved(ControlId picture, const MouseEvent& event) {
  if (working_ == 0) {
    act([this, picture, event] { onMouse(picture, event); });
    return;
  }
  // A press counts as a click where it was; one that hits no line does nothing anyway.
  if (event.action != MouseAction::press) return;
  if (picture == controlId("picGrid") && lineAt(event.x, event.y) < 0) return;
  act([this, picture, event] {
    onMouse(picture, event);
    MouseEvent release = event;
    release.action = MouseAction::release;
    onMouse(picture, release);
  });
}

bool MainWindow::userPressed(const KeyEvent& key) {
  if (working_ == 0) return onKey(key);
  if (animation_ == nullptr || key.key != Key::escape) return false;
  stop_ = true;
  return true;
}

}  // namespace lorivan
