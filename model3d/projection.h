// From model units to the picture: turning, perspective, scale. Both renderers use it.
#pragma once

#include "base/points.h"
#include "model3d/m3ops.h"
#include "model3d/tube_model.h"

namespace lorivan {

/// What the user looks at closer: a magnification, and how far the picture is moved, in picture widths.
struct Lens {
  float zoom = 1;
  PointF pan;
  bool operator==(const Lens& other) const {
    return zoom == other.zoom && pan.x == other.pan.x && pan.y == other.pan.y;
  }
};
inline constexpr float kLeastZoom = 0.1F, kMostZoom = 50;

/// How a picture of a model is made, apart from the model and the view.
struct PictureLook {
  Colour background = 0xFFFFFF;
  bool smooth = true;        // smooth shading, else flat facets
  bool heightMap = false;    // greys by depth instead of lit colours
  bool transparent = false;  // straight alpha instead of the background
  bool draft = false;        // fewer samples, for a picture that is shown for a moment only
  int alone = 0;             // slot of a strand that is white among black ones; 0: all have their colours
};

/// How much of red, green and blue a strand gives back in a picture of this look.
inline std::array<float, 3> factorsIn(const PictureLook& look, const TubeStrand& strand) {
  constexpr float kBlinding = 1000;  // in any light
  if (look.alone == 0) return strand.factors;
  const float all = strand.slot == look.alone ? kBlinding : 0;
  return {all, all, all};
}

/// A place about the picture's centre in model units, x to the right, y down. `z` is the distance towards the
/// eye; `nearness` falls with the distance from the eye, and is linear over the picture as z is not.
struct Shown {
  float x = 0, y = 0, z = 0, nearness = 0;
  bool seen = false;  // not behind the eye nor close before it
};

/// The model's x points to the left of the 2-D picture and its y points down. The picture's own y points down
/// as well, so only x is turned here: the two make half a turn, never a mirror image. A roll of less than one
/// degree is not applied.
class Projection {
 public:
  explicit Projection(const ViewState& view);

  Shown operator()(const Vec3& p) const {
    const float w = p.x * x_[3] + p.y * y_[3] + p.z * z_[3] + origin_[3];
    const float z = p.x * x_[2] + p.y * y_[2] + p.z * z_[2] + origin_[2];
    const float nearness = 1 / w;
    return {(p.x * x_[0] + p.y * y_[0] + p.z * z_[0] + origin_[0]) * nearness,
            (p.x * x_[1] + p.y * y_[1] + p.z * z_[1] + origin_[1]) * nearness, z, nearness, z < nearest_};
  }
  /// A direction as it is turned, without perspective.
  Vec3 turned(const Vec3& d) const {
    return {d.x * x_[0] + d.y * y_[0] + d.z * z_[0], d.x * x_[1] + d.y * y_[1] + d.z * z_[1],
            d.x * x_[2] + d.y * y_[2] + d.z * z_[2]};
  }
  float eyeDistance() const { return eyeDistance_; }

 private:
  float x_[4], y_[4], z_[4], origin_[4];  // where the model's axes go: across, down, towards the eye, w
  float nearest_, eyeDistance_;
};

/// Pixels for each model unit, and where the model's origin lies in the picture.
struct Placing {
  float scale = 1, x = 0, y = 0;
};

/// One scale for all angles, so that the knot does not pump while it turns: the model's own, or less where it
/// would carry the knot past an edge at some angle. Only a model that comes close to the eye is shown smaller
/// at the angles where it has to be.
Placing placing(const TubeModel& model, const Projection& projection, const Lens& lens, int width,
                int height);

/// The lens that makes the knot, as it is seen now, fill a picture but for a small margin.
Lens fittedLens(const TubeModel& model, const ViewState& view, int width, int height);

/// The lens, moved no farther than it takes for a strand's middle to lie in the picture, some way from its
/// edges.
Lens keptInSight(const TubeModel& model, const ViewState& view, Lens lens, int width, int height);

}  // namespace lorivan
