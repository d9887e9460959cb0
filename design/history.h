// Named steps from one value to the next, and the way back and forth through them.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <utility>

namespace lorivan {

struct HistoryLimits {
  std::size_t steps = 500;
  std::size_t bytes = std::size_t{64} << 20;
};

/// T is a value with equality for which sizeBeside(T, T) tells what one costs beside its neighbour.
template <class T>
class History {
 public:
  /// `floor` is what undo ends at.
  explicit History(T floor, HistoryLimits limits = {}) : limits_(limits) {
    states_.push_back({{}, {}, std::move(floor), 0});
  }

  const T& now() const { return states_[at_].value; }

  /// Takes the step to `next`, which ends what could be redone. A step of the same non-empty `run` as the one
  /// before it joins that one; one that changes nothing is none, nor is a run that came back to where it
  /// began. The oldest steps go when there are too many.
  void add(std::string name, T next, std::string_view run = {}) {
    if (next == now()) return;
    while (states_.size() > at_ + 1) drop(states_.size() - 1);
    if (!run.empty() && at_ > 0 && states_[at_].run == run)
      rejoin(name, std::move(next));
    else
      append({std::move(name), std::string(run), std::move(next), 0});
    while (at_ > 0 && (at_ > limits_.steps || bytes_ > limits_.bytes)) dropOldest();
  }

  /// The next step joins none before it.
  void endRun() { states_[at_].run.clear(); }

  bool canUndo() const { return at_ > 0; }
  bool canRedo() const { return at_ + 1 < states_.size(); }
  /// Name of the step that undo() takes back, and of the one that redo() takes again; empty when there is
  /// none.
  std::string undoName() const { return canUndo() ? states_[at_].name : std::string(); }
  std::string redoName() const { return canRedo() ? states_[at_ + 1].name : std::string(); }

  const T& undo() {
    if (canUndo()) --at_;
    endRun();
    return now();
  }
  const T& redo() {
    if (canRedo()) ++at_;
    endRun();
    return now();
  }

  /// Steps that can be taken back, and what all states cost beside their neighbours.
  std::size_t steps() const { return at_; }
  std::size_t bytes() const { return bytes_; }

 private:
  struct State {
    std::string name, run;  // of the step that led here
    T value;
    std::size_t bytes;
  };

  void append(State state) {
    state.bytes = sizeBeside(state.value, now());
    bytes_ += state.bytes;
    states_.push_back(std::move(state));
    ++at_;
  }

  void rejoin(const std::string& name, T next) {
    if (next == states_[at_ - 1].value) {
      drop(at_--);
      return;
    }
    State& state = states_[at_];
    bytes_ -= state.bytes;
    state.name = name;
    state.value = std::move(next);
    state.bytes = sizeBeside(state.value, states_[at_ - 1].value);
    bytes_ += state.bytes;
  }

  void drop(std::size_t place) {
    bytes_ -= states_[place].bytes;
    states_.erase(states_.begin() + static_cast<std::ptrdiff_t>(place));
  }

  void dropOldest() {
    drop(0);
    --at_;
  }

  std::deque<State> states_;
  std::size_t at_ = 0, bytes_ = 0;
  HistoryLimits limits_;
};

}  // namespace lorivan
