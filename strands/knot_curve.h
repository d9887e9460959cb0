// The strands as smooth curves: B-spline samples, and the cardinal curve through them as Bezier segments.
#pragma once

#include <array>
#include <span>
#include <vector>

#include "base/points.h"
#include "graph/grid_view.h"
#include "strands/strand_store.h"

namespace lorivan {

/// Samples of all strands, one after the other. Sample i lies at grid x X[i] and at Y[i] = grid y divided by
/// the stretch factor; Z[i] above 0 is over, below 0 under.
struct KnotCurve {
  std::vector<float> X, Y, Z;
  std::array<int, kStrandSlots> first{};           // of each slot
  std::array<int, kStrandSlots> last{};            // inclusive; below first for an unused slot
  Wrap wrap;                                       // of the graph
  std::array<std::int32_t, kStrandSlots> turns{};  // periods that a strand goes to the right in one lap

  /// How much further to the right a strand's samples lie in its next lap, grid units.
  double lap(int slot) const { return 1.0 * turns[slot] * wrap.period; }
  bool used(int slot) const { return last[slot] > first[slot]; }
};

struct SamplePlace {
  double x = 0, y = 0;
};

/// Pixels of a grid unit across.
inline double acrossScale(const GridView& view) { return view.width / (2 * kHalfView * view.zoom); }

/// Picture position of a sample, unrounded.
inline SamplePlace samplePlace(const KnotCurve& curve, std::size_t sample, const GridView& view) {
  const double k = acrossScale(view);
  return {view.width / 2.0 + k * (curve.X[sample] - view.centreX),
          view.width * 0.4 - k * (curve.Y[sample] - view.centreY / view.stretch) / 1.25};
}

/// Where a wrapped knot's first period lies in a picture, pixels; without a width where it is not wrapped.
struct Seam {
  double left = 0, width = 0;
  explicit operator bool() const { return width > 0; }
  double right() const { return left + width; }
};
Seam seamOf(const KnotCurve& curve, const GridView& view);

/// Samples between two control points: 5, fewer for small scales.
int samplesPerPoint(float scale);

/// Samples every strand as a closed uniform B-spline of `order` (2 to 6 in the field) over its control
/// polygon. A strand with fewer control points than the order goes round its polygon more than once in the
/// sum, so that its weights always sum to 1. `curve` is overwritten; its memory is reused.
void sampleStrands(const StrandStore& store, int order, int samples, KnotCurve& curve);

/// Appends a stretch of the closed cardinal curve through `loop`, a ring of points without a repeat: from
/// point `begin` on over `pieces` pieces, round the ring as often as needed. Its tangents look across the
/// closing point, so the whole ring has no kink, and every stretch lies on the ring's own curve. Each lap
/// lies `lap` further to the right than the one before.
void closedCardinalToBezier(std::span<const PointF> loop, std::size_t begin, std::size_t pieces,
                            std::vector<PointF>& bezier, float lap = 0);

/// Widens [low, high] by one coordinate of a cubic Bezier segment, exactly.
void addExtremes(double p0, double p1, double p2, double p3, double& low, double& high);

/// The box that the centre lines of all strands lie in, grid units; exact for the curve as it is drawn. A
/// wrapped knot reaches from seam to seam.
GridBox curveBox(const KnotCurve& curve, float stretch);

/// Picture positions of a strand's samples from the second on, the first one, a lap on, at the end: all of
/// them, once.
/// Rounded where `raster`: to whole pixels up to the reference size, to eighths above it.
void loopPoints(const KnotCurve& curve, int slot, const GridView& view, bool raster,
                std::vector<PointF>& points);

/// One stretch of a strand that lies over others: `count` samples from `begin` on. One that reaches the
/// strand's last sample goes on at its first.
struct OverRun {
  int begin = 0, count = 0;
};

/// The stretches with a height of 0 or more, in order. A stretch across the closing point is one, the last.
void overRuns(const KnotCurve& curve, int slot, std::vector<OverRun>& runs);

/// Number of a sample within the ring that loopPoints() gives.
inline std::size_t loopIndex(const KnotCurve& curve, int slot, int sample) {
  const int first = curve.first[slot];
  const int count = curve.last[slot] - first + 1;
  return static_cast<std::size_t>((sample - first + count - 1) % count);
}

/// Picture positions of a run and of the sample after it.
void runPoints(const KnotCurve& curve, int slot, const OverRun& run, const GridView& view, bool raster,
               std::vector<PointF>& points);

}  // namespace lorivan
