#include "window/action_queue.h"

#include <algorithm>

namespace lorivan {
namespace {

/// The longest time in milliseconds that the window is left alone between two looks at its events.
constexpr std::int64_t kLongestNap = 20;

}  // namespace

void ActionQueue::act(Action action) {
  waiting_.push_back(std::move(action));
  if (working_ > 0) return;
  while (!waiting_.empty()) {
    const Action next = std::move(waiting_.front());
    waiting_.pop_front();
    next();
  }
}

bool ActionQueue::play(Clock& clock, const Frame& frame, const Events& events) {
  stop_ = false;
  animating_ = true;
  bool alive = true;
  while (alive) {
    const std::optional<int> wait = frame();
    if (!wait) break;
    alive = serveEvents(clock, *wait, events);
    if (toEnd()) break;
  }
  animating_ = false;
  return alive;
}

bool ActionQueue::work(const std::function<bool()>& step, const Events& events) {
  const Working working(*this);
  stop_ = false;
  stepping_ = true;
  bool goesOn = true, undisturbed = true;
  while (goesOn && undisturbed) {
    goesOn = step();
    undisturbed = !goesOn || (events() && !stop_);
  }
  stepping_ = false;
  return undisturbed;
}

/// Lets events in for so many milliseconds, at least once; returns early when the animation is to end.
bool ActionQueue::serveEvents(Clock& clock, int milliseconds, const Events& events) const {
  const std::int64_t end = clock.milliseconds() + milliseconds;
  while (true) {
    const std::int64_t left = end - clock.milliseconds();
    if (left > 0) clock.sleep(static_cast<int>(std::min(left, kLongestNap)));
    if (!events()) return false;
    if (toEnd() || clock.milliseconds() >= end) return true;
  }
}

}  // namespace lorivan
