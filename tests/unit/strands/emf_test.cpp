// The metafile read back record by record.
#include <gtest/gtest.h>

#include <cstring>

#include "knot_maker.h"
#include "strands/emf_writer.h"

namespace lorivan {
namespace {

struct Path {
  std::vector<PointI> points;
  bool closed = false;
  std::uint32_t penStyle = 0, width = 0, colour = 0;
};

/// What a player would see of a file.
struct Metafile {
  std::vector<std::int32_t> header;  // without type and size
  std::vector<Path> paths;
  int records = 0;
};

Metafile readMetafile(const std::string& bytes) {
  Metafile file;
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
    const auto penAt = [&](std::size_t o, std::size_t colour) {
      return Path{{}, false, std::uint32_t(word(o)), std::uint32_t(word(o + 4)), std::uint32_t(word(colour))};
    };
    if (type == 1)
      for (std::size_t i = 8; i < size; i += 4) file.header.push_back(word(i));
    if (type == 38) pen = penAt(12, 24);
    if (type == 95) pen = penAt(28, 40);
    if (type == 59) path = pen;
    if (type == 3 || type == 4 || type == 86 || type == 87) {
      path.closed = type == 3 || type == 86;
      for (std::size_t i = 0, o = 28; i < static_cast<std::size_t>(word(24)); ++i, o += narrow ? 4 : 8)
        path.points.push_back(narrow ? PointI{std::int16_t(word(o)), word(o) >> 16}
                                     : PointI{word(o), word(o + 4)});
    }
    if (type == 64) file.paths.push_back(path);
  }
  EXPECT_EQ(at, bytes.size()) << "the records fill the file";
  EXPECT_EQ(bytes.substr(bytes.size() - 20, 4), std::string("\x0E\0\0\0", 4)) << "the end is marked";
  return file;
}

TEST(Metafile, HoldsTheBandsAndNothingElse) {
  const MadeKnot knot = makeKnot(fieldsOf(Shape::Triangle, 2, 2));
  KnotStyle style;
  style.colours = strandColours(firstColourBoxes());
  GridView view(0.8F, 10000), screen(0.8F, 500);
  for (GridView* v : {&view, &screen}) fitView(*v, *knot.graph, knot.curve, style);
  const std::string bytes = knotMetafile(knot.curve, style, view, 264.5833);
  const Metafile file = readMetafile(bytes);

  std::size_t next = 0;
  std::vector<PointF> points;
  const auto expectPair = [&](bool closed, int slot) {
    for (const bool black : {true, false}) {
      ASSERT_LT(next, file.paths.size());
      const Path& path = file.paths[next++];
      EXPECT_EQ(path.closed, closed);
      EXPECT_EQ(path.width, black ? 14U * 20 : 4U * 20);
      EXPECT_EQ(path.colour, black ? 0U : style.bandColour(slot));
      EXPECT_EQ(path.penStyle, black && !closed ? 0x10200U : 0U) << "only black over-crossings end flat";
      ASSERT_EQ(path.points.size(), points.size());
      for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_NEAR(path.points[i].x / 20.0, points[i].x, 0.03);
        EXPECT_NEAR(path.points[i].y / 20.0, points[i].y, 0.03);
      }
    }
  };
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    if (!knot.curve.used(slot)) continue;
    bandPoints(knot.curve, slot, screen, false, points);
    expectPair(true, slot);
  }
  std::vector<OverRun> runs;
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    overRuns(knot.curve, slot, runs);
    for (const OverRun& run : runs) {
      runPoints(knot.curve, run, screen, false, points);
      expectPair(false, slot);
    }
  }
  EXPECT_EQ(next, file.paths.size());

  const auto& h = file.header;
  ASSERT_EQ(h.size(), 25U);
  std::int32_t left = INT32_MAX, bottom = 0;
  for (const Path& path : file.paths)
    for (const PointI p : path.points) left = std::min(left, p.x), bottom = std::max(bottom, p.y);
  EXPECT_EQ(h[0], left - 140) << "the pen lies within the bounds";
  EXPECT_EQ(h[3], bottom + 140);
  EXPECT_EQ(std::vector<std::int32_t>(h.begin() + 4, h.begin() + 8), (std::vector{0, 0, 26458, 21167}));
  EXPECT_EQ(h[10], static_cast<std::int32_t>(bytes.size()));
  EXPECT_EQ(h[11], file.records);
}

TEST(Metafile, SizesAgreeWhateverTheyAre) {
  const std::vector<PointI> points = {{-40000, 0}, {70000, 50}};
  for (const double millimetres : {0.5, 5.0, 264.58, 12345.6, 1e6}) {
    EmfWriter writer(10000, 8000, millimetres);
    writer.strokePath({points, false, 31, 0x123456, CapStyle::round});
    writer.strokePath({{points.data(), 1}, false, 31, 0, CapStyle::round});
    const Metafile file = readMetafile(writer.finish());
    ASSERT_EQ(file.paths.size(), 1U) << "a single point is no line";
    EXPECT_EQ(file.paths[0].points[0].x, -40000) << "beyond 16 bits";
    const std::vector<double> h(file.header.begin(), file.header.end());
    EXPECT_NEAR(h[16] / h[18] * millimetres / 10000, 1, 1e-3) << "device pixels to millimetres, across";
    EXPECT_NEAR(h[17] / h[19] * millimetres / 10000, 1, 1e-3) << "and down";
    EXPECT_NEAR(h[16] / h[23] * millimetres / 10, 1, 1e-3) << "micrometres";
    EXPECT_NEAR(h[6] / (millimetres * 100), 1, 1e-2) << "frame";
  }
}

}  // namespace
}  // namespace lorivan
