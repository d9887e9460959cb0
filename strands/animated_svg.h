// The growing drawing as one file that every browser plays.
#pragma once

#include <string>

#include "strands/animation.h"
#include "strands/vector_surface.h"

namespace lorivan {

struct AnimatedSvgOptions {
  PictureOptions picture;
  VectorPage page;
  int delay = 180;    // milliseconds for each step, see frameDelay()
  bool loop = false;  // else it plays once and stays
};

/// Ground and bands as in the classic picture, with each strand growing evenly over the time of its steps and
/// each over-crossing appearing at its own. A loop rests for five steps at its end.
std::string animatedSvg(const KnotGraph& graph, const KnotCurve& curve, const KnotStyle& style,
                        const GridView& view, const AnimatedSvgOptions& options);

}  // namespace lorivan
