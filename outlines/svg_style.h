// What SVG styles say of shapes: attributes, style sheets, and the attribute "style".
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "outlines/xml_tree.h"

namespace lorivan {

/// What elements hand on to those within them.
struct SvgStyle {
  bool filled = true, white = false, hidden = false;
  bool withoutStroke = false;  // it says so; many drawings for machines say nothing of strokes
  bool gone = false;           // with all that lies within
};

/// What declarations say of a style; what they do not mention stays.
struct SvgSettings {
  std::optional<bool> filled, white, hidden, withoutStroke, gone;

  void applyTo(SvgStyle& style) const;
};

/// The name without the prefix that some programs write; those of other namespaces stay whole, and unknown.
std::string_view plainSvgName(std::string_view name);

/// The style sheets of a drawing. Selectors of a name, classes and ids are known, in lists, run together as
/// in "path.cut#a", and within others as in "g .cut" and "g > path"; rules with others or very many of them,
/// those that begin with @, and those beyond the first ten thousand are passed over.
class SvgStyleSheet {
 public:
  /// The tree has to outlive it.
  explicit SvgStyleSheet(const XmlTree& tree) : tree_(tree) {}

  /// Takes a sheet in behind those before.
  void add(std::string_view sheet);

  /// The style of an element within another: its attributes, then the rules for it, the more exact ones last,
  /// then its attribute "style".
  SvgStyle styleOf(const XmlElement& element, const SvgStyle& outer);

  /// Whether rules and elements are so many, and so deep, that no more is looked for.
  bool tooMany() const { return looks_ > kMostLooks; }

 private:
  static constexpr std::size_t kMostLooks = 5'000'000;  // for parts of rules, in the names of elements

  struct Compound {
    std::vector<std::string> parts = {};  // "path", ".cut", "#a": all have to fit
    bool child = false;                   // lies in what the one before fits, not deeper
  };
  struct Rule {
    std::vector<Compound> way = {};  // from the outermost to that of the element itself
    int weight = 0;
    std::size_t order = 0;
    SvgSettings usual, important;
  };

  /// `rule` without its selector.
  void addRule(std::string_view selector, Rule rule);
  bool fits(const Compound& compound, const std::vector<std::string>& names);
  bool fitsAround(const Rule& rule, const XmlElement& element);
  /// Those that fit, the less exact ones first.
  std::vector<const Rule*> rulesFor(const XmlElement& element);

  const XmlTree& tree_;
  std::map<std::string, std::vector<Rule>, std::less<>> rules_;  // by their last part
  std::size_t count_ = 0, looks_ = 0;
};

}  // namespace lorivan
