// Surface nets with as many corners in a cell as the surface passes through it: S. F. F. Gibson, Constrained
// elastic surface nets, 1998; G. M. Nielson, Dual marching cubes, 2004. Corners are moved onto the surface.
#include "model3d/solid_surface.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <unordered_map>

#include "model3d/cell_loops.h"
#include "model3d/vec3_math.h"

namespace lorivan {

using namespace vec;

namespace {

constexpr int kCells = SolidField::kSide - 1;  // of a cube, along each axis
constexpr std::size_t kCubeCells = std::size_t{kCells} * kCells * kCells;
constexpr float kRoom = 0.02F;  // share of a cell that corners keep from its faces, so that none coincide
constexpr std::uint32_t kNone = 0xFFFFFFFF;
constexpr int kMostCubes = 1 << 20;  // along each axis

using Place = std::array<int, 3>;

std::uint64_t keyOf(const Place& cube) {
  return static_cast<std::uint64_t>(cube[2]) << 40 | static_cast<std::uint64_t>(cube[1]) << 20 |
         static_cast<std::uint64_t>(cube[0]);
}
Place placeOf(std::uint64_t key) {
  const auto part = [key](int shift) { return static_cast<int>(key >> shift & (kMostCubes - 1)); };
  return {part(0), part(20), part(40)};
}

/// 8 x 8 x 8 cells that the surface passes through.
struct Cube {
  std::uint64_t key = 0;
  std::array<std::uint8_t, kCubeCells> inside{};        // corners of each cell that are inside
  std::array<std::uint32_t, kCubeCells> firstCorner{};  // of the mesh, for a cell's round 0
};

std::size_t cellNumber(const Place& cell) {
  return static_cast<std::size_t>(cell[0] + kCells * (cell[1] + kCells * cell[2]));
}

class Netting {
 public:
  Netting(const SolidField& field, const CentreLines& lines, float cell)
      : field_(field), lines_(lines), cell_(cell) {
    const Vec3 low = field.low();
    base_ = low - Vec3{1, 1, 1} * (2 * cell);
    // The underside lies in the middle of a row of cells: its corners can lie on it exactly.
    base_.z = field.bottom() - 2.5F * cell;
  }

  Result<TriangleMesh> run();

 private:
  using Segments = SolidField::Segments;

  bool findCubes();
  void addCubesOf(std::uint32_t segment);
  void addPlateCubes();
  Place cubeAt(const Vec3& p) const;
  Vec3 nodeAt(const Place& node) const {
    return base_ +
           Vec3{static_cast<float>(node[0]), static_cast<float>(node[1]), static_cast<float>(node[2])} *
               cell_;
  }
  bool mayHoldSurface(const Place& cube, Segments near) const;
  void readCube(std::uint64_t key, Segments near);
  template <class Crossing>
  void placeCorners(const Place& cube, const Place& cell, const CellLoops& loops, Crossing&& crossing,
                    Segments near);
  std::vector<std::uint32_t> segmentsOf(std::uint64_t key) const;
  Vec3 onSurface(Vec3 p, const Vec3& low, Segments near);
  void partLoops();
  void tellApart(const Place& cube, const Place& cell, int face);
  void weave(const Cube& cube, const std::array<const Cube*, 8>& before);
  void addQuad(const std::array<std::uint32_t, 4>& q, Segments near);
  bool isNearEdge(std::uint32_t corner) const { return std::ranges::binary_search(nearEdge_, corner); }
  const Cube* find(const Place& cube) const;
  CellLoops loopsIn(const Cube& cube, std::size_t cell) const;

  const SolidField& field_;
  const CentreLines& lines_;
  float cell_;
  Vec3 base_;
  std::vector<std::pair<std::uint64_t, std::uint32_t>> wanted_;  // cubes with their segments
  std::vector<Cube> cubes_;                                      // by key
  std::unordered_map<std::uint64_t, std::uint8_t> joined_;       // cells whose faces are passed the other way
  std::vector<std::uint32_t> nearEdge_;                          // corners near edges of the body, rising
  TriangleMesh mesh_;
};

Place Netting::cubeAt(const Vec3& p) const {
  const float side = cell_ * kCells;
  const auto part = [&](float at, float base) {
    return std::clamp(static_cast<int>(std::floor((at - base) / side)), 0, kMostCubes - 1);
  };
  return {part(p.x, base_.x), part(p.y, base_.y), part(p.z, base_.z)};
}

/// All cubes with a place from which the segment counts.
void Netting::addCubesOf(std::uint32_t number) {
  const CentreSegment& segment = lines_.segments()[number];
  const float side = cell_ * kCells, half = 0.8661F * side;
  const float reach = field_.reach() + 2 * cell_;
  const Vec3 end = segment.from + segment.way, pad = Vec3{1, 1, 1} * reach;
  const Place low = cubeAt(Vec3{std::min(segment.from.x, end.x), std::min(segment.from.y, end.y),
                                std::min(segment.from.z, end.z)} -
                           pad);
  const Place high = cubeAt(Vec3{std::max(segment.from.x, end.x), std::max(segment.from.y, end.y),
                                 std::max(segment.from.z, end.z)} +
                            pad);
  for (int k = low[2]; k <= high[2]; ++k)
    for (int j = low[1]; j <= high[1]; ++j)
      for (int i = low[0]; i <= high[0]; ++i) {
        const Vec3 middle = nodeAt({i * kCells, j * kCells, k * kCells}) + Vec3{1, 1, 1} * (side / 2);
        if (length(segment.apart(middle)) <= reach + half) wanted_.emplace_back(keyOf({i, j, k}), number);
      }
}

void Netting::addPlateCubes() {
  const Place low = cubeAt(field_.low()), high = cubeAt(field_.high());
  const int top = cubeAt({0, 0, field_.plateTop() + cell_})[2];
  for (int k = low[2]; k <= top; ++k)
    for (int j = low[1]; j <= high[1]; ++j)
      for (int i = low[0]; i <= high[0]; ++i) wanted_.emplace_back(keyOf({i, j, k}), kNone);
}

/// A field's slope is at most the root of 2, where two surfaces are rounded together.
bool Netting::mayHoldSurface(const Place& cube, Segments near) const {
  const float side = cell_ * kCells;
  const Vec3 middle =
      nodeAt({cube[0] * kCells, cube[1] * kCells, cube[2] * kCells}) + Vec3{1, 1, 1} * (side / 2);
  return std::fabs(field_.at(middle, near).value) <= 1.4143F * 0.8661F * side;
}

/// False when there are too many corners.
bool Netting::findCubes() {
  for (std::uint32_t segment = 0; segment < lines_.segments().size(); ++segment) addCubesOf(segment);
  if (field_.hasPlate()) addPlateCubes();
  std::ranges::sort(wanted_);
  std::vector<std::uint32_t> near;
  for (std::size_t i = 0; i < wanted_.size();) {
    const std::uint64_t key = wanted_[i].first;
    near.clear();
    for (; i < wanted_.size() && wanted_[i].first == key; ++i)
      if (wanted_[i].second != kNone) near.push_back(wanted_[i].second);
    if (mayHoldSurface(placeOf(key), near)) readCube(key, near);
    if (static_cast<std::int64_t>(mesh_.points.size()) * 2 > kMostTriangles) return false;
  }
  return true;
}

void Netting::readCube(std::uint64_t key, Segments near) {
  const Place cube = placeOf(key);
  SolidField::Values values;
  field_.values({base_, cell_, {cube[0] * kCells, cube[1] * kCells, cube[2] * kCells}}, near, values);
  std::array<std::uint8_t, SolidField::kNodes> in;
  for (std::size_t n = 0; n < in.size(); ++n) in[n] = values[n] < 0 ? 1 : 0;
  Cube made;
  made.key = key;
  bool any = false;
  constexpr std::size_t kRow = SolidField::kSide, kLayer = kRow * kRow;
  Place cell;
  for (cell[2] = 0; cell[2] < kCells; ++cell[2])
    for (cell[1] = 0; cell[1] < kCells; ++cell[1])
      for (cell[0] = 0; cell[0] < kCells; ++cell[0]) {
        const std::size_t node = static_cast<std::size_t>(cell[0]) +
                                 kRow * static_cast<std::size_t>(cell[1]) +
                                 kLayer * static_cast<std::size_t>(cell[2]);
        const std::uint8_t* n = &in[node];
        const float* value = &values[node];
        const int corners = n[0] | n[1] << 1 | n[kRow] << 2 | n[kRow + 1] << 3 | n[kLayer] << 4 |
                            n[kLayer + 1] << 5 | n[kLayer + kRow] << 6 | n[kLayer + kRow + 1] << 7;
        if (corners == 0 || corners == 255) continue;
        any = true;
        const std::size_t number = cellNumber(cell);
        made.inside[number] = static_cast<std::uint8_t>(corners);
        made.firstCorner[number] = static_cast<std::uint32_t>(mesh_.points.size());
        const auto crossing = [&](int edge) {
          const auto [one, two] = edgeCorners(edge);
          const auto at = [&](int c) {
            return value[static_cast<std::size_t>(c & 1) + kRow * static_cast<std::size_t>(c >> 1 & 1) +
                         kLayer * static_cast<std::size_t>(c >> 2)];
          };
          return at(one) / (at(one) - at(two));
        };
        placeCorners(cube, cell, plainLoops(made.inside[number]), crossing, near);
      }
  if (any) cubes_.push_back(made);
}

/// One corner for each round, first where its edges are crossed on average: crossing(edge) from the lower
/// end.
template <class Crossing>
void Netting::placeCorners(const Place& cube, const Place& cell, const CellLoops& loops, Crossing&& crossing,
                           Segments near) {
  const Vec3 low =
      nodeAt({cube[0] * kCells + cell[0], cube[1] * kCells + cell[1], cube[2] * kCells + cell[2]});
  for (std::uint8_t loop = 0; loop < loops.count; ++loop) {
    Vec3 sum;
    float count = 0;
    for (int edge = 0; edge < kCellEdges; ++edge) {
      if (loops.loop[edge] != loop) continue;
      const int from = edgeCorners(edge)[0];
      sum = sum + Vec3{static_cast<float>(from & 1), static_cast<float>(from >> 1 & 1),
                       static_cast<float>(from >> 2)};
      (edge < 4 ? sum.x : edge < 8 ? sum.y : sum.z) += crossing(edge);
      ++count;
    }
    mesh_.points.push_back(onSurface(low + sum * (cell_ / count), low, near));
  }
}

std::vector<std::uint32_t> Netting::segmentsOf(std::uint64_t key) const {
  std::vector<std::uint32_t> near;
  for (auto at = std::ranges::lower_bound(wanted_, std::pair{key, std::uint32_t{0}});
       at != wanted_.end() && at->first == key; ++at)
    if (at->second != kNone) near.push_back(at->second);
  return near;
}

/// Newton's steps along the slope, within the cell; where an edge of the body runs through the cell, the
/// corner lies on the edge.
Vec3 Netting::onSurface(Vec3 p, const Vec3& low, Segments near) {
  const float from = kRoom * cell_, to = (1 - kRoom) * cell_;
  const auto held = [&](const Vec3& at) {
    return Vec3{std::clamp(at.x, low.x + from, low.x + to), std::clamp(at.y, low.y + from, low.y + to),
                std::clamp(at.z, low.z + from, low.z + to)};
  };
  const float near0 = 1e-3F * cell_;
  FieldReading here = field_.at(p, near);
  for (int round = 0; round < 4 && std::fabs(here.value) > near0; ++round) {
    p = held(p - here.slope * (here.value / std::max(dot(here.slope, here.slope), 0.25F)));
    here = field_.at(p, near);
  }
  if (std::fabs(here.rival) > 1.5F * cell_) return p;
  nearEdge_.push_back(static_cast<std::uint32_t>(mesh_.points.size()));
  Vec3 q = p;
  for (int round = 0; round < 4; ++round) {
    const FieldReading at = field_.at(q, near);
    const float c = dot(at.slope, at.rivalSlope), square = 1 - c * c;
    if (!(std::fabs(at.rival) <= 2 * cell_) || square < 0.05F) return p;
    const float u = (at.value - c * at.rival) / square, v = (at.rival - c * at.value) / square;
    q = q - at.slope * u - at.rivalSlope * v;
  }
  const Vec3 kept = held(q), off = q - kept;
  return dot(off, off) == 0 && std::fabs(field_.at(q, near).value) <= near0 ? q : p;
}

const Cube* Netting::find(const Place& cube) const {
  const std::uint64_t key = keyOf(cube);
  const auto at = std::ranges::lower_bound(cubes_, key, {}, &Cube::key);
  return at != cubes_.end() && at->key == key ? &*at : nullptr;
}

CellLoops Netting::loopsIn(const Cube& cube, std::size_t cell) const {
  if (!joined_.empty())
    if (const auto at = joined_.find(cube.key * kCubeCells + cell); at != joined_.end())
      return loopsOf(cube.inside[cell], at->second);
  return plainLoops(cube.inside[cell]);
}

/// Where one round passes a face twice on both sides of it, the face is passed the other way, which parts the
/// rounds on both sides.
void Netting::partLoops() {
  for (const Cube& cube : cubes_) {
    Place cell;
    for (cell[2] = 0; cell[2] < kCells; ++cell[2])
      for (cell[1] = 0; cell[1] < kCells; ++cell[1])
        for (cell[0] = 0; cell[0] < kCells; ++cell[0])
          for (const int face : {1, 3, 5})
            if (passesTwice(plainLoops(cube.inside[cellNumber(cell)]), face))
              tellApart(placeOf(cube.key), cell, face);
  }
}

void Netting::tellApart(const Place& cube, const Place& cell, int face) {
  const auto axis = static_cast<std::size_t>(face / 2);
  Place nextCube = cube, nextCell = cell;
  if (++nextCell[axis] == kCells) {
    nextCell[axis] = 0;
    ++nextCube[axis];
  }
  const Cube *one = find(cube), *two = find(nextCube);
  if (two == nullptr) return;
  const std::size_t a = cellNumber(cell), b = cellNumber(nextCell);
  if (!passesTwice(loopsIn(*one, a), face) || !passesTwice(loopsIn(*two, b), face - 1)) return;
  const auto turn = [&](const Cube& in, std::size_t number, int side) {
    std::uint8_t& mask = joined_[in.key * kCubeCells + number];
    mask = static_cast<std::uint8_t>(mask | 1U << side);
    Cube& changed = cubes_[&in - cubes_.data()];
    changed.firstCorner[number] = static_cast<std::uint32_t>(mesh_.points.size());
    const Place where = &in == one ? cell : nextCell;
    const std::vector<std::uint32_t> near = segmentsOf(in.key);
    placeCorners(
        placeOf(in.key), where, loopsOf(in.inside[number], mask), [](int) { return 0.5F; }, near);
  };
  turn(*one, a, face);
  turn(*two, b, face - 1);
}

/// The shorter diagonal cuts a polygon of four; at an edge of the body the one that lies nearer to the
/// surface.
void Netting::addQuad(const std::array<std::uint32_t, 4>& q, Segments near) {
  const auto& p = mesh_.points;
  const Vec3 ac = p[q[2]] - p[q[0]], bd = p[q[3]] - p[q[1]];
  float one = dot(ac, ac), two = dot(bd, bd);
  if (std::ranges::any_of(q, [this](std::uint32_t corner) { return isNearEdge(corner); })) {
    one = std::fabs(field_.at((p[q[0]] + p[q[2]]) * 0.5F, near).value);
    two = std::fabs(field_.at((p[q[1]] + p[q[3]]) * 0.5F, near).value);
  }
  if (one <= two) {
    mesh_.triangles.push_back({q[0], q[1], q[2]});
    mesh_.triangles.push_back({q[0], q[2], q[3]});
  } else {
    mesh_.triangles.push_back({q[0], q[1], q[3]});
    mesh_.triangles.push_back({q[1], q[2], q[3]});
  }
}

/// Four cells share an edge of the lattice; each edge belongs to the cell whose lowest corner it starts at.
/// `before` holds the cubes one back along the axes of the place's bits.
void Netting::weave(const Cube& cube, const std::array<const Cube*, 8>& before) {
  const auto cornerOf = [&](Place cell, int edge) {
    std::size_t back = 0;
    for (std::size_t axis = 0; axis < 3; ++axis)
      if (cell[axis] < 0) {
        cell[axis] += kCells;
        back |= std::size_t{1} << axis;
      }
    const Cube* const home = before[back];
    if (home == nullptr) return kNone;
    const std::size_t number = cellNumber(cell);
    const std::uint8_t loop = loopsIn(*home, number).loop[edge];
    return loop == kNoLoop ? kNone : home->firstCorner[number] + loop;
  };
  const std::vector<std::uint32_t> near = segmentsOf(cube.key);
  Place cell;
  for (cell[2] = 0; cell[2] < kCells; ++cell[2])
    for (cell[1] = 0; cell[1] < kCells; ++cell[1])
      for (cell[0] = 0; cell[0] < kCells; ++cell[0]) {
        const std::uint8_t inside = cube.inside[cellNumber(cell)];
        if (inside == 0) continue;
        for (int axis = 0; axis < 3; ++axis) {
          const bool starts = (inside & 1) != 0, ends = (inside >> (1 << axis) & 1) != 0;
          if (starts == ends) continue;
          const auto u = static_cast<std::size_t>((axis + 1) % 3),
                     v = static_cast<std::size_t>((axis + 2) % 3);
          Place backU = cell, backV = cell, backUV = cell;
          --backU[u], --backV[v], --backUV[u], --backUV[v];
          std::array<std::uint32_t, 4> quad = {cornerOf(cell, 4 * axis), cornerOf(backU, 4 * axis + 1),
                                               cornerOf(backUV, 4 * axis + 3), cornerOf(backV, 4 * axis + 2)};
          if (std::ranges::find(quad, kNone) != quad.end()) continue;
          if (!starts) std::swap(quad[1], quad[3]);
          addQuad(quad, near);
        }
      }
}

Result<TriangleMesh> Netting::run() {
  if (!findCubes()) return refused(kTooManyTriangles);
  partLoops();
  mesh_.triangles.reserve(2 * mesh_.points.size());
  for (const Cube& cube : cubes_) {
    std::array<const Cube*, 8> before{};
    const Place at = placeOf(cube.key);
    for (std::size_t back = 0; back < before.size(); ++back) {
      Place place = at;
      for (std::size_t axis = 0; axis < 3; ++axis) place[axis] -= static_cast<int>(back >> axis & 1);
      before[back] = std::ranges::min(place) < 0 ? nullptr : find(place);
    }
    weave(cube, before);
  }
  return std::move(mesh_);
}

}  // namespace

Result<TriangleMesh> surfaceOf(const SolidField& field, const CentreLines& lines, float cell) {
  return Netting(field, lines, cell).run();
}

}  // namespace lorivan
