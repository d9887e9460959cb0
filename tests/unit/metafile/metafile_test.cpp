// Metafiles of the back end that the test is linked with, read back record by record: what the system itself
// writes and what is written for systems without such a call must hold the same.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>

#include "knot_maker.h"
#include "platform/entry.h"
#include "strands/band_paths.h"

namespace lorivan {
namespace {

Platform* platform = nullptr;

struct Path {
  std::vector<PointI> points;
  bool closed = false;
  std::int32_t penStyle = -1, width = 0;
  Colour colour = 0;
};

/// What a player would see of a file.
struct FileRead {
  std::vector<std::int32_t> header;  // without type and size
  std::vector<Path> paths;
  PointI window, viewport;
  std::vector<std::int32_t> clip;   // corners; without them all is shown
  int records = 0, penHandles = 0;  // pens made and not deleted

  double millimetres(int units) const {
    return 1.0 * units * viewport.x / window.x * header[18] / header[16];
  }
};

FileRead readMetafile(const std::string& bytes) {
  FileRead file;
  Path pen, path;
  std::size_t at = 0, size = 8;
  const auto word = [&](std::size_t offset) {
    std::int32_t value = 0;
    if (at + offset + 4 <= bytes.size()) std::memcpy(&value, bytes.data() + at + offset, 4);
    return value;
  };
  for (; at < bytes.size() && size >= 8; at += size, ++file.records) {
    size = static_cast<std::size_t>(word(4));
    const int type = word(0);
    const bool narrow = type >= 86;
    if (type == 1)
      for (std::size_t i = 8; i < 108; i += 4) file.header.push_back(word(i));
    if (type == 30) file.clip = {word(8), word(12), word(16), word(20)};
    if (type == 9) file.window = {word(8), word(12)};
    if (type == 11) file.viewport = {word(8), word(12)};
    if (type == 38) pen = {{}, false, word(12), word(16), std::uint32_t(word(24))};
    if (type == 38 || type == 40) file.penHandles += type == 38 ? 1 : -1;
    if (type == 59) path = pen;
    if (type == 27) path.points = {{word(8), word(12)}};
    if (type == 3 || type == 4 || type == 86 || type == 87) {
      EXPECT_EQ(path.points.size(), 1U) << "the pen has moved to the beginning";
      path.closed = type == 3 || type == 86;
      path.points.clear();
      for (std::size_t i = 0, o = 28; i < static_cast<std::size_t>(word(24)); ++i, o += narrow ? 4 : 8)
        path.points.push_back(narrow ? PointI{std::int16_t(word(o)), word(o) >> 16}
                                     : PointI{word(o), word(o + 4)});
    }
    if (type == 64) file.paths.push_back(path);
  }
  EXPECT_EQ(at, bytes.size()) << "the records fill the file";
  EXPECT_EQ(bytes.substr(bytes.size() - 20, 4), std::string("\x0E\0\0\0", 4)) << "the end is marked";
  EXPECT_TRUE(file.header[10] == std::int32_t(bytes.size()) && file.header[11] == file.records);
  EXPECT_TRUE((file.header[12] & 0xFFFF) >= 2 && file.penHandles == 0) << "handles, number 0 among them";
  return file;
}

/// The file that a drawing makes.
FileRead drawn(const MetafileSize& size, const std::function<void(Metafile&)>& draw) {
  const auto metafile = platform->createMetafile(size);
  EXPECT_TRUE(metafile) << metafile.error().message;
  draw(**metafile);
  const auto bytes = (*metafile)->finish();
  EXPECT_TRUE(bytes) << bytes.error().message;
  return readMetafile(*bytes);
}

double distance(PointF a, PointI b) { return std::hypot(a.x * 20.0 - b.x, a.y * 20.0 - b.y); }

double lengthOf(const Path& path) {
  double length = 0;
  for (std::size_t i = 1; i < path.points.size(); ++i)
    length += std::hypot(path.points[i].x - path.points[i - 1].x, path.points[i].y - path.points[i - 1].y);
  return length;
}

/// That a file's paths are bands along lines given in pixels of the reference picture, a twentieth of them in
/// the file.
class BandCheck {
 public:
  BandCheck(const FileRead& file, const KnotStyle& style) : file_(file), style_(style) {}

  void strand(int slot, const std::vector<PointF>& line) {
    along(next(), line, true, 14 * 20, 0);
    along(next(), line, true, 4 * 20, style_.bandColour(slot));
  }
  /// The black stops half its width before both ends, so that its round ends do not show; in a short run, a
  /// third of the run.
  void overRun(int slot, const std::vector<PointF>& line) {
    const Path& black = next();
    EXPECT_TRUE(!black.closed && black.width == 14 * 20 && black.colour == 0);
    ASSERT_GE(black.points.size(), 2U);
    along(next(), line, false, 4 * 20, style_.bandColour(slot));
    const Path& colour = file_.paths[seen_ - 1];
    const double all = lengthOf(colour), cut = std::min(7.0 * 20, all / 3);
    EXPECT_NEAR(lengthOf(black), all - 2 * cut, 3);
    EXPECT_LE(distance(line.front(), black.points.front()), cut + 1);
  }
  std::size_t seen() const { return seen_; }

 private:
  const Path& next() {
    static const Path none;
    EXPECT_LT(seen_, file_.paths.size());
    return seen_ < file_.paths.size() ? file_.paths[seen_++] : none;
  }
  static void along(const Path& path, const std::vector<PointF>& line, bool closed, int width,
                    Colour colour) {
    EXPECT_TRUE(path.closed == closed && path.penStyle == 0 && path.width == width && path.colour == colour);
    ASSERT_EQ(path.points.size(), line.size());
    for (std::size_t i = 0; i < line.size(); ++i) EXPECT_LT(distance(line[i], path.points[i]), 1);
  }

  const FileRead& file_;
  const KnotStyle& style_;
  std::size_t seen_ = 0;
};

TEST(Metafile, HoldsTheBandsAndNothingElse) {
  const MadeKnot knot = makeKnot(fieldsOf(Shape::Triangle, 1, 1));
  const KnotStyle style{.colours = strandColours(firstColourBoxes())};
  GridView view(0.8F, 10000), screen(0.8F, 500);
  for (GridView* v : {&view, &screen}) fitView(*v, *knot.graph, knot.curve, style);
  const FileRead file = drawn({view.width, view.height(), 264.5833},
                              [&](Metafile& made) { strokeBands(made, knot.curve, style, view); });

  BandCheck check(file, style);
  constexpr int slot = 12;  // a trefoil is one strand
  std::vector<PointF> points;
  loopPoints(knot.curve, slot, screen, false, points);
  check.strand(slot, points);
  std::vector<OverRun> runs;
  overRuns(knot.curve, slot, runs);
  for (const OverRun& run : runs) {
    runPoints(knot.curve, slot, run, screen, false, points);
    check.overRun(slot, points);
  }
  EXPECT_EQ(check.seen(), file.paths.size());
  EXPECT_TRUE(file.clip.empty());
}

TEST(Metafile, ShowsOnePeriodOfAWrappedKnot) {
  const MadeKnot knot = makeKnot(wrappedFieldsOf(Shape::SquareSquare, 4, 1));
  const GridView view(0.8F, 10000);
  const FileRead file = drawn({view.width, view.height(), 264.5833},
                              [&](Metafile& made) { strokeBands(made, knot.curve, {}, view); });
  const int left = toInt32(view.pixelX(-60)), right = toInt32(view.pixelX(60));
  EXPECT_EQ(file.clip, (std::vector<std::int32_t>{left, 0, right, view.height()}));
}

TEST(Metafile, SizesAgreeWhateverTheyAre) {
  const std::vector<PointI> points = {{-40000, 0}, {70000, 50}};
  for (const double millimetres : {5.0, 264.58, 12345.6, 1e6}) {
    const FileRead file = drawn({10000, 8000, millimetres}, [&](Metafile& metafile) {
      metafile.strokePath(points, false, 31, 0x123456);
      metafile.strokePath({points.data(), 1}, false, 31, 0);
    });
    ASSERT_EQ(file.paths.size(), 1U) << "a single point is no line";
    EXPECT_EQ(file.paths[0].points[0].x, -40000) << "beyond 16 bits";
    EXPECT_EQ(file.paths[0].colour, 0x123456U);
    EXPECT_NEAR(file.millimetres(10000) / millimetres, 1, 1e-3);
    for (const int corner : {0, 1, 4, 5}) EXPECT_EQ(file.header[corner], 0);
    EXPECT_NEAR(1.0 * file.header[2] * file.header[18] / file.header[16], millimetres, 0.3) << "bounds";
    EXPECT_NEAR(file.header[6] / (millimetres * 100), 1, 1e-2) << "frame";
    EXPECT_NEAR(file.header[7] / (millimetres * 80), 1, 1e-2);
  }
}

}  // namespace

int runProgram(Platform& tested, const ProgramStart& start) {
  platform = &tested;
  std::vector<std::string> words = {"metafile_test"};
  words.insert(words.end(), start.arguments.begin(), start.arguments.end());
  std::vector<char*> values;
  for (std::string& word : words) values.push_back(word.data());
  int count = static_cast<int>(values.size());
  testing::InitGoogleTest(&count, values.data());
  return RUN_ALL_TESTS();
}

}  // namespace lorivan
