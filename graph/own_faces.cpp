#include "graph/own_faces.h"

#include <algorithm>

namespace lorivan {

std::vector<std::vector<int>> ownFaces(const StrandRuns& runs, const LineOrbits& orbits) {
  // Between walls alone strands run round the faces.
  const StrandRuns::Tour tour = runs.tour(Walls(static_cast<std::size_t>(runs.lineCount()), true));
  std::vector<std::vector<int>> faces(tour.lengths.size());
  for (int line = 0; line < runs.lineCount(); ++line)
    for (const StrandRuns::Passage& passage : tour.passages[static_cast<std::size_t>(line)])
      if (passage.strand >= 0)
        faces[static_cast<std::size_t>(passage.strand)].push_back(orbits.indexOf(line));
  std::erase_if(faces, [](std::vector<int>& face) {
    const std::size_t lines = face.size();
    std::ranges::sort(face);
    face.erase(std::unique(face.begin(), face.end()), face.end());
    return face.size() < 2 || face.size() == lines;
  });
  return faces;
}

}  // namespace lorivan
