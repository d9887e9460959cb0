// A relief as a closed mesh: the height map on top, walls round it, and a flat bottom.
#pragma once

#include "export/height_map.h"
#include "export/mesh_part.h"

namespace lorivan {

/// The scene's relief in thousandths of a millimetre, its lowest corner at 0, 0, 0, upright seen from +z. The
/// scene must ask for one. The errors: more polygons than a model may have, samples nearer to one another
/// than two thousandths, a base or a width out of range.
Result<MeshPart> reliefPart(const ExportScene& scene);

/// The mesh of a map that is `width` thousandths wide on a plate of `base` thousandths.
MeshPart reliefMesh(const HeightMap& map, double width, std::int32_t base);

}  // namespace lorivan
