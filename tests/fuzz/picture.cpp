// Pictures to trace: width, height, a bit that repeats, then the shades of the pixels, row by row. A repeated
// row or run needs few bytes, so that shapes are likely.
#include <cmath>
#include <vector>

#include "fuzz.h"
#include "known_shape.h"
#include "outlines/fit_outline.h"

namespace lorivan::fuzz {

void picture(Bytes bytes) {
  Draws draws(bytes);
  const int width = 1 + draws.below(96), height = 1 + draws.below(96), stride = width + draws.below(3);
  const bool coloured = draws.below(2) == 1;
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(stride) * static_cast<std::size_t>(height),
                                    0xFFFFFFFF);
  for (std::size_t at = 0; at < pixels.size() && !draws.empty();) {
    const auto shade = static_cast<std::uint32_t>(draws.byte());
    const std::uint32_t pixel = coloured ? (shade << 16 | static_cast<std::uint32_t>(draws.byte()) << 8 |
                                            static_cast<std::uint32_t>(draws.byte()))
                                         : shade * 0x010101;
    for (int run = 1 + draws.below(32); run > 0 && at < pixels.size(); --run)
      pixels[at++] = (coloured ? shade << 24 : 0xFF000000) | pixel;
  }
  auto traced = traceOutline({pixels.data(), width, height, stride});
  if (!traced) return;
  require(!traced->loops.empty(), "a traced picture has loops");
  for (const OutlinePiece& loop : traced->loops) {
    require(loop.closed && loop.points.size() >= 3, "loops are closed");
    for (const Spot& p : loop.points)
      require(p.x >= -1 && p.x <= width + 1 && p.y >= -1 && p.y <= height + 1, "loops lie in the picture");
  }
  const GridBox box = boxOf(traced->loops);
  if (const auto fitted = fitTraced(std::move(*traced), box)) requireFitted(fitted->shape);
}

}  // namespace lorivan::fuzz
