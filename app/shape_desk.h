// What the main window keeps for drawing shapes of one's own.
#pragma once

#include "app/trace_picture.h"
#include "custom/shape_editor.h"

namespace lorivan {

struct ShapeDesk {
  ShapeEditor editor;
  TracePicture picture;
  bool undoKept = false;  // there is something that Undo would return to
  PointerShape pointer = PointerShape::arrow;
};

}  // namespace lorivan
