// The tube's radius that leaves a gap between strands, or lets them meet.
#pragma once

#include "design/document.h"

namespace lorivan {

struct Knot;

/// The document with a vtPolyRadius at which strands clear each other by `gap`: millimetres when the model's
/// width is given, else model units. 0: they meet at every crossing, by a twentieth of their thickness. The
/// knot is the document's, traced. The error, a knot's, tells which Depth makes it possible.
Result<Document> withFittedRadius(const Document& document, const Knot& knot, double gap,
                                  std::optional<double> millimetres);

}  // namespace lorivan
