#include "design/kept_walls.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>

#include "graph/standard_grids.h"

namespace lorivan {
namespace {

/// Ends are rounded to whole units from another corner.
constexpr double kRounding = 1.6;

struct Corner {
  double x = 0, y = 0;
};

/// A standard grid whose lines all are of the kind that the shape gives them.
struct PlainGrid {
  KnotGraph graph;
  StandardGrid frame;

  bool build(const GridFields& fields) {
    const auto built = buildStandardGrid(graph, fields);
    if (built) frame = *built;
    return static_cast<bool>(built);
  }
  int lines() const { return graph.LastLine + 1; }
  const GridLine& line(int j) const { return graph.Lines[j]; }
  /// Shapes that are laid round the middle have their cells' places from there.
  Corner origin() const {
    const Shape shape = frame.fields.shape;
    if (shape == Shape::Circular || shape == Shape::Star || shape == Shape::Spiral) return {};
    return {static_cast<double>(frame.GridOriginX), static_cast<double>(frame.GridOriginY)};
  }
};

bool sameEnds(const KnotLines& lines, const PlainGrid& grid) {
  if (static_cast<int>(lines.size()) != grid.lines()) return false;
  for (int j = 0; j < grid.lines(); ++j) {
    const KnotLine& a = lines[j];
    const GridLine& b = grid.line(j);
    if (a.X1 != b.X1 || a.Y1 != b.Y1 || a.X2 != b.X2 || a.Y2 != b.Y2) return false;
  }
  return true;
}

/// Both grids with cells of one size, so that places can be compared.
bool buildAlike(PlainGrid& a, GridFields aFields, PlainGrid& b, GridFields bFields) {
  aFields.skew = bFields.skew;
  float scale = std::min(aFields.scale, bFields.scale);
  for (;;) {
    aFields.scale = bFields.scale = scale;
    if (!a.build(aFields) || !b.build(bFields)) return false;
    const float fits = std::min(a.frame.fields.scale, b.frame.fields.scale);
    if (fits == scale) return true;
    scale = fits;
  }
}

double apart(const GridLine& a, Corner from, const GridLine& b, Corner to) {
  const auto ends = [&](double x1, double y1, double x2, double y2) {
    return std::max(std::hypot(a.X1 - from.x - x1 + to.x, a.Y1 - from.y - y1 + to.y),
                    std::hypot(a.X2 - from.x - x2 + to.x, a.Y2 - from.y - y2 + to.y));
  };
  return std::min(ends(b.X1, b.Y1, b.X2, b.Y2), ends(b.X2, b.Y2, b.X1, b.Y1));
}

/// The line of `to` in the place of a line of `from`.
std::optional<int> placeOf(const PlainGrid& from, int line, const PlainGrid& to) {
  std::optional<int> best;
  double least = kRounding;
  for (int j = 0; j < to.lines(); ++j) {
    const double distance = apart(from.line(line), from.origin(), to.line(j), to.origin());
    if (distance < least) best = j, least = distance;
  }
  return best;
}

bool sameCells(const GridFields& a, const GridFields& b) {
  return a.wrapped == b.wrapped && a.XNo == b.XNo && a.YNo == b.YNo && a.crossOffset == b.crossOffset;
}

}  // namespace

Document withKindsOf(const Document& before, Document after) {
  const GridFields was = gridFields(before.fields), now = gridFields(after.fields);
  if (!before.lines || !after.lines || was.shape != now.shape || was.shape == Shape::Custom) return after;
  const auto from = std::make_unique<PlainGrid>(), to = std::make_unique<PlainGrid>();
  // Lines of another origin than the fields have no places among their cells.
  if (!from->build(was) || !sameEnds(*before.lines, *from)) return after;
  const bool sameOrder = sameCells(was, now) && before.lines->size() == after.lines->size();
  if (!sameOrder && (!buildAlike(*from, was, *to, now) || from->lines() != std::ssize(*before.lines) ||
                     to->lines() != std::ssize(*after.lines)))
    return after;
  KnotLines lines = *after.lines;
  for (int j = 0; j < from->lines(); ++j) {
    const std::int16_t kind = (*before.lines)[j].Kind;
    if (kind == from->line(j).Kind) continue;
    if (const auto place = sameOrder ? j : placeOf(*from, j, *to)) lines[*place].Kind = kind;
  }
  after.lines = Shared(std::move(lines));
  return after;
}

int wallCount(const Document& document) {
  if (!document.lines) return 0;
  return static_cast<int>(std::ranges::count(*document.lines, kWall, &KnotLine::Kind));
}

}  // namespace lorivan
