// The metafile read back record by record.
#include <gtest/gtest.h>

#include <cstring>

#include "knot_maker.h"
#include "strands/emf_writer.h"

namespace lorivan {
namespace {

struct Metafile {
  struct Path {
    std::vector<PointI> points;
    bool closed = false;
    std::uint32_t penStyle = 0, width = 0, colour = 0;
  };
  std::vector<std::int32_t> header;
  std::vector<Path> paths;
  int records = 0;
  bool ended = false;
};

/// Follows pens and paths as a player would; a record out of order is a failure.
class MetafileReader {
 public:
  explicit MetafileReader(const std::string& bytes) : bytes_(bytes) {}

  Metafile read() {
    for (; at_ < bytes_.size(); at_ += word(4)) {
      EXPECT_FALSE(file_.ended);
      EXPECT_EQ(word(4) % 4, 0U);
      if (word(4) < 8) break;
      ++file_.records;
      record(word(0));
    }
    EXPECT_EQ(at_, bytes_.size());
    return file_;
  }

 private:
  std::uint32_t word(std::size_t offset) const {
    std::uint32_t value = 0;
    if (at_ + offset + 4 <= bytes_.size()) std::memcpy(&value, bytes_.data() + at_ + offset, 4);
    return value;
  }
  std::int32_t value(std::size_t offset, bool narrow) const {
    return narrow ? static_cast<std::int16_t>(word(offset)) : static_cast<std::int32_t>(word(offset));
  }

  void record(std::uint32_t type) {
    switch (type) {
      case 1:
        for (std::size_t i = 8; i < word(4); i += 4) file_.header.push_back(value(i, false));
        break;
      case 95:
        pen_ = {{}, false, word(28), word(32), word(40)};
        ++pens_;
        break;
      case 38:
        pen_ = {{}, false, word(12), word(16), word(24)};
        ++pens_;
        break;
      case 37:
        selected_ = word(8) == 1;
        break;
      case 40:
        EXPECT_FALSE(selected_);
        --pens_;
        break;
      case 59:
        open_ = pen_;
        break;
      case 27:
        start_ = {value(8, false), value(12, false)};
        break;
      case 64:
        EXPECT_TRUE(selected_ && pens_ == 1);
        file_.paths.push_back(open_);
        break;
      case 14:
        file_.ended = true;
        break;
      default:
        lines(type);
    }
  }

  void lines(std::uint32_t type) {
    if (type == 60) return;
    const bool narrow = type == 86 || type == 87;
    EXPECT_TRUE(narrow || type == 3 || type == 4) << type;
    open_.closed = type == 3 || type == 86;
    const std::size_t size = narrow ? 2 : 4;
    for (std::size_t i = 0; i < word(24); ++i)
      open_.points.push_back({value(28 + 2 * i * size, narrow), value(28 + (2 * i + 1) * size, narrow)});
    EXPECT_EQ(open_.points.at(0).x, start_.x);
    EXPECT_EQ(open_.points.at(0).y, start_.y);
  }

  const std::string& bytes_;
  std::size_t at_ = 0;
  Metafile file_;
  Metafile::Path pen_, open_;
  PointI start_;
  bool selected_ = false;
  int pens_ = 0;
};

TEST(Metafile, HoldsTheBandsAndNothingElse) {
  const MadeKnot knot = makeKnot(fieldsOf(Shape::Triangle, 2, 2));
  KnotStyle style;
  style.colours = strandColours(firstColourBoxes());
  GridView view(0.8F, 10000), screen(0.8F, 500);
  for (GridView* v : {&view, &screen}) fitView(*v, *knot.graph, knot.curve, style);
  const std::string bytes = knotMetafile(knot.curve, style, view, 264.5833);
  const Metafile file = MetafileReader(bytes).read();
  EXPECT_TRUE(file.ended);

  std::size_t next = 0;
  const auto expectPair = [&](const std::vector<PointF>& points, bool closed, int slot) {
    for (const bool black : {true, false}) {
      ASSERT_LT(next, file.paths.size());
      const Metafile::Path& path = file.paths[next++];
      EXPECT_EQ(path.closed, closed);
      EXPECT_EQ(path.width, black ? 14U * 20 : 4U * 20);
      EXPECT_EQ(path.colour, black ? 0U : style.bandColour(slot));
      EXPECT_EQ(path.penStyle, black && !closed ? 0x10200U : 0U);
      ASSERT_EQ(path.points.size(), points.size());
      for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_NEAR(path.points[i].x / 20.0, points[i].x, 0.03);
        EXPECT_NEAR(path.points[i].y / 20.0, points[i].y, 0.03);
      }
    }
  };
  std::vector<PointF> points;
  std::vector<OverRun> runs;
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    if (!knot.curve.used(slot)) continue;
    bandPoints(knot.curve, slot, screen, false, points);
    expectPair(points, true, slot);
  }
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    overRuns(knot.curve, slot, runs);
    for (const OverRun& run : runs) {
      runPoints(knot.curve, run, screen, false, points);
      expectPair(points, false, slot);
    }
  }
  EXPECT_EQ(next, file.paths.size());
  EXPECT_GT(next, 8U);

  const auto& h = file.header;
  ASSERT_EQ(h.size(), 25U);
  std::int32_t left = INT32_MAX, bottom = 0;
  for (const auto& path : file.paths)
    for (const PointI p : path.points) {
      left = std::min(left, p.x - 140 * (path.colour == 0));
      bottom = std::max(bottom, p.y + 140 * (path.colour == 0));
    }
  EXPECT_EQ(h[0], left) << "the pen lies within the bounds";
  EXPECT_EQ(h[3], bottom);
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
    const Metafile file = MetafileReader(writer.finish()).read();
    ASSERT_EQ(file.paths.size(), 1U) << "a single point is no line";
    EXPECT_EQ(file.paths[0].points[0].x, -40000) << "beyond 16 bits";
    EXPECT_EQ(file.header[0], -40016);
    const auto ratio = [&](int pixels, int size) {
      return static_cast<double>(file.header[static_cast<std::size_t>(pixels)]) /
             file.header[static_cast<std::size_t>(size)];
    };
    EXPECT_NEAR(ratio(16, 18) * millimetres / 10000, 1, 1e-3);
    EXPECT_NEAR(ratio(17, 19) * millimetres / 10000, 1, 1e-3);
    EXPECT_NEAR(ratio(16, 23) * millimetres / 10, 1, 1e-3) << "micrometres";
    EXPECT_NEAR(file.header[6] / (millimetres * 100), 1, 1e-2) << "frame";
  }
}

}  // namespace
}  // namespace lorivan
