// Shapes made of triangles and hexagons.
#include "graph/grid_builders.h"

namespace lorivan {
namespace {

/// One upright triangle: its base from (left, base) over one cell, its tip at height `tip`.
struct TriangleSides {
  const GridBuild& build;
  double left, base, tip;

  double right() const { return left + build.cell; }
  double middle() const { return left + build.cell / 2.0; }
  void baseSide(int kind) const { build.line(kind, left, base, right(), base); }
  void rightSide(int kind) const { build.line(kind, right(), base, middle(), tip); }
  void leftSide(int kind) const { build.line(kind, left, base, middle(), tip); }
  TriangleSides mirrored() const { return {build, left, -base, -tip}; }
};

bool isInterior(const GridFields& f, int row, int place) {
  return 0 < place && place < f.XNo - row - 1 && 0 < row && row < f.YNo - 1;
}

TriangleSides triangleAt(const GridBuild& build, int row, int place) {
  const double start = row * build.cell / 2.0 + build.grid.GridOriginX;
  return {build, start + place * build.cell,
          static_cast<double>(row * build.grid.RowH + build.grid.GridOriginY),
          static_cast<double>((row + 1) * build.grid.RowH + build.grid.GridOriginY)};
}

std::int16_t drawTriangleKind(const GridBuild& build, int row, int place) {
  if (build.random == nullptr) return kOrdinary;
  const bool interior =
      build.wraps() ? 0 < row && row < build.grid.fields.YNo - 1 : isInterior(build.grid.fields, row, place);
  if (!(build.draw() < 0.35) || !interior) return kOrdinary;
  return build.draw() < 0.5 ? kNoLine : kWall;
}

/// In whole units, for grids whose rows are moved by it and meet again across the seam.
int halfCell(const GridBuild& build) { return build.cell / 2; }

/// Rows of triangles round a cylinder, between two level borders.
void buildTriangleBand(GridBuild& build) {
  const GridFields& f = build.grid.fields;
  const auto y = [&](int row) { return static_cast<double>(row * build.grid.RowH + build.grid.GridOriginY); };
  for (int r = 0; r <= f.YNo; ++r)
    for (int i = 0; i < f.XNo; ++i) {
      const int half = halfCell(build), before = r % 2 != 0 ? half : 0;
      const double left = build.grid.GridOriginX + i * build.cell + before, right = left + build.cell;
      if (r == f.YNo) {
        build.line(kOrdinary, left, y(r), right, y(r));
        continue;
      }
      const double middle = left + (r % 2 != 0 ? build.cell - half : half);
      const int kind = drawTriangleKind(build, r, i);
      build.line(kind, left, y(r), right, y(r));
      build.line(kind, right, y(r), middle, y(r + 1));
      build.line(kind, left, y(r), middle, y(r + 1));
    }
}

/// Random kinds for the diamonds, never for two triangles next to each other.
class DiamondKinds {
 public:
  explicit DiamondKinds(const GridBuild& build) : build_(build) {}

  std::int16_t draw(int row, int place) {
    if (build_.random == nullptr) return kOrdinary;
    const bool chosen = build_.draw() < 0.7;
    const bool apart = (row == lastRow_ && place > lastPlace_ + 1) || row > lastRow_ + 1;
    if (!chosen || !apart || !isInterior(build_.grid.fields, row, place)) return kOrdinary;
    lastRow_ = row;
    lastPlace_ = place;
    return build_.draw() < 0.5 ? kNoLine : kWall;
  }

 private:
  const GridBuild& build_;
  int lastRow_ = -1, lastPlace_ = -1;
};

/// Walls of the honeycomb. The row is held against the X count and the column against the Y count, the other
/// way round from the rows and columns that are drawn.
CellKinds drawHexagonCells(const GridBuild& build) {
  CellKinds cells = ordinaryCells();
  if (build.random == nullptr) return cells;
  const GridFields& f = build.grid.fields;
  for (int u = 0; u <= 21; ++u)
    for (int i = 0; i <= 21; ++i) {
      const bool inside = 0 < u && u < f.XNo - 2 && 0 < i && i < f.YNo - 2;
      if (build.draw() < 0.25 && inside) cells[u][i] = kWall;
    }
  return cells;
}

struct Honeycomb {
  const GridBuild& build;
  CellKinds cells;
  double a, b;  // height of a tip, height of an upright side

  int kind(int row, int column) const { return cells[row][column]; }
  void hexagon(int u, int i, double x0, double y0) const;
  void tips(int u, int i, double x0, double y0, int own) const;
  void ringHexagon(int u, int i, double y0) const;
};

void Honeycomb::hexagon(int u, int i, double x0, double y0) const {
  const double x1 = x0 + build.cell, middle = x0 + build.cell / 2.0;
  const int own = kind(u, i);
  const bool plain = own == kOrdinary, even = u % 2 == 0;
  const int below = kind(u + 1, even && i > 0 ? i - 1 : i);
  const int belowRight = kind(u + 1, even ? i : i + 1);
  if (i == 0) build.line(own, x0, y0, x0, y0 + b);
  build.line(plain ? below : own, x0, y0 + b, middle, y0 + b + a);
  build.line(plain ? belowRight : own, middle, y0 + b + a, x1, y0 + b);
  build.line(plain ? kind(u, i + 1) : own, x1, y0 + b, x1, y0);
  tips(u, i, x0, y0, own);
}

/// Of a row that goes round a cylinder every hexagon has a neighbour on both sides. Half cells are whole
/// units, so that places on both sides of the seam agree.
void Honeycomb::ringHexagon(int u, int i, double y0) const {
  const int count = build.grid.fields.XNo, half = halfCell(build), odd = u % 2;
  const double x0 = build.grid.GridOriginX + i * build.cell + (odd != 0 ? half : 0);
  const double middle = x0 + (odd != 0 ? build.cell - half : half), x1 = x0 + build.cell;
  const int own = kind(u, i), beside = kind(u, (i + count - 1) % count);
  const bool plain = own == kOrdinary;
  const int below = kind(u + 1, odd != 0 ? i : (i + count - 1) % count);
  const int belowRight = kind(u + 1, odd != 0 ? (i + 1) % count : i);
  build.line(beside == kOrdinary ? own : beside, x0, y0, x0, y0 + b);
  build.line(plain ? below : own, x0, y0 + b, middle, y0 + b + a);
  build.line(plain ? belowRight : own, middle, y0 + b + a, x1, y0 + b);
  if (u > 0) return;
  build.line(own, x1, y0, middle, y0 - a);
  build.line(own, middle, y0 - a, x0, y0);
}

/// The two sides above: all of the first row's, and below it those that no row above has made.
void Honeycomb::tips(int u, int i, double x0, double y0, int own) const {
  const double x1 = x0 + build.cell, middle = x0 + build.cell / 2.0;
  const bool odd = u % 2 != 0, last = i == build.grid.fields.XNo - 1;
  if (u == 0 || (odd && last)) build.line(own, x1, y0, middle, y0 - a);
  if (u == 0 || (!odd && i == 0)) build.line(own, middle, y0 - a, x0, y0);
}

}  // namespace

void buildTriangle(GridBuild& build) {
  if (build.wraps()) return buildTriangleBand(build);
  const GridFields& f = build.grid.fields;
  for (int r = 0; r < f.YNo; ++r)
    for (int i = 0; i < f.XNo - r; ++i) {
      const int kind = drawTriangleKind(build, r, i);
      const TriangleSides triangle = triangleAt(build, r, i);
      triangle.baseSide(kind);
      triangle.rightSide(kind);
      triangle.leftSide(kind);
    }
}

void buildDiamond(GridBuild& build) {
  const GridFields& f = build.grid.fields;
  DiamondKinds kinds(build);
  for (int u = 0; u < f.YNo; ++u)
    for (int i = 0; i < f.XNo - u; ++i) {
      const int kind = kinds.draw(u, i);
      const TriangleSides upper = triangleAt(build, u, i), lower = upper.mirrored();
      if (f.shape == Shape::Diamond2) {
        upper.baseSide(kind);
        if (u > 0) lower.baseSide(kind);
      }
      upper.rightSide(kind);
      lower.rightSide(kind);
      upper.leftSide(kind);
      lower.leftSide(kind);
    }
}

void buildHexagonal(GridBuild& build) {
  const GridFields& f = build.grid.fields;
  const double c = build.cell;
  const bool regular = f.shape == Shape::RegularHexagonal;
  const Honeycomb comb{build, drawHexagonCells(build), regular ? c * 0.6 / 2 : c / 2,
                       regular ? c * 0.67335 * 0.8660254 : c * 0.8660254};
  double y0 = build.grid.GridOriginY;
  for (int u = 0; u < f.YNo && build.wraps(); ++u, y0 += comb.b + comb.a)
    for (int i = 0; i < f.XNo; ++i) comb.ringHexagon(u, i, y0);
  for (int u = 0; u < f.YNo && !build.wraps(); ++u) {
    const double left = build.grid.GridOriginX + (u % 2 != 0 ? c / 2 : 0);
    for (int i = 0; i < f.XNo; ++i) comb.hexagon(u, i, left + i * c, y0);
    y0 += comb.b + comb.a;
  }
}

}  // namespace lorivan
