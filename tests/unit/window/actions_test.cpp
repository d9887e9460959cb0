// Whatever is done, what is shown is what a fresh window shows of the same document.
#include <cstdlib>
#include <limits>

#include "base/texts.h"
#include "design/edits.h"
#include "random_user.h"
#include "window/control_handlers.h"

namespace lorivan {
namespace {

/// What stands in one list and not at the same place of the other.
std::string differences(const std::vector<std::string>& is, const std::vector<std::string>& should) {
  if (is.size() != should.size()) return "lists of other lengths";
  std::string all;
  for (std::size_t i = 0; i < is.size(); ++i)
    if (is[i] != should[i]) all.append(is[i]).append(" instead of ").append(should[i]).append("; ");
  return all;
}

class ActionsTest : public RandomUserTest {
 protected:
  ~ActionsTest() override { speak(nullptr); }
  std::vector<std::string> shown(NoneWindow& window, Workbench& of) const;
  std::vector<std::string> states() const;
  void expectStatesOfTheTables();
  void expectStored();
  void expectThereAndBack();
  void expectAsFresh();
  void expectSamePictures(MainWindow& fresh, NoneWindow& other);
};

/// What a person sees that depends on the document alone.
std::vector<std::string> ActionsTest::shown(NoneWindow& window, Workbench& of) const {
  std::vector<std::string> all;
  for (ControlId control = 0; control < static_cast<ControlId>(formTable().size()); ++control) {
    const ControlSpec& row = formTable()[control];
    const bool made = row.name == "cmdOldGrid" || row.name == "cmd2D";
    if (!made && !parameterOf(control) && !checkOf(control) && row.kind != ControlKind::colourBox &&
        row.kind != ControlKind::list)
      continue;
    all.push_back(std::string(row.name) + ' ' + window.text(control) + ' ' +
                  std::to_string(window.background(control)) + (window.enabled(control) ? "" : " off") +
                  (window.visible(control) ? "" : " hidden") + (window.checked(control) ? " on" : ""));
  }
  for (const char* command : {"mnuShapeMakeGrid", "mnuShapeAutoGrid", "mnuShapeFill", "mnuShapeSmooth",
                              "mnuFileSave3D", "mnuStrandsMost", "mnuEditFitFrame", "mnuViewFitPicture"})
    all.push_back(std::string(command) + (window.commandEnabled(window.command(command)) ? " on" : " off") +
                  (window.commandChecked(window.command(command)) ? " checked" : ""));
  all.push_back(of.form.read() == of.document().fields ? "form" : "another form");
  return all;
}

/// Every command and control as it can be used now.
std::vector<std::string> ActionsTest::states() const {
  std::vector<std::string> all;
  for (CommandId c = 0; c < static_cast<CommandId>(commandRows().size()); ++c)
    all.push_back(w->commandText(c) + (w->commandEnabled(c) ? " on" : " off") +
                  (w->commandVisible(c) ? "" : " hidden") + (w->commandChecked(c) ? " checked" : ""));
  for (ControlId c = 0; c < static_cast<ControlId>(formTable().size()); ++c)
    all.push_back(std::string(formTable()[c].name) + (w->enabled(c) ? " on" : " off"));
  return all;
}

/// Rules that were asked when something happened still say the same.
void ActionsTest::expectStatesOfTheTables() {
  for (CommandId c = 0; c < static_cast<CommandId>(commandRows().size()); ++c) {
    const CommandRow& row = commandRows()[c];
    EXPECT_EQ(w->commandEnabled(c), row.enabled == nullptr || row.enabled(bench())) << row.name;
    EXPECT_EQ(w->commandChecked(c), row.checked != nullptr && row.checked(bench())) << row.name;
  }
  const std::vector<std::string> before = states();
  bench().sortOut();
  EXPECT_EQ(differences(before, states()), "");
  EXPECT_FALSE(w->busy() || bench().actions.working());
}

void ActionsTest::expectStored() {
  const std::string text = documentText(document());
  const auto read = readDocument(text);
  ASSERT_TRUE(read && read->corrections.empty());
  EXPECT_TRUE(documentText(read->document) == text);
  const History<Opened>& history = bench().session.history();
  EXPECT_LE(history.steps(), HistoryLimits().steps);
  EXPECT_LE(history.bytes(), HistoryLimits().bytes);
}

void ActionsTest::expectThereAndBack() {
  const Document now = document();
  const std::string path = bench().session.path();
  for (const auto& [first, second] :
       {std::pair("mnuEditUndoStep", "mnuEditRedoStep"), {"mnuEditRedoStep", "mnuEditUndoStep"}}) {
    if (!commandEnabled(first)) continue;
    const std::string name = commandText(first);
    pick(first);
    EXPECT_FALSE(document() == now && bench().session.path() == path) << name;
    pick(second);
    EXPECT_TRUE(document() == now && bench().session.path() == path) << name;
    EXPECT_EQ(commandText(first), name);
  }
}

/// Another window that does nothing but show the document.
void ActionsTest::expectAsFresh() {
  if (bench().picture() == Picture::variations) w->userPresses({Key::escape});
  NonePlatform platformOfItsOwn;
  platformOfItsOwn.userLanguage = platform.windowLanguage;
  MainWindow fresh(platformOfItsOwn, {});
  ASSERT_TRUE(fresh.open());
  NoneWindow& other = *platformOfItsOwn.window();
  other.userResizes(kSmallPicture);
  fresh.bench().drawAtOnce = bench().drawAtOnce && drawn();
  Document still = document();
  still.fields.check(Check::Animate) = false;  // a fresh window waits for no animation
  fresh.bench().session.begin("", still);
  fresh.bench().show(drawn() ? After::draw : After::grid);
  fresh.bench().session.begin("", document());
  fresh.bench().show(After::nothing);
  EXPECT_EQ(differences(shown(*w, bench()), shown(other, fresh.bench())), "");
  ASSERT_EQ(fresh.bench().knotDrawn(), drawn());
  expectSamePictures(fresh, other);
}

void ActionsTest::expectSamePictures(MainWindow& fresh, NoneWindow& other) {
  if (!drawn()) return;
  bench().flat.setPlain(true);  // without what is laid over the picture
  bench().paintFlat();
  bench().flat.setPlain(false);
  EXPECT_TRUE(std::ranges::equal(w->surface(kGrid).pixels(), other.surface(kGrid).pixels())) << "2-D";
  bench().paintFlat();
  if (!bench().solidShown() || !bench().modelCurrent()) return;
  ASSERT_TRUE(fresh.bench().buildModel(false));
  Workbench* const both[] = {&bench(), &fresh.bench()};
  Document turned = document();
  for (const Param angle : {Param::Theta, Param::Phi, Param::Psi}) turned.fields.text(angle) = "123.4";
  for (Workbench* of : both) {
    of->solid.takeAngles(turned);  // no longer finer than the fields say
    of->solid.takeAngles(document());
    of->solid.resetLens();
    of->solid.mark({});
    of->solid.setPlain(true);
    of->paintSolid();
    of->solid.setPlain(false);
  }
  EXPECT_TRUE(std::ranges::equal(w->surface(kSolid).pixels(), other.surface(kSolid).pixels())) << "3-D";
}

/// Kilobytes of this process; 0 where that cannot be told.
long memory() {
  std::ifstream file("/proc/self/status");
  for (std::string word; file >> word;)
    if (word == "VmRSS:") {
      long kilobytes = 0;
      file >> kilobytes;
      return kilobytes;
    }
  return 0;
}

TEST_F(ActionsTest, WhatIsShownIsAlwaysWhatAFreshWindowShows) {
  const char* const asked = std::getenv("LORIVAN_ACTIONS");
  const int actions = asked != nullptr ? std::atoi(asked) : 400;
  const char* const seed = std::getenv("LORIVAN_SEED");
  begin(seed != nullptr ? static_cast<std::uint64_t>(std::atoll(seed)) : 1);
  long early = 0;
  for (int step = 1; step <= actions && !HasFailure(); ++step) {
    act();
    SCOPED_TRACE("action " + std::to_string(step) + ", after:\n" + story());
    expectStatesOfTheTables();
    expectStored();
    if (step % 4 == 0) bench().confirmPending(true), expectThereAndBack(), expectStatesOfTheTables();
    if (step % 10 == 0) bench().confirmPending(true), expectAsFresh();
    if (step % 300 == 0) leaveAndReturn();
    if (step == actions / 4) early = memory();
  }
  if (HasFailure()) return;
  // What libraries and sanitizers keep is full by then.
  const long most = actions >= 20'000 ? early + 100'000 : std::numeric_limits<long>::max();
  EXPECT_LE(memory(), most) << "kilobytes; after a quarter " << early;
}

}  // namespace
}  // namespace lorivan
