// VRML 2.0 world: one shape for each strand, turned by touch and by a clock.
#include <string>

#include "base/numbers.h"
#include "export/mesh.h"
#include "export/text_out.h"
#include "export/writers.h"

namespace lorivan {
namespace {

constexpr std::string_view kTooManyPolygonsVrml =
    "Use less Sides or less points\r\nSorry, too many polygons for the VRML save";
constexpr std::size_t kVrmlFaceRoom = 4 * (8 + 3 * kMostDigits);

constexpr std::string_view kHead =
    "#VRML V2.0 utf8\r\n"
    "WorldInfo {\r\n"
    "title \"Lorivan\"\r\n"
    "info [\r\n"
    "\"Description: Lorivan\"\r\n"
    "\"Programming: Corin Vale\"\r\n"
    "\"Created: December 1999\"\r\n"
    "] }\r\n"
    "#You can change the lighting manually by removing the comment before the appropriate line\r\n"
    "NavigationInfo {headlight FALSE type \"ALL\"}\r\n"
    "#DirectionalLight {}\r\n"
    "#SpotLight {location 0 0 25}\r\n";

/// For a model in its own units.
constexpr std::string_view kLightsAndViewpoint =
    "PointLight {location 0 10 10}\r\n"
    "PointLight {location 10 -10 0}\r\n"
    "Viewpoint {position 0 0 20}\r\n";

constexpr std::string_view kBeforeBackground =
    "#You can remove the Background by adding a # in front of the next line\r\n";

constexpr std::string_view kTail =
    "] }\r\n"
    "DEF s Script {\r\n"
    "eventIn SFTime touch\r\n"
    "eventOut SFBool flag\r\n"
    "url \"javascript: function touch () {flag = false; }\"}\r\n"
    "DEF myClock TimeSensor { cycleInterval 30.0 loop TRUE }\r\n"
    "DEF Animation OrientationInterpolator {\r\n"
    "key [ 0,      .33,       .66,        1.0 ]\r\n"
    "keyValue [ 0 1 0 0, 0 1 0 2.1, 0 1 0 4.2, 0 1 0 0 ]}\r\n"
    "ROUTE Click.touchTime TO myClock.stopTime\r\n"
    "ROUTE Click.touchTime TO s.touch\r\n"
    "ROUTE s.flag TO Click.enabled\r\n"
    "ROUTE myClock.fraction_changed TO Animation.set_fraction\r\n"
    "ROUTE Animation.value_changed TO Knot.rotation\r\n"
    "ROUTE MyRotate.rotation_changed TO Knot.set_rotation\r\n";

std::string printed(float red, std::string_view between, float green, float blue) {
  std::string text;
  appendPrinted(text, red);
  text += between;
  appendPrinted(text, green);
  text += between;
  appendPrinted(text, blue);
  return text;
}

/// A model in millimetres has its lights and its viewer at the same distances. The model stands on its head;
/// here, the viewer does so, too, and the lights come from where they then come from above. Lights reach 100
/// units where nothing else is said.
std::string lightsAndViewpoint(double scale) {
  const auto number = [scale](double x) { return MyFormat(static_cast<float>(x * scale)); };
  const std::string radius = " radius " + number(100) + "}\r\n";
  return "PointLight {location 0 " + number(-10) + ' ' + number(10) + radius +  //
         "PointLight {location " + number(-10) + ' ' + number(10) + " 0" + radius +
         "Viewpoint {position 0 0 " + number(20) + " orientation 0 0 1 3.141593}\r\n";
}

std::string backgroundLine(Colour c) {
  const auto part = [](int component) { return static_cast<float>(component) / 255.0F; };
  return "Background {skyColor " + printed(part(redOf(c)), ",", part(greenOf(c)), part(blueOf(c))) + "}";
}

char* putVrmlPoint(char* at, const MeshPoint& p) {
  at = putThousandths(at, p.x);
  *at++ = ' ';
  at = putThousandths(at, p.y);
  *at++ = ' ';
  at = putThousandths(at, p.z);
  return putText(at, ",\r\n");
}

char* putVrmlFace(char* at, std::int32_t first, std::size_t corners) {
  for (std::size_t i = 0; i < corners; ++i) {
    *at++ = ' ';
    at = putInteger(at, first + static_cast<std::int32_t>(i));
    at = putText(at, " ,");
  }
  return putText(at, "-1\r\n");
}

/// Indices count from 0 in every shape.
void writeShape(const ExportScene& scene, const TubeMesh& mesh, const TubeMesh::Strand& strand,
                TextOut& out) {
  const auto& [red, green, blue] = strand.factors;
  out.line("Shape { appearance Appearance {material Material {diffuseColor" + printed(red, "", green, blue) +
           " }}");
  out.line("geometry IndexedFaceSet { creaseAngle 99");
  out.line("coord Coordinate {point [");
  for (std::size_t ring = 0; ring < strand.ringCount && out.ok(); ++ring) {
    mesh.eachFace(strand, ring, [&](const TubeMesh::Face& face) {
      char* at = out.room(kVrmlFaceRoom);
      for (const std::uint8_t corner : polygonCorners(face.cut))
        at = putVrmlPoint(at, mesh.points()[face.corner[corner]]);
      out.take(at);
    });
    out.reached(scene.progress, strand.firstRing + ring, mesh.ringCount());
  }
  out.line("] }");
  out.line("coordIndex [");
  std::int32_t index = 0;
  for (std::size_t ring = 0; ring < strand.ringCount && out.ok(); ++ring)
    mesh.eachFace(strand, ring, [&](const TubeMesh::Face& face) {
      const std::size_t corners = polygonCorners(face.cut).size();
      if (corners == 0) return;
      out.take(putVrmlFace(out.room(kVrmlFaceRoom), index, corners));
      index += static_cast<std::int32_t>(corners);
    });
  out.line("] } } ");
}

}  // namespace

Status writeVrml(const ExportScene& scene, Sink& sink) {
  const Result<TubeMesh> mesh = sceneMesh(scene);
  if (!mesh) return mesh.error();
  if (mesh->cornerCount() > static_cast<std::size_t>(kMostVrmlVertices)) return refused(kTooManyPolygonsVrml);
  TextOut out(sink);
  out.text(kHead);
  if (const auto scale = modelScale(scene.model, scene.millimetres); scale && scene.millimetres)
    out.text(lightsAndViewpoint(*scale));
  else
    out.text(kLightsAndViewpoint);
  out.text(kBeforeBackground);
  out.line(backgroundLine(scene.background));
  out.line("DEF Knot Transform {children [ DEF Click TouchSensor { } DEF MyRotate SphereSensor { }");
  for (const TubeMesh::Strand& strand : mesh->strands()) writeShape(scene, *mesh, strand, out);
  out.text(kTail);
  return out.finish();
}

}  // namespace lorivan
