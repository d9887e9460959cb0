// Drawing the 2-D knot, building and painting the model, and previews.
#include "design/edits.h"
#include "design/presets.h"
#include "window/captions.h"
#include "window/summaries.h"
#include "window/waiting.h"
#include "window/workbench.h"

namespace lorivan {

bool Workbench::drawKnot(bool asked, bool modelAsked) {
  if (!document().lines) return false;
  const ActionQueue::Working working(actions);
  const bool animated = asked && document().fields.check(Check::Animate);
  const Caption caption(window, controlId("cmd2D"), waitCaption());
  if (!trace(asked)) return false;
  if (stages_.strands() != std::exchange(markedStrands_, stages_.strands())) markStrand(0);
  if (animated) {
    if (!play()) return false;
  } else {
    drawn_ = true;
    paintFlat();
  }
  if (asked || !solid.ofStrands(stages_) || !solid.sameColours(document()))
    static_cast<void>(buildModel(modelAsked));
  return true;
}

/// Brings the strands up to date. False when there are none, which the user has been told.
bool Workbench::trace(bool asked) {
  const TraceWatcher watcher = asked ? stepWatcher() : TraceWatcher();
  if (watcher) static_cast<void>(flat.paintGrid(document(), knot()));
  const auto end = stages_.trace(document(), watcher);
  if (end && *end == TraceEnd::complete) return true;
  drawn_ = false;
  if (end) {
    status(tr("The trace was abandoned"));
    return false;
  }
  if (asked)
    window.message(end.error().message,
                   end.error().kind == ErrorKind::knot ? translated(kKnotErrorTitle) : "Lorivan",
                   MessageIcon::none);
  status(tr("No knot can be drawn on this grid"));
  return false;
}

TraceWatcher Workbench::stepWatcher() {
  if (!options.stepDisplay || !window.checked(controlId("Check1"))) return {};
  return [this](const TraceStep& step) {
    flat.showStep(step, strandColours(document().fields.boxes));
    return !window.inputBox(tr("Hi"), tr("OK"), tr("OK")).empty();
  };
}

/// Draws the knot as an animation. False when the window was closed meanwhile.
bool Workbench::play() {
  const Caption caption(window, controlId("cmd2D"), stopCaption());
  flat.startAnimation(document(), knot());
  status(tr("{1}; Stop or Esc ends the drawing", knotSummary(knot())));
  drawn_ = true;
  sortOut();
  const bool alive = actions.play(
      platform.clock(), [this] { return flat.frame(document()); }, [this] { return window.processEvents(); });
  flat.endAnimation();
  return alive;
}

void Workbench::showGrid() {
  drawn_ = modelFieldsTouched_ = false;
  paintFlat();
}

void Workbench::paintFlat() {
  if (actions.animating()) return flat.repaintAnimation(document(), knot());
  const Status painted = drawn_ ? flat.paintKnot(document(), knot()) : flat.paintGrid(document(), knot());
  if (!painted) tell(painted.error());
}

void Workbench::markStrand(int slot) {
  flat.setMarkedStrand(slot);
  solid.setMarkedStrand(slot);
}

void Workbench::showMarks() { flat.setMarks(knot(), {symmetry.imagesOf(hand.hovered), hand.walk.line()}); }

bool Workbench::buildModel(bool asked) {
  const ActionQueue::Working working(actions);
  const std::int64_t polygons = polygonBudget(knot().strands, tubeSettings(document().fields));
  // Nobody waits for a large model that nobody looks at: it is built when it is to be shown.
  if (!asked && !solidShown() && polygons >= SolidView::kLargeModel) return false;
  const Caption caption(window, controlId("cmd3D"), tr("wait.."));
  Status built;
  {
    const Hourglass hourglass(window, polygons >= SolidView::kLargeModel);
    if (hourglass.shown()) status(trn("Building {n} polygon ...", "Building {n} polygons ...", polygons));
    if (!hourglass.shown() || window.processEvents()) built = solid.build(document(), stages_);
  }
  if (!built) {
    // Before the box, behind which the line would go on saying that the model is being built.
    status(trn("No model: it would have {n} polygon", "No model: it would have {n} polygons", polygons));
    if (asked) complain(built.error().message);
    return false;
  }
  if (solid.model().QuadCount == 0) {
    if (asked) status(tr("The knot has no strands that a model could be made of"));
    return false;
  }
  modelFieldsTouched_ = false;
  status(summary());  // no longer that it is being built
  return true;
}

void Workbench::paintSolid() {
  const Hourglass hourglass(window, solid.shownPolygons() >= SolidView::kLargeModel);
  solid.paint(document());
}

void Workbench::preview(int style) {
  if (actions.working() || picture_ == Picture::sheet || picture_ == Picture::variations || !document().lines)
    return;
  if (style < 0) {
    if (!std::exchange(previewing_, false)) return;
    solidShown() ? paintSolid() : paintFlat();
    status(statusBeforePreview_);
    return;
  }
  const Document styled = withFittedStyle(document(), style);
  if (!previewStages_.trace(styled)) return;
  if (solidShown() ? !solid.paintPreview(styled, previewStages_)
                   : !flat.paintKnot(styled, previewStages_.knot()))
    return;
  if (!std::exchange(previewing_, true)) statusBeforePreview_ = status_;
  status(translated(presetTable()[style].about));
}

}  // namespace lorivan
