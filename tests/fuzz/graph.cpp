// Any lines as a knot: the road's settings, a wrap, then for each line a byte that says what follows. Ends on
// a small lattice make real knots likely; ends anywhere, and midpoints that are none, are what a file may
// hold.
#include "road.h"

namespace lorivan::fuzz {
namespace {

constexpr int kLines = 120;

void setEnd(Draws& draws, bool anywhere, std::int16_t& x, std::int16_t& y) {
  if (anywhere) {
    x = draws.number(), y = draws.number();
    return;
  }
  const int place = draws.byte();
  x = static_cast<std::int16_t>((place & 15) * 12 - 90),
  y = static_cast<std::int16_t>((place >> 4) * 12 - 90);
}

GridLine drawLine(Draws& draws) {
  const int how = draws.byte();
  GridLine line;
  line.Kind = static_cast<std::int16_t>(how & 3);
  const bool anywhere = (how & 0x70) == 0x70;
  setEnd(draws, anywhere, line.X1, line.Y1);
  setEnd(draws, anywhere, line.X2, line.Y2);
  line.MidX = static_cast<std::int16_t>((line.X1 + line.X2) / 2);
  line.MidY = static_cast<std::int16_t>((line.Y1 + line.Y2) / 2);
  if ((how & 0x8C) == 0x8C)
    line.Kind = draws.number(), line.MidX = draws.number(), line.MidY = draws.number();
  line.Angle = lineAngle(static_cast<float>(line.X1 - line.X2), static_cast<float>(line.Y1 - line.Y2));
  return line;
}

}  // namespace

void graph(Bytes bytes) {
  Draws draws(bytes);
  const Road road = drawRoad(draws);
  KnotGraph graph;
  if (draws.below(4) == 0)
    graph.wrap = {draws.number(), static_cast<std::int16_t>(kLeastPeriod + draws.below(400))};
  for (graph.LastLine = -1; graph.LastLine + 1 < kLines && !draws.empty();)
    graph.Lines[++graph.LastLine] = drawLine(draws);
  graph.NextLine = graph.LastLine + 1;
  graph.NoGrid = graph.LastLine < 0;
  followRoad(graph, road, false);
}

}  // namespace lorivan::fuzz
