// What each step does to a document, and that it does nothing else.
#include "design/edits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "unit/custom/shapes.h"

namespace lorivan {
namespace {

/// A document with lines, an outline, a style and a scale that had to be made smaller.
Document busyDocument() {
  const Rnd random = seededRandom(11);
  Document d = withStyle(withCheck(*randomKnot({}, random), Check::Loop, true), 3);
  d.fields.text(Param::YNo) = "4";
  d = withOutline(d, shapeOf({box(100, 100, 300, 300)}));
  d = *changeField(*chooseShape(d, Shape::SquareSquare), Param::XNo, "7");
  d = *changeField(d, Param::Scale, "60");
  EXPECT_TRUE(d.askedScale == "60" && d.fields.whole(Param::Scale) < 60);
  return d;
}

/// The parts of two documents that are not the same.
std::string differences(const Document& a, const Document& b) {
  std::string all;
  const auto part = [&](std::string_view name, bool same) {
    if (!same) all.append(all.empty() ? "" : " ").append(name);
  };
  for (int i = 0; i < kParamCount; ++i) {
    const auto p = static_cast<Param>(i);
    part(parameterSpec(p).field, a.fields.text(p) == b.fields.text(p));
  }
  for (std::size_t i = 0; i < kCheckCount; ++i)
    part(checkTable()[i].field, a.fields.checks[i] == b.fields.checks[i]);
  part("boxes", a.fields.boxes == b.fields.boxes);
  part("shape", a.fields.shape == b.fields.shape);
  part("lines", a.lines == b.lines);
  part("cell", a.CellSize == b.CellSize);
  part("asked", a.askedScale == b.askedScale);
  part("outline", a.outline == b.outline);
  part("ahead", a.outlineAhead == b.outlineAhead);
  return all;
}

TEST(Edits, ChangeWhatTheyNameAndNothingElse) {
  const Document base = busyDocument();
  ASSERT_TRUE(base.outlineAhead);
  const std::pair<Document, const char*> cases[] = {
      {withField(base, Param::Swish, "33"), "vtSwish"},
      {*changeField(base, Param::Edge, "4.5"), "vtEdge"},
      {*changeField(base, Param::YNo, "5"), "vtYNo lines"},
      {*changeField(base, Param::Skew, "2"), "vtScale vtSkew lines cell"},
      {withCheck(base, Check::Mirror, true), "chkMirror"},
      {withColour(base, 14, 0x123456), "boxes"},
      {withStyle(base, 6), "vtWidth vtSwish vtSmooth vtEdge boxes"},
      {*chooseShape(base, Shape::Triangle), "vtScale shape lines"},
      {*chooseShape(base, Shape::Custom), "shape"},
      {stepLine(base, 3, 1), "lines"},
      {withOutline(base, {}), "outline"},
      {blankShape(base), "shape outline"},
      {*outlineFromGrid(base), "shape outline ahead"},
      {*lineGrid(base), "shape lines cell ahead"},
      {*autoGrid(withField(base, Param::GridSize, "6")), "vtGridSize shape lines cell ahead"}};
  for (const auto& [next, parts] : cases) EXPECT_EQ(differences(next, base), parts);
}

TEST(Edits, FieldsWriteBackWhatTheyAreUsedAs) {
  const Document d = *newGrid({});
  const std::tuple<Param, const char*, const char*> cases[] = {
      {Param::XNo, "3.6", "4"},       {Param::YNo, "2.5", "2"},           {Param::XNo, "99", "20"},
      {Param::GridSize, "7.9", "8"},  {Param::StartColour, "-2.6", "-3"}, {Param::Smooth, "nonsense", "3"},
      {Param::PolySides, "4.4", "4"}, {Param::Width, "3.6", "3.6"},       {Param::Skew, "1,25", "1.25"}};
  for (const auto& [p, typed, shown] : cases)
    EXPECT_EQ(changeField(d, p, typed)->fields.text(p), shown) << parameterSpec(p).field << ' ' << typed;
  const Document cross = *chooseShape(withField(d, Param::XNo, "7"), Shape::Cross);
  EXPECT_EQ(changeField(cross, Param::YNo, "9")->fields.text(Param::YNo), "7")
      << "an arm is no wider than the cross";
  EXPECT_NE(changeField(cross, Param::CrossOffset, "2")->lines, cross.lines);
  EXPECT_EQ(changeField(d, Param::XNo, "3.6")->lines, changeField(d, Param::XNo, "4")->lines);
  EXPECT_EQ(fieldStep(withField(d, Param::PolySides, "9"), Param::PolySides), "Sides 9");
  EXPECT_EQ(checkStep(Check::HeightMap, true) + checkStep(Check::Loop, false), "Height map onLoop off");
}

TEST(Edits, RandomKnotsComeAgainWithTheirSeedAndKeepAConstantShape) {
  const Document d = busyDocument(),
                 held = withCheck(*chooseShape(d, Shape::Star), Check::ConstantShape, true);
  int others = 0, gaps = 0;
  for (std::uint64_t seed = 0; seed < 20; ++seed) {
    const auto once = randomKnot(d, seededRandom(seed)), again = randomKnot(d, seededRandom(seed));
    ASSERT_TRUE(once && again);
    EXPECT_EQ(*once, *again);
    EXPECT_EQ(*once, *randomKnot(withField(d, Param::Scale, "9"), seededRandom(seed)))
        << "the scale that was asked for is drawn anew";
    gaps += std::ranges::any_of(*once->lines, [](const KnotLine& l) { return l.Kind != kOrdinary; });
    EXPECT_TRUE(once->fields.checks == d.fields.checks && once->fields.boxes == d.fields.boxes);
    others += once->fields.shape != d.fields.shape;
    EXPECT_EQ(randomKnot(held, seededRandom(seed))->fields.shape, Shape::Star);
  }
  EXPECT_GT(others, 10);
  EXPECT_GT(gaps, 5) << "kinds are drawn too";
  EXPECT_NE(randomKnot(held, seededRandom(1))->lines, randomKnot(held, seededRandom(2))->lines);
}

TEST(Edits, CustomShapesKeepTheirLinesAndTellWhatTheyLack) {
  const Document made = *autoGrid(withField(busyDocument(), Param::GridSize, "5"));
  EXPECT_EQ(*newGrid(made), made);
  EXPECT_EQ(changeField(made, Param::XNo, "9")->lines, made.lines);
  EXPECT_EQ(changeField(made, Param::Scale, "50")->lines, made.lines);
  EXPECT_NE(autoGrid(withCheck(made, Check::ShapeT, false))->lines, made.lines);
  EXPECT_EQ(lineGrid(made)->lines->size(), 4U) << "the outline's own lines";
  const Document wide = withOutline(withField(made, Param::GridSize, "50"), shapeOf({box(50, 50, 440, 340)}));
  EXPECT_EQ(autoGrid(wide).error().kind, ErrorKind::limit);
  const int most = largestAutoGrid(wide).value_or(0);
  EXPECT_TRUE(autoGrid(withField(wide, Param::GridSize, std::to_string(most))));
  for (const int more : {1, 2, 3})
    EXPECT_FALSE(autoGrid(withField(wide, Param::GridSize, std::to_string(most + more)))) << most;
  EXPECT_EQ(fillingAutoGrid(wide)->fields.text(Param::GridSize), std::to_string(most));
  EXPECT_TRUE(autoGridHint(wide, autoGrid(wide).error()).ends_with(' ' + std::to_string(most)));
  EXPECT_EQ(autoGrid(blankShape(made)).error().kind, ErrorKind::knot);
  EXPECT_FALSE(lineGrid(blankShape(made)));
  EXPECT_EQ(outlineFromGrid({}).error().kind, ErrorKind::knot);
  EXPECT_NE(autoGrid(withField(made, Param::Skew, "2"))->lines, made.lines);
  Document tall = *chooseShape(withField(withField({}, Param::XNo, "5"), Param::YNo, "20"), Shape::Circular);
  tall = *outlineFromGrid(tall);
  const auto first = tall.outline->ShapeY.begin() + 1;
  const auto [top, bottom] = std::minmax_element(first, first + tall.outline->ShapePointCount);
  EXPECT_TRUE(*top >= 0 && *bottom <= kShapeHeight) << "all of the grid is on the sheet";
  const Document outlined = *outlineFromGrid(withOutline(*newGrid({}), {}));
  EXPECT_FALSE(outlined.outlineAhead);
  EXPECT_EQ(lineGrid(outlined)->lines->size(), outlined.lines->size()) << "there and back again";
  const Document walled = stepLine(outlined, 2, 1);
  EXPECT_EQ(lineGrid(walled)->lines->at(2).Kind, kWall) << "walls stay where lines do";

  // Arms narrower than the cells that are asked for.
  const Document slim = withOutline(withField({}, Param::GridSize, "7"), shapeOf({starLoop(10, 40, 190)}));
  AutoGridReport coarse, filling;
  (void)autoGrid(slim, &coarse);
  const auto filled = fillingAutoGrid(slim, &filling);
  ASSERT_TRUE(filled);
  EXPECT_LT(coarse.filled, kFilled);
  EXPECT_GE(filling.filled, kFilled);
  EXPECT_EQ(autoGrid(withField(slim, Param::GridSize, filled->fields.text(Param::GridSize)))->lines,
            filled->lines);
}

}  // namespace
}  // namespace lorivan
