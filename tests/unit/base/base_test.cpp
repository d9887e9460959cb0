// Rounding, numbers as text, files that appear whole or not at all.
#include <gtest/gtest.h>

#include <clocale>
#include <filesystem>
#include <fstream>
#include <limits>

#include "base/colour.h"
#include "base/digits.h"
#include "base/numbers.h"
#include "base/random.h"
#include "base/sink.h"
#include "scratch_folder.h"

namespace lorivan {
namespace {

namespace fs = std::filesystem;

TEST(Numbers, RoundHalvesToEvenAndStopAtTheRange) {
  // clang-format off
  const std::pair<double, int> cases[] = {
      {2.5, 2}, {3.5, 4}, {0.5, 0}, {-0.5, 0}, {-2.5, -2}, {-1.5, -2}, {2.4999, 2}, {1e9, 32767}, {-1e9, -32768},
      {std::nan(""), 0}};
  // clang-format on
  for (const auto& [x, expected] : cases) EXPECT_EQ(toInt16(x), expected) << x;
  for (const auto& [x, expected] :
       {std::pair{0.0, 0}, {-0.0, 0}, {-3.0, 0}, {0.5, 0}, {254.5, 254}, {300.0, 255}})
    EXPECT_EQ(roundTo<std::uint8_t>(x), expected) << x;
  // What the processor does by itself, on both sides of every power of two and of halves.
  for (int power = -3; power < 64; ++power)
    for (const double base : {std::ldexp(1, power), std::ldexp(1, power) + 0.5, std::ldexp(3, power) - 0.5})
      for (const double x : {std::nextafter(base, 0), base, std::nextafter(base, 1e300)})
        for (const double signedX : {x, -x}) EXPECT_EQ(roundHalfEven(signedX), std::nearbyint(signedX)) << x;
}

TEST(Numbers, ThreeDecimalsAreCutOff) {
  // clang-format off
  const std::pair<float, const char*> cases[] = {
      {0.F, "0.000"}, {-0.0004F, "0.000"}, {2.9999F, "2.999"}, {-1.5F, "-1.500"}, {-0.001F, "-0.001"}, {0.5F, "0.500"},
      {1234567.F, "1234567.000"}, {1e20F, "100000002004087734272.000"},
      {std::numeric_limits<float>::infinity(), "0.000"}};
  // clang-format on
  for (const auto& [x, text] : cases) EXPECT_EQ(MyFormat(x), text);
}

TEST(Numbers, BlockDigitsAreThoseOfMyFormat) {
  const Rnd rnd = seededRandom(3);
  char text[kMostDigits];
  for (int i = 0; i < 200000; ++i) {
    const float x = static_cast<float>((rnd() - 0.5) * std::pow(10, i % 11 - 3));
    if (std::fabs(x) > 2e6F) continue;
    char* end = putThousandths(text, static_cast<std::int32_t>(toThousandths(x)));
    ASSERT_EQ(std::string(+text, end), MyFormat(x)) << x;
  }
  EXPECT_EQ(toThousandths(std::nanf("")), 0);
  EXPECT_EQ(toThousandths(-1e16F), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(std::string(+text, putThousandths(text, std::numeric_limits<std::int32_t>::min())),
            "-2147483.648");
}

TEST(Numbers, PrintedNumbersCarryTheirBlanksUnderAnyLocale) {
  const char* old = std::setlocale(LC_ALL, "de_DE.UTF-8");
  std::string out;
  appendPrinted(out, 0.5F);
  appendPrinted(out, -0.25F);
  appendPrinted(out, std::int64_t{7});
  EXPECT_EQ(out, " 0.5 -0.25  7 ");
  EXPECT_EQ(shortestText(1e-7F), "0.0000001");
  EXPECT_EQ(parseNumber(" 1.5 "), 1.5);
  if (old != nullptr) std::setlocale(LC_ALL, "C");
}

TEST(Numbers, StrictParsersRefuseWhatIsNotANumber) {
  EXPECT_EQ(parseInteger(" 12", -32768, 32767), 12);
  for (const char* bad : {"", "1x", "1.5", "+-1", "32768", "--1", "0x10", "1e2"})
    EXPECT_FALSE(parseInteger(bad, -32768, 32767)) << bad;
  for (const char* bad : {"", "+-1", "nan", "inf", "1e999", "1,5", "1 2"})
    EXPECT_FALSE(parseNumber(bad)) << bad;
}

TEST(Random, DrawsAreThoseOfTheStandardsEngine) {
  const Rnd draw = seededRandom(std::mt19937_64::default_seed);
  for (int i = 1; i < 10000; ++i) draw();
  EXPECT_EQ(draw(), static_cast<double>(9981545732273789042U >> 11) * 0x1p-53) << "as C++ lays it down";
}

class Files : public testing::Test {
 protected:
  std::string path(const std::string& name) const { return scratch_.file(name); }
  std::size_t filesInFolder() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
  }
  const Folder scratch_;
  const fs::path& folder_ = scratch_.path;
};

TEST_F(Files, AppearOnlyWhenComplete) {
  const std::string target = path("knot.txt");
  ASSERT_TRUE(writeFile(target, "old"));
  EXPECT_TRUE((*FileSink::create(target))->write("half"));
  EXPECT_EQ(*readFile(target, 100), "old");
  EXPECT_EQ(filesInFolder(), 1U) << "the temporary file must be gone";
  ASSERT_TRUE(writeFile(target, "new"));
  EXPECT_EQ(*readFile(target, 100), "new");
}

TEST_F(Files, TakeTheirNamesTogetherOrNotAtAll) {
  ASSERT_TRUE(writeFile(path("a"), "old"));
  const auto commit = [&](bool broken) {
    std::vector<std::unique_ptr<FileSink>> sinks;
    for (const char* name : {"a", "b", "c"}) {
      sinks.push_back(std::move(*FileSink::create(path(name))));
      sinks.back()->write("new");
    }
    // What could take its name a moment ago cannot any more.
    if (broken) fs::create_directories(folder_ / "c" / "in it");
    return FileSink::commitAll(sinks);
  };
  EXPECT_EQ(commit(true).error().kind, ErrorKind::output);
  EXPECT_EQ(*readFile(path("a"), 100), "old");
  EXPECT_FALSE(fileExists(path("b")));
  fs::remove_all(folder_ / "c");
  EXPECT_TRUE(commit(false));
  for (const char* name : {"a", "b", "c"}) EXPECT_EQ(*readFile(path(name), 100), "new");
  EXPECT_EQ(filesInFolder(), 3U) << "scraps were left";
}

TEST_F(Files, FaultsAreToldInWords) {
  fs::create_directory(folder_ / "sub");
  EXPECT_NE(writeFile(path("sub"), "x").error().message.find("it is a folder"), std::string::npos);
  EXPECT_FALSE(writeFile(path("no/such/place.txt"), "x"));
  EXPECT_EQ(readFile(path("sub"), 10).error().kind, ErrorKind::input);
  EXPECT_FALSE(readFile(path("missing"), 10));
  ASSERT_TRUE(writeFile(path("big"), std::string(100, 'x')));
  EXPECT_TRUE(readFile(path("big"), 100));
  EXPECT_NE(readFile(path("big"), 99).error().message.find("larger"), std::string::npos);
}

TEST_F(Files, NamesMayUseAnyLetters) {
  const std::u8string name = (folder_ / u8"Kn\u00f6ten \u7d50.txt").u8string();
  ASSERT_TRUE(writeFile(std::string(name.begin(), name.end()), "1"));
  EXPECT_TRUE(fs::exists(name));
}

/// Another process of this machine that is over gets the name of a scrap of this one.
TEST_F(Files, WhatAKilledProgramLeftIsClearedAndNothingElse) {
  std::string own;
  {
    const auto sink = std::move(*FileSink::create(path("knot.txt")));
    own = fs::directory_iterator(folder_)->path().filename().string();
  }
  const std::size_t process = own.find('-', own.find('-') + 1) + 1;
  const std::string rest = own.substr(own.find('-', process));
  const std::string killed = own.substr(0, process) + "7ffffff1" + rest;
  for (const std::string& name : {own, killed, ".lorivan-0-7ffffff1" + rest, own.substr(0, process) + ".part",
                                  killed.substr(0, killed.size() - 5) + ".old", "." + killed})
    scratch_.write(name, "x");
  fs::create_directory(folder_ / "sub");
  ASSERT_TRUE(writeFile(path("sub/other.txt"), "1"));  // so that this folder is looked through anew
  ASSERT_TRUE(writeFile(path("knot.txt"), "1"));
  EXPECT_FALSE(fs::exists(folder_ / killed));
  EXPECT_EQ(filesInFolder(), 7U)
      << "a scrap of a running program, of another machine, or somebody's last bytes";
}

TEST_F(Files, ManySmallWritesAndLargeOnesKeepTheirOrder) {
  const auto sink = std::move(*FileSink::create(path("long")));
  std::string all;
  for (std::size_t i = 1; i < 400; ++i) {
    const std::string part(i % 40 == 0 ? 70'000 : i, static_cast<char>('a' + i % 26));
    EXPECT_TRUE(sink->write(part));
    all += part;
    if (i != 200) continue;
    std::string back;
    EXPECT_TRUE(sink->readBack([&](std::string_view bytes) { return back += bytes, true; }));
    EXPECT_EQ(back, all);
  }
  ASSERT_TRUE(sink->commit());
  EXPECT_EQ(*readFile(path("long"), 10'000'000), all);
}

#if defined(__linux__)
TEST_F(Files, ADeviceIsWrittenInPlaceAndAFullOneFails) {
  EXPECT_NE(writeFile("/dev/full", "x").error().message.find("/dev/full"), std::string::npos);
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST_F(Files, ALinkToNowhereMakesItsTargetAndACircleIsRefused) {
  fs::create_symlink("new.txt", folder_ / "link");
  ASSERT_TRUE(writeFile(path("link"), "1"));
  EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
  EXPECT_EQ(*readFile(path("new.txt"), 10), "1");
  fs::create_symlink("b", folder_ / "a");
  fs::create_symlink("a", folder_ / "b");
  EXPECT_FALSE(writeFile(path("a"), "1"));
  fs::permissions(folder_ / "new.txt", fs::perms::owner_read | fs::perms::owner_write);
  ASSERT_TRUE(writeFile(path("new.txt"), "2"));
  EXPECT_EQ(fs::status(folder_ / "new.txt").permissions(), fs::perms::owner_read | fs::perms::owner_write);
  fs::permissions(folder_ / "new.txt", fs::perms::group_write, fs::perm_options::add);
  fs::create_hard_link(folder_ / "new.txt", folder_ / "backup.txt");
  {
    const auto half = std::move(*FileSink::create(path("new.txt")));
    half->write("3");
    for (const auto& entry : fs::directory_iterator(folder_)) {
      if (entry.path().extension() != ".part") continue;
      EXPECT_EQ(entry.status().permissions(), fs::status(folder_ / "new.txt").permissions())
          << "from the start";
    }
    ASSERT_TRUE(half->commit());
  }
  EXPECT_EQ(*readFile(path("backup.txt"), 10), "2") << "what has the file's other name is left alone";
  const std::string longest(255, 'n');
  EXPECT_TRUE(writeFile(path(longest), "1")) << "the temporary name is a short one";
}
#endif

TEST(Colours, ThePaletteCountsBlueGreenRedThenBright) {
  for (int i = 0; i < 16; ++i) {
    const int full = i < 8 ? 0x80 : 0xFF;
    const Colour mixed =
        makeColour((i & 4) != 0 ? full : 0, (i & 2) != 0 ? full : 0, (i & 1) != 0 ? full : 0);
    EXPECT_EQ(QBColor(i), i == 7 ? 0xC0C0C0U : i == 8 ? 0x808080U : mixed) << i;
  }
  EXPECT_EQ(QBColor(99), 0xFFFFFFU);
  EXPECT_EQ(toArgb(0x123456, 0x78), 0x78563412U);
  EXPECT_EQ(fromArgb(0x78563412), 0x123456U);
}

TEST(Numbers, QuotesShowTwentyHarmlessCharacters) {
  EXPECT_EQ(quoted("~ \x7F\n5678901234567890"), "\"~ ??5678901234567890\"");
  EXPECT_EQ(quoted("123456789012345678901"), "\"12345678901234567890...\"");
}

TEST(Paths, ExtensionAndName) {
  EXPECT_EQ(extensionOf("a.b/c.AZ"), "az");
  EXPECT_EQ(extensionOf("a.b/c"), "");
  EXPECT_EQ(fileNameOf("C:\\x\\y.qzd"), "y.qzd");
}

}  // namespace
}  // namespace lorivan
