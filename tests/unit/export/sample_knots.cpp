#include "unit/export/sample_knots.h"

#include <cmath>
#include <stdexcept>

#include "knot_maker.h"
#include "model3d/tube_builder.h"

namespace lorivan {

std::string written(Status (*write)(const ExportScene&, Sink&), const ExportScene& scene) {
  MemorySink sink;
  if (const Status status = write(scene, sink); !status) throw std::runtime_error(status.error().message);
  return sink.bytes;
}

TubeModel sweptTube(const std::vector<std::vector<Vec3>>& lines, int sides, float radius) {
  TubeModel model;
  model.sides = sides;
  model.radius = radius;
  int slot = 0;
  for (const auto& line : lines) {
    const auto first = static_cast<int>(model.centres.size());
    model.strands.push_back({++slot, {0.5F, 0, 1}, first, static_cast<int>(line.size())});
    model.centres.insert(model.centres.end(), line.begin(), line.end());
  }
  if (!sweepTube(model)) model.clear();
  return model;
}

TubeModel builtTube(const StrandStore& store, const TubeSettings& settings) {
  SlotColours colours{};
  for (int slot = 1; slot < kStrandSlots; ++slot) colours[slot] = QBColor((slot - 1) % 14 + 1);
  TubeModel model;
  if (!buildTube(store, settings, colours, model)) model.clear();
  return model;
}

std::vector<Vec3> circle(float radius, int count) {
  std::vector<Vec3> line;
  for (int i = 0; i < count; ++i) {
    const double turn = kTwoPi * i / count;
    line.push_back(
        {static_cast<float>(radius * std::cos(turn)), static_cast<float>(radius * std::sin(turn)), 0});
  }
  return line;
}

TubeModel torus(float ringRadius, float tubeRadius, int count, int sides) {
  return sweptTube({circle(ringRadius, count)}, sides, tubeRadius);
}

SampleKnot standardKnot(Shape shape, int xNo, int yNo, const TubeSettings& tube) {
  const MadeKnot made = makeKnot(fieldsOf(shape, xNo, yNo));
  return {builtTube(*made.store, tube), made.curve};
}

}  // namespace lorivan
