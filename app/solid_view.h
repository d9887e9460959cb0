// What the main window keeps for its 3-D view.
#pragma once

#include <memory>

#include "app/knot_model.h"
#include "model3d/renderer.h"
#include "model3d/rotator.h"
#include "platform/surface.h"

namespace lorivan {

struct SolidView {
  KnotModel model;
  Renderer renderer;  // keeps its memory from one picture to the next
  ViewState angles;
  DragState drag;
  Colour background = 0xFFFFFF;     // as of the last build or key
  bool heightMap = false;           // as of the last build
  std::unique_ptr<Surface> picBig;  // made when it is asked for
};

}  // namespace lorivan
