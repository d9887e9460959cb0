// What a numeric field makes of a text, and what it remembers.
#include "controls/valid_text.h"

#include <gtest/gtest.h>

#include "platform/none/none_platform.h"

namespace lorivan {
namespace {

struct FieldTest : ::testing::Test {
  float now = 100;
  ValidText field{{}, "1", [this] { return now; }};

  void enter(const std::string& text) {
    field.type(text);
    field.pressEnter();
    now += 1;
  }
};

TEST(ChkNum, ReadsLeniently) {
  // Half a sign is one character of two bytes; of five separators two are left.
  // clang-format off
  const std::pair<const char*, double> cases[] = {
      {"", kNotANumber}, {"-", kNotANumber}, {"x", kNotANumber}, {"\xC2\xBD", kNotANumber}, {"2.5.1", kNotANumber},
      {"1,5x", kNotANumber}, {".....5", kNotANumber}, {"....5", 0.5}, {"007", 7}, {" 12 ", 12}, {"1.5", 1.5},
      {"1,5", 1.5}, {"1x5", 1.5}, {"1\xC2\xBD", 1}, {"1e3", 1.3}, {"1,,5", 1.5}, {"1..25", 1.25}, {"-3", -3},
      {"--5", -0.5}, {".25", 0.25}, {"123456.75", 123456.75}};
  // clang-format on
  for (const auto& [text, number] : cases) EXPECT_DOUBLE_EQ(ChkNum(text), number) << '"' << text << '"';
}

TEST(CheckRange, GivesTheNumberALimitOrTheDefault) {
  struct Case {
    const char *text, *fallback, *min, *max, *expected;
    bool inRange;
  };
  const Case cases[] = {{"0.1", "1", "0.25", "10", "0.25", false}, {"11", "1", "0.25", "10", "10", false},
                        {"0,25", "1", "0.25", "10", "0.25", true}, {"2.50", "1", "0.25", "10", "2.5", true},
                        {"abc", " 15 ", "1", "9", "15", false},    {"-7", "1", "-7", "7", "-7", true},
                        {"-0", "1", "-7", "7", "0", true},         {"0.1", "1", "0.1", "10", "0.1", true},
                        {"2", "1", " 3", "9", "3", false},         {"9", "1", "1", "9", "9", true}};
  for (const Case& c : cases) {
    const RangeCheck got = checkRange(c.text, c.fallback, c.min, c.max);
    EXPECT_EQ(got.text, c.expected) << c.text;
    EXPECT_EQ(got.inRange, c.inRange) << c.text;
  }
  EXPECT_EQ(checkRange(std::string(400, '9'), "1", "1", "20").text, "20");
}

TEST_F(FieldTest, LeavingCorrectsTwiceAndRaisesChangedOnce) {
  field.ValMax = std::string("9");
  field.ValDefault = std::string("15");
  int raised = 0;
  field.Changed = [&] { ++raised; };
  enter("fast");
  EXPECT_EQ(field.Value(), "15");
  field.leave();
  EXPECT_EQ(field.Value(), "9");
  EXPECT_EQ(raised, 2);
  field.setValue("4");
  EXPECT_EQ(raised, 2);
}

TEST_F(FieldTest, RecordsWhatIsAcceptedOnceAndWithItsTime) {
  EXPECT_EQ(field.UndoLevel(), 0);
  EXPECT_EQ(field.UndoText(), "");
  enter("5");
  enter("5");
  enter("200");  // a limit is shown, not recorded
  enter("no");
  EXPECT_EQ(field.UndoLevel(), 1);
  EXPECT_EQ(field.UndoText(), "5");
  EXPECT_EQ(field.UndoTime(), 100);
  field.setUnDoing(true);
  field.setValue("6");
  field.setUnDoing(false);
  EXPECT_EQ(field.Value(), "6");
  EXPECT_EQ(field.UndoText(), "5");
}

TEST_F(FieldTest, KeepsTheLatestTwentyEntries) {
  for (int i = 1; i <= 25; ++i) enter(std::to_string(i));
  EXPECT_EQ(field.UndoLevel(), 19);
  EXPECT_EQ(field.UndoText(), "25");
  EXPECT_EQ(field.UndoTime(), 124);
  field.setUndoLevel(0);
  EXPECT_EQ(field.UndoText(), "6");
  EXPECT_EQ(field.UndoTime(), 105);
}

TEST_F(FieldTest, LoadingStartsTheHistoryAnew) {
  MemorySettings settings;
  enter("5");
  field.SaveVal(settings, "Lorivan,  Width");
  EXPECT_EQ(settings.read("Global", "Width", ""), "5");
  settings.values[{"Global", "Width"}] = "250";
  enter("6");
  field.LoadVal(settings, "Lorivan,  Width");
  EXPECT_EQ(field.Value(), "100");
  EXPECT_EQ(field.UndoLevel(), 0);
  EXPECT_EQ(field.UndoText(), "100");
  EXPECT_EQ(field.UndoTime(), 0);
  settings.values[{"Global", "Width"}] = "";
  field.LoadVal(settings, "Lorivan,  Width");
  EXPECT_EQ(field.Value(), "1");
  for (const char* key : {"no comma", "Lorivan, "}) {
    field.LoadVal(settings, key);
    EXPECT_EQ(field.Value(), "1");
  }
}

}  // namespace
}  // namespace lorivan
