// Sentences for the status line.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "design/edits.h"
#include "design/knot.h"

namespace lorivan {

/// "1 strand", "3 strands".
std::string countedStrands(long long n);

/// "Hexagonal, 2 x 2, scale 30: 24 lines"
std::string gridSummary(const Document& document);
/// "3 strands, 12 crossings"
std::string knotSummary(const Knot& knot);
/// "; 6 more strands are not drawn: ...; the bands run together by 3 pixels: ..." or nothing.
std::string knotNotes(const Document& document, const Knot& knot);
/// Points, lines and loose ends of a custom shape, and what to do next.
std::string shapeSummary(const CustomShape& shape);
/// What the mouse made of a custom shape: "New line", "Delete point", "Move point" where one `moved`.
std::string shapeStep(const CustomShape& before, const CustomShape& now, bool moved);
/// "; 34 % of the outline stayed empty: <advice>" or nothing.
std::string emptyShare(const AutoGridReport& report, const std::string& advice);
/// How a shape is drawn.
std::string shapeHint();

/// An error's words as a sentence of its own: with a capital letter, unless they begin with a file's name.
std::string asSentence(std::string text);

/// A text for a menu, where a single "&" would mark a letter.
std::string marksDoubled(std::string_view text);

/// "Line 3 is a wall: strands turn back at it"
std::string lineSummary(const Document& document, int line);
/// "Wall: strands turn back; a click changes 4 lines, a drag sets walls", for a line that changes together
/// with its images, itself counted.
std::string lineHint(const Document& document, int line, std::size_t together);
/// Number, length and crossings of a strand; the length in millimetres where that is known.
std::string strandSummary(const Knot& knot, int slot, std::optional<double> millimetres);
/// What a line of a kind is called in the names of steps.
std::string kindStep(int kind);

}  // namespace lorivan
