#include "graph/grid_drawing.h"

#include <algorithm>
#include <cmath>

namespace lorivan {
namespace {

/// Least contrast of lines to the background.
constexpr double kLineContrast = 3;

/// The colours that lines are drawn in on a background.
struct GridColours {
  explicit GridColours(const GridDrawOptions& options) : lines(options.KindColour) {
    const Colour ground = lines[0];
    lines[kOrdinary] = 0x000000;
    if (ground == 0xFFFFFF) return;
    for (Colour* colour : {&lines[1], &lines[2], &lines[3], &along, &across})
      *colour = standingOut(*colour, ground, kLineContrast);
  }
  std::array<Colour, 4> lines;
  Colour along = makeColour(0, 255, 0), across = makeColour(0, 0, 255);
};

/// Two short strokes through the midpoint along the directions in which strands cross the line there: 0.4
/// cells long, or 0.8 of a line that is shorter than half a cell.
void drawCrossingMark(const GridLine& line, double cell, double moved, Surface& surface, const GridView& view,
                      const GridColours& colours) {
  cell = std::min(cell, 2 * std::hypot(line.X2 - line.X1, line.Y2 - line.Y1));
  const double s = cell * 0.2 * std::sin(static_cast<double>(line.Angle));
  const double c = cell * 0.2 * std::cos(static_cast<double>(line.Angle));
  const int width = view.penWidth(1);
  const double x = line.MidX + moved, y = line.MidY;
  surface.segment(view.pixel(x + s, y - c), view.pixel(x - s, y + c), {width, colours.along, true});
  surface.segment(view.pixel(x - c, y - s), view.pixel(x + c, y + s), {width, colours.across, false});
}

/// Without its mark. Of a line across the seam only what lies between the seams.
void drawGridLine(const GridLine& line, double moved, const Wrap& wrap, Surface& surface,
                  const GridView& view, Colour colour) {
  const double x1 = line.X1 + moved, x2 = line.X2 + moved;
  const auto place = [&](double x, double y) {
    const double held = wrap ? std::clamp<double>(x, wrap.left, wrap.left + wrap.period) : x;
    return view.pixel(held, held == x ? y : line.Y1 + (line.Y2 - line.Y1) * (held - x1) / (x2 - x1));
  };
  surface.segment(place(x1, line.Y1), place(x2, line.Y2), {view.penWidth(1), colour, false});
}

}  // namespace

std::vector<int> shownCopies(const KnotGraph& graph, const GridLine& line) {
  const Wrap& wrap = graph.wrap;
  if (!wrap) return {0};
  const auto [low, high] = std::minmax(line.X1, line.X2);
  std::vector<int> copies;
  // Whatever a file says, no line goes round more than a few times.
  const int first = -wrap.turn(high), last = std::min(first + 3, -wrap.turn(low) + 1);
  const int onSeam = low == high ? 1 : 0;
  for (int turn = first; turn <= last; ++turn) {
    const int moved = turn * wrap.period - wrap.left;
    if (low + moved < wrap.period + onSeam && high + moved > -onSeam) copies.push_back(turn * wrap.period);
  }
  return copies;
}

void drawGridLines(const KnotGraph& graph, Surface& surface, const GridView& view,
                   const GridDrawOptions& options) {
  const GridColours colours(options);
  for (int j = 0; j <= graph.LastLine; ++j) {
    const GridLine& line = graph.Lines[j];
    if (line.Kind == kNoLine) continue;
    const Colour colour = colours.lines[std::clamp<int>(line.Kind, 0, 3)];
    for (const int moved : shownCopies(graph, line)) {
      drawGridLine(line, moved, graph.wrap, surface, view, colour);
      if (options.showCrossings) drawCrossingMark(line, graph.CellSize, moved, surface, view, colours);
    }
  }
}

Status DrawGrid(KnotGraph& graph, Surface& surface, const GridView& view, const GridDrawOptions& options) {
  if (const Status collected = collectPoints(graph); !collected) return collected;
  drawGridLines(graph, surface, view, options);
  return {};
}

}  // namespace lorivan
