// The language of the window: whose it is, what it reaches, and what it leaves alone.
#include "design/lettering.h"
#include "main_window_driver.h"
#include "window/languages.h"
#include "window/summaries.h"

namespace lorivan {
namespace {

class LanguageTest : public MainWindowTest {
 protected:
  ~LanguageTest() override { speak(nullptr); }
  void startIn(const std::string& code) {
    stored("Language") = code;
    startDrawn({{}, false, seededRandom(7)});
  }
  Folder folder;
};

TEST_F(LanguageTest, IsTheSettingsOrElseTheUsers) {
  const char* const cases[][3] = {
      {"", "de_AT.UTF-8", "de"}, {"", "DE", "de"},  {"", "fr", "en"},      {"", "", "en"},
      {"en", "de", "en"},        {"de", "C", "de"}, {"xx", "de-CH", "de"}, {"", "den", "en"}};
  for (const auto& [setting, system, spoken] : cases)
    EXPECT_EQ(languageFor(setting, system), spoken) << setting << '|' << system;
}

TEST_F(LanguageTest, ReachesFormStatusStepsAndErrors) {
  startIn("de");
  EXPECT_EQ(w->text(w->control("lblXNo")), "Spa&lten");
  EXPECT_TRUE(statusStarts("3 Stränge, 12 Kreuzungen"));
  enter(Param::Width, "9");
  EXPECT_EQ(commandText("mnuEditUndoStep"), "&Rückgängig: Breite 9");
  enter(Param::Width, "99");
  EXPECT_TRUE(w->status().ends_with("; Breite: aus „99“ wurde 30 (2 bis 30)")) << w->status();
  choose(Shape::Octagonal);
  EXPECT_EQ(commandText("mnuEditUndoStep"), "&Rückgängig: Achteckig");
  const std::string file = folder.write("k.qzd", "20,4\r\n25\r\n");
  w->userDrops(file);
  EXPECT_EQ(w->status(), file + " konnte nicht geladen werden: Zeile 2: hat weniger als drei Werte");
  pickInput("mnuEditFitFrame", "breit");
  EXPECT_TRUE(statusStarts("Zwei Längen von 0.01 bis 100000 Millimetern")) << w->status();
  for (const auto& [words, sentence] : {std::pair{"über", "Über"},
                                        {"ähnlich wie", "Ähnlich wie"},
                                        {"k.qzd, Zeile 2", "k.qzd, Zeile 2"},
                                        {"", ""}})
    EXPECT_EQ(asSentence(words), sentence);
}

TEST_F(LanguageTest, ReachesHelpFileNamesAndTypes) {
  startIn("de");
  pick("mnuLanguageEnglish");  // from the next start on
  pick("mnuHelp3D");
  EXPECT_EQ(platform.help().pages.back(), "help/de/3d.html");
  pickFile("mnuFileSaveBMP", "");
  EXPECT_EQ(lastAsked().file.title + '|' + lastAsked().file.filterLabel,
            "Speichern: Name der Datei (2D-Knoten-BMP)|2D-Knoten-BMP-Dateien");
}

TEST_F(LanguageTest, HasItsLettersInPicturesToo) {
  for (const auto& [letter, plain] :
       {std::pair{"ä", "a"}, {"ö", "o"}, {"ü", "u"}, {"Ä", "A"}, {"Ö", "O"}, {"Ü", "U"}})
    EXPECT_EQ(letteringWidth(letter), letteringWidth(plain)) << letter;
  EXPECT_EQ(letteringWidth("€"), letteringWidth("#")) << "one box for a character of many bytes";
}

TEST_F(LanguageTest, LeavesFilesAlone) {
  std::vector<std::string> written;
  for (const std::string code : {"en", "de"}) {
    startIn(code);
    enterAll({{Param::Skew, "1.25"}, {Param::Width, "6.5"}});
    click("cmd2D");
    for (const auto& [command, name] : {std::pair{"mnuFileSaveAs", "k.qzd"}, {"mnuFileSaveBMP", "k.svg"}})
      written.push_back(saved(command, folder.file(code + name)));
  }
  ASSERT_EQ(written.size(), 4U);
  EXPECT_GT(written[1].size(), 1000U);
  EXPECT_EQ(written[0], written[2]);
  EXPECT_EQ(written[1], written[3]);
}

}  // namespace
}  // namespace lorivan
