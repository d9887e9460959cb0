// The knot that draws itself: its frames and delays, and a user who does not wait for its end.
#include "strands/animation.h"
#include "main_window_driver.h"
#include "png_chunks.h"

namespace lorivan {
namespace {

class AnimationTest : public MainWindowTest {
 protected:
  /// A window with animation chosen; its knot has been drawn once, so that its frames can be counted.
  void SetUp() override {
    startDrawn();
    for (const AnimationStep& step : animationSteps(bench().knot().curve)) ++(step.grows() ? growing : laid);
    click("chkAnimate");
    enter(Param::Animate, "9");
  }
  /// Presses Create 2D and returns the milliseconds that the drawing took. `action` is done after `frame`
  /// frames; at speed 9 the window is onEvents after once for each.
  std::int64_t draw(int frame = 0, const std::function<void()>& action = {}) {
    int looks = 0;
    w->onEvents = [&] {
      if (++looks == frame) action();
    };
    const std::int64_t begin = platform.clock().now;
    click("cmd2D");
    w->onEvents = {};
    return platform.clock().now - begin;
  }
  bool whole() const { return count(DrawKind::fillPath) > 0; }
  bool running() const { return w->text(controlId("cmd2D")) == stopCaption(); }

  int growing = 0, laid = 0;
};

TEST_F(AnimationTest, EveryFrameGetsTheTimeOfItsSpeed) {
  ASSERT_GT(growing, 50);
  ASSERT_GE(laid, 12);
  for (const auto& [speed, delay] : {std::pair{"1", 180}, {"5", 36}, {"8", 22}, {"9", 10}}) {
    enter(Param::Animate, speed);
    EXPECT_EQ(draw(1, [this] { EXPECT_TRUE(running()); }), growing * delay) << speed;
    EXPECT_TRUE(drawn() && whole() && !running());
  }
  EXPECT_EQ(w->status(), "3 strands, 12 crossings");
}

TEST_F(AnimationTest, StopLeavesTheStrandHalfDrawn) {
  for (const bool escape : {false, true}) {
    EXPECT_EQ(draw(7, [&] { escape ? void(w->userPresses({Key::escape})) : click("cmd2D"); }), 70);
    EXPECT_EQ(count(DrawKind::polyline), 14);
    EXPECT_TRUE(drawn() && !whole() && !running());
  }
  click("chkAnimate");
  EXPECT_TRUE(whole());
}

TEST_F(AnimationTest, ALoopBeginsAgainUntilItIsStopped) {
  click("chkLoop");
  int rounds = 0;
  w->onEvents = [&, before = clears()] {
    if (clears() == before + 3) rounds = 2, click("cmd2D");
  };
  const std::int64_t begin = platform.clock().now;
  click("cmd2D");
  EXPECT_EQ(rounds, 2);
  EXPECT_EQ(platform.clock().now - begin, 2 * (growing * 10 + 50) + 10);
  // Unchecked while it runs, the loop ends with its round.
  EXPECT_EQ(draw(5, [this] { click("chkLoop"); }), growing * 10);
  EXPECT_TRUE(whole());
}

TEST_F(AnimationTest, WhatIsPickedWhileAKeysAnimationRunsFollowsIt) {
  const Document before = document();
  pick("mnuViewVariations");
  w->onEvents = [&, looks = 0]() mutable {
    if (++looks == 3) pick("mnuEditUndoStep");
  };
  w->userPressesEnter();
  w->onEvents = {};
  EXPECT_EQ(document(), before) << "undone at once, not with the next action";
  EXPECT_TRUE(bench().session.history().canRedo());
}

TEST_F(AnimationTest, WhatLeavesTheKnotAloneLetsItRun) {
  const auto actions = [this] {
    pick("mnuHelpFAQ");
    pick("mnuEditCopy");
    click("optSTL");
    w->userFocuses(fieldControl(Param::Width));
    w->userFocuses(fieldControl(Param::Edge));
    w->userClicksAt(kGrid, 1, 3, 3);
    w->userResizes(1000);
    EXPECT_EQ(count(DrawKind::polyline), 2);
    EXPECT_FALSE(w->userPresses({Key::left}));
  };
  EXPECT_EQ(draw(9, actions), growing * 10);
  EXPECT_TRUE(whole());
  EXPECT_EQ(platform.help().pages.size(), 1U);
  EXPECT_TRUE(platform.clipboard().picture && platform.clipboard().picture->width() == 500);
}

TEST_F(AnimationTest, EverythingElseEndsItAndIsDone) {
  EXPECT_EQ(draw(5, [this] { choose(Shape::Circular); }), 50);
  EXPECT_TRUE(statusStarts("Circular") && !drawn() && !running());
  draw(5, [this] { choose(Shape::Star), choose(Shape::Circular); });
  EXPECT_TRUE(document().fields.shape == Shape::Circular) << "one after the other";
  draw(5, [this] { w->userEnters(fieldControl(Param::XNo), "6"); });
  EXPECT_TRUE(statusStarts("Circular, 6 x"));
  draw(5, [this] { clickLine(2); });
  EXPECT_TRUE(line(2).Kind == kWall && whole());
  // In their order, and another drawing may be among them.
  int caption = 0;
  draw(5, [&] {
    click("cmdRandknot");
    click("chkShowGrid");
    w->later([&] { caption = w->text(controlId("cmdRandknot")) == "&Random" ? 1 : 2; });
  });
  EXPECT_EQ(caption, 1);
  EXPECT_FALSE(running() || w->busy() || checked("chkShowGrid"));
  EXPECT_EQ(count(DrawKind::segment), 0);
}

TEST_F(AnimationTest, ClosingTheWindowEndsIt) {
  platform.dialogs.answerConfirm(false);
  EXPECT_EQ(draw(5, [this] { w->userCloses(); }), growing * 10);
  platform.dialogs.answerConfirm(true);
  platform.dialogs.answerSave(SaveAnswer::discard);
  click("chkLoop");
  EXPECT_EQ(draw(5, [this] { w->userCloses(); }), 50);
  EXPECT_TRUE(w->closed());
  EXPECT_EQ(stored("txtAnimate"), "9");
}

TEST_F(AnimationTest, SavedFramesCanBeStoppedAndTheUsersDeedsWaitForThem) {
  const Folder folder;
  startDrawn();
  bench().saveOptions.width = 50;
  int looks = 0;
  const auto save = [&](const std::string& name, const std::function<void()>& action) {
    looks = 0;
    w->onEvents = [&] {
      if (++looks == 4) action();
    };
    const std::string bytes = saved("mnuFileSaveAnimation", folder.file(name));
    w->onEvents = nullptr;
    return bytes;
  };
  EXPECT_EQ(save("stopped.png", [this] { w->userPresses({Key::escape}); }), "");
  EXPECT_TRUE(looks == 4 && w->status() == "The animation was not saved") << looks << w->status();
  const std::string moving = save("whole.png", [this] { choose(Shape::Star); });
  EXPECT_TRUE(moving.find("acTL") != std::string::npos && looks > 20) << looks << w->status();
  EXPECT_EQ(document().fields.shape, Shape::Star);
  w->userDrops(folder.file("whole.png"));
  EXPECT_EQ(document().fields.shape, Shape::SquareSquare) << "it holds its knot";

  // A large knot has more steps than frames; it takes no less time.
  enter(Param::XNo, "9");
  enter(Param::YNo, "7");
  click("cmd2D");
  const std::string large = save("large.png", [this] { click("cmd2D"); });  // which is no Stop now
  int frames = 0, milliseconds = 0;
  for (const auto& [name, data] : pngChunks(large)) {
    if (name != "fcTL") continue;
    const std::uint32_t share = big32(data.data() + 20);
    EXPECT_EQ(share & 0xFFFF, 1000U);
    milliseconds += static_cast<int>(share >> 16);
    ++frames;
  }
  const auto steps = static_cast<int>(animationSteps(bench().knot().curve).size());
  EXPECT_TRUE(steps > 300 && frames <= 240) << steps << ' ' << frames;
  EXPECT_NEAR(milliseconds / 10.0, steps, 0.05 * steps);
}

}  // namespace
}  // namespace lorivan
