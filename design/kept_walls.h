// Walls, gaps and reversed lines go with their cells when a standard grid is built anew.
#pragma once

#include "design/document.h"

namespace lorivan {

/// `after`, a grid of the same shape that was just built, with the kinds that `before` gave to lines: to all
/// of them where both have the same cells, else to those that have the same place among the cells, counted
/// from the corner that the shape is laid from, or from its middle. Lines with a kind of the shape's own keep
/// it.
Document withKindsOf(const Document& before, Document after);

/// Lines of kind 2.
int wallCount(const Document& document);

}  // namespace lorivan
