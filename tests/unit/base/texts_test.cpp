#include "base/texts.h"

#include <gtest/gtest.h>

#include "base/po_file.h"

namespace lorivan {
namespace {

constexpr auto kRule = [](long long n) { return n == 1 ? 0 : 1; };

TEST(Texts, TakeTheirWordsInEveryOrder) {
  EXPECT_EQ(tr("{1} of {2}", 3, "{1}{2}"), "3 of {1}{2}") << "words are no patterns";
  EXPECT_EQ(trn("{n} line of {1}", "{n} lines of {1}", 1, 7), "1 line of 7");
  EXPECT_EQ(filled("{2} {3} {} {x} {1", std::vector<std::string>{"a", "b"}), "b {3} {} {x} {1");
  auto table = readPo(
      "# A comment\nmsgid \"\"\nmsgstr \"head\"\n\n#: x.cpp\nmsgid \"{1} of {2}\"\nmsgstr \"von {2} "
      "\"\n\"{1}\\t\\n\"\n"
      "msgctxt \"style\"\nmsgid \"Sea\"\nmsgstr \"Meer\"\n\nmsgid \"{n} line of {1}\"\n"
      "msgid_plural \"{n} lines of {1}\"\nmsgstr[0] \"{n} Linie: {1}\"\nmsgstr[1] \"{n} Linien: {1}\"\n\n"
      "#, fuzzy\nmsgid \"Old\"\nmsgstr \"Alt\"\n\nmsgid \"Open\"\nmsgstr \"\"\n",
      kRule);
  ASSERT_TRUE(table) << table.error().message;
  EXPECT_EQ(table->entries().size(), 3U);
  speak(&*table);
  EXPECT_EQ(tr("{1} of {2}", 3, 4), "von 4 3\t\n");
  EXPECT_EQ(trn("{n} line of {1}", "{n} lines of {1}", 0, 7), "0 Linien: 7");
  EXPECT_EQ(translated("style", "Sea") + translated("Sea") + translated("Old") + translated("Open"),
            "MeerSeaOldOpen");
  EXPECT_EQ(unreadable("{1} of {2}", "a", "b").message, "von b a\t\n");
  speak(nullptr);
  EXPECT_EQ(tr("{1} of {2}", 3, 4), "3 of 4");
}

TEST(PoFile, NamesTheLineThatCannotBeRead) {
  const std::pair<const char*, const char*> cases[] = {
      {"msgid \"a\"\nmsgstr \"b", "line 2: a text in quotes is missing"},
      {"msgid \"a\"\nmsgstr \"b\"\n\n\"c\"", "line 4: a text in quotes is missing"},
      {"msgid \"a\"b\"", "line 1: a quote stands within a text"},
      {"\"a\"", "line 1: a text in quotes is missing"},
      {"\nmsgid \"a\\q\"", "line 2: an escape is not known"},
      {"msgid \"a\\\"", "line 1: an escape is not known"},
      {"msgwhat \"a\"", "line 1: a keyword is not known"},
      {"msgid \"a\"\nmsgstr[1] \"b\"", "line 2: the forms of a text do not follow each other"},
      {"msgid \"a\"\nmsgstr \"b\"\n\nmsgid \"a\"\nmsgstr \"b\"", "line 5: a text is there twice"}};
  for (const auto& [file, message] : cases) {
    const auto read = readPo(file, kRule);
    EXPECT_EQ(read ? "read" : read.error().message, message) << file;
  }
  EXPECT_FALSE(readPo(std::string(kLargestPoFile + 1, ' '), kRule));
}

}  // namespace
}  // namespace lorivan
