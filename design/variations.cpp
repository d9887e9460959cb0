#include "design/variations.h"

#include <algorithm>
#include <cmath>
#include <sstream>

#include "base/numbers.h"
#include "base/texts.h"
#include "design/edits.h"
#include "design/fit.h"
#include "design/names.h"

namespace lorivan {
namespace {

constexpr int kAcross = 4, kDown = 3;
static_assert(kAcross * kDown == kVariations);
constexpr int kMostTries = 100;  // draws for random knots, and steps away from a field's value

double limit(std::string_view text) { return parseNumber(text).value_or(0); }

/// A whole number of the field's own steps, such that `count` of them go over half of its range.
double stepOf(const ParamSpec& spec, int count) {
  const double own = limit(spec.step), range = limit(spec.max) - limit(spec.min);
  return own * std::max(1.0, std::floor(range / (2 * count * own)));
}

std::string captionOf(const Document& document, Param p) { return fieldStep(document, p); }

/// What a value makes of the document, unless it is corrected.
std::optional<Document> withValue(const Document& document, Param p, const std::string& text) {
  auto made = changeField(document, p, text);
  if (!made || made->fields.number(p) != static_cast<float>(limit(text))) return std::nullopt;
  return std::move(*made);
}

/// Values nearest to the field's own first, until there are enough.
std::vector<std::string> valuesAround(const Document& document, Param p, int count) {
  const ParamSpec& spec = parameterSpec(p);
  const double step = stepOf(spec, count), own = static_cast<double>(document.fields.number(p));
  std::vector<double> values;
  for (int i = 0; i <= kMostTries && static_cast<int>(values.size()) < count; ++i) {
    const double value = own + step * (i % 2 == 1 ? (i + 1) / 2 : -(i / 2));
    if (value < limit(spec.min) - 1e-6 || value > limit(spec.max) + 1e-6) continue;
    if (withValue(document, p, shortestText(static_cast<float>(value)))) values.push_back(value);
  }
  std::ranges::sort(values);
  std::vector<std::string> texts;
  for (const double value : values) texts.push_back(shortestText(static_cast<float>(value)));
  return texts;
}

/// The first field that the picture changes with and that has the name.
std::optional<Param> fieldNamed(const std::string& name) {
  const std::string wanted = lowerCase(name);
  for (int i = 0; i < kParamCount; ++i) {
    const auto p = static_cast<Param>(i);
    const ParamSpec& spec = parameterSpec(p);
    const auto names = {std::string(spec.caption), fieldName(p), std::string(spec.shortName),
                        std::string(spec.field)};
    if (variesPicture(p) &&
        std::ranges::any_of(names, [&](const std::string& one) { return lowerCase(one) == wanted; }))
      return p;
  }
  return std::nullopt;
}

}  // namespace

bool variesPicture(Param p) {
  switch (parameterSpec(p).followUp) {
    case FollowUp::newGrid:
    case FollowUp::newGridOnly:
    case FollowUp::scale:
    case FollowUp::style:
    case FollowUp::startColour:
    case FollowUp::background:
      return true;
    default:
      return false;
  }
}

std::vector<Variation> variationsAlong(const Document& document, Param p) {
  std::vector<Variation> variations;
  for (const std::string& text : valuesAround(document, p, kVariations))
    if (auto made = withValue(document, p, text))
      variations.push_back({captionOf(*made, p), std::move(*made)});
  return variations;
}

std::vector<Variation> variationsAlong(const Document& document, Param across, Param down) {
  std::vector<Variation> variations;
  const std::vector<std::string> columns = valuesAround(document, across, kAcross);
  for (const std::string& row : valuesAround(document, down, kDown)) {
    const auto base = withValue(document, down, row);
    for (const std::string& column : columns)
      if (auto made = withValue(*base, across, column))
        variations.push_back(
            {tr("{1}, {2}", captionOf(*made, across), captionOf(*made, down)), std::move(*made)});
  }
  return variations;
}

std::vector<Variation> randomVariations(const Document& document, const Rnd& random) {
  std::vector<Variation> variations;
  for (int i = 0; i < kMostTries && variations.size() < kVariations; ++i) {
    auto made = roomyRandomKnot(document, random);
    if (!made) continue;
    variations.push_back({tr("{1} {2}x{3}", shapeName(made->fields.shape), made->fields.text(Param::XNo),
                             made->fields.text(Param::YNo)),
                          *std::move(made)});
  }
  return variations;
}

Result<std::vector<Param>> variedFields(const std::string& text) {
  std::vector<Param> fields;
  std::vector<std::string> words;
  std::istringstream stream(text);
  for (std::string word; stream >> word;)
    if (std::erase(word, ','); !word.empty()) words.push_back(word);
  for (std::size_t at = 0; at < words.size();) {
    // Some names are of two words.
    std::optional<Param> found;
    if (at + 1 < words.size()) found = fieldNamed(words[at] + ' ' + words[at + 1]);
    at += found ? 2 : 1;
    if (!found) found = fieldNamed(words[at - 1]);
    if (!found)
      return wrongUsage("\"{1}\" names no field that the picture changes with, such as Swish", words[at - 1]);
    fields.push_back(*found);
  }
  if (fields.empty() || fields.size() > 2 || (fields.size() == 2 && fields[0] == fields[1]))
    return wrongUsage("name one field or two, such as Swish or Swish Width");
  return fields;
}

}  // namespace lorivan
