#include "strands/strand_pick.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "strands/band_outline.h"
#include "strands/seam_copies.h"

namespace lorivan {
namespace {

// Bright within dark, so that one of them stands out from every colour.
constexpr Colour kMarkDark = 0x000000, kMarkBright = 0x20F0FF;
constexpr double kDarkWidth = 4, kBrightWidth = 2;  // reference pixels

/// The place of a strand's centre line nearest to a point of the picture.
struct Nearest {
  double distance = HUGE_VAL, height = 0;
};

void takeNearer(Nearest& nearest, SamplePlace from, SamplePlace to, double fromZ, double toZ, double x,
                double y) {
  const double dx = to.x - from.x, dy = to.y - from.y, length2 = dx * dx + dy * dy;
  const double t =
      length2 > 0 ? std::clamp(((x - from.x) * dx + (y - from.y) * dy) / length2, 0.0, 1.0) : 0.0;
  const double distance = std::hypot(from.x + t * dx - x, from.y + t * dy - y);
  if (distance < nearest.distance) nearest = {distance, fromZ + t * (toZ - fromZ)};
}

/// The highest of the passages of one strand that cover the point; a distance past `reach` where none does.
Nearest passageAt(const KnotCurve& curve, int slot, const GridView& view, double x, double y, double reach) {
  const int first = curve.first[slot];
  const int count = curve.last[slot] - first + 1;
  Nearest highest, passage;
  const auto sample = [&](int i) { return static_cast<std::size_t>(first + i % count); };
  const auto placeOf = [&](int i) {
    SamplePlace place = samplePlace(curve, sample(i), view);
    place.x += i / count * curve.lap(slot) * acrossScale(view);
    return place;
  };
  for (int i = 0; i <= count; ++i) {
    // Samples beyond reach part the passages from each other.
    Nearest piece;
    takeNearer(piece, placeOf(i), placeOf(i + 1), static_cast<double>(curve.Z[sample(i)]),
               static_cast<double>(curve.Z[sample(i + 1)]), x, y);
    const bool within = piece.distance <= reach;
    if (within && piece.distance < passage.distance) passage = piece;
    if (within && i < count) continue;
    if (passage.distance <= reach && (highest.distance > reach || passage.height > highest.height))
      highest = passage;
    passage = {};
  }
  return highest;
}

/// How far the samples of a strand reach across, in the laps that were sampled.
Reach reachOf(const KnotCurve& curve, int slot, const GridView& view) {
  std::vector<PointF> points;
  loopPoints(curve, slot, view, false, points);
  Reach reach;
  reach.add(points);
  return reach;
}

}  // namespace

int strandAt(const KnotCurve& curve, const KnotStyle& style, const GridView& view, double x, double y) {
  const double reach = style.outerWidth() / 2 * view.pixelFactor();
  const Seam seam = seamOf(curve, view);
  if (seam && (x < seam.left - reach || x > seam.right() + reach)) return 0;
  int found = 0;
  double height = 0;
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    if (!curve.used(slot)) continue;
    const Reach across = reachOf(curve, slot, view);
    // Seen from the strand, the place lies in as many periods as the strand has copies there.
    eachCopy(seam, across.low - reach, across.high + reach, [&](double right) {
      const Nearest at = passageAt(curve, slot, view, x - right, y, reach);
      if (at.distance > reach || (found != 0 && at.height <= height)) return;
      found = slot;
      height = at.height;
    });
  }
  return found;
}

double strandLength(const KnotCurve& curve, int slot, float stretch) {
  if (!curve.used(slot)) return 0;
  const auto first = static_cast<std::size_t>(curve.first[slot]);
  const auto last = static_cast<std::size_t>(curve.last[slot]);
  double length = 0;
  for (std::size_t i = first, before = last; i <= last; before = i++) {
    const double lap = i == first ? curve.lap(slot) : 0;
    length += std::hypot(curve.X[i] + lap - curve.X[before],
                         (static_cast<double>(curve.Y[i]) - curve.Y[before]) * stretch);
  }
  return length;
}

double strandLength(const KnotCurve& curve, int slot, const GridView& view) {
  if (!curve.used(slot)) return 0;
  const auto first = static_cast<std::size_t>(curve.first[slot]);
  const auto last = static_cast<std::size_t>(curve.last[slot]);
  double length = 0;
  SamplePlace before = samplePlace(curve, last, view);
  before.x -= curve.lap(slot) * acrossScale(view);
  for (std::size_t i = first; i <= last; ++i) {
    const SamplePlace here = samplePlace(curve, i, view);
    length += std::hypot(here.x - before.x, here.y - before.y);
    before = here;
  }
  return length;
}

int crossingsPassed(const StrandStore& store, int slot) {
  const auto closed = store.closed(slot);
  if (closed.empty()) return 0;
  return static_cast<int>(
      std::ranges::count_if(closed.first(closed.size() - 1), [](const StrandPoint& p) { return p.z != 0; }));
}

void drawStrandMark(Surface& surface, const KnotCurve& curve, const KnotStyle& style, const GridView& view,
                    int slot) {
  OutlineOptions options;
  options.band = style.innerWidth() * view.pixelFactor();
  options.outer = std::max(style.outerWidth() * view.pixelFactor(), options.band);
  options.mostClipped = kMostClippedLive;
  BandOutlines outlines = bandOutlines(curve, view, options);
  options.uncut = true;
  if (!outlines.complete) outlines = bandOutlines(curve, view, options);
  const Seam seam = seamOf(curve, view);
  const SeamClip clip(surface, seam);
  std::vector<BandContour> shown;
  for (StrandOutline& strand : outlines.strands) {
    if (strand.slot != slot) continue;
    for (BandStretch& stretch : strand.stretches) appendCopies(seam, std::move(stretch.contours), shown);
    for (const auto& [width, colour] : {std::pair(kDarkWidth, kMarkDark), {kBrightWidth, kMarkBright}})
      for (const BandContour& contour : shown)
        surface.wideCurve({contour, static_cast<float>(view.penWidth(width)), colour, CapStyle::round});
  }
}

}  // namespace lorivan
