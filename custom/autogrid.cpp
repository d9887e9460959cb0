#include "custom/autogrid.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "base/numbers.h"
#include "custom/border_fit.h"
#include "custom/cell_mesh.h"
#include "custom/mesh_quality.h"
#include "custom/outline.h"
#include "custom/planar_grid.h"

namespace lorivan {
namespace {

constexpr std::string_view kTooNarrow =
    "The outline is too narrow for cells of this size: raise the AutoGrid value";
constexpr double kLeastFilled = 0.25;       // specks in an outline are no grid
constexpr double kLeastPitch = 1.95;        // grid units: with less, rounding to whole units shows
constexpr double kSymmetryTolerance = 1.5;  // grid units: joining near points moves an outline by up to 1.4
constexpr int kMostCells = 100000;
constexpr double kTriangleHeight = 0.8660254037844386;

struct Pitch {
  double across = 0, rows = 0;  // grid units
  int gridSize = 1;
  bool triangles = false;

  Pitch(const GridBox& box, const AutoGridOptions& options) : triangles(options.triangles) {
    const double longer = std::max(box.right - box.left, box.top - box.bottom);
    gridSize = std::clamp(options.gridSize, 1, 100);
    across = std::max(longer / gridSize, kLeastPitch);
    rows = triangles ? across * kTriangleHeight : across;
  }

  /// With so much more than gridSize cells along the box.
  Pitch changed(double more) const {
    Pitch other = *this;
    const double factor = gridSize / (gridSize + more);
    other.across *= factor;
    other.rows *= factor;
    return other;
  }

  /// With a node at the centre, or off it by parts of a cell.
  Lattice lattice(Spot centre, Spot shift) const {
    return {triangles, centre + Spot{shift.x * across, shift.y * rows}, across, rows};
  }
};

bool allows(const Lattice& lattice, const Symmetries& group) {
  return std::ranges::all_of(group, [&](const Isometry& map) {
    return lattice.hasNode(map(lattice.origin)) &&
           lattice.hasNode(map(lattice.origin + Spot{lattice.across, 0})) &&
           lattice.hasNode(
               map(lattice.origin + Spot{lattice.triangles ? lattice.across / 2 : 0, lattice.rowStep}));
  });
}

/// Moves the outline by less than a unit, so that the group's centre, and what mirrors it, is whole.
Outline withWholeMiddle(const Outline& outline, Symmetries& group) {
  const Spot middle = group[0].centre, whole{roundHalfEven(middle.x), roundHalfEven(middle.y)};
  std::vector<OutlineSide> sides;
  for (const auto& [a, b] : outline.sides()) sides.push_back({a + whole - middle, b + whole - middle});
  for (Isometry& map : group) map.centre = whole;
  return Outline(std::move(sides));
}

/// What is filled, and the sharp corners that cells are drawn into.
struct Ground {
  Outline outline;
  std::vector<OutlineCorner> corners;

  Ground(Outline drawn, double cell)
      : outline(std::move(drawn)), corners(outline.corners(kCornerSpan * cell, kSharpTurn)) {}
};

/// Sharp corners on an axis of the outline that no border node of the mesh can be put on, since none near
/// lies on that axis.
int lostCorners(const CellMesh& mesh, const MeshBorder& border, std::span<const OutlineCorner> corners,
                double cell, const Symmetries& group) {
  int lost = 0;
  for (const OutlineCorner& corner : corners)
    for (std::size_t g = 1; g < group.size(); ++g) {
      if (distance(group[g](corner.at), corner.at) > cell / 2) continue;
      const auto fits = [&](int node) {
        const Spot at = mesh.nodes[node];
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
double misfit(const CellMesh& mesh, const Ground& ground, double cell, const Symmetries& group) {
  const Outline& outline = ground.outline;
  const MeshBorder border(mesh);
  double sum = lostCorners(mesh, border, ground.corners, cell, group);
  int count = 0;
  for (int node = 0; node < static_cast<int>(mesh.nodes.size()); ++node) {
    if (!border.contains(node)) continue;
    const Spot at = mesh.nodes[node];
    const auto nearest = outline.nearest(at, outline.sidesNear(at, 2 * cell));
    const double off = nearest ? distance(at, *nearest) / cell : 2;
    sum += off * off;
    ++count;
  }
  return count == 0 ? std::numeric_limits<double>::max() : sum / count;
}

/// Where a node may lie off the centre, parts of a cell: triangles may have a cell there, too.
constexpr Spot kShifts[] = {{0, 0}, {0.5, 0}, {0, 0.5}, {0.5, 0.5}};
constexpr Spot kTriangleShifts[] = {{0, 0}, {0.5, 0}, {0, 0.5}, {0.5, 0.5}, {-0.5, -1.0 / 3}, {0, -2.0 / 3}};

/// How much of a cell has to lie inside.
constexpr double kUsualShare = 0.5, kOtherShares[] = {0.4, 0.62, 0.3};

/// For turns by a third, which few lattices allow, other cells, nearer to those of gridSize than of the next.
constexpr double kOtherSizes[] = {0.3, -0.25};

/// What is tried besides where those leave more of the outline empty than this.
constexpr double kWellFilled = 0.94;
constexpr double kMoreShares[] = {0.22, 0.45, 0.55}, kMoreSizes[] = {0.15, -0.12, 0.45, -0.4};
constexpr Spot kMoreShifts[] = {{0.25, 0},    {0.75, 0},    {0, 0.25},    {0, 0.75},
                                {0.25, 0.25}, {0.75, 0.25}, {0.25, 0.75}, {0.75, 0.75},
                                {0.25, 0.5},  {0.75, 0.5},  {0.5, 0.25},  {0.5, 0.75}};

struct Candidate {
  Lattice lattice;
  CellMesh mesh;
  double misfit = 0;
};

/// The meshes of lattices that are as symmetric as the group, those that lie best first; none where the
/// outline is too narrow.
Result<std::vector<Candidate>> candidates(const Ground& ground, const Pitch& pitch, const Symmetries& group,
                                          std::span<const Spot> shifts) {
  std::vector<Candidate> all;
  for (const Spot shift : shifts) {
    const Lattice lattice = pitch.lattice(group[0].centre, shift);
    if (!allows(lattice, group)) continue;
    Result<CellMesh> mesh = fillOutline(ground.outline, lattice, kUsualShare, kMostCells, group);
    if (!mesh) return mesh.error();
    if (mesh->cells.empty()) continue;
    const double off = misfit(*mesh, ground, pitch.across, group);
    all.push_back({lattice, std::move(*mesh), off});
  }
  std::ranges::stable_sort(all, {}, &Candidate::misfit);
  return all;
}

Result<std::vector<Candidate>> candidates(const Ground& ground, const Pitch& pitch, const Symmetries& group) {
  return candidates(ground, pitch, group, pitch.triangles ? std::span<const Spot>(kTriangleShifts) : kShifts);
}

struct Fitted {
  CellMesh mesh;
  std::vector<PointI> at;
  MeshQuality quality;
};

/// Draws meshes to the outline, as many as there is time for, and keeps the best.
class Contest {
 public:
  Contest(const Ground& ground, const Symmetries& group)
      : outline_(ground.outline), corners_(ground.corners), group_(group) {}

  void enter(std::vector<Candidate>& all) {
    for (Candidate& candidate : all)
      if (hasTime()) enter(candidate.lattice, std::move(candidate.mesh));
  }

  /// Meshes of the candidates' lattices whose cells have to lie inside by other shares.
  void enter(const std::vector<Candidate>& all, std::span<const double> shares) {
    for (const double share : shares)
      for (const Candidate& candidate : all)
        if (hasTime())
          if (auto mesh = fillOutline(outline_, candidate.lattice, share, kMostCells, group_); mesh)
            enter(candidate.lattice, std::move(*mesh));
  }

  bool hasTime() const { return cells_ < kCells; }
  bool isWellFilled() const { return best_ && best_->quality.filled >= kWellFilled; }
  std::optional<Fitted> best() { return std::move(best_); }

 private:
  static constexpr double kCells = 3500;

  void enter(const Lattice& lattice, CellMesh mesh) {
    if (mesh.cells.empty() || mesh.sides().size() > kMostAutoGridLines) return;
    const GridBox& box = outline_.box();
    cells_ += static_cast<double>(mesh.cells.size()) +
              0.25 * (box.right - box.left) * (box.top - box.bottom) / lattice.cellArea();
    dropSpecks(mesh, outline_, mesh.cellImages(group_, lattice.across));
    std::vector<PointI> at = fitBorder(mesh, outline_, corners_, lattice.across, group_);
    const MeshQuality quality = qualityOf(mesh, at, outline_, lattice);
    if (best_ && quality.faults() >= best_->quality.faults()) return;
    best_ = Fitted{std::move(mesh), std::move(at), quality};
  }

  const Outline& outline_;
  std::span<const OutlineCorner> corners_;
  const Symmetries& group_;
  double cells_ = 0;  // drawn to the outline, and looked at for it
  std::optional<Fitted> best_;
};

/// The first of the candidates has to be one that is not too complicated.
Result<Fitted> bestFit(std::vector<Candidate> all, const Ground& ground, const Pitch& pitch,
                       const Symmetries& group) {
  Contest contest(ground, group);
  const auto enterSizes = [&](std::span<const double> sizes) -> Status {
    for (const double off : sizes) {
      if (!contest.hasTime()) break;
      auto others = candidates(ground, pitch.changed(off), group);
      if (!others) return others.error();
      contest.enter(*others);
      contest.enter(*others, kOtherShares);
      all.insert(all.end(), others->begin(), others->end());
    }
    return {};
  };
  contest.enter(all);
  contest.enter(all, kOtherShares);
  if (std::ranges::any_of(group, [](const Isometry& map) { return !map.keepsWhole(); }))
    if (const Status entered = enterSizes(kOtherSizes); !entered) return entered.error();
  if (!contest.isWellFilled()) {
    std::vector<Candidate> shifted;
    for (const Spot& shift : kMoreShifts) {
      if (!contest.hasTime()) break;
      auto others = candidates(ground, pitch, group, std::span(&shift, 1));
      if (!others) return others.error();
      contest.enter(*others);
      shifted.insert(shifted.end(), others->begin(), others->end());
    }
    contest.enter(shifted, kOtherShares);
    if (const Status entered = enterSizes(kMoreSizes); !entered) return entered.error();
    contest.enter(all, kMoreShares);
  }
  return std::move(*contest.best());
}

void makeLines(KnotGraph& graph, const CellMesh& mesh, const std::vector<PointI>& at) {
  startLines(graph);
  for (const auto& [first, second] : mesh.sides()) {
    PointI a = at[first], b = at[second];
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

Result<AutoGridReport> AutoGrid(KnotGraph& graph, const CustomShape& shape, const GridView& view,
                                const AutoGridOptions& options) {
  const ShapeMapping mapping(shape, view);
  const Result<Outline> drawn = Outline::of(shape, mapping, options.within);
  if (!drawn) return drawn.error();
  const GridBox& reach = drawn->box();
  if (const Status held = checkNodes(std::array{PointI{toInt32(reach.left), toInt32(reach.bottom)},
                                                PointI{toInt32(reach.right), toInt32(reach.top)}});
      !held)
    return held.error();
  const Result<Outline> whole = options.within ? Outline::of(shape, mapping) : drawn;
  const Pitch pitch((whole ? *whole : *drawn).box(), options);
  Symmetries group = symmetriesOf(*drawn, options.triangles, kSymmetryTolerance);
  const Ground ground(group.size() == 1 ? *drawn : withWholeMiddle(*drawn, group), pitch.across);
  Result<std::vector<Candidate>> all = candidates(ground, pitch, group);
  if (!all) return all.error();
  if (all->empty()) return impossibleKnot(kTooNarrow);
  if (const CellMesh& mesh = all->front().mesh; mesh.sides().size() > kMostAutoGridLines) {
    makeLines(graph, mesh, latticePlaces(mesh));
    if (const Status made = finishLines(graph); !made) graph.TooManyLines = false;
    return refused(kTooComplicated);
  }
  const Result<Fitted> fitted = bestFit(std::move(*all), ground, pitch, group);
  if (!fitted) return fitted.error();
  if (fitted->quality.filled < kLeastFilled) return impossibleKnot(kTooNarrow);
  if (const Status held = checkNodes(fitted->at); !held) return held.error();
  makeLines(graph, fitted->mesh, fitted->at);
  if (const Status made = finishLines(graph); !made) return made.error();
  return AutoGridReport{fitted->quality.filled};
}

}  // namespace lorivan
