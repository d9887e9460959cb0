#include "custom/border_fit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "base/numbers.h"
#include "custom/mesh_quality.h"

namespace lorivan {
namespace {

// Limits of a well-shaped cell; degrees, and sides in cells.
constexpr double kLeastAngle = 28, kMostAngle = 152, kLeastSide = 0.4;
constexpr double kFlatAngle = 146;  // a free corner of a square as flat as this is cut off
constexpr double kFlatEar = 112;    // a triangle whose free corner is as flat as this is dropped
constexpr double kReach = 1.3;      // how far a node looks for the outline, cells
constexpr int kEasedLayers = 4;     // nodes this deep below the border give way to it
constexpr int kRounds = 40;
constexpr double kStride = 0.6;
constexpr double kGrain = 1.0 / 16;  // of a cell: tells the places of a lattice apart

class BorderFit {
 public:
  BorderFit(CellMesh& mesh, const Outline& outline, std::span<const OutlineCorner> corners, double cellSide,
            const Symmetries& group)
      : mesh_(mesh),
        outline_(outline),
        corners_(corners),
        cell_(cellSide),
        group_(group),
        images_(mesh.nodes, group, kGrain * cellSide) {
    if (images_.complete()) return;
    group_.resize(1);
    images_ = Images(mesh.nodes, group_, kGrain * cellSide);
  }

  std::vector<PointI> run() {
    ease();
    if (cutFlatCorners()) ease();
    std::vector<PointI> at = settle();
    for (CellMesh before = mesh_; dropFarOutside(at); before = mesh_) {
      if (mesh_.cells.empty()) {
        mesh_ = std::move(before);
        return at;
      }
      ease();
      at = settle();
    }
    return at;
  }

 private:
  struct BorderNode {
    int node = 0;
    std::vector<int> sides;  // of the outline, within reach
    bool pinned = false;     // goes to `corner`
    Spot corner;
  };

  Spot lattice(int node) const { return mesh_.nodes[node]; }
  Spot& place(int node) { return places_[node]; }
  Spot place(int node) const { return places_[node]; }

  void ease();
  void findNeighbours();
  void findDepths(const MeshBorder& border);
  void findBorderNodes(const MeshBorder& border);
  void pinCorners();
  BorderNode* nodeForCorner(Spot corner, std::vector<int>& stabiliser);
  void average(std::vector<Spot>& places) const;
  Spot borderGoal(const BorderNode& b, const MeshBorder& border) const;
  Spot innerGoal(int node) const;
  int flatFreeCorner(const MeshCell& cell, double limit) const;
  int nodeToCut(const MeshCell& cell, int number, const Images& cells) const;
  bool cutFlatCorners();
  double angleAt(const MeshCell& cell, int k) const;

  std::vector<PointI> settle();
  PointI whole(int node) const;
  std::vector<PointI> wholePlaces() const;
  bool markBadCorners(const MeshCell& cell, const std::vector<PointI>& at, std::vector<bool>& bad) const;
  std::vector<bool> nodesAtFault(const std::vector<PointI>& at, bool wholeCells) const;
  int outermost(const std::vector<int>& cells) const;
  bool dropFarOutside(const std::vector<PointI>& at);
  void markBorderCrossings(const MeshBorder& border, const std::vector<PointI>& at,
                           std::vector<bool>& bad) const;

  CellMesh& mesh_;
  const Outline& outline_;
  std::span<const OutlineCorner> corners_;
  double cell_;
  Symmetries group_;
  Images images_;  // of the nodes
  std::vector<Spot> places_;
  std::vector<std::vector<int>> neighbours_;
  std::vector<int> depth_;  // 0 on the border
  std::vector<BorderNode> border_;
  std::vector<int> cellsAt_;  // how many cells meet at each node
  std::vector<bool> pinned_;
  std::vector<double> share_;  // of the way from the lattice to the place, 1 down to 0
};

void BorderFit::findNeighbours() {
  neighbours_.assign(mesh_.nodes.size(), {});
  for (const auto& [a, b] : mesh_.sides()) {
    neighbours_[a].push_back(b);
    neighbours_[b].push_back(a);
  }
}

void BorderFit::findDepths(const MeshBorder& border) {
  depth_.assign(mesh_.nodes.size(), -1);
  std::vector<int> queue;
  for (std::size_t node = 0; node < mesh_.nodes.size(); ++node)
    if (border.contains(static_cast<int>(node))) {
      depth_[node] = 0;
      queue.push_back(static_cast<int>(node));
    }
  for (std::size_t i = 0; i < queue.size(); ++i)
    for (const int next : neighbours_[queue[i]])
      if (int& depth = depth_[next]; depth < 0) {
        depth = depth_[queue[i]] + 1;
        queue.push_back(next);
      }
}

void BorderFit::findBorderNodes(const MeshBorder& border) {
  border_.clear();
  for (int node = 0; node < static_cast<int>(mesh_.nodes.size()); ++node)
    if (border.contains(node))
      border_.push_back({node, outline_.sidesNear(lattice(node), kReach * cell_), false, {}});
}

/// The free border node nearest to a corner, within reach; null when there is none. What leaves the corner in
/// place has to leave the node in place, too: `stabiliser` gets the numbers of those symmetries.
BorderFit::BorderNode* BorderFit::nodeForCorner(Spot corner, std::vector<int>& stabiliser) {
  stabiliser.clear();
  for (std::size_t g = 0; g < group_.size(); ++g)
    if (distance(group_[g](corner), corner) < 0.5 * cell_) stabiliser.push_back(static_cast<int>(g));
  BorderNode* nearest = nullptr;
  for (BorderNode& b : border_) {
    if (b.pinned || distance(lattice(b.node), corner) > kCornerReach * cell_ ||
        std::ranges::any_of(stabiliser,
                            [&](int g) { return images_.of(static_cast<std::size_t>(g), b.node) != b.node; }))
      continue;
    if (nearest == nullptr || distance(lattice(b.node), corner) < distance(lattice(nearest->node), corner))
      nearest = &b;
  }
  return nearest;
}

/// Puts the nearest border node on each sharp corner of the outline, and the node's images on the corner's.
void BorderFit::pinCorners() {
  std::vector<int> stabiliser;
  std::vector<Spot> done;
  for (const OutlineCorner& corner : corners_) {
    if (std::ranges::any_of(done, [&](Spot p) { return distance(p, corner.at) < 0.5 * cell_; })) continue;
    const BorderNode* const nearest = nodeForCorner(corner.at, stabiliser);
    if (nearest == nullptr) continue;
    Spot middle;
    for (const int g : stabiliser)
      middle = middle + (1.0 / static_cast<double>(stabiliser.size())) * group_[g](corner.at);
    const int node = nearest->node;
    for (std::size_t g = 0; g < group_.size(); ++g) {
      done.push_back(group_[g](middle));
      for (BorderNode& b : border_)
        if (b.node == images_.of(g, node)) {
          b.pinned = true;
          b.corner = done.back();
        }
    }
  }
}

/// Every place becomes the mean of what its images stand for.
void BorderFit::average(std::vector<Spot>& places) const {
  if (group_.size() == 1) return;
  std::vector<Spot> means(places.size());
  for (std::size_t node = 0; node < places.size(); ++node) {
    if (images_.leader(static_cast<int>(node)) != static_cast<int>(node)) continue;
    const auto image = [&](std::size_t g) {
      return static_cast<std::size_t>(images_.of(g, static_cast<int>(node)));
    };
    Spot sum;
    for (std::size_t g = 0; g < group_.size(); ++g) sum = sum + group_[g].back(places[image(g)]);
    const Spot mean = (1.0 / static_cast<double>(group_.size())) * sum;
    for (std::size_t g = 0; g < group_.size(); ++g) means[image(g)] = group_[g](mean);
  }
  places.swap(means);
}

/// On the outline, drawn a little towards the middle between its neighbours.
Spot BorderFit::borderGoal(const BorderNode& b, const MeshBorder& border) const {
  if (b.pinned) return b.corner;
  const Spot between = 0.5 * (place(border.before[b.node]) + place(border.after[b.node]));
  const Spot here = place(b.node);
  const Spot wish = here + 0.3 * (between - here) + 0.05 * (lattice(b.node) - here);
  return outline_.nearest(wish, b.sides).value_or(lattice(b.node));
}

/// The mean of the neighbours, the nearer to the lattice the deeper it lies.
Spot BorderFit::innerGoal(int node) const {
  constexpr std::array<double, kEasedLayers> kAnchor = {0, 0.1, 0.3, 0.6};
  Spot sum;
  const std::vector<int>& around = neighbours_[node];
  for (const int next : around) sum = sum + place(next);
  const double anchor = kAnchor[depth_[static_cast<std::size_t>(node)]];
  return (1 - anchor) / static_cast<double>(around.size()) * sum + anchor * lattice(node);
}

void BorderFit::ease() {
  const MeshBorder border(mesh_);
  findNeighbours();
  findDepths(border);
  findBorderNodes(border);
  pinCorners();
  cellsAt_.clear();
  for (const auto& cells : mesh_.cellsAtNodes()) cellsAt_.push_back(static_cast<int>(cells.size()));
  pinned_.assign(mesh_.nodes.size(), false);
  for (const BorderNode& b : border_) pinned_[b.node] = b.pinned;
  places_ = mesh_.nodes;
  std::vector<Spot> next = places_;
  for (int round = 0; round < kRounds; ++round) {
    for (const BorderNode& b : border_)
      next[b.node] = place(b.node) + kStride * (borderGoal(b, border) - place(b.node));
    for (std::size_t node = 0; node < places_.size(); ++node)
      if (depth_[node] > 0 && depth_[node] < kEasedLayers)
        next[node] = places_[node] + kStride * (innerGoal(static_cast<int>(node)) - places_[node]);
    average(next);
    places_.swap(next);
  }
}

double BorderFit::angleAt(const MeshCell& cell, int k) const {
  const auto node = [&](int i) { return place(cell.node[i % cell.corners]); };
  const Spot here = node(k), ahead = node(k + 1) - here, behind = node(k + cell.corners - 1) - here;
  const double angle = degreesBetween(ahead, behind);
  return cross(ahead, behind) < 0 ? 360 - angle : angle;
}

/// The unpinned corner of a cell that belongs to no other cell and lies flattest, if it is flatter than
/// `limit`; -1 when there is none.
int BorderFit::flatFreeCorner(const MeshCell& cell, double limit) const {
  int flattest = -1;
  for (int k = 0; k < cell.corners; ++k) {
    const auto node = static_cast<std::size_t>(cell.node[k]);
    if (cellsAt_[node] != 1 || pinned_[node] || angleAt(cell, k) <= limit) continue;
    if (flattest < 0 || angleAt(cell, k) > angleAt(cell, flattest)) flattest = k;
  }
  return flattest;
}

/// The node to cut off a cell, or -1. Where a symmetry leaves the cell in place it has to leave that node,
/// too.
int BorderFit::nodeToCut(const MeshCell& cell, int number, const Images& cells) const {
  const bool lone = std::all_of(cell.node.begin(), cell.node.begin() + cell.corners,
                                [&](int node) { return cellsAt_[node] == 1; });
  const int flat = flatFreeCorner(cell, cell.corners == 4 ? kFlatAngle : kFlatEar);
  if (flat < 0 || lone) return -1;
  const int node = cell.node[flat];
  for (std::size_t g = 0; g < group_.size(); ++g)
    if (cells.of(g, number) == number && images_.of(g, node) != node) return -1;
  return node;
}

/// Squares become triangles; flat triangles go, where their base holds two other cells.
bool BorderFit::cutFlatCorners() {
  const Images cells = mesh_.cellImages(group_, cell_);
  std::vector<int> cutAt(mesh_.cells.size(), -1);
  for (int i = 0; i < static_cast<int>(mesh_.cells.size()); ++i) {
    if (cells.leader(i) != i) continue;
    const int node = nodeToCut(mesh_.cells[i], i, cells);
    for (std::size_t g = 0; g < group_.size() && node >= 0; ++g) cutAt[cells.of(g, i)] = images_.of(g, node);
  }
  std::vector<MeshCell> kept;
  for (std::size_t i = 0; i < cutAt.size(); ++i) {
    MeshCell cell = mesh_.cells[i];
    if (cutAt[i] >= 0 && cell.corners == 3) continue;
    if (cutAt[i] >= 0) {
      std::rotate(cell.node.begin(), std::ranges::find(cell.node, cutAt[i]) + 1, cell.node.end());
      cell.corners = 3;
    }
    kept.push_back(cell);
  }
  if (kept.empty()) return false;
  mesh_.cells = std::move(kept);
  return std::ranges::any_of(cutAt, [](int node) { return node >= 0; });
}

/// The whole place nearest to a node's that those of the node's own symmetries that keep whole places leave
/// there.
PointI BorderFit::whole(int node) const {
  const Spot at = lattice(node) + share_[node] * (place(node) - lattice(node));
  PointI best{toInt32(at.x), toInt32(at.y)};
  const PointI middle = best;
  double least = 1e30;
  for (int dx = -1; dx <= 1; ++dx)
    for (int dy = -1; dy <= 1; ++dy) {
      const PointI p{middle.x + dx, middle.y + dy};
      const double off = std::hypot(p.x - at.x, p.y - at.y);
      const auto leaves = [&](std::size_t g) {
        if (!group_[g].keepsWhole() || images_.of(g, node) != node) return true;
        const PointI image = group_[g](p);
        return image.x == p.x && image.y == p.y;
      };
      bool fits = off < least;
      for (std::size_t g = 1; g < group_.size() && fits; ++g) fits = leaves(g);
      if (!fits) continue;
      least = off;
      best = p;
    }
  return best;
}

/// Where all nodes are; images are rounded as one where they can be.
std::vector<PointI> BorderFit::wholePlaces() const {
  std::vector<PointI> at(mesh_.nodes.size());
  std::vector<bool> found(at.size(), false);
  for (int node = 0; node < static_cast<int>(at.size()); ++node) {
    if (found[node]) continue;
    const PointI p = whole(node);
    for (std::size_t g = 0; g < group_.size(); ++g) {
      if (!group_[g].keepsWhole()) continue;
      const auto image = static_cast<std::size_t>(images_.of(g, node));
      at[image] = group_[g](p);
      found[image] = true;
    }
  }
  return at;
}

/// Marks the corners at which a cell is not well shaped; false when it is.
bool BorderFit::markBadCorners(const MeshCell& cell, const std::vector<PointI>& at,
                               std::vector<bool>& bad) const {
  const auto spot = [&](int k) {
    const PointI p = at[cell.node[static_cast<std::size_t>(k % cell.corners)]];
    return Spot{static_cast<double>(p.x), static_cast<double>(p.y)};
  };
  bool any = false;
  for (int k = 0; k < cell.corners; ++k) {
    const Spot here = spot(k), ahead = spot(k + 1) - here, behind = spot(k + cell.corners - 1) - here;
    const double angle = degreesBetween(ahead, behind);
    if (cross(ahead, behind) > 0 && angle >= kLeastAngle && angle <= kMostAngle &&
        std::min(length(ahead), length(behind)) >= kLeastSide * cell_)
      continue;
    bad[cell.node[static_cast<std::size_t>(k)]] = any = true;
  }
  return any;
}

/// Nodes to be drawn back: at first only those where a cell's shape is at fault, later the whole cell.
std::vector<bool> BorderFit::nodesAtFault(const std::vector<PointI>& at, bool wholeCells) const {
  std::vector<bool> bad(mesh_.nodes.size(), false);
  for (const MeshCell& cell : mesh_.cells)
    if (markBadCorners(cell, at, bad) && wholeCells)
      for (int k = 0; k < cell.corners; ++k) bad[cell.node[static_cast<std::size_t>(k)]] = true;
  return bad;
}

/// Marks the ends of border sides that cross or touch another part of the border: cells may be well shaped
/// while two arms of the mesh overlap.
void BorderFit::markBorderCrossings(const MeshBorder& border, const std::vector<PointI>& at,
                                    std::vector<bool>& bad) const {
  struct Side {
    int from, to;
    Spot a, b;
    double left() const { return std::min(a.x, b.x); }
  };
  const auto spot = [&](int n) {
    const PointI p = at[n];
    return Spot{static_cast<double>(p.x), static_cast<double>(p.y)};
  };
  std::vector<Side> sides;
  sides.reserve(border_.size());
  for (const BorderNode& b : border_) {
    const int to = border.after[b.node];
    sides.push_back({b.node, to, spot(b.node), spot(to)});
  }
  std::ranges::sort(sides, {}, &Side::left);
  const auto apart = [&](Spot a, Spot b, Spot c, Spot d) {  // whether c and d lie on one side of a-b
    const double p = cross(b - a, c - a), q = cross(b - a, d - a);
    return (p > 0 && q > 0) || (p < 0 && q < 0);
  };
  for (auto one = sides.begin(); one != sides.end(); ++one) {
    const double right = std::max(one->a.x, one->b.x), low = std::min(one->a.y, one->b.y),
                 high = std::max(one->a.y, one->b.y);
    for (auto other = one + 1; other != sides.end() && other->left() <= right; ++other)
      if (std::max(other->a.y, other->b.y) >= low && std::min(other->a.y, other->b.y) <= high &&
          one->from != other->to && one->to != other->from && !apart(one->a, one->b, other->a, other->b) &&
          !apart(other->a, other->b, one->a, one->b))
        for (const int node : {one->from, one->to, other->from, other->to}) bad[node] = true;
  }
}

/// Rounds to whole units. Nodes of cells that are not well shaped go back towards the lattice by steps; a
/// lattice of whole units is well shaped, so this ends.
std::vector<PointI> BorderFit::settle() {
  share_.assign(mesh_.nodes.size(), 1);
  const MeshBorder border(mesh_);
  for (bool wholeCells = false;;) {
    std::vector<PointI> at = wholePlaces();
    std::vector<bool> bad = nodesAtFault(at, wholeCells);
    markBorderCrossings(border, at, bad);
    images_.spread(bad);
    bool moved = false;
    for (std::size_t node = 0; node < bad.size(); ++node) {
      if (!bad[node] || share_[node] <= 0) continue;
      share_[node] = std::max(0.0, share_[node] - 0.125);
      moved = true;
    }
    if (moved) continue;
    if (wholeCells) return at;
    wholeCells = true;
  }
}

/// Of some cells the one whose lattice centre lies furthest outside, or least deep inside.
int BorderFit::outermost(const std::vector<int>& cells) const {
  int best = cells.front();
  double least = 1e30;
  for (const int cell : cells) {
    const Spot centre = mesh_.centreOf(mesh_.cells[cell]);
    const OutlineSide& side = outline_.sides()[outline_.nearestSide(centre)];
    const double depth =
        distance(centre, nearestOn(centre, side.a, side.b)) * (outline_.contains(centre) ? 1 : -1);
    if (depth >= least - 1e-9) continue;
    least = depth;
    best = cell;
  }
  return best;
}

/// Of the cells at each node that lies too far outside drops those that lie inside least; false when there
/// are none.
bool BorderFit::dropFarOutside(const std::vector<PointI>& at) {
  const std::vector<bool> far = nodesFarOutside(mesh_, at, outline_, cell_);
  if (std::ranges::find(far, true) == far.end()) return false;
  std::vector<bool> dropped(mesh_.cells.size(), false);
  const auto cellsAt = mesh_.cellsAtNodes();
  for (std::size_t node = 0; node < far.size(); ++node)
    if (far[node]) dropped[outermost(cellsAt[node])] = true;
  mesh_.cellImages(group_, cell_).spread(dropped);
  dropCells(mesh_, dropped);
  dropCornerHangers(mesh_, outline_, group_, cell_);
  return true;
}

}  // namespace

std::vector<PointI> fitBorder(CellMesh& mesh, const Outline& outline, std::span<const OutlineCorner> corners,
                              double cellSide, const Symmetries& group) {
  return BorderFit(mesh, outline, corners, cellSide, group).run();
}

}  // namespace lorivan
