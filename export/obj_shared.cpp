// Wavefront OBJ for modelling: every corner once, one object with its material for each strand.
#include <string>

#include "base/numbers.h"
#include "export/read_back.h"
#include "export/text_out.h"
#include "export/writers.h"

namespace lorivan {
namespace {

constexpr std::size_t kLineRoom = 16 + 4 * kMostDigits;

std::string materialName(const MeshPart& part) {
  return "strand" + part.name.substr(part.name.find(' ') + 1);
}

void writePart(TextOut& out, const MeshPart& part, std::uint32_t firstIndex) {
  out.line("o " + materialName(part));
  for (const MeshPoint& p : part.points) {
    char* at = putThousandths(putText(out.room(kLineRoom), "v "), p.x);
    *at++ = ' ';
    at = putThousandths(at, p.y);
    *at++ = ' ';
    out.take(putText(putThousandths(at, p.z), kLineEnd));
  }
  out.line("usemtl " + materialName(part));
  for (const PartFace& face : part.faces) {
    char* at = out.room(kLineRoom);
    *at++ = 'f';
    for (const std::uint32_t corner : face) {
      if (corner == kNoCorner) break;
      *at++ = ' ';
      at = putInteger(at, static_cast<std::int32_t>(firstIndex + corner));
    }
    out.take(putText(at, kLineEnd));
  }
}

}  // namespace

Status writeSharedObj(const ExportScene& scene, Sink& sink) {
  const auto parts = sceneParts(scene, {});
  if (!parts) return parts.error();
  TextOut out(sink);
  out.line("#Object format knot produced by Lorivan");
  if (!scene.materialFile.empty()) out.line("mtllib " + std::string(scene.materialFile));
  std::uint32_t index = 1;
  for (const MeshPart& part : *parts) {
    writePart(out, part, index);
    index += static_cast<std::uint32_t>(part.points.size());
    if (scene.progress)
      scene.progress(static_cast<double>(&part - parts->data() + 1) / static_cast<double>(parts->size()));
  }
  if (const Status done = out.finish(); !done) return done;
  return checkWritten(sink, objReader(), [&] { return factsOf(*parts); });
}

Status writeMaterials(const ExportScene& scene, Sink& sink) {
  TextOut out(sink);
  out.line("#Materials of a knot produced by Lorivan");
  for (const TubeStrand& strand : scene.model.strands) {
    std::string colour;
    for (const float factor : strand.factors) colour += ' ' + shortestText(factor);
    out.line("newmtl strand" + std::to_string(strand.slot));
    out.line("Kd" + colour);
    out.line("Ks 0.4 0.4 0.4");
    out.line("Ns 40");
  }
  return out.finish();
}

}  // namespace lorivan
