#include "design/edits.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <utility>

#include "base/numbers.h"
#include "custom/autogrid.h"
#include "custom/planar_grid.h"
#include "design/fit.h"
#include "design/kept_walls.h"
#include "design/names.h"
#include "design/presets.h"
#include "design/random_knot.h"
#include "graph/strand_runs.h"
#include "graph/strand_solver.h"
#include "strands/tracing.h"

namespace lorivan {
namespace {

constexpr int kLongestStrand = kStrandPoints / 2 - 1;  // lines passed, two points each

/// The document with the lines of a graph that was just built.
Document withGraph(Document document, const KnotGraph& graph) {
  document.CellSize = graph.CellSize;
  document.lines = Shared(linesOf(graph));
  return document;
}

GridView shapeView(const Document& document) {
  return GridView(stretchFactor(document.fields.number(Param::Skew)));
}

/// An AutoGrid in the document's shape, in order, whose strands are short enough to be traced.
Result<AutoGridReport> layAutoGrid(KnotGraph& graph, const Document& document, int size,
                                   std::optional<Spot> within) {
  const AutoGridOptions options{size, document.fields.check(Check::ShapeT), within};
  const auto laid = AutoGrid(graph, outlineOf(document), shapeView(document), options);
  if (!laid) return laid;
  if (const Status ordered = collectPoints(graph) ? CalcGrid(graph) : Status(); !ordered)
    return ordered.error();
  const StrandRuns runs(graph);
  if (runs.count(runs.walls()).longest > kLongestStrand) return refused(kTooComplicated);
  return laid;
}

/// What goes round is a whole ring.
Document withWholeRing(Document document) {
  std::string& ring = document.fields.text(Param::RingPerc);
  if (isWrapped(document.fields)) ring = parameterSpec(Param::RingPerc).max;
  return document;
}

/// The grid of the fields; bands are as they were.
Result<Document> withNewGrid(const Document& document, const Rnd* random) {
  if (document.fields.shape == Shape::Custom) return document;
  Document next = withWholeRing(document);
  if (!next.askedScale.empty()) next.fields.text(Param::Scale) = next.askedScale;
  const std::string asked = next.fields.text(Param::Scale);
  KnotGraph graph;
  const auto built = buildStandardGrid(graph, gridFields(next.fields), random);
  if (!built) return built.error();
  takeCorrections(next.fields, built->fields);
  next.askedScale = next.fields.text(Param::Scale) == asked ? std::string() : asked;
  return withGraph(std::move(next), graph);
}

/// At the smallest scales the ends of a line can round to one point; it stays taken out.
void setKind(KnotLine& line, std::int16_t kind) {
  if (line.X1 != line.X2 || line.Y1 != line.Y2) line.Kind = kind;
}

/// A grid of the custom shape, which it then is no longer ahead of.
Result<Document> withShapeGrid(const Document& document, const KnotGraph& graph, const Status& made) {
  if (!made) return made.error();
  Document next = withGraph(document, graph);
  next.fields.shape = Shape::Custom;
  next.outlineAhead = false;
  return fitAgain(next);
}

/// Gives lines the kind of the document's line between the same places, to a unit.
void keepKinds(KnotGraph& graph, const Document& document) {
  if (!document.lines) return;
  const auto near = [](int ax, int ay, int bx, int by) {
    return std::abs(ax - bx) <= 1 && std::abs(ay - by) <= 1;
  };
  const auto same = [&](const GridLine& line, const KnotLine& old) {
    return (near(line.X1, line.Y1, old.X1, old.Y1) && near(line.X2, line.Y2, old.X2, old.Y2)) ||
           (near(line.X1, line.Y1, old.X2, old.Y2) && near(line.X2, line.Y2, old.X1, old.Y1));
  };
  for (int j = 0; j <= graph.LastLine; ++j) {
    GridLine& line = graph.Lines[j];
    const auto old = std::ranges::find_if(
        *document.lines, [&](const KnotLine& l) { return l.Kind != kNoLine && same(line, l); });
    if (old != document.lines->end()) line.Kind = old->Kind;
  }
}

/// The grid once more after its borders were joined or parted.
Document withBorders(const Document& before, const Document& after) {
  if (!canWrap(after.fields.shape) || !after.lines) return withWholeRing(after);
  const auto made = withNewGrid(after, nullptr);
  return made ? fitAgain(withKindsOf(before, *made)) : before;
}

}  // namespace

bool makesGrid(Param p) {
  const FollowUp followUp = parameterSpec(p).followUp;
  return followUp == FollowUp::newGrid || followUp == FollowUp::newGridOnly || followUp == FollowUp::scale;
}

bool changesRoom(Param p) { return makesGrid(p) || parameterSpec(p).followUp == FollowUp::style; }

Document withField(const Document& document, Param p, const std::string& text) {
  Document next = document;
  next.fields.text(p) = correctedText(p, text);
  if (p == Param::Scale) next.askedScale.clear();
  if (p == Param::Width || p == Param::Edge) next.fields.check(Check::FitBands) = false;
  return p == Param::RingPerc ? withWholeRing(std::move(next)) : next;
}

Result<Document> changeField(const Document& document, Param p, const std::string& text) {
  const Document next = withField(document, p, text);
  if (!makesGrid(p) || document.fields.shape == Shape::Custom) return changesRoom(p) ? fitAgain(next) : next;
  const auto made = withNewGrid(next, nullptr);
  return made ? fitAgain(withKindsOf(document, *made)) : made;
}

std::string fieldStep(const Document& document, Param p) {
  return tr("{1} {2}", fieldName(p), document.fields.text(p));
}

Document withCheck(const Document& document, Check c, bool on) {
  Document next = document;
  next.fields.check(c) = on;
  if (c == Check::Wrap && next.fields.check(c) != document.fields.check(c))
    return withBorders(document, next);
  return c == Check::FitBands ? fitAgain(next) : next;
}

std::string checkStep(Check c, bool on) {
  return on ? tr("{1} on", checkName(c)) : tr("{1} off", checkName(c));
}

Document withFitPicture(const Document& document, bool on) {
  Document next = document;
  next.fields.fitPicture = on;
  return fitAgain(next);  // a width is one of the picture, which shows the cells in another size
}

Document withFittedStyle(const Document& document, int style) {
  const Document next = withStyle(document, style);
  const bool classic = presetTable()[style].firstColours;
  return classic ? next : fitBands(next, sharesOfStyle(style));
}

Document withColour(const Document& document, int box, Colour colour) {
  Document next = document;
  next.fields.boxes[box] = colour;
  return next;
}

Document withStyle(const Document& document, int style) {
  Document next = document;
  applyPreset(next.fields, style);
  next.fields.check(Check::FitBands) = false;
  return next;
}

Result<Document> chooseShape(const Document& document, Shape shape) {
  Document next = document;
  next.fields.shape = shape;
  return newGrid(next);
}

Result<Document> newGrid(const Document& document, const Rnd* random) {
  const auto made = withNewGrid(document, random);
  return made && document.fields.shape != Shape::Custom ? fitAgain(*made) : made;
}

Result<Document> randomKnot(const Document& document, const Rnd& random) {
  Document next = document;
  drawRandomFields(next.fields, next.fields.check(Check::ConstantShape), random);
  next.askedScale.clear();
  return newGrid(next, &random);
}

Document stepLine(const Document& document, int line, int step, const Symmetry& symmetry) {
  if (!document.lines || line < 0 || line >= static_cast<int>(document.lines->size())) return document;
  const int kind = (*document.lines)[line].Kind;
  return withKind(document, {line}, static_cast<std::int16_t>((kind + step) & 3), symmetry);
}

Document withKind(const Document& document, const std::vector<int>& lines, std::int16_t kind,
                  const Symmetry& symmetry) {
  const auto graph = std::make_unique<KnotGraph>();
  if (!document.lines || !takeLines(*graph, document)) return document;
  const LineOrbits orbits(*graph, symmetry);
  KnotLines changed = *document.lines;
  for (const int line : lines)
    for (const int image : orbits.of(line)) setKind(changed[image], kind);
  Document next = document;
  next.lines = Shared(std::move(changed));
  return fitAgain(next);
}

Result<Document> withStrands(const Document& document, std::optional<int> strands, const Symmetry& symmetry) {
  const auto graph = std::make_unique<KnotGraph>();
  if (const Status taken = takeLines(*graph, document); !taken) return taken.error();
  if (const Status ordered = CalcGrid(*graph); !ordered) return ordered.error();
  const auto plan = planStrands(
      *graph,
      {.strands = strands, .symmetry = symmetry, .mostStrands = kMostStrands, .longest = kLongestStrand});
  if (!plan) return plan.error();
  if (plan->lines.empty()) return document;
  KnotLines changed = *document.lines;
  for (const int line : plan->lines) {
    std::int16_t& kind = changed[line].Kind;
    kind = kind == kWall ? kOrdinary : kWall;
  }
  Document next = document;
  next.lines = Shared(std::move(changed));
  return fitAgain(next);
}

Document withOutline(const Document& document, CustomShape shape) {
  Document next = document;
  next.outline = Shared(std::move(shape));
  next.outlineAhead = true;
  return next;
}

Document blankShape(const Document& document) {
  Document next = withOutline(document, {});
  next.fields.shape = Shape::Custom;
  return next;
}

Result<Document> outlineFromGrid(const Document& document) {
  if (!document.lines) return impossibleKnot("There is no grid yet to make a shape from");
  const auto graph = std::make_unique<KnotGraph>();
  if (const Status taken = takeLines(*graph, document); !taken) return taken.error();
  GridView view = shapeView(document);
  fitView(view, *graph);
  auto shape = makeShapeFromGrid(*graph, view);
  if (!shape) return shape.error();
  Document next = withOutline(document, std::move(*shape));
  next.fields.shape = Shape::Custom;
  next.outlineAhead = false;  // the grid that it was made from is its own
  return next;
}

Result<Document> lineGrid(const Document& document) {
  KnotGraph graph;
  const Status made = makeGridFromShape(graph, outlineOf(document), shapeView(document));
  if (made) keepKinds(graph, document);
  return withShapeGrid(document, graph, made);
}

Result<Document> autoGrid(const Document& document, AutoGridReport* report, std::optional<Spot> within) {
  KnotGraph graph;
  const auto laid = layAutoGrid(graph, document, document.fields.whole(Param::GridSize), within);
  if (!laid) return laid.error();
  if (report != nullptr) *report = *laid;
  return withShapeGrid(document, graph, {});
}

std::optional<int> largestAutoGrid(const Document& document, std::optional<Spot> within) {
  KnotGraph graph;
  int size = document.fields.whole(Param::GridSize);
  while (size > 0) {
    const auto laid = layAutoGrid(graph, document, size, within);
    if (laid) return size;
    if (laid.error().kind != ErrorKind::limit || graph.LastLine < 0) break;
    // The lines grow no faster than the square of the size, but for what lattices differ.
    const double most = 1.03 * size * std::sqrt(1.0 * kMostAutoGridLines / (graph.LastLine + 1));
    size = std::min(size - 1, static_cast<int>(most) + 1);
  }
  return {};
}

std::string autoGridHint(const Document& document, const Error& error, std::optional<Spot> within) {
  const auto size = error.kind == ErrorKind::limit ? largestAutoGrid(document, within) : std::nullopt;
  return size ? tr("The largest AG factor that works here is {1}", *size) : std::string();
}

Result<Document> fillingAutoGrid(const Document& document, AutoGridReport* report) {
  Result<Document> best = autoGrid(document, report);
  if (!best && best.error().kind == ErrorKind::limit) {
    const auto most = largestAutoGrid(document);
    return most ? autoGrid(withField(document, Param::GridSize, std::to_string(*most)), report) : best;
  }
  AutoGridReport reached, tried;
  if (report != nullptr && best) reached = *report;
  if (!best) reached.filled = 0;
  const int from = document.fields.whole(Param::GridSize);
  for (int size = from + 1; size <= 100 && reached.filled < kFilled; ++size) {
    auto next = autoGrid(withField(document, Param::GridSize, std::to_string(size)), &tried);
    if (!next && next.error().kind == ErrorKind::limit) break;
    if (!next || tried.filled <= reached.filled) continue;
    reached = tried;
    best = std::move(next);
  }
  if (report != nullptr) *report = reached;
  return best;
}

}  // namespace lorivan
