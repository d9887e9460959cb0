// The strands as smooth curves: B-spline samples, and the cardinal curve through them as Bezier segments.
#pragma once

#include <array>
#include <span>
#include <vector>

#include "graph/grid_view.h"
#include "platform/surface.h"
#include "strands/strand_store.h"

namespace lorivan {

/// Samples of all strands, one after the other. Sample i lies at grid x X[i] and at Y[i] = grid y divided by
/// the stretch factor; Z[i] above 0 is over, below 0 under.
struct KnotCurve {
  std::vector<float> X, Y, Z;
  std::array<int, kStrandSlots> first{};  // of each slot
  std::array<int, kStrandSlots> last{};   // inclusive; below first for an unused slot

  bool used(int slot) const {
    return last[static_cast<std::size_t>(slot)] > first[static_cast<std::size_t>(slot)];
  }
};

/// Samples between two control points: 5, fewer for small scales.
int samplesPerPoint(float scale);

/// Samples every strand as a closed uniform B-spline of `order` (2 to 6 in the field) over its control
/// polygon. A strand with fewer control points than the order goes round its polygon more than once in the
/// sum, so that its weights always sum to 1. `curve` is overwritten; its memory is reused.
void sampleStrands(const StrandStore& store, int order, int samples, KnotCurve& curve);

/// Appends the open cardinal curve (tension 0.5, Catmull-Rom) through the points as cubic Bezier segments:
/// the first point, then two controls and an end for each further one. Fewer than two points give nothing.
void cardinalToBezier(std::span<const PointF> points, std::vector<PointF>& bezier);

/// The box that the centre lines of all strands lie in, grid units; exact for the curve as it is drawn.
GridBox curveBox(const KnotCurve& curve, float stretch);

/// Picture positions of one strand's first band: its samples from the second on, closed with a repeat of the
/// first of them. Rounded where `raster`: to whole pixels up to the reference size, to eighths above it.
void bandPoints(const KnotCurve& curve, int slot, const GridView& view, bool raster,
                std::vector<PointF>& points);

/// One stretch of a strand that lies over others: samples begin to end - 1, then the sample `next` after it.
struct OverRun {
  int begin = 0, end = 0, next = 0;
};

/// The stretches with a height of 0 or more, in order.
void overRuns(const KnotCurve& curve, int slot, std::vector<OverRun>& runs);

/// Picture positions of a run, the sample after it included.
void runPoints(const KnotCurve& curve, const OverRun& run, const GridView& view, bool raster,
               std::vector<PointF>& points);

}  // namespace lorivan
