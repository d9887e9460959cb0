// A knot that follows its document, and the way back through ten thousand edits.
#include <gtest/gtest.h>

#include <ranges>

#include "design/document_text.h"
#include "design/history.h"
#include "design/knot.h"
#include "knot_maker.h"
#include "random_edits.h"

namespace lorivan {
namespace {

bool sameKnot(const Knot& a, const Knot& b) {
  if (a.strands.ThreadCount != b.strands.ThreadCount || a.stretch != b.stretch) return false;
  for (int slot = 0; slot < kStrandSlots; ++slot)
    if (!std::ranges::equal(a.strands.closed(slot), b.strands.closed(slot),
                            [](const StrandPoint& p, const StrandPoint& q) {
                              return p.x == q.x && p.y == q.y && p.z == q.z;
                            }))
      return false;
  for (int j = 0; j <= a.graph.LastLine; ++j)
    if (a.graph.Lines[static_cast<std::size_t>(j)].Passes !=
        b.graph.Lines[static_cast<std::size_t>(j)].Passes)
      return false;
  return a.graph.LastLine == b.graph.LastLine && a.graph.CellSize == b.graph.CellSize &&
         a.curve.X == b.curve.X && a.curve.Y == b.curve.Y && a.curve.Z == b.curve.Z;
}

/// Whether the stages come to what the document gives from the beginning, a message included.
::testing::AssertionResult followsFreshly(KnotStages& stages, const Document& document, Knot& fresh) {
  const auto traced = stages.trace(document);
  const Status made = makeKnot(document, fresh);
  if (static_cast<bool>(traced) != static_cast<bool>(made))
    return ::testing::AssertionFailure() << "only one of them made a knot";
  if (!made)
    return traced.error().message == made.error().message && stages.strands() == 0
               ? ::testing::AssertionSuccess()
               : ::testing::AssertionFailure() << traced.error().message << ", " << made.error().message;
  return sameKnot(stages.knot(), fresh) ? ::testing::AssertionSuccess()
                                        : ::testing::AssertionFailure() << documentText(document);
}

Document withCellSize(Document document, std::int16_t size) {
  document.CellSize = size;
  return document;
}

TEST(MakeKnot, GivesTheKnotOfTheFields) {
  Knot knot;
  for (int s = 0; s < kShapeCount - 1; ++s) {
    TraceSettings settings;
    settings.startColour = -3;
    settings.swish = 17;
    settings.mirror = s % 2 == 1;
    GridFields grid = fieldsOf(static_cast<Shape>(s), 7, 5, 20, 2);
    grid.skew = 1.5F;
    const MadeKnot wanted = makeKnot(grid, settings);
    Document d = withCheck({}, Check::Mirror, settings.mirror);
    for (const auto& [p, text] : {std::pair{Param::XNo, "7"},
                                  {Param::YNo, "5"},
                                  {Param::Scale, "20"},
                                  {Param::CrossOffset, "2"},
                                  {Param::Skew, "1.5"},
                                  {Param::Swish, "17"},
                                  {Param::StartColour, "-3"},
                                  {Param::Smooth, "3"}})
      d = withField(d, p, text);
    d = *chooseShape(d, static_cast<Shape>(s));
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

TEST(KnotStages, DoWhatIsOutOfDateAndNothingElse) {
  KnotStages stages;
  Document d = *newGrid({});
  EXPECT_EQ(stages.strands(), 0);
  ASSERT_TRUE(stages.trace(d));
  const int first = stages.strands();
  const auto samples = stages.knot().curve.X.size();
  for (const auto& [p, text] : {std::pair{Param::Width, "9"},
                                {Param::Edge, "2"},
                                {Param::Ka, "1"},
                                {Param::PolySides, "9"},
                                {Param::Smooth, "6"},
                                {Param::Scale, "7"}}) {
    d = withField(d, p, text);
    ASSERT_TRUE(stages.trace(d));
    EXPECT_EQ(stages.strands(), first) << parameterSpec(p).field;
  }
  EXPECT_NE(stages.knot().curve.X.size(), samples) << "a smaller scale has fewer samples";
  d.lines = Shared(KnotLines(*d.lines));
  ASSERT_TRUE(stages.trace(d));
  EXPECT_EQ(stages.strands(), first) << "the same lines in another copy";
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

TEST(KnotStages, FollowAnyRunOfEdits) {
  const Rnd random = seededRandom(3);
  KnotStages stages;
  Knot fresh;
  Document d;
  for (int i = 0; i < 300; ++i) {
    ASSERT_TRUE(followsFreshly(stages, d, fresh)) << i;
    d = randomEdit(d, random);
  }
}

TEST(History, TenThousandStepsGoBackAndForthToTheByte) {
  const Rnd random = seededRandom(2026);
  const Document first = *randomKnot({}, random);
  const std::string firstText = documentText(first);
  History<Document> history(first, {20'000, std::size_t{1} << 32});
  for (int i = 0; i < 10'000; ++i) history.add("step", randomEdit(history.now(), random));
  const std::string lastText = documentText(history.now());
  ASSERT_GT(history.steps(), 8000U);
  KnotStages stages;
  Knot fresh;
  for (int i = 0; history.canUndo(); ++i) {
    if (i % 50 == 0) {
      ASSERT_TRUE(followsFreshly(stages, history.now(), fresh)) << i;
      const std::string text = documentText(history.now());
      const auto read = readDocument(text);
      ASSERT_TRUE(read && read->corrections.empty()) << text.substr(0, 2000);
      EXPECT_EQ(documentText(read->document), text);
    }
    history.undo();
  }
  EXPECT_EQ(history.now(), first);
  EXPECT_EQ(documentText(history.now()), firstText);
  while (history.canRedo()) history.redo();
  EXPECT_EQ(documentText(history.now()), lastText);
}

}  // namespace
}  // namespace lorivan
