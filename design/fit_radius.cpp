#include "design/fit_radius.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "design/edits.h"
#include "design/knot_model.h"
#include "design/solid_model.h"
#include "model3d/verdict.h"

namespace lorivan {
namespace {

constexpr double kLeastRadius = 0.1, kMostRadius = 1;  // model units; ten times as much in the field
constexpr double kMeeting = 1.05;
constexpr int kRadiusRounds = 4;  // which parts of a strand count for its gaps depends on the radius
constexpr float kAnywhere = 1e6F;

/// Least distance of centre lines that clear each other.
double nearestCentres(const TubeModel& model, int window) {
  const CentreLines lines(model);
  const Apart apart = StrandSearch(model, lines, window).nearest(TubeForm::round, kAnywhere);
  return static_cast<double>(apart.distance) + 2.0 * model.radius;
}

/// Greatest distance of the two centre lines at a crossing.
double furthestCrossing(const Knot& knot, const TubeSettings& settings, const TubeModel& model) {
  const CentreLines lines(model);
  const StrandSearch search(model, lines, crossingWindow(settings));
  double most = 0;
  for (const RingCrossing& crossing : ringCrossings(knot.strands, settings)) {
    const Apart apart = search.nearCrossing(TubeForm::round, crossing.over, crossing.under, kAnywhere);
    if (apart.distance < kAnywhere)
      most = std::max(most, static_cast<double>(apart.distance) + 2.0 * model.radius);
  }
  return most;
}

double radiusForGap(TubeModel model, int window, double gap, std::optional<double> millimetres) {
  double radius = model.radius;
  for (int round = 0; round < kRadiusRounds; ++round) {
    model.radius = static_cast<float>(std::clamp(radius, kLeastRadius, kMostRadius));
    const double apart = nearestCentres(model, window), centres = widthOf(model.centres);
    // A gap in millimetres is this many model units, which grow with the width that the tubes add.
    const double units = millimetres ? gap / *millimetres : 0;
    radius = millimetres ? (apart - units * centres) / (2 + 2 * units) : (apart - gap) / 2;
  }
  return radius;
}

std::string zFactorFor(const Document& document, double share) {
  const double factor = document.fields.number(Param::PolyZF) * share;
  return shortestText(static_cast<float>(factor));
}

}  // namespace

Result<Document> withFittedRadius(const Document& document, const Knot& knot, double gap,
                                  std::optional<double> millimetres) {
  const TubeSettings settings = tubeSettings(document.fields);
  TubeModel model;
  if (const Status built = buildTube(knot.strands, settings, {}, model); !built) return built.error();
  const double crossing = model.centres.empty() ? 0 : furthestCrossing(knot, settings, model);
  if (crossing == 0) return impossibleKnot("the knot has no crossings to fit a radius to");
  // Polygons in the round tubes meet a little later than these.
  const double meeting = kMeeting / std::cos(kPi / settings.polySides);
  const double radius =
      gap > 0 ? radiusForGap(model, crossingWindow(settings), gap, millimetres) : meeting * crossing / 2;
  if (gap <= 0 && radius > kMostRadius) {
    const double share = std::floor(100 * 2 * model.radius / (meeting * crossing)) / 100;
    return impossibleKnot("strands cannot meet at any Radius: with this one they do from a Depth of {1} down",
                          zFactorFor(document, share));
  }
  if (radius < kLeastRadius)
    return impossibleKnot("strands lie too close for such a gap: a larger Depth makes room");
  // Rounded so that the gap is not missed.
  const double steps = radius * 1000, whole = gap > 0 ? std::floor(steps) : std::ceil(steps);
  const double field = std::min(whole / 100, 10 * kMostRadius);
  return withField(document, Param::PolyRadius, shortestText(static_cast<float>(field)));
}

}  // namespace lorivan
