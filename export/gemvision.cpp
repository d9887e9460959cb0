// GemVision blob list: the tubes' rings as groups of points, strand by strand.
#include <string>

#include "export/mesh.h"
#include "export/text_out.h"
#include "export/writers.h"

namespace lorivan {
namespace {

char* putRingPoint(char* at, const MeshPoint& p) {
  at = putThousandths(at, p.x);
  *at++ = ',';
  at = putThousandths(at, p.y);
  *at++ = ',';
  return putThousandths(at, p.z);
}

std::string threeDigits(int number) {
  const std::string digits = std::to_string(number);
  return std::string(digits.size() < 3 ? 3 - digits.size() : 0, '0') + digits;
}

}  // namespace

Status writeGemVision(const ExportScene& scene, Sink& sink) {
  const TubeModel& model = scene.model;
  if (model.QuadCount > kMostQuads) return refused(kTooManyPolygonsExport);
  const Result<double> scale = modelScale(model, std::nullopt);
  if (!scale) return scale.error();
  TextOut out(sink);
  for (const TubeStrand& strand : model.strands) {
    if (strand.ringCount == 0) continue;
    out.line("Points for " + threeDigits(strand.slot));
    for (int ring = strand.firstRing; ring < strand.firstRing + strand.ringCount && out.ok(); ++ring) {
      for (int side = 0; side < model.sides; ++side) {
        if (side > 0) out.text(" : ");
        out.take(putRingPoint(out.room(4 * kMostDigits), meshPoint(model.vertex(ring, side), *scale)));
      }
      out.text(kLineEnd);
      out.reached(scene.progress, static_cast<std::size_t>(ring), model.centres.size());
    }
  }
  out.line("end");
  return out.finish();
}

}  // namespace lorivan
