// The sheet that custom shapes are drawn on.
#pragma once

#include "custom/shape_editor.h"
#include "platform/window.h"
#include "window/trace_picture.h"

namespace lorivan {

class ShapeSheet {
 public:
  explicit ShapeSheet(Window& window) : window_(window) {}

  /// Takes over the shape of the document where it is another one than is on the sheet.
  void take(const CustomShape& shape);
  const CustomShape& shape() const { return editor_.shape(); }

  /// Paints the sheet: picture to trace, alignment grid, lines and points.
  void RedrawCustom();

  /// What the mouse does; an edit when one was made.
  std::optional<ShapeEdit> mouse(const MouseEvent& event);

  /// Keeps the shape as the one that undo() returns to.
  void SaveUndo();
  bool undoKept() const { return undoKept_; }
  /// The shape before the last edit.
  void undo() { editor_.undo(); }

  TracePicture& picture() { return picture_; }
  const TracePicture& picture() const { return picture_; }
  bool alignmentGrid() const { return editor_.alignmentGrid(); }
  void setAlignmentGrid(bool on) { editor_.setAlignmentGrid(on); }
  bool snap() const { return editor_.snap(); }
  void setSnap(bool on) { editor_.setSnap(on); }
  /// That edits are made in, about the middle of the sheet.
  const Symmetry& symmetry() const { return editor_.chosenSymmetry(); }
  void setSymmetry(const Symmetry& symmetry) { editor_.setSymmetry(symmetry); }
  /// Lines of the alignment grid each way.
  void setLines(int lines) { editor_.setDivisions(lines + 1); }

 private:
  void pointAt(PointF at, bool fills);
  bool insideRegion(PointF at) const;

  Window& window_;
  ShapeEditor editor_;
  TracePicture picture_;
  bool undoKept_ = false;
  PointerShape pointer_ = PointerShape::arrow;
};

/// Whether the shape has a line that is there.
bool hasLines(const CustomShape& shape);

}  // namespace lorivan
