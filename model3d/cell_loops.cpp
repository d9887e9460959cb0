#include "model3d/cell_loops.h"

namespace lorivan {
namespace {

constexpr std::array<int, 4> kTurn = {0, 1, 3, 2};  // corners of a square in cyclic order

int cornerAt(int axis, int along, int u, int v) {
  return along << axis | u << (axis + 1) % 3 | v << (axis + 2) % 3;
}

int edgeBetween(int one, int two) {
  const int bit = one ^ two;
  const int axis = bit == 1 ? 0 : bit == 2 ? 1 : 2;
  return 4 * axis + (one >> (axis + 1) % 3 & 1) + 2 * (one >> (axis + 2) % 3 & 1);
}

/// The corners of a face in cyclic order, and the edges between each and the next.
struct Face {
  std::array<int, 4> corner, edge;
};

Face faceOf(int number) {
  Face face{};
  for (std::size_t i = 0; i < 4; ++i)
    face.corner[i] = cornerAt(number / 2, number % 2, kTurn[i] & 1, kTurn[i] >> 1);
  for (std::size_t i = 0; i < 4; ++i) face.edge[i] = edgeBetween(face.corner[i], face.corner[(i + 1) % 4]);
  return face;
}

const std::array<Face, kCellFaces>& faces() {
  static const std::array<Face, kCellFaces> all = [] {
    std::array<Face, kCellFaces> made{};
    for (int f = 0; f < kCellFaces; ++f) made[f] = faceOf(f);
    return made;
  }();
  return all;
}

/// Each crossed edge is linked to one other on each of its two faces.
struct Links {
  std::array<std::array<int, 2>, kCellEdges> next{};
  std::array<int, kCellEdges> count{};

  void join(int one, int two) {
    next[one][count[static_cast<std::size_t>(one)]++] = two;
    next[two][count[static_cast<std::size_t>(two)]++] = one;
  }
};

void linkFace(const Face& face, std::uint8_t inside, bool joined, Links& links) {
  const auto in = [&](std::size_t i) { return (inside >> face.corner[i] & 1) != 0; };
  std::array<int, 4> crossed{};
  std::size_t count = 0;
  for (std::size_t i = 0; i < 4; ++i)
    if (in(i) != in((i + 1) % 4)) crossed[count++] = face.edge[i];
  if (count == 2) links.join(crossed[0], crossed[1]);
  if (count != 4) return;
  // All four are crossed: the two next to each corner that is cut off belong together.
  for (std::size_t i = 0; i < 4; ++i)
    if (in(i) != joined) links.join(face.edge[i], face.edge[(i + 3) % 4]);
}

}  // namespace

std::array<int, 2> edgeCorners(int edge) {
  const int axis = edge / 4, u = edge & 1, v = edge >> 1 & 1;
  return {cornerAt(axis, 0, u, v), cornerAt(axis, 1, u, v)};
}

CellLoops loopsOf(std::uint8_t inside, std::uint8_t joined) {
  Links links;
  for (std::size_t f = 0; f < kCellFaces; ++f) linkFace(faces()[f], inside, (joined >> f & 1) != 0, links);
  CellLoops loops;
  loops.loop.fill(kNoLoop);
  for (int start = 0; start < kCellEdges; ++start) {
    if (links.count[start] == 0 || loops.loop[start] != kNoLoop) continue;
    for (int edge = start, before = -1;;) {
      loops.loop[edge] = loops.count;
      const auto& [one, two] = links.next[edge];
      const int next = one == before ? two : one;
      if (next == start || loops.loop[next] != kNoLoop) break;
      before = edge;
      edge = next;
    }
    ++loops.count;
  }
  return loops;
}

const CellLoops& plainLoops(std::uint8_t inside) {
  static const std::array<CellLoops, 256> table = [] {
    std::array<CellLoops, 256> made{};
    for (std::size_t i = 0; i < made.size(); ++i) made[i] = loopsOf(static_cast<std::uint8_t>(i), 0);
    return made;
  }();
  return table[inside];
}

bool passesTwice(const CellLoops& loops, int face) {
  const auto& edges = faces()[face].edge;
  const std::uint8_t loop = loops.loop[edges[0]];
  if (loop == kNoLoop) return false;
  for (const int edge : edges)
    if (loops.loop[edge] != loop) return false;
  return true;
}

}  // namespace lorivan
