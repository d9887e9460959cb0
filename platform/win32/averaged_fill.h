// Anti-aliased filling for systems whose GDI+ draws without it (Wine does).
#pragma once

#include <span>

#include "base/colour.h"
#include "base/result.h"
#include "platform/surface.h"

namespace lorivan::win32 {

/// Fills an outline (winding rule) into premultiplied pixels: drawn four times as large and averaged.
Status averagedFill(const PixelBlock& target, std::span<const PointF> outline, Colour colour);

}  // namespace lorivan::win32
