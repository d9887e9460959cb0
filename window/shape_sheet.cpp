#include "window/shape_sheet.h"

#include <utility>

#include "base/numbers.h"
#include "window/form_table.h"

namespace lorivan {
namespace {

constexpr ControlId kSheet = controlId("picShape");
constexpr Colour kPaper = 0xFFFFFF;
constexpr Colour kFrameColour = makeColour(225, 225, 225);

int shiftBits(const MouseEvent& event) {
  return (event.shift ? ShapeEditor::kShiftKey : 0) | (event.ctrl ? ShapeEditor::kCtrlKey : 0) |
         (event.alt ? ShapeEditor::kAltKey : 0);
}

/// The border that points do not get into.
void drawFrame(Surface& surface, const CustomShape& shape) {
  const double factor = static_cast<double>(surface.width()) / kReferenceWidth;
  const auto x = [&](float units) { return toInt32((units + shape.surfaceLeft()) * factor); };
  const auto y = [&](float units) { return toInt32((units + shape.surfaceTop()) * factor); };
  const std::int32_t left = x(kShapeNearMargin), right = x(shape.surfaceWidth - kShapeFarMargin);
  const std::int32_t top = y(kShapeNearMargin), bottom = y(shape.surfaceHeight - kShapeFarMargin);
  if (left >= right || top >= bottom) return;
  const PointI corners[] = {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
  surface.polygonOutline(corners, {1, kFrameColour, true});
}

}  // namespace

void ShapeSheet::take(const CustomShape& shape) {
  if (!(editor_.shape() == shape)) editor_.replaceShape(shape);
}

void ShapeSheet::RedrawCustom() {
  Surface& surface = window_.surface(kSheet);
  surface.clear(kPaper);
  picture_.paint(surface);
  drawFrame(surface, editor_.shape());
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
      if (event.button == 0) pointAt(at);
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

/// The pointer tells that a point can be picked.
void ShapeSheet::pointAt(PointF at) {
  const bool onPoint = editor_.shape().pointNear(at.x, at.y, kHitRadius) != 0;
  const PointerShape pointer = onPoint ? PointerShape::hand : PointerShape::arrow;
  if (pointer != std::exchange(pointer_, pointer)) window_.setPointer(kSheet, pointer);
}

bool hasLines(const CustomShape& shape) {
  for (int line = 1; line <= shape.ShapeLineCount; ++line)
    if (shape.lineIsLive(line)) return true;
  return false;
}

}  // namespace lorivan
