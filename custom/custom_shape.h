// The custom shape: points joined by lines, in numbered slots that stay where they are when something is
// deleted.
#pragma once

#include <array>
#include <vector>

#include "graph/grid_view.h"

namespace lorivan {

inline constexpr int kMostShapePoints = 2000;
inline constexpr int kMostShapeLines = 1000;
inline constexpr float kDeletedSlot = -1.0F;

inline constexpr float kShapeWidth = kReferenceWidth,
                       kShapeHeight = kReferenceHeight;  // of a new surface, units

/// Slots are numbered from 1; entry 0 of every array is unused. A deleted point has both coordinates -1, a
/// deleted line both ends -1. Coordinates are units of the shape surface, y downwards; a unit is a pixel of
/// the 500-pixel picture.
struct CustomShape {
  CustomShape();

  int ShapePointCount = 0;  // slots in use, deleted ones included
  std::vector<float> ShapeX, ShapeY;
  int ShapeLineCount = 0;
  std::array<std::vector<float>, 2> ShapeLineEnds;  // point numbers of first and second ends

  float surfaceWidth = kShapeWidth, surfaceHeight = kShapeHeight;
  bool smooth = false;  // its lines are drawn as curves, see smooth_lines.h

  bool pointIsLive(int point) const;
  /// Whether the line is there and both its ends are live points.
  bool lineIsLive(int line) const;
  int lineEnd(int end, int line) const;

  /// Number of the new slot; 0 when the table is full.
  int addPoint(float x, float y);
  int addLine(int first, int second);
  /// Deletes the point and every line that ends on it.
  void deletePoint(int point);
  void deleteLine(int line);
  /// Leads the lines of `gone` to `kept` and deletes it; lines that would have no length or be there twice
  /// go.
  void joinPoints(int kept, int gone);

  /// The live line between two points, in either order; 0 when there is none.
  int lineBetween(int a, int b) const;
  /// The lowest-numbered live point within `reach` of a position; 0 when there is none.
  int pointNear(float x, float y, float reach) const;

  /// The nearest live point within `reach` of a position, the lowest-numbered of equals; 0 when there is
  /// none.
  int nearestPoint(float x, float y, float reach) const;

  /// Where the shape surface stands in the picture: centred, or at the left and top edge when it is larger.
  float surfaceLeft() const;
  float surfaceTop() const;

  bool operator==(const CustomShape&) const = default;
};

/// From shape units to grid units and back, so that a shape drawn over the grid view lands where it was
/// drawn. Heights are those of the grid, before and after the vertical stretch.
class ShapeMapping {
 public:
  ShapeMapping(const CustomShape& shape, const GridView& view);

  double gridX(double x) const { return view_.gridX(x + left_); }
  double gridY(double y) const { return view_.gridY(y + top_); }
  double shapeX(double x) const { return view_.pixelX(x) - left_; }
  double shapeY(double y) const { return view_.pixelY(y) - top_; }
  /// Grid units, across, for a shape unit.
  double gridUnits() const { return kHalfView * view_.zoom * 2 / kReferenceWidth; }
  /// A height in grid units for a length of 1 across: 1 without stretch.
  double heightFactor() const { return view_.stretch / 0.8; }

 private:
  GridView view_;
  double left_, top_;
};

}  // namespace lorivan
