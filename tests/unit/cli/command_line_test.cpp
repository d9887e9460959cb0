// The words of the command line.
#include "cli/command_line.h"

#include <gtest/gtest.h>

#include <iterator>
#include <sstream>

#include "cli/batch.h"
#include "cli/progress_line.h"
#include "cli/unquoted_file.h"
#include "design/frame_files.h"
#include "design/presets.h"
#include "platform/none/none_platform.h"
#include "scratch_folder.h"

namespace lorivan {
namespace {

/// The words between single blanks.
std::vector<std::string> wordsOf(const std::string& line) {
  std::istringstream stream(line);
  return {std::istream_iterator<std::string>(stream), {}};
}

TEST(CommandLine, KeepsItsOptionsInOrder) {
  const auto line = parseCommandLine(
      wordsOf("--shape Star --set vtXNo=6 --set chkMirror=1 --set vtXNo=7 --random 42 --width 800 "
              "--mm 12.5 --preset gold --transparent --quiet -o a.SVG -o dir.x/b.png"));
  ASSERT_TRUE(line);
  EXPECT_EQ(line->shape, Shape::Star);
  EXPECT_EQ(line->values.at(1).second, "7");
  EXPECT_EQ(line->checks.at(0), std::make_pair(Check::Mirror, true));
  EXPECT_TRUE(line->seed == 42U && line->output.width == 800 && line->output.millimetres == 12.5);
  EXPECT_EQ(line->preset, findPreset("Gold"));
  EXPECT_EQ(line->outputs.size(), 2U);
  EXPECT_TRUE(parseCommandLine({"--mm", "0.01", "-o", "a.svg"}));
  const auto seedless = parseCommandLine({"--random", "-o", "a.svg", "--shape", "4"});
  EXPECT_TRUE(seedless->random && !seedless->seed && seedless->shape == Shape::Circular);
}

TEST(CommandLine, RefusesWhatItDoesNotKnow) {
  std::istringstream lines(
      "--shape Pentagon -o a.svg\n--shape\n--set vtXNo -o a.svg\n--set vtNope=1 -o a.svg\n"
      "--set chkMirror=yes -o a.svg\n-o a.xyzzy\n-o\n--width 0 -o a.png\n--mm nan -o a.svg\n--view 4d -o "
      "a.png\n"
      "--list fish\n--frobnicate\na.qzd b.qzd\n--shape Star\na.qzd --shape Star -o a.svg\n"
      "--shape (Custom) -o a.svg\n--preset Gold\n"
      "--inner 18 -o a.stl\n--inner 18 --height 6 --frame 20x30 -o a.stl\n--inner 18 --height 6 --mm 60 -o "
      "a.stl\n--frame 20x30 --mm 20 -o a.svg\n--frame 20x30 --height 5 -o a.svg\n--frame 20 -o a.svg");
  for (std::string line; std::getline(lines, line);) EXPECT_FALSE(parseCommandLine(wordsOf(line))) << line;
  EXPECT_FALSE(parseCommandLine({""}));
  for (const char* const good : {"--inner 18 --height 6 -o a.stl", "--frame 20x30 -o a.svg"})
    EXPECT_TRUE(parseCommandLine(wordsOf(good))) << good;
}

TEST(CommandLine, CountsTheKnotsOfARun) {
  const auto line = parseCommandLine(
      wordsOf("--random 7..9 --sweep vtXNo=4..2 --sweep vtSkew=0.5..0.75:0.1 -o %03d-%d-%d.svg"));
  ASSERT_TRUE(line);
  const Batch batch(*line, *line->seed);
  ASSERT_EQ(batch.count(), 3U * 3 * 3);
  const Member last = batch.member(26), middle = batch.member(10);
  EXPECT_EQ(last.numbers, (std::vector<std::string>{"9", "2", "0.7"}));
  EXPECT_EQ(last.caption, "9, Columns 2, Stretch 0.7");
  EXPECT_EQ(middle.seed, 8U);
  EXPECT_EQ(middle.values.at(0), std::make_pair(Param::XNo, std::string("4")));
  EXPECT_EQ(parseNumberedName(line->outputs[0])->name(last.numbers), "009-2-0.7.svg");

  const auto sheet = parseCommandLine(wordsOf("--sheet -o a.png --random 5"));
  EXPECT_EQ(Batch(*sheet, 5).member(11).seed, 16U);
  const auto matrix = parseCommandLine(wordsOf("--sheet --sweep vtXNo=1..3 --sweep vtYNo=1..7 -o a.svg"));
  EXPECT_EQ(Batch(*matrix, 0).columns(), 7);
  EXPECT_FALSE(Batch(*matrix, 0).member(0).seed);

  std::istringstream wrong(
      "--random 9..7 -o %d.svg\n--random 1..200000 -o %d.svg\n--random 1..3 -o a.svg\n--random 1..3 -o "
      "%d-%d.svg\n--sweep vtXNo=1..30 -o %d.svg\n--sweep vtXNo=1..5:0 -o %d.svg\n--sweep vtXNo=3 -o %d.svg\n"
      "--sweep vtNope=1..2 -o %d.svg\n--sweep chkMirror=0..1 -o %d.svg\n--sweep vtXNo=1..2 --sweep "
      "vtXNo=1..2 "
      "-o %d-%d.svg\n--sheet -o a.stl\n--sheet\n--random 1..2 --animate -o %d.png\n--sweep "
      "vtScale=6..99:0.0001 "
      "--sweep vtWidth=2..30:0.1 -o %d%d.svg");
  for (std::string words; std::getline(wrong, words);)
    EXPECT_FALSE(parseCommandLine(wordsOf(words))) << words;
}

TEST(NumberedNames, CountWithinTheirDigits) {
  const auto names = parseFrameNames("50%/a-%03d.PNG");
  ASSERT_TRUE(names);
  EXPECT_EQ(names->name(7), "50%/a-007.PNG");
  EXPECT_EQ(names->name(-7), "50%/a--07.PNG");
  EXPECT_EQ(names->most(), 999);
  const auto plain = parseFrameNames("%d.bmp");
  EXPECT_EQ(plain->name(1234), "1234.bmp");
  for (const auto& [pattern, most] : {std::pair{"%d.bmp", 9999}, {"%01d.bmp", 9}, {"%09d.bmp", 9999}})
    EXPECT_EQ(parseFrameNames(pattern)->most(), most);
  for (const char* wrong :
       {"a.png", "%", "%.png", "%0d.png", "%012d.png", "%-3d.png", "%%d.png", "%d/a.png", "%d-%d.png"})
    EXPECT_FALSE(parseFrameNames(wrong)) << wrong;
}

TEST(ProgressLine, ShowsLongWorkOnOneLineAndLeavesNothing) {
  ManualClock clock;
  std::ostringstream terminal, pipe;
  {
    ProgressLine line(clock, terminal, true), quiet(clock, pipe, false);
    for (const double part : {0.1, 0.5, 0.501, 0.6}) {
      line.reached("a.stl", part);
      quiet.reached("a.stl", part);
      clock.advance(600);
    }
  }
  const std::string gone = '\r' + std::string(20, ' ') + '\r';
  EXPECT_EQ(terminal.str(), "lorivan: 50 %, a.stl" + gone + "lorivan: 60 %, a.stl" + gone);
  EXPECT_EQ(pipe.str(), "");
}

TEST(UnquotedFile, IsFoundAsAWhole) {
  const Folder folder;
  const std::string path = folder.file("my  Kn\xC3\xB6tchen --best .qzd"), half = folder.file("my");
  const auto fileOf = [](const std::string& typed) {
    const auto line = parseTyped(wordsOf(typed), typed);
    return line ? line->knotFile : line.error().message;
  };
  ASSERT_TRUE(writeFile(path, "x"));
  EXPECT_EQ(fileOf(path), path);
  ASSERT_TRUE(writeFile(half, "x"));
  EXPECT_EQ(fileOf(path), path) << "its first word is a file, too";
  ASSERT_TRUE(writeFile(half + " --quiet", "x"));
  EXPECT_EQ(fileOf(half + " --quiet"), half) << "words that make sense";
  EXPECT_EQ(fileOf(half + ' ' + half), "one knot file at a time, not also \"" + half + '"');
  ASSERT_TRUE(writeFile(folder.file("my b"), "x") && writeFile(folder.file("b"), "x"));
  EXPECT_FALSE(parseTyped({half, folder.file("b")}, folder.file("my b"))) << "two files";
}

}  // namespace
}  // namespace lorivan
