// Stereolithography, as text or binary: every polygon as triangles with their outward normals.
#include <array>
#include <cmath>
#include <vector>

#include "base/bytes.h"
#include "export/read_back.h"
#include "export/text_out.h"
#include "export/writers.h"

namespace lorivan {
namespace {

constexpr std::size_t kTriangleRoom = 96 + 12 * kMostDigits;

struct FacetNormal {
  double x = 0, y = 0, z = 0;
  double length() const { return std::sqrt(x * x + y * y + z * z); }
};

/// At right angles to a triangle, twice its area long.
template <class Corner>
FacetNormal across(const Corner& a, const Corner& b, const Corner& c) {
  const auto span = [](auto from, auto to) { return static_cast<double>(to) - static_cast<double>(from); };
  const double ux = span(a.x, b.x), uy = span(a.y, b.y), uz = span(a.z, b.z);
  const double vx = span(a.x, c.x), vy = span(a.y, c.y), vz = span(a.z, c.z);
  return {uy * vz - uz * vy, uz * vx - ux * vz, ux * vy - uy * vx};
}

/// Of unit length; zero for a triangle without area.
FacetNormal normalOf(const MeshPoint& a, const MeshPoint& b, const MeshPoint& c) {
  const FacetNormal n = across(a, b, c);
  const double length = n.length();
  if (length == 0) return {};
  return {n.x / length, n.y / length, n.z / length};
}

/// In thousandths. Divided before: a normal along an axis is then 1.000 and not 0.999.
MeshPoint printed(const FacetNormal& n) {
  const auto part = [](double x) { return static_cast<std::int32_t>(x * 1000); };
  return {part(n.x), part(n.y), part(n.z)};
}

char* putTriple(char* at, const MeshPoint& p) {
  at = putThousandths(at, p.x);
  *at++ = ' ';
  at = putThousandths(at, p.y);
  *at++ = ' ';
  return putThousandths(at, p.z);
}

char* putTextVertex(char* at, const MeshPoint& p) {
  at = putTriple(putText(at, "    vertex "), p);
  return putText(at, kLineEnd);
}

void writeTriangle(TextOut& out, const MeshPoint& a, const MeshPoint& b, const MeshPoint& c) {
  char* at = out.room(kTriangleRoom);
  at = putTriple(putText(at, "facet normal "), printed(normalOf(a, b, c)));
  at = putText(at, "\r\n  outer loop\r\n");
  at = putTextVertex(putTextVertex(putTextVertex(at, a), b), c);
  out.take(putText(at, "  endloop\r\nendfacet\r\n"));
}

/// Readers take a file that begins with "solid" for a text.
constexpr std::string_view kBinaryHead = "Binary STL, a knot produced by Lorivan";
constexpr std::size_t kFileHeadSize = 80, kFacetSize = 50;

/// A corner of facets: exact for their normals, and as the file says it. That is the same float as the
/// quotient by 1000, which no number of thousandths brings so close to the middle between two floats that the
/// product's error could decide.
struct FacetCorner {
  FacetCorner() = default;
  explicit FacetCorner(const MeshPoint& p)
      : x(p.x), y(p.y), z(p.z), written{number(x), number(y), number(z)} {}
  static float number(double thousandths) { return static_cast<float>(thousandths * 0.001); }

  double x = 0, y = 0, z = 0;
  std::array<float, 3> written{};
};

char* putCorner(char* at, const FacetCorner& p) {
  return putFloat(putFloat(putFloat(at, p.written[0]), p.written[1]), p.written[2]);
}

void writeFacet(TextOut& out, const FacetCorner& a, const FacetCorner& b, const FacetCorner& c) {
  const FacetNormal normal = across(a, b, c);
  const double length = normal.length(), unit = length > 0 ? 1 / length : 0;
  char* at = out.room(kFacetSize);
  for (const double n : {normal.x, normal.y, normal.z}) at = putFloat(at, static_cast<float>(n * unit));
  out.take(putLittle16(putCorner(putCorner(putCorner(at, a), b), c), 0));
}

/// Passes every triangle's corners to `use`, each made once for the faces between two rings.
template <class Corner, class Use>
void eachMeshTriangle(const TubeMesh& mesh, const ExportScene& scene, const TextOut& out, Use&& use) {
  for (const TubeMesh::Strand& strand : mesh.strands()) {
    const std::size_t sides = mesh.pointCount(strand) / strand.ringCount;
    std::vector<Corner> near(sides), far(sides);
    const auto firstOf = [&](std::size_t ring) {
      return mesh.firstPoint(strand) + static_cast<std::uint32_t>(ring % strand.ringCount * sides);
    };
    const auto takeRing = [&](std::size_t ring, std::vector<Corner>& corners) {
      const MeshPoint* const points = &mesh.points()[firstOf(ring)];
      for (std::size_t side = 0; side < sides; ++side) corners[side] = Corner(points[side]);
    };
    takeRing(0, far);
    for (std::size_t ring = 0; ring < strand.ringCount && out.ok(); ++ring) {
      near.swap(far);
      takeRing(ring + 1, far);
      const std::uint32_t nearFirst = firstOf(ring), farFirst = firstOf(ring + 1);
      mesh.eachFace(strand, ring, [&](const TubeMesh::Face& face) {
        const std::array at{&near[face.corner[0] - nearFirst], &near[face.corner[1] - nearFirst],
                            &far[face.corner[2] - farFirst], &far[face.corner[3] - farFirst]};
        const auto corners = polygonCorners(face.cut);
        for (std::size_t i = 2; i < corners.size(); ++i)
          use(*at[corners[0]], *at[corners[i - 1]], *at[corners[i]]);
      });
      out.reached(scene.progress, strand.firstRing + ring, mesh.ringCount());
    }
  }
}

/// A file of so many triangles, which each(out, use) passes on, in corners of a kind that facets take. A
/// text's first line is the place for a remark.
template <class Each>
Status writeTriangles(const ExportScene& scene, std::size_t triangles, Sink& sink, Each&& each) {
  TextOut out(sink);
  if (scene.binary) {
    std::string head(kBinaryHead);
    head.resize(kFileHeadSize, ' ');
    appendLittle32(head, static_cast<std::uint32_t>(triangles));
    out.text(head);
    each.template operator()<FacetCorner>(out, [&](const FacetCorner& a, const FacetCorner& b,
                                                   const FacetCorner& c) { writeFacet(out, a, b, c); });
  } else {
    out.text(scene.remark.empty() ? "solid" : "solid ");
    out.line(scene.remark);
    each.template operator()<MeshPoint>(out, [&](const MeshPoint& a, const MeshPoint& b, const MeshPoint& c) {
      writeTriangle(out, a, b, c);
    });
    out.line("endsolid");
  }
  return out.finish();
}

Status writeTubes(const ExportScene& scene, Sink& sink) {
  const Result<TubeMesh> mesh = sceneMesh(scene);
  if (!mesh) return mesh.error();
  const Status written =
      writeTriangles(scene, mesh->triangleCount(), sink, [&]<class Corner>(const TextOut& out, auto&& use) {
        eachMeshTriangle<Corner>(*mesh, scene, out, use);
      });
  if (!written) return written;
  return checkWritten(sink, scene.binary ? binaryStlReader() : textStlReader(),
                      [&] { return factsOf(*mesh); });
}

/// A relief or a body.
Status writeParts(const ExportScene& scene, Sink& sink) {
  const auto parts = sceneParts(scene, scene.relief ? std::optional(kStandardMillimetres) : std::nullopt);
  if (!parts) return parts.error();
  FileFacts facts = factsOf(*parts);
  facts.points = facts.places = 0;
  const Status written =
      writeTriangles(scene, facts.triangles, sink, [&]<class Corner>(const TextOut&, auto&& use) {
        for (const MeshPart& part : *parts)
          eachTriangle(part, [&](std::uint32_t a, std::uint32_t b, std::uint32_t c) {
            use(Corner(part.points[a]), Corner(part.points[b]), Corner(part.points[c]));
          });
      });
  if (!written) return written;
  return checkWritten(sink, scene.binary ? binaryStlReader() : textStlReader(), [&] { return facts; });
}

}  // namespace

Status writeStl(const ExportScene& scene, Sink& sink) {
  return scene.relief || scene.solid != nullptr ? writeParts(scene, sink) : writeTubes(scene, sink);
}

}  // namespace lorivan
