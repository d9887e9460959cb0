#include "design/fit.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "base/numbers.h"
#include "design/edits.h"
#include "design/knot.h"
#include "design/presets.h"
#include "strands/band_exits.h"
#include "strands/band_touches.h"

namespace lorivan {
namespace {

constexpr int kFitRounds = 4;
// Styles were made on grids on which bands of this width take this share.
constexpr float kUsualWidth = 9, kUsualBand = BandShares{}.band;
// Where the smoothing brings crossings closer together than their grid does, as in the loops of corners,
// bands take at most this share of what is left, but never less than six tenths of what the grid would give
// them.
constexpr double kDrawnShare = 0.85, kLeastOfGrid = 0.6;
// Bands that lie beside each other without crossing take no more than the room there, unless they would have
// to be narrower than this part, or than that of what the grid would give them.
constexpr double kLeastBeside = 0.75, kLeastBesideOfGrid = 0.5;
// Bands that run together all the same are narrowed to where nothing touches, unless that takes more than
// this part of them, or leaves no band with an edge, in reference pixels.
constexpr double kLeastForGaps = 0.62;
constexpr int kNarrowest = 4;
constexpr int kMostDraws = 12;    // of random knots, for one with gaps everywhere
constexpr double kWhole = 1e-6;   // that a whole number of pixels may have lost by rounding
constexpr double kExact = 0.016;  // of half a band, to which its ends are found
constexpr double kPixelsPerUnit = kReferenceWidth / (2 * kHalfView);

/// A document's knot, until the next one is made; nothing where there is none.
const Knot* workingKnot(const Document& document) {
  KnotStages& stages = workingStages();
  if (!document.lines || !stages.trace(document)) return nullptr;
  return &stages.knot();
}

/// A field's text for a number, to a tenth.
std::string tenths(Param p, double value) {
  return correctedText(p, shortestText(static_cast<float>(roundHalfEven(value * 10) / 10)));
}

Document withBands(Document document, double outer, float edgeShare) {
  document.fields.text(Param::Width) = tenths(Param::Width, outer / 2);
  document.fields.text(Param::Edge) = tenths(Param::Edge, outer * edgeShare);
  return document;
}

double zoomOf(const Document& document, const KnotBoxes& boxes) {
  return viewOf(boxes, document.fields, knotStyle(document.fields, {}), kReferenceWidth).zoom;
}

/// A crossing as one of its strands comes to it.
struct Passing {
  int loop;
  double place;
  std::size_t partner;  // the other strand's passing
};

/// A knot's centre lines in a view, and where they cross.
struct CrossingLines {
  CrossingLines(const Knot& knot, const GridView& view)
      : loops(bandLoops(knot.curve, view)),
        seam(seamOf(knot.curve, view)),
        crossings(findBandCrossings(loops, seam)) {}
  /// Whether there are too many crossings to look for what lies between them.
  bool isTangle() const { return crossings.size() > kMostCrossings; }

  std::vector<BandLoop> loops;
  Seam seam;
  std::vector<BandCrossing> crossings;
};

/// The passings of all crossings: those of a strand one after the other, in the strand's order.
std::vector<Passing> passingsOf(const CrossingLines& lines) {
  const std::vector<BandCrossing>& crossings = lines.crossings;
  std::vector<Passing> all;
  all.reserve(2 * crossings.size());
  std::vector<std::size_t> first(crossings.size(), 2 * crossings.size());  // of both passings
  for (int loop = 0; const auto& passings : bandPassings(lines.loops.size(), crossings)) {
    for (const BandPassing& p : passings) {
      std::size_t& partner = first[static_cast<std::size_t>(p.crossing)];
      if (partner < all.size()) all[partner].partner = all.size();
      all.push_back({loop, p.place, partner});
      partner = all.size() - 1;
    }
    ++loop;
  }
  return all;
}

/// The passing after another one on its strand.
std::size_t after(const std::vector<Passing>& passings, std::size_t i) {
  if (i + 1 < passings.size() && passings[i + 1].loop == passings[i].loop) return i + 1;
  while (i > 0 && passings[i - 1].loop == passings[i].loop) --i;
  return i;
}

/// The centre line from one passing to the next.
void appendWay(const BandLoop& loop, double from, double to, std::vector<Vec>& way) {
  if (to <= from) to += loop.size();
  way.push_back(loop.spot(from).at);
  for (int i = static_cast<int>(std::floor(from)) + 1; i < to; ++i) way.push_back(loop.point(i));
}

/// Round a cylinder a way may have been followed in another period than the one that it goes on from.
void moveNear(Vec begin, const Seam& seam, std::vector<Vec>& way) {
  if (!seam) return;
  const double moved = std::round((begin.x - way.front().x) / seam.width) * seam.width;
  for (Vec& p : way) p.x += moved;
}

/// About the radius of the largest disc within a closed line: of many-sided shapes as high as they are wide
/// it is twice the area by the length.
double innerRadius(const std::vector<Vec>& ring) {
  double area = 0, length = 0;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const Vec next = ring[(i + 1) % ring.size()];
    area += cross(ring[i] - ring[0], next - ring[0]) / 2;
    length += lengthOf(next - ring[i]);
  }
  return length > 0 ? 2 * std::fabs(area) / length : 0;
}

/// The room in a loop that a strand makes round a corner: alone, or with another strand that closes it.
/// Nothing where no such loop begins at the passing, or it leads right round a cylinder.
std::optional<double> loopRoom(const std::vector<BandLoop>& loops, const Seam& seam,
                               const std::vector<Passing>& all, std::size_t i) {
  const std::size_t next = after(all, i), p = all[i].partner, q = all[next].partner;
  const auto way = [&](std::size_t from, std::size_t to) {
    std::vector<Vec> points;
    appendWay(loops[all[from].loop], all[from].place, all[to].place, points);
    return points;
  };
  std::vector<Vec> ring = way(i, next);
  if (next != p) {
    const bool goesOn = after(all, q) == p;
    if (!goesOn && after(all, p) != q) return std::nullopt;
    std::vector<Vec> second = goesOn ? way(q, p) : way(p, q);
    moveNear(goesOn ? ring.back() : ring.front(), seam, second);
    if (!goesOn) std::ranges::reverse(second);
    ring.insert(ring.end(), second.begin(), second.end());
  }
  if (seam && std::fabs(ring.back().x - ring.front().x) > seam.width / 2) return std::nullopt;
  return 2 * innerRadius(ring);
}

/// Calls `lack` with the distance of the centre lines wherever bands lie beside or in one another without
/// room.
template <class Lack>
void eachLack(const CrossingLines& lines, const TouchLimits& limits, Lack lack) {
  if (lines.isTangle() || limits.most <= 0) return;
  const auto passings = bandPassings(lines.loops.size(), lines.crossings);
  const BandTouches found = findBandTouches(lines.loops, lines.crossings, passings, lines.seam, limits);
  for (const BandTouch& touch : found.touches) lack(touch.distance);
  for (const BandClasp& clasp : found.clasps) lack(clasp.distance);
}

/// The part of a width, at least `least`, that has room beside bends and walls. Where less would be needed
/// bands run together, and no others are narrow for it.
double partBeside(const CrossingLines& lines, double width, float edgeShare, double least) {
  const double room = width * (1 - edgeShare);
  double part = 1;
  eachLack(lines, {.reach = room, .least = least * room}, [&](double distance) {
    if (distance >= least * room) part = std::min(part, distance / room);
  });
  return part;
}

std::optional<double> roomOf(const CrossingLines& lines) {
  const std::vector<Passing> all = passingsOf(lines);
  const auto at = [&](std::size_t i) { return lines.loops[all[i].loop].spot(all[i].place).at; };
  double least = HUGE_VAL;
  for (std::size_t i = 0; i < all.size(); ++i) {
    Vec way = at(after(all, i)) - at(i);
    if (lines.seam) way.x -= std::round(way.x / lines.seam.width) * lines.seam.width;
    if (const double d = lengthOf(way); d > 1e-3) least = std::min(least, d);
    if (const auto room = loopRoom(lines.loops, lines.seam, all, i)) least = std::min(least, *room);
  }
  if (least == HUGE_VAL) return std::nullopt;
  return least;
}

/// Widths of a band, with its edges and without, in pixels of the lines that are looked at.
struct BandWidths {
  double outer, inner;
};

/// How far a band is still covered where its strand crosses again, at most; 0 where every band comes out from
/// under the others before. In a tangle bands count as covered.
double coveredPart(const CrossingLines& lines, const BandWidths& bands) {
  if (lines.isTangle()) return bands.outer;
  const double half = bands.inner / 2, clear = bands.outer / 2;
  const BandExits exits(lines.loops, lines.crossings, lines.seam, half, clear, kExact * half);
  double most = 0;
  for (const BandCrossing& c : exits.crossings())
    for (const int direction : {-1, 1}) {
      const BandEnd end = exits.leave(c, direction);
      if (!end.isCrowded()) continue;
      const double last = c.underAt + direction * exits.room(c.under, c.underAt, direction);
      const BandLoop::Spot spot = lines.loops[c.under].spot(last);
      for (const int side : {0, 1}) {
        const Vec at = offsetPoint(spot, side == 0 ? -half : half);
        const Vec foot = end.over.spot(end.over.nearest(at, end.side[side].foot)).at;
        most = std::max(most, clear - lengthOf(at - foot));
      }
    }
  return most;
}

/// By how many pixels bands run together, see bandOverlap(); `gridDistance` is the least one between the
/// grid's crossings. Where `any` overlap is enough, a part of it.
double overlapOf(const CrossingLines& lines, std::optional<double> gridDistance, const BandWidths& bands,
                 bool any = false) {
  double overlap = gridDistance ? std::max(0.0, bands.outer - *gridDistance) : 0;
  if (any && overlap > 0) return overlap;
  // Smoothing may bring crossings nearer together than they are on the grid.
  overlap = std::max(overlap, coveredPart(lines, bands));
  if (any && overlap > 0) return overlap;
  // Between bands beside each other one edge is enough. Only those that lack more than what is known count.
  const double room = (bands.inner + bands.outer) / 2;
  eachLack(lines, {.reach = room, .most = room - overlap, .one = any},
           [&](double distance) { overlap = std::max(overlap, room - distance); });
  return overlap;
}

double overlapOf(const Document& document, const Knot& knot, bool any) {
  const KnotStyle style = knotStyle(document.fields, {});
  const GridView view = viewOf(knot, document.fields, style, kReferenceWidth, true);
  std::optional<double> distance = leastCrossingDistance(knot);
  if (distance) *distance /= view.zoom;
  return overlapOf({knot, view}, distance, {style.outerWidth(), style.innerWidth()}, any);
}

/// How wide bands of these shares are to be, in pixels of the 500-pixel picture at zoom 1, and whether no
/// part of a pixel more. Where the usual band has no room all wider ones are narrowed as it is, so that
/// styles keep their character.
struct FittingWidth {
  double outer;
  bool isMost = false;
};
FittingWidth fittingWidth(const CrossingLines& lines, double gridDistance, BandShares shares) {
  const auto drawn = roomOf(lines);
  const double grid = shares.band * gridDistance;
  double narrowed = 1;
  if (drawn && grid > kDrawnShare * *drawn)
    narrowed = std::clamp(kDrawnShare * *drawn / (kUsualBand * gridDistance), kLeastOfGrid, 1.0);
  const double least = std::max(kLeastBeside, kLeastBesideOfGrid / narrowed);
  const double beside = partBeside(lines, grid * narrowed, shares.edge, least);
  return {grid * narrowed * beside, beside < 1};
}

/// The document with narrower bands where its own run together: the widest ones that leave gaps everywhere,
/// unless they would have to be narrower than `least`, in whole pixels of the picture. Distances are those of
/// the 500-pixel picture at zoom 1, and so are the lines.
Document withGaps(const Document& document, const CrossingLines& lines, double gridDistance, double zoom,
                  float edgeShare, int least) {
  const auto with = [&](int outer) { return withBands(document, outer, edgeShare); };
  const auto runTogether = [&](const Document& d) {
    const KnotStyle style = knotStyle(d.fields, {});
    return overlapOf(lines, gridDistance, {style.outerWidth() * zoom, style.innerWidth() * zoom}, true) > 0;
  };
  int high = static_cast<int>(knotStyle(document.fields, {}).outerWidth());
  if (least >= high || !runTogether(document) || runTogether(with(least))) return document;
  int low = least;
  while (high - low > 1) {
    const int middle = (low + high) / 2;
    (runTogether(with(middle)) ? high : low) = middle;
  }
  return with(low);
}

}  // namespace

std::optional<double> drawnRoom(const Knot& knot) {
  return roomOf({knot, GridView(knot.stretch, kReferenceWidth)});
}

std::optional<double> leastCrossingDistance(const Knot& knot) {
  double least = HUGE_VAL;
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    const StrandPoint* before = nullptr;
    // Twice round, for the distance from the last crossing to the first.
    for (int round = 0; round < 2; ++round)
      for (const StrandPoint& point : knot.strands.closed(slot)) {
        if (point.z == 0) continue;
        if (before != nullptr) {
          const double across = knot.strands.wrap.nearest(static_cast<double>(point.x - before->x));
          if (const double d = std::hypot(across, 0.8 * (point.y - before->y)); d > 0)
            least = std::min(least, d);
        }
        before = &point;
      }
  }
  if (least == HUGE_VAL) return std::nullopt;
  return least * kPixelsPerUnit;
}

Document fitBands(const Document& document, BandShares shares) {
  Document next = document;
  next.bands = shares;
  next.fields.check(Check::FitBands) = true;
  const Knot* const knot = workingKnot(document);
  const auto distance = knot != nullptr ? leastCrossingDistance(*knot) : std::nullopt;
  if (!distance) return next;
  const CrossingLines lines(*knot, GridView(knot->stretch, kReferenceWidth));
  const FittingWidth width = fittingWidth(lines, *distance, shares);
  const KnotBoxes boxes = boxesOf(*knot);
  // The view makes room for the bands, which brings crossings together on the picture: a few rounds settle
  // it.
  for (int round = 0; round < kFitRounds; ++round) {
    const double outer = width.outer / zoomOf(next, boxes);
    // Bands are drawn in whole pixels.
    next = withBands(std::move(next), width.isMost ? std::floor(outer + kWhole) : outer, shares.edge);
  }
  const double zoom = zoomOf(next, boxes);
  const int least = static_cast<int>(std::ceil(kLeastForGaps * width.outer / zoom));
  return withGaps(next, lines, *distance, zoom, shares.edge, std::max(least, kNarrowest));
}

Document fitBands(const Document& document) { return fitBands(document, BandShares{}); }

Result<Document> roomyRandomKnot(const Document& document, const Rnd& random) {
  std::optional<Document> best;
  double least = HUGE_VAL;
  for (int draw = 0; draw < kMostDraws && (!best || least > 0); ++draw) {
    const auto drawn = randomKnot(document, random);
    if (!drawn && !best) return drawn;
    if (!drawn) break;
    Document made = fitBands(*drawn);
    const Knot* const knot = workingKnot(made);
    const double lack = knot != nullptr ? bandOverlap(made, *knot) : HUGE_VAL;
    if (best && lack >= least) continue;
    best = std::move(made);
    least = lack;
  }
  return *std::move(best);
}

Document fitAgain(const Document& document) {
  return document.fields.check(Check::FitBands) ? fitBands(document, document.bands) : document;
}

BandShares sharesOfStyle(int style) {
  const Preset& preset = presetTable()[style];
  const float width = static_cast<float>(preset.width);
  return {kUsualBand * width / kUsualWidth, static_cast<float>(preset.edge) / (2 * width)};
}

BandShares sharesOf(const Document& document) {
  BandShares shares = document.bands;
  const Knot* const knot = document.fields.check(Check::FitBands) ? nullptr : workingKnot(document);
  if (knot == nullptr) return shares;
  const double outer = knotStyle(document.fields, {}).outerWidth();
  shares.edge = document.fields.number(Param::Edge) / static_cast<float>(outer);
  if (const auto distance = leastCrossingDistance(*knot))
    shares.band =
        std::min(BandShares{}.band, static_cast<float>(outer * zoomOf(document, boxesOf(*knot)) / *distance));
  return shares;
}

double bandOverlap(const Document& document, const Knot& knot) { return overlapOf(document, knot, false); }

MoreRoom moreRoom(const Document& document, const Knot& knot) {
  const auto width = [](const Document& d) { return d.fields.number(Param::Width); };
  const auto hasRoom = [&](const Document& d) { return overlapOf(d, knot, true) == 0; };
  const std::string least(parameterSpec(Param::Width).min);
  if (document.fields.text(Param::Width) == least) return MoreRoom::fewerCells;
  if (!hasRoom(withField(document, Param::Width, least))) return MoreRoom::otherCurves;
  const Document fitted = fitBands(document, document.bands);
  return width(fitted) < width(document) && hasRoom(fitted) ? MoreRoom::fitBands : MoreRoom::smallerWidth;
}

}  // namespace lorivan
