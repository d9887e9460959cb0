#include "design/fit_size.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <numbers>
#include <vector>

#include "base/numbers.h"
#include "design/edits.h"
#include "design/fit.h"
#include "design/knot.h"
#include "design/knot_model.h"
#include "strands/cut_drawing.h"
#include "strands/drawn_box.h"

namespace lorivan {
namespace {

constexpr double kLeastStretch = 0.1, kMostStretch = 10;
constexpr int kMostCells = 20;
constexpr int kHalvings = 26;
constexpr int kCutRounds = 4;
constexpr double kCutExact = 1e-5;     // of the ratio
constexpr double kCellWeight = 0.3;    // a wrong number of cells beside cells that are not square
constexpr double kTubeShare = 0.22;    // tube radius to cell
constexpr double kHeightShare = 1.25;  // height of a crossing to tube radius: tubes touch after smoothing
constexpr double kTurn = 2 * std::numbers::pi;

std::string numberText(Param p, double value) {
  return correctedText(p, shortestText(static_cast<float>(value)));
}

Document withNumber(const Document& document, Param p, double value) {
  Document next = document;
  next.fields.text(p) = numberText(p, value);
  return next;
}

/// The grid of these cells and this stretch at the largest scale up to the document's.
Result<Document> gridOf(const Document& document, int x, int y, double stretch) {
  Document next = withNumber(withNumber(document, Param::XNo, x), Param::YNo, y);
  next.fields.text(Param::Skew) = numberText(Param::Skew, stretch);
  next.askedScale.clear();
  next.fields.check(Check::FitBands) = false;  // bands stay while the stretch is looked for
  auto made = newGrid(next);
  if (made) made->askedScale.clear();
  if (made) made->fields.check(Check::FitBands) = document.fields.check(Check::FitBands);
  return made;
}

/// Height to width of what a document makes; nothing when it makes no knot.
using Measure = std::function<std::optional<double>(const Document&)>;

/// Of the box round the bands, near enough to choose cells by.
std::optional<double> roughRatio(const Document& document) {
  const auto knot = std::make_unique<Knot>();
  if (!document.lines || !makeKnot(document, *knot)) return std::nullopt;
  const KnotStyle style = knotStyle(document.fields, {});
  const GridView view = viewOf(*knot, document.fields, style, kReferenceWidth, true);
  const GridBox box = curveBox(knot->curve, view.stretch);
  if (box.empty()) return std::nullopt;
  const double bands = style.outerWidth(), beside = knot->curve.wrap ? 0 : bands;
  return (view.pixelY(box.bottom) - view.pixelY(box.top) + bands) /
         (view.pixelX(box.right) - view.pixelX(box.left) + beside);
}

/// Calls `box` with what is needed to draw a document's knot, for the ratio of the box that it returns.
template <class Box>
std::optional<double> ratioOf(const Document& document, Box box) {
  const auto knot = std::make_unique<Knot>();
  if (!document.lines || !makeKnot(document, *knot)) return std::nullopt;
  const KnotStyle style = knotStyle(document.fields, {});
  const PictureBox drawn =
      box(knot->curve, style, viewOf(*knot, document.fields, style, kReferenceWidth, true));
  if (drawn.right <= drawn.left) return std::nullopt;
  return (drawn.bottom - drawn.top) / (drawn.right - drawn.left);
}

/// Of what files hold.
std::optional<double> drawnRatio(const Document& document) {
  return ratioOf(document, [&](const KnotCurve& curve, const KnotStyle& style, const GridView& view) {
    return drawnBox(curve, style, view, document.fields.check(Check::Classic));
  });
}

/// Of the bands without their edges, as long as nothing is cut.
std::optional<double> coloursRatio(const Document& document) {
  return ratioOf(document, [](const KnotCurve& curve, KnotStyle style, const GridView& view) {
    style.width = static_cast<float>(style.innerWidth() / 2);
    style.edge = 0;
    return drawnBox(curve, style, view, false);
  });
}

/// Of what is cut out so many millimetres wide.
std::optional<double> cutRatio(const Document& document, double width) {
  return ratioOf(document, [width](const KnotCurve& curve, const KnotStyle& style, const GridView& view) {
    CutOptions options;
    options.width = width;
    return cutDrawing(curve, style, view, options).box;
  });
}

/// What matters of a model that is bent round the y axis, model units.
struct RingSizes {
  double innerRadius = 0, height = 0, width = 0;
  double middleRadius = 0;  // of the centre lines where they have no height
};

/// Distance of the axis from an edge.
double axisDistance(const Vec3& a, const Vec3& b) {
  const double x = a.x, z = a.z, dx = static_cast<double>(b.x) - x, dz = static_cast<double>(b.z) - z;
  const double length = dx * dx + dz * dz;
  const double at = length > 0 ? std::clamp(-(x * dx + z * dz) / length, 0.0, 1.0) : 0;
  return std::hypot(x + at * dx, z + at * dz);
}

std::optional<RingSizes> ringSizes(const Document& document) {
  const auto knot = std::make_unique<Knot>();
  TubeModel model;
  if (!document.lines || !makeKnot(document, *knot)) return std::nullopt;
  if (!buildModel(*knot, document.fields, {}, 0, model) || model.QuadCount == 0) return std::nullopt;
  RingSizes sizes{HUGE_VAL, 0, 0, static_cast<double>(model.curveMaximum.x)};
  GridBox box;
  for (const Vec3& v : model.vertices) box.add(static_cast<double>(v.x), static_cast<double>(v.y));
  for (const TubeStrand& strand : model.strands)
    for (int r = 0; r < strand.ringCount; ++r) {
      const int ring = strand.firstRing + r;
      const int next = strand.firstRing + (r + 1) % strand.ringCount;
      for (int side = 0; side < model.sides; ++side) {
        const Vec3& v = model.vertex(ring, side);
        for (const Vec3* end : {&model.vertex(ring, (side + 1) % model.sides),
                                &model.vertex(next, (side + model.join(ring)) % model.sides)})
          sizes.innerRadius = std::min(sizes.innerRadius, axisDistance(v, *end));
      }
    }
  sizes.height = box.top - box.bottom;
  sizes.width = box.right - box.left;
  return sizes;
}

std::optional<double> ringRatio(const Document& document) {
  const auto sizes = ringSizes(document);
  if (!sizes || sizes->innerRadius <= 0) return std::nullopt;
  return sizes->height / (2 * sizes->innerRadius);
}

/// The stretch at which the ratio is what is wanted, by halving. A scale that had to go down on the way stays
/// down, so that the ratio grows with the stretch without a jump.
std::optional<Document> withRatio(Document document, const Measure& measure, double ratio) {
  const int x = document.fields.whole(Param::XNo), y = document.fields.whole(Param::YNo);
  double low = std::log(kLeastStretch), high = std::log(kMostStretch);
  for (int i = 0; i < kHalvings; ++i) {
    const double middle = (low + high) / 2;
    auto made = gridOf(document, x, y, std::exp(middle));
    const auto reached = made ? measure(*made) : std::nullopt;
    if (!reached) return std::nullopt;
    (*reached < ratio ? low : high) = middle;
    // A smaller scale moves the goal a little: the search gets room again.
    if (made->fields.text(Param::Scale) != document.fields.text(Param::Scale)) {
      low = std::max(std::log(kLeastStretch), low - 0.1);
      high = std::min(std::log(kMostStretch), high + 0.1);
    }
    document = std::move(*made);
  }
  return document;
}

/// The same for what is cut out. Cutting takes long, and leaves nearly the ratio of what is not cut yet.
std::optional<Document> withCutRatio(Document document, double width, double ratio) {
  double goal = ratio;
  for (int round = 0; round < kCutRounds; ++round) {
    auto made = withRatio(document, coloursRatio, goal);
    const auto reached = made ? cutRatio(*made, width) : std::nullopt;
    if (!reached) return std::nullopt;
    document = *std::move(made);
    if (std::abs(*reached - ratio) < kCutExact * ratio) break;
    goal *= ratio / *reached;
  }
  return document;
}

/// The largest scale that the picture has room for.
Document withRoom(const Document& document) {
  Document next = withNumber(document, Param::Scale, 99);
  next.askedScale.clear();
  return next;
}

/// Cells about as many as there are, which need the least stretch beside `square`.
Document withCells(const Document& document, const Measure& measure, double ratio, double square) {
  const double x0 = document.fields.whole(Param::XNo), y0 = document.fields.whole(Param::YNo);
  Document best = document;
  double least = HUGE_VAL;
  for (int x = 1; x <= kMostCells; ++x) {
    const auto probe = gridOf(document, x, static_cast<int>(y0), square);
    const auto reached = probe ? measure(*probe) : std::nullopt;
    if (!reached) continue;
    for (const double wanted : {std::floor(y0 * ratio / *reached), std::ceil(y0 * ratio / *reached)}) {
      const int y = static_cast<int>(std::clamp(wanted, 1.0, static_cast<double>(kMostCells)));
      const auto made = gridOf(document, x, y, square);
      const auto got = made ? measure(*made) : std::nullopt;
      if (!got) continue;
      const double cost =
          std::abs(std::log(ratio / *got)) + kCellWeight * std::abs(std::log(x * y / (x0 * y0)));
      if (cost < least) best = *made;
      least = std::min(least, cost);
    }
  }
  return best;
}

Error noSuchSize() {
  return impossibleKnot("this shape cannot be stretched to that size; try another one, or other cells");
}

/// As many cells as there may be of which the bent ones are about square.
Document withRingCells(const Document& document, double inner, double height, double share) {
  const double around = share * kTurn / 2 * (inner + height / 4) / height;  // cells for each row
  const int rows = std::clamp(static_cast<int>(std::lround(kMostCells / around)), 1, kMostCells);
  const int columns = std::clamp(static_cast<int>(std::lround(around * rows)), 2, kMostCells);
  return withNumber(withNumber(document, Param::XNo, columns), Param::YNo, rows);
}

}  // namespace

Result<FittedSize> fitFrame(const Document& document, double width, double height, bool outlines) {
  const double ratio = height / width;
  const auto stretched = [&](const Document& d) {
    return outlines ? withCutRatio(withRoom(d), width, ratio) : withRatio(withRoom(d), drawnRatio, ratio);
  };
  const Document start = fitBands(withCells(withRoom(document), roughRatio, ratio, 1), sharesOf(document));
  // Bands follow the stretch, and the size follows the bands: twice settles both.
  auto made = stretched(start);
  if (made) made = stretched(fitAgain(*made));
  const auto reached = !made ? std::nullopt : outlines ? cutRatio(*made, width) : drawnRatio(*made);
  if (!reached || std::abs(*reached * width - height) > kMostSizeError) return noSuchSize();
  return FittedSize{*made, width, std::abs(*reached * width - height)};
}

Result<FittedSize> fitRing(const Document& document, double inner, double height) {
  Document start = withRoom(document);
  if (start.fields.number(Param::RingPerc) <= 0) start = withNumber(start, Param::RingPerc, 100);
  // A whole ring has no borders where its shape can do without; a custom outline has no fields.
  if (start.fields.number(Param::RingPerc) >= 100 && canWrap(start.fields.shape))
    start.fields.check(Check::Wrap) = true;
  const double share = static_cast<double>(start.fields.number(Param::RingPerc)) / 100;
  start = withRingCells(start, inner, height, share);
  std::optional<Document> made = start;
  // The tubes are made as thick as the cells allow, which depends on the stretch a little.
  for (int round = 0; made && round < 2; ++round) {
    made = withRatio(withRoom(*made), ringRatio, height / inner);
    const auto sizes = made ? ringSizes(*made) : std::nullopt;
    if (!sizes) return noSuchSize();
    const double cell = share * kTurn * sizes->middleRadius / made->fields.whole(Param::XNo);
    const double radius = std::clamp(kTubeShare * cell, 0.1, 1.0);
    made = withNumber(withNumber(*made, Param::PolyRadius, roundHalfEven(radius * 100) / 10), Param::PolyZF,
                      roundHalfEven(radius * kHeightShare * 100) / 100);
  }
  if (made) made = withRatio(withRoom(*made), ringRatio, height / inner);
  const auto sizes = made ? ringSizes(*made) : std::nullopt;
  if (!sizes || sizes->innerRadius <= 0) return noSuchSize();
  const double unit = inner / (2 * sizes->innerRadius), error = std::abs(unit * sizes->height - height);
  if (error > kMostSizeError) return noSuchSize();
  return FittedSize{fitBands(*made, sharesOf(document)), unit * sizes->width, error,
                    !canWrap(made->fields.shape)};
}

std::string fittedNote(const FittedSize& fitted) {
  const KnotFields& fields = fitted.document.fields;
  const std::string off = fitted.error < 0.001
                              ? tr("less than 0.001")
                              : shortestText(static_cast<float>(roundHalfEven(fitted.error * 1000) / 1000));
  const std::string &across = fields.text(Param::XNo), &down = fields.text(Param::YNo),
                    &stretch = fields.text(Param::Skew);
  const std::string note =
      isWrapped(fields)
          ? tr("{1} x {2} cells, stretch {3}, wrapped; the error is {4} mm", across, down, stretch, off)
          : tr("{1} x {2} cells, stretch {3}; the error is {4} mm", across, down, stretch, off);
  return fitted.bent ? note + tr("; Square-Square is woven all round a ring") : note;
}

Result<TwoLengths> parseLengths(const std::string& text) {
  const auto cross = lowerCase(text).find('x');
  const Error wrong =
      wrongUsage("two lengths from 0.01 to 100000 millimetres are written like 200x120, not \"{1}\"", text);
  if (cross == std::string::npos) return wrong;
  const auto first = parseTyped(text.substr(0, cross)), second = parseTyped(text.substr(cross + 1));
  const auto fits = [](const auto& length) {
    return length && *length >= kLeastMillimetres && *length <= kMostMillimetres;
  };
  if (!fits(first) || !fits(second)) return wrong;
  return TwoLengths{*first, *second};
}

}  // namespace lorivan
