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
void drawCrossingMark(const GridLine& line, double cell, Surface& surface, const GridView& view,
                      const GridColours& colours) {
  cell = std::min(cell, 2 * std::hypot(line.X2 - line.X1, line.Y2 - line.Y1));
  const double s = cell * 0.2 * std::sin(static_cast<double>(line.Angle));
  const double c = cell * 0.2 * std::cos(static_cast<double>(line.Angle));
  const int width = view.penWidth(1);
  const double x = line.MidX, y = line.MidY;
  surface.segment(view.pixel(x + s, y - c), view.pixel(x - s, y + c), {width, colours.along, true});
  surface.segment(view.pixel(x - c, y - s), view.pixel(x + c, y + s), {width, colours.across, false});
}

/// Without its mark.
void drawGridLine(const GridLine& line, Surface& surface, const GridView& view, Colour colour) {
  surface.segment(view.pixel(line.X1, line.Y1), view.pixel(line.X2, line.Y2),
                  {view.penWidth(1), colour, false});
}

}  // namespace

void drawGridLines(const KnotGraph& graph, Surface& surface, const GridView& view,
                   const GridDrawOptions& options) {
  const GridColours colours(options);
  for (int j = 0; j <= graph.LastLine; ++j) {
    const GridLine& line = graph.Lines[static_cast<std::size_t>(j)];
    if (line.Kind == kNoLine) continue;
    drawGridLine(line, surface, view,
                 colours.lines[static_cast<std::size_t>(std::clamp<int>(line.Kind, 0, 3))]);
    if (options.showCrossings) drawCrossingMark(line, graph.CellSize, surface, view, colours);
  }
}

Status DrawGrid(KnotGraph& graph, Surface& surface, const GridView& view, const GridDrawOptions& options) {
  if (const Status collected = collectPoints(graph); !collected) return collected;
  drawGridLines(graph, surface, view, options);
  return {};
}

}  // namespace lorivan
