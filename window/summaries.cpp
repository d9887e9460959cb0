#include "window/summaries.h"

#include <array>
#include <cmath>
#include <set>
#include <vector>

#include "base/numbers.h"
#include "base/texts.h"
#include "custom/groups.h"
#include "design/fit.h"
#include "design/names.h"
#include "strands/strand_pick.h"

namespace lorivan {
namespace {

int kindOf(const Document& document, int line) { return (*document.lines)[line].Kind & 3; }

std::string kindHint(int kind) {
  switch (kind) {
    case kNoLine:
      return tr("No line");
    case kWall:
      return tr("Wall: strands turn back");
    case kReversed:
      return tr("Crossing, first sign reversed");
    default:
      return tr("Crossing");
  }
}

std::string countedCrossings(long long n) { return trn("{n} crossing", "{n} crossings", n); }

struct ShapeCounts {
  int points = 0, lines = 0;
};
/// What of a shape's tables is not deleted.
ShapeCounts countsOf(const CustomShape& shape) {
  ShapeCounts counts;
  for (int point = 1; point <= shape.ShapePointCount; ++point) counts.points += shape.pointIsLive(point);
  for (int line = 1; line <= shape.ShapeLineCount; ++line) counts.lines += shape.lineIsLive(line);
  return counts;
}

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

/// "; the bands run together by 3 pixels: ..." or nothing.
std::string overlapNote(const Document& document, const Knot& knot) {
  const double overlap = bandOverlap(document, knot);
  if (overlap <= 0) return {};
  const std::string pixels = roundedUp(overlap, 10);
  switch (moreRoom(document, knot)) {
    case MoreRoom::fewerCells:
      return tr("; the bands run together by {1} pixels: fewer cells make room", pixels);
    case MoreRoom::smallerWidth:
      return tr("; the bands run together by {1} pixels: a smaller Width makes room", pixels);
    case MoreRoom::fitBands:
      return tr("; the bands run together by {1} pixels: Fit bands makes room", pixels);
    case MoreRoom::otherCurves:
      return tr("; the bands run together by {1} pixels: another Swish or Smooth may make room", pixels);
  }
  return {};
}

}  // namespace

std::string countedStrands(long long n) { return trn("{n} strand", "{n} strands", n); }

std::string shapeHint() {
  return tr(
      "Drag to set a point, drag from a point to draw a line; the right button moves, a click deletes a "
      "point");
}

std::string gridSummary(const Document& document) {
  const KnotFields& fields = document.fields;
  const std::string name = shapeName(fields.shape);
  const auto lines = document.lines ? static_cast<long long>(document.lines->size()) : 0;
  if (fields.shape == Shape::Custom) return trn("{1}: {n} line", "{1}: {n} lines", lines, name);
  return trn("{1}, {2} x {3}, scale {4}: {n} line", "{1}, {2} x {3}, scale {4}: {n} lines", lines, name,
             fields.text(Param::XNo), fields.text(Param::YNo), fields.text(Param::Scale));
}

std::string knotSummary(const Knot& knot) {
  const KnotCounts counts = countKnot(knot.graph, knot.strands);
  return tr("{1}, {2}", countedStrands(counts.strands), countedCrossings(counts.crossings));
}

std::string knotNotes(const Document& document, const Knot& knot) {
  const std::string lost = lostStrands(knot);
  return (lost.empty() ? lost : "; " + lost) + overlapNote(document, knot);
}

std::string emptyShare(const AutoGridReport& report, const std::string& advice) {
  if (report.filled >= kFilled) return {};
  const auto percent = std::lround(100 * (1 - report.filled));
  return tr("; {1} % of the outline stayed empty: {2}", percent, advice);
}

std::string shapeStep(const CustomShape& before, const CustomShape& now, bool moved) {
  if (moved) return tr("Move point");
  const ShapeCounts then = countsOf(before), left = countsOf(now);
  if (left.lines > then.lines) return tr("New line");
  if (left.points > then.points) return tr("New point");
  if (left.points < then.points) return tr("Delete point");
  return tr("Delete line");
}

std::string shapeSummary(const CustomShape& shape) {
  std::vector<int> linesAt(static_cast<std::size_t>(shape.ShapePointCount) + 1, 0);
  const auto [points, lines] = countsOf(shape);
  int looseEnds = 0;
  for (int line = 1; line <= shape.ShapeLineCount; ++line) {
    if (!shape.lineIsLive(line)) continue;
    for (const int end : {0, 1}) ++linesAt[shape.lineEnd(end, line)];
  }
  for (int point = 1; point <= shape.ShapePointCount; ++point) looseEnds += linesAt[point] == 1 ? 1 : 0;
  if (points == 0) return shapeHint();
  const std::string counts =
      tr("Shape: {1}, {2}", trn("{n} point", "{n} points", points), trn("{n} line", "{n} lines", lines));
  if (lines == 0) return tr("{1}: drag from a point to draw a line", counts);
  if (looseEnds > 0) return trn("{1}, {n} loose end", "{1}, {n} loose ends", looseEnds, counts);
  if (lines <= 2) return counts;
  return regionsOf(shape) > 1
             ? tr("{1}, closed: AutoGrid in the Shape menu fills it, a click with Ctrl one region alone",
                  counts)
             : tr("{1}, closed: AutoGrid in the Shape menu fills it", counts);
}

std::string asSentence(std::string text) {
  constexpr std::string_view kNames = "./\\:%=";
  constexpr char kTwoBytes =
      '\xC3';  // UTF-8 of the small letters from U+00E0 to U+00FE, and of their capitals
  const std::string_view word = std::string_view(text).substr(0, text.find(' '));
  if (word.find_first_of(kNames) != std::string_view::npos) return text;
  const std::size_t at = word.size() > 1 && word[0] == kTwoBytes ? 1 : 0;
  const auto byte = static_cast<unsigned char>(word.empty() ? 0 : word[at]);
  const bool small = at == 1 ? byte >= 0xA0 && byte <= 0xBE && byte != 0xB7 : byte >= 'a' && byte <= 'z';
  if (small) text[at] = static_cast<char>(byte - 0x20);
  return text;
}

std::string marksDoubled(std::string_view text) {
  std::string doubled;
  for (const char c : text) doubled.append(c == '&' ? 2U : 1U, c);
  return doubled;
}

std::string lineSummary(const Document& document, int line) {
  switch (kindOf(document, line)) {
    case kNoLine:
      return tr("Line {1} is taken out: strands pass as if it were not there", line + 1);
    case kWall:
      return tr("Line {1} is a wall: strands turn back at it", line + 1);
    case kReversed:
      return tr("Line {1} is reversed: over and under start the other way round", line + 1);
    default:
      return tr("Line {1} is an ordinary line: strands cross on it", line + 1);
  }
}

std::string lineHint(const Document& document, int line, std::size_t together) {
  const std::string kind = kindHint(kindOf(document, line));
  if (together <= 1) return tr("{1}; a click changes it, a drag sets walls", kind);
  return trn("{1}; a click changes {n} line, a drag sets walls",
             "{1}; a click changes {n} lines, a drag sets walls", static_cast<long long>(together), kind);
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
  const std::string crossings = countedCrossings(crossingsPassed(knot.strands, slot));
  return millimetres
             ? tr("Strand {1} of {2}: {3} mm long, passes {4}; a double click changes its colour", number,
                  strands, shown, crossings)
             : tr("Strand {1} of {2}: {3} grid units long, passes {4}; a double click changes its colour",
                  number, strands, shown, crossings);
}

std::string kindStep(int kind) {
  switch (kind & 3) {
    case kNoLine:
      return tr("No line");
    case kWall:
      return tr("Wall");
    case kReversed:
      return tr("Reversed line");
    default:
      return tr("Ordinary line");
  }
}

}  // namespace lorivan
