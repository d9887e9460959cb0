// Named styles, the knot of a first start, and the knots that lie beside the program.
#include "design/presets.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <set>

#include "base/sink.h"
#include "design/document_text.h"
#include "design/knot.h"

namespace lorivan {
namespace {

TEST(Presets, AreFoundByNameAndNumberAndClassicBringsTheFirstOneBack) {
  for (int i = 0; i < static_cast<int>(presetTable().size()); ++i)
    EXPECT_TRUE(findPreset(presetTable()[i].name) == i && findPreset(std::to_string(i)) == i);
  EXPECT_EQ(findPreset("stained glass"), 6);
  for (const char* wrong : {"", "11", "-1", "Stained"}) EXPECT_FALSE(findPreset(wrong)) << wrong;
  KnotFields classic = firstRunFields();
  applyPreset(classic, 3);
  applyPreset(classic, *findPreset("classic"));
  EXPECT_EQ(classic, firstRunFields());
}

/// Loads, traces and saves every example: the same bytes must come out.
TEST(Examples, AreWhatTheProgramWrites) {
  std::set<Shape> shapes;
  std::ptrdiff_t walls = 0;
  const auto knot = std::make_unique<Knot>();
  for (const auto& entry : std::filesystem::directory_iterator(LORIVAN_EXAMPLES)) {
    const std::string name = entry.path().string();
    if (extensionOf(name) != kKnotFileExtension) continue;
    const auto text = readFile(name, kLargestKnotFile);
    ASSERT_TRUE(text) << name;
    auto read = readDocument(*text);
    ASSERT_TRUE(read && read->corrections.empty()) << name;
    ASSERT_TRUE(makeKnot(read->document, *knot)) << name;
    KnotLines lines = *read->document.lines;
    for (KnotLine& line : lines) line.Passes = 0;
    read->document.lines = Shared(std::move(lines));
    EXPECT_EQ(documentText(withPasses(read->document, knot->graph)), *text) << name;
    shapes.insert(read->document.fields.shape);
    walls += std::ranges::count(*read->document.lines, kWall, &KnotLine::Kind);
  }
  EXPECT_EQ(shapes.size(), static_cast<std::size_t>(kShapeCount - 1)) << "one of each shape";
  EXPECT_GT(walls, 0);
}

}  // namespace
}  // namespace lorivan
