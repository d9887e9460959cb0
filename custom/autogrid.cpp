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
constexpr int kLeastPitch = 3;  // grid units: with less, rounding to whole units shows
constexpr int kMostCells = 100000;
constexpr double kTriangleHeight = 0.8660254037844386;

/// A lattice whose nodes lie on whole grid units.
struct Pitch {
  int across = 0, rows = 0;  // grid units
  bool triangles = false;

  Pitch(const GridBox& box, const AutoGridOptions& options) : triangles(options.triangles) {
    const double longer = std::max(box.right - box.left, box.top - box.bottom);
    const double wanted =
        std::max(longer / std::clamp(options.gridSize, 1, 100), static_cast<double>(kLeastPitch));
    // Rows of triangles lie half a cell apart: that has to be a whole number, too.
    across = triangles ? 2 * std::max(2, wholeUnits(wanted / 2)) : wholeUnits(wanted);
    rows = triangles ? toInt32(across * kTriangleHeight) : across;
  }

  /// Rather up than down: many more cells than asked for are worse than somewhat fewer.
  static int wholeUnits(double wanted) { return static_cast<int>(std::ceil(wanted - 0.4)); }

  /// With node (0, 0) at the box's centre, or off it by parts of a cell.
  Lattice lattice(const GridBox& box, double shiftX, double shiftY) const {
    const double x = (box.left + box.right) / 2 + shiftX * across;
    const double y = (box.bottom + box.top) / 2 + shiftY * rows;
    return {triangles, {roundHalfEven(x), roundHalfEven(y)}, static_cast<double>(across), 1.0 * rows};
  }
};

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

/// Of the lattices that are symmetric about the box's upright axis, the one that lies best.
Result<CellMesh> bestMesh(const Outline& outline, const Pitch& pitch) {
  std::optional<CellMesh> best;
  double bestMisfit = std::numeric_limits<double>::max();
  for (const double shiftX : {0.0, 0.5})
    for (const double shiftY : {0.0, 0.5}) {
      const Lattice lattice = pitch.lattice(outline.box(), shiftX, shiftY);
      Result<CellMesh> mesh = fillOutline(outline, lattice, kMostCells);
      if (!mesh) return mesh;
      if (mesh->cells.empty()) continue;
      const double off = misfit(*mesh, outline, pitch.across);
      if (best && off >= bestMisfit) continue;
      bestMisfit = off;
      best = std::move(*mesh);
    }
  if (!best)
    return impossibleKnot("The outline is too narrow for cells of this size: raise the AutoGrid value");
  dropSpecks(*best, outline);
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
  const Result<Outline> outline = Outline::of(shape, mapping);
  if (!outline) return outline.error();
  const Pitch pitch(outline->box(), options);
  Result<CellMesh> mesh = bestMesh(*outline, pitch);
  if (!mesh) return mesh.error();
  if (mesh->sides().size() > kMostAutoGridLines) {
    makeLines(graph, *mesh, latticePlaces(*mesh));
    if (const Status made = finishLines(graph); !made) graph.TooManyLines = false;
    return refused(kTooComplicated);
  }
  const std::vector<PointI> at = fitBorder(*mesh, *outline, pitch.across);
  makeLines(graph, *mesh, at);
  return finishLines(graph);
}

}  // namespace lorivan
