// The model's heights over its plane, seen from where the knot stands upright.
#pragma once

#include <vector>

#include "base/result.h"
#include "model3d/tube_model.h"

namespace lorivan {

/// Heights on a grid that the model's outline in its plane just fits into. The unit is the model's width.
struct HeightMap {
  int columns = 0, rows = 0;
  double depth = 0;  // of the grid's area, from its first row to its last
  double top = 0;    // the greatest height that the model reaches
  std::vector<float>
      heights;  // row by row from the upper edge; 0 where nothing stands, and at the lowest point

  float at(int column, int row) const {
    return heights[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
                   static_cast<std::size_t>(column)];
  }
};

/// Where the outermost samples are: on the outline's edges, or half a step inside, as the middles of pixels.
enum class SamplesAt { edges, middles };

/// Columns and rows, in this order, that keep the model's proportion; both are at least 2.
struct GridSize {
  int columns = 0;
  long long rows = 0;
};
GridSize heightMapSize(const TubeModel& model, int columns, SamplesAt samples);

/// Samples the tubes without smoothing. The size must be one of heightMapSize(). The error: a model without
/// width.
Result<HeightMap> heightMapOf(const TubeModel& model, int columns, SamplesAt samples);

}  // namespace lorivan
