// Knots that have a wanted size: the fields that give it, and how near they come.
#pragma once

#include "base/result.h"
#include "design/document.h"

namespace lorivan {

struct FittedSize {
  Document document;
  double width = 0;   // that files are to be given, millimetres: of the drawn knot, or of the model
  double error = 0;   // of the other size, millimetres
  bool bent = false;  // into a ring, from a shape that has no seam to close there
};

inline constexpr double kMostSizeError = 0.1;  // millimetres

/// A drawn knot that is `width` by `height` millimetres with its bands, or, with `outlines`, what is cut out
/// of it: cells about as many as the document has and nearly square, the scale that fills the picture, and
/// the stretch. Bands take the share of the room between crossings that they have. The error says why there
/// is none, sizes outside the limits of lengths included.
Result<FittedSize> fitFrame(const Document& document, double width, double height, bool outlines = false);

/// A model that is bent into a ring, or a bracelet where vtRingPerc is between 0 and 100, with this diameter
/// inside and this height, both measured on the faces of its tubes. Cells, scale, stretch, vtRingPerc,
/// vtPolyRadius and vtPolyZF are set, and chkWrap for a whole ring of a shape that can be wrapped, which is
/// then interlaced all round. Strands just run into each other at the crossings.
Result<FittedSize> fitRing(const Document& document, double inner, double height);

/// "6 x 4 cells, stretch 1.08" and how large the error is; and what makes better rings.
std::string fittedNote(const FittedSize& fitted);

/// "200 x 120": two lengths in millimetres. The error tells what is wrong.
struct TwoLengths {
  double first = 0, second = 0;
};
Result<TwoLengths> parseLengths(const std::string& text);

}  // namespace lorivan
