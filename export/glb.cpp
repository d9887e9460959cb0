// glTF 2.0 in its binary container: metres, y up, the knot upright and facing +z; one mesh and one
// metallic-rough material for each strand.
#include <bit>
#include <cmath>
#include <string>

#include "base/bytes.h"
#include "base/escaped_text.h"
#include "base/numbers.h"
#include "export/line_reader.h"
#include "export/read_back.h"
#include "export/text_out.h"
#include "export/writers.h"

namespace lorivan {
namespace {

constexpr std::uint32_t kMark = 0x46546C67, kJsonMark = 0x4E4F534A, kBytesMark = 0x004E4942;
constexpr std::size_t kHeadSize = 12, kChunkHead = 8;
constexpr std::uint64_t kMostBytes = 0xFFFFFFFF;
constexpr double kThousandthsToMetres = 1e-6;
constexpr std::size_t kPointSize = 12, kIndexSize = 4;
constexpr float kRoughness = 0.4F;

/// Where the parts' numbers lie: all indices, then all positions, then all normals.
struct Layout {
  explicit Layout(const std::vector<MeshPart>& parts) {
    for (const MeshPart& part : parts) {
      const std::size_t triangles = triangleCount(part);
      indices.push_back(triangles * 3);
      indexBytes += triangles * 3 * kIndexSize;
      pointBytes += part.points.size() * kPointSize;
    }
  }
  static std::size_t triangleCount(const MeshPart& part) {
    std::size_t count = 0;
    for (const PartFace& face : part.faces) count += face[3] == kNoCorner ? 1 : 2;
    return count;
  }
  std::uint64_t bytes() const { return indexBytes + 2 * pointBytes; }

  std::vector<std::size_t> indices;  // of each part
  std::uint64_t indexBytes = 0, pointBytes = 0;
};

float metres(std::int32_t thousandths) { return static_cast<float>(thousandths * kThousandthsToMetres); }

std::int32_t thousandths(float length) { return toInt32(static_cast<double>(length) / kThousandthsToMetres); }

std::string triple(const MeshPoint& p) {
  return '[' + shortestText(metres(p.x)) + ',' + shortestText(metres(p.y)) + ',' + shortestText(metres(p.z)) +
         ']';
}

/// Screen colours are sRGB (IEC 61966-2-1), a material's factors linear.
float linear(float factor) {
  const double c = static_cast<double>(factor);
  return static_cast<float>(c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4));
}

std::string materialText(const MeshPart& part) {
  std::string colour;
  for (const float factor : part.factors) colour += shortestText(linear(factor)) + ',';
  return "{\"name\":\"" + part.name + "\",\"pbrMetallicRoughness\":{\"baseColorFactor\":[" + colour +
         "1],\"metallicFactor\":0,\"roughnessFactor\":" + shortestText(kRoughness) + "}}";
}

std::string accessorText(int view, std::uint64_t offset, std::size_t count, bool index,
                         const std::string& more = {}) {
  return "{\"bufferView\":" + std::to_string(view) + ",\"byteOffset\":" + std::to_string(offset) +
         ",\"count\":" + std::to_string(count) + ",\"componentType\":" + (index ? "5125" : "5126") +
         ",\"type\":\"" + (index ? "SCALAR" : "VEC3") + '"' + more + '}';
}

/// Three for each part: its indices, positions and normals.
std::string accessorsText(const std::vector<MeshPart>& parts, const Layout& layout) {
  std::string out;
  std::uint64_t indexAt = 0, pointAt = 0;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::size_t count = parts[i].points.size();
    const MeshBox box = boxOf({&parts[i], 1});
    out += (i == 0 ? "" : ",\n") + accessorText(0, indexAt, layout.indices[i], true) + ",\n" +
           accessorText(1, pointAt, count, false,
                        ",\"min\":" + triple(box.low) + ",\"max\":" + triple(box.high)) +
           ",\n" + accessorText(2, pointAt, count, false);
    indexAt += layout.indices[i] * kIndexSize;
    pointAt += count * kPointSize;
  }
  return out;
}

std::string viewsText(const Layout& layout) {
  const auto view = [](std::uint64_t offset, std::uint64_t size, const char* more) {
    return "{\"buffer\":0,\"byteOffset\":" + std::to_string(offset) +
           ",\"byteLength\":" + std::to_string(size) + more + '}';
  };
  return view(0, layout.indexBytes, ",\"target\":34963") + ",\n" +
         view(layout.indexBytes, layout.pointBytes, ",\"byteStride\":12,\"target\":34962") + ",\n" +
         view(layout.indexBytes + layout.pointBytes, layout.pointBytes,
              ",\"byteStride\":12,\"target\":34962");
}

/// Lines end where accessors do, so that the file's reader finds them.
std::string jsonOf(const ExportScene& scene, const std::vector<MeshPart>& parts, const Layout& layout) {
  std::string nodes, meshes, materials, children;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::string number = std::to_string(i), comma = i == 0 ? "" : ",";
    const auto accessor = [i](std::size_t which) { return std::to_string(3 * i + which); };
    children += comma + std::to_string(i + 1);
    nodes += ",{\"name\":\"" + parts[i].name + "\",\"mesh\":" + number + '}';
    meshes += comma + "{\"name\":\"" + parts[i].name +
              "\",\"primitives\":[{\"attributes\":{\"POSITION\":" + accessor(1) +
              ",\"NORMAL\":" + accessor(2) + "},\"indices\":" + accessor(0) + ",\"material\":" + number +
              "}]}";
    materials += comma + materialText(parts[i]);
  }
  const std::string title = scene.title.empty() ? "Knot" : jsonText(scene.title);
  std::string asset = "{\"version\":\"2.0\",\"generator\":\"Lorivan\"";
  if (!scene.source.empty()) asset += ",\"extras\":{\"source\":\"" + jsonText(scene.source) + "\"}";
  return "{\"asset\":" + asset + "},\"scene\":0,\"scenes\":[{\"name\":\"" + title +
         "\",\"nodes\":[0]}],\n\"nodes\":[{\"name\":\"" + title + "\",\"children\":[" + children + "]}" +
         nodes + "],\n\"meshes\":[" + meshes + "],\n\"materials\":[" + materials +
         "],\n\"buffers\":[{\"byteLength\":" + std::to_string(layout.bytes()) + "}],\n\"bufferViews\":[" +
         viewsText(layout) + "],\n\"accessors\":[\n" + accessorsText(parts, layout) + "\n]}";
}

using Normal = std::array<float, 3>;

/// Every triangle counts by its area.
std::vector<Normal> normalsOf(const MeshPart& part) {
  std::vector<Normal> sums(part.points.size(), Normal{});
  eachTriangle(part, [&](std::uint32_t ia, std::uint32_t ib, std::uint32_t ic) {
    const MeshPoint &a = part.points[ia], &b = part.points[ib], &c = part.points[ic];
    const auto span = [](std::int32_t from, std::int32_t to) {
      return static_cast<float>(std::int64_t{to} - from);
    };
    const float ux = span(a.x, b.x), uy = span(a.y, b.y), uz = span(a.z, b.z);
    const float vx = span(a.x, c.x), vy = span(a.y, c.y), vz = span(a.z, c.z);
    const Normal n{uy * vz - uz * vy, uz * vx - ux * vz, ux * vy - uy * vx};
    for (const std::uint32_t corner : {ia, ib, ic})
      for (std::size_t axis = 0; axis < 3; ++axis) sums[corner][axis] += n[axis];
  });
  for (Normal& n : sums) {
    const float size = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
    n = size > 0 && std::isfinite(size) ? Normal{n[0] / size, n[1] / size, n[2] / size} : Normal{0, 0, 1};
  }
  return sums;
}

void writeNumbers(const std::vector<MeshPart>& parts, TextOut& out) {
  for (const MeshPart& part : parts)
    eachTriangle(part, [&](std::uint32_t a, std::uint32_t b, std::uint32_t c) {
      out.take(putLittle32(putLittle32(putLittle32(out.room(kPointSize), a), b), c));
    });
  for (const MeshPart& part : parts)
    for (const MeshPoint& p : part.points)
      out.take(putFloat(putFloat(putFloat(out.room(kPointSize), metres(p.x)), metres(p.y)), metres(p.z)));
  for (const MeshPart& part : parts)
    for (const Normal& n : normalsOf(part))
      out.take(putFloat(putFloat(putFloat(out.room(kPointSize), n[0]), n[1]), n[2]));
}

/// The number behind "key": in a line; the greatest one when there is none.
std::uint32_t valueOf(std::string_view line, std::string_view key) {
  const std::size_t at = line.find(key);
  std::uint32_t value = 0xFFFFFFFF;
  if (at == std::string_view::npos) return value;
  line.remove_prefix(at + key.size());
  takeIndex(line, value);
  return value;
}

class GlbReader final : public MeshReader {
 public:
  bool take(std::string_view bytes) override {
    file_ += bytes;
    return true;
  }
  FileFacts finish() override {
    gatherer_.facts.damaged = !openChunks();
    std::size_t line = json_.find("\"accessors\":[\n"), next = 0;
    if (line == std::string_view::npos) gatherer_.facts.damaged = true;
    std::array<std::string_view, 3> part;
    std::size_t got = 0;
    for (line = json_.find('\n', line); line < json_.size() && !gatherer_.facts.damaged; line = next) {
      next = std::min(json_.find('\n', line + 1), json_.size());
      part[got++] = json_.substr(line + 1, next - line - 1);
      if (got == part.size()) takePart(part);
      got %= part.size();
    }
    return gatherer_.facts;
  }

 private:
  bool openChunks() {
    if (file_.size() < kHeadSize + 2 * kChunkHead || little32(file_.data()) != kMark ||
        little32(file_.data() + 8) != file_.size())
      return false;
    const std::uint64_t jsonSize = little32(file_.data() + kHeadSize),
                        second = kHeadSize + kChunkHead + jsonSize;
    if (little32(file_.data() + kHeadSize + 4) != kJsonMark || second + kChunkHead > file_.size())
      return false;
    json_ = std::string_view(file_).substr(kHeadSize + kChunkHead, jsonSize);
    bytes_ = std::string_view(file_).substr(second + kChunkHead);
    return little32(file_.data() + second + 4) == kBytesMark &&
           little32(file_.data() + second) == bytes_.size();
  }

  /// Where the accessor's numbers start; none when they pass the chunk's end.
  const char* numbers(std::string_view accessor, std::size_t size, std::uint32_t& count) {
    static constexpr std::string_view kOffset = "\"byteOffset\":";
    const std::uint32_t view = valueOf(accessor, "\"bufferView\":");
    count = valueOf(accessor, "\"count\":");
    std::size_t at = json_.find("\"bufferViews\":[");
    for (std::uint32_t i = 0; i <= view && at != std::string_view::npos; ++i)
      at = json_.find(kOffset, at + 1);
    if (at == std::string_view::npos || view > 2) return nullptr;
    const std::uint64_t start =
        std::uint64_t{valueOf(json_.substr(at), kOffset)} + valueOf(accessor, kOffset);
    return start + std::uint64_t{count} * size <= bytes_.size() ? bytes_.data() + start : nullptr;
  }

  void takePart(const std::array<std::string_view, 3>& accessors) {
    std::uint32_t indices = 0, points = 0, normals = 0;
    const char* index = numbers(accessors[0], kIndexSize, indices);
    const char* point = numbers(accessors[1], kPointSize, points);
    const char* normal = numbers(accessors[2], kPointSize, normals);
    FileFacts& facts = gatherer_.facts;
    if (index == nullptr || point == nullptr || normal == nullptr || normals != points || indices % 3 != 0) {
      facts.damaged = true;
      return;
    }
    for (std::uint32_t i = 0; i < indices; i += 3, index += 3 * kIndexSize) {
      const std::uint32_t a = little32(index), b = little32(index + 4), c = little32(index + 8);
      if (a >= points || b >= points || c >= points) facts.damaged = true;
      gatherer_.triangle(facts.points + a, facts.points + b, facts.points + c);
    }
    for (std::uint32_t i = 0; i < points; ++i, point += kPointSize)
      gatherer_.sharedPoint({thousandths(littleFloat(point)), thousandths(littleFloat(point + 4)),
                             thousandths(littleFloat(point + 8))});
  }

  FactsGatherer gatherer_;
  std::string file_;
  std::string_view json_, bytes_;
};

}  // namespace

std::unique_ptr<MeshReader> glbReader() { return std::make_unique<GlbReader>(); }

Status writeGlb(const ExportScene& scene, Sink& sink) {
  auto parts = sceneParts(scene, kStandardMillimetres);
  if (!parts) return parts.error();
  standUpright(*parts);
  const Layout layout(*parts);
  std::string json = jsonOf(scene, *parts, layout);
  json.append((4 - json.size() % 4) % 4, ' ');
  const std::uint64_t size = kHeadSize + 2 * kChunkHead + json.size() + layout.bytes();
  if (size > kMostBytes) return refused("the model is too large for a GLB file");
  std::string head;
  for (const std::uint32_t number : {kMark, std::uint32_t{2}, static_cast<std::uint32_t>(size),
                                     static_cast<std::uint32_t>(json.size()), kJsonMark})
    appendLittle32(head, number);
  head += json;
  appendLittle32(head, static_cast<std::uint32_t>(layout.bytes()));
  appendLittle32(head, kBytesMark);
  TextOut out(sink);
  out.text(head);
  writeNumbers(*parts, out);
  if (const Status done = out.finish(); !done) return done;
  return checkWritten(sink, glbReader(), [&] {
    return factsOf(*parts, [](const MeshPoint& p) {
      return MeshPoint{thousandths(metres(p.x)), thousandths(metres(p.y)), thousandths(metres(p.z))};
    });
  });
}

}  // namespace lorivan
