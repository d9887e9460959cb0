// Things that belong together: numbered items joined into groups, pair by pair.
#pragma once

#include <cstddef>
#include <numeric>
#include <utility>
#include <vector>

namespace lorivan {

class Groups {
 public:
  explicit Groups(std::size_t items) : leader_(items) { std::iota(leader_.begin(), leader_.end(), 0); }

  void join(int a, int b) { leader_[static_cast<std::size_t>(of(a))] = of(b); }

  /// The number of the item that stands for the item's group.
  int of(int item) {
    int& leader = leader_[static_cast<std::size_t>(item)];
    while (leader != leader_[static_cast<std::size_t>(leader)])
      leader = leader_[static_cast<std::size_t>(leader)];
    return leader;
  }

 private:
  std::vector<int> leader_;
};

}  // namespace lorivan
