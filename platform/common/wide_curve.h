// Smooth bands along curves, the same on every system.
#pragma once

#include "platform/common/path_fill.h"

namespace lorivan {

/// Adds a band with round joins. A chain that ends where it began is a ring. It is whole also where it
/// crosses itself or bends more tightly than half its width. False when it has no usable width or points; one
/// without any point adds nothing.
bool addWideCurve(PathFiller& filler, const WideCurve& curve);

}  // namespace lorivan
