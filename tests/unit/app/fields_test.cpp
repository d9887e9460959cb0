// The parameter table, first values, corrections and random fields.
#include <gtest/gtest.h>

#include <set>

#include "app/knot_fields.h"
#include "app/random_knot.h"
#include "base/numbers.h"

namespace lorivan {
namespace {

TEST(ParameterTable, RowsAreWhole) {
  std::set<std::string_view> names, keys;
  for (int i = 0; i < kParamCount; ++i) {
    const ParamSpec& row = parameterSpec(static_cast<Param>(i));
    EXPECT_TRUE(names.insert(row.field).second) << row.field;
    if (!row.key.empty()) {
      EXPECT_TRUE(keys.insert(row.key).second) << row.key;
    }
    EXPECT_EQ(findParameter(row.field), static_cast<Param>(i));
    EXPECT_LT(*parseNumber(row.min), *parseNumber(row.max)) << row.field;
    EXPECT_FALSE(row.tooltip.empty() || row.caption.empty());
    const std::string first = correctedText(static_cast<Param>(i), std::string(row.firstRun));
    EXPECT_EQ(correctedText(static_cast<Param>(i), first), first) << "corrections are stable";
  }
  for (const CheckSpec& row : checkTable())
    EXPECT_TRUE(names.insert(row.field).second && findCheck(row.field));
}

TEST(KnotFields, FirstRunIsCorrectedByTheFields) {
  const KnotFields fields = firstRunFields();
  EXPECT_EQ(fields.text(Param::Smooth), "2") << "0 lies below the field's limit";
  EXPECT_EQ(fields.text(Param::Edge), "4");
  EXPECT_EQ(fields.text(Param::PolyRadius), "5");
  EXPECT_EQ(fields.text(Param::KDist), "-1100");
  EXPECT_TRUE(fields.check(Check::ShowGrid));
}

TEST(KnotFields, OnlyChangedNumbersAreWrittenBack) {
  KnotFields fields = firstRunFields();
  fields.text(Param::XNo) = "2.4";
  GridFields corrected = gridFields(fields);
  EXPECT_EQ(corrected.XNo, 2);
  corrected.scale = 28;
  takeCorrections(fields, corrected);
  EXPECT_EQ(fields.text(Param::XNo), "2.4");
  EXPECT_EQ(fields.text(Param::Scale), "28");
}

/// Draws that climb by a fixed step, counted.
struct Counter {
  int taken = 0;
  Rnd rnd(double value) {
    return [this, value] {
      ++taken;
      return value;
    };
  }
};

TEST(RandomKnot, DrawsInOrderAndWithinRange) {
  const struct {
    double draw;
    Shape shape, kept;
    bool constant;
    int draws;
    const char *x, *scale, *swish, *width, *edge, *colour;
  } cases[] = {
      {0.0, Shape::Star, Shape::SquareSquare, false, 10, "2", "20", "5", "2", "2", "1"},
      {0.999, Shape::Star, Shape::RegularHexagonal, false, 10, "11", "49", "19", "7", "2", "15"},
      {0.5, Shape::Custom, Shape::SquareSquare, true, 9, "7", "35", "12", "5", "2", "8"},
      {0.999, Shape::Circular, Shape::Circular, true, 9, "11", "49", "11", "7", "2", "15"},
      {0.999, Shape::Spiral, Shape::Spiral, true, 10, "11", "49", "19", "7", "2", "15"},
  };
  for (const auto& c : cases) {
    KnotFields fields = firstRunFields();
    fields.shape = c.shape;
    Counter counter;
    drawRandomFields(fields, c.constant, counter.rnd(c.draw));
    EXPECT_EQ(fields.shape, c.kept);
    EXPECT_EQ(counter.taken, c.draws);
    EXPECT_EQ(fields.text(Param::XNo), c.x);
    EXPECT_EQ(fields.text(Param::Scale), c.scale);
    EXPECT_EQ(fields.text(Param::Swish), c.swish);
    EXPECT_EQ(fields.text(Param::Width), c.width);
    EXPECT_EQ(fields.text(Param::Edge), c.edge);
    EXPECT_EQ(fields.text(Param::StartColour), c.colour);
  }
}

}  // namespace
}  // namespace lorivan
