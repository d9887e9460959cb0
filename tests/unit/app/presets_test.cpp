// Named styles, the knot of a first start, and the knots that lie beside the program.
#include "app/presets.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <set>

#include "app/knot.h"
#include "app/knot_file.h"
#include "base/sink.h"

namespace lorivan {
namespace {

TEST(Presets, KeepToTheFieldsLimitsAndLeaveTheShapeAlone) {
  KnotFields start = firstRunFields();
  start.shape = Shape::Star;
  start.text(Param::XNo) = correctedText(Param::XNo, "9");
  for (int i = 0; i < 10; ++i) {
    const Preset& preset = presetTable()[static_cast<std::size_t>(i)];
    SCOPED_TRACE(preset.name);
    EXPECT_EQ(findPreset(preset.name), i);
    EXPECT_EQ(findPreset(std::to_string(i)), i);
    KnotFields fields = start;
    applyPreset(fields, i);
    EXPECT_EQ(fields.whole(Param::Width), preset.width) << "within the field's limits";
    EXPECT_LT(preset.edge, preset.width) << "the colour must show";
    EXPECT_EQ(fields.boxes[0],
              makeColour(preset.strands[0] >> 16, preset.strands[0] >> 8 & 0xFF, preset.strands[0] & 0xFF));
    EXPECT_EQ(fields.boxes[7], fields.boxes[0]);
    EXPECT_EQ(toArgb(BColor(fields.boxes, fields.whole(Param::PicKnotBackColour)), 0), preset.background);
    EXPECT_TRUE(fields.shape == start.shape && fields.checks == start.checks);
    for (const Param p : {Param::XNo, Param::YNo, Param::Scale, Param::Skew, Param::PolyRadius})
      EXPECT_EQ(fields.text(p), start.text(p));
  }
  EXPECT_EQ(findPreset("stained glass"), findPreset("Stained Glass"));
  for (const char* wrong : {"", "10", "-1", "Stained"}) EXPECT_FALSE(findPreset(wrong)) << wrong;
}

/// Loads, traces and saves every example: the same bytes must come out.
TEST(Examples, AreWhatTheProgramWrites) {
  std::set<Shape> shapes;
  int walled = 0;
  for (const auto& entry : std::filesystem::directory_iterator(LORIVAN_EXAMPLES)) {
    if (entry.path().extension() != ".qzd") continue;
    const std::string name = entry.path().string();
    if (extensionOf(name) != "qzd") continue;
    const auto text = readFile(name, kLargestKnotFile);
    ASSERT_TRUE(text) << name;
    const KnotFile file = parseKnotFile(*text);
    ASSERT_FALSE(file.fault) << name;
    KnotFields fields = firstRunFields();
    fields.shape = *file.shape;
    for (std::size_t i = 0; i < kKnotFileFields.size(); ++i)
      fields.text(kKnotFileFields[i]) = file.fields[i].value_or("");
    const auto made = std::make_unique<Knot>();
    Knot& knot = *made;
    knot.graph.CellSize = *file.CellSize;
    ASSERT_TRUE(takeLines(knot.graph, file)) << name;
    ASSERT_TRUE(traceKnot(knot, fields)) << name;
    EXPECT_EQ(writeKnotFile(fields, knot.graph), *text) << name;
    shapes.insert(fields.shape);
    for (const GridLine& line : file.lines) walled += line.Kind == 2;
  }
  EXPECT_EQ(shapes.size(), static_cast<std::size_t>(kShapeCount - 1)) << "one of each shape";
  EXPECT_GT(walled, 0);
}

}  // namespace
}  // namespace lorivan
