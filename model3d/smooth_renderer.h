// The smooth picture of a tube model: a depth buffer, normals of the round tube, four samples a pixel.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "base/pixels.h"
#include "model3d/projection.h"
#include "model3d/smooth_light.h"

namespace lorivan {

/// Keeps its memory from one picture to the next. The brightness of a place depends on where the round tube
/// faces there, not on how many sides stand for it; only tubes of three or four sides show their edges. What
/// of the tubes runs through others is hidden by depth.
class SmoothRenderer {
 public:
  void render(const TubeModel& model, const LightSettings& light, const ViewState& view, const Lens& lens,
              const PictureLook& look, PixelBlock target);

 private:
  /// A corner on the grid of samples: pixels across, sample rows down.
  struct Corner {
    float x, y, nearness;
    Vec3 normal;
    float arriving;
    bool seen;
  };
  struct Edge {
    float top, bottom, x, slope;
  };
  /// What is interpolated, with its change for each pixel across and each row down.
  struct Plane {
    float at, across, down;
  };
  struct Planes {
    float x, y;  // where `at` is meant
    Plane nearness, nx, ny, nz, arriving;
  };

  void renderAtHalfSize(const TubeModel& model, const LightSettings& light, const ViewState& view,
                        const Lens& lens, const PictureLook& look, PixelBlock target);
  void frame(const TubeModel& model, const Projection& projection, PixelBlock target);
  bool nextBand();
  void drawStrand(const TubeModel& model, const TubeStrand& strand, const Projection& projection,
                  const SmoothLight& light, const std::array<float, 3>& factors);
  void ringCorners(const TubeModel& model, int ring, const Projection& projection, const SmoothLight& light,
                   std::vector<Corner>& out) const;
  void joinCorners(const std::vector<Corner>& here, const std::vector<Corner>& there, int join,
                   const SmoothLight& light, const std::array<float, 3>& factors);
  void triangle(const Corner& a, const Corner& b, const Corner& c, const SmoothLight& light,
                const std::array<float, 3>& factors);
  static Planes planesOf(const Corner& a, const Corner& b, const Corner& c, float area);
  void fillSpan(int row, int begin, int end, float place, const Planes& planes, const SmoothLight& light,
                const std::array<float, 3>& factors);
  void reduceBand(PixelBlock target) const;

  Placing placing_;
  int rows_ = 4;                           // of samples in each pixel, one sample each
  int left_ = 0, right_ = 0, bottom_ = 0;  // pixels that may be painted
  int bandTop_ = 0, bandBottom_ = 0;       // pixel rows of the band
  int firstRow_ = 0, endRow_ = 0;          // its sample rows
  std::uint32_t background_ = 0;
  bool transparent_ = false;
  std::vector<float> nearness_;
  std::vector<std::uint32_t> colours_;
  std::vector<std::uint32_t> half_;  // the picture at half its size; very large drafts even smaller
  std::vector<Corner> first_, here_, there_;
};

}  // namespace lorivan
