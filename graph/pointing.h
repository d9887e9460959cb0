// Pointing at lines: the ones that a stroke of the mouse passes, and the next one in a direction.
#pragma once

#include <vector>

#include "graph/graph.h"

namespace lorivan {

/// A place in grid units.
struct GridPlace {
  double x = 0, y = 0;
};

/// The lines that are there (kind not 0) and that a straight stroke passes: it comes as near to their
/// midpoint as FindLine() catches, or it crosses their middle part. Near a point, where many lines meet, it
/// passes none.
std::vector<int> linesPassed(const KnotGraph& graph, GridPlace from, GridPlace to);

/// The midpoint nearest to a place, of a line of any kind; -1 without lines.
int nearestLine(const KnotGraph& graph, GridPlace at);

/// Steps from midpoint to midpoint, to the right, left, up and down. A row of steps keeps to the lane that it
/// began in, however the midpoints lie on both sides of it, so that a step and its opposite lead back.
class LineWalk {
 public:
  /// -1: nowhere yet.
  int line() const { return line_; }
  void start(int line) { *this = {}, line_ = line; }
  void end() { line_ = -1; }
  /// (dx, dy) is one of (1, 0), (-1, 0), (0, 1), (0, -1), y upwards. False when there is no line that way.
  bool step(const KnotGraph& graph, int dx, int dy);

 private:
  int line_ = -1;
  bool level_ = false, upright_ = false;  // the lane's direction; neither: no lane yet
  double lane_ = 0;                       // its y, or x
};

}  // namespace lorivan
