// From traced strands to the tube model: heights, scale, smoothing, bending into a ring, and the sweep.
#pragma once

#include <array>
#include <cstdint>

#include "base/colour.h"
#include "base/result.h"
#include "model3d/tube_model.h"
#include "strands/strand_store.h"

namespace lorivan {

/// The colour of each strand slot.
using SlotColours = std::array<Colour, kStrandSlots>;

/// Quads that the strands will need: sides times samples for each point times points.
std::int64_t polygonBudget(const StrandStore& strands, const TubeSettings& settings);

/// Builds the model of all strands into `out` and reuses its memory. Lengths are model units: the knot is
/// centred and fits about 16 of them. A store without strands, or a knot without width, gives an empty model.
/// The error is a limit, when the polygons are too many; `out` is then untouched. Settings outside their
/// ranges are held in them. A wrapped knot is always a whole ring.
Status buildTube(const StrandStore& strands, const TubeSettings& settings, const SlotColours& colours,
                 TubeModel& out);

/// Quads that are shown well within a frame of 33 milliseconds, on slow machines too.
inline constexpr std::int64_t kQuickModel = 60'000;

/// Settings for a coarser model of the same strands, of at most `most` quads where three sides and one sample
/// for each point allow it; `quads` is what the settings make.
TubeSettings coarserSettings(TubeSettings settings, std::int64_t quads, std::int64_t most);

/// Sweeps the cross-section of model.sides corners and model.radius along model.centres: fills the vertices
/// and QuadCount. Where a centre line runs along z, or stands still, the ring collapses onto its centre. The
/// error is a limit, as above; vertices and QuadCount are then as before.
Status sweepTube(TubeModel& model);

}  // namespace lorivan
