// A user who does anything at any time, with good and with bad files, and answers every dialog, on whatever
// back end the test program has.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <string>

#include "base/random.h"
#include "scratch_folder.h"
#include "unit/platform_contract/back_end.h"
#include "unit/random_user/watched_platform.h"
#include "window/commands.h"
#include "window/main_window.h"

namespace lorivan::random_user {

class RandomUserTest : public testing::Test {
 protected:
  RandomUserTest();
  void begin(std::uint64_t seed);
  void open();
  /// Without a question. `open` opens another window.
  void shut();
  /// Does one thing. What it was stands at the end of `did`.
  void act();
  /// What was done last, for a message.
  std::string story() const;
  /// Closes the window as far as the answers let it, and starts again with the settings that are left.
  void leaveAndReturn();
  /// Through the window's menu.
  void pick(std::string_view command) { user_->pick(commandId(command)); }
  Workbench& bench() { return main->bench(); }
  const Document& document() { return main->bench().document(); }
  bool drawn() { return main->bench().knotDrawn(); }
  /// Whether one picture of the knot takes as long as many others.
  bool large() { return main->bench().knot().graph.LastLine > 100; }

  const bool onScreen;  // of a sort: the back end has real controls
  WatchedPlatform platform;
  std::unique_ptr<MainWindow> main;
  WatchedWindow* w = nullptr;
  Folder folder;
  std::deque<std::string> did;

 private:
  explicit RandomUserTest(std::unique_ptr<Platform> real);
  int below(int n) { return std::min(n - 1, static_cast<int>(random_() * static_cast<float>(n))); }
  bool oneIn(int n) { return below(n) == 0; }
  std::string oneOf(std::initializer_list<const char*> words) {
    return words.begin()[below(static_cast<int>(words.size()))];
  }
  DialogQueue::Answer answer(const AskedDialog& asked);
  std::string fileFor(const AskedDialog& asked);
  void writeFiles() const;
  template <class Action>
  void attempt(const Action& action);
  void meddle();
  bool usable(ControlId control) const;
  void useControl();
  void typeField();
  void pickCommand();
  void walkHistory();
  void pressKey();
  void useMouse();
  void changeSurroundings();
  std::string number();
  std::string entryFor(Param p);
  PointI place(ControlId picture, int beside);

  Rnd random_;
  std::unique_ptr<contract::User> user_;
};

}  // namespace lorivan::random_user
