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

  void join(int a, int b) { leader_[of(a)] = of(b); }

  /// The number of the item that stands for the item's group.
  int of(int item) {
    int& leader = leader_[item];
    while (leader != leader_[leader]) leader = leader_[leader];
    return leader;
  }

 private:
  std::vector<int> leader_;
};

}  // namespace lorivan
