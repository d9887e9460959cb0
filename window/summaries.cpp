#include "window/summaries.h"

#include <array>
#include <cmath>
#include <set>
#include <vector>

#include "base/numbers.h"
#include "custom/groups.h"
#include "design/fit.h"
#include "strands/strand_pick.h"

namespace lorivan {
namespace {

struct KindWords {
  std::string_view step, meaning, hint;
};
constexpr std::array<KindWords, 4> kKinds = {
    {{"No line", "is taken out: strands pass as if it were not there", "No line"},
     {"Ordinary line", "is an ordinary line: strands cross on it", "Crossing"},
     {"Wall", "is a wall: strands turn back at it", "Wall: strands turn back"},
     {"Reversed line", "is reversed: over and under start the other way round",
      "Crossing, first sign reversed"}}};

/// Regions that lines part from each other, where none cross: by Euler's formula, lines less points and one
/// more for each part that hangs together.
int regionsOf(const CustomShape& shape) {
  Groups parts(static_cast<std::size_t>(shape.ShapePointCount) + 1);
  std::set<int> ends, leaders;
  int lines = 0;
  for (int line = 1; line <= shape.ShapeLineCount; ++line) {
    if (!shape.lineIsLive(line)) continue;
    ++lines;
    for (const int end : {0, 1}) ends.insert(shape.lineEnd(end, line));
    parts.join(shape.lineEnd(0, line), shape.lineEnd(1, line));
  }
  for (const int end : ends) leaders.insert(parts.of(end));
  return lines - static_cast<int>(ends.size()) + static_cast<int>(leaders.size());
}

}  // namespace

std::string counted(long long n, const std::string& what) {
  return std::to_string(n) + ' ' + what + (n == 1 ? "" : "s");
}

std::string gridSummary(const Document& document) {
  const KnotFields& fields = document.fields;
  const std::string name(shapeTable()[static_cast<std::size_t>(fields.shape)].name);
  const std::string lines =
      counted(document.lines ? static_cast<long long>(document.lines->size()) : 0, "line");
  if (fields.shape == Shape::Custom) return name + ": " + lines;
  return name + ", " + fields.text(Param::XNo) + " x " + fields.text(Param::YNo) + ", scale " +
         fields.text(Param::Scale) + ": " + lines;
}

std::string knotSummary(const Knot& knot) {
  const KnotCounts counts = countKnot(knot.graph, knot.strands);
  return counted(counts.strands, "strand") + ", " + counted(counts.crossings, "crossing");
}

std::string overlapNote(const Document& document, const Knot& knot) {
  const double overlap = bandOverlap(document, knot);
  if (overlap <= 0) return {};
  return "; the bands run together by " + roundedUp(overlap, 10) + " pixels: " +
         (document.fields.check(Check::FitBands) ? "fewer cells make room" : "Fit bands makes room");
}

std::string emptyShare(const AutoGridReport& report, const std::string& advice) {
  if (report.filled >= kFilled) return {};
  return "; " + std::to_string(static_cast<int>(std::lround(100 * (1 - report.filled)))) +
         " % of the outline stayed empty: " + advice;
}

std::string shapeSummary(const CustomShape& shape) {
  std::vector<int> linesAt(static_cast<std::size_t>(shape.ShapePointCount) + 1, 0);
  int points = 0, lines = 0, looseEnds = 0;
  for (int line = 1; line <= shape.ShapeLineCount; ++line) {
    if (!shape.lineIsLive(line)) continue;
    ++lines;
    for (const int end : {0, 1}) ++linesAt[static_cast<std::size_t>(shape.lineEnd(end, line))];
  }
  for (int point = 1; point <= shape.ShapePointCount; ++point) {
    points += shape.pointIsLive(point) ? 1 : 0;
    looseEnds += linesAt[static_cast<std::size_t>(point)] == 1 ? 1 : 0;
  }
  if (points == 0) return std::string(kShapeHint);
  const std::string counts = "Shape: " + counted(points, "point") + ", " + counted(lines, "line");
  if (lines == 0) return counts + ": drag from a point to draw a line";
  if (looseEnds > 0) return counts + ", " + counted(looseEnds, "loose end");
  if (lines <= 2) return counts;
  const std::string closed = counts + ", closed: AutoGrid in the Shape menu fills it";
  return regionsOf(shape) > 1 ? closed + ", a click with Ctrl one region alone" : closed;
}

std::string marksDoubled(std::string_view text) {
  std::string doubled;
  for (const char c : text) doubled.append(c == '&' ? 2U : 1U, c);
  return doubled;
}

std::string lineSummary(const Document& document, int line) {
  const int kind = (*document.lines)[static_cast<std::size_t>(line)].Kind & 3;
  return "Line " + std::to_string(line + 1) + ' ' +
         std::string(kKinds[static_cast<std::size_t>(kind)].meaning);
}

std::string lineHint(const Document& document, int line, std::size_t together) {
  const int kind = (*document.lines)[static_cast<std::size_t>(line)].Kind & 3;
  return std::string(kKinds[static_cast<std::size_t>(kind)].hint) + "; a click changes " +
         (together > 1 ? counted(static_cast<long long>(together), "line") : "it") + ", a drag sets walls";
}

std::string strandSummary(const Knot& knot, int slot, std::optional<double> millimetres) {
  int number = 0, strands = 0;
  for (int other = 1; other < kStrandSlots; ++other) {
    if (!knot.curve.used(other)) continue;
    ++strands;
    if (other <= slot) ++number;
  }
  const double length = millimetres.value_or(strandLength(knot.curve, slot, knot.stretch));
  const std::string shown = shortestText(static_cast<float>(roundHalfEven(length * 10) / 10));
  return "Strand " + std::to_string(number) + " of " + std::to_string(strands) + ": " + shown +
         (millimetres ? " mm" : " grid units") + " long, passes " +
         counted(crossingsPassed(knot.strands, slot), "crossing") + "; a double click changes its colour";
}

std::string kindStep(int kind) { return std::string(kKinds[static_cast<std::size_t>(kind & 3)].step); }

}  // namespace lorivan
