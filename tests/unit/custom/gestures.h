// What the mouse does on the sheet.
#pragma once

#include "custom/shape_editor.h"
#include "shapes.h"

namespace lorivan {

using Editor = ShapeEditor;

inline ShapeEdit gesture(Editor& editor, int button, int shift, Spot from, Spot to) {
  const auto x = static_cast<float>(to.x), y = static_cast<float>(to.y);
  editor.picShape_MouseDown(button, shift, static_cast<float>(from.x), static_cast<float>(from.y));
  editor.picShape_MouseMove(button, shift, x, y);
  return editor.picShape_MouseUp(button, shift, x, y);
}

inline ShapeEdit drag(Editor& editor, Spot from, Spot to, int button = kLeftButton) {
  return gesture(editor, button, 0, from, to);
}

}  // namespace lorivan
