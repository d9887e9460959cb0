#include "design/knot_fields.h"

#include "base/numbers.h"
#include "controls/valid_text.h"

namespace lorivan {

float KnotFields::number(Param p) const { return static_cast<float>(parseNumber(text(p)).value_or(0)); }

int KnotFields::whole(Param p) const { return toInt32(number(p)); }

std::string correctedText(Param p, const std::string& text) {
  const ParamSpec& spec = parameterSpec(p);
  const RangeCheck checked = checkRange(text, spec.fallback, spec.min, spec.max);
  // A full turn is none.
  if (spec.followUp == FollowUp::angle && checked.text == spec.max) return std::string(spec.min);
  if (!spec.whole || !checked.inRange) return checked.text;
  return std::to_string(toInt32(parseNumber(checked.text).value_or(0)));
}

KnotFields firstRunFields() {
  KnotFields fields;
  for (int i = 0; i < kParamCount; ++i) {
    const auto p = static_cast<Param>(i);
    fields.text(p) = correctedText(p, std::string(parameterSpec(p).firstRun));
  }
  for (std::size_t i = 0; i < fields.checks.size(); ++i) fields.checks[i] = checkTable()[i].firstRun;
  return fields;
}

std::optional<int> colourBoxOf(const KnotFields& fields, int slot) {
  return boxOfColour(knotStyle(fields, {}).colourNumber(slot));
}

bool canWrap(Shape shape) { return shapeTable()[static_cast<std::size_t>(shape)].wraps; }

bool isWrapped(const KnotFields& fields) { return fields.check(Check::Wrap) && canWrap(fields.shape); }

GridFields gridFields(const KnotFields& fields) {
  GridFields grid;
  grid.shape = fields.shape;
  grid.XNo = fields.whole(Param::XNo);
  grid.YNo = fields.whole(Param::YNo);
  grid.scale = fields.number(Param::Scale);
  grid.skew = fields.number(Param::Skew);
  grid.crossOffset = fields.whole(Param::CrossOffset);
  grid.wrapped = isWrapped(fields);
  return grid;
}

TraceSettings traceSettings(const KnotFields& fields) {
  TraceSettings trace;
  trace.startColour = fields.whole(Param::StartColour);
  trace.swish = fields.number(Param::Swish);
  trace.stretch = stretchFactor(fields.number(Param::Skew));
  trace.circular = usesCircularRule(fields.shape, fields.whole(Param::XNo));
  trace.mirror = fields.check(Check::Mirror);
  return trace;
}

KnotStyle knotStyle(const KnotFields& fields, const StrandColours& colours) {
  KnotStyle style;
  style.width = fields.number(Param::Width);
  style.edge = fields.number(Param::Edge);
  style.startColour = fields.whole(Param::StartColour);
  style.colours = colours;
  return style;
}

PictureOptions pictureOptions(const KnotFields& fields) {
  PictureOptions options;
  options.background = BColor(fields.boxes, fields.whole(Param::PicKnotBackColour));
  options.showGrid = fields.check(Check::ShowGrid);
  options.grid.KindColour[0] = options.background;
  options.classic = fields.check(Check::Classic);
  options.grid.showCrossings = fields.check(Check::ShowCrossings);
  return options;
}

void takeCorrections(KnotFields& fields, const GridFields& corrected) {
  const auto take = [&](Param p, float value) {
    if (fields.number(p) != value) fields.text(p) = correctedText(p, shortestText(value));
  };
  const GridFields asked = gridFields(fields);
  if (asked.XNo != corrected.XNo) take(Param::XNo, static_cast<float>(corrected.XNo));
  if (asked.YNo != corrected.YNo) take(Param::YNo, static_cast<float>(corrected.YNo));
  if (asked.crossOffset != corrected.crossOffset)
    take(Param::CrossOffset, static_cast<float>(corrected.crossOffset));
  take(Param::Scale, corrected.scale);
}

}  // namespace lorivan
