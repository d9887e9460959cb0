#include "design/random_knot.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"

namespace lorivan {
namespace {

/// Whole part, towards minus infinity, of a draw spread over `span` and shifted.
int drawWhole(const Rnd& random, double span, double shift) {
  return static_cast<int>(std::floor(random() * span + shift));
}

void drawShape(KnotFields& fields, bool constantShape, const Rnd& random) {
  if (constantShape) {
    if (fields.shape == Shape::Custom) fields.shape = Shape::SquareSquare;
    return;
  }
  // Rounding makes the first and the last place of the list half as likely; the custom shape is never drawn.
  const int place = toInt32((kShapeCount - 1) * random());
  fields.shape = static_cast<Shape>(std::min(place, kShapeCount - 2));
}

}  // namespace

void drawRandomFields(KnotFields& fields, bool constantShape, const Rnd& random) {
  const auto set = [&](Param p, int value) { fields.text(p) = correctedText(p, std::to_string(value)); };
  drawShape(fields, constantShape, random);
  set(Param::XNo, drawWhole(random, 10, 2));
  set(Param::YNo, drawWhole(random, 10, 2));
  set(Param::Scale, drawWhole(random, 30, 20));
  set(Param::Swish, drawWhole(random, 15, 5));  // replaced at once, but its draw counts
  if (fields.shape == Shape::Circular)
    set(Param::Swish, drawWhole(random, 10, 2));
  else
    set(Param::Swish, drawWhole(random, 15, 5));
  if (fields.shape == Shape::Cross || fields.shape == Shape::Spiral)
    set(Param::CrossOffset, drawWhole(random, 8, -4));
  set(Param::Smooth, drawWhole(random, 3, 3));
  set(Param::Width, drawWhole(random, 6, 2));
  set(Param::Edge, std::max(2, fields.whole(Param::Width) - drawWhole(random, 6, 2)));
  set(Param::StartColour, drawWhole(random, 15, 1));
}

}  // namespace lorivan
