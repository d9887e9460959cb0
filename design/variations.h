// Knots beside a knot, to choose from.
#pragma once

#include <string>
#include <vector>

#include "base/random.h"
#include "design/document.h"

namespace lorivan {

inline constexpr int kVariations = 12;

struct Variation {
  std::string caption;
  Document document;
  bool operator==(const Variation&) const = default;
};

/// Whether the 2-D picture of a knot changes with the field.
bool variesPicture(Param p);

/// Knots with values of the field around the one it has, evenly spaced over about half of its range, in their
/// order; the document's own is one of them. Values that the shape would correct are left out, so there may
/// be fewer than kVariations.
std::vector<Variation> variationsAlong(const Document& document, Param p);
/// The same with four values of `across` for each of three of `down`.
std::vector<Variation> variationsAlong(const Document& document, Param across, Param down);

/// Random knots with bands that have room; captions tell their shapes.
std::vector<Variation> randomVariations(const Document& document, const Rnd& random);

/// The fields that a text names, at most two, by their captions or their own names: "Swish Width". The error
/// tells which word is none, or names no field that the picture changes with.
Result<std::vector<Param>> variedFields(const std::string& text);

}  // namespace lorivan
