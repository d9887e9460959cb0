// Knots and tubes for the tests of the file writers.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "export/scene.h"
#include "graph/standard_grids.h"

namespace lorivan {

/// Everything that a writer may be given, kept together.
struct SampleKnot {
  TubeModel model;
  KnotCurve curve = {};
  double bandWidth = 4;

  ExportScene scene(std::optional<double> millimetres = {}) const {
    return {.model = model, .curve = curve, .bandWidth = bandWidth, .millimetres = millimetres};
  }
};

/// What a writer makes of a scene; throws where it refuses it.
std::string written(Status (*write)(const ExportScene&, Sink&), const ExportScene& scene);

/// The model of a store, in the colours of a first start.
TubeModel builtTube(const StrandStore& store, const TubeSettings& settings);

/// Places of a ring round the origin in the plane z = 0.
std::vector<Vec3> circle(float radius, int count);

/// A tube swept along closed lines of centres.
TubeModel sweptTube(const std::vector<std::vector<Vec3>>& lines, int sides, float radius);

/// A ring of the given radius in the plane z = 0, a tube of `count` rings round it.
TubeModel torus(float ringRadius, float tubeRadius, int count, int sides);

/// A standard shape, traced, sampled and swept.
SampleKnot standardKnot(Shape shape, int xNo, int yNo, const TubeSettings& tube = {});

}  // namespace lorivan
