// What each step does to a document, and that it does nothing else.
#include "design/edits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "base/numbers.h"
#include "random_edits.h"

namespace lorivan {
namespace {

CustomShape box(float left, float top, float right, float bottom) {
  CustomShape shape;
  for (const auto& [x, y] : {std::pair{left, top}, {right, top}, {right, bottom}, {left, bottom}})
    shape.addPoint(x, y);
  for (int i = 0; i < 4; ++i) shape.addLine(i + 1, (i + 1) % 4 + 1);
  return shape;
}

/// A document with lines, an outline, a style and a scale that had to be made smaller.
Document busyDocument() {
  const Rnd random = seededRandom(11);
  Document d = withStyle(withCheck(*randomKnot({}, random), Check::Loop, true), 3);
  d.fields.text(Param::YNo) = "4";
  d = withOutline(d, box(100, 100, 300, 300));
  d = *changeField(*chooseShape(d, Shape::SquareSquare), Param::XNo, "7");
  d = *changeField(d, Param::Scale, "60");
  EXPECT_TRUE(d.askedScale == "60" && d.fields.whole(Param::Scale) < 60);
  return d;
}

/// Takes from `base` what a new grid may change.
void putBackGrid(Document& d, const Document& base) {
  d.lines = base.lines;
  d.CellSize = base.CellSize;
  d.askedScale = base.askedScale;
  d.fields.text(Param::Scale) = base.fields.text(Param::Scale);
}

TEST(Edits, ChangeWhatTheyNameAndNothingElse) {
  using Edit = std::function<Document(const Document&)>;
  using PutBack = std::function<void(Document&, const Document&)>;
  const auto text = [](Param p) {
    return [p](Document& d, const Document& base) { d.fields.text(p) = base.fields.text(p); };
  };
  const auto shapeGrid = [](Document& d, const Document& base) {
    d.lines = base.lines;
    d.CellSize = base.CellSize;
    d.fields.shape = base.fields.shape;
    d.outlineAhead = base.outlineAhead;
  };
  const struct {
    const char* name;
    Edit edit;
    PutBack putBack;
  } cases[] = {
      {"field", [](const Document& d) { return withField(d, Param::Swish, "33"); }, text(Param::Swish)},
      {"style field", [](const Document& d) { return *changeField(d, Param::Edge, "4.5"); },
       text(Param::Edge)},
      {"grid field", [](const Document& d) { return *changeField(d, Param::YNo, "5"); },
       [&](Document& d, const Document& base) {
         text(Param::YNo)(d, base);
         putBackGrid(d, base);
       }},
      {"stretch", [](const Document& d) { return *changeField(d, Param::Skew, "2"); },
       [&](Document& d, const Document& base) {
         text(Param::Skew)(d, base);
         putBackGrid(d, base);
       }},
      {"check", [](const Document& d) { return withCheck(d, Check::Mirror, true); },
       [](Document& d, const Document&) { d.fields.check(Check::Mirror) = false; }},
      {"colour", [](const Document& d) { return withColour(d, 14, 0x123456); },
       [](Document& d, const Document& base) { d.fields.boxes[14] = base.fields.boxes[14]; }},
      {"style", [](const Document& d) { return withStyle(d, 6); },
       [&](Document& d, const Document& base) {
         d.fields.boxes = base.fields.boxes;
         for (const Param p : {Param::Width, Param::Edge, Param::Swish, Param::Smooth, Param::StartColour,
                               Param::PicKnotBackColour})
           text(p)(d, base);
       }},
      {"shape", [](const Document& d) { return *chooseShape(d, Shape::Triangle); },
       [](Document& d, const Document& base) {
         d.fields.shape = base.fields.shape;
         d.fields.text(Param::YNo) = base.fields.text(Param::YNo);
         putBackGrid(d, base);
       }},
      {"custom shape", [](const Document& d) { return *chooseShape(d, Shape::Custom); },
       [](Document& d, const Document& base) { d.fields.shape = base.fields.shape; }},
      {"wall", [](const Document& d) { return stepLine(d, 3, 1); },
       [](Document& d, const Document& base) { d = stepLine(d, 3, 3), d.CellSize = base.CellSize; }},
      {"outline", [](const Document& d) { return withOutline(d, {}); },
       [](Document& d, const Document& base) { d.outline = base.outline; }},
      {"blank", [](const Document& d) { return blankShape(d); },
       [](Document& d, const Document& base) {
         d.outline = base.outline;
         d.fields.shape = base.fields.shape;
       }},
      {"outline from grid", [](const Document& d) { return *outlineFromGrid(d); },
       [](Document& d, const Document& base) {
         d.outline = base.outline;
         d.outlineAhead = base.outlineAhead;
         d.fields.shape = base.fields.shape;
       }},
      {"line grid", [](const Document& d) { return *lineGrid(d); }, shapeGrid},
      {"AutoGrid", [](const Document& d) { return *autoGrid(withField(d, Param::GridSize, "6")); },
       [&](Document& d, const Document& base) {
         shapeGrid(d, base);
         text(Param::GridSize)(d, base);
       }},
  };
  const Document base = busyDocument();
  ASSERT_TRUE(base.outlineAhead);
  for (const auto& c : cases) {
    Document next = c.edit(base);
    EXPECT_NE(next, base) << c.name;
    c.putBack(next, base);
    EXPECT_EQ(next, base) << c.name;
  }
}

TEST(Edits, GridsStartFromTheScaleThatWasAskedFor) {
  Document d = *changeField(*newGrid({}), Param::Scale, "45");
  EXPECT_EQ(d.fields.text(Param::Scale), "45");
  EXPECT_EQ(d.CellSize, 45);
  EXPECT_EQ(d.askedScale, "");
  d = *changeField(d, Param::XNo, "12");
  EXPECT_LT(d.fields.whole(Param::Scale), 20);
  EXPECT_EQ(d.askedScale, "45");
  d = *chooseShape(d, Shape::Hexagonal);
  EXPECT_EQ(d.askedScale, "45");
  d = *changeField(*chooseShape(d, Shape::SquareSquare), Param::XNo, "2");
  EXPECT_EQ(d.fields.text(Param::Scale), "45");
  EXPECT_EQ(d.askedScale, "");
  d = *changeField(*changeField(d, Param::XNo, "12"), Param::Scale, "10");
  EXPECT_EQ(*changeField(d, Param::XNo, "2"),
            *changeField(*changeField(*newGrid({}), Param::YNo, "2"), Param::Scale, "10"))
      << "a scale that is typed is the one asked for";
}

TEST(Edits, FieldsWriteBackWhatTheyAreUsedAs) {
  const Document d = *newGrid({});
  const std::tuple<Param, const char*, const char*> cases[] = {
      {Param::XNo, "3.6", "4"},       {Param::YNo, "2.5", "2"},           {Param::XNo, "99", "20"},
      {Param::GridSize, "7.9", "8"},  {Param::StartColour, "-2.6", "-3"}, {Param::Smooth, "nonsense", "3"},
      {Param::PolySides, "4.4", "4"}, {Param::Width, "3.6", "3.6"},       {Param::Skew, "1,25", "1.25"}};
  for (const auto& [p, typed, shown] : cases) {
    const auto next = changeField(d, p, typed);
    ASSERT_TRUE(next);
    EXPECT_EQ(next->fields.text(p), shown) << parameterSpec(p).field << ' ' << typed;
  }
  const Document cross = *chooseShape(withField(d, Param::XNo, "7"), Shape::Cross);
  EXPECT_EQ(changeField(cross, Param::YNo, "9")->fields.text(Param::YNo), "7")
      << "an arm is no wider than the cross";
  EXPECT_NE(changeField(cross, Param::CrossOffset, "2")->lines, cross.lines);
  EXPECT_EQ(changeField(d, Param::XNo, "3.6")->lines, changeField(d, Param::XNo, "4")->lines);
  EXPECT_EQ(fieldStep(withField(d, Param::Width, "9"), Param::Width), "Width 9");
  EXPECT_EQ(checkStep(Check::HeightMap, true) + checkStep(Check::Loop, false), "HeightMap onLoop off");
}

TEST(Edits, LineKindsStepRoundAndOneLineAtATime) {
  const Document d = *newGrid({});
  Document next = d;
  for (const int kind : {kWall, kReversed, kNoLine, kOrdinary}) {
    next = stepLine(next, 2, 1);
    EXPECT_EQ(next.lines->at(2).Kind, kind);
    EXPECT_EQ(stepLine(next, 2, 3).lines->at(2).Kind, (kind + 3) % 4);
  }
  EXPECT_EQ(next, d);
  for (const int nowhere : {-1, static_cast<int>(d.lines->size())}) EXPECT_EQ(stepLine(d, nowhere, 1), d);
  EXPECT_EQ(stepLine(Document(), 0, 1), Document());
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
    EXPECT_EQ(once->fields.checks, d.fields.checks);
    EXPECT_EQ(once->fields.boxes, d.fields.boxes);
    others += once->fields.shape != d.fields.shape;
    EXPECT_EQ(randomKnot(held, seededRandom(seed))->fields.shape, Shape::Star);
  }
  EXPECT_GT(others, 10);
  EXPECT_GT(gaps, 5) << "kinds are drawn too";
  EXPECT_NE(randomKnot(held, seededRandom(1))->lines, randomKnot(held, seededRandom(2))->lines);
}

TEST(Edits, CustomShapesKeepTheirLinesAndTellWhatTheyLack) {
  const Document made = *autoGrid(withField(busyDocument(), Param::GridSize, "5"));
  EXPECT_EQ(made.fields.shape, Shape::Custom);
  EXPECT_FALSE(made.outlineAhead);
  EXPECT_EQ(*newGrid(made), made);
  EXPECT_EQ(changeField(made, Param::XNo, "9")->lines, made.lines);
  EXPECT_EQ(changeField(made, Param::Scale, "50")->lines, made.lines);
  EXPECT_NE(autoGrid(withCheck(made, Check::ShapeT, false))->lines, made.lines);
  EXPECT_EQ(lineGrid(made)->lines->size(), 4U) << "the outline's own lines";
  const Document wide = withOutline(withField(made, Param::GridSize, "50"), box(50, 50, 440, 340));
  EXPECT_EQ(autoGrid(wide).error().kind, ErrorKind::limit);
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
}

}  // namespace
}  // namespace lorivan
