#include "outlines/svg_style.h"

#include <algorithm>

#include "base/numbers.h"

namespace lorivan {
namespace {

constexpr std::size_t kMostRules = 10'000;
constexpr std::size_t kMostParts = 16;  // of a selector, in each of its steps, and as many steps
constexpr std::size_t kMostNames = 64;  // of an element, by which rules may call it
constexpr std::string_view kSpace = " \t\r\n\f";

/// Without blanks and line ends at either end.
std::string_view stripped(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(kSpace);
  return begin == std::string_view::npos ? std::string_view()
                                         : text.substr(begin, text.find_last_not_of(kSpace) + 1 - begin);
}

bool isWhite(std::string_view paint) {
  std::string text = lowerCase(paint);
  std::erase(text, ' ');
  return text == "white" || text == "#fff" || text == "#ffffff" || text == "rgb(255,255,255)" ||
         text == "rgb(100%,100%,100%)";
}

void apply(SvgSettings& style, std::string_view key, std::string_view value) {
  if (key == "fill") style.filled = value != "none";
  if (key == "fill") style.white = isWhite(value);
  if (key == "stroke") style.withoutStroke = value == "none";
  if (key == "display") style.gone = value == "none";
  if (key == "opacity" && parseNumber(value) == 0.0) style.gone = true;
  if (key == "visibility") style.hidden = value == "hidden" || value == "collapse";
}

/// Those of "fill: none; stroke: red" that are marked as important, or the others.
SvgSettings settingsOf(std::string_view left, bool important) {
  SvgSettings settings;
  while (!left.empty()) {
    const std::string_view rule = left.substr(0, left.find(';'));
    left.remove_prefix(std::min(left.size(), rule.size() + 1));
    const std::size_t colon = rule.find(':'), mark = std::min(rule.find('!'), rule.size());
    if (colon < mark && important == (mark < rule.size()))
      apply(settings, stripped(rule.substr(0, colon)), stripped(rule.substr(colon + 1, mark - colon - 1)));
  }
  return settings;
}

std::string withoutComments(std::string_view text) {
  std::string out;
  while (!text.empty()) {
    const std::size_t begin = std::min(text.find("/*"), text.size());
    out += text.substr(0, begin);
    text.remove_prefix(begin);
    const std::size_t end = text.find("*/", 2);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 2);
  }
  return out;
}

/// The end of what begins with @: a semicolon, or the brace that closes its block.
std::size_t endOfAtRule(std::string_view text) {
  int depth = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '{') ++depth;
    if (text[at] == '}' && --depth <= 0) return at + 1;
    if (text[at] == ';' && depth == 0) return at + 1;
  }
  return text.size();
}

/// The words of a text between any of some characters.
std::vector<std::string_view> split(std::string_view text, std::string_view between) {
  std::vector<std::string_view> words;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find_first_of(between, at), text.size());
    if (end > at) words.push_back(text.substr(at, end - at));
    at = end + 1;
  }
  return words;
}

/// Names by which rules may call an element: "*", "path", ".cut", "#a".
std::vector<std::string> namesOf(const XmlElement& element) {
  std::vector<std::string> names{"*", std::string(plainSvgName(element.name))};
  if (const std::string* classes = element.attribute("class"))
    for (const std::string_view name : split(*classes, kSpace))
      if (names.size() < kMostNames) names.push_back('.' + std::string(name));
  if (const std::string* id = element.attribute("id")) names.push_back('#' + *id);
  return names;
}

}  // namespace

void SvgSettings::applyTo(SvgStyle& style) const {
  style.filled = filled.value_or(style.filled);
  style.white = white.value_or(style.white);
  style.hidden = hidden.value_or(style.hidden);
  style.withoutStroke = withoutStroke.value_or(style.withoutStroke);
  style.gone = gone.value_or(style.gone);
}

std::string_view plainSvgName(std::string_view name) {
  return name.starts_with("svg:") ? name.substr(4) : name;
}

void SvgStyleSheet::add(std::string_view sheet) {
  const std::string plain = withoutComments(sheet);
  std::string_view left = stripped(plain);
  while (!left.empty()) {
    if (left.starts_with('@')) {
      left = stripped(left.substr(endOfAtRule(left)));
      continue;
    }
    const std::size_t open = left.find('{'), close = left.find('}');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open) return;
    const std::string_view declarations = left.substr(open + 1, close - open - 1);
    const Rule rule{{}, 0, 0, settingsOf(declarations, false), settingsOf(declarations, true)};
    for (const std::string_view selector : split(left.substr(0, open), ","))
      addRule(stripped(selector), rule);
    left = stripped(left.substr(close + 1));
  }
}

void SvgStyleSheet::addRule(std::string_view selector, Rule rule) {
  if (selector.empty() || selector.find_first_of("+~:[]()") != std::string_view::npos || count_ >= kMostRules)
    return;
  rule.order = count_++;
  while (!selector.empty()) {
    Compound step;
    if (selector[0] == '>') {
      step.child = true;
      selector = stripped(selector.substr(1));
    }
    const std::size_t end = std::min(selector.find_first_of(" \t\r\n\f>"), selector.size());
    if (end == 0 || rule.way.size() == kMostParts || (step.child && rule.way.empty())) return;
    std::string_view left = selector.substr(0, end);
    while (!left.empty()) {
      if (step.parts.size() == kMostParts) return;
      const std::size_t length = std::min(left.find_first_of(".#", 1), left.size());
      step.parts.emplace_back(left.substr(0, length));
      rule.weight += left[0] == '#' ? 1'000'000 : left[0] == '.' ? 1000 : left[0] == '*' ? 0 : 1;
      left.remove_prefix(length);
    }
    rule.way.push_back(std::move(step));
    selector = stripped(selector.substr(end));
  }
  rules_[rule.way.back().parts.back()].push_back(std::move(rule));
}

bool SvgStyleSheet::fits(const Compound& compound, const std::vector<std::string>& names) {
  looks_ += compound.parts.size();
  return std::ranges::all_of(
      compound.parts, [&](const std::string& part) { return std::ranges::find(names, part) != names.end(); });
}

/// Whether what the element lies in fits all steps of the rule but the last.
bool SvgStyleSheet::fitsAround(const Rule& rule, const XmlElement& element) {
  const std::size_t steps = rule.way.size() - 1;
  if (steps == 0) return true;
  std::vector<const XmlElement*> outer;
  for (int i = element.parent; i >= 0; i = tree_.elements[i].parent) outer.push_back(&tree_.elements[i]);
  // From the root on: which steps the last element can be the end of, and which any so far.
  std::vector<bool> last(steps), any(steps);
  for (auto at = outer.rbegin(); at != outer.rend() && !tooMany(); ++at) {
    const std::vector<std::string> names = namesOf(**at);
    looks_ += names.size();
    std::vector<bool> now(steps);
    for (std::size_t k = 0; k < steps; ++k)
      now[k] = (k == 0 || (rule.way[k].child ? last : any)[k - 1]) && fits(rule.way[k], names);
    for (std::size_t k = 0; k < steps; ++k) any[k] = any[k] || now[k];
    last = now;
  }
  return (rule.way.back().child ? last : any)[steps - 1];
}

std::vector<const SvgStyleSheet::Rule*> SvgStyleSheet::rulesFor(const XmlElement& element) {
  std::vector<const Rule*> fitting;
  if (rules_.empty()) return fitting;
  const std::vector<std::string> names = namesOf(element);
  for (const std::string& name : names) {
    const auto found = rules_.find(name);
    if (found == rules_.end()) continue;
    for (const Rule& rule : found->second)
      if (!tooMany() && fits(rule.way.back(), names) && fitsAround(rule, element)) fitting.push_back(&rule);
  }
  std::ranges::sort(fitting, {}, [](const Rule* rule) { return std::pair(rule->weight, rule->order); });
  return fitting;
}

SvgStyle SvgStyleSheet::styleOf(const XmlElement& element, const SvgStyle& outer) {
  SvgStyle style = outer;
  SvgSettings plain;
  for (const auto& [key, value] : element.attributes) apply(plain, key, stripped(value));
  plain.applyTo(style);
  const std::vector<const Rule*> rules = rulesFor(element);
  const std::string* own = element.attribute("style");
  for (const bool important : {false, true}) {
    for (const Rule* rule : rules) (important ? rule->important : rule->usual).applyTo(style);
    if (own != nullptr) settingsOf(*own, important).applyTo(style);
  }
  return style;
}

}  // namespace lorivan
