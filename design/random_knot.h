// The fields of a random knot.
#pragma once

#include "base/random.h"
#include "design/knot_fields.h"

namespace lorivan {

/// Draws the shape, unless it is to stay, and then the style fields, in a fixed order of draws, so that a
/// seed gives the same knot everywhere. A custom shape that is to stay becomes the first shape.
void drawRandomFields(KnotFields& fields, bool constantShape, const Rnd& random);

}  // namespace lorivan
