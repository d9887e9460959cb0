// A fused body on the grid of a text file's three decimals.
#pragma once

#include <optional>

#include "export/mesh_part.h"

namespace lorivan {

/// The scene's body, named "knot", in the colour of the first strand, at the width that the scene asks for,
/// else at `standard`. No two corners are at one place and no triangle is flat, so that a reader who joins
/// corners by their places finds the same body. Fails for a body without width, and when it is too large or
/// too small for three decimals.
Result<MeshPart> solidPart(const ExportScene& scene, std::optional<double> standard);

}  // namespace lorivan
