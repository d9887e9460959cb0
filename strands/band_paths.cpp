#include "strands/band_paths.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "base/numbers.h"
#include "strands/seam_copies.h"

namespace lorivan {
namespace {

double distance(PointF a, PointF b) { return std::hypot(b.x - a.x, b.y - a.y); }

double lengthOf(const std::vector<PointF>& line) {
  double length = 0;
  for (std::size_t i = 1; i < line.size(); ++i) length += distance(line[i - 1], line[i]);
  return length;
}

/// Takes `length` off the end of a line that is longer.
void cutEnd(std::vector<PointF>& line, double length) {
  while (line.size() > 2 && distance(line[line.size() - 2], line.back()) <= length) {
    length -= distance(line[line.size() - 2], line.back());
    line.pop_back();
  }
  const PointF before = line[line.size() - 2];
  PointF& end = line.back();
  const double last = distance(before, end);
  const float kept = last > 0 ? static_cast<float>(std::max(0.0, 1 - length / last)) : 0;
  end = {before.x + (end.x - before.x) * kept, before.y + (end.y - before.y) * kept};
}

/// Takes `length` off both ends, at most a third of the line off each.
void shortenLine(std::vector<PointF>& line, double length) {
  if (line.size() < 2) return;
  const double cut = std::min(length, lengthOf(line) / 3);
  for (int end = 0; end < 2; ++end) {
    cutEnd(line, cut);
    std::reverse(line.begin(), line.end());
  }
}

/// Rounds to whole units and strokes.
class Stroker {
 public:
  Stroker(Metafile& metafile, const Seam& seam) : metafile_(metafile), seam_(seam) {}

  void operator()(const std::vector<PointF>& line, bool closed, int width, Colour colour) {
    Reach reach;
    reach.add(line);
    eachCopy(seam_, reach.low - width, reach.high + width, [&](double right) {
      rounded_.clear();
      for (const PointF p : line) rounded_.push_back({toInt32(p.x + right), toInt32(p.y)});
      metafile_.strokePath(rounded_, closed, width, colour);
    });
  }

 private:
  Metafile& metafile_;
  Seam seam_;
  std::vector<PointI> rounded_;
};

}  // namespace

void strokeBands(Metafile& metafile, const KnotCurve& curve, const KnotStyle& style, const GridView& view) {
  const int outer = view.penWidth(style.outerWidth()), inner = view.penWidth(style.innerWidth());
  const Seam seam = seamOf(curve, view);
  if (seam) metafile.clip({toInt32(seam.left), 0}, {toInt32(seam.right()), view.height()});
  Stroker stroke(metafile, seam);
  std::vector<PointF> points;
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    if (!curve.used(slot)) continue;
    loopPoints(curve, slot, view, false, points);
    const double lap = curve.lap(slot) * acrossScale(view);
    if (lap != 0) points.push_back({static_cast<float>(points.front().x + lap), points.front().y});
    stroke(points, lap == 0, outer, 0);
    stroke(points, lap == 0, inner, style.bandColour(slot));
  }
  std::vector<OverRun> runs;
  std::vector<PointF> black;
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    if (!curve.used(slot)) continue;
    overRuns(curve, slot, runs);
    for (const OverRun& run : runs) {
      runPoints(curve, slot, run, view, false, points);
      // The pen's ends are round: at full length, black would lie across the strand's own colour there.
      black = points;
      shortenLine(black, outer / 2.0);
      stroke(black, false, outer, 0);
      stroke(points, false, inner, style.bandColour(slot));
    }
  }
}

}  // namespace lorivan
