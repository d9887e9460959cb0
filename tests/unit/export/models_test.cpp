// Forms that number their corners, binary forms and reliefs: whole, of the right size, and read back.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <set>
#include <string>

#include "export/grey_png.h"
#include "export/relief.h"
#include "export/writers.h"
#include "export/zip.h"
#include "model3d/solid_body.h"
#include "png_chunks.h"
#include "unit/export/sample_knots.h"
#include "unit/export/stl_reader.h"

namespace lorivan {
namespace {

/// A file whose bytes may change between writing and reading.
class FrailSink final : public Sink {
 public:
  explicit FrailSink(std::function<void(std::string&)> harm = {}) : harm_(std::move(harm)) {}
  bool write(std::string_view more) override {
    bytes.append(more);
    return true;
  }
  bool canReadBack() const override { return true; }
  bool readBack(const std::function<bool(std::string_view)>& take) override {
    std::string kept = bytes;
    if (harm_) harm_(kept);
    for (std::size_t at = 0; at < kept.size(); at += kOddBlock)
      if (!take(std::string_view(kept).substr(at, kOddBlock))) return false;
    return true;
  }
  std::string bytes;

 private:
  static constexpr std::size_t kOddBlock = 977;
  std::function<void(std::string&)> harm_;
};

struct Form {
  const char* name;
  Status (*write)(const ExportScene&, Sink&);
  bool shared, binary, relief, solid = false;
};
constexpr Form kForms[] = {{"text STL", writeStl, false, false, false},
                           {"binary STL", writeStl, false, true, false},
                           {"relief STL", writeStl, false, true, true},
                           {"shared OBJ", writeObj, true, false, false},
                           {"GLB", writeGlb, false, false, false},
                           {"3MF", writeThreeMf, false, false, false},
                           {"relief 3MF", writeThreeMf, false, false, true},
                           {"body STL", writeStl, false, true, false, true},
                           {"body text", writeStl, false, false, false, true},
                           {"body OBJ", writeObj, false, false, false, true},
                           {"body GLB", writeGlb, false, false, false, true},
                           {"body 3MF", writeThreeMf, false, false, false, true}};

Status writeForm(const Form& form, ExportScene scene, Sink& sink) {
  scene.shared = form.shared;
  scene.binary = form.binary;
  if (form.relief) scene.relief = {40, 1.5};
  const auto body = form.solid ? fuse(scene.model, {.cells = 2}) : Result<SolidBody>(SolidBody());
  if (!body) return body.error();
  if (form.solid) scene.solid = &body->mesh;
  return form.write(scene, sink);
}

TEST(Models, EveryFormIsReadBackWholeWhateverTheShape) {
  for (const auto& [shape, tube] : std::initializer_list<std::pair<Shape, TubeSettings>>{
           {Shape::Star, {}},
           {Shape::Hexagonal,
            {.polySides = 12, .polyPoints = 2, .polySmooth = 5, .polyZF = 9.5F, .ringPercent = 100}},
           {Shape::Triangle, {.polySides = 3, .ringPercent = 75}}})
    for (const std::optional<double> width : {std::optional<double>(), std::optional<double>(3)})
      for (const Form& form : kForms) {
        const SampleKnot knot = standardKnot(shape, 3, 3, tube);
        FrailSink sink;
        const Status status = writeForm(form, knot.scene(width), sink);
        EXPECT_TRUE(status) << form.name << ", shape " << static_cast<int>(shape) << ": "
                            << status.error().message;
      }
}

TEST(Models, ADamagedFileIsNotTaken) {
  const SampleKnot knot = standardKnot(Shape::Star, 4, 2);
  const auto change = [](std::size_t before, const char* digits, char other) {
    return [=](std::string& bytes) {  // one of these characters in the middle of the file becomes another
      const std::size_t at = bytes.find_first_of(digits, bytes.size() / 2 - before);
      bytes[at] = bytes[at] == other ? digits[1] : other;
    };
  };
  const std::pair<const char*, std::function<void(std::string&)>> harms[] = {
      {"cut", [](std::string& bytes) { bytes.resize(bytes.size() - 60); }},
      {"longer", [](std::string& bytes) { bytes.append(50, '\1'); }},
      {"digit", change(0, "0123456789", '7')}};
  for (const Form& form : kForms)
    for (const auto& [what, harm] : harms) {
      const bool text = form.binary || form.write == writeGlb || form.write == writeThreeMf;
      if (std::string_view(what) == "longer" && form.write == writeObj)
        continue;  // an unfinished line is told below
      if (std::string_view(what) == "digit" && text) continue;
      FrailSink sink(harm);
      const Status status = writeForm(form, knot.scene(), sink);
      ASSERT_FALSE(status) << form.name << ' ' << what;
      EXPECT_EQ(status.error().kind, ErrorKind::output);
    }
  const auto noNumber = [](std::string& bytes) {  // in each triangle of a corner inside the box
    const std::string corner = bytes.substr(84 + 50 * 7 + 12, 12);
    for (auto at = bytes.find(corner); at != std::string::npos; at = bytes.find(corner, at + 12))
      bytes.replace(at, 4, "\0\0\xC0\x7F", 4);
  };
  // One bit of a coordinate, of an index and of deflated bytes, and a line's end.
  const std::pair<const Form&, std::function<void(std::string&)>> bits[] = {
      {kForms[1], [](std::string& bytes) { bytes[84 + 50 * 7 + 14] ^= 1; }},
      {kForms[1], noNumber},
      {kForms[4], [](std::string& bytes) { bytes[bytes.find("BIN") + 4 + 600] ^= 1; }},
      {kForms[5], [](std::string& bytes) { bytes[bytes.size() / 2] ^= 16; }},
      {kForms[3], [](std::string& bytes) { bytes.pop_back(); }}};
  for (const auto& [form, harm] : bits) {
    FrailSink sink(harm);
    EXPECT_FALSE(writeForm(form, knot.scene(), sink)) << form.name;
  }
}

/// The model's text in an archive.
std::string modelText(const std::string& archive) {
  std::string text;
  for (const ZipEntry& entry : zipEntries(archive))
    if (entry.deflated) {
      EXPECT_TRUE(inflateRaw(entry.packed, [&](std::string_view block) { return text.append(block), true; }));
    }
  return text;
}

TEST(Models, ColoursSizesAndTextsAreInThem) {
  const SampleKnot knot{torus(4, 1, 16, 8)};  // 10 units wide, half red and all blue
  ExportScene scene = knot.scene();
  scene.title = "<A> & \"B\"";
  scene.source = "lorivan-knot:AAAA;";
  scene.thumbnail = "picture";
  const std::string archive = written(writeThreeMf, scene), glb = written(writeGlb, scene);
  const std::string text = modelText(archive);
  for (const char* part : {"unit=\"millimeter\"", "&lt;A&gt; &amp; &quot;B&quot;", "displaycolor=\"#8000FF\"",
                           "<vertex x=\"9.846\" y=\"50.000\" z=\"20.076\"/>"})
    EXPECT_NE(text.find(part), std::string::npos) << part;
  EXPECT_NE(archive.find("lorivan-knot:AAAA;"), std::string::npos) << "stored as it is";
  EXPECT_NE(archive.find("picture"), std::string::npos);
  EXPECT_EQ(archive.find("thumbnail.png"), std::string::npos) << "which readers take for a texture";
  for (const char* part :
       {"\"baseColorFactor\":[0.21404", "<A> & \\\"B\\\"", "\"source\":\"lorivan-knot:AAAA;\""})
    EXPECT_NE(glb.find(part), std::string::npos) << part;
  const std::size_t most = glb.find("\"max\":[") + 7;
  EXPECT_NEAR(numbersOf(' ' + glb.substr(most, 8)).at(0), 0.05, 1e-5) << "metres";

  const std::string parts = written(writeGlb, standardKnot(Shape::SquareSquare, 2, 2).scene());
  std::set<std::string> ends;
  for (auto at = parts.find("\"max\":["); at != std::string::npos; at = parts.find("\"max\":[", at + 1))
    ends.insert(parts.substr(at, 24));
  EXPECT_GT(ends.size(), 1U) << "each strand ends elsewhere";
}

TEST(Models, NormalsOfGlbPointOutOfItsFaces) {
  const SampleKnot knot{torus(4, 1, 16, 8)};
  const std::string glb = written(writeGlb, knot.scene());
  // The first mesh: indices, positions and normals one behind the other.
  std::array<std::size_t, 3> length{};
  std::size_t at = glb.find("\"bufferViews\"");
  for (std::size_t& bytes : length) {
    at = glb.find("\"byteLength\":", at) + 13;
    bytes = std::stoul(glb.substr(at, 9));
  }
  const char* const data = glb.data() + glb.find(std::string("BIN\0", 4)) + 4;
  std::vector<std::uint32_t> indices(length[0] / 4);
  std::vector<std::array<float, 3>> places(length[1] / 12), normals(length[2] / 12);
  std::memcpy(indices.data(), data, length[0]);
  std::memcpy(places.data(), data + length[0], length[1]);
  std::memcpy(normals.data(), data + length[0] + length[1], length[2]);
  ASSERT_TRUE(indices.size() > 100 && places.size() == normals.size());
  for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
    const auto &a = places.at(indices[i]), &b = places.at(indices[i + 1]), &c = places.at(indices[i + 2]);
    const auto& n = normals.at(indices[i]);
    const auto side = [&](const auto& to, std::size_t k) { return to[k % 3] - a[k % 3]; };
    float outward = 0;
    for (std::size_t k = 0; k < 3; ++k)
      outward += n[k] * (side(b, k + 1) * side(c, k + 2) - side(b, k + 2) * side(c, k + 1));
    EXPECT_GT(outward, 0);
  }
}

TEST(Models, CornersAreSharedWithinAStrandAndNotBetweenStrands) {
  const TubeModel one = torus(5, 1, 24, 8);
  SampleKnot knot;
  knot.model = one;
  const std::size_t corners = strandParts(TubeMesh(one, 1))[0].points.size();
  EXPECT_EQ(corners, 24U * 8U);
  knot.model = sweptTube({one.centres, one.centres}, 8, 1);
  const auto parts = strandParts(TubeMesh(knot.model, 1));
  ASSERT_EQ(parts.size(), 2U);
  EXPECT_EQ(parts[1].points.size(), corners);
  ExportScene scene = knot.scene();
  scene.shared = true;
  scene.materialFile = "knot.mtl";
  MemorySink obj, materials, archive;
  ASSERT_TRUE(writeObj(scene, obj) && writeMaterials(scene, materials) && writeThreeMf(scene, archive));
  EXPECT_NE(modelText(archive.bytes).find("pid=\"1\" pindex=\"1\""), std::string::npos);
  EXPECT_NE(obj.bytes.find("mtllib knot.mtl\r\n"), std::string::npos);
  for (const char* slot : {"strand1", "strand2"}) {
    EXPECT_NE(obj.bytes.find(std::string("usemtl ") + slot), std::string::npos);
    EXPECT_NE(materials.bytes.find(std::string("newmtl ") + slot + "\r\nKd 0.5 0 1\r\n"), std::string::npos);
  }
}

TEST(Relief, HeightsAreTheModels) {
  const TubeModel ring = torus(4, 1, 400, 60);  // 10 wide, 2 high
  const auto map = heightMapOf(ring, 101, SamplesAt::edges);
  ASSERT_TRUE(map);
  EXPECT_EQ(map->rows, 101);
  EXPECT_NEAR(map->top, 0.2, 1e-3);
  EXPECT_NEAR(map->at(10, 50), 0.2F, 1e-3) << "the top of the ring";
  EXPECT_NEAR(map->at(5, 50), 0.1 + 0.1 * std::sqrt(0.75), 2e-3) << "half way down";
  EXPECT_EQ(map->at(50, 50), 0) << "the hole";
  EXPECT_EQ(map->at(0, 0), 0);
  double volume = 0;  // of a half torus on the half below it, in all: 2 pi R (r r pi / 2 + 2 r r)
  for (const float height : map->heights) volume += static_cast<double>(height) * 1e-4;
  EXPECT_NEAR(volume * 1000, kTwoPi * 4 * (kPi / 2 + 2), 2);
}

TEST(Relief, IsUprightAndClosedOnItsPlate) {
  SampleKnot knot;
  const std::vector<Vec3> small = torus(1, 0.5F, 24, 8).centres;
  std::vector<Vec3> corner(small), middle(small);
  for (Vec3& p : corner) p = {p.x + 6, p.y + 3, p.z + 2};  // high, and upright: lower left
  knot.model = sweptTube({corner, middle}, 8, 0.5F);
  ExportScene scene = knot.scene(50);
  scene.relief = {60, 3};
  const auto map = heightMapOf(knot.model, 60, SamplesAt::edges);
  EXPECT_GT(*std::max_element(map->heights.end() - 60 * 10, map->heights.end()), 0.9 * map->top);
  EXPECT_LT(*std::max_element(map->heights.begin(), map->heights.begin() + 60 * 10), 0.5 * map->top);
  MemorySink stl;
  ASSERT_TRUE(writeStl(scene, stl));
  const auto triangles = readStl(stl.bytes);
  const MeshFacts facts = factsOf(triangles);
  EXPECT_EQ(facts.unmatched + facts.ambiguous + facts.degenerate, 0);
  double high = 0, wide = 0;
  for (const auto& triangle : triangles)
    for (const auto& p : triangle) high = std::max(high, p[2]), wide = std::max(wide, p[0]);
  EXPECT_NEAR(wide, 50, 0.001);
  EXPECT_NEAR(high, 3 + 50 * map->top, 0.02);
  scene.relief = {2000, 3};
  EXPECT_EQ(writeStl(scene, stl).error().kind, ErrorKind::limit);
  scene.relief = {500, 3};
  scene.millimetres = 0.5;
  EXPECT_EQ(writeStl(scene, stl).error().kind, ErrorKind::output);
  for (Vec3& p : corner) p = {p.x - 6, p.y + 80, p.z};
  knot.model = sweptTube({corner, middle}, 8, 0.5F);
  scene.relief = {10, 3};
  scene.millimetres = 8e4;
  EXPECT_EQ(writeStl(scene, stl).error().kind, ErrorKind::output) << "in 32 bits the kilometres end";
}

TEST(GreyPng, HoldsItsLevelsInChunksWithTheirSums) {
  using namespace std::string_literals;
  const std::vector<std::uint16_t> levels = {0, 1, 0xFFFF, 0x1234, 0x00FF, 0x8000};
  const std::pair<std::string_view, std::string> texts[] = {{"Title", "a knot"}};
  std::string names, pixels;
  for (const auto& [name, data] : pngChunks(greyPng({3, 2, levels, 10000, texts}))) {
    names += name + ' ';
    if (name != "IDAT") continue;
    EXPECT_TRUE(inflateRaw(std::string_view(data).substr(2, data.size() - 6),
                           [&](std::string_view block) { return pixels.append(block), true; }));
  }
  EXPECT_EQ(names, "IHDR pHYs tEXt IDAT IEND ");
  ASSERT_EQ(pixels.size(), 2U * 7U);
  // Behind its filter's number the first row stands as it is, the second one as what it has more than the
  // first.
  EXPECT_EQ(pixels.substr(1, 6), "\x00\x00\x00\x01\xFF\xFF"s);
  EXPECT_EQ(pixels.substr(8), "\x12\x34\x00\xFE\x81\x01"s);
}

}  // namespace
}  // namespace lorivan
