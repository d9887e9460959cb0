#include "road.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <utility>
#include <vector>

#include "export/mesh.h"
#include "export/writers.h"
#include "knot_maker.h"
#include "strands/band_outline.h"

namespace lorivan::fuzz {
namespace {

bool isPlace(double x, double y) { return std::isfinite(x) && std::isfinite(y); }

/// Whether no line is there twice and none ends where it begins: the walk tells lines by their ends.
bool isSimple(const KnotGraph& graph) {
  std::set<std::array<int, 5>> known;
  for (int j = 0; j <= graph.LastLine; ++j) {
    const GridLine& l = graph.Lines[j];
    if (l.Kind == kNoLine) continue;
    const int turns = graph.wrap.turn(l.X2) - graph.wrap.turn(l.X1);
    const int a = graph.wrap.within(l.X1), b = graph.wrap.within(l.X2);
    const std::array there{a, int{l.Y1}, b, int{l.Y2}, turns}, back{b, int{l.Y2}, a, int{l.Y1}, -turns};
    if ((a == b && l.Y1 == l.Y2) || !known.insert(std::max(there, back)).second) return false;
  }
  return true;
}

void requireOutlines(const KnotCurve& curve, const TraceSettings& trace, const Road& road) {
  GridView view(trace.stretch);
  view.zoomToShow(curveBox(curve, trace.stretch), road.band);
  const BandOutlines outlines = bandOutlines(
      curve, view,
      {.band = road.band, .outer = road.band, .gap = road.gap, .centres = true, .mostClipped = 60});
  for (const StrandOutline& strand : outlines.strands)
    for (const BandStretch& stretch : strand.stretches)
      for (const BandContour& contour : stretch.contours) {
        require(contour.size() % 3 == 1 && contour.front().x == contour.back().x &&
                    contour.front().y == contour.back().y,
                "outlines are closed");
        for (const PointF& p : contour) require(isPlace(p.x, p.y), "outlines have places");
      }
}

/// Every edge is passed as often one way as the other.
void requireClosed(const TubeMesh& mesh) {
  std::vector<std::pair<std::uint32_t, std::uint32_t>> there, back;
  for (const TubeMesh::Strand& strand : mesh.strands())
    for (std::size_t ring = 0; ring < strand.ringCount; ++ring)
      mesh.eachFace(strand, ring, [&](const TubeMesh::Face& face) {
        const auto corners = polygonCorners(face.cut);
        for (std::size_t k = 0; k < corners.size(); ++k) {
          const auto a = mesh.samePlace(face.corner[corners[k]]),
                     b = mesh.samePlace(face.corner[corners[(k + 1) % corners.size()]]);
          there.emplace_back(a, b), back.emplace_back(b, a);
        }
      });
  std::ranges::sort(there), std::ranges::sort(back);
  require(there == back, "meshes are closed");
}

void requireModel(const KnotCurve& curve, const StrandStore& store, const TubeSettings& settings) {
  if (polygonBudget(store, settings) > kMostPolygons) return;
  TubeModel model;
  if (const Status built = buildTube(store, settings, {}, model); !built)
    return require(built.error().kind == ErrorKind::limit, "a model is refused for its size alone");
  for (const Vec3& p : model.vertices) require(isPlace(p.x, p.y) && std::isfinite(p.z), "models have places");
  const ExportScene scene{model, curve};
  if (model.QuadCount == 0) return;
  if (const auto mesh = sceneMesh(scene)) requireClosed(*mesh);
}

}  // namespace

Road drawRoad(Draws& draws) {
  Road road;
  road.trace.startColour = draws.below(31) - 15;
  road.trace.swish = 1 + draws.below(50);
  road.trace.stretch = static_cast<float>(0.8 / (0.1 + draws.below(50) / 10.0));
  road.trace.circular = draws.below(2) == 1;
  road.trace.mirror = draws.below(2) == 1;
  road.tube.polySides = 3 + draws.below(10);
  road.tube.polyPoints = 1 + draws.below(6);
  road.tube.polyRadius = static_cast<float>(1 + draws.below(100)) / 4;
  road.tube.polySmooth = 3 + draws.below(18);
  road.tube.polyZF = static_cast<float>(draws.below(40)) / 4;
  road.tube.ringPercent = static_cast<float>(draws.below(101));
  road.order = 2 + draws.below(5);
  road.samples = 1 + draws.below(5);
  road.band = 1 + draws.below(30);
  road.gap = draws.below(8);
  return road;
}

bool followRoad(KnotGraph& graph, const Road& road, bool sound) {
  Status done = collectPoints(graph);
  if (done) done = CalcGrid(graph);
  require(done || !sound, "the points of a sound graph have room for their neighbours");
  if (!done) return false;
  StrandStore store;
  const auto traced = traceStrands(graph, road.trace, store);
  if (!traced) {
    require(traced.error().kind == ErrorKind::knot && graph.KnotError, "what cannot be traced is told so");
    return false;
  }
  if (sound || isSimple(graph)) require(wronglyPassed(graph) == 0, "every crossing line is passed twice");
  KnotCurve curve;
  sampleStrands(store, road.order, road.samples, curve);
  for (std::size_t i = 0; i < curve.X.size(); ++i)
    require(isPlace(curve.X[i], curve.Y[i]) && std::isfinite(curve.Z[i]), "curves have places");
  if (countKnot(graph, store).strands > 0) requireOutlines(curve, road.trace, road);
  requireModel(curve, store, road.tube);
  return true;
}

}  // namespace lorivan::fuzz
