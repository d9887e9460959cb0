// Outlines from DXF drawings.
#pragma once

#include <string_view>

#include "base/result.h"
#include "outlines/curves.h"

namespace lorivan {

/// The lines, polylines with their bulges, arcs, circles, ellipses and splines of a text DXF, turned so that
/// y runs downwards; those of blocks in each place where these are inserted. What lies on paper space or is
/// invisible is passed over; other kinds of entities, and inserts of what is not there, are passed over with
/// a note. The error begins with "line 7: ", or says that the file is binary.
Result<Drawing> readDxfOutline(std::string_view text);

}  // namespace lorivan
