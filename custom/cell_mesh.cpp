#include "custom/cell_mesh.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <utility>

#include "custom/groups.h"

namespace lorivan {
namespace {

constexpr int kSpeckCorners = 6;  // one square or two triangles

/// Numbers of a lattice's rows and columns that cover a box, one more on each side.
struct LatticeFrame {
  int columns = 0, rows = 0;
  Spot corner;  // node (0, 0)

  LatticeFrame(const GridBox& box, const Lattice& lattice) {
    const double left = std::floor((box.left - lattice.origin.x) / lattice.across) - 1;
    const double low = std::floor((box.bottom - lattice.origin.y) / lattice.rowStep) - 1;
    // Rows of triangles lie half a cell apart in turn: row 0 has to be one that the origin lies in step with.
    const double lowEven = lattice.triangles ? 2 * std::floor(low / 2) : low;
    corner = {lattice.origin.x + left * lattice.across, lattice.origin.y + lowEven * lattice.rowStep};
    columns = static_cast<int>(std::ceil((box.right - corner.x) / lattice.across)) + 1;
    rows = static_cast<int>(std::ceil((box.top - corner.y) / lattice.rowStep)) + 1;
  }

  int node(int column, int row) const { return row * (columns + 1) + column; }
};

/// Takes the cells that lie inside by a least share of their areas.
class CellFilter {
 public:
  CellFilter(CellMesh& mesh, const Outline& outline) : mesh_(mesh), outline_(outline) {}

  void add(const MeshCell& cell) {
    mesh_.cells.push_back(cell);
    shares_.push_back(shareInside(cell));
  }

  /// Leaves the cells inside. Images stay or go together, by their mean.
  void finish(const Symmetries& group, double cellSide, double leastShare) {
    const Images images = mesh_.cellImages(group, cellSide);
    std::vector<bool> stays(mesh_.cells.size(), false);
    for (int i = 0; i < static_cast<int>(stays.size()); ++i) {
      if (images.leader(i) != i) continue;
      double sum = 0;
      for (std::size_t g = 0; g < group.size(); ++g)
        sum += images.of(g, i) >= 0 ? shares_[images.of(g, i)] : 0;
      stays[i] = sum >= leastShare * static_cast<double>(group.size());
    }
    images.spread(stays);
    stays.flip();
    dropCells(mesh_, stays);
  }

 private:
  /// By level lines. The cells of a row have theirs in common.
  double shareInside(const MeshCell& cell) {
    constexpr int kLines = 6;
    double low = 1e30, high = -1e30;
    for (int k = 0; k < cell.corners; ++k) {
      const double y = mesh_.nodes[cell.node[static_cast<std::size_t>(k)]].y;
      low = std::min(low, y);
      high = std::max(high, y);
    }
    double inside = 0, whole = 0;
    for (int line = 0; line < kLines; ++line) {
      const double y = low + (line + 0.5) / kLines * (high - low);
      const CellSpan span = spanAt(cell, mesh_.nodes, y);
      whole += span.to - span.from;
      inside += span.inside(placesAt(y));
    }
    return inside / whole;
  }

  const std::vector<double>& placesAt(double y) {
    const auto [entry, added] = places_.try_emplace(y);
    if (added) entry->second = outline_.crossingsAt(y);
    return entry->second;
  }

  CellMesh& mesh_;
  const Outline& outline_;
  std::map<double, std::vector<double>> places_;
  std::vector<double> shares_;
};

void addSquares(CellFilter& filter, const LatticeFrame& f) {
  for (int row = 0; row < f.rows; ++row)
    for (int column = 0; column < f.columns; ++column)
      filter.add({{f.node(column, row), f.node(column + 1, row), f.node(column + 1, row + 1),
                   f.node(column, row + 1)},
                  4});
}

/// Odd rows of nodes are shifted to the right by half a cell.
void addTriangles(CellFilter& filter, const LatticeFrame& f) {
  for (int row = 0; row < f.rows; ++row)
    for (int column = 0; column < f.columns; ++column) {
      const int a = f.node(column, row), b = f.node(column + 1, row);
      const int c = f.node(column, row + 1), d = f.node(column + 1, row + 1);
      if (row % 2 == 0) {
        filter.add({{a, b, c, 0}, 3});
        filter.add({{b, d, c, 0}, 3});
      } else {
        filter.add({{a, d, c, 0}, 3});
        filter.add({{a, b, d, 0}, 3});
      }
    }
}

NodePair ordered(int a, int b) { return {std::min(a, b), std::max(a, b)}; }

/// The sides of a cell, in order.
template <class Visit>
void visitSides(const MeshCell& cell, Visit visit) {
  for (int k = 0; k < cell.corners; ++k) visit(cell.node[k], cell.node[(k + 1) % cell.corners]);
}

bool hasNode(const MeshCell& cell, int node) {
  return std::find(cell.node.begin(), cell.node.begin() + cell.corners, node) !=
         cell.node.begin() + cell.corners;
}

int sharedNodes(const MeshCell& a, const MeshCell& b) {
  int shared = 0;
  for (int k = 0; k < a.corners; ++k) shared += hasNode(b, a.node[k]) ? 1 : 0;
  return shared;
}

/// The cells at a node in fans: two cells of a fan are linked by sides that end on the node.
std::vector<std::vector<int>> fansAt(const CellMesh& mesh, std::vector<int> cells) {
  std::vector<std::vector<int>> fans;
  while (!cells.empty()) {
    std::vector<int> fan{cells.back()};
    cells.pop_back();
    for (std::size_t i = 0; i < fan.size(); ++i)
      for (std::size_t k = 0; k < cells.size();) {
        const auto& a = mesh.cells[fan[i]];
        if (sharedNodes(a, mesh.cells[cells[k]]) < 2) {
          ++k;
          continue;
        }
        fan.push_back(cells[k]);
        cells.erase(cells.begin() + static_cast<std::ptrdiff_t>(k));
      }
    fans.push_back(std::move(fan));
  }
  return fans;
}

/// How firmly a fan sits: cells in it, sides that its cells share with others, and how far inside they lie.
struct Hold {
  std::size_t cells = 0;
  int sides = 0;
  double depth = 0;

  bool weakerThan(const Hold& o) const {
    if (cells != o.cells) return cells < o.cells;
    if (sides != o.sides) return sides < o.sides;
    return depth < o.depth - 1e-6;
  }
};

/// Looks for places where cells touch at a corner without a chain of cells round it.
class CornerSearch {
 public:
  CornerSearch(const CellMesh& mesh, const Outline& outline)
      : mesh_(mesh), outline_(outline), atNodes_(mesh.cellsAtNodes()) {
    std::map<NodePair, int> cellsOfSide;
    for (const MeshCell& cell : mesh.cells)
      visitSides(cell, [&](int a, int b) { ++cellsOfSide[ordered(a, b)]; });
    for (const MeshCell& cell : mesh.cells) {
      shared_.push_back(0);
      visitSides(cell, [&](int a, int b) { shared_.back() += cellsOfSide[ordered(a, b)] - 1; });
    }
  }

  /// The cells to drop: first those that share no side with any other; when there are none, the weaker fans.
  /// Equals go together, so that a symmetric shape stays symmetric.
  std::vector<bool> hangers() const {
    std::vector<bool> hanging(mesh_.cells.size(), false);
    bool loners = false;
    for (const auto& cells : atNodes_)
      for (const int cell : cells)
        if (cells.size() > 1 && shared_[cell] == 0) loners = hanging[cell] = true;
    if (loners) return hanging;
    for (const auto& cells : atNodes_) markWeaker(fansAt(mesh_, cells), hanging);
    return hanging;
  }

 private:
  Hold holdOf(const std::vector<int>& fan) const {
    Hold hold{fan.size(), 0, 0};
    for (const int cell : fan) {
      hold.sides += shared_[cell];
      const Spot centre = mesh_.centreOf(mesh_.cells[cell]);
      const OutlineSide& side = outline_.sides()[outline_.nearestSide(centre)];
      hold.depth += distance(centre, nearestOn(centre, side.a, side.b));
    }
    return hold;
  }

  void markWeaker(const std::vector<std::vector<int>>& fans, std::vector<bool>& hanging) const {
    if (fans.size() < 2) return;
    std::vector<Hold> holds;
    holds.reserve(fans.size());
    for (const auto& fan : fans) holds.push_back(holdOf(fan));
    const Hold firmest = *std::max_element(holds.begin(), holds.end(),
                                           [](const Hold& a, const Hold& b) { return a.weakerThan(b); });
    const auto firm = std::count_if(holds.begin(), holds.end(),
                                    [&](const Hold& hold) { return !hold.weakerThan(firmest); });
    for (std::size_t i = 0; i < fans.size(); ++i)
      if (firm > 1 || holds[i].weakerThan(firmest))
        for (const int cell : fans[i]) hanging[cell] = true;
  }

  const CellMesh& mesh_;
  const Outline& outline_;
  std::vector<std::vector<int>> atNodes_;
  std::vector<int> shared_;  // sides of each cell that another cell has, too
};

void dropUnusedNodes(CellMesh& mesh) {
  std::vector<int> number(mesh.nodes.size(), -1);
  std::vector<Spot> used;
  for (MeshCell& cell : mesh.cells)
    for (int k = 0; k < cell.corners; ++k) {
      int& node = cell.node[k];
      int& at = number[node];
      if (at < 0) {
        at = static_cast<int>(used.size());
        used.push_back(mesh.nodes[node]);
      }
      node = at;
    }
  mesh.nodes = std::move(used);
}

}  // namespace

std::vector<std::vector<int>> CellMesh::cellsAtNodes() const {
  std::vector<std::vector<int>> at(nodes.size());
  for (std::size_t i = 0; i < cells.size(); ++i)
    for (int k = 0; k < cells[i].corners; ++k)
      at[cells[i].node[static_cast<std::size_t>(k)]].push_back(static_cast<int>(i));
  return at;
}

Spot CellMesh::centreOf(const MeshCell& cell) const {
  Spot sum;
  for (int k = 0; k < cell.corners; ++k) sum = sum + nodes[cell.node[static_cast<std::size_t>(k)]];
  return (1.0 / cell.corners) * sum;
}

Images CellMesh::cellImages(const Symmetries& group, double cellSide) const {
  std::vector<Spot> centres;
  for (const MeshCell& cell : cells) centres.push_back(centreOf(cell));
  return Images(centres, group, cellSide / 16);
}

std::vector<NodePair> CellMesh::sides() const {
  std::vector<NodePair> all;
  for (const MeshCell& cell : cells) visitSides(cell, [&](int a, int b) { all.push_back(ordered(a, b)); });
  std::sort(all.begin(), all.end());
  all.erase(std::unique(all.begin(), all.end()), all.end());
  return all;
}

bool Lattice::hasNode(Spot p) const {
  constexpr double kNear = 1e-6;
  const double row = (p.y - origin.y) / rowStep, whole = std::round(row);
  const double shift = triangles && std::fmod(whole, 2) != 0 ? 0.5 : 0;
  const double column = (p.x - origin.x) / across - shift;
  return std::fabs(row - whole) < kNear && std::fabs(column - std::round(column)) < kNear;
}

double CellSpan::inside(const std::vector<double>& places) const {
  double sum = 0;
  for (std::size_t i = 0; i + 1 < places.size(); i += 2)
    sum += std::max(0.0, std::min(to, places[i + 1]) - std::max(from, places[i]));
  return sum;
}

CellSpan spanAt(const MeshCell& cell, const std::vector<Spot>& nodes, double y) {
  CellSpan span{1e30, -1e30};
  for (int k = 0; k < cell.corners; ++k) {
    const Spot a = nodes[cell.node[static_cast<std::size_t>(k)]];
    const Spot b = nodes[cell.node[static_cast<std::size_t>((k + 1) % cell.corners)]];
    if ((a.y > y) == (b.y > y)) continue;
    const double x = a.x + (y - a.y) / (b.y - a.y) * (b.x - a.x);
    span = {std::min(span.from, x), std::max(span.to, x)};
  }
  return span.from < span.to ? span : CellSpan{};
}

Result<CellMesh> fillOutline(const Outline& outline, const Lattice& lattice, double leastShare, int mostCells,
                             const Symmetries& group) {
  const LatticeFrame frame(outline.box(), lattice);
  if (static_cast<double>(frame.columns) * frame.rows > mostCells)
    return impossibleKnot("The outline is too large for cells of this size");
  CellMesh mesh;
  for (int row = 0; row <= frame.rows; ++row)
    for (int column = 0; column <= frame.columns; ++column) {
      const double shift = lattice.triangles && row % 2 != 0 ? 0.5 : 0;
      mesh.nodes.push_back(frame.corner + Spot{(column + shift) * lattice.across, row * lattice.rowStep});
    }
  CellFilter filter(mesh, outline);
  lattice.triangles ? addTriangles(filter, frame) : addSquares(filter, frame);
  filter.finish(group, lattice.across, leastShare);
  dropCornerHangers(mesh, outline, group, lattice.across);
  dropUnusedNodes(mesh);
  return mesh;
}

void dropCells(CellMesh& mesh, const std::vector<bool>& dropped) {
  std::vector<MeshCell> kept;
  for (std::size_t i = 0; i < mesh.cells.size(); ++i)
    if (!dropped[i]) kept.push_back(mesh.cells[i]);
  mesh.cells = std::move(kept);
}

void dropCornerHangers(CellMesh& mesh, const Outline& outline, const Symmetries& group, double cellSide) {
  for (std::size_t before = 0; before != mesh.cells.size();) {
    before = mesh.cells.size();
    std::vector<bool> hanging = CornerSearch(mesh, outline).hangers();
    mesh.cellImages(group, cellSide).spread(hanging);
    dropCells(mesh, hanging);
  }
}

void dropSpecks(CellMesh& mesh, const Outline& outline, const Images& images) {
  Groups islands(mesh.cells.size());
  std::map<NodePair, int> firstOn;
  for (int cell = 0; cell < static_cast<int>(mesh.cells.size()); ++cell)
    visitSides(mesh.cells[cell], [&](int a, int b) {
      islands.join(cell, firstOn.try_emplace(ordered(a, b), cell).first->second);
    });
  std::map<int, int> corners;  // of an island's cells, by its leading cell
  for (int cell = 0; cell < static_cast<int>(mesh.cells.size()); ++cell)
    corners[islands.of(cell)] += mesh.cells[cell].corners;
  const auto isSpeck = [&](int cell) { return corners[islands.of(cell)] <= kSpeckCorners; };
  const auto isLarge = [&](int cell) { return corners[islands.of(cell)] > 4 * kSpeckCorners; };
  if (std::none_of(corners.begin(), corners.end(), [](auto& c) { return c.second <= kSpeckCorners; })) return;
  const std::vector<int> parts = outline.parts();
  const auto partAt = [&](int cell) {
    const Spot centre = mesh.centreOf(mesh.cells[cell]);
    return parts[outline.nearestSide(centre)];
  };
  std::set<int> held;  // parts with a large island
  for (int cell = 0; cell < static_cast<int>(mesh.cells.size()); ++cell)
    if (isLarge(cell)) held.insert(partAt(cell));
  std::vector<bool> dropped;
  for (int cell = 0; cell < static_cast<int>(mesh.cells.size()); ++cell)
    dropped.push_back(isSpeck(cell) && held.count(partAt(cell)) != 0);
  images.spread(dropped);
  dropCells(mesh, dropped);
  dropUnusedNodes(mesh);
}

MeshBorder::MeshBorder(const CellMesh& mesh) : before(mesh.nodes.size(), -1), after(mesh.nodes.size(), -1) {
  std::map<NodePair, int> cellsOfSide;
  for (const MeshCell& cell : mesh.cells)
    visitSides(cell, [&](int a, int b) { ++cellsOfSide[ordered(a, b)]; });
  for (const MeshCell& cell : mesh.cells)
    visitSides(cell, [&](int a, int b) {
      if (cellsOfSide[ordered(a, b)] != 1) return;
      after[a] = b;
      before[b] = a;
    });
}

}  // namespace lorivan
