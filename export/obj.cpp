// Wavefront OBJ: the corners of all polygons, then one group of faces for each strand.
#include <string_view>

#include "export/mesh.h"
#include "export/read_back.h"
#include "export/text_out.h"
#include "export/writers.h"

namespace lorivan {
namespace {

constexpr std::string_view kTooManyPolygonsObj =
    "Use less Sides or less points\r\nSorry, too many polygons for the OBJ save";
constexpr std::size_t kObjFaceRoom = 4 * (8 + 3 * kMostDigits);

char* putObjVertex(char* at, const MeshPoint& p) {
  at = putThousandths(putText(at, "v "), p.x);
  *at++ = ' ';
  at = putThousandths(at, p.y);
  *at++ = ' ';
  at = putThousandths(at, p.z);
  return putText(at, kLineEnd);
}

/// Each index carries a blank on either side, as a directly printed number does.
char* putObjFace(char* at, std::int32_t first, std::size_t corners) {
  *at++ = 'f';
  *at++ = ' ';
  for (std::size_t i = 0; i < corners; ++i) {
    if (i > 0) *at++ = ' ';
    *at++ = ' ';
    at = putInteger(at, first + static_cast<std::int32_t>(i));
    *at++ = ' ';
  }
  return putText(at, kLineEnd);
}

void writeVertices(const ExportScene& scene, const TubeMesh& mesh, TextOut& out) {
  for (const TubeMesh::Strand& strand : mesh.strands())
    for (std::size_t ring = 0; ring < strand.ringCount && out.ok(); ++ring) {
      mesh.eachFace(strand, ring, [&](const TubeMesh::Face& face) {
        char* at = out.room(kObjFaceRoom);
        for (const std::uint8_t corner : polygonCorners(face.cut))
          at = putObjVertex(at, mesh.points()[face.corner[corner]]);
        out.take(at);
      });
      out.reached(scene.progress, strand.firstRing + ring, 2 * mesh.ringCount());
    }
}

void writeFaces(const ExportScene& scene, const TubeMesh& mesh, TextOut& out) {
  std::int32_t index = 1;
  for (const TubeMesh::Strand& strand : mesh.strands()) {
    out.line("g qzd" + std::to_string(strand.slot));
    for (std::size_t ring = 0; ring < strand.ringCount && out.ok(); ++ring) {
      mesh.eachFace(strand, ring, [&](const TubeMesh::Face& face) {
        const std::size_t corners = polygonCorners(face.cut).size();
        if (corners == 0) return;
        out.take(putObjFace(out.room(kObjFaceRoom), index, corners));
        index += static_cast<std::int32_t>(corners);
      });
      out.reached(scene.progress, mesh.ringCount() + strand.firstRing + ring, 2 * mesh.ringCount());
    }
  }
}

/// One body, each corner once.
Status writeBody(const ExportScene& scene, Sink& sink) {
  const auto parts = sceneParts(scene, {});
  if (!parts) return parts.error();
  const MeshPart& body = parts->front();
  TextOut out(sink);
  out.line("#Object format knot produced by Lorivan");
  if (!scene.remark.empty()) {
    out.text("#");
    out.line(scene.remark);
  }
  for (const MeshPoint& p : body.points) out.take(putObjVertex(out.room(kObjFaceRoom), p));
  out.line("g " + body.name);
  std::size_t done = 0;
  eachTriangle(body, [&](std::uint32_t a, std::uint32_t b, std::uint32_t c) {
    char* at = out.room(kObjFaceRoom);
    *at++ = 'f';
    for (const std::uint32_t corner : {a, b, c}) {
      *at++ = ' ';
      at = putInteger(at, static_cast<std::int32_t>(corner) + 1);
    }
    out.take(putText(at, kLineEnd));
    out.reached(scene.progress, done++, body.faces.size());
  });
  if (const Status written = out.finish(); !written) return written;
  return checkWritten(sink, objReader(), [&] { return factsOf(*parts); });
}

}  // namespace

Status writeObj(const ExportScene& scene, Sink& sink) {
  if (scene.solid != nullptr) return writeBody(scene, sink);
  if (scene.shared) return writeSharedObj(scene, sink);
  const Result<TubeMesh> mesh = sceneMesh(scene);
  if (!mesh) return mesh.error();
  if (mesh->cornerCount() > static_cast<std::size_t>(kMostObjVertices)) return refused(kTooManyPolygonsObj);
  TextOut out(sink);
  out.line("#Object format knot produced by Lorivan");
  writeVertices(scene, *mesh, out);
  writeFaces(scene, *mesh, out);
  return out.finish();
}

}  // namespace lorivan
