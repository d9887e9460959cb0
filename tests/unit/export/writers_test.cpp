// The text of every format, its limits and its steadiness.
#include "export/writers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <locale>
#include <ranges>

#include "curve_maker.h"
#include "export/dxf.h"
#include "export/formats.h"
#include "unit/export/sample_knots.h"
#include "unit/export/stl_reader.h"

namespace lorivan {
namespace {

/// Three rings of three sides with easy numbers; not a shape anyone would print.
SampleKnot smallTube() {
  SampleKnot knot{sweptTube({{{4, 0, 0}, {0, 4, 0}, {-4, -4, 1}}}, 3, 1)};
  knot.model.strands[0].slot = 7;
  knot.model.vertices = {{5, 0, 0},   {4, 0, -0.5F}, {4, 0, 0.5F},  {0, 5, 0},     {0, 4, -0.5F},
                         {0, 4, .5F}, {-5, -5, 1},   {-4, -4, .5F}, {-4, -4, 1.5F}};
  addSamples(knot.curve, 7, {{-10, -10, 1}, {10, -10, 1}, {10, 10, 1}, {-10, 10, 1}});
  return knot;
}

TEST(Writers, TextsAreExact) {
  const SampleKnot knot = smallTube();
  ExportScene scene = knot.scene();
  scene.background = makeColour(255, 0, 51);
  scene.povTemplate = "// head\n  location <1,2,3> up\nlast";
  const std::pair<std::string_view, std::vector<std::string>> rows[] = {
      // parts in their order
      // clang-format off
      {"pov", {"// head\r\n   location <0,0,20.000>\r\nlast\r\nbackground { color srgb <1.000,0.000,0.200> }\r\n"
               "#declare colour7 = texture { pigment { color srgb <0.502,0.000,1.000> } ", "phong_size 40 } }\r\nblob {threshold .01\r\n",
               "cylinder { <4.000,0.000,0.000><0.000,4.000,0.000>,1.000,1}\r\n",
               "cylinder { <-4.000,-4.000,1.000><4.000,0.000,0.000>,1.000,1}\r\ntexture {colour7}\r\n}\r\n"}},
      {"vrml", {"#VRML V2.0 utf8\r\nWorldInfo {\r\ntitle \"Lorivan\"\r\n",
                "NavigationInfo {headlight FALSE type \"ALL\"}\r\n#DirectionalLight {}\r\n#SpotLight {location 0 0 25}\r\n"
                "PointLight {location 0 10 10}\r\nPointLight {location 10 -10 0}\r\nViewpoint {position 0 0 20}\r\n#You",
                "Background {skyColor  1 , 0 , 0.2 }\r\n", "diffuseColor 0.5  0  1  }}\r\ngeometry IndexedFaceSet { "
                "creaseAngle 99\r\ncoord Coordinate {point [\r\n5.000 0.000 0.000,\r\n",
                "] }\r\ncoordIndex [\r\n 0 , 1 , 2 , 3 ,-1\r\n 4 , 5 , 6 , 7 ,-1\r\n", "] } } \r\n] }\r\nDEF s Script {",
                "loop TRUE }\r\n", "key [ 0,      .33,       .66,        1.0 ]\r\nkeyValue [ 0 1 0 0, 0 1 0 2.1, 0 1 0 4.2, "
                "0 1 0 0 ]}\r\n"}},
      {"obj", {"#Object format knot produced by Lorivan\r\nv 5.000 0.000 0.000\r\nv 4.000 0.000 -0.500\r\n",
               "g qzd7\r\nf  1   2   3   4 \r\nf  5   6   7   8 \r\n"}},
      {"stl", {"solid\r\nfacet normal ", "\r\n  outer loop\r\n    vertex 5.000 0.000 0.000\r\n    vertex 4.000 0.000 -0.500\r\n"
               "    vertex 0.000 4.000 -0.500\r\n  endloop\r\nendfacet\r\nfacet normal ", "endfacet\r\nendsolid\r\n"}},
      {"xyz", {"5.000, 0.000, 0.000\r\n4.000, 0.000, -0.500\r\n4.000, 0.000, 0.500\r\n"}},
      {"gemvision", {"Points for 007\r\n5.000,0.000,0.000 : 4.000,0.000,-0.500 : 4.000,0.000,0.500\r\n0.000,5.000,0.000",
                     "1.500\r\nend\r\n"}},
      {"dxf3d", {"0\r\nSECTION\r\n2\r\nHEADER\r\n0\r\nENDSEC\r\n0\r\nSECTION\r\n2\r\nENTITIES\r\n0\r\n3DFACE\r\n8\r\n"
                 "Layer1\r\n62\r\n13\r\n10\r\n5.000\r\n20\r\n0.000\r\n30\r\n0.000\r\n11\r\n4.000\r\n",
                 "33\r\n", "\r\n0\r\n3DFACE\r\n", "\r\n0\r\nENDSEC\r\n0\r\nEOF\r\n"}},
      {"dxf2d", {"2\r\nHEADER\r\n9\r\n$EXTMIN\r\n10\r\n-1", "ENTITIES\r\n0\r\nPOLYLINE\r\n8\r\n7Layer\r\n62\r\n13\r\n66\r\n1",
                 "70\r\n1\r\n40\r\n0.003\r\n41\r\n0.003\r\n0\r\nVERTEX\r\n8\r\n7Layer\r\n10\r\n-10.000\r\n20\r\n-8.000\r\n",
                 "0\r\nSEQEND\r\n0\r\nENDSEC\r\n0\r\nEOF\r\n"}},
      // clang-format on
  };
  for (const auto& [identifier, parts] : rows) {
    const auto format = std::ranges::find(exportFormats(), identifier, &ExportFormat::identifier);
    const std::string text = written(format->write, scene);
    std::size_t at = 0;
    for (const std::string& part : parts) {
      const std::size_t found = text.find(part, at);
      ASSERT_NE(found, std::string::npos) << identifier << " lacks\n" << part << "\nin\n" << text;
      at = found + part.size();
    }
  }
}

TEST(Writers, StlNormalsAreWholeAlongAnAxisAndTheSameInBinary) {
  SampleKnot knot = smallTube();
  for (const std::size_t corner : {3U, 4U, 5U}) {
    knot.model.vertices[corner] = knot.model.vertices[corner - 3];
    knot.model.vertices[corner].y = 2.9F;
  }
  ExportScene scene = knot.scene();
  const std::string text = written(writeStl, scene);
  EXPECT_NE(text.find("facet normal -1.000 0.000 0.000"), std::string::npos);
  scene.binary = true;
  std::string facets = written(writeStl, scene).substr(84);
  for (const std::string_view line : linesOf(text)) {
    if (!line.starts_with("facet")) continue;
    std::array<float, 3> normal{};
    std::memcpy(normal.data(), facets.data(), sizeof normal);
    for (std::size_t axis = 0; axis < 3; ++axis)
      EXPECT_NEAR(normal[axis], numbersOf(line.substr(6)).at(axis), 0.001);
    facets.erase(0, 50);
  }
}

auto writers() {
  return exportFormats() | std::views::filter([](const ExportFormat& f) { return f.write != nullptr; });
}

struct CommaDecimals : std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(Writers, TheLocaleChangesNoByteAndAllLinesEndAlike) {
  const SampleKnot knot = standardKnot(Shape::Hexagonal, 3, 2);
  ExportScene scene = knot.scene();
  scene.povTemplate = "location\n";
  for (const ExportFormat& format : writers()) {
    const std::string plain = written(format.write, scene);
    const std::locale old = std::locale::global(std::locale(std::locale::classic(), new CommaDecimals));
    const std::string comma = written(format.write, scene);
    std::locale::global(old);
    EXPECT_EQ(plain, comma) << format.identifier;
    if (format.identifier == "3mf" || format.identifier == "glb") continue;
    for (std::size_t i = 0; i < plain.size(); ++i)
      if ((plain[i] == '\n') != (i > 0 && plain[i - 1] == '\r')) FAIL() << format.identifier << " at " << i;
  }
}

TEST(Writers, LimitsAndTheMissingTemplateAreTold) {
  SampleKnot knot = smallTube();
  knot.model.QuadCount = kMostQuads + 1;
  ExportScene scene = knot.scene();
  MemorySink sink;
  EXPECT_EQ(writePov(scene, sink).error().kind, ErrorKind::input);
  scene.povTemplate = "";
  for (const ExportFormat& format : writers())
    EXPECT_EQ(format.write(scene, sink).error().kind, ErrorKind::limit) << format.identifier;
  knot.model = torus(8, 1, 9999, 100);
  EXPECT_EQ(writeVrml(scene, sink).error().kind, ErrorKind::limit);
  EXPECT_EQ(writeObj(scene, sink).error().kind, ErrorKind::limit);
  EXPECT_TRUE(sink.bytes.empty()) << "a refused model leaves nothing behind";
}

TEST(Writers, FlatLinesHaveTheirWidthWithTheirBands) {
  const SampleKnot knot = standardKnot(Shape::Diamond1, 3, 2);
  ExportScene scene = knot.scene(80);
  MemorySink stl, dxf;
  ASSERT_TRUE(writeDxf2D(scene, dxf));
  const auto lines = linesOf(dxf.bytes);
  const auto number = [&](std::size_t line) { return std::stod(std::string(lines[line])); };
  const GridBox box = curveBox(knot.curve, 1);
  const double scale = 80 / (box.right - box.left + scene.bandWidth);
  EXPECT_NEAR(number(13) - number(7), 80 - scene.bandWidth * scale, 0.01) << "half a band stands out";
  EXPECT_EQ(dxf.bytes.find("70\r\n1\r\n40"), std::string::npos) << "lines with gaps are open";
  for (const double bad : {0.0, -5.0, 100001.0, std::nan("")}) {
    scene.millimetres = bad;
    EXPECT_FALSE(writeStl(scene, stl) || writeDxf2D(scene, dxf)) << bad;
  }
}

TEST(Writers, LightsAndViewOfAWorldGrowWithItsMillimetres) {
  const SampleKnot small = smallTube();  // 10 units wide
  EXPECT_NE(written(writeVrml, small.scene(20))
                .find("PointLight {location -20.000 20.000 0 radius 200.000}\r\n"
                      "Viewpoint {position 0 0 40.000 orientation 0 0 1 3.141593}\r\n"),
            std::string::npos);
}

TEST(Writers, PovRaySeesTheWholeKnotAndNoCylinderWithoutLength) {
  SampleKnot knot{
      sweptTube({{{9, 0, 9}, {9, 0, 9.0001F}, {-9, 8, 0}}, {{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}}, 3, 1)};
  ExportScene scene = knot.scene();
  scene.startColour = -4;
  for (TubeStrand& strand : knot.model.strands)
    strand.factors = {128 / 255.F, 0, 0};  // as the template has it
  scene.povTemplate = "location\r\n";
  EXPECT_EQ(written(writePov, scene),
            "   location <0,0,30.000>\r\n"
            "blob {threshold .01\r\n"
            "cylinder { <9.000,0.000,9.000><-9.000,8.000,0.000>,1.000,1}\r\n"
            "cylinder { <-9.000,8.000,0.000><9.000,0.000,9.000>,1.000,1}\r\n"
            "texture {colour4}\r\n}\r\n");
  knot.model.centres[2].y = 12;  // two and a half times 13, and a radius
  EXPECT_EQ(written(writePov, scene).substr(0, 27), "   location <0,0,33.500>\r\nb");
}

}  // namespace
}  // namespace lorivan
