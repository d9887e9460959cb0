// Steps, their names, and where they end.
#include "design/history.h"

#include <gtest/gtest.h>

#include "design/edits.h"

namespace lorivan {
namespace {

struct Number {
  int value = 0;
  bool operator==(const Number&) const = default;
};
std::size_t sizeBeside(const Number& /*step*/, const Number& /*neighbour*/) { return 10; }

TEST(History, StepsAreNamedAndANewOneEndsWhatCouldBeRedone) {
  History<Number> history({1});
  EXPECT_TRUE(!history.canUndo() && !history.canRedo() && history.undoName().empty());
  EXPECT_EQ(history.undo().value, 1) << "the floor";
  history.add("two", {2});
  history.add("three", {3});
  history.add("nothing", {3});
  EXPECT_EQ(history.undoName(), "three");
  EXPECT_EQ(history.undo().value, 2);
  EXPECT_EQ(history.undoName() + history.redoName(), "twothree");
  history.add("nothing", {2});
  EXPECT_TRUE(history.canRedo()) << "no step was taken";
  history.add("four", {4});
  EXPECT_EQ(history.redoName(), "");
  EXPECT_EQ(history.redo().value, 4);
  EXPECT_EQ(history.bytes(), 20U) << "what was cut off costs nothing";
  EXPECT_EQ(history.undo().value + history.undo().value, 3);
  EXPECT_EQ(history.redoName(), "two");
}

TEST(History, ARunIsOneStep) {
  History<Number> history({1});
  const auto add = [&](int value, std::string_view run) {
    history.add("to " + std::to_string(value), {value}, run);
    return history.steps();
  };
  EXPECT_EQ(add(2, "width") + add(3, "width"), 2U);
  EXPECT_EQ(history.undoName(), "to 3");
  EXPECT_EQ(add(4, "edge"), 2U);
  EXPECT_EQ(add(5, ""), 3U);
  EXPECT_EQ(add(6, ""), 4U) << "steps without a run never join";
  EXPECT_EQ(add(7, "edge"), 5U);
  history.endRun();
  EXPECT_EQ(add(8, "edge"), 6U);
  EXPECT_EQ(add(7, "edge"), 5U) << "a run that comes back to where it began is no step";
  EXPECT_EQ(history.undoName(), "to 7");
  EXPECT_EQ(history.undo().value, 6);
  EXPECT_EQ(history.redo().value, 7);
  EXPECT_EQ(add(9, "edge"), 6U) << "what was taken again is joined by nothing";
  history.undo();
  EXPECT_EQ(history.undo().value, 6);
  EXPECT_EQ(add(8, ""), 5U);
  EXPECT_EQ(history.bytes(), 50U);
}

TEST(History, TheOldestStepsGoFirst) {
  History<Number> few({0}, {3, 1000}), small({0}, {1000, 40});
  for (int i = 1; i <= 10; ++i) {
    few.add("step", {i});
    small.add("step", {i});
  }
  EXPECT_EQ(few.steps(), 3U);
  EXPECT_EQ(small.steps(), 3U) << "and the state that undo ends at";
  EXPECT_EQ(small.bytes(), 40U);
  while (few.canUndo()) few.undo();
  EXPECT_EQ(few.now().value, 7);
}

TEST(History, FiveHundredWallsOfTheLargestKnotFit) {
  Document d;
  d.lines = Shared(KnotLines(kMostLines, KnotLine{0, 0, 9, 0, 4, 0, kOrdinary, 0, 0}));
  History<Document> history(d);
  for (int i = 0; i < 600; ++i) history.add("Wall", stepLine(history.now(), i, 1));
  EXPECT_EQ(history.steps(), HistoryLimits().steps);
  EXPECT_LT(history.bytes(), HistoryLimits().bytes);
  EXPECT_GT(history.bytes(), 500 * kMostLines * sizeof(KnotLine)) << "every wall has lines of its own";
  const std::size_t before = history.bytes();
  history.add("Width 9", withField(history.now(), Param::Width, "9"));
  EXPECT_LT(history.bytes(), before) << "a width shares the lines, and the oldest wall went";
  const Document outlined = withOutline(d, CustomShape());
  EXPECT_GT(sizeBeside(outlined, d), sizeBeside(d, d) + sizeof(CustomShape));
  EXPECT_EQ(sizeBeside(outlined, outlined), sizeBeside(d, d)) << "what is shared costs nothing";
  while (history.canUndo()) history.undo();
  EXPECT_EQ(history.now().lines->at(100).Kind, kWall);
  EXPECT_EQ(history.now().lines->at(101).Kind, kOrdinary);
}

}  // namespace
}  // namespace lorivan
