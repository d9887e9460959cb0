// What is open, what is modified, and the copy that a crash leaves behind: without a window, and with one.
#include "design/document_text.h"
#include "design/edits.h"
#include "main_window_driver.h"

namespace lorivan {
namespace {

Document wide(int width) { return withField(Document(), Param::Width, std::to_string(width)); }

TEST(Session, KnowsWhatIsSavedWhateverIsUndone) {
  NonePlatform platform;
  Session session(platform, wide(7));
  EXPECT_FALSE(session.modified() || session.history().canUndo());
  session.step("Width 8", wide(8), "run");
  EXPECT_TRUE(session.modified());
  session.saved("/a.qzd");
  EXPECT_FALSE(session.modified());
  session.step("Width 9", wide(9), "run");
  session.step("Width 10", wide(10), "run");
  EXPECT_EQ(session.history().undoName(), "Width 10");
  session.undo();
  EXPECT_TRUE(!session.modified() && session.path() == "/a.qzd");
  session.undo();
  EXPECT_TRUE(session.modified()) << "the file holds 8, not 7";
  session.redo();
  session.begin("Load b.qzd", wide(12), "/b.qzd");
  EXPECT_TRUE(!session.modified() && session.path() == "/b.qzd");
  session.step("Width 13", wide(13));
  session.saved("/a.qzd");  // over the file opened first
  session.undo();
  session.undo();
  EXPECT_TRUE(session.path() == "/a.qzd" && session.modified()) << "that file holds 13 now";
}

struct RecoveryTest : ::testing::Test {
  RecoveryTest() { platform.userFolder_ = folder.path.string(); }
  const Folder folder;
  NonePlatform platform;
};

TEST_F(RecoveryTest, AKnotThatIsInNoFileIsKept) {
  Session session(platform, wide(7));
  const auto kept = [&] { return std::filesystem::exists(folder.file("unsaved-1.qzd")); };
  const Document made = wide(8);
  session.begin("Random knot", made);
  EXPECT_TRUE(kept() && !session.modified()) << "nothing to ask for, but only in memory";
  session.saved("/a.qzd");
  EXPECT_FALSE(kept());
  session.begin("Load shape", wide(9), "/shape.qzc");
  EXPECT_TRUE(kept()) << "that file holds the outline alone";
  session.begin("Load b.qzd", wide(10), "/b.qzd");
  EXPECT_FALSE(kept());
}

TEST_F(RecoveryTest, TwoProgramsKeepTheirOwnCopies) {
  const auto copies = [&] {
    std::string all;
    for (int i = 1; i < 4; ++i)
      all += Folder::contents(folder.file("unsaved-" + std::to_string(i) + ".qzd")) + '|';
    return all;
  };
  auto first = std::make_unique<Recovery>(platform);
  auto second = std::make_unique<Recovery>(platform);
  first->keep("one");
  second->keep("two");
  EXPECT_EQ(copies(), "one|two||");
  EXPECT_FALSE(first->takeLeft() || second->takeLeft()) << "both still run";
  first->keep("more");
  first.reset();  // a crash
  EXPECT_EQ(copies(), "more|two||");
  auto third = std::make_unique<Recovery>(platform);
  EXPECT_EQ(third->takeLeft(), "more");
  EXPECT_FALSE(second->takeLeft() || third->takeLeft()) << "offered once";
  EXPECT_EQ(copies(), "|two|more|") << "kept while the question stands";
  third->clear();
  second->clear();
  EXPECT_EQ(copies(), "|||");
}

class OpenFileTest : public MainWindowTest {
 protected:
  bool starred() const { return w->title().ends_with(" *"); }
  Folder folder;
};

TEST_F(OpenFileTest, SavingKeepsToTheOpenFile) {
  const std::string path = folder.file("knot.qzd");
  start();
  choose(Shape::SquareTriangle);
  enterAll({{Param::XNo, "3"}, {Param::Width, "11"}});
  clickLine(1);
  EXPECT_TRUE(starred());
  pickFile("mnuFileSave", path);
  const FileDialogSpec dialog = lastAsked().file;
  EXPECT_TRUE(dialog.save && dialog.overwritePrompt && dialog.initialName == "/program/*.qzd");
  EXPECT_EQ(w->title(), "Lorivan - V3.44k  " + path);
  enter(Param::Width, "12");
  EXPECT_TRUE(starred());
  pick("mnuFileSave");  // without a question
  const auto saved = readDocument(Folder::contents(path));
  EXPECT_TRUE(saved && saved->document.fields.text(Param::Width) == "12");
  EXPECT_EQ(saved->document.lines->at(1).Kind, line(1).Kind);
  undo();
  EXPECT_TRUE(starred());
  pick("mnuEditRedoStep");
  EXPECT_EQ(w->title(), "Lorivan - V3.44k  " + path);
  pickFile("mnuFileSaveAs", folder.file("other.qzd"));
  EXPECT_EQ(w->title(), "Lorivan - V3.44k  " + folder.file("other.qzd"));
  pickFile("mnuFileSaveAs", folder.file("a."));
  EXPECT_EQ(w->title(), "Lorivan - V3.44k  " + folder.file("a.qzd"));
  platform.dialogs.answerFile(folder.file("a."));  // the dialog asks whether to replace the other file
  pickFile("mnuFileSaveAs", "");
  EXPECT_EQ(lastAsked().initial, folder.file("a.qzd"));
  pickFileInVain("mnuFileSaveAs", folder.file("missing/knot.qzd"));
  EXPECT_EQ(lastAsked().text, "Sorry, there was a problem with that file");
  for (const char* cancelled : {"mnuFileSaveAs", "mnuFileLoad"}) pickFile(cancelled, "");
  pickFile("mnuFileSaveAs", folder.file("missing/*.QZD"));
  pickFile("mnuFileSaveAs", folder.file("knot.svg"));
  EXPECT_TRUE(w->status().starts_with("Not saved")) << w->status();
  click("cmdRandknot");
  EXPECT_EQ(w->title(), "Lorivan - V3.44k ") << "another knot is not in that file";
}

TEST_F(OpenFileTest, ChangesThatAreInNoFileStayMarkedInTheNextKnot) {
  const std::string path = folder.write("knot.qzd", "20,1\r\n25,3,2,12,11\r\n");
  start({path, false, {}});
  for (const bool changed : {false, true}) {
    if (changed) enter(Param::Swish, "14");
    const std::vector<std::function<void()>> ways = {
        [&] { choose(Shape::Circular); }, [&] { click("cmdNewGrid"); }, [&] { click("cmdRandknot"); }};
    for (const auto& goOn : ways) {
      goOn();
      EXPECT_TRUE(starred() == changed && w->title().find(path) == std::string::npos) << w->title();
    }
    while (w->title().find(path) == std::string::npos) pick("mnuEditUndoStep");
    EXPECT_EQ(starred(), changed);
  }
  choose(Shape::Circular);
  pickFile("mnuFileLoad", path, SaveAnswer::cancel);
  EXPECT_EQ(text(Param::Swish), "14");
  pickFile("mnuFileSaveAs", folder.file("other.qzd"));
  EXPECT_FALSE(starred());
}

TEST_F(OpenFileTest, AKnotComesBackFromItsFile) {
  const std::string path = folder.write("knot.qzd", "20,1\r\n25,3,2,12,11\r\n");
  start();
  choose(Shape::Circular);
  enter(Param::Width, "5");
  pickFile("mnuFileLoad", path, SaveAnswer::cancel);
  EXPECT_EQ(text(Param::Width), "5");
  platform.dialogs.answerFile(path);
  platform.dialogs.answerSave(SaveAnswer::save);
  platform.dialogs.answerFile(folder.file("kept.qzd"));
  pick("mnuFileLoad");
  EXPECT_FALSE(Folder::contents(folder.file("kept.qzd")).empty());
  expectTexts({{Param::Width, "11"}, {Param::XNo, "3"}, {Param::Swish, "10"}});
  EXPECT_TRUE(nothingWaits({Param::Width, Param::XNo, Param::Edge}));
  pickFile("mnuFileSaveAs", folder.file("again.qzd"));
  EXPECT_EQ(lastAsked().initial, folder.file("knot.qzd"));

  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder.path);
  start({"kept.qzd", false, {}});
  std::filesystem::current_path(before);
  ASSERT_FALSE(bench().recentFiles.empty());
  EXPECT_EQ(bench().recentFiles.front(), folder.file("kept.qzd")) << "also found from elsewhere";
  EXPECT_TRUE(drawn() && text(Param::Width) == "5" && statusStarts("Loaded "));
  w->userDrops(folder.file("other.txt"));
  EXPECT_EQ(
      w->status(),
      "other.txt is no knot file (*.qzd), shape file (*.qzc), drawing or picture, and no file that holds "
      "its knot");
}

TEST_F(OpenFileTest, ADamagedFileChangesNothing) {
  startDrawn();
  enter(Param::Width, "9");
  const Document before = document();
  const auto picture = pixels();
  for (const auto& [file, why] :
       {std::pair{folder.write("bad.qzd", "20,3\r\n26,3,4\r\n1,2,3\r\n"), "bad.qzd: line 3: ends after 3"},
        {folder.write("bad.qzc", "7500 6000\r\n1\r\n10 nan\r\n0\r\n"), "bad.qzc: line 3: nan"}}) {
    w->userDrops(file);
    EXPECT_TRUE(statusStarts("Could not load")) << w->status();
    EXPECT_NE(w->status().find(why), std::string::npos) << w->status();
    EXPECT_TRUE(document() == before && drawn() && pixels() == picture);
  }
}

TEST_F(OpenFileTest, TenRecentFilesAndNoneThatIsGone) {
  start();
  const auto knot = [](int i) { return std::string("k").append(std::to_string(i)).append(".qzd"); };
  const auto name = [&](int i) { return folder.file(knot(i)); };
  for (int i = 0; i < 13; ++i) w->userDrops(folder.write(knot(i), "20,0\r\n25,3,4\r\n"));
  const auto& recent = bench().recentFiles;
  EXPECT_TRUE(recent.size() == 10 && recent.front() == name(12) && recent.back() == name(3));
  pickFile("mnuFileLoad", "");
  EXPECT_EQ(lastAsked().initial, folder.file("*.qzd")) << "dropped files tell the folder";
  pick("mnuFileRecent3");
  EXPECT_TRUE(recent.size() == 10 && recent.front() == name(9) && recent[3] == name(10));
  std::filesystem::remove(name(6));
  pick("mnuFileRecent6");
  EXPECT_EQ(w->status().substr(0, 15), "Could not load ");
  EXPECT_TRUE(recent.size() == 9 && std::ranges::find(recent, name(6)) == recent.end());
  EXPECT_FALSE(w->commandVisible(w->command("mnuFileRecent9")));
  exit();
  EXPECT_EQ(stored("Recent0") + stored("Recent9"), name(9));
}

}  // namespace
}  // namespace lorivan
