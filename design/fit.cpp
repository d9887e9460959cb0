#include "design/fit.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "base/numbers.h"
#include "design/knot.h"
#include "design/presets.h"
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

/// The passings of all crossings: those of a strand one after the other, in the strand's order.
std::vector<Passing> passingsOf(const std::vector<BandLoop>& loops, const Seam& seam) {
  const std::vector<BandCrossing> crossings = findBandCrossings(loops, seam);
  std::vector<Passing> all;
  all.reserve(2 * crossings.size());
  std::vector<std::size_t> first(crossings.size(), 2 * crossings.size());  // of both passings
  for (int loop = 0; const auto& passings : bandPassings(loops.size(), crossings)) {
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

/// How wide bands of this share are to be, in pixels of the 500-pixel picture at zoom 1. Where the usual band
/// has no room all wider ones are narrowed as it is, so that styles keep their character.
double fittingWidth(const Knot& knot, double gridDistance, float share) {
  const double width = share * gridDistance;
  const auto drawn = drawnRoom(knot);
  if (!drawn || width <= kDrawnShare * *drawn) return width;
  return width * std::clamp(kDrawnShare * *drawn / (kUsualBand * gridDistance), kLeastOfGrid, 1.0);
}

}  // namespace

std::optional<double> drawnRoom(const Knot& knot) {
  const GridView view(knot.stretch, kReferenceWidth);
  const std::vector<BandLoop> loops = bandLoops(knot.curve, view);
  const Seam seam = seamOf(knot.curve, view);
  const std::vector<Passing> all = passingsOf(loops, seam);
  const auto at = [&](std::size_t i) { return loops[all[i].loop].spot(all[i].place).at; };
  double least = HUGE_VAL;
  for (std::size_t i = 0; i < all.size(); ++i) {
    Vec way = at(after(all, i)) - at(i);
    if (seam) way.x -= std::round(way.x / seam.width) * seam.width;
    if (const double d = lengthOf(way); d > 1e-3) least = std::min(least, d);
    if (const auto room = loopRoom(loops, seam, all, i)) least = std::min(least, *room);
  }
  if (least == HUGE_VAL) return std::nullopt;
  return least;
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
  const double width = fittingWidth(*knot, *distance, shares.band);
  const KnotBoxes boxes = boxesOf(*knot);
  // The view makes room for the bands, which brings crossings together on the picture: a few rounds settle
  // it.
  for (int round = 0; round < kFitRounds; ++round) {
    const double zoom = zoomOf(next, boxes);
    next = withBands(std::move(next), width / zoom, shares.edge);
  }
  return next;
}

Document fitBands(const Document& document) { return fitBands(document, BandShares{}); }

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

double bandOverlap(const Document& document, const Knot& knot) {
  const KnotStyle style = knotStyle(document.fields, {});
  const GridView view = viewOf(knot, document.fields, style, kReferenceWidth, true);
  double overlap = 0;
  if (const auto distance = leastCrossingDistance(knot)) overlap = style.outerWidth() - *distance / view.zoom;
  const std::vector<BandLoop> loops = bandLoops(knot.curve, view);
  const Seam seam = seamOf(knot.curve, view);
  // Between bands beside each other one edge is enough.
  const double room = (style.innerWidth() + style.outerWidth()) / 2;
  const std::vector<BandCrossing> crossings = findBandCrossings(loops, seam);
  const BandTouches found =
      findBandTouches(loops, crossings, bandPassings(loops.size(), crossings), seam, room);
  for (const BandTouch& touch : found.touches) overlap = std::max(overlap, room - touch.distance);
  for (const BandClasp& clasp : found.clasps) overlap = std::max(overlap, room - clasp.distance);
  return std::max(0.0, overlap);
}

}  // namespace lorivan
