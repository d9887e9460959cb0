// The parameter table, first values, corrections and random fields.
#include <gtest/gtest.h>

#include <set>

#include "base/numbers.h"
#include "design/knot_fields.h"
#include "design/random_knot.h"

namespace lorivan {
namespace {

TEST(ParameterTable, NamesAreUniqueAndCorrectionsStable) {
  std::set<std::string_view> names;
  for (int i = 0; i < kParamCount; ++i) {
    const auto p = static_cast<Param>(i);
    const ParamSpec& row = parameterSpec(p);
    EXPECT_TRUE(names.insert(row.field).second && findParameter(row.field) == p) << row.field;
    const std::string first = correctedText(p, std::string(row.firstRun));
    EXPECT_EQ(correctedText(p, first), first) << row.field;
  }
  for (const CheckSpec& row : checkTable())
    EXPECT_TRUE(names.insert(row.field).second && findCheck(row.field));
}

TEST(RandomKnot, DrawsInOrderAndWithinRange) {
  const struct {
    double draw;
    Shape shape, kept;
    bool constant;
    int draws;
    std::vector<std::string> texts;  // X, scale, swish, width, edge, colour
  } cases[] = {
      {0.0, Shape::Star, Shape::SquareSquare, false, 10, {"2", "20", "5", "2", "2", "1"}},
      {0.999, Shape::Star, Shape::RegularHexagonal, false, 10, {"11", "49", "19", "7", "2", "15"}},
      {0.5, Shape::Custom, Shape::SquareSquare, true, 9, {"7", "35", "12", "5", "2", "8"}},
      {0.999, Shape::Circular, Shape::Circular, true, 9, {"11", "49", "11", "7", "2", "15"}},
      {0.999, Shape::Spiral, Shape::Spiral, true, 10, {"11", "49", "19", "7", "2", "15"}},
  };
  for (const auto& c : cases) {
    KnotFields fields = firstRunFields();
    fields.shape = c.shape;
    int taken = 0;
    drawRandomFields(fields, c.constant, [&] { return ++taken, c.draw; });
    EXPECT_EQ(fields.shape, c.kept);
    EXPECT_EQ(taken, c.draws);
    std::vector<std::string> texts;
    for (const Param p :
         {Param::XNo, Param::Scale, Param::Swish, Param::Width, Param::Edge, Param::StartColour})
      texts.push_back(fields.text(p));
    EXPECT_EQ(texts, c.texts);
  }
  // shape  X    Y    scale swish (twice) offset smooth width edge colour
  const std::vector<double> draws = {0.7, 0.25, 0.1, 0.3, 0.99, 0.5, 0.25, 0.4, 0.99, 0.2, 0.6};
  KnotFields fields = firstRunFields();
  std::size_t next = 0;
  drawRandomFields(fields, false, [&] { return draws.at(next++); });
  EXPECT_EQ(fields.shape, Shape::Cross);
  for (const auto& [p, value] : {std::pair{Param::XNo, "4"},
                                 {Param::YNo, "3"},
                                 {Param::CrossOffset, "-2"},
                                 {Param::Smooth, "4"},
                                 {Param::Edge, "4"},
                                 {Param::StartColour, "10"}})
    EXPECT_EQ(fields.text(p), value) << parameterSpec(p).field;
}

}  // namespace
}  // namespace lorivan
