#include "graph/own_faces.h"

#include <algorithm>

namespace lorivan {

namespace {

/// Whether a symmetry can lay a face with lines of these orbits, in ascending order, onto itself: each of
/// them comes with its image, or is its own.
bool isOwnImage(const std::vector<int>& face, const LineOrbits& orbits, std::size_t largest) {
  return std::ranges::all_of(face, [&](int orbit) {
    return std::ranges::upper_bound(face, orbit) - std::ranges::lower_bound(face, orbit) > 1 ||
           orbits.all()[orbit].size() < largest;
  });
}

}  // namespace

std::vector<std::vector<int>> ownFaces(const StrandRuns& runs, const LineOrbits& orbits) {
  // Between walls alone strands run round the faces.
  const StrandRuns::Tour tour = runs.tour(Walls(static_cast<std::size_t>(runs.lineCount()), true));
  std::vector<std::vector<int>> faces(tour.lengths.size());
  for (int line = 0; line < runs.lineCount(); ++line)
    for (const StrandRuns::Passage& passage : tour.passages[line])
      if (passage.strand >= 0) faces[passage.strand].push_back(orbits.indexOf(line));
  std::size_t largest = 1;
  for (const std::vector<int>& orbit : orbits.all()) largest = std::max(largest, orbit.size());
  std::erase_if(faces, [&](std::vector<int>& face) {
    std::ranges::sort(face);
    if (!isOwnImage(face, orbits, largest)) return true;
    face.erase(std::unique(face.begin(), face.end()), face.end());
    return face.size() < 2;
  });
  std::ranges::sort(faces);
  faces.erase(std::unique(faces.begin(), faces.end()), faces.end());
  return faces;
}

}  // namespace lorivan
