#include "strands/band_paths.h"

#include <vector>

#include "base/numbers.h"

namespace lorivan {
namespace {

void roundPoints(const std::vector<PointF>& points, std::vector<PointI>& rounded) {
  rounded.clear();
  for (const PointF p : points) rounded.push_back({toInt32(p.x), toInt32(p.y)});
}

}  // namespace

void forEachBandPath(const KnotCurve& curve, const KnotStyle& style, const GridView& view,
                     const std::function<void(const BandPath&)>& take) {
  const int outer = view.penWidth(style.outerWidth()), inner = view.penWidth(style.innerWidth());
  std::vector<PointF> exact;
  std::vector<PointI> points;
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    if (!curve.used(slot)) continue;
    bandPoints(curve, slot, view, false, exact);
    roundPoints(exact, points);
    take({points, true, outer, 0, CapStyle::round});
    take({points, true, inner, style.pathColour(slot), CapStyle::round});
  }
  std::vector<OverRun> runs;
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    if (!curve.used(slot)) continue;
    overRuns(curve, slot, runs);
    for (const OverRun& run : runs) {
      runPoints(curve, run, view, false, exact);
      roundPoints(exact, points);
      // A round end of the black would show as an arc across the strand's own band.
      take({points, false, outer, 0, CapStyle::flat});
      take({points, false, inner, style.pathColour(slot), CapStyle::round});
    }
  }
}

}  // namespace lorivan
