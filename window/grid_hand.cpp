#include "window/grid_hand.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace lorivan {

void GridHand::press(int button, const Place& at) {
  button_ = button;
  stroking_ = false;
  pressed_ = at;
  last_ = at.grid;
}

std::vector<int> GridHand::move(const KnotGraph& graph, const Place& at, double slack) {
  if (button_ == 0) return {};
  stroking_ = stroking_ || std::max(std::abs(at.x - pressed_.x), std::abs(at.y - pressed_.y)) > slack;
  if (!stroking_) return {};
  return linesPassed(graph, std::exchange(last_, at.grid), at.grid);
}

std::optional<GridHand::Click> GridHand::release() {
  const int button = std::exchange(button_, 0);
  if (button == 0 || std::exchange(stroking_, false)) return std::nullopt;
  return Click{button, pressed_};
}

}  // namespace lorivan
