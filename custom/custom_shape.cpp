#include "custom/custom_shape.h"

#include <algorithm>

#include "base/numbers.h"

namespace lorivan {

CustomShape::CustomShape()
    : ShapeX(kMostShapePoints + 1, kDeletedSlot), ShapeY(kMostShapePoints + 1, kDeletedSlot) {
  ShapeLineEnds.fill(std::vector<float>(kMostShapeLines + 1, kDeletedSlot));
}

bool CustomShape::pointIsLive(int point) const {
  return point >= 1 && point <= ShapePointCount && ShapeX[point] > kDeletedSlot;
}

bool CustomShape::lineIsLive(int line) const {
  return line >= 1 && line <= ShapeLineCount && pointIsLive(lineEnd(0, line)) &&
         pointIsLive(lineEnd(1, line));
}

int CustomShape::lineEnd(int end, int line) const { return toInt32(ShapeLineEnds[end][line]); }

int CustomShape::addPoint(float x, float y) {
  if (ShapePointCount >= kMostShapePoints) return 0;
  ++ShapePointCount;
  ShapeX[ShapePointCount] = x;
  ShapeY[ShapePointCount] = y;
  return ShapePointCount;
}

int CustomShape::addLine(int first, int second) {
  if (ShapeLineCount >= kMostShapeLines) return 0;
  ++ShapeLineCount;
  ShapeLineEnds[0][ShapeLineCount] = static_cast<float>(first);
  ShapeLineEnds[1][ShapeLineCount] = static_cast<float>(second);
  return ShapeLineCount;
}

void CustomShape::deletePoint(int point) {
  for (int line = 1; line <= ShapeLineCount; ++line)
    if (lineEnd(0, line) == point || lineEnd(1, line) == point) deleteLine(line);
  ShapeX[point] = ShapeY[point] = kDeletedSlot;
}

void CustomShape::deleteLine(int line) {
  for (auto& column : ShapeLineEnds) column[line] = kDeletedSlot;
}

void CustomShape::joinPoints(int kept, int gone) {
  for (int line = 1; line <= ShapeLineCount; ++line)
    for (const int end : {0, 1}) {
      if (lineEnd(end, line) != gone) continue;
      const int other = lineEnd(1 - end, line);
      if (other == kept || other == gone || lineBetween(kept, other) != 0)
        deleteLine(line);
      else
        ShapeLineEnds[end][line] = static_cast<float>(kept);
    }
  deletePoint(gone);
}

int CustomShape::lineBetween(int a, int b) const {
  for (int line = 1; line <= ShapeLineCount; ++line) {
    const int first = lineEnd(0, line), second = lineEnd(1, line);
    if ((first == a && second == b) || (first == b && second == a)) return line;
  }
  return 0;
}

int CustomShape::pointNear(float x, float y, float reach) const {
  for (int point = 1; point <= ShapePointCount; ++point) {
    if (!pointIsLive(point)) continue;
    const double dx = static_cast<double>(ShapeX[point]) - x;
    const double dy = static_cast<double>(ShapeY[point]) - y;
    if (dx * dx + dy * dy <= static_cast<double>(reach) * reach) return point;
  }
  return 0;
}

int CustomShape::nearestPoint(float x, float y, float reach) const {
  int best = 0;
  double least = static_cast<double>(reach) * reach;
  for (int point = 1; point <= ShapePointCount; ++point) {
    if (!pointIsLive(point)) continue;
    const double dx = static_cast<double>(ShapeX[point]) - x;
    const double dy = static_cast<double>(ShapeY[point]) - y;
    if (dx * dx + dy * dy > least || (best != 0 && dx * dx + dy * dy == least)) continue;
    least = dx * dx + dy * dy;
    best = point;
  }
  return best;
}

float CustomShape::surfaceLeft() const { return std::max(0.0F, (kShapeWidth - surfaceWidth) / 2); }

float CustomShape::surfaceTop() const { return std::max(0.0F, (kShapeHeight - surfaceHeight) / 2); }

ShapeMapping::ShapeMapping(const CustomShape& shape, const GridView& view)
    : view_(view.stretch, kReferenceWidth), left_(shape.surfaceLeft()), top_(shape.surfaceTop()) {
  view_.zoom = view.zoom;
  view_.centreX = view.centreX;
  view_.centreY = view.centreY;
}

}  // namespace lorivan
