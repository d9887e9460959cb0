// Shapes laid round the middle of the view: rings, star, spiral.
#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <vector>

#include "base/numbers.h"
#include "graph/grid_builders.h"

namespace lorivan {
namespace {

struct PlanePoint {
  double x, y;
};

PlanePoint onCircle(double radius, double angle) {
  return {radius * std::cos(angle), radius * std::sin(angle)};
}

/// The directions in which a full turn is cut into sectors, the last one a repeat of the first.
class Sectors {
 public:
  explicit Sectors(int count) {
    const float step = kTwoPiF / static_cast<float>(count);
    for (int s = 0; s <= count; ++s) rim_[s] = onCircle(1, s * static_cast<double>(step));
  }
  PlanePoint at(double radius, int sector) const {
    const PlanePoint rim = rim_[sector];
    return {radius * rim.x, radius * rim.y};
  }

 private:
  std::array<PlanePoint, 41> rim_{};
};

void join(const GridBuild& build, int kind, PlanePoint from, PlanePoint to) {
  build.line(kind, from.x, from.y, to.x, to.y);
}

/// Pairs of opposite cells become walls at random.
CellKinds drawRingCells(const GridBuild& build) {
  CellKinds cells = ordinaryCells();
  if (build.random == nullptr) return cells;
  const GridFields& f = build.grid.fields;
  const int sectors = 2 * f.XNo;
  for (int r = 1; r <= f.YNo - 3; ++r)
    for (int s = 0; s < sectors; ++s) {
      if (!(build.draw() < 0.04)) continue;
      auto& ring = cells[r];
      ring[s] = kWall;
      ring[(f.XNo + s) % sectors] = kWall;
    }
  return cells;
}

/// The tip over a chord of the outermost ring: as far outwards as half the chord, times a factor that grows
/// with the number of tips.
PlanePoint tipOver(PlanePoint first, PlanePoint second, int tips) {
  const PlanePoint middle{(first.x + second.x) / 2, (first.y + second.y) / 2};
  const double dx = first.x - middle.x, dy = first.y - middle.y;
  const double reach = tips / 12.0 + 1;
  return {middle.x - dy * reach, middle.y + dx * reach};
}

/// Points of an Archimedean spiral that grows by one cell a turn. Its first build finds the directions for
/// all that differ in the cell alone.
class SpiralPath {
 public:
  SpiralPath(GridBuild& build, int pointsPerTurn, int count) : cell_(build.cell), steps_(build.spiral) {
    if (!steps_.empty()) return;
    steps_.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
      const double angle = i * kTwoPi / pointsPerTurn;
      steps_.push_back({angle / kTwoPi + 1, std::cos(angle), std::sin(angle)});
    }
  }
  PlanePoint at(int i) const { return onRay(steps_[i].turns * cell_, i); }
  PlanePoint oneTurnInside(int i) const { return onRay(steps_[i].turns * cell_ - cell_, i); }

 private:
  PlanePoint onRay(double radius, int i) const { return {radius * steps_[i].cos, radius * steps_[i].sin}; }

  double cell_;
  std::vector<SpiralStep>& steps_;
};

/// Whether the last line runs between the same ends as an earlier one, once they are rounded. No strand could
/// tell the two apart.
bool repeatsALine(std::span<const PlannedLine> lines) {
  const PlannedLine& last = lines.back();
  const std::int16_t x1 = toInt16(last.x1), y1 = toInt16(last.y1), x2 = toInt16(last.x2),
                     y2 = toInt16(last.y2);
  return std::ranges::any_of(lines.first(lines.size() - 1), [&](const PlannedLine& l) {
    if (std::fabs(l.x1 - last.x1) > 1 && std::fabs(l.x1 - last.x2) > 1) return false;
    const std::int16_t x = toInt16(l.x1), y = toInt16(l.y1), toX = toInt16(l.x2), toY = toInt16(l.y2);
    return (x == x1 && y == y1 && toX == x2 && toY == y2) || (x == x2 && y == y2 && toX == x1 && toY == y1);
  });
}

}  // namespace

void buildCircular(GridBuild& build) {
  const GridFields& f = build.grid.fields;
  const CellKinds cells = drawRingCells(build);
  const int sectors = 2 * f.XNo;
  const Sectors rim(sectors);
  const auto special = [&](int r, int s) { return cells[r][s] != kOrdinary; };
  for (int r = 0; r < f.YNo; ++r) {
    const double radius = build.cell * (r + 1);
    for (int s = 0; s < sectors; ++s) {
      const bool chordWall = special(r, s) || special(r > 0 ? r - 1 : f.YNo - 1, s);
      join(build, chordWall ? kWall : kOrdinary, rim.at(radius, s), rim.at(radius, s + 1));
      if (r == f.YNo - 1) continue;
      const bool spokeWall = special(r, s) || special(r, s > 0 ? s - 1 : sectors - 1);
      join(build, spokeWall ? kWall : kOrdinary, rim.at(radius, s), rim.at(radius + build.cell, s));
    }
  }
}

void buildStar(GridBuild& build) {
  const GridFields& f = build.grid.fields;
  const Sectors rim(f.XNo);
  for (int r = 0; r <= f.YNo - 2; ++r) {
    const double radius = build.cell * (r + 1);
    for (int s = 0; s < f.XNo; ++s) {
      const PlanePoint first = rim.at(radius, s), second = rim.at(radius, s + 1);
      join(build, kOrdinary, first, second);
      if (r < f.YNo - 2) {
        join(build, kOrdinary, first, rim.at(radius + build.cell, s));
        continue;
      }
      const PlanePoint tip = tipOver(first, second, f.XNo);
      join(build, kOrdinary, first, tip);
      join(build, kOrdinary, second, tip);
    }
  }
}

void buildSpiral(GridBuild& build) {
  const GridFields& f = build.grid.fields;
  const int turn = 2 * f.XNo, points = turn * f.YNo;
  const int offset = points - 1 + f.crossOffset < 2 ? 0 : f.crossOffset;
  const int last = points - 1 + offset;
  const SpiralPath path(build, turn, last + 2);
  for (int i = 0; i <= last; ++i) {
    // The first radial line starts at point 1, although it ends over point 0.
    const PlanePoint from = path.at(i == 0 ? 1 : i);
    if (i < (f.YNo - 1) * turn + offset) join(build, kOrdinary, from, path.at(i + turn));
    if (i == last) {
      join(build, kOrdinary, from, path.oneTurnInside(i + 1));
      if (repeatsALine(build.lines)) build.lines.pop_back();
    } else if (i > 0) {
      join(build, kOrdinary, from, path.at(i + 1));
    }
  }
}

}  // namespace lorivan
