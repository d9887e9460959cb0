// What the user asks for, one after the other; and how an animation takes turns with it.
#pragma once

#include <deque>
#include <functional>
#include <optional>

#include "platform/services.h"

namespace lorivan {

class ActionQueue {
 public:
  using Action = std::function<void()>;

  /// Does it now. What comes while another action works (see Working) is done after that one, in its order,
  /// and ends an animation.
  void act(Action action);

  /// While it lives, actions wait.
  class Working {
   public:
    explicit Working(ActionQueue& actions) : actions_(actions) { ++actions_.working_; }
    Working(const Working&) = delete;
    Working& operator=(const Working&) = delete;
    ~Working() { --actions_.working_; }

   private:
    ActionQueue& actions_;
  };

  bool working() const { return working_ > 0; }
  bool animating() const { return animating_; }
  /// Whether stop() would end something.
  bool canStop() const { return animating_ || stepping_; }

  /// Ends the animation, or the long work, that runs.
  void stop() { stop_ = true; }
  /// Forgets what waits; for a window that closes.
  void forget() { waiting_.clear(); }

  /// Draws the next frame and tells how many milliseconds it stays; nothing when it was the last.
  using Frame = std::function<std::optional<int>()>;
  /// Lets the user's events in; false when the window was closed.
  using Events = std::function<bool()>;

  /// Plays frame after frame until the last, until stop(), or until an action waits. False when the window
  /// was closed.
  bool play(Clock& clock, const Frame& frame, const Events& events);

  /// Does long work step by step, until a step says that it was the last, or until stop(). Actions wait
  /// meanwhile. False when it was stopped or the window was closed.
  bool work(const std::function<bool()>& step, const Events& events);

 private:
  bool serveEvents(Clock& clock, int milliseconds, const Events& events) const;
  bool toEnd() const { return stop_ || !waiting_.empty(); }

  std::deque<Action> waiting_;
  int working_ = 0;
  bool stop_ = false, animating_ = false, stepping_ = false;
};

}  // namespace lorivan
