// What SVG styles say of shapes: attributes, style sheets, and the attribute "style".
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "outlines/xml_tree.h"

namespace lorivan {

/// What elements hand on to those within them.
struct SvgStyle {
  bool filled = true, white = false, hidden = false;
  bool gone = false;  // with all that lies within
};

/// The name without the prefix that some programs write; those of other namespaces stay whole, and unknown.
std::string_view plainSvgName(std::string_view name);

/// The style sheets of a drawing. Selectors of a name, classes and ids are known, in lists and run together
/// as in "path.cut#a"; rules with others, and those that begin with @, are passed over.
class SvgStyleSheet {
 public:
  /// Takes a sheet in behind those before.
  void add(std::string_view sheet);

  /// The style of an element within another: its attributes, then the rules for it, the more exact ones last,
  /// then its attribute "style".
  SvgStyle styleOf(const XmlElement& element, const SvgStyle& outer) const;

 private:
  struct Rule {
    std::vector<std::string> parts;  // "path", ".cut", "#a": all have to fit
    int weight = 0;
    std::size_t order = 0;
    std::string declarations;
  };

  void addRule(std::string_view selector, std::string_view declarations);
  /// Those that fit, the less exact ones first.
  std::vector<const Rule*> rulesFor(const XmlElement& element) const;

  std::map<std::string, std::vector<Rule>, std::less<>> rules_;  // by their last part
  std::size_t count_ = 0;
};

}  // namespace lorivan
