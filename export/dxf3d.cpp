// AutoCAD DXF, the model as 3-D faces.
#include <algorithm>
#include <string>

#include "export/dxf.h"
#include "export/mesh.h"
#include "export/text_out.h"
#include "export/writers.h"

namespace lorivan {
namespace {

constexpr std::size_t kFaceRoom = 64 + 12 * (6 + kMostDigits);

/// Corner number `corner` (0 to 3) has the group codes 10, 20, 30 plus its number.
char* putCorner(char* at, char corner, const MeshPoint& p) {
  const auto put = [&](char axis, std::int32_t number) {
    *at++ = axis;
    *at++ = static_cast<char>('0' + corner);
    at = putThousandths(putText(at, kLineEnd), number);
    at = putText(at, kLineEnd);
  };
  put('1', p.x);
  put('2', p.y);
  put('3', p.z);
  return at;
}

/// A triangle repeats its last corner: a face always has four.
void writeFace(TextOut& out, const TubeMesh& mesh, const TubeMesh::Face& face, std::string_view head) {
  const auto corners = polygonCorners(face.cut);
  if (corners.empty()) return;
  char* at = putText(out.room(kFaceRoom), head);
  for (std::size_t i = 0; i < 4; ++i)
    at = putCorner(at, static_cast<char>(i),
                   mesh.points()[face.corner[corners[std::min(i, corners.size() - 1)]]]);
  out.take(putText(at, "0\r\n"));
}

}  // namespace

Status writeDxf3D(const ExportScene& scene, Sink& sink) {
  const Result<TubeMesh> mesh = sceneMesh(scene);
  if (!mesh) return mesh.error();
  TextOut out(sink);
  out.text("0\r\nSECTION\r\n2\r\nHEADER\r\n0\r\nENDSEC\r\n0\r\nSECTION\r\n2\r\nENTITIES\r\n0\r\n");
  for (const TubeMesh::Strand& strand : mesh->strands()) {
    const std::string head = "3DFACE\r\n8\r\nLayer1\r\n62\r\n" +
                             std::to_string(dxfColour(scene.colourNumber(strand.slot))) + "\r\n";
    for (std::size_t ring = 0; ring < strand.ringCount && out.ok(); ++ring) {
      mesh->eachFace(strand, ring, [&](const TubeMesh::Face& face) { writeFace(out, *mesh, face, head); });
      out.reached(scene.progress, strand.firstRing + ring, mesh->ringCount());
    }
  }
  out.text("ENDSEC\r\n0\r\nEOF\r\n");
  return out.finish();
}

}  // namespace lorivan
