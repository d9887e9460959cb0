// XYZ: the model's vertices, one a line.
#include "export/mesh.h"
#include "export/text_out.h"
#include "export/writers.h"

namespace lorivan {

Status writeXyz(const ExportScene& scene, Sink& sink) {
  if (scene.model.QuadCount > kMostQuads) return refused(kTooManyPolygonsExport);
  const Result<double> scale = modelScale(scene.model, scene.millimetres);
  if (!scale) return scale.error();
  TextOut out(sink);
  const auto& vertices = scene.model.vertices;
  for (std::size_t i = 0; i < vertices.size() && out.ok(); ++i) {
    const MeshPoint p = meshPoint(vertices[i], *scale);
    char* at = putThousandths(out.room(4 * kMostDigits), p.x);
    at = putThousandths(putText(at, ", "), p.y);
    at = putThousandths(putText(at, ", "), p.z);
    out.take(putText(at, kLineEnd));
    out.reached(scene.progress, i, vertices.size());
  }
  return out.finish();
}

}  // namespace lorivan
