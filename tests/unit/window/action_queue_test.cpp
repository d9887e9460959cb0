// The queue of the user's actions, and an animation that takes turns with it, without a window.
#include "window/action_queue.h"

#include <gtest/gtest.h>

#include "platform/none/none_platform.h"

namespace lorivan {
namespace {

struct DeedsTest : testing::Test {
  ActionQueue::Action note(char c) {
    return [this, c] { done += c; };
  }
  /// Plays up to five frames of 50 ms; every look at the events calls `looked`.
  bool play(const std::function<bool()>& looked) {
    frames = 0;
    const auto frame = [this]() -> std::optional<int> {
      EXPECT_TRUE(actions.animating());
      return ++frames <= 5 ? std::optional(50) : std::nullopt;
    };
    return actions.play(clock, frame, looked);
  }

  ActionQueue actions;
  ManualClock clock;
  std::string done;
  int frames = 0;
};

TEST_F(DeedsTest, WhatComesDuringWorkIsDoneAfterItInItsOrder) {
  actions.act([this] {
    const ActionQueue::Working working(actions);
    for (const char c : {'b', 'c'}) actions.act(note(c));
    actions.act([this] { actions.act(note('e')), actions.act(note('d')); });
    EXPECT_TRUE(actions.working());
    done += 'a';
  });
  EXPECT_EQ(done, "abced");
  EXPECT_FALSE(actions.working());
}

TEST_F(DeedsTest, StopADeedAndAClosedWindowEndIt) {
  actions.stop();  // nothing plays: forgotten at the next start
  EXPECT_TRUE(play([] { return true; }) && frames == 6 && clock.now == 5 * 50 && !actions.animating());
  EXPECT_TRUE(play([this] {
    if (frames == 2) actions.stop();
    return true;
  }));
  EXPECT_EQ(frames, 2);

  actions.act([this] {
    const ActionQueue::Working working(actions);
    EXPECT_TRUE(play([this] {
      if (frames == 3) actions.act(note('x'));
      return true;
    }));
    EXPECT_EQ(done, "") << "it waits for the end of the work";
  });
  EXPECT_EQ(frames, 3);
  EXPECT_EQ(done, "x");

  clock.now = 0;
  actions.act([this] {
    const ActionQueue::Working working(actions);
    EXPECT_FALSE(play([this] {
      actions.act(note('y'));
      actions.forget();
      return frames < 2;
    }));
  });
  EXPECT_EQ(frames, 2);
  EXPECT_EQ(done, "x") << "what waited is forgotten";
  EXPECT_EQ(clock.now, 50 + 20) << "the window is looked after every 20 ms at the latest";
}

}  // namespace
}  // namespace lorivan
