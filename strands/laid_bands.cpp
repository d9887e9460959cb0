#include "strands/laid_bands.h"

#include <algorithm>

#include "strands/band_loop.h"
#include "strands/band_outline.h"
#include "strands/band_painter.h"
#include "strands/seam_copies.h"
#include "strands/strand_pick.h"

namespace lorivan {
namespace {

constexpr double kLaidStray = 0.03;  // pixels that a centre line may lie off its samples
constexpr double kThinBand = 3;      // pixels, of a coloured band
constexpr double kThinWhole = 6;     // pixels, of such a band with its edges; surfaces are quick with those
// Samples that are left away at both ends of an upper stretch, where it may lie beside other bands, and the
// most of its length.
constexpr double kShorter = 1.2, kShorterPart = 0.25;

bool isThin(const KnotStyle& style, const GridView& view) {
  return style.innerWidth() * view.pixelFactor() <= kThinBand;
}

}  // namespace

void drawLaidBands(Surface& surface, const KnotCurve& curve, const KnotStyle& style, const GridView& view) {
  const SeamClip clip(surface, seamOf(curve, view));
  BandPainter painter(surface, curve, style, view);
  const std::vector<BandLoop> loops = bandLoops(curve, view, kLaidStray);
  std::vector<PointF> line;
  for (const BandLoop& loop : loops) {
    line.clear();
    loop.appendAll(line);
    painter.edgedBand(loop.slot(), line);
  }
  const bool thin = isThin(style, view);
  for (const BandLoop& loop : loops)
    for (const BandLoop::Stretch& stretch : loop.upperStretches()) {
      const auto follow = [&](double shorter) {
        line.clear();
        loop.appendPart(loop.placeOf(stretch.from + shorter), loop.placeOf(stretch.to - shorter), line);
      };
      follow(std::min(kShorter, (stretch.to - stretch.from) * kShorterPart));
      if (thin) {
        painter.edgedBand(loop.slot(), line, CapStyle::flat);
        continue;
      }
      painter.edge(line, CapStyle::flat);
      follow(0);  // of bands that run together the colours show where they lead
      painter.band(loop.slot(), line);
    }
}

bool isFinelyWoven(const KnotCurve& curve, const KnotStyle& style, const GridView& view, bool crowded) {
  std::size_t crossings = 0;
  std::vector<OverRun> runs;
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    if (!curve.used(slot)) continue;
    overRuns(curve, slot, runs);
    crossings += runs.size();
  }
  if (crossings <= kMostClippedLive) return false;
  const double whole = style.outerWidth() * view.pixelFactor();
  if (isThin(style, view) && whole <= kThinWhole) return true;
  if (!crowded) return false;
  double length = 0;
  for (int slot = 1; slot < kStrandSlots; ++slot) length += strandLength(curve, slot, view);
  // Strands pass each crossing twice.
  return whole * 2 * static_cast<double>(crossings) > length;
}

}  // namespace lorivan
