#include "custom/shape_editor.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/numbers.h"

namespace lorivan {
namespace {

constexpr Colour kLineColour = makeColour(30, 60, 150);
constexpr Colour kPointColour = makeColour(0, 0, 0);
constexpr Colour kBandColour = makeColour(210, 60, 30);
constexpr Colour kAlignmentColour = makeColour(200, 210, 225);

std::string usedUp(int most, const char* what) {
  return "A shape holds at most " + std::to_string(most) + ' ' + what +
         ", deleted ones included: New Grid, then Make from Standard drops those";
}

float snapped(float value, float extent, int divisions) {
  const float step = extent / static_cast<float>(divisions);
  if (!(step > 0)) return value;
  return static_cast<float>(toInt16(std::floor(value / step + 0.5F))) * step;
}

/// The far margin wins on surfaces too small for both; nothing lands below 0, where deleted points are.
float clamped(float value, float extent) {
  return std::max(0.0F, std::min(std::max(value, kShapeNearMargin), extent - kShapeFarMargin));
}

}  // namespace

ShapeFrame frameOf(const CustomShape& shape) {
  return {kShapeNearMargin, kShapeNearMargin, shape.surfaceWidth - kShapeFarMargin,
          shape.surfaceHeight - kShapeFarMargin};
}

void ShapeEditor::replaceShape(CustomShape shape) {
  shape_ = std::move(shape);
  pressed_ = rubberBand_ = false;
  movedPoint_ = 0;
}

void ShapeEditor::undo() {
  shape_ = undo_;
  pressed_ = rubberBand_ = false;
  movedPoint_ = 0;
}

void ShapeEditor::picShape_MouseDown(int Button, int /*Shift*/, float X, float Y) {
  pressed_ = true;
  press_ = {X, Y};
  movedPoint_ = Button == kRightButton ? shape_.pointNear(X, Y, kHitRadius) : 0;
}

bool ShapeEditor::picShape_MouseMove(int Button, int Shift, float X, float Y) {
  if (!pressed_ || Button == 0 || !(X >= 0 && Y >= 0)) return false;
  rubberEnd_ = constrained(Shift, {X, Y});
  rubberBand_ = true;
  return true;
}

/// With the Shift key alone (Alt does not count), the end level with the press or straight above or below it.
ShapeEditor::Position ShapeEditor::constrained(int Shift, Position end) const {
  if (Shift >= kAltKey) Shift -= kAltKey;
  if (Shift != kShiftKey) return end;
  if (std::fabs(end.y - press_.y) <= std::fabs(end.x - press_.x)) return {end.x, press_.y};
  return {press_.x, end.y};
}

ShapeEditor::Position ShapeEditor::settled(Position end) const {
  if (snap_)
    end = {snapped(end.x, shape_.surfaceWidth, divisions_), snapped(end.y, shape_.surfaceHeight, divisions_)};
  return {clamped(end.x, shape_.surfaceWidth), clamped(end.y, shape_.surfaceHeight)};
}

ShapeEdit ShapeEditor::picShape_MouseUp(int Button, int Shift, float X, float Y) {
  rubberBand_ = false;
  if (!std::exchange(pressed_, false) || !std::isfinite(X) || !std::isfinite(Y)) return {};
  SaveUndo();
  // Only what is placed or moved snaps and stays within the margins: whether this is a click, and on which
  // point, is decided where the mouse was.
  const Position end = constrained(Shift, {X, Y});
  ShapeEdit edit;
  if (const int moved = std::exchange(movedPoint_, 0); moved != 0) {
    const Position place = settled(end);
    shape_.ShapeX[static_cast<std::size_t>(moved)] = place.x;
    shape_.ShapeY[static_cast<std::size_t>(moved)] = place.y;
    edit.outlineChanged = true;
    return edit;
  }
  const double dx = static_cast<double>(end.x) - press_.x, dy = static_cast<double>(end.y) - press_.y;
  if (dx * dx + dy * dy <= kHitRadius * kHitRadius)
    clickAt(end, Button == kLeftButton && (Shift & kCtrlKey) != 0, edit);
  else
    drag(end, edit);
  return edit;
}

void ShapeEditor::clickAt(Position at, bool fills, ShapeEdit& edit) {
  const int point = shape_.pointNear(at.x, at.y, kHitRadius);
  if (point == 0 && fills) edit.fill = PointF{at.x, at.y};
  if (point == 0) return;
  shape_.deletePoint(point);
  edit.outlineChanged = true;
}

/// The point under the mouse, else one where a new point would come to lie.
void ShapeEditor::drag(Position to, ShapeEdit& edit) {
  const Position place = settled(to);
  int target = shape_.pointNear(to.x, to.y, kHitRadius);
  if (target == 0) target = shape_.pointNear(place.x, place.y, kHitRadius);
  const int source = shape_.pointNear(press_.x, press_.y, kHitRadius);
  if (target == 0)
    appendPoint(source, place, edit);
  else if (source != 0 && source != target)
    toggleLine(source, target, edit);
}

void ShapeEditor::toggleLine(int from, int to, ShapeEdit& edit) {
  if (const int line = shape_.lineBetween(from, to); line != 0) {
    shape_.deleteLine(line);
  } else if (shape_.addLine(from, to) == 0) {
    edit.refusal = usedUp(kMostShapeLines, "lines");
    return;
  }
  edit.outlineChanged = true;
}

void ShapeEditor::appendPoint(int from, Position at, ShapeEdit& edit) {
  if (from != 0 && shape_.ShapeLineCount >= kMostShapeLines) {
    edit.refusal = usedUp(kMostShapeLines, "lines");
    return;
  }
  const int point = shape_.addPoint(at.x, at.y);
  if (point == 0) {
    edit.refusal = usedUp(kMostShapePoints, "points");
    return;
  }
  if (from != 0) shape_.addLine(from, point);
  edit.outlineChanged = true;
}

PointI ShapeEditor::pixel(const Surface& surface, float x, float y) const {
  const double factor = static_cast<double>(surface.width()) / kReferenceWidth;
  return {toInt32((x + shape_.surfaceLeft()) * factor), toInt32((y + shape_.surfaceTop()) * factor)};
}

PointF ShapeEditor::toUnits(const Surface& surface, int x, int y) const {
  const float factor = static_cast<float>(kReferenceWidth) / static_cast<float>(std::max(1, surface.width()));
  return {static_cast<float>(x) * factor - shape_.surfaceLeft(),
          static_cast<float>(y) * factor - shape_.surfaceTop()};
}

void ShapeEditor::drawAlignmentGrid(Surface& surface) const {
  const float width = shape_.surfaceWidth, height = shape_.surfaceHeight;
  const Pen pen{1, kAlignmentColour, false};
  for (int k = 1; k < divisions_; ++k) {
    const float x = width * static_cast<float>(k) / static_cast<float>(divisions_);
    const float y = height * static_cast<float>(k) / static_cast<float>(divisions_);
    surface.segment(pixel(surface, x, 0), pixel(surface, x, height), pen);
    surface.segment(pixel(surface, 0, y), pixel(surface, width, y), pen);
  }
}

void ShapeEditor::RedrawCustom(Surface& surface) const {
  const GridView view(0.8F, surface.width());
  if (alignmentGrid_) drawAlignmentGrid(surface);
  const auto at = [&](int point) {
    return pixel(surface, shape_.ShapeX[static_cast<std::size_t>(point)],
                 shape_.ShapeY[static_cast<std::size_t>(point)]);
  };
  for (int line = 1; line <= shape_.ShapeLineCount; ++line)
    if (shape_.lineIsLive(line))
      surface.segment(at(shape_.lineEnd(0, line)), at(shape_.lineEnd(1, line)),
                      {view.penWidth(2), kLineColour, false});
  for (int point = 1; point <= shape_.ShapePointCount; ++point)
    if (shape_.pointIsLive(point)) surface.dot(at(point), view.penWidth(7), kPointColour);
  if (rubberBand_)
    surface.segment(pixel(surface, press_.x, press_.y), pixel(surface, rubberEnd_.x, rubberEnd_.y),
                    {view.penWidth(1), kBandColour, false});
}

}  // namespace lorivan
