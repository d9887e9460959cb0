// Makes many things on several threads and hands them over one after the other.
#pragma once

#include <algorithm>
#include <cstddef>
#include <deque>
#include <future>
#include <thread>
#include <type_traits>
#include <utility>

namespace lorivan {

/// Things that are made at the same time; each may be as large as a model.
inline constexpr std::size_t kMostAtOnce = 5;

/// Calls make(0), make(1) ... make(count - 1) on other threads, several at a time, and take(number, made) on
/// this one in the order of the numbers, until it returns false. What was made ahead is then dropped. An
/// exception of a call comes out here, in its order. On a single processor all run on this thread.
template <class Make, class Take>
void makeInOrder(std::size_t count, const Make& make, const Take& take) {
  using Made = std::invoke_result_t<Make, std::size_t>;
  const std::size_t processors = std::max(1U, std::thread::hardware_concurrency());
  // One more than processors, so that none waits for the slowest of them.
  const std::size_t atOnce = processors == 1 ? 1 : std::min(processors + 1, kMostAtOnce);
  const auto policy = processors == 1 ? std::launch::deferred : std::launch::async | std::launch::deferred;
  std::deque<std::future<Made>> making;
  std::size_t begun = 0;
  for (std::size_t number = 0; number < count; ++number) {
    while (begun < count && making.size() < atOnce) making.push_back(std::async(policy, make, begun++));
    Made made = making.front().get();
    making.pop_front();
    if (!take(number, std::move(made))) return;
  }
}

}  // namespace lorivan
