// Sources inside other files: what is put in is found again, and nothing else is taken for one.
#include "design/source.h"

#include <gtest/gtest.h>

#include "base/sink.h"
#include "design/edits.h"
#include "design/outputs.h"
#include "platform/none/none_platform.h"
#include "scratch_folder.h"

namespace lorivan {
namespace {

TEST(Source, AnyTextComesBackFromAmongAnyBytes) {
  std::string text;
  for (int size = 1; size < 300; ++size) {
    text += static_cast<char>(size * 37);
    const std::string mark = sourceMark(text), wrapped = mark.substr(0, 15) + "\n\t " + mark.substr(15);
    EXPECT_EQ(mark.find_first_of("<>&\"'\\()% \n"), std::string::npos);
    EXPECT_EQ(sourceInside("lorivan-knot:" + std::string("\0\xFF;", 3) + wrapped + sourceMark("other")),
              text);
    EXPECT_FALSE(sourceInside(mark.substr(0, mark.size() - 1))) << "cut off";
  }
}

TEST(Source, DamagedMarksAreNone) {
  for (const char* bytes :
       {"", "lorivan-knot:", "lorivan-knot:;", "lorivan-knot:QUJD", "lorivan-knot:QUJ;", "lorivan-knot:QUJ*;",
        "lorivan-knot:QU=D;", "lorivan-knot:====;", "lorivan:QUJD;"})
    EXPECT_FALSE(sourceInside(bytes)) << bytes;
  EXPECT_FALSE(sourceInside("lorivan-knot:" + std::string(6'000'000, 'A') + ';')) << "too large";
}

/// Bytes of a document in a format.
std::string made(Platform& platform, const Document& document, std::string_view extension) {
  Knot knot;
  EXPECT_TRUE(makeKnot(document, knot));
  const StrandColours colours = strandColours(document.fields.boxes);
  MemorySink sink;
  const Status status =
      makeOutput(*findFormat(extension, DxfKind::faces), {platform, document, knot, colours}, sink);
  EXPECT_TRUE(status) << status.error().message;
  return std::move(sink.bytes);
}

/// Four bytes, the highest first.
std::uint32_t bigAt(const std::string& bytes, std::size_t at) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
  return value;
}

TEST(Source, PngChunksHaveTheirCheckSums) {
  NonePlatform platform;
  const std::string png = made(platform, *newGrid(Document{}), "png");
  bool source = false;
  std::size_t at = 8;
  while (at + 12 <= png.size()) {
    const std::size_t length = bigAt(png, at);
    ASSERT_LE(at + 12 + length, png.size());
    std::uint32_t sum = 0xFFFFFFFF;  // ISO 3309, bit by bit
    for (std::size_t i = at + 4; i < at + 8 + length; ++i) {
      sum ^= static_cast<unsigned char>(png[i]);
      for (int bit = 0; bit < 8; ++bit) sum = sum >> 1 ^ ((sum & 1) != 0 ? 0xEDB88320 : 0);
    }
    EXPECT_EQ(bigAt(png, at + 8 + length), ~sum) << png.substr(at + 4, 4);
    source |= png.compare(at + 4, 12, std::string("tEXtLorivan\0", 12)) == 0;
    at += 12 + length;
  }
  EXPECT_TRUE(source && at == png.size());
}

TEST(Source, EveryFormatThatCarriesItOpensAsTheKnotThatItWasMadeFrom) {
  const Folder folder;
  NonePlatform platform;
  Document document = withField(withField(Document{}, Param::XNo, "4"), Param::PolyRadius, "0.2");
  document.fields.boxes[2] = 0x123456;
  document = *newGrid(document);
  int carriers = 0;
  for (const ExportFormat& format : exportFormats()) {
    if (!format.carriesSource) continue;
    ++carriers;
    const std::string path = folder.file("source." + std::string(format.extension));
    const std::string bytes = made(platform, document, format.extension);
    ASSERT_TRUE(writeFile(path, bytes));
    EXPECT_TRUE(canHoldKnot(path) && holdsKnot(path)) << path;
    const auto read = readKnotFile(path);
    ASSERT_TRUE(read) << path << ": " << read.error().message;
    EXPECT_EQ(documentText(read->document), made(platform, document, "qzd")) << path;
    EXPECT_EQ(made(platform, read->document, format.extension), bytes) << path;
  }
  EXPECT_GE(carriers, 2);
  EXPECT_EQ(sourceInside(made(platform, document, "stl")), std::nullopt) << "required forms stay as they are";
}

}  // namespace
}  // namespace lorivan
