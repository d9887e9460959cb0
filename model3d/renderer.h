// The shaded picture of a tube model: projection, depth order, light, painting from back to front.
#pragma once

#include <cstdint>
#include <vector>

#include "model3d/key_sort.h"
#include "model3d/m3ops.h"
#include "model3d/painter.h"
#include "model3d/shader.h"
#include "model3d/tube_model.h"
#include "platform/surface.h"

namespace lorivan {

/// Shows models and keeps its working memory from one picture to the next.
class Renderer {
 public:
  /// Draws the model into `target`, whatever its size; the picture is the same at every size, only sharper.
  /// At angles 0, 0, 0 the knot stands as its 2-D picture does. Where the scale of the model would let the
  /// knot pass an edge, the scale is lowered just enough. With `heightMap` each face gets a grey by its depth
  /// rank instead of its lit colour. A transparent background leaves straight alpha in the target.
  void render(const TubeModel& model, const LightSettings& light, const ViewState& view, Colour background,
              bool heightMap, PixelBlock target, bool transparent = false);

 private:
  struct ScreenPoint {
    float x, y, z;  // model units about the picture's centre, x to the right, y down, z towards the eye
    bool seen;      // not behind the eye nor close before it
  };

  void project(const TubeModel& model, const ViewState& view);
  double pixelsPerUnit(float minimumCoordinate, PixelBlock target) const;
  void placeOnGrid(float minimumCoordinate, PixelBlock target);
  void sortByDepth(const TubeModel& model);
  bool facing(const QuadCorners& corners) const;
  void lightQuads(const TubeModel& model, const LightSettings& light);
  void paint(PixelBlock target, Colour background, bool heightMap, bool transparent);

  QuadIndex quads_;
  std::vector<ScreenPoint> screen_;
  std::vector<PointI> grid_;
  PointI least_, most_;
  std::vector<float> keys_;
  std::vector<std::int32_t> order_;
  std::vector<std::uint8_t> marks_;  // by quad
  std::vector<std::uint32_t> argb_;  // by quad
  KeySorter sorter_;
  Painter painter_;
};

}  // namespace lorivan
