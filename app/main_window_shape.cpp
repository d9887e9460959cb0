// Shapes of one's own: the sheet and its mouse, and the commands of the Shape menu that change the sheet.
#include <vector>

#include "app/main_window.h"
#include "base/numbers.h"
#include "custom/planar_grid.h"

namespace lorivan {
namespace {

constexpr ControlId kSheet = controlId("picShape");
constexpr Colour kPaper = 0xFFFFFF;
constexpr Colour kFrameColour = makeColour(225, 225, 225);
constexpr std::string_view kHint =
    "Drag to set a point, drag from a point to draw a line; the right button moves, a click deletes a point";

std::string counted(int n, const std::string& what) {
  return std::to_string(n) + ' ' + what + (n == 1 ? "" : "s");
}

bool hasLines(const CustomShape& shape) {
  for (int line = 1; line <= shape.ShapeLineCount; ++line)
    if (shape.lineIsLive(line)) return true;
  return false;
}

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

bool MainWindow::shapeShown() const { return window_->visible(kSheet); }

void MainWindow::ShapeVisible(bool on) {
  if (!on) {
    showPicture(Shown::grid);
    paintPicture();
    return;
  }
  if (solidShown()) {
    enable(controlId("cmd2DView"), false);
    enable(controlId("cmd3DView"), true);
  }
  showPicture(Shown::shape);
  RedrawCustom();
}

void MainWindow::RedrawCustom() {
  Surface& surface = window_->surface(kSheet);
  surface.clear(kPaper);
  desk_.picture.paint(surface);
  drawFrame(surface, desk_.editor.shape());
  desk_.editor.RedrawCustom(surface);
  surface.refresh();
}

void MainWindow::ToggleGrid() {
  if (shapeShown() && desk_.editor.alignmentGrid()) RedrawCustom();
}

void MainWindow::vtGridSize_Changed() {
  desk_.editor.setDivisions(knotFields().whole(Param::GridSize) + 1);
  ToggleGrid();
}

/// The knot or grid behind the sheet changes; the sheet, when it is shown, stays in front.
void MainWindow::behindShape(const std::function<void()>& change) {
  const bool inFront = shapeShown(), ready = window_->enabled(controlId("cmd2D"));
  change();
  if (!inFront) return;
  enable(controlId("cmd2D"), ready);
  ShapeVisible(true);
}

/// What a new grid means while "(Custom)" is chosen: its lines stay, the stretch may be another one.
void MainWindow::customGridAsked() {
  if (knot_.graph.NoGrid) {
    paintGrid();  // nothing but the background, for whoever hides the sheet
    ShapeVisible(true);
  } else {
    behindShape([this] { styleChanged(); });
  }
  status(hasLines(desk_.editor.shape())
             ? "A shape of your own gets its grid from the Shape menu: AutoGrid or New Grid"
             : shapeSummary());
}

void MainWindow::chooseCustom() {
  window_->select(controlId("lstType"), static_cast<int>(Shape::Custom));
  showOffsetField();
}

void MainWindow::sortOutShapeMenu() {
  const bool lines = hasLines(desk_.editor.shape());
  enableCommand(commandId("mnuShapeMakeGrid"), lines);
  enableCommand(commandId("mnuShapeAutoGrid"), lines);
  enableCommand(commandId("mnuShapeClear"), desk_.picture.shown());
  enableCommand(commandId("mnuShapeUndo"), desk_.undoKept);
}

void MainWindow::keepForUndo() {
  desk_.editor.SaveUndo();
  desk_.undoKept = true;
}

std::string MainWindow::shapeSummary() const {
  const CustomShape& shape = desk_.editor.shape();
  std::vector<int> linesAt(static_cast<std::size_t>(shape.ShapePointCount) + 1, 0);
  int points = 0, lines = 0, looseEnds = 0;
  for (int line = 1; line <= shape.ShapeLineCount; ++line) {
    if (!shape.lineIsLive(line)) continue;
    ++lines;
    for (const int end : {0, 1}) ++linesAt[static_cast<std::size_t>(shape.lineEnd(end, line))];
  }
  for (int point = 1; point <= shape.ShapePointCount; ++point) {
    points += shape.pointIsLive(point) ? 1 : 0;
    looseEnds += linesAt[static_cast<std::size_t>(point)] == 1 ? 1 : 0;
  }
  if (points == 0) return std::string(kHint);
  const std::string counts = "Shape: " + counted(points, "point") + ", " + counted(lines, "line");
  if (lines == 0) return counts + ": drag from a point to draw a line";
  if (looseEnds > 0) return counts + ", " + counted(looseEnds, "loose end");
  return lines > 2 ? counts + ", closed: AutoGrid in the Shape menu fills it" : counts;
}

void MainWindow::picShape_Mouse(const MouseEvent& event) {
  ShapeEditor& editor = desk_.editor;
  const PointF at = editor.toUnits(window_->surface(kSheet), event.x, event.y);
  switch (event.action) {
    case MouseAction::press:
      editor.picShape_MouseDown(event.button, shiftBits(event), at.x, at.y);
      break;
    case MouseAction::move:
      if (editor.picShape_MouseMove(event.button, shiftBits(event), at.x, at.y)) RedrawCustom();
      if (event.button == 0) pointAt(at);
      break;
    case MouseAction::release:
      shapeEdited(editor.picShape_MouseUp(event.button, shiftBits(event), at.x, at.y));
      break;
    case MouseAction::leave:
      break;
  }
}

/// The pointer tells that a point can be picked.
void MainWindow::pointAt(PointF at) {
  const bool onPoint = desk_.editor.shape().pointNear(at.x, at.y, kHitRadius) != 0;
  const PointerShape pointer = onPoint ? PointerShape::hand : PointerShape::arrow;
  if (pointer != desk_.pointer) window_->setPointer(kSheet, pointer);
  desk_.pointer = pointer;
}

void MainWindow::shapeEdited(const ShapeEdit& edit) {
  desk_.undoKept = true;
  if (edit.outlineChanged) enable(controlId("cmd2D"), false);
  sortOutShapeMenu();
  RedrawCustom();
  if (!edit.refusal.empty())
    status(edit.refusal);
  else
    status(edit.outlineChanged ? shapeSummary() : std::string(kHint));
}

/// Shows a shape that did not come from the mouse. Its grid is still to be made.
void MainWindow::showNewShape(CustomShape shape) {
  desk_.editor.replaceShape(std::move(shape));
  chooseCustom();
  sortOutShapeMenu();
  ShapeVisible(true);
}

void MainWindow::mnuShapeBlank_Click() {
  keepForUndo();
  desk_.picture.clear();
  showNewShape({});
  enable(controlId("cmd2D"), false);
  status(std::string(kHint));
}

void MainWindow::mnuShapeView_Click() {
  ShapeVisible(!shapeShown());
  status(shapeShown() ? shapeSummary()
                      : "The shape is hidden, not lost: View in the Shape menu shows it again");
}

void MainWindow::mnuShapeMakeStandard_Click() {
  if (knot_.graph.NoGrid) {
    status("There is no grid yet to make a shape from");
    return;
  }
  const KnotFields fields = knotFields();
  auto made = makeShapeFromGrid(knot_.graph,
                                viewOf(knot_, fields, knotStyle(fields, colours_), kReferenceWidth, false));
  if (!made) {
    status(made.error().message);
    return;
  }
  keepForUndo();
  showNewShape(std::move(*made));
  status(shapeSummary());
}

void MainWindow::mnuShapeClear_Click() {
  desk_.picture.clear();
  sortOutShapeMenu();
  RedrawCustom();
  status("The picture behind the shape was taken away");
}

void MainWindow::mnuShapeGridOnOff_Click() {
  const bool on = !desk_.editor.alignmentGrid();
  desk_.editor.setAlignmentGrid(on);
  window_->setCommandChecked(commandId("mnuShapeGridOnOff"), on);
  if (shapeShown()) RedrawCustom();
  status(on ? "Alignment grid of " + field(Param::GridSize).text.Value() + " lines each way"
            : "Alignment grid off");
}

void MainWindow::mnuShapeSnap_Click() {
  const bool on = !desk_.editor.snap();
  desk_.editor.setSnap(on);
  window_->setCommandChecked(commandId("mnuShapeSnap"), on);
  status(on ? "Points snap to the alignment grid" : "Points stay where they are put");
}

void MainWindow::mnuShapeUndo_Click() {
  desk_.editor.undo();
  enable(controlId("cmd2D"), false);
  sortOutShapeMenu();
  ShapeVisible(true);
  status(shapeSummary());
}

}  // namespace lorivan
