// One strand in the 3-D picture: which one lies under a place, and its mark.
#pragma once

#include "model3d/model_picture.h"

namespace lorivan {

/// The slot of the strand that can be seen at a place of a picture of this size, in pixels; 0: none.
int strandAt(const TubeModel& model, const ViewState& view, const Lens& lens, int width, int height, double x,
             double y);

/// Draws an outline, bright within dark, round what can be seen of strands.
class StrandMark {
 public:
  /// `look` and the others as the picture in `target` was rendered with.
  void draw(const TubeModel& model, int slot, const ViewState& view, const Lens& lens, PictureLook look,
            PixelBlock target);

 private:
  bool inside(int x, int y) const;
  void findEdge();
  void paintEdge(PixelBlock target, int radius, std::uint32_t argb) const;

  ModelPicture picture_;
  std::vector<std::uint32_t> mask_;  // white where the strand is seen
  std::vector<PointI> edge_;
  int width_ = 0, height_ = 0;
};

}  // namespace lorivan
