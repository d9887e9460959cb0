// The zero surface of a field as triangles.
#pragma once

#include <string_view>

#include "base/result.h"
#include "model3d/solid_field.h"
#include "model3d/triangle_mesh.h"

namespace lorivan {

/// More triangles than this are refused.
inline constexpr std::int64_t kMostTriangles = 8'000'000;

inline constexpr std::string_view kTooManyTriangles =
    "Sorry, too many triangles for one solid\r\nUse fewer cells or a larger Radius";

/// A closed mesh of the field's zero surface on cells of the given size: every edge belongs to two triangles,
/// every corner to one round of them, all corners lie on the surface. The surface is found in cubes of cells
/// that lie near a segment or the plate. The error is a limit.
Result<TriangleMesh> surfaceOf(const SolidField& field, const CentreLines& lines, float cell);

}  // namespace lorivan
