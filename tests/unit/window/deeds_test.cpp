// The queue of the user's deeds, and an animation that takes turns with it, without a window.
#include "window/deeds.h"

#include <gtest/gtest.h>

#include "platform/none/none_platform.h"

namespace lorivan {
namespace {

struct DeedsTest : testing::Test {
  Deeds::Deed note(char c) {
    return [this, c] { done += c; };
  }
  /// Plays up to five frames of 50 ms; every look at the events calls `looked`.
  bool play(const std::function<bool()>& looked) {
    frames = 0;
    const auto frame = [this]() -> std::optional<int> {
      EXPECT_TRUE(deeds.animating());
      return ++frames <= 5 ? std::optional(50) : std::nullopt;
    };
    return deeds.play(clock, frame, looked);
  }

  Deeds deeds;
  ManualClock clock;
  std::string done;
  int frames = 0;
};

TEST_F(DeedsTest, WhatComesDuringWorkIsDoneAfterItInItsOrder) {
  deeds.act([this] {
    const Deeds::Working working(deeds);
    for (const char c : {'b', 'c'}) deeds.act(note(c));
    deeds.act([this] { deeds.act(note('e')), deeds.act(note('d')); });
    EXPECT_TRUE(deeds.working());
    done += 'a';
  });
  EXPECT_EQ(done, "abced");
  EXPECT_FALSE(deeds.working());
}

TEST_F(DeedsTest, StopADeedAndAClosedWindowEndIt) {
  deeds.stop();  // nothing plays: forgotten at the next start
  EXPECT_TRUE(play([] { return true; }) && frames == 6 && clock.now == 5 * 50 && !deeds.animating());
  EXPECT_TRUE(play([this] {
    if (frames == 2) deeds.stop();
    return true;
  }));
  EXPECT_EQ(frames, 2);

  deeds.act([this] {
    const Deeds::Working working(deeds);
    EXPECT_TRUE(play([this] {
      if (frames == 3) deeds.act(note('x'));
      return true;
    }));
    EXPECT_EQ(done, "") << "it waits for the end of the work";
  });
  EXPECT_EQ(frames, 3);
  EXPECT_EQ(done, "x");

  clock.now = 0;
  deeds.act([this] {
    const Deeds::Working working(deeds);
    EXPECT_FALSE(play([this] {
      deeds.act(note('y'));
      deeds.forget();
      return frames < 2;
    }));
  });
  EXPECT_EQ(frames, 2);
  EXPECT_EQ(done, "x") << "what waited is forgotten";
  EXPECT_EQ(clock.now, 50 + 20) << "the window is looked after every 20 ms at the latest";
}

}  // namespace
}  // namespace lorivan
