// The values of all fields at one moment, and what the computing folders read of them.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "design/parameters.h"
#include "graph/standard_grids.h"
#include "strands/colours.h"
#include "strands/knot_drawing.h"
#include "strands/tracing.h"

namespace lorivan {

/// Every field's text as its own correction left it, every check box, the shape and the colour boxes.
struct KnotFields {
  std::array<std::string, kParamCount> texts;
  std::array<bool, kCheckCount> checks{};
  Shape shape = Shape::SquareSquare;
  ColourBoxes boxes = firstColourBoxes();
  bool fitPicture = false;  // the knot fills the picture, whatever its scale

  const std::string& text(Param p) const { return texts[static_cast<std::size_t>(p)]; }
  std::string& text(Param p) { return texts[static_cast<std::size_t>(p)]; }
  bool check(Check c) const { return checks[static_cast<std::size_t>(c)]; }
  bool& check(Check c) { return checks[static_cast<std::size_t>(c)]; }
  /// The field's number; 0 for a text that is none (corrected fields always hold one).
  float number(Param p) const;
  /// The same, rounded to a whole number, halves to even.
  int whole(Param p) const;
  bool operator==(const KnotFields&) const = default;
};

/// What a first start shows: the settings' fall-backs, corrected by the fields.
KnotFields firstRunFields();

/// A text as the field itself would correct it. Fields that are used as whole numbers round it.
std::string correctedText(Param p, const std::string& text);

/// The colour box that the band of a strand slot takes its colour from; none: it is the white of number 15.
std::optional<int> colourBoxOf(const KnotFields& fields, int slot);

/// Whether a shape's left and right borders can be joined, and whether those of the fields' grid are.
bool canWrap(Shape shape);
bool isWrapped(const KnotFields& fields);

GridFields gridFields(const KnotFields& fields);
TraceSettings traceSettings(const KnotFields& fields);
KnotStyle knotStyle(const KnotFields& fields, const StrandColours& colours);
PictureOptions pictureOptions(const KnotFields& fields);

/// Writes counts, scale and offset back as a grid build corrected them. Fields that keep their number keep
/// their text.
void takeCorrections(KnotFields& fields, const GridFields& corrected);

}  // namespace lorivan
