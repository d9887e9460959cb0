// What the mouse does on the grid: a click where it is let go, or a stroke that passes lines.
#pragma once

#include <optional>
#include <vector>

#include "graph/pointing.h"
#include "platform/window.h"

namespace lorivan {

class GridHand {
 public:
  /// A place of the picture, in its pixels and in grid units.
  struct Place {
    int x = 0, y = 0;
    GridPlace grid;
  };

  void press(int button, const Place& at);
  /// Lines that the stroke passed since the last call. A hand that moved less than `slack` pixels strokes
  /// none.
  std::vector<int> move(const KnotGraph& graph, const Place& at, double slack);
  /// The button and the place of a click; nothing at the end of a stroke.
  struct Click {
    int button = 0;
    Place at;
  };
  std::optional<Click> release();

  bool stroking() const { return stroking_; }
  /// 1 left, 2 right, 0 none.
  int button() const { return button_; }

  /// The line under a resting pointer, and the one that the keyboard is at; -1: none.
  int hovered = -1;
  LineWalk walk;

 private:
  int button_ = 0;
  bool stroking_ = false;
  Place pressed_;
  GridPlace last_;
};

}  // namespace lorivan
