// Shapes made of square cells: squares, the cross, and the octagons that share the cells' random kinds.
#include <cstdlib>

#include "graph/grid_builders.h"

namespace lorivan {
namespace {

/// Kind of a line between two cells: a wall on either side makes a wall, else an empty cell on either side
/// makes no line; between two empty cells the line stays ordinary.
std::int16_t kindBetween(std::int16_t a, std::int16_t b) {
  if (a == kNoLine && b == kNoLine) return kOrdinary;
  return b > kOrdinary || (a != kWall && b == kNoLine) ? b : a;
}

struct SquareLayer {
  const GridBuild& build;
  CellKinds cells;

  double x(int column) const { return (column - 1) * build.cell + build.grid.GridOriginX; }
  double y(int row) const { return (row - 1) * build.cell + build.grid.GridOriginY; }
  /// Kind of the line above cell (column, row).
  std::int16_t levelKind(int column, int row) const {
    const auto& kinds = cells[column];
    return kindBetween(kinds[row - 1], kinds[row]);
  }
  /// Kind of the line left of cell (column, row).
  std::int16_t uprightKind(int column, int row) const {
    const auto at = static_cast<std::size_t>(row);
    return kindBetween(cells[column - 1][at], cells[column][at]);
  }
  void level(int kind, int column, int row) const {
    build.line(kind, x(column), y(row), x(column) + build.cell, y(row));
  }
  void upright(int kind, int column, int row) const {
    build.line(kind, x(column), y(row), x(column), y(row) + build.cell);
  }
};

/// Cell indices of a cross's arm, first and last.
struct ArmBand {
  int begin, end;
};

ArmBand armBand(int length, int width) {
  const int middle = (length + 1) / 2;
  if (width % 2 != 0) return {middle - (width - 1) / 2, middle + (width - 1) / 2};
  if (length % 2 != 0) {
    const int side = (length - width - 1) / 2;
    return {side + 1, length - 1 - side};
  }
  return {(length - width) / 2 + 1, length - (length - width) / 2};
}

void diagonals(const SquareLayer& layer, int columns, int rows) {
  for (int i = 1; i <= columns; ++i)
    for (int j = 1; j <= rows; ++j) {
      if (i % 2 != 0)
        layer.build.line(kOrdinary, layer.x(i), layer.y(j), layer.x(i + 1), layer.y(j + 1));
      else
        layer.build.line(kOrdinary, layer.x(i), layer.y(j + 1), layer.x(i + 1), layer.y(j));
    }
}

}  // namespace

CellKinds drawSquareCells(const GridBuild& build) {
  CellKinds cells = ordinaryCells();
  if (build.random == nullptr) return cells;
  const GridFields& f = build.grid.fields;
  for (int x = 0; x <= 21; ++x)
    for (int y = 0; y <= 21; ++y) {
      const bool across = build.wraps() ? 0 < x && x <= f.XNo : 1 < x && x < f.XNo;
      const bool interior = across && 1 < y && y < f.YNo;
      if (build.draw() < 0.15 && interior) cells[x][y] = build.draw() >= 0.5 ? kWall : kNoLine;
    }
  return cells;
}

void buildSquare(GridBuild& build) {
  const GridFields& f = build.grid.fields;
  const bool diagonal = f.shape == Shape::SquareTriangle;
  SquareLayer layer{build, drawSquareCells(build)};
  // Round a cylinder the last column lies before the first one.
  if (build.wraps()) layer.cells[0] = layer.cells[f.XNo];
  for (int x = 1; x <= f.XNo; ++x)
    for (int y = 1; y <= f.YNo + 1; ++y) {
      const bool inner = y != 1 && y != f.YNo + 1;
      layer.level(diagonal && inner ? kNoLine : layer.levelKind(x, y), x, y);
    }
  for (int x = 1; x <= f.XNo + (build.wraps() ? 0 : 1); ++x)
    for (int y = 1; y <= f.YNo; ++y) {
      const bool inner = build.wraps() || (x != 1 && x != f.XNo + 1);
      layer.upright(diagonal && inner ? kNoLine : layer.uprightKind(x, y), x, y);
    }
  if (diagonal) diagonals(layer, f.XNo, f.YNo);
}

void buildCross(GridBuild& build) {
  GridFields& f = build.grid.fields;
  const int most = (f.XNo + 1) / 2 - 1;
  if (std::abs(f.crossOffset) > most) f.crossOffset = f.crossOffset < 0 ? -most : most;
  const ArmBand arm = armBand(f.XNo, f.YNo);
  const int from = arm.begin + f.crossOffset, to = arm.end + f.crossOffset;
  const SquareLayer layer{build, drawSquareCells(build)};
  for (int x = 1; x <= f.XNo; ++x)
    for (int y = 1; y <= f.XNo + 1; ++y)
      if ((arm.begin <= x && x <= arm.end) || (from <= y && y <= to + 1))
        layer.level(layer.levelKind(x, y), x, y);
  for (int x = 1; x <= f.XNo + 1; ++x)
    for (int y = 1; y <= f.XNo; ++y)
      if ((arm.begin <= x && x <= arm.end + 1) || (from <= y && y <= to))
        layer.upright(layer.uprightKind(x, y), x, y);
}

void buildOctagonal(GridBuild& build) {
  const GridFields& f = build.grid.fields;
  const CellKinds cells = drawSquareCells(build);
  const double c = build.cell, d = c * 0.70710677, pitch = octagonPitch(c);
  const auto kindOf = [&](int x, int y) { return cells[x][y]; };
  for (int x = 1; x <= f.XNo; ++x)
    for (int y = 1; y <= f.YNo; ++y) {
      // Shared corners are computed alike from both octagons, so that they round alike.
      const double left = pitch * x + build.grid.GridOriginX,
                   right = pitch * (x + 1) + build.grid.GridOriginX;
      const double y0 = pitch * y + build.grid.GridOriginY, next = pitch * (y + 1) + build.grid.GridOriginY;
      const double low = y0 - d, high = next - d, y1 = y0 + c;
      const int k = kindOf(x, y), diagonal = k == kNoLine ? kOrdinary : k;
      if (x == 1) build.line(kindOf(1, y), left, y0, left, y1);
      build.line(diagonal, left, y1, left + d, high);
      build.line(k == kOrdinary ? kindOf(x, y + 1) : k, left + d, high, left + d + c, high);
      build.line(diagonal, left + d + c, high, right, y1);
      build.line(k == kOrdinary ? kindOf(x + 1, y) : k, right, y1, right, y0);
      build.line(diagonal, right, y0, left + d + c, low);
      if (y == 1) build.line(kindOf(x, 1), left + d + c, low, left + d, low);
      build.line(diagonal, left + d, low, left, y0);
    }
}

}  // namespace lorivan
