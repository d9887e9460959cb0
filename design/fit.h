// Bands that fit their grid: a share of the smallest distance between neighbouring crossings, so that the
// gaps between them stay open.
#pragma once

#include <optional>

#include "base/random.h"
#include "base/result.h"
#include "design/document.h"

namespace lorivan {

struct Knot;

/// The document with bands of these shares and chkFitBands on: grids that are built from it fit their bands
/// again, until a width or an edge is typed. A grid without crossings leaves the bands as they are.
Document fitBands(const Document& document, BandShares shares);
Document fitBands(const Document& document);

/// The same with the document's own shares where chkFitBands is on; else the document itself.
Document fitAgain(const Document& document);

/// A random knot, see randomKnot(), with bands that fit. Where they run together all the same another one is
/// drawn, a few times; of those without gaps everywhere it is the one that lacks least.
Result<Document> roomyRandomKnot(const Document& document, const Rnd& random);

/// What a style's width and edge are on the grids that it was made for.
BandShares sharesOfStyle(int style);

/// What the bands that the document has are on its own grid; where they are wider than usual, the usual.
BandShares sharesOf(const Document& document);

/// Smallest distance between crossings that follow each other along a strand, in pixels of the 500-pixel
/// picture at zoom 1; nothing when no strand has two.
std::optional<double> leastCrossingDistance(const Knot& knot);

/// The same as the knot is drawn, and the width of the narrowest loop that a strand makes round a corner.
std::optional<double> drawnRoom(const Knot& knot);

/// By how many pixels of the 500-pixel picture the bands are wider than the room between crossings of the
/// grid, or are still covered by one band where they pass the next, or, with one edge for both, wider than
/// the room between bands that lie beside each other as at a wall; 0 while there are gaps. Of strands that
/// cross more than kMostCrossings times it is at least the bands' width.
double bandOverlap(const Document& document, const Knot& knot);

/// What makes room for the bands of a document's knot that run together. Bands at their least width need
/// larger cells. Fitted ones may still run together, as at walls, whatever the size of the cells is: then a
/// smaller width helps. Where the narrowest bands do so as well, only other curves may.
enum class MoreRoom { fewerCells, smallerWidth, fitBands, otherCurves };
MoreRoom moreRoom(const Document& document, const Knot& knot);

}  // namespace lorivan
