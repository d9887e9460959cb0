#include "custom/shape_editor.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/numbers.h"
#include "custom/smooth_lines.h"

namespace lorivan {
namespace {

constexpr Colour kLineColour = makeColour(30, 60, 150);
constexpr Colour kPointColour = makeColour(0, 0, 0);
constexpr Colour kBandColour = makeColour(210, 60, 30);
constexpr Colour kAxisColour = makeColour(235, 150, 90);
constexpr Colour kAlignmentColour = makeColour(200, 210, 225);

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

/// Where a point may be put: snapped, within the margins, with all its images; on an axis where it would come
/// to lie closer to its own image than can be told apart.
ShapeEditor::Position ShapeEditor::settled(Position end) const {
  if (snap_)
    end = {snapped(end.x, shape_.surfaceWidth, divisions_), snapped(end.y, shape_.surfaceHeight, divisions_)};
  end = {clamped(end.x, shape_.surfaceWidth), clamped(end.y, shape_.surfaceHeight)};
  const SheetSymmetry images = symmetry();
  if (images.isNone()) return end;
  const Spot low{kShapeNearMargin, kShapeNearMargin};
  const Spot high{shape_.surfaceWidth - kShapeFarMargin, shape_.surfaceHeight - kShapeFarMargin};
  const Spot at = images.ontoAxis(images.within({end.x, end.y}, low, high), kHitRadius);
  return {static_cast<float>(at.x), static_cast<float>(at.y)};
}

SheetSymmetry ShapeEditor::symmetry() const {
  return {chosenSymmetry_, {shape_.surfaceWidth / 2.0, shape_.surfaceHeight / 2.0}};
}

Spot ShapeEditor::place(int point) const { return {shape_.ShapeX[point], shape_.ShapeY[point]}; }

void ShapeEditor::put(int point, Spot at) {
  shape_.ShapeX[point] = static_cast<float>(at.x);
  shape_.ShapeY[point] = static_cast<float>(at.y);
}

ShapeEdit ShapeEditor::picShape_MouseUp(int Button, int Shift, float X, float Y) {
  rubberBand_ = false;
  if (!std::exchange(pressed_, false) || !std::isfinite(X) || !std::isfinite(Y)) return {};
  SaveUndo();
  // Only what is placed or moved goes level, snaps and stays within the margins: whether this is a click, and
  // on which point, is decided where the mouse was.
  const Position mouse{X, Y}, end = constrained(Shift, mouse);
  ShapeEdit edit;
  if (const int moved = std::exchange(movedPoint_, 0); moved != 0) {
    move(moved, end);
    edit.outlineChanged = edit.moved = true;
    return edit;
  }
  const double dx = static_cast<double>(X) - press_.x, dy = static_cast<double>(Y) - press_.y;
  if (dx * dx + dy * dy <= kHitRadius * kHitRadius)
    clickAt(mouse, Button == kLeftButton && (Shift & kCtrlKey) != 0, edit);
  else
    drag(mouse, end, edit);
  return edit;
}

/// The point that is the image of another by a map, the point itself by the identity; 0 when there is none.
int ShapeEditor::imageOf(int point, const Isometry& map) const {
  const Spot from = place(point), to = map(from);
  if (distance(from, to) == 0) return point;
  return shape_.nearestPoint(static_cast<float>(to.x), static_cast<float>(to.y), kHitRadius);
}

/// The point at a place, a new one when there is none near; false when no more points can be held.
bool ShapeEditor::imageAt(Spot at, int& point) {
  const auto x = static_cast<float>(at.x), y = static_cast<float>(at.y);
  point = shape_.nearestPoint(x, y, kHitRadius);
  if (point == 0) point = shape_.addPoint(x, y);
  return point != 0;
}

void ShapeEditor::clickAt(Position at, bool fills, ShapeEdit& edit) {
  const int point = shape_.pointNear(at.x, at.y, kHitRadius);
  if (point == 0 && fills) edit.fill = PointF{at.x, at.y};
  if (point == 0) return;
  std::vector<int> images;
  const SheetSymmetry group = symmetry();
  for (const Isometry& map : group.maps()) images.push_back(imageOf(point, map));
  for (const int image : images)
    if (image != 0 && shape_.pointIsLive(image)) shape_.deletePoint(image);
  edit.outlineChanged = true;
}

/// The images follow. With a symmetry a point on an axis stays on it, and points that meet become one.
void ShapeEditor::move(int point, Position to) {
  const SheetSymmetry group = symmetry();
  const Position end = settled(to);
  const Spot goal = group.heldLike({end.x, end.y}, place(point));
  std::vector<int> images;
  for (const Isometry& map : group.maps()) images.push_back(imageOf(point, map));
  for (std::size_t g = images.size(); g-- > 0;)
    if (images[g] != 0) put(images[g], group.maps()[g](goal));
  if (group.isNone()) return;
  constexpr double kMet = 0.01;
  for (const int image : images)
    for (int other = 1; image != 0 && other <= shape_.ShapePointCount; ++other)
      if (other != image && shape_.pointIsLive(image) && shape_.pointIsLive(other) &&
          distance(place(image), place(other)) < kMet)
        shape_.joinPoints(image, other);
}

/// The point under the mouse, else one where the line would end or a new point would come to lie.
void ShapeEditor::drag(Position mouse, Position to, ShapeEdit& edit) {
  const Position end = settled(to);
  int target = 0;
  for (const Position& at : {mouse, to, end})
    if (target == 0) target = shape_.pointNear(at.x, at.y, kHitRadius);
  const int source = shape_.pointNear(press_.x, press_.y, kHitRadius);
  if (target != 0 && (source == 0 || source == target)) return;
  const bool done = target == 0 ? appendPoint(source, end) : toggleLine(source, target);
  if (done)
    edit.outlineChanged = true;
  else
    refuse(edit);
}

/// Nothing of an edit stays that the tables have no room for.
void ShapeEditor::refuse(ShapeEdit& edit) {
  edit.refusal = shape_.ShapeLineCount >= kMostShapeLines
                     ? tr("A shape holds at most {1} lines, deleted ones included: New Grid, then Make from "
                          "Standard drops those",
                          kMostShapeLines)
                     : tr("A shape holds at most {1} points, deleted ones included: New Grid, then Make from "
                          "Standard drops those",
                          kMostShapePoints);
  shape_ = undo_;
}

/// All images of the line go or come with it; false when there is no room for them.
bool ShapeEditor::toggleLine(int from, int to) {
  const bool goes = shape_.lineBetween(from, to) != 0;
  const SheetSymmetry group = symmetry();
  for (const Isometry& map : group.maps()) {
    int first = imageOf(from, map), second = imageOf(to, map);
    if (!goes && first == 0 && !imageAt(map(place(from)), first)) return false;
    if (!goes && second == 0 && !imageAt(map(place(to)), second)) return false;
    if (first == second || first == 0 || second == 0) continue;
    const int line = shape_.lineBetween(first, second);
    if (goes && line != 0) shape_.deleteLine(line);
    if (!goes && line == 0 && shape_.addLine(first, second) == 0) return false;
  }
  return true;
}

/// A point, a line to it from another, and their images; false when there is no room for them.
bool ShapeEditor::appendPoint(int from, Position at) {
  if (from != 0 && shape_.ShapeLineCount >= kMostShapeLines) return false;
  const int point = shape_.addPoint(at.x, at.y);
  if (point == 0) return false;
  if (from != 0) return toggleLine(from, point);
  const SheetSymmetry group = symmetry();
  for (const Isometry& map : group.maps())
    if (int image = imageOf(point, map); image == 0 && !imageAt(map(place(point)), image)) return false;
  return true;
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
  drawAxes(surface);
  const auto at = [&](int point) { return pixel(surface, shape_.ShapeX[point], shape_.ShapeY[point]); };
  const auto atSpot = [&](Spot spot) {
    return pixel(surface, static_cast<float>(spot.x), static_cast<float>(spot.y));
  };
  const ShapeLines drawn(shape_);
  for (const auto& [first, second] : drawn.lines)
    surface.segment(atSpot(drawn.spots[first]), atSpot(drawn.spots[second]),
                    {view.penWidth(2), kLineColour, false});
  for (int point = 1; point <= shape_.ShapePointCount; ++point)
    if (shape_.pointIsLive(point)) surface.dot(at(point), view.penWidth(7), kPointColour);
  if (rubberBand_) drawRubberBand(surface, {view.penWidth(1), kBandColour, false});
}

void ShapeEditor::drawRubberBand(Surface& surface, const Pen& pen) const {
  const SheetSymmetry group = symmetry();
  for (const Isometry& map : group.maps()) {
    const Spot from = map(Spot{press_.x, press_.y}), to = map(Spot{rubberEnd_.x, rubberEnd_.y});
    surface.segment(pixel(surface, static_cast<float>(from.x), static_cast<float>(from.y)),
                    pixel(surface, static_cast<float>(to.x), static_cast<float>(to.y)), pen);
  }
}

/// From the middle to beyond the sheet's border.
void ShapeEditor::drawAxes(Surface& surface) const {
  const float x = shape_.surfaceWidth / 2, y = shape_.surfaceHeight / 2;
  const double far = shape_.surfaceWidth + static_cast<double>(shape_.surfaceHeight);
  for (const Spot ray : symmetry().rays())
    surface.segment(pixel(surface, x, y),
                    pixel(surface, static_cast<float>(x + far * ray.x), static_cast<float>(y + far * ray.y)),
                    {1, kAxisColour, true});
}

}  // namespace lorivan
