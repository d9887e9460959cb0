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

constexpr std::string_view kTooComplicated =
    "This knot would be too complicated. Reduce the AG factor and try again";
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

/// How far the mesh's border lies from the outline before it is drawn to it: mean square, cells.
double misfit(const CellMesh& mesh, const Outline& outline, double cell) {
  const MeshBorder border(mesh);
  double sum = 0;
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
      const double off = misfit(*mesh, outline, pitch.across);
      if (best && off >= bestMisfit) continue;
      bestMisfit = off;
      best = std::move(*mesh);
    }
  if (!best)
    return impossibleKnot("The outline is too narrow for cells of this size: raise the AutoGrid value");
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

std::vector<PointI> latticePlaces(const CellMesh& mesh) {
  std::vector<PointI> at;
  for (const Spot& node : mesh.nodes) at.push_back({toInt32(node.x), toInt32(node.y)});
  return at;
}

}  // namespace

Status AutoGrid(KnotGraph& graph, const CustomShape& shape, const GridView& view,
                const AutoGridOptions& options) {
  const ShapeMapping mapping(shape, view);
  const Result<Outline> drawn = Outline::of(shape, mapping);
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
  makeLines(graph, *mesh, at);
  return finishLines(graph);
}

}  // namespace lorivan
