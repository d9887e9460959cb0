// Whatever is done, what is shown is what a fresh window shows of the same document. The test programs of all
// back ends run it.
#include <cstdlib>
#include <iostream>
#include <optional>
#include <sstream>

#include "base/texts.h"
#include "design/document_text.h"
#include "unit/random_user/mirror.h"
#include "unit/random_user/random_user.h"
#include "window/control_handlers.h"

namespace lorivan::random_user {
namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kKeepsFreed = true;  // memory, to notice who uses it still
#else
constexpr bool kKeepsFreed = false;
#endif
constexpr ControlId kFlat = controlId("picGrid"), kModel = controlId("picKnot");

/// What stands in one list and not at the same place of the other.
std::string differences(const std::vector<std::string>& is, const std::vector<std::string>& should) {
  if (is.size() != should.size()) return "lists of other lengths";
  std::string all;
  for (std::size_t i = 0; i < is.size(); ++i)
    if (is[i] != should[i]) all.append(is[i]).append(" instead of ").append(should[i]).append("; ");
  return all;
}

/// With its group.
bool seen(const Window& window, ControlId control) {
  const std::string_view group = formTable()[control].group;
  return window.visible(control) && (group.empty() || window.visible(controlNamed(group)));
}
bool inUse(const Window& window, ControlId control) {
  const std::string_view group = formTable()[control].group;
  return window.enabled(control) && (group.empty() || window.enabled(controlNamed(group)));
}

/// What a person sees that depends on the document alone.
std::vector<std::string> shown(const WatchedWindow& window, Workbench& of) {
  std::vector<std::string> all;
  for (ControlId control = 0; control < static_cast<ControlId>(formTable().size()); ++control) {
    const ControlSpec& row = formTable()[control];
    const bool made = row.name == "cmdOldGrid" || row.name == "cmd2D";
    const bool filled = row.kind == ControlKind::number || row.kind == ControlKind::list;
    if (!made && !parameterOf(control) && !checkOf(control) && row.kind != ControlKind::colourBox && !filled)
      continue;
    all.push_back(std::string(row.name) + ' ' + (filled ? window.text(control) : "") + ' ' +
                  std::to_string(window.background(control)) + (inUse(window, control) ? "" : " off") +
                  (seen(window, control) ? "" : " hidden") +
                  (checkOf(control) && window.checked(control) ? " on" : ""));
  }
  for (const char* command : {"mnuShapeMakeGrid", "mnuShapeAutoGrid", "mnuShapeFill", "mnuShapeSmooth",
                              "mnuFileSave3D", "mnuStrandsMost", "mnuEditFitFrame", "mnuViewFitPicture"})
    all.push_back(std::string(command) + (window.commandEnabled(commandId(command)) ? " on" : " off") +
                  (window.commandChecked(commandId(command)) ? " checked" : ""));
  all.emplace_back(of.form.read() == of.document().fields ? "form" : "another form");
  return all;
}

/// Every command and control as it can be used now.
std::vector<std::string> states(const WatchedWindow& window) {
  std::vector<std::string> all;
  for (CommandId c = 0; c < static_cast<CommandId>(commandRows().size()); ++c)
    all.push_back(window.commandText(c) + (window.commandEnabled(c) ? " on" : " off") +
                  (window.commandVisible(c) ? "" : " hidden") + (window.commandChecked(c) ? " checked" : ""));
  for (ControlId c = 0; c < static_cast<ControlId>(formTable().size()); ++c)
    all.push_back(std::string(formTable()[c].name) + (window.enabled(c) ? " on" : " off"));
  return all;
}

/// How many pixels of two pictures are different, and where; empty when none is.
std::string differences(Surface& one, Surface& other) {
  const PixelBlock a = one.lendPixels(), b = other.lendPixels();
  if (a.pixels == nullptr || b.pixels == nullptr || a.width != b.width || a.height != b.height)
    return "pictures of other sizes";
  int count = 0, left = a.width, top = a.height, right = 0, bottom = 0;
  for (int y = 0; y < a.height; ++y)
    for (int x = 0; x < a.width; ++x) {
      const auto at = [x, y](const PixelBlock& p) { return p.pixels[std::ptrdiff_t{y} * p.stride + x]; };
      if (((at(a) ^ at(b)) & 0xFFFFFF) == 0) continue;
      ++count;
      left = std::min(left, x), right = std::max(right, x), top = std::min(top, y),
      bottom = std::max(bottom, y);
    }
  if (count == 0) return {};
  std::ostringstream text;
  text << count << " pixels from " << left << ',' << top << " to " << right << ',' << bottom;
  return text.str();
}

class ActionsTest : public RandomUserTest {
 protected:
  ~ActionsTest() override { speak(nullptr); }
  void expectStatesOfTheTables();
  void expectStored();
  void expectThereAndBack();
  void expectAsFresh();
  void expectSamePictures();
  void check(int step);
  contract::Held heldWithoutWindows();
  void expectNoGrowth(const contract::Held& early, bool inMemory);

  std::optional<Mirror> mirror_;
  int compared_ = 0;
};

/// Rules that were asked when something happened still say the same.
void ActionsTest::expectStatesOfTheTables() {
  for (CommandId c = 0; c < static_cast<CommandId>(commandRows().size()); ++c) {
    const CommandRow& row = commandRows()[c];
    EXPECT_EQ(w->commandEnabled(c), row.enabled == nullptr || row.enabled(bench())) << row.name;
    EXPECT_EQ(w->commandChecked(c), row.checked != nullptr && row.checked(bench())) << row.name;
  }
  const std::vector<std::string> before = states(*w);
  bench().sortOut();
  EXPECT_EQ(differences(before, states(*w)), "");
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
    if (!w->commandEnabled(commandId(first))) continue;
    const std::string name = w->commandText(commandId(first));
    pick(first);
    EXPECT_FALSE(document() == now && bench().session.path() == path) << name;
    pick(second);
    EXPECT_TRUE(document() == now && bench().session.path() == path) << name;
    EXPECT_EQ(w->commandText(commandId(first)), name);
  }
}

/// Another window that does nothing but show the document. Most times it is one that has shown others before.
void ActionsTest::expectAsFresh() {
  if (bench().picture() == Picture::variations) bench().leaveVariations();
  if (compared_++ % 8 == 0 || !mirror_) mirror_.emplace(platform.real(), platform.memory.windowLanguage);
  ASSERT_TRUE(mirror_->opened());
  mirror_->show(document(), *w, drawn(), bench().drawAtOnce && drawn());
  EXPECT_EQ(differences(shown(*w, bench()), shown(mirror_->window(), mirror_->bench())), "");
  ASSERT_EQ(mirror_->bench().knotDrawn(), drawn());
  expectSamePictures();
}

void ActionsTest::expectSamePictures() {
  if (!drawn()) return;
  Workbench& fresh = mirror_->bench();
  bench().flat.setPlain(true);  // without what is laid over the picture
  bench().paintFlat();
  bench().flat.setPlain(false);
  EXPECT_EQ(differences(w->surface(kFlat), mirror_->window().surface(kFlat)), "") << "2-D";
  bench().paintFlat();
  if (!bench().solidShown() || !bench().modelCurrent()) return;
  ASSERT_TRUE(fresh.buildModel(true));  // however large
  Document turned = document();
  for (const Param angle : {Param::Theta, Param::Phi, Param::Psi}) turned.fields.text(angle) = "123.4";
  for (Workbench* of : {&bench(), &fresh}) {
    of->solid.takeAngles(turned);  // no longer finer than the fields say
    of->solid.takeAngles(document());
    of->solid.resetLens();
    of->solid.mark({});
    of->solid.setPlain(true);
    of->paintSolid();
    of->solid.setPlain(false);
  }
  EXPECT_EQ(differences(w->surface(kModel), mirror_->window().surface(kModel)), "") << "3-D";
}

/// The number that a variable of the environment says.
long long asked(const char* name, long long otherwise) {
  const char* const text = std::getenv(name);
  return text != nullptr ? std::atoll(text) : otherwise;
}

void ActionsTest::check(int step) {
  const int often = large() ? 10 : 1;
  expectStatesOfTheTables();
  expectStored();
  if (step % (4 * often) == 0) bench().confirmPending(true), expectThereAndBack(), expectStatesOfTheTables();
  if (step % (10 * often) == 0) bench().confirmPending(true), expectAsFresh();
  if (step % 300 == 0) mirror_.reset(), leaveAndReturn();
}

/// An open window's knot may take 200 MB.
contract::Held ActionsTest::heldWithoutWindows() {
  mirror_.reset();
  shut();
  return contract::held();
}

/// Libraries keep some things once they were needed.
void ActionsTest::expectNoGrowth(const contract::Held& early, bool inMemory) {
  const contract::Held now = heldWithoutWindows();
  constexpr long kCached = 40, kFiles = 8, kKilobytes = 100'000;
  EXPECT_LE(now.graphics + now.windows, early.graphics + early.windows + kCached)
      << now << "; after a quarter " << early;
  EXPECT_LE(now.handles, early.handles + kFiles) << now << "; after a quarter " << early;
  const long more = now.kilobytes - early.kilobytes;
  EXPECT_TRUE(more < kKilobytes || !inMemory) << now << "; after a quarter " << early;
}

TEST_F(ActionsTest, WhatIsShownIsAlwaysWhatAFreshWindowShows) {
  const auto actions = static_cast<int>(asked("LORIVAN_ACTIONS", onScreen ? 100 : 400));
  begin(static_cast<std::uint64_t>(asked("LORIVAN_SEED", 1)));
  contract::Held early;
  for (int step = 1; step <= actions && !HasFailure(); ++step) {
    act();
    SCOPED_TRACE("action " + std::to_string(step) + ", after:\n" + story());
    check(step);
    if (step == std::max(1, actions / 4)) early = heldWithoutWindows(), open();
    if (step % 1000 == 0) std::cout << step << " actions, " << contract::held() << std::endl;
  }
  if (!HasFailure()) expectNoGrowth(early, actions >= 20'000 && !kKeepsFreed);
}

}  // namespace
}  // namespace lorivan::random_user
