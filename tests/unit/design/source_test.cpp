// Sources inside other files: what is put in is found again, and nothing else is taken for one.
#include "design/source.h"

#include <gtest/gtest.h>

#include "grids.h"
#include "png_chunks.h"
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

TEST(Source, APngHasATextChunkOfItsOwnForIt) {
  const std::vector<PngChunk> chunks = pngChunks(made(*newGrid(Document{}), "png"));
  EXPECT_TRUE(std::ranges::any_of(chunks, [](const PngChunk& chunk) {
    return chunk.name == "tEXt" && chunk.data.starts_with(std::string("Lorivan\0", 8));
  }));
  EXPECT_EQ(chunks.back().name, "IEND");
}

TEST(Source, EveryFormatThatCarriesItOpensAsTheKnotThatItWasMadeFrom) {
  const Folder folder;
  Document document = withField(withField(Document{}, Param::XNo, "4"), Param::PolyRadius, "0.2");
  document.fields.boxes[2] = 0x123456;
  document = *newGrid(document);
  int carriers = 0;
  for (const ExportFormat& format : exportFormats()) {
    if (!format.carriesSource) continue;
    ++carriers;
    const std::string path = folder.file("source." + std::string(format.extension));
    const std::string bytes = made(document, format.extension);
    ASSERT_TRUE(writeFile(path, bytes));
    EXPECT_TRUE(canHoldKnot(path) && holdsKnot(path)) << path;
    const auto read = readKnotFile(path);
    ASSERT_TRUE(read) << path << ": " << read.error().message;
    EXPECT_EQ(documentText(read->document), made(document, "qzd")) << path;
    EXPECT_EQ(made(read->document, format.extension), bytes) << path;
  }
  EXPECT_GE(carriers, 2);
  EXPECT_EQ(sourceInside(made(document, "stl")), std::nullopt) << "required forms stay as they are";
}

}  // namespace
}  // namespace lorivan
