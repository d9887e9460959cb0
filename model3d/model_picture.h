// The picture of a tube model by the renderer that its look asks for.
#pragma once

#include "model3d/renderer.h"
#include "model3d/smooth_renderer.h"

namespace lorivan {

/// Keeps both renderers' memory from one picture to the next. The height map is made by the facets.
class ModelPicture {
 public:
  void render(const TubeModel& model, const LightSettings& light, const ViewState& view, const Lens& lens,
              const PictureLook& look, PixelBlock target, float faceShare = 1) {
    if (look.smooth && !look.heightMap)
      smooth_.render(model, light, view, lens, look, target);
    else
      facets_.render(model, light, view, lens, look, target, faceShare);
  }

 private:
  Renderer facets_;
  SmoothRenderer smooth_;
};

}  // namespace lorivan
