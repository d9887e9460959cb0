// What the window does on every back end, also on the one without a screen.
#include "base/sink.h"
#include "unit/platform_contract/window_fixture.h"

namespace lorivan::contract {
namespace {

using DeskContract = WindowFixture;

TEST_F(DeskContract, KeysStepTheEntryInFocusAndEscapeIsTold) {
  window_->setText(kX, "5");
  user_->focus(kX);
  for (const char* const keys : {"Up", "Down", "PgUp", "PgDn"}) user_->press(keys);
  EXPECT_EQ(told(), (Told{"stepped vtXNo 1", "stepped vtXNo -1", "stepped vtXNo 10", "stepped vtXNo -10"}));
  EXPECT_EQ(window_->text(kX), "5");
  user_->press("Escape");
  EXPECT_EQ(told(), Told{"escaped vtXNo"});
  takesKeys_ = true;
  user_->press("Escape");
  EXPECT_EQ(told(), Told{"key 5"});
  takesKeys_ = false;
  user_->focus(kButton);
  told();
  user_->press("Escape");
  EXPECT_EQ(told(), Told{});
}

TEST_F(DeskContract, WhatIsDisabledOrHiddenLeavesItsFocusWhereNothingIsPressed) {
  window_->setEnabled(kButton, false);
  EXPECT_TRUE(user_->hasFocus(kGrid));
  for (const char* const keys : {"Space", "Return"}) user_->press(keys);
  user_->focus(kX);
  user_->type("7");
  window_->setVisible(kX, false);
  EXPECT_TRUE(user_->hasFocus(kGrid));
  user_->focus(kBox);
  window_->setVisible(kGrid, false);
  window_->setEnabled(kBox, false);
  for (const char* const keys : {"Space", "Return"}) user_->press(keys);
  EXPECT_EQ(told(), Told{}) << "nothing was pressed, and the program's own actions are not told";
  takesKeys_ = true;
  user_->press("Escape");
  EXPECT_EQ(told(), Told{"key 5"}) << "the window itself still hears the keyboard";
}

TEST_F(DeskContract, TheProgramMovesTheFocusAndIsNotToldOfIt) {
  window_->setText(kX, "12");
  window_->focus(kX);
  EXPECT_TRUE(user_->hasFocus(kX));
  user_->type("3");
  EXPECT_EQ(window_->text(kX), "3") << "all of it was selected";
  window_->focus(kGrid);
  EXPECT_TRUE(user_->hasFocus(kGrid));
  window_->setEnabled(kY, false);
  window_->focus(kY);
  EXPECT_TRUE(user_->hasFocus(kGrid));
  pointed_ = -1;
  window_->setEnabled(kY, true);
  window_->focus(kY);
  window_->setEnabled(kY, false);
  EXPECT_EQ(told(), Told{});
  EXPECT_EQ(pointed_, -1) << "only the user's ways are told";
  window_->focus(kX);
  user_->press("Tab");  // over what is disabled
  told();
  EXPECT_EQ(pointed_, controlId("vtCrossOffset"));
}

TEST_F(DeskContract, CommandsChangeTheirTextsAndComeAndGo) {
  const CommandId act = contractCommand("ctAct"), first = contractCommand("ctFirst"),
                  second = contractCommand("ctSecond"), last = contractCommand("ctLast");
  EXPECT_EQ(user_->menuText(first), "&1 first");
  window_->setCommandChecked(last, true);
  window_->setCommandEnabled(last, false);
  window_->setCommandText(act, "&Undo \"Width\"");
  window_->setCommandText(first, "&1 Kn\xC3\xB6tchen");
  EXPECT_EQ(user_->menuText(act), "&Undo \"Width\"");
  window_->setCommandVisible(first, false);
  EXPECT_EQ(user_->menuText(first), "");
  EXPECT_EQ(user_->menuText(second), "&2 second");
  window_->setCommandVisible(second, false);
  EXPECT_EQ(user_->menuText(second), "");
  window_->setCommandVisible(first, true);
  EXPECT_EQ(user_->menuText(first), "&1 Kn\xC3\xB6tchen");
  EXPECT_TRUE(window_->commandChecked(last) && !window_->commandEnabled(last));
  for (const char* const keys : {"Ctrl+F11", "Ctrl+Shift+F12", "Ctrl+PgDn"}) user_->press(keys);
  EXPECT_EQ(told(), (Told{"ctAct", "ctAct"}));
  window_->setCommandEnabled(last, true);
  user_->press("Ctrl+PgDn");
  EXPECT_EQ(told(), Told{"ctLast"});
  window_->setCommandVisible(act, false);
  EXPECT_TRUE(window_->commandEnabled(act));
  user_->press("Ctrl+F11");
  EXPECT_EQ(told(), Told{});
  window_->setCommandVisible(act, true);
  user_->press("Ctrl+F11");
  EXPECT_EQ(told(), Told{"ctAct"});
}

TEST_F(DeskContract, TheFrameTakesASizeWithinTheScreen) {
  const WindowPlace screen = window_->screen();
  window_->resizeTo(1, 1);
  told();
  const WindowPlace least = window_->place();
  EXPECT_GT(least.width, 400) << "no smaller than its contents";
  window_->resizeTo(least.width + 4, least.height + 20);
  told();
  EXPECT_EQ(window_->place().width, least.width + 4);
  EXPECT_EQ(window_->place().height, least.height + 20);
  window_->moveTo(screen.left + screen.width - 100, screen.top + 50);
  window_->resizeTo(least.width + 2, least.height);
  told();
  const WindowPlace inside = window_->place();
  EXPECT_EQ(inside.width, least.width + 2);
  EXPECT_LE(inside.left + inside.width, screen.left + screen.width);
  window_->resizeTo(99999, 99999);
  told();
  EXPECT_LE(window_->place().width, screen.width);
}

TEST_F(DeskContract, AMaximisedWindowKnowsItsNormalPlace) {
  const WindowPlace before = window_->place();
  EXPECT_FALSE(window_->maximised());
  window_->setMaximised(true);
  told();
  EXPECT_TRUE(window_->maximised());
  window_->resizeTo(before.width - 50, before.height);
  for (const bool maximised : {true, false}) {
    window_->setMaximised(maximised);
    told();
    const WindowPlace now = window_->place();
    EXPECT_EQ(window_->maximised(), maximised);
    EXPECT_TRUE(now.left == before.left && now.top == before.top) << maximised;
    EXPECT_TRUE(now.width == before.width && now.height == before.height) << maximised;
  }
}

TEST_F(DeskContract, TheDesktopsColoursAreFollowed) {
  const Colour face = window_->faceColour(), text = window_->textColour();
  EXPECT_NE(face, text);
  user_->recolour(true);
  EXPECT_EQ(told(), Told{"colours"});
  EXPECT_TRUE(window_->faceColour() != face && window_->textColour() != text);
  user_->recolour(false);
  EXPECT_EQ(told(), Told{"colours"});
  EXPECT_TRUE(window_->faceColour() == face && window_->textColour() == text);
}

TEST_F(DeskContract, SavingIsAskedForWithThreeAnswers) {
  for (const auto& [label, answer] : {std::pair{"&Save", SaveAnswer::save},
                                      {"&Don't save", SaveAnswer::discard},
                                      {"", SaveAnswer::cancel}}) {
    user_->pressNext(label);
    EXPECT_EQ(window_->askToSave("Save the changes to \"Kn\xC3\xB6tchen\"?", "Lorivan"), answer) << label;
  }
}

TEST_F(DeskContract, AFileIsClaimedOnce) {
  const std::string path = scrapFile("claim \xC3\xB6.lock");
  auto claim = platform_->claim(path);
  ASSERT_TRUE(claim);
  EXPECT_FALSE(platform_->claim(path));
  EXPECT_TRUE(platform_->claim(path + "2"));
  claim.reset();
  EXPECT_FALSE(readFile(path, 100)) << "nothing is left behind";
  EXPECT_TRUE(platform_->claim(path));
}

}  // namespace
}  // namespace lorivan::contract
