// The custom shape file: what is written comes back, and faults are named by their line.
#include "custom/shape_file.h"

#include <gtest/gtest.h>

#include <string>

namespace lorivan {
namespace {

TEST(ShapeFile, IsWrittenPlainlyAndComesBackExactly) {
  CustomShape shape;
  shape.addPoint(45, 60.25F);
  shape.addPoint(100.1F, 1.0F / 3);
  shape.addPoint(7, 8);
  shape.addLine(1, 2);
  shape.addLine(2, 3);
  shape.deletePoint(3);
  const std::string text = writeShapeText(shape);
  EXPECT_EQ(text,
            " 7500  6000 \r\n 3 \r\n 45  60.25 \r\n 100.1  0.33333334 \r\n-1 -1 \r\n"
            " 2 \r\n 1  2 \r\n-1 -1 \r\n");
  const auto again = readShapeText(text);
  EXPECT_TRUE(again && *again == shape);
}

TEST(ShapeFile, SeparatorsMayBeMixed) {
  for (const char* text :
       {"7500 6000\n2\n50 60\n70 80\n1\n1 2\n", "7500,6000\r\n2\r\n50,60\r\n70 , 80\r\n1\r\n1,2",
        "\t 7500 ,,6000 2 50 60 70 80 1 1 2 \r\n\r\n"}) {
    const auto shape = readShapeText(text);
    ASSERT_TRUE(shape) << text << shape.error().message;
    EXPECT_EQ(shape->ShapeY[2], 80);
    EXPECT_EQ(shape->lineBetween(2, 1), 1);
  }
}

std::string linesFile(int points, int lines) {
  std::string text = "7500 6000\n" + std::to_string(points) + "\n";
  for (int k = 0; k < points; ++k) text += "50 60\n";
  text += std::to_string(lines) + "\n";
  for (int k = 0; k < lines; ++k) text += "1 2\n";
  return text;
}

TEST(ShapeFile, FaultsAreRefusedWithTheirLine) {
  const std::pair<std::string, const char*> cases[] = {
      // clang-format off
      {"0 6000\n0\n0\n", "line 1: the width"}, {"7500 6000\n3\n1 2\n3 4\n1\n1 2\n", "the file ends"},
      {"7500 6000\n1\n1 2\n3 4\n1\n1 2\n", "line 4: the point number 4"},
      {"7500 6000\n1\nnan 5\n0\n", "line 3: nan is not a number"},
      {"7500 6000\n1\n5 32768\n0\n", "line 3: the coordinate"},
      {"7500 6000\n2\n1 2\n3 4\n1\n1 3\n", "line 6: the point number 3"},
      {"7500 6000\r2\r1 2\r\n3 4\r1\r0 2\r", "line 6: a line needs two points"},
      {linesFile(2, 1001), "line 5: the number of lines 1001"},
      {linesFile(kMostShapePoints + 1, 0), "line 2: the number of points"},
      {std::string("7500 6000\n\0\x01", 12), "line 2: ?? is not a number"},
      // clang-format on
  };
  for (const auto& [text, says] : cases) {
    const auto shape = readShapeText(text);
    ASSERT_FALSE(shape) << says;
    EXPECT_NE(shape.error().message.find(says), std::string::npos) << shape.error().message;
  }
  EXPECT_TRUE(readShapeText(linesFile(kMostShapePoints, kMostShapeLines)));
  EXPECT_TRUE(readShapeText("7500 6000\n2\n1 2\n3 4\n1\n1 2\n7\nnotes"))
      << "nothing behind the counted lines matters";
  EXPECT_NE(loadShapeFile("/no/such/shape.qzc").error().message.find("shape.qzc: "), std::string::npos);
}

}  // namespace
}  // namespace lorivan
