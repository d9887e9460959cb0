// Marks round places of a model, to be shown with it.
#pragma once

#include <span>

#include "model3d/tube_model.h"

namespace lorivan {

/// The model with two thin red hoops round each place. A model that would pass the limit of quads stays as it
/// is.
TubeModel withMarks(const TubeModel& model, std::span<const Vec3> places);

}  // namespace lorivan
