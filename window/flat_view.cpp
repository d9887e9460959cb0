#include "window/flat_view.h"

#include <utility>

#include "window/form_table.h"

namespace lorivan {
namespace {

constexpr ControlId kPicture = controlId("picGrid");

KnotStyle styleOf(const Document& document) {
  return knotStyle(document.fields, strandColours(document.fields.boxes));
}

}  // namespace

Surface& FlatView::surface() const { return window_.surface(kPicture); }

Status FlatView::shown(Surface& surface) const {
  surface.refresh();
  const std::string fault = surface.fault();
  return fault.empty() ? Status() : Status(unwritable("The picture is not whole: " + fault));
}

Status FlatView::paintGrid(const Document& document, const Knot& knot) {
  Surface& picture = surface();
  PictureOptions options = pictureOptions(document.fields);
  options.showGrid = true;
  view_ = viewOf(knot, document.fields, styleOf(document), picture.width(), false);
  drawPictureGround(picture, knot.graph, view_, options);
  return shown(picture);
}

Status FlatView::paintKnot(const Document& document, const Knot& knot) {
  Surface& picture = surface();
  const KnotStyle style = styleOf(document);
  view_ = viewOf(knot, document.fields, style, picture.width(), true);
  drawKnotPicture(picture, knot.graph, knot.curve, style, view_, pictureOptions(document.fields));
  return shown(picture);
}

int FlatView::lineAt(const Knot& knot, int x, int y) const {
  return FindLine(knot.graph, static_cast<float>(view_.gridX(x)), static_cast<float>(view_.gridY(y)));
}

void FlatView::pointAt(const Knot& knot, const MouseEvent& event) {
  const bool onLine = event.action != MouseAction::leave && lineAt(knot, event.x, event.y) >= 0;
  const PointerShape pointer = onLine ? PointerShape::hand : PointerShape::arrow;
  if (pointer != std::exchange(pointer_, pointer)) window_.setPointer(kPicture, pointer);
}

void FlatView::startAnimation(const Document& document, const Knot& knot) {
  const KnotStyle style = styleOf(document);
  view_ = viewOf(knot, document.fields, style, surface().width(), true);
  animation_.emplace(knot.graph, knot.curve, style, view_, pictureOptions(document.fields));
}

std::optional<int> FlatView::frame(const Document& document) {
  animation_->setSpeed(document.fields.number(Param::Animate));
  animation_->setLoop(document.fields.check(Check::Loop));
  Surface& picture = surface();  // another one after the window was resized
  const std::optional<int> wait = animation_->nextFrame(picture);
  picture.refresh();
  return wait;
}

void FlatView::repaintAnimation(const Document& document, const Knot& knot) {
  if (!animation_) return;
  view_ = viewOf(knot, document.fields, styleOf(document), surface().width(), true);
  animation_->repaint(surface(), view_);
}

void FlatView::showStep(const TraceStep& step, const StrandColours& colours) {
  Surface& picture = surface();
  const auto at = [this](PointF p) { return view_.pixel(p.x, p.y); };
  const Pen pen{view_.penWidth(1), colours.display[static_cast<std::size_t>(step.slot)], false};
  picture.segment(at(step.A), at(step.X), pen);
  picture.segment(at(step.X), at(step.B), pen);
  const std::pair<PointF, int> dots[] = {{step.R, 15}, {step.A, 11}, {step.B, 1}, {step.X, 12}};
  for (const auto& [point, colour] : dots) picture.dot(at(point), view_.penWidth(3), QBColor(colour));
  picture.refresh();
}

}  // namespace lorivan
