// The window as a person at a screen uses it, key by key and click by click: what the program is told of each
// action.
#include <algorithm>
#include <vector>

#include "base/sink.h"
#include "unit/platform_contract/window_fixture.h"

namespace lorivan::contract {
namespace {

using WindowContract = WindowFixture;

TEST_F(WindowContract, AnEntryTellsWhenEnterIsPressedAndWhenItIsLeft) {
  window_->setText(kX, "3");
  window_->setText(kY, "4");
  user_->focus(kX);
  user_->type("12");
  EXPECT_TRUE(window_->text(kX) == "12" && told().empty()) << "typing replaces the text, which is selected";
  user_->press("Return");
  EXPECT_EQ(told(), Told{"confirmed vtXNo"});
  user_->press("Tab");
  EXPECT_EQ(told(), (Told{"left vtXNo", "confirmed vtXNo"}));
  EXPECT_TRUE(user_->hasFocus(kY));
  user_->type("7");
  EXPECT_EQ(window_->text(kY), "7");
  user_->click(kBox);
  EXPECT_EQ(told(), (Told{"left vtYNo", "confirmed vtYNo", "changed chkMirror"}));
}

TEST_F(WindowContract, APressedButtonWaitsForTheLeftEntryAndItsQuestion) {
  for (const bool inside : {true, false}) {
    user_->focus(kX);
    user_->type("5");
    user_->hold(kButton);
    const Told held = told();
    EXPECT_EQ(std::ranges::count(held, "confirmed vtXNo"), 0) << "a dialog now would swallow the click";
    user_->letGo(kButton, inside);
    EXPECT_EQ(told().back(), inside ? "clicked cmd2D" : "confirmed vtXNo");
  }
  events_.confirmed = [this](ControlId) {
    user_->answerNext(true);
    window_->confirm("Go on?", "Question");
  };
  user_->focus(kX);
  user_->type("6");
  user_->click(kButton);
  EXPECT_EQ(told(), (Told{"left vtXNo", "clicked cmd2D"}));
}

TEST_F(WindowContract, WhatIsTypedCountsBeforeACommandAndBeforeClosing) {
  mayClose_ = false;
  user_->focus(kX);
  user_->type("5");
  user_->pick(commandId("mnuFileSave"));
  user_->press("Ctrl+N");
  EXPECT_EQ(told(), (Told{"confirmed vtXNo", "mnuFileSave", "mnuFileNewGrid"})) << "once is enough";
  user_->type("6");
  user_->close();
  EXPECT_EQ(told(), (Told{"confirmed vtXNo", "closing?"}));
  user_->type("7");
  window_->setEnabled(kX, false);  // the program itself takes the focus away
  EXPECT_EQ(told(), Told{});
}

TEST_F(WindowContract, AButtonThatTheLeftEntryDisablesIsNotPressed) {
  events_.confirmed = [this](ControlId) { window_->setEnabled(kButton, false); };
  user_->focus(kX);
  user_->click(kButton);
  EXPECT_EQ(told(), Told{"left vtXNo"});
  EXPECT_FALSE(window_->enabled(kButton) || user_->hasFocus(kButton));
}

TEST_F(WindowContract, TextShortcutsBelongToAnEntryWhileItIsTypedInto) {
  user_->focus(kX);
  user_->press("Ctrl+C");
  user_->press("Ctrl+Z");
  EXPECT_EQ(told(), (Told{"mnuEditCopy", "mnuEditUndoStep"}));
  user_->type("4");
  user_->press("Ctrl+Z");
  EXPECT_TRUE(told().empty() && window_->text(kX).empty());
  user_->press("Return");
  told();
  user_->press("Ctrl+Z");
  EXPECT_EQ(told(), Told{"mnuEditUndoStep"});
}

TEST_F(WindowContract, OnlyTheUsersChangesAreTold) {
  user_->focus(kX);
  user_->type("5");
  window_->setText(kX, "8");
  for (const ControlId on : {kBox, kPov, kStl}) window_->setChecked(on, true);
  window_->select(kList, 2);
  window_->setCommandChecked(commandId("mnuShapeSnap"), true);
  window_->setVisible(kY, false);
  EXPECT_EQ(told(), Told{});
  EXPECT_TRUE(window_->checked(kBox) && window_->selected(kList) == 2 && !window_->visible(kY));
  EXPECT_FALSE(window_->checked(kPov)) << "one radio of a group";
  user_->focus(kList);
  told();
  user_->press("Up");
  EXPECT_EQ(told(), Told{"changed lstType"});
  EXPECT_EQ(window_->selected(kList), 1);
  for (const ControlId clicked : {kBox, kPov}) user_->click(clicked);
  EXPECT_EQ(told(), (Told{"changed chkMirror", "changed optPOV"}));
  EXPECT_FALSE(window_->checked(kStl));
  window_->setChecked(kPov, false);
  EXPECT_FALSE(window_->checked(kPov)) << "all can be off";
}

TEST_F(WindowContract, CommandsAndMnemonicsReachWhatTheyStandFor) {
  const CommandId snap = commandId("mnuShapeSnap");
  user_->pick(snap);
  user_->press("Ctrl+S");
  user_->press("F1");
  EXPECT_EQ(told(), (Told{"mnuShapeSnap", "mnuFileSave", "mnuHelpHelp"}));
  EXPECT_FALSE(window_->commandChecked(snap)) << "marks are the program's";
  user_->press("Alt+W");  // a label's
  EXPECT_TRUE(user_->hasFocus(kY));
  told();
  user_->press("Alt+U");
  user_->press("Alt+R");
  const Told last = told();
  EXPECT_TRUE(std::ranges::count(last, "changed chkMirror") == 1 && last.back() == "clicked cmdRandknot");
}

TEST_F(WindowContract, ItemsWithPicturesKeepTheirNamesAndTheirChoice) {
  const ItemPicture dot{2, 2, {0, 255, 255, 0}};
  window_->select(kList, 1);
  window_->setItemPictures(kList, {dot, dot, {}});
  told();
  EXPECT_EQ(window_->selected(kList), 1);
  user_->focus(kList);
  user_->press("Down");
  EXPECT_EQ(told(), Told{"changed lstType"});
  EXPECT_EQ(window_->selected(kList), 2);
}

TEST_F(WindowContract, KeysAreOfferedToTheProgramFirstExceptThoseAnEntryNeeds) {
  user_->focus(kList);
  told();
  takesKeys_ = true;
  user_->press("Down");
  EXPECT_EQ(told(), Told{"key 4"});
  EXPECT_EQ(window_->selected(kList), 0) << "taken, so the list did not move";
  user_->focus(kX);
  for (const char* const keys : {"Left", "Up", "Ctrl+Up", "Escape"}) user_->press(keys);
  EXPECT_EQ(told(), (Told{"stepped vtXNo 1", "key 2", "key 5"}));
}

TEST_F(WindowContract, TheWheelStepsTheEntryInFocusAndNothingElse) {
  window_->select(kList, 1);
  user_->focus(kX);
  user_->wheel(kX, 120);
  for (int i = 0; i < 5; ++i) user_->wheel(kX, -50);
  EXPECT_EQ(told(), (Told{"stepped vtXNo 1", "stepped vtXNo -1", "stepped vtXNo -1"}));
  for (const int by : {120, 70, 70, -250}) user_->wheel(kGrid, by);
  EXPECT_EQ(told(), (Told{"wheel 1", "wheel 1", "wheel -1"})) << "a picture needs no focus for it";
  user_->wheel(kY, 120);
  user_->wheel(kList, 120);
  user_->focus(kList);
  told();
  user_->wheel(kList, -120);
  EXPECT_EQ(told(), Told{});
  EXPECT_EQ(window_->selected(kList), 1);
}

TEST_F(WindowContract, APictureReportsOneButtonAtATimeAndDoubleClicks) {
  using enum MouseAction;
  user_->mouse(kGrid, press, 1, 30, 40);
  user_->mouse(kGrid, press, 2, 31, 40);
  user_->mouse(kGrid, release, 2, 31, 40);
  user_->mouse(kGrid, move, 1, -5, 60);
  user_->mouse(kGrid, release, 1, -5, 60);
  EXPECT_EQ(told(), (Told{"press 1 30,40", "move 1 -5,60", "release 1 -5,60"}));
  user_->mouse(kGrid, press, 2, 7, 8);
  user_->mouse(kGrid, leave, 2, 7, 8);
  EXPECT_EQ(told(), (Told{"press 2 7,8", "release 2 7,8"})) << "every press ends";
  user_->mouse(kGrid, doubleClick, 1, 5, 6);
  user_->mouse(kGrid, release, 1, 5, 6);
  user_->mouse(kGrid, press, 3, 7, 8);
  user_->mouse(kGrid, move, 3, 9, 8);
  user_->mouse(kGrid, release, 3, 9, 8);
  EXPECT_EQ(told(), (Told{"press 1 5,6", "doubleClick 1 5,6", "release 1 5,6", "press 3 7,8", "move 3 9,8",
                          "release 3 9,8"}));
}

TEST_F(WindowContract, AnotherSizeGivesClearedPicturesOfTheSameShape) {
  Surface& picture = window_->surface(kGrid);
  picture.segment({0, 0}, {90, 90}, {3, 0xFF});
  const int width = picture.width();
  user_->enlarge(300, 240);
  const Told all = told();
  for (const char* resized : {"resized picGrid", "resized picKnot"})
    EXPECT_NE(std::find(all.begin(), all.end(), resized), all.end()) << resized;
  EXPECT_TRUE(picture.width() > width && picture.width() * 4 == picture.height() * 5) << "the same object";
  EXPECT_EQ(picture.pixel({45, 45}), 0xFFFFFFU);
  user_->enlarge(-2000, -2000);
  EXPECT_GT(window_->place().width, 400) << "no smaller than its contents";
  window_->moveTo(30, 40);
  told();
  EXPECT_TRUE(window_->place().left == 30 && window_->place().top == 40);
  EXPECT_TRUE(window_->scaling() >= 1 && window_->screen().width > 0);
}

TEST_F(WindowContract, DroppedFilesAreToldWithTheirNames) {
  const std::string path = scrapFile("Kn\xC3\xB6tchen \xE7\xB5\x90.qzd");
  user_->drop(path);
  EXPECT_EQ(told(), Told{"dropped " + path});
}

TEST_F(WindowContract, ClosesWhenTheProgramAgreesAndCanBeSpokenToAfterwards) {
  mayClose_ = false;
  user_->close();
  EXPECT_EQ(told(), Told{"closing?"});
  EXPECT_TRUE(window_->processEvents());
  mayClose_ = true;
  user_->close();
  window_->run();  // returns
  EXPECT_FALSE(window_->processEvents());
  // A drawing that was under way when the user closed the window goes on for a moment.
  window_->surface(kGrid).segment({0, 0}, {9, 9}, {1, 0});
  window_->surface(kGrid).refresh();
  window_->setText(kX, "3");
  window_->setStatus("ready");
  window_->setEnabled(kBasic, false);
  window_->setBusy(false);
}

TEST_F(WindowContract, QuestionsGiveTheirAnswers) {
  for (const bool agreed : {true, false}) {
    user_->answerNext(agreed);
    window_->message("Sorry, this knot\r\nis too large", "", MessageIcon::critical);
    user_->answerNext(agreed);
    EXPECT_EQ(window_->confirm("Are you sure?", "Exit check"), agreed);
    user_->answerNext(agreed, "St\xC3\xA4rn");
    EXPECT_EQ(window_->inputBox("How shall it be called?", "Name", "first"), agreed ? "St\xC3\xA4rn" : "");
    user_->answerNext(agreed);
    EXPECT_EQ(window_->chooseColour(0x3060F0), agreed ? std::optional<Colour>(0x3060F0) : std::nullopt);
  }
  user_->answerNext(true);
  EXPECT_EQ(window_->inputBox("How shall it be called?", "Name", "first"), "first");
}

TEST_F(WindowContract, ChosenFilesHaveTheirFolderAndExtension) {
  const std::string old = scrapFile("one.qzd"), folder = old.substr(0, old.size() - 8);
  ASSERT_TRUE(writeFile(old, "x"));
  FileDialogSpec dialog{false, "A knot", "Lorivan files", "qzd", folder + "/*.qzd", "qzd", false};
  user_->answerNext(true, "one.qzd");
  EXPECT_TRUE(window_->chooseFile(dialog).ends_with("one.qzd"));
  dialog.save = dialog.overwritePrompt = true;
  user_->answerNext(true, "tw\xC3\xB6");
  const std::string chosen = window_->chooseFile(dialog);
  EXPECT_TRUE(chosen.ends_with("tw\xC3\xB6.qzd")) << chosen;
  EXPECT_TRUE(writeFile(chosen, "x") && readFile(scrapFile("tw\xC3\xB6.qzd"), 9)) << "in its folder";
  user_->answerNext(false);
  EXPECT_EQ(window_->chooseFile(dialog), "");
}

}  // namespace
}  // namespace lorivan::contract
