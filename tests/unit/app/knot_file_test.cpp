// Knot files: what is written comes back, and what is broken is told by line.
#include "app/knot_file.h"

#include <gtest/gtest.h>

#include "app/knot.h"

namespace lorivan {
namespace {

constexpr const char* kSmall =
    "20,0\r\n30,2,2,12,7,10,3,5\r\n-20,-20,20,-20,0,-20,1,0\r\n20,-20,20,20,20,0,2,1\r\n";

TEST(KnotFile, WritingAndReadingIsIdentity) {
  const KnotFile file = parseKnotFile(kSmall);
  ASSERT_FALSE(file.fault);
  EXPECT_EQ(*file.CellSize, 20);
  EXPECT_EQ(*file.fields[7], "5");
  ASSERT_EQ(file.lines.size(), 2U);
  EXPECT_EQ(file.lines[1].Kind, kWall);
  EXPECT_EQ(file.lines[1].Passes, 1);
  EXPECT_EQ(file.lines[1].Angle, lineAngle(0, -40));
  KnotFields fields = firstRunFields();
  for (std::size_t i = 0; i < kKnotFileFields.size(); ++i) fields.text(kKnotFileFields[i]) = *file.fields[i];
  KnotGraph graph;
  graph.CellSize = *file.CellSize;
  ASSERT_TRUE(takeLines(graph, file));
  EXPECT_EQ(graph.LastPoint, 3);
  EXPECT_EQ(graph.Lines[1].Passes, 0) << "collecting the points starts a clean graph";
  graph.Lines[1].Passes = 1;
  EXPECT_EQ(writeKnotFile(fields, graph), kSmall);
}

TEST(KnotFile, FaultsNameTheirLineAndKeepWholeLines) {
  const std::string head = "20,0\r\n30,2,2,12,7,10,3,5\r\n", good = "0,0,9,0,4,0,1,0\r\n";
  std::string tooMany = head;
  for (int i = 0; i <= kMostLines; ++i) tooMany += good;
  const struct {
    std::string text, reason;
    std::size_t lines;
  } cases[] = {
      {"", "line 1: the file is empty", 0},
      {"20\r\n", "line 1: ends after 1 of 2 values", 0},
      {"20,13\r\n", "line 1: there is no shape number 13", 0},
      {"20,x\r\n", "line 1: \"x\" is not a whole number from -32768 to 32767", 0},
      {"20,0\r\n", "line 2 is missing", 0},
      {"20,0\r\n30,2\r\n", "line 2: has fewer than three values", 0},
      {head + good + "0,0,9,0,4,0,1\r\n", "line 4: ends after 7 of 8 values", 1},
      {head + good + good + "0,0,9,0", "line 5: ends after 4 of 8 values", 2},
      {head + "0,0,40000,0,4,0,1,0\r\n", "line 3: \"40000\" is not a whole number from -32768 to 32767", 0},
      {head + "0,0,1.5,0,4,0,1,0\r\n", "line 3: \"1.5\" is not a whole number from -32768 to 32767", 0},
      {head + "0,0,9,0,4,0,1,0,5\r\n", "line 3: has more than 8 values", 0},
      {head + "\r\n" + good, "line 3: is empty", 0},
      {tooMany, "line 5003: a knot has at most 5000 lines", 5000},
      {std::string("\x89PNG\0\0\1", 7), "line 1: ends after 1 of 2 values", 0},
  };
  for (const auto& c : cases) {
    const KnotFile file = parseKnotFile(c.text);
    ASSERT_TRUE(file.fault) << c.reason;
    EXPECT_EQ(file.fault->message, c.reason);
    EXPECT_EQ(file.lines.size(), c.lines);
  }
}

}  // namespace
}  // namespace lorivan
