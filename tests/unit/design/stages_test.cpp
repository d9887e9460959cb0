// A knot that follows its document.
#include <gtest/gtest.h>

#include <ranges>

#include "design/document_text.h"
#include "design/edits.h"
#include "design/fit.h"
#include "design/knot.h"
#include "knot_maker.h"

namespace lorivan {
namespace {

bool sameKnot(const Knot& a, const Knot& b) {
  const auto samePoint = [](const StrandPoint& p, const StrandPoint& q) {
    return p.x == q.x && p.y == q.y && p.z == q.z;
  };
  for (int slot = 0; slot < kStrandSlots; ++slot)
    if (!std::ranges::equal(a.strands.closed(slot), b.strands.closed(slot), samePoint)) return false;
  return linesOf(a.graph) == linesOf(b.graph) && a.graph.CellSize == b.graph.CellSize &&
         a.stretch == b.stretch && a.curve.X == b.curve.X && a.curve.Y == b.curve.Y && a.curve.Z == b.curve.Z;
}

/// Whether the stages come to what the document gives from the beginning, a message included.
::testing::AssertionResult followsFreshly(KnotStages& stages, const Document& document, Knot& fresh) {
  const auto traced = stages.trace(document);
  const Status made = makeKnot(document, fresh);
  const bool same = traced && made ? sameKnot(stages.knot(), fresh)
                                   : !traced && !made && stages.strands() == 0 &&
                                         traced.error().message == made.error().message;
  return same ? ::testing::AssertionSuccess() : ::testing::AssertionFailure() << documentText(document);
}

Document withCellSize(Document document, std::int16_t size) {
  document.CellSize = size;
  return document;
}

TEST(MakeKnot, GivesTheKnotOfTheFields) {
  Knot knot;
  for (int s = 0; s < kShapeCount - 1; ++s) {
    const TraceSettings settings{.startColour = -3, .swish = 17, .mirror = s % 2 == 1};
    GridFields grid = fieldsOf(static_cast<Shape>(s), 7, 5, 20, 2);
    grid.skew = 1.5F;
    const MadeKnot wanted = makeKnot(grid, settings);
    auto read = readDocument("20,0\r\n20,7,5,-3,7,17,3,4,vtCrossOffset=2,vtSkew=1.5\r\n")->document;
    const Document d = *chooseShape(withCheck(read, Check::Mirror, settings.mirror), static_cast<Shape>(s));
    ASSERT_TRUE(makeKnot(d, knot));
    EXPECT_EQ(knot.strands.ThreadCount, wanted.store->ThreadCount) << s;
    EXPECT_TRUE(knot.curve.X == wanted.curve.X && knot.curve.Y == wanted.curve.Y &&
                knot.curve.Z == wanted.curve.Z)
        << s;
    const KnotFields stretched = withField(d, Param::Skew, "3").fields;
    EXPECT_EQ(viewOf(knot, stretched, {}, 500, true).stretch, stretchFactor(1.5F)) << "as it was made";
    EXPECT_EQ(viewOf(knot, stretched, {}, 500, false).stretch, stretchFactor(3));
  }
}

TEST(Knots, RunTogetherWhereBandsAreWiderThanTheirGaps) {
  const Document d = *newGrid({});
  EXPECT_FALSE(strandsRunTogether(withField(d, Param::Width, "22")));
  EXPECT_TRUE(strandsRunTogether(withField(d, Param::Width, "23")));
  EXPECT_FALSE(strandsRunTogether({}));
}

TEST(KnotStages, TakeOverNoOtherKnotThanTheirDocuments) {
  KnotStages stages, others;
  Knot fresh;
  Document d = withCheck(*newGrid({}), Check::FitBands, true);
  int number = 0;
  for (const auto& [p, text] : {std::pair{Param::XNo, "4"},
                                {Param::Swish, "20"},
                                {Param::Smooth, "3"},
                                {Param::YNo, "5"},
                                {Param::StartColour, "7"},
                                {Param::XNo, "3"}}) {
    const Document before = d;
    d = *changeField(d, p, text);
    ASSERT_TRUE(stages.followGrid(d));
    EXPECT_TRUE(p != Param::XNo ||
                (stages.strands() == 0 && withPasses(d, stages.knot().graph).lines == d.lines))
        << "nobody has asked for them";
    EXPECT_TRUE(followsFreshly(stages, d, fresh));
    EXPECT_EQ(stages.strands() == number, p == Param::Smooth);
    number = stages.strands();
    EXPECT_TRUE(followsFreshly(others, before, fresh));
    const Document swung = fitBands(withField(d, Param::Swish, "3"));
    EXPECT_TRUE(followsFreshly(stages, d, fresh) && stages.strands() == number) << "fitted meanwhile";
    KnotStages third;
    fitBands(withCellSize(d, 40));
    EXPECT_TRUE(followsFreshly(third, d, fresh)) << "with the same lines in other cells";
    Document wrapped = d;
    wrapped.fields.check(Check::Wrap) = true;
    fitBands(wrapped);
    KnotStages flat;
    EXPECT_TRUE(followsFreshly(flat, d, fresh)) << "with the same lines round a cylinder";
    EXPECT_TRUE(followsFreshly(others, swung, fresh));
  }
}

TEST(KnotStages, DoWhatIsOutOfDateAndNothingElse) {
  KnotStages stages;
  Document d = *newGrid({});
  EXPECT_EQ(stages.strands(), 0);
  ASSERT_TRUE(stages.trace(d));
  const int first = stages.strands();
  const auto samples = stages.knot().curve.X.size();
  for (const Param p :
       {Param::Width, Param::Edge, Param::Ka, Param::PolySides, Param::Smooth, Param::Scale}) {
    d = withField(d, p, "8");
    ASSERT_TRUE(stages.trace(d));
    EXPECT_EQ(stages.strands(), first) << parameterSpec(p).field;
  }
  EXPECT_NE(stages.knot().curve.X.size(), samples) << "a smaller scale has fewer samples";
  d.lines = Shared(KnotLines(*d.lines));
  EXPECT_TRUE(stages.trace(d) && stages.strands() == first) << "the same lines in another copy";
  int before = first;
  for (const Document& next :
       {withCellSize(d, 40), withField(d, Param::Swish, "20"), withField(d, Param::Skew, "2"),
        withField(d, Param::StartColour, "3"), withCheck(d, Check::Mirror, true), stepLine(d, 1, 1),
        stepLine(stepLine(d, 1, 1), 1, 3)}) {
    ASSERT_TRUE(stages.trace(next));
    EXPECT_NE(stages.strands(), before) << documentText(next);
    before = stages.strands();
  }
  ASSERT_TRUE(stages.followGrid(stepLine(d, 0, 1)));
  EXPECT_EQ(stages.strands(), 0) << "other lines have no strands yet";
  ASSERT_TRUE(stages.trace(d) && stages.strands() > 0);
  int steps = 0;
  const auto stopped = stages.trace(d, [&](const TraceStep&) { return ++steps < 3; });
  EXPECT_TRUE(stopped && *stopped == TraceEnd::abandoned && stages.strands() == 0) << "watched again";
  Knot fresh;
  EXPECT_TRUE(followsFreshly(stages, d, fresh));
}

}  // namespace
}  // namespace lorivan
