#include "design/fit.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "base/numbers.h"
#include "design/knot.h"
#include "design/presets.h"

namespace lorivan {
namespace {

constexpr int kRounds = 4;
// Styles were made on grids on which bands of this width take this share.
constexpr float kUsualWidth = 9, kUsualBand = BandShares{}.band;
constexpr double kPixelsPerUnit = kReferenceWidth / (2 * kHalfView);

/// A field's text for a number, to a tenth.
std::string tenths(Param p, double value) {
  return correctedText(p, shortestText(static_cast<float>(roundHalfEven(value * 10) / 10)));
}

Document withBands(Document document, double outer, float edgeShare) {
  document.fields.text(Param::Width) = tenths(Param::Width, outer / 2);
  document.fields.text(Param::Edge) = tenths(Param::Edge, outer * edgeShare);
  return document;
}

double zoomOf(const Document& document, const Knot& knot) {
  return viewOf(knot, document.fields, knotStyle(document.fields, {}), kReferenceWidth, true).zoom;
}

}  // namespace

std::optional<double> leastCrossingDistance(const Knot& knot) {
  double least = HUGE_VAL;
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    const StrandPoint* before = nullptr;
    // Twice round, for the distance from the last crossing to the first.
    for (int round = 0; round < 2; ++round)
      for (const StrandPoint& point : knot.strands.closed(slot)) {
        if (point.z == 0) continue;
        if (before != nullptr)
          if (const double d = std::hypot(point.x - before->x, 0.8 * (point.y - before->y)); d > 0)
            least = std::min(least, d);
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
  const auto knot = std::make_unique<Knot>();
  if (!document.lines || !makeKnot(document, *knot)) return next;
  const auto distance = leastCrossingDistance(*knot);
  if (!distance) return next;
  // The view makes room for the bands, which brings crossings together on the picture: a few rounds settle
  // it.
  for (int round = 0; round < kRounds; ++round)
    next = withBands(std::move(next), shares.band * *distance / zoomOf(next, *knot), shares.edge);
  return next;
}

Document fitBands(const Document& document) { return fitBands(document, BandShares{}); }

Document fitAgain(const Document& document) {
  return document.fields.check(Check::FitBands) ? fitBands(document, document.bands) : document;
}

BandShares sharesOfStyle(int style) {
  const Preset& preset = presetTable()[static_cast<std::size_t>(style)];
  const float width = static_cast<float>(preset.width);
  return {kUsualBand * width / kUsualWidth, static_cast<float>(preset.edge) / (2 * width)};
}

BandShares sharesOf(const Document& document) {
  BandShares shares = document.bands;
  const auto knot = std::make_unique<Knot>();
  if (document.fields.check(Check::FitBands) || !document.lines || !makeKnot(document, *knot)) return shares;
  const double outer = knotStyle(document.fields, {}).outerWidth();
  shares.edge = document.fields.number(Param::Edge) / static_cast<float>(outer);
  if (const auto distance = leastCrossingDistance(*knot))
    shares.band =
        std::min(BandShares{}.band, static_cast<float>(outer * zoomOf(document, *knot) / *distance));
  return shares;
}

double bandOverlap(const Document& document, const Knot& knot) {
  const auto distance = leastCrossingDistance(knot);
  if (!distance) return 0;
  const double room = *distance / zoomOf(document, knot);
  return std::max(0.0, knotStyle(document.fields, {}).outerWidth() - room);
}

}  // namespace lorivan
