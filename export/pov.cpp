// POV-Ray scene: the template with its camera at the right distance, then one blob for each strand.
#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>

#include "base/numbers.h"
#include "export/mesh.h"
#include "export/text_out.h"
#include "export/writers.h"

namespace lorivan {
namespace {

constexpr std::string_view kMissingPovTemplate =
    "Sorry, you are missing the povinit.txt file.\r\nE-mail Corin Vale for a copy if you've not got it on "
    "your PC";

/// The template's camera sees a plane at distance 1 from -1/2 to 1/2 across and from -0.4 to 0.4 upwards.
constexpr double kDistancePerHalfWidth = 2;
constexpr double kDistancePerHalfHeight = 2.5;

/// The scene's view distance, or further away where a part of the knot would not be in the picture.
double cameraDistance(const ExportScene& scene) {
  double distance = scene.viewDistance;
  const double radius = scene.model.radius;
  for (const Vec3& c : scene.model.centres) {
    const double x = std::fabs(c.x) + radius, y = std::fabs(c.y) + radius, z = c.z + radius;
    if (std::isfinite(x + y + z))
      distance = std::max({distance, z + kDistancePerHalfWidth * x, z + kDistancePerHalfHeight * y});
  }
  return distance;
}

void copyTemplate(std::string_view text, double distance, TextOut& out) {
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (line.find("location") == std::string_view::npos)
      out.line(line);
    else
      out.line(std::string("   location <0,0,").append(MyFormat(static_cast<float>(distance))).append(">"));
  }
}

/// The colour that the template gives a number: the first palette's fourteen, again and again.
Colour firstColour(int number) { return QBColor((number - 1) % 14 + 1); }

std::string srgb(Colour colour) {
  const auto part = [](int component) { return MyFormat(static_cast<float>(component) / 255.0F + 0.0005F); };
  return "color srgb <" + part(redOf(colour)) + ',' + part(greenOf(colour)) + ',' + part(blueOf(colour)) +
         '>';
}

/// What the screen shows in other colours than those of a first start is declared anew behind the template;
/// everything else is as the template has it.
void writeColours(const ExportScene& scene, TextOut& out) {
  if (scene.background != 0xFFFFFF) out.line("background { " + srgb(scene.background) + " }");
  std::array<bool, kStrandSlots> written{};
  for (const TubeStrand& strand : scene.model.strands) {
    const int number = scene.colourNumber(strand.slot);
    const auto part = [&](std::size_t i) { return toInt32(strand.factors[i] * 255.0F); };
    const Colour colour = makeColour(part(0), part(1), part(2));
    if (colour == firstColour(number) || std::exchange(written[number], true)) continue;
    out.line("#declare colour" + std::to_string(number) + " = texture { pigment { " + srgb(colour) +
             " } finish { ambient 0.12 diffuse 0.8 phong 0.35 phong_size 40 } }");
  }
}

char* putVector(char* at, const MeshPoint& p) {
  *at++ = '<';
  at = putThousandths(at, p.x);
  *at++ = ',';
  at = putThousandths(at, p.y);
  *at++ = ',';
  at = putThousandths(at, p.z);
  *at++ = '>';
  return at;
}

/// One piece of a centre line for each pair of neighbouring centres that differ in three decimals: a cylinder
/// without length is an error to POV-Ray, and so is a blob without a cylinder.
void writeStrand(const ExportScene& scene, const TubeStrand& strand, double scale, TextOut& out) {
  const std::string radius = std::string(",").append(MyFormat(scene.model.radius)).append(",1}\r\n");
  bool begun = false;
  for (int piece = 0; piece < strand.ringCount && out.ok(); ++piece) {
    const Vec3* centres = &scene.model.centres[strand.firstRing];
    const MeshPoint from = meshPoint(centres[piece], scale);
    const MeshPoint to = meshPoint(centres[piece + 1 < strand.ringCount ? piece + 1 : 0], scale);
    if (from == to) continue;
    if (!begun) out.line("blob {threshold .01");
    begun = true;
    char* at = putText(out.room(160), "cylinder { ");
    out.take(putText(putVector(putVector(at, from), to), radius));
  }
  if (!begun) return;
  out.line("texture {colour" + std::to_string(scene.colourNumber(strand.slot)) + "}");
  out.line("}");
}

}  // namespace

Status writePov(const ExportScene& scene, Sink& sink) {
  if (!scene.povTemplate) return unreadable(kMissingPovTemplate);
  if (scene.model.QuadCount > kMostQuads) return refused(kTooManyPolygonsExport);
  const Result<double> scale = modelScale(scene.model, std::nullopt);
  if (!scale) return scale.error();
  TextOut out(sink);
  copyTemplate(*scene.povTemplate, cameraDistance(scene), out);
  writeColours(scene, out);
  const std::size_t count = scene.model.strands.size();
  for (std::size_t i = 0; i < count; ++i) {
    writeStrand(scene, scene.model.strands[i], *scale, out);
    out.reached(scene.progress, i, count);
  }
  return out.finish();
}

}  // namespace lorivan
