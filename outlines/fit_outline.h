// From the lines of a drawing or a traced picture to a custom shape.
#pragma once

#include <string>
#include <vector>

#include "base/result.h"
#include "custom/custom_shape.h"
#include "graph/grid_view.h"
#include "outlines/curves.h"
#include "outlines/few_points.h"
#include "outlines/trace_outline.h"

namespace lorivan {

/// How far the shape's lines may lie off those that they stand for, in shape units.
inline constexpr double kDrawnTolerance = 0.5, kTracedTolerance = 0.8;

struct FittedOutline {
  CustomShape shape;
  std::vector<std::string> notes;  // what a user should know: what was left out, or made coarser
};

/// Lays `within`, a box of the pieces' coordinates with y downwards, as large as it goes into the frame in
/// which points of a new shape may lie, upright and with its proportion. Open pieces whose ends meet are
/// joined. The tolerance grows until the shape's tables hold the lines. Fails where nothing is left to draw.
Result<FittedOutline> fitOutline(std::vector<OutlinePiece> pieces, const GridBox& within, double tolerance);

/// The same for a whole drawing.
Result<FittedOutline> fitDrawing(const Drawing& drawing);

/// The same for a traced picture, from its lines alone, or with the ground round them where `within` is the
/// whole picture. Pixels that show as steps on the sheet are smoothed.
Result<FittedOutline> fitTraced(TracedPicture traced, const GridBox& within);

/// The box around all points.
GridBox boxOf(const std::vector<OutlinePiece>& pieces);

}  // namespace lorivan
