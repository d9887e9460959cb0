// The picture of a tube model in flat facets: depth order, light, painting from back to front.
#pragma once

#include <cstdint>
#include <vector>

#include "base/pixels.h"
#include "base/points.h"
#include "model3d/key_sort.h"
#include "model3d/painter.h"
#include "model3d/projection.h"
#include "model3d/shader.h"
#include "model3d/tube_model.h"

namespace lorivan {

/// Shows models and keeps its working memory from one picture to the next.
class Renderer {
 public:
  /// Draws the model into `target`, whatever its size; the picture is the same at every size, only sharper.
  /// At angles 0, 0, 0 the knot stands as its 2-D picture does. The height map gives each face a grey by its
  /// depth rank. `faceShare` makes the light see every face at this share of its size: for a model that
  /// stands in for one with smaller faces, which are darker.
  void render(const TubeModel& model, const LightSettings& light, const ViewState& view, const Lens& lens,
              const PictureLook& look, PixelBlock target, float faceShare = 1);

 private:
  void project(const TubeModel& model, const ViewState& view, const Lens& lens, PixelBlock target);
  void sortByDepth(const TubeModel& model);
  bool facing(const QuadCorners& corners) const;
  void lightQuads(const TubeModel& model, const LightSettings& light, const PictureLook& look,
                  float faceShare);
  void paint(PixelBlock target, const PictureLook& look);

  QuadIndex quads_;
  std::vector<float> depths_;  // by vertex, greater is nearer
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
