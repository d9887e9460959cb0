// Stereolithography, as text: every polygon as triangles with their outward normals.
#include <cmath>

#include "export/mesh.h"
#include "export/solid_mesh.h"
#include "export/text_out.h"
#include "export/writers.h"

namespace lorivan {
namespace {

constexpr std::size_t kTriangleRoom = 96 + 12 * kMostDigits;

/// Unit normal of a triangle in thousandths; zero for a triangle without area. Divided before it is made
/// thousandths: a normal along an axis is then 1.000 and not 0.999.
MeshPoint normalOf(const MeshPoint& a, const MeshPoint& b, const MeshPoint& c) {
  const auto span = [](std::int32_t from, std::int32_t to) {
    return static_cast<double>(to) - static_cast<double>(from);
  };
  const double ux = span(a.x, b.x), uy = span(a.y, b.y), uz = span(a.z, b.z);
  const double vx = span(a.x, c.x), vy = span(a.y, c.y), vz = span(a.z, c.z);
  const double nx = uy * vz - uz * vy, ny = uz * vx - ux * vz, nz = ux * vy - uy * vx;
  const double length = std::sqrt(nx * nx + ny * ny + nz * nz);
  if (length == 0) return {};
  const auto part = [length](double n) { return static_cast<std::int32_t>(n / length * 1000); };
  return {part(nx), part(ny), part(nz)};
}

char* putTriple(char* at, const MeshPoint& p) {
  at = putThousandths(at, p.x);
  *at++ = ' ';
  at = putThousandths(at, p.y);
  *at++ = ' ';
  return putThousandths(at, p.z);
}

char* putVertex(char* at, const MeshPoint& p) {
  at = putTriple(putText(at, "    vertex "), p);
  return putText(at, kLineEnd);
}

void writeTriangle(TextOut& out, const MeshPoint& a, const MeshPoint& b, const MeshPoint& c) {
  char* at = out.room(kTriangleRoom);
  at = putTriple(putText(at, "facet normal "), normalOf(a, b, c));
  at = putText(at, "\r\n  outer loop\r\n");
  at = putVertex(putVertex(putVertex(at, a), b), c);
  out.take(putText(at, "  endloop\r\nendfacet\r\n"));
}

/// One body; its name says what there is to know about it.
Status writeBody(const ExportScene& scene, Sink& sink) {
  const Result<SolidMesh> mesh = solidMesh(scene);
  if (!mesh) return mesh.error();
  TextOut out(sink);
  out.text(scene.remark.empty() ? "solid" : "solid ");
  out.line(scene.remark);
  for (std::size_t i = 0; i < mesh->triangles.size() && out.ok(); ++i) {
    const auto& [a, b, c] = mesh->triangles[i];
    writeTriangle(out, mesh->points[a], mesh->points[b], mesh->points[c]);
    out.reached(scene.progress, i, mesh->triangles.size());
  }
  out.line("endsolid");
  return out.finish();
}

}  // namespace

Status writeStl(const ExportScene& scene, Sink& sink) {
  if (scene.solid != nullptr) return writeBody(scene, sink);
  const Result<TubeMesh> mesh = sceneMesh(scene);
  if (!mesh) return mesh.error();
  const auto& points = mesh->points();
  TextOut out(sink);
  out.line("solid");
  for (const TubeMesh::Strand& strand : mesh->strands())
    for (std::size_t ring = 0; ring < strand.ringCount && out.ok(); ++ring) {
      mesh->eachFace(strand, ring, [&](const TubeMesh::Face& face) {
        const auto corners = polygonCorners(face.cut);
        for (std::size_t i = 2; i < corners.size(); ++i)
          writeTriangle(out, points[face.corner[corners[0]]], points[face.corner[corners[i - 1]]],
                        points[face.corner[corners[i]]]);
      });
      out.reached(scene.progress, strand.firstRing + ring, mesh->ringCount());
    }
  out.line("endsolid");
  return out.finish();
}

}  // namespace lorivan
