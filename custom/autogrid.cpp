#include "custom/autogrid.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "base/numbers.h"
#include "custom/border_fit.h"
#include "custom/cell_mesh.h"
#include "custom/outline.h"
#include "custom/planar_grid.h"

namespace lorivan {
namespace {

constexpr std::string_view kTooNarrow =
    "The outline is too narrow for cells of this size: raise the AutoGrid value";
constexpr double kLeastFilled = 0.25;       // specks in an outline are no grid
constexpr double kLeastPitch = 2.4;         // grid units: with less, rounding to whole units shows
constexpr double kSymmetryTolerance = 1.5;  // grid units: joining near points moves an outline by up to 1.4
constexpr int kMostCells = 100000;
constexpr double kTriangleHeight = 0.8660254037844386;

struct Pitch {
  double across = 0, rows = 0;  // grid units
  bool triangles = false;

  Pitch(const GridBox& box, const AutoGridOptions& options) : triangles(options.triangles) {
    const double longer = std::max(box.right - box.left, box.top - box.bottom);
    across = std::max(longer / std::clamp(options.gridSize, 1, 100), kLeastPitch);
    rows = triangles ? across * kTriangleHeight : across;
  }

  /// With node (0, 0) at the centre of the box, or off it by parts of a cell.
  Lattice lattice(const GridBox& box, double shiftX, double shiftY) const {
    const Spot centre{(box.left + box.right) / 2, (box.bottom + box.top) / 2};
    return {triangles, centre + Spot{shiftX * across, shiftY * rows}, across, rows};
  }
};

/// What the outline and a lattice of this kind have in common.
Symmetries commonSymmetries(const Outline& outline, bool triangles) {
  Symmetries group = symmetriesOf(outline, kSymmetryTolerance);
  if (triangles) std::erase_if(group, [](const Isometry& map) { return map.turnsAxes(); });
  return group;
}

bool allows(const Lattice& lattice, const Symmetries& group) {
  return std::ranges::all_of(group, [&](const Isometry& map) {
    return lattice.hasNode(map(lattice.origin)) &&
           lattice.hasNode(map(lattice.origin + Spot{lattice.across, 0})) &&
           lattice.hasNode(
               map(lattice.origin + Spot{lattice.triangles ? lattice.across / 2 : 0, lattice.rowStep}));
  });
}

/// The outline moved by less than a unit, so that its middle, and what mirrors it, is whole.
Outline withWholeMiddle(const Outline& outline) {
  const GridBox& box = outline.box();
  const Spot middle{(box.left + box.right) / 2, (box.bottom + box.top) / 2};
  const Spot move = Spot{roundHalfEven(middle.x), roundHalfEven(middle.y)} - middle;
  std::vector<OutlineSide> sides;
  for (const auto& [a, b] : outline.sides()) sides.push_back({a + move, b + move});
  return Outline(std::move(sides));
}

/// Sharp corners on an axis of the outline that no border node of the mesh can be put on, since none near
/// lies on that axis.
int lostCorners(const CellMesh& mesh, const MeshBorder& border, const Outline& outline, double cell,
                const Symmetries& group) {
  int lost = 0;
  for (const OutlineCorner& corner : outline.corners(kCornerSpan * cell, kSharpTurn))
    for (std::size_t g = 1; g < group.size(); ++g) {
      if (distance(group[g](corner.at), corner.at) > cell / 2) continue;
      const auto fits = [&](int node) {
        const Spot at = mesh.nodes[static_cast<std::size_t>(node)];
        return border.contains(node) && distance(at, corner.at) <= kCornerReach * cell &&
               distance(group[g](at), at) < 1e-6;
      };
      int node = 0;
      while (node < static_cast<int>(mesh.nodes.size()) && !fits(node)) ++node;
      lost += node == static_cast<int>(mesh.nodes.size()) ? 1 : 0;
    }
  return lost;
}

/// How far the mesh's border lies from the outline before it is drawn to it: mean square, cells. A corner
/// that will be cut off counts as much as a node a cell off.
double misfit(const CellMesh& mesh, const Outline& outline, double cell, const Symmetries& group) {
  const MeshBorder border(mesh);
  double sum = lostCorners(mesh, border, outline, cell, group);
  int count = 0;
  for (int node = 0; node < static_cast<int>(mesh.nodes.size()); ++node) {
    if (!border.contains(node)) continue;
    const Spot at = mesh.nodes[static_cast<std::size_t>(node)];
    const auto nearest = outline.nearest(at, outline.sidesNear(at, 2 * cell));
    const double off = nearest ? distance(at, *nearest) / cell : 2;
    sum += off * off;
    ++count;
  }
  return count == 0 ? std::numeric_limits<double>::max() : sum / count;
}

/// Of the lattices that are as symmetric as the outline, the one that lies best.
Result<CellMesh> bestMesh(const Outline& outline, const Pitch& pitch, const Symmetries& group) {
  std::optional<CellMesh> best;
  double bestMisfit = std::numeric_limits<double>::max();
  for (const double shiftX : {0.0, 0.5})
    for (const double shiftY : {0.0, 0.5}) {
      const Lattice lattice = pitch.lattice(outline.box(), shiftX, shiftY);
      if (!allows(lattice, group)) continue;
      Result<CellMesh> mesh = fillOutline(outline, lattice, kMostCells, group);
      if (!mesh) return mesh;
      if (mesh->cells.empty()) continue;
      const double off = misfit(*mesh, outline, pitch.across, group);
      if (best && off >= bestMisfit) continue;
      bestMisfit = off;
      best = std::move(*mesh);
    }
  if (!best) return impossibleKnot(kTooNarrow);
  dropSpecks(*best, outline, best->cellImages(group, pitch.across));
  return std::move(*best);
}

void makeLines(KnotGraph& graph, const CellMesh& mesh, const std::vector<PointI>& at) {
  startLines(graph);
  for (const auto& [first, second] : mesh.sides()) {
    PointI a = at[static_cast<std::size_t>(first)], b = at[static_cast<std::size_t>(second)];
    // As in the standard grids: level lines from left to right, upright ones upwards.
    const bool level = std::abs(a.x - b.x) >= std::abs(a.y - b.y);
    if (level ? a.x > b.x : a.y > b.y) std::swap(a, b);
    MakeKE(graph, kOrdinary, static_cast<float>(a.x), static_cast<float>(a.y), static_cast<float>(b.x),
           static_cast<float>(b.y));
  }
  graph.CellSize = kCustomCellSize;
  graph.NoGrid = false;
}

using Span = std::pair<double, double>;

/// Where the level line at height y lies in a cell; an empty span when nowhere.
Span spanAt(const MeshCell& cell, const std::vector<PointI>& at, double y) {
  Span span{1e30, -1e30};
  for (int k = 0; k < cell.corners; ++k) {
    const PointI a = at[static_cast<std::size_t>(cell.node[static_cast<std::size_t>(k)])];
    const PointI b =
        at[static_cast<std::size_t>(cell.node[static_cast<std::size_t>((k + 1) % cell.corners)])];
    if ((a.y > y) == (b.y > y)) continue;
    const double x = a.x + (y - a.y) / (b.y - a.y) * (b.x - a.x);
    span = {std::min(span.first, x), std::max(span.second, x)};
  }
  return span;
}

/// The share of the outline's area that has cells, by level lines.
double filledShare(const CellMesh& mesh, const std::vector<PointI>& at, const Outline& outline) {
  constexpr int kRows = 200;
  const GridBox& box = outline.box();
  double inside = 0, filled = 0;
  for (int row = 0; row < kRows; ++row) {
    const double y = box.bottom + (row + 0.5) * (box.top - box.bottom) / kRows;
    const std::vector<double> places = outline.crossingsAt(y);
    std::vector<Span> spans;
    for (const MeshCell& cell : mesh.cells)
      if (const Span span = spanAt(cell, at, y); span.first < span.second) spans.push_back(span);
    for (std::size_t i = 0; i + 1 < places.size(); i += 2) {
      inside += places[i + 1] - places[i];
      for (const Span& span : spans)
        filled += std::max(0.0, std::min(span.second, places[i + 1]) - std::max(span.first, places[i]));
    }
  }
  return inside > 0 ? std::min(1.0, filled / inside) : 0;
}

std::vector<PointI> latticePlaces(const CellMesh& mesh) {
  std::vector<PointI> at;
  for (const Spot& node : mesh.nodes) at.push_back({toInt32(node.x), toInt32(node.y)});
  return at;
}

}  // namespace

Result<AutoGridReport> AutoGrid(KnotGraph& graph, const CustomShape& shape, const GridView& view,
                                const AutoGridOptions& options) {
  const ShapeMapping mapping(shape, view);
  const Result<Outline> drawn = Outline::of(shape, mapping, options.within);
  if (!drawn) return drawn.error();
  const Pitch pitch(drawn->box(), options);
  Outline outline = withWholeMiddle(*drawn);
  const Symmetries group = commonSymmetries(outline, options.triangles);
  if (group.size() == 1) outline = *drawn;
  Result<CellMesh> mesh = bestMesh(outline, pitch, group);
  if (!mesh) return mesh.error();
  if (mesh->sides().size() > kMostAutoGridLines) {
    makeLines(graph, *mesh, latticePlaces(*mesh));
    if (const Status made = finishLines(graph); !made) graph.TooManyLines = false;
    return refused(kTooComplicated);
  }
  const std::vector<PointI> at = fitBorder(*mesh, outline, pitch.across, group);
  const double filled = filledShare(*mesh, at, outline);
  if (filled < kLeastFilled) return impossibleKnot(kTooNarrow);
  makeLines(graph, *mesh, at);
  if (const Status made = finishLines(graph); !made) return made.error();
  return AutoGridReport{filled};
}

}  // namespace lorivan
