#include "outlines/xml_tree.h"

#include <algorithm>

#include "base/numbers.h"

namespace lorivan {
namespace {

constexpr std::string_view kSection = "<![CDATA[";

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }
bool endsName(char c) { return isSpace(c) || c == '/' || c == '>' || c == '=' || c == '<'; }

/// The character of "lt" or "#x41"; 0 for one that is not known. Characters beyond ASCII matter nowhere.
char characterOf(std::string_view entity) {
  constexpr std::pair<std::string_view, char> kKnown[] = {
      {"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"quot", '"'}, {"apos", '\''}};
  for (const auto& [name, c] : kKnown)
    if (entity == name) return c;
  if (!entity.starts_with('#') || entity.size() > 8) return 0;
  const bool hexadecimal = entity.size() > 1 && (entity[1] == 'x' || entity[1] == 'X');
  int value = 0;
  for (const char c : entity.substr(hexadecimal ? 2 : 1)) {
    const std::size_t digit = std::string_view("0123456789abcdef").find(lowerCase({&c, 1}));
    if (digit >= (hexadecimal ? 16U : 10U)) return 0;
    value = std::min(1 << 20, value * (hexadecimal ? 16 : 10) + static_cast<int>(digit));
  }
  return value < 128 ? static_cast<char>(value) : '?';
}

std::string decoded(std::string_view text) {
  std::string out;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const std::size_t end = text[at] == '&' ? text.substr(at, 12).find(';') : std::string_view::npos;
    const char c = end == std::string_view::npos ? '\0' : characterOf(text.substr(at + 1, end - 1));
    out += c == 0 ? text[at] : c;
    if (c != 0) at += end;
  }
  return out;
}

class XmlReader {
 public:
  explicit XmlReader(std::string_view text) : text_(text) {}

  Result<XmlTree> run() {
    while (fault_.empty() && findTag()) takeTag();
    if (fault_.empty() && !open_.empty())
      fail(tr("the file ends within {1}", quoted(tree_.elements[open_.back()].name)));
    if (fault_.empty() && tree_.elements.empty()) fail(tr("there is no element in it"));
    if (!fault_.empty()) return unreadable(fault_);
    return std::move(tree_);
  }

 private:
  void fail(const std::string& reason) {
    if (fault_.empty()) fault_ = tr("line {1}: {2}", line_, reason);
  }

  void advance(std::size_t to) {
    line_ += static_cast<int>(std::count(text_.begin() + static_cast<std::ptrdiff_t>(at_),
                                         text_.begin() + static_cast<std::ptrdiff_t>(to), '\n'));
    at_ = to;
  }

  bool startsWith(std::string_view what) const { return text_.substr(at_).starts_with(what); }

  bool findTag() {
    const std::size_t tag = text_.find('<', at_);
    if (XmlElement* style = openStyle()) style->text += decoded(text_.substr(at_, tag - at_));
    advance(std::min(tag, text_.size()));
    return tag != std::string_view::npos;
  }

  /// The element whose text is kept, where the reader is in one.
  XmlElement* openStyle() {
    if (open_.empty()) return nullptr;
    XmlElement& element = tree_.elements[open_.back()];
    return element.name == "style" || element.name == "svg:style" ? &element : nullptr;
  }

  void takeSection() {
    const std::size_t begin = at_ + kSection.size();
    skipPast("]]>", tr("a CDATA section is not ended"));
    if (XmlElement* style = openStyle(); style != nullptr && fault_.empty())
      style->text += text_.substr(begin, at_ - 3 - begin);
  }

  void skipPast(std::string_view end, const std::string& unended) {
    const std::size_t found = text_.find(end, at_);
    if (found == std::string_view::npos) return fail(unended);
    advance(found + end.size());
  }

  void takeTag() {
    if (startsWith("<!--")) return skipPast("-->", tr("a comment is not ended"));
    if (startsWith(kSection)) return takeSection();
    if (startsWith("<?")) return skipPast("?>", tr("an instruction is not ended"));
    if (startsWith("<!")) return skipDeclaration();
    startsWith("</") ? takeEnd() : takeElement();
  }

  /// A document type may hold declarations of its own in square brackets, with texts in quotes.
  void skipDeclaration() {
    int depth = 0;
    for (std::size_t at = at_; at < text_.size(); ++at) {
      const char c = text_[at];
      if (c == '[') ++depth;
      if (c == ']') --depth;
      if (c == '"' || c == '\'') at = std::min(text_.find(c, at + 1), text_.size());
      if (c == '>' && depth <= 0) return advance(at + 1);
    }
    fail(tr("a declaration is not ended"));
  }

  std::string_view name() {
    const std::size_t begin = at_;
    while (at_ < text_.size() && !endsName(text_[at_])) ++at_;
    return text_.substr(begin, at_ - begin);
  }

  void skipSpace() {
    std::size_t to = at_;
    while (to < text_.size() && isSpace(text_[to])) ++to;
    advance(to);
  }

  void takeEnd() {
    at_ += 2;
    const std::string_view ended = name();
    skipSpace();
    if (open_.empty() || tree_.elements[open_.back()].name != ended || !startsWith(">"))
      return fail(tr("{1} ends nothing that is open", quoted(ended)));
    open_.pop_back();
    ++at_;
  }

  void takeElement() {
    XmlElement element;
    element.line = line_;
    ++at_;
    element.name = std::string(name());
    if (element.name.empty()) return fail(tr("a < without a name"));
    if (tree_.elements.size() >= kMostXmlElements)
      return fail(tr("there are more elements than can be read"));
    if (static_cast<int>(open_.size()) >= kDeepestXml) return fail(tr("elements are nested too deeply"));
    if (open_.empty() && !tree_.elements.empty()) return fail(tr("there is a second root element"));
    while (fault_.empty() && takeAttribute(element)) {
    }
    if (!fault_.empty()) return;
    const bool whole = startsWith("/>");
    if (!whole && !startsWith(">")) return fail(tr("the element {1} is not ended", quoted(element.name)));
    at_ += whole ? 2 : 1;
    const int place = static_cast<int>(tree_.elements.size());
    if (!open_.empty()) {
      element.parent = open_.back();
      tree_.elements[element.parent].children.push_back(place);
    }
    tree_.elements.push_back(std::move(element));
    if (!whole) open_.push_back(place);
  }

  bool takeAttribute(XmlElement& element) {
    skipSpace();
    const std::string key(name());
    if (key.empty()) return false;
    skipSpace();
    if (!startsWith("=")) return fail(tr("{1} has no value", quoted(key))), false;
    ++at_;
    skipSpace();
    const char quote = at_ < text_.size() ? text_[at_] : '\0';
    const std::size_t end =
        quote == '"' || quote == '\'' ? text_.find(quote, at_ + 1) : std::string_view::npos;
    if (end == std::string_view::npos) return fail(tr("the value of {1} has no quotes", quoted(key))), false;
    element.attributes.emplace_back(key, decoded(text_.substr(at_ + 1, end - at_ - 1)));
    advance(end + 1);
    return true;
  }

  std::string_view text_;
  std::size_t at_ = 0;
  int line_ = 1;
  std::string fault_;
  XmlTree tree_;
  std::vector<int> open_;
};

}  // namespace

const std::string* XmlElement::attribute(std::string_view wanted) const {
  for (const auto& [key, value] : attributes)
    if (key == wanted) return &value;
  return nullptr;
}

Result<XmlTree> readXml(std::string_view text) { return XmlReader(text).run(); }

}  // namespace lorivan
