#include "custom/mesh_quality.h"

#include <algorithm>

namespace lorivan {
namespace {

std::vector<Spot> spots(const std::vector<PointI>& at) {
  std::vector<Spot> all;
  for (const PointI p : at) all.push_back({static_cast<double>(p.x), static_cast<double>(p.y)});
  return all;
}

double areaOf(const MeshCell& cell, const std::vector<Spot>& nodes) {
  const auto corner = [&](int k) { return nodes[cell.node[static_cast<std::size_t>(k % cell.corners)]]; };
  double twice = 0;
  for (int k = 0; k < cell.corners; ++k) twice += cross(corner(k), corner(k + 1));
  return twice / 2;
}

/// The cells at each of some level lines that cut the box in strips.
std::vector<std::vector<int>> cellsAtLines(const CellMesh& mesh, const std::vector<Spot>& nodes,
                                           const GridBox& box, int lines) {
  std::vector<std::vector<int>> all(static_cast<std::size_t>(lines));
  const double strip = (box.top - box.bottom) / lines;
  for (int i = 0; i < static_cast<int>(mesh.cells.size()); ++i) {
    const MeshCell& cell = mesh.cells[i];
    double low = 1e30, high = -1e30;
    for (int k = 0; k < cell.corners; ++k) {
      const double y = nodes[cell.node[static_cast<std::size_t>(k)]].y;
      low = std::min(low, y);
      high = std::max(high, y);
    }
    const int first = std::max(0, static_cast<int>((low - box.bottom) / strip));
    const int last = std::min(lines - 1, static_cast<int>((high - box.bottom) / strip));
    for (int line = first; line <= last; ++line) all[line].push_back(i);
  }
  return all;
}

void measureAreas(MeshQuality& quality, const CellMesh& mesh, const std::vector<Spot>& nodes,
                  const Outline& outline) {
  constexpr int kLines = 200;
  const GridBox& box = outline.box();
  const auto cells = cellsAtLines(mesh, nodes, box, kLines);
  double inside = 0, filled = 0, covered = 0;
  for (int line = 0; line < kLines; ++line) {
    const double y = box.bottom + (line + 0.5) * (box.top - box.bottom) / kLines;
    const std::vector<double> places = outline.crossingsAt(y);
    inside += CellSpan{-1e30, 1e30}.inside(places);
    for (const int cell : cells[line]) {
      const CellSpan span = spanAt(mesh.cells[cell], nodes, y);
      covered += span.to - span.from;
      filled += span.inside(places);
    }
  }
  if (inside <= 0) return;
  quality.filled = std::min(1.0, filled / inside);
  quality.beyond = (covered - filled) / inside;
}

}  // namespace

MeshQuality qualityOf(const CellMesh& mesh, const std::vector<PointI>& at, const Outline& outline,
                      const Lattice& lattice) {
  const std::vector<Spot> nodes = spots(at);
  MeshQuality quality;
  measureAreas(quality, mesh, nodes, outline);
  for (const MeshCell& cell : mesh.cells) {
    // A square that was cut is half a cell.
    const double regular = lattice.cellArea() * (!lattice.triangles && cell.corners == 3 ? 0.5 : 1);
    const double off = areaOf(cell, nodes) / regular - 1;
    quality.uneven += off * off / static_cast<double>(mesh.cells.size());
  }
  const std::vector<bool> far = nodesFarOutside(mesh, at, outline, lattice.across);
  quality.farOutside = static_cast<int>(std::ranges::count(far, true));
  return quality;
}

std::vector<bool> nodesFarOutside(const CellMesh& mesh, const std::vector<PointI>& at, const Outline& outline,
                                  double cellSide) {
  const std::vector<Spot> nodes = spots(at);
  std::vector<bool> used(nodes.size(), false), far = used;
  for (const MeshCell& cell : mesh.cells)
    for (int k = 0; k < cell.corners; ++k) used[cell.node[static_cast<std::size_t>(k)]] = true;
  for (std::size_t node = 0; node < nodes.size(); ++node)
    far[node] = used[node] && !outline.contains(nodes[node]) &&
                outline.sidesNear(nodes[node], kMostOutside * cellSide).empty();
  return far;
}

}  // namespace lorivan
