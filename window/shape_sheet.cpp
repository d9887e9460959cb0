#include "window/shape_sheet.h"

#include <utility>

#include "base/numbers.h"
#include "custom/outline.h"
#include "window/form_table.h"

namespace lorivan {
namespace {

constexpr ControlId kSheet = controlId("picShape");
constexpr Colour kPaper = 0xFFFFFF;
constexpr Colour kFrameColour = makeColour(150, 150, 150), kFrameOverPicture = makeColour(60, 90, 160);

int shiftBits(const MouseEvent& event) {
  return (event.shift ? ShapeEditor::kShiftKey : 0) | (event.ctrl ? ShapeEditor::kCtrlKey : 0) |
         (event.alt ? ShapeEditor::kAltKey : 0);
}

/// The frame in which points may lie, in pixels.
PixelBox frameBox(const Surface& surface, const CustomShape& shape) {
  const double factor = static_cast<double>(surface.width()) / kReferenceWidth;
  const ShapeFrame frame = frameOf(shape);
  const auto x = [&](float units) { return toInt32((units + shape.surfaceLeft()) * factor); };
  const auto y = [&](float units) { return toInt32((units + shape.surfaceTop()) * factor); };
  return {x(frame.left), y(frame.top), x(frame.right), y(frame.bottom)};
}

void drawFrame(Surface& surface, const PixelBox& box, Colour colour) {
  if (box.left >= box.right || box.top >= box.bottom) return;
  const PointI corners[] = {
      {box.left, box.top}, {box.right, box.top}, {box.right, box.bottom}, {box.left, box.bottom}};
  surface.polygonOutline(corners, {1, colour, true});
}

}  // namespace

void ShapeSheet::take(const CustomShape& shape) {
  if (!(editor_.shape() == shape)) editor_.replaceShape(shape);
}

void ShapeSheet::RedrawCustom() {
  Surface& surface = window_.surface(kSheet);
  surface.clear(kPaper);
  const PixelBox frame = frameBox(surface, editor_.shape());
  picture_.paint(surface, frame);
  drawFrame(surface, frame, picture_.shown() ? kFrameOverPicture : kFrameColour);
  editor_.RedrawCustom(surface);
  surface.refresh();
}

std::optional<ShapeEdit> ShapeSheet::mouse(const MouseEvent& event) {
  if (event.button == 3) return std::nullopt;  // the middle one draws nothing
  const PointF at = editor_.toUnits(window_.surface(kSheet), event.x, event.y);
  switch (event.action) {
    case MouseAction::press:
      editor_.picShape_MouseDown(event.button, shiftBits(event), at.x, at.y);
      break;
    case MouseAction::move:
      if (editor_.picShape_MouseMove(event.button, shiftBits(event), at.x, at.y)) RedrawCustom();
      if (event.button == 0) pointAt(at, event.ctrl);
      break;
    case MouseAction::release:
      undoKept_ = true;
      return editor_.picShape_MouseUp(event.button, shiftBits(event), at.x, at.y);
    case MouseAction::leave:
    case MouseAction::wheel:
    case MouseAction::doubleClick:
      break;
  }
  return std::nullopt;
}

void ShapeSheet::SaveUndo() {
  editor_.SaveUndo();
  undoKept_ = true;
}

/// The pointer tells that a point can be picked, or the region round the place filled.
void ShapeSheet::pointAt(PointF at, bool fills) {
  const bool taken = editor_.shape().pointNear(at.x, at.y, kHitRadius) != 0 || (fills && insideRegion(at));
  const PointerShape pointer = taken ? PointerShape::hand : PointerShape::arrow;
  if (pointer != std::exchange(pointer_, pointer)) window_.setPointer(kSheet, pointer);
}

bool ShapeSheet::insideRegion(PointF at) const {
  const ShapeMapping mapping(editor_.shape(), GridView());
  return static_cast<bool>(Outline::of(editor_.shape(), mapping, Spot{at.x, at.y}));
}

bool hasLines(const CustomShape& shape) {
  for (int line = 1; line <= shape.ShapeLineCount; ++line)
    if (shape.lineIsLive(line)) return true;
  return false;
}

}  // namespace lorivan
