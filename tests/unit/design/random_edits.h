// Edits of every kind, chosen by draws.
#pragma once

#include "base/numbers.h"
#include "design/edits.h"
#include "design/presets.h"

namespace lorivan {

inline int drawBelow(const Rnd& random, int span) { return static_cast<int>(random() * span); }

/// A text for the field, now and then one that has to be corrected.
inline std::string randomText(Param p, const Rnd& random) {
  if (p == Param::XNo || p == Param::YNo) return std::to_string(1 + drawBelow(random, 9));
  if (drawBelow(random, 20) == 0) return "word";
  const double low = *parseNumber(parameterSpec(p).min), high = *parseNumber(parameterSpec(p).max);
  return std::to_string(low + (high - low) * 1.1 * random());
}

/// A document after one more step; the same where the step cannot be taken.
inline Document randomEdit(const Document& d, const Rnd& random) {
  const auto made = [&](const Result<Document>& next) { return next ? *next : d; };
  switch (drawBelow(random, 50)) {
    case 0:
      return made(randomKnot(d, random));
    case 1:
      return made(chooseShape(d, static_cast<Shape>(drawBelow(random, kShapeCount))));
    case 2:
      return withStyle(d, drawBelow(random, static_cast<int>(presetTable().size())));
    case 3:
      return made(outlineFromGrid(d));
    case 4:
      return made(lineGrid(d));
    case 5:
      return made(drawBelow(random, 10) == 0 ? autoGrid(d) : newGrid(d, &random));
    case 6:
      return blankShape(d);
    case 7: {
      CustomShape shape = outlineOf(d);
      shape.addPoint(static_cast<float>(500 * random()), static_cast<float>(400 * random()));
      return withOutline(d, shape);
    }
    default:
      break;
  }
  switch (drawBelow(random, 4)) {
    case 0: {
      const auto p = static_cast<Param>(drawBelow(random, kParamCount));
      return made(changeField(d, p, randomText(p, random)));
    }
    case 1: {
      const auto c = static_cast<Check>(drawBelow(random, kCheckCount));
      return withCheck(d, c, !d.fields.check(c));
    }
    case 2:
      return withColour(d, drawBelow(random, kColourBoxes), static_cast<Colour>(drawBelow(random, 1 << 24)));
    default:
      return stepLine(d, d.lines ? drawBelow(random, static_cast<int>(d.lines->size())) : 0,
                      1 + 2 * drawBelow(random, 2));
  }
}

}  // namespace lorivan
