// Drawings of other programs as outlines.
#include <cmath>

#include "fuzz.h"
#include "known_shape.h"
#include "outlines/dxf_outline.h"
#include "outlines/fit_outline.h"
#include "outlines/svg_outline.h"

namespace lorivan::fuzz {
namespace {

void follow(const Result<Drawing>& drawing) {
  if (!drawing) return require(drawing.error().kind == ErrorKind::input, "what cannot be read is told so");
  std::size_t segments = 0;
  for (const CurveChain& chain : drawing->chains) {
    require(chain.points.size() % 3 == 1, "chains are of whole segments");
    segments += chain.points.size() / 3;
    for (const Spot& p : chain.points)
      require(std::isfinite(p.x) && std::isfinite(p.y), "places are numbers");
  }
  require(segments <= kMostSegments, "no drawing has more segments than it may");
  if (const auto fitted = fitDrawing(*drawing)) requireFitted(fitted->shape);
}

}  // namespace

void svgOutline(Bytes bytes) { follow(readSvgOutline(textOf(bytes))); }

void dxfOutline(Bytes bytes) { follow(readDxfOutline(textOf(bytes))); }

}  // namespace lorivan::fuzz
