// The elements of an XML text with their attributes, and the text within some of them.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/result.h"

namespace lorivan {

/// Nothing nests deeper, and no text has more elements; what does is refused.
inline constexpr int kDeepestXml = 200;
inline constexpr std::size_t kMostXmlElements = 300'000;

struct XmlElement {
  std::string name;  // with its prefix, if any: "svg:path"
  int line = 1;      // that it begins in
  std::vector<std::pair<std::string, std::string>> attributes;
  std::vector<int> children;  // places in the tree's list
  int parent = -1;            // of the root
  std::string text;           // of elements "style", CDATA sections included; that of others is passed over

  /// Null when there is none of this name.
  const std::string* attribute(std::string_view wanted) const;
};

struct XmlTree {
  std::vector<XmlElement> elements;  // the first is the root
};

/// Comments, instructions and declarations are passed over. Of the entities, the five of XML
/// and numbers are known; others stay as they are written, and none is ever expanded. The error begins with
/// "line 7: ".
Result<XmlTree> readXml(std::string_view text);

}  // namespace lorivan
