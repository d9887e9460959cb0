// Drawing a custom shape with the mouse.
//
// A left drag from nothing to nothing makes a point, one from a point makes a point and a line to it, one
// between two points makes their line or takes it away; a click on a point deletes it; a right drag moves it.
// With a symmetry all images of the points follow. A left click with Ctrl between points asks for the region
// there.
#pragma once

#include <optional>
#include <string>

#include "custom/custom_shape.h"
#include "custom/sheet_symmetry.h"
#include "platform/mouse.h"
#include "platform/surface.h"

namespace lorivan {

inline constexpr float kHitRadius = 7;  // units: pixels of the 500-pixel picture

/// Where edits may put points: the margins at the right and bottom are wider than those at the left and top.
inline constexpr float kShapeNearMargin = 45, kShapeFarMargin = 60;

/// What the margins leave of a shape's surface, in its units; empty on surfaces too small for both.
struct ShapeFrame {
  float left = 0, top = 0, right = 0, bottom = 0;
};
ShapeFrame frameOf(const CustomShape& shape);

/// What a released button did.
struct ShapeEdit {
  bool outlineChanged = false;  // lines or points changed: the knot, if any, is out of date
  bool moved = false;           // a point; images that it met became one with it
  std::string refusal;          // why nothing was done, for the status line; usually empty
  std::optional<PointF> fill;   // a click with Ctrl where no point is: what lies round it is to be filled
};

class ShapeEditor {
 public:
  /// Bits of the mouse calls' Shift argument.
  enum ShiftBits { kShiftKey = 1, kCtrlKey = 2, kAltKey = 4 };

  const CustomShape& shape() const { return shape_; }
  /// Takes over another shape: loaded, made from a grid, or empty. SaveUndo before it lets the user come back
  /// to the old shape, SaveUndo after it makes the new one the shape that undo returns to.
  void replaceShape(CustomShape shape);

  void setSnap(bool on) { snap_ = on; }
  bool snap() const { return snap_; }
  void setAlignmentGrid(bool on) { alignmentGrid_ = on; }
  bool alignmentGrid() const { return alignmentGrid_; }
  /// Divisions of the surface in each direction, for snapping and the alignment grid: one more than there are
  /// lines. Held at 1 or more.
  void setDivisions(int divisions) { divisions_ = divisions < 1 ? 1 : divisions; }

  /// About the middle of the sheet.
  void setSymmetry(const Symmetry& symmetry) { chosenSymmetry_ = symmetry; }
  const Symmetry& chosenSymmetry() const { return chosenSymmetry_; }

  // Positions are shape units, see toUnits. A release without a press does nothing.
  void picShape_MouseDown(int Button, int Shift, float X, float Y);
  /// True when the rubber band changed and is to be shown.
  bool picShape_MouseMove(int Button, int Shift, float X, float Y);
  ShapeEdit picShape_MouseUp(int Button, int Shift, float X, float Y);

  /// Keeps the shape as the one that undo() returns to.
  void SaveUndo() { undo_ = shape_; }
  /// Back to the shape before the last edit. A second call changes nothing more.
  void undo();

  /// Draws lines, points, the alignment grid when it is on, and the rubber band, over what the surface holds.
  /// The surface shows the whole picture.
  void RedrawCustom(Surface& surface) const;

  /// The position in shape units of a pixel of a surface that shows the whole picture.
  PointF toUnits(const Surface& surface, int x, int y) const;

 private:
  struct Position {
    float x = 0, y = 0;
  };

  Position constrained(int Shift, Position end) const;
  Position settled(Position end) const;
  SheetSymmetry symmetry() const;
  Spot place(int point) const;
  void put(int point, Spot at);
  int imageOf(int point, const Isometry& map) const;
  bool imageAt(Spot at, int& point);
  void clickAt(Position at, bool fills, ShapeEdit& edit);
  void move(int point, Position to);
  void drag(Position mouse, Position to, ShapeEdit& edit);
  bool toggleLine(int from, int to);
  bool appendPoint(int from, Position at);
  void refuse(ShapeEdit& edit);
  void drawAxes(Surface& surface) const;
  void drawRubberBand(Surface& surface, const Pen& pen) const;
  PointI pixel(const Surface& surface, float x, float y) const;
  void drawAlignmentGrid(Surface& surface) const;

  CustomShape shape_, undo_;
  bool snap_ = false, alignmentGrid_ = false;
  int divisions_ = 21;
  Symmetry chosenSymmetry_;

  bool pressed_ = false;
  Position press_;
  int movedPoint_ = 0;  // 0: no point is being moved
  bool rubberBand_ = false;
  Position rubberEnd_;
};

}  // namespace lorivan
