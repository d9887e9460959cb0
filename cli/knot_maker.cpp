#include "cli/knot_maker.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "base/sink.h"
#include "custom/shape_file.h"
#include "design/edits.h"
#include "design/fit.h"
#include "design/outline_files.h"
#include "design/random_knot.h"
#include "design/source.h"

namespace lorivan {

int KnotMaker::read() {
  if (line_.shape) base_.fields.shape = *line_.shape;
  if (line_.knotFile.empty()) return kDone;
  if (extensionOf(line_.knotFile) == kShapeFileExtension) return readShape();
  if (isOutlineFile(line_.knotFile)) return readOutline();
  auto read = readKnotFile(line_.knotFile);
  if (!read)
    return report_.fail(read.error(),
                        line_.knotFile + (read.error().message.starts_with("line ") ? ", " : ": "));
  for (const std::string& correction : read->corrections)
    report_.note(line_.knotFile + ", line 2: " + correction);
  if (read->document.lines->empty())
    return report_.fail(unreadable("line 3: the knot has no lines"), line_.knotFile + ", ");
  base_ = std::move(read->document);
  return kDone;
}

int KnotMaker::readShape() {
  const auto bytes = readFile(line_.knotFile, kLargestKnotFile);
  if (!bytes) return report_.fail(bytes.error(), line_.knotFile + ": ");
  auto shape = readShapeText(*bytes);
  if (!shape) return report_.fail(shape.error(), line_.knotFile + ", ");
  return takeShape(std::move(*shape));
}

int KnotMaker::readOutline() {
  if (line_.random)
    return report_.fail(wrongUsage(line_.knotFile +
                                   " holds no knot but an outline, which brings its own shape; "
                                   "--random does not go with it"));
  const auto isInput = [&](const std::string& path) {
    return absolutePath(path) == absolutePath(line_.knotFile);
  };
  if (std::ranges::any_of(line_.outputs, isInput))
    return report_.fail(wrongUsage(line_.knotFile + " holds no knot but the outline that is read from it; "
                                                    "choose another name to write to"));
  auto fitted = readOutlineFile(platform_, line_.knotFile);
  if (!fitted)
    return report_.fail(fitted.error(),
                        line_.knotFile + (fitted.error().message.starts_with("line ") ? ", " : ": "));
  for (const std::string& note : fitted->notes) report_.note(line_.knotFile + ": " + note);
  return takeShape(std::move(fitted->shape));
}

int KnotMaker::takeShape(CustomShape shape) {
  base_ = withOutline(base_, std::move(shape));
  base_.fields.shape = Shape::Custom;
  ownShape_ = true;
  return kDone;
}

void KnotMaker::takeValues(Document& document) {
  for (const auto& [parameter, text] : values_) {
    document = withField(document, parameter, text);
    const std::string& shown = document.fields.text(parameter);
    if (parseNumber(shown) != parseNumber(text))
      report_.note(std::string(parameterSpec(parameter).field) + "=" + text + " corrected to " + shown);
  }
}

/// A knot file keeps its own lines unless a field is set that lines are made from. The stretch only draws
/// them taller or flatter.
bool KnotMaker::mustBuild() const {
  if (line_.knotFile.empty() || line_.random) return true;
  return std::ranges::any_of(
      values_, [](const auto& value) { return makesGrid(value.first) && value.first != Param::Skew; });
}

int KnotMaker::build(Document& document, const Rnd& random) {
  if (!ownShape_ && !mustBuild()) {
    if (std::ranges::any_of(values_, [](const auto& value) { return changesRoom(value.first); }))
      document = fitAgain(document);
    return kDone;
  }
  if (!ownShape_ && document.fields.shape == Shape::Custom)
    return report_.fail(wrongUsage(line_.knotFile + " holds a custom grid, which no field can build again"));
  AutoGridReport filled;
  auto made = ownShape_ ? autoGrid(document, &filled) : newGrid(document, random ? &random : nullptr);
  if (!made) {
    const int status = report_.fail(made.error());
    if (!ownShape_) return status;
    if (const std::string hint = autoGridHint(document, made.error()); !hint.empty()) report_.note(hint);
    return status;
  }
  if (filled.filled < kFilled) noteEmptyOutline(document, filled);
  for (const auto& [parameter, text] : values_)
    if (made->fields.text(parameter) != document.fields.text(parameter))
      report_.note(std::string(parameterSpec(parameter).field) + "=" + text + " corrected to " +
                   made->fields.text(parameter) + " for this shape");
  document = std::move(*made);
  return kDone;
}

void KnotMaker::noteEmptyOutline(const Document& document, const AutoGridReport& report) {
  const auto share = [](const AutoGridReport& r) {
    return std::to_string(static_cast<int>(std::lround(100 * (1 - r.filled)))) + " %";
  };
  AutoGridReport better;
  const auto filling = fillingAutoGrid(document, &better);
  const bool helps = filling && better.filled > report.filled + 0.005;
  report_.note(
      share(report) + " of the outline stayed empty" +
      (helps ? "; vtGridSize=" + filling->fields.text(Param::GridSize) + " leaves " + share(better) : ""));
}

/// Widths that were asked for stay.
Document KnotMaker::withFittedBands(const Document& document) const {
  const bool typed = std::ranges::any_of(
      values_, [](const auto& value) { return value.first == Param::Width || value.first == Param::Edge; });
  return typed ? document : fitBands(document, line_.preset ? sharesOfStyle(*line_.preset) : BandShares{});
}

int KnotMaker::fitSize(Document& document, OutputOptions& options) {
  const auto fitted = line_.frame
                          ? fitFrame(document, line_.frame->first, line_.frame->second, options.outline)
                          : fitRing(document, *line_.inner, *line_.output.height);
  if (!fitted) return report_.fail(fitted.error());
  report_.note(fittedNote(*fitted));
  document = fitted->document;
  options.millimetres = fitted->width;
  options.height.reset();
  return kDone;
}

int KnotMaker::make(const Member& member, Document& out, OutputOptions& options) {
  values_ = line_.values;
  values_.insert(values_.end(), member.values.begin(), member.values.end());
  Document document = base_;
  for (const auto& [box, on] : line_.checks) document = withCheck(document, box, on);
  Rnd random;
  if (member.seed) {
    random = seededRandom(*member.seed);
    const bool constantShape =
        line_.shape.has_value() || !line_.knotFile.empty() || document.fields.check(Check::ConstantShape);
    // The grid is built when all fields are known.
    drawRandomFields(document.fields, constantShape, random);
  }
  if (line_.preset) document = withStyle(document, *line_.preset);
  // A style brings widths of its own; a box that was asked for stays checked.
  for (const auto& [box, on] : line_.checks) document = withCheck(document, box, on);
  takeValues(document);
  if (document.fields.check(Check::Wrap) && !canWrap(document.fields.shape) &&
      std::ranges::any_of(line_.checks, [](const auto& box) { return box.first == Check::Wrap; }))
    report_.note("chkWrap=1 changes nothing in this shape");
  if (const int status = build(document, random); status != kDone) return status;
  if (line_.frame || line_.inner)
    if (const int status = fitSize(document, options); status != kDone) return status;
  if (line_.setStrands) {
    auto changed = withStrands(document, line_.strands, {});
    if (!changed) return report_.fail(changed.error());
    document = std::move(*changed);
  }
  if (ownShape_) document = withFittedBands(document);
  out = line_.fit ? withFittedBands(withFitPicture(document, true)) : std::move(document);
  return kDone;
}

}  // namespace lorivan
