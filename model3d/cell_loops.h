// How a surface passes through one cell of a lattice, seen from which of its corners are inside.
#pragma once

#include <array>
#include <cstdint>

namespace lorivan {

/// Corner c of a cell lies at (c & 1, c >> 1 & 1, c >> 2). Edge 4 a + u + 2 v runs along axis a at u and v on
/// the two axes after it (x, y, z in turn). Face 2 a + s lies square to axis a at s.
inline constexpr int kCellEdges = 12, kCellFaces = 6;

/// The closed rounds of the surface through a cell. Every edge with one end inside is on one of them; rounds
/// follow each other from face to face, alike on both sides of it.
struct CellLoops {
  std::uint8_t count = 0;
  std::array<std::uint8_t, kCellEdges> loop{};  // the round that the edge is on; kNoLoop: none
};
inline constexpr std::uint8_t kNoLoop = 0xFF;

/// `inside` has a bit for each corner. A face whose corners are inside and outside by turns can be passed in
/// two ways: the inside corners are apart, or, where `joined` has the face's bit, together.
CellLoops loopsOf(std::uint8_t inside, std::uint8_t joined);
/// The same with all of them apart, from a table.
const CellLoops& plainLoops(std::uint8_t inside);

/// The two corners of an edge, the lower first.
std::array<int, 2> edgeCorners(int edge);

/// Whether one round passes a face twice. Where that is so on both sides of the face, an edge of the dual
/// surface would belong to four of its polygons: R. Wenger, Isosurfaces, 2013.
bool passesTwice(const CellLoops& loops, int face);

}  // namespace lorivan
