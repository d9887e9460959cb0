#include "outlines/svg_outline.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <string>

#include "base/numbers.h"
#include "outlines/svg_path.h"
#include "outlines/xml_tree.h"

namespace lorivan {
namespace {

constexpr int kMostUses = 16;                 // nested
constexpr std::size_t kMostVisits = 500'000;  // elements drawn, those of uses each time
constexpr double kPageShare = 0.999;          // of the page that a background covers

/// What elements hand on to those within them.
struct Style {
  bool filled = true, white = false, hidden = false;
};

/// The name without the prefix that some programs write; those of other namespaces stay whole, and unknown.
std::string_view plainName(std::string_view name) { return name.starts_with("svg:") ? name.substr(4) : name; }

bool isWhite(std::string_view paint) {
  std::string text = lowerCase(paint);
  std::erase(text, ' ');
  return text == "white" || text == "#fff" || text == "#ffffff" || text == "rgb(255,255,255)" ||
         text == "rgb(100%,100%,100%)";
}

void applyStyle(Style& style, std::string_view key, std::string_view value) {
  if (key == "fill") style.filled = value != "none";
  if (key == "fill") style.white = isWhite(value);
  if (key == "display" && value == "none") style.hidden = true;
  if (key == "visibility") style.hidden = style.hidden || value == "hidden" || value == "collapse";
}

/// Attributes, then the rules of the attribute "style", which weigh more.
Style styleOf(const XmlElement& element, Style style) {
  for (const auto& [key, value] : element.attributes) applyStyle(style, key, trimmed(value));
  const std::string* rules = element.attribute("style");
  std::string_view left = rules == nullptr ? std::string_view() : *rules;
  while (!left.empty()) {
    const std::string_view rule = left.substr(0, left.find(';'));
    left.remove_prefix(std::min(left.size(), rule.size() + 1));
    if (const std::size_t colon = rule.find(':'); colon != std::string_view::npos)
      applyStyle(style, trimmed(rule.substr(0, colon)), trimmed(rule.substr(colon + 1)));
  }
  return style;
}

class SvgReader {
 public:
  explicit SvgReader(XmlTree tree) : tree_(std::move(tree)), pen_(drawing_) {
    for (std::size_t i = 0; i < tree_.elements.size(); ++i)
      if (const std::string* id = tree_.elements[i].attribute("id")) byId_.emplace(*id, static_cast<int>(i));
  }

  Result<Drawing> run() {
    const XmlElement& root = tree_.elements.front();
    if (plainName(root.name) != "svg") return unreadable("line 1: it is no SVG drawing");
    takePage(root);
    if (const Status drawn = children(root, {}, styleOf(root, {}), 0); !drawn) return drawn.error();
    if (texts_) drawing_.notes.push_back(tr("texts were left out: turn them into paths first"));
    if (pictures_) drawing_.notes.push_back(tr("pictures in it were left out"));
    return std::move(drawing_);
  }

 private:
  Error at(const XmlElement& element, const std::string& reason) const {
    return unreadable("line {1}: {2}", element.line, reason);
  }

  void takePage(const XmlElement& root) {
    page_ = {};
    if (const std::string* box = root.attribute("viewBox")) {
      SvgNumbers numbers(*box);
      for (double& value : page_) value = numbers.next().value_or(0);
    } else {
      page_[2] = length(root, "width", 0).value_or(0);
      page_[3] = length(root, "height", 0).value_or(0);
    }
  }

  static std::optional<double> length(const XmlElement& element, std::string_view key, double whole) {
    const std::string* text = element.attribute(key);
    return text == nullptr ? std::nullopt : svgLength(*text, whole);
  }
  /// An attribute of a shape; a wrong one counts as 0, as one that is missing.
  double across(const XmlElement& e, std::string_view key) const {
    return length(e, key, page_[2]).value_or(0);
  }
  double down(const XmlElement& e, std::string_view key) const {
    return length(e, key, page_[3]).value_or(0);
  }

  Status children(const XmlElement& element, const Affine& place, const Style& style, int uses) {
    for (const int child : element.children)
      if (const Status drawn = visit(tree_.elements[static_cast<std::size_t>(child)], place, style, uses);
          !drawn)
        return drawn;
    return {};
  }

  Status visit(const XmlElement& element, Affine place, const Style& outer, int uses) {
    const Style style = styleOf(element, outer);
    if (style.hidden) return {};
    if (++visits_ > kMostVisits) return at(element, tr("the drawing uses too many elements"));
    if (const std::string* text = element.attribute("transform")) {
      const auto own = svgTransform(*text);
      if (!own) return at(element, own.error().message);
      place = place.after(*own);
    }
    const std::string_view name = plainName(element.name);
    if (name == "g" || name == "a" || name == "switch") return children(element, place, style, uses);
    if (name == "svg")
      return children(element, place.after({1, 0, 0, 1, across(element, "x"), down(element, "y")}), style,
                      uses);
    if (name == "use") return use(element, place, style, uses);
    texts_ |= name == "text";
    pictures_ |= name == "image";
    pen_.setTransform(place);
    const Status drawn = shape(element, name, style, place);
    if (!drawn) return at(element, drawn.error().message);
    if (pen_.tooMany()) return at(element, tr("the drawing has too many curves"));
    return {};
  }

  Status use(const XmlElement& element, const Affine& place, const Style& style, int uses) {
    const std::string* link = element.attribute("href");
    if (link == nullptr) link = element.attribute("xlink:href");
    const auto found = link != nullptr && link->starts_with('#') ? byId_.find(link->substr(1)) : byId_.end();
    if (found == byId_.end()) return {};
    if (uses >= kMostUses) return at(element, tr("uses are nested too deeply"));
    const XmlElement& used = tree_.elements[static_cast<std::size_t>(found->second)];
    const Affine moved = place.after({1, 0, 0, 1, across(element, "x"), down(element, "y")});
    if (plainName(used.name) == "symbol") return children(used, moved, styleOf(used, style), uses + 1);
    return visit(used, moved, style, uses + 1);
  }

  Status shape(const XmlElement& e, std::string_view name, const Style& style, const Affine& place) {
    if (name == "path") {
      const std::string* data = e.attribute("d");
      return data == nullptr ? Status() : drawSvgPath(pen_, *data, style.filled);
    }
    if (name == "rect" && !(style.white && coversPage(e, place))) drawRect(e);
    if (name == "circle") drawEllipse(e, across(e, "r"), across(e, "r"));
    if (name == "ellipse") drawEllipse(e, across(e, "rx"), down(e, "ry"));
    if (name == "line") {
      pen_.moveTo({across(e, "x1"), down(e, "y1")});
      pen_.lineTo({across(e, "x2"), down(e, "y2")});
      pen_.finish();
    }
    if (name == "polygon") return drawPoints(e, true);
    if (name == "polyline") return drawPoints(e, style.filled);
    return {};
  }

  bool coversPage(const XmlElement& e, const Affine& place) const {
    const double x = across(e, "x"), y = down(e, "y");
    const Spot a = place({x, y}), b = place({x + across(e, "width"), y + down(e, "height")});
    const double slack = (1 - kPageShare) * std::max(page_[2], page_[3]);
    return page_[2] > 0 && std::min(a.x, b.x) <= page_[0] + slack && std::min(a.y, b.y) <= page_[1] + slack &&
           std::max(a.x, b.x) >= page_[0] + page_[2] - slack &&
           std::max(a.y, b.y) >= page_[1] + page_[3] - slack;
  }

  void drawRect(const XmlElement& e) {
    const double x = across(e, "x"), y = down(e, "y"), w = across(e, "width"), h = down(e, "height");
    if (!(w > 0 && h > 0)) return;
    const auto asked = [&](std::string_view key, double whole) { return length(e, key, whole); };
    const double rx = asked("rx", page_[2]).value_or(asked("ry", page_[3]).value_or(0));
    const double ry = asked("ry", page_[3]).value_or(rx);
    const double across = std::clamp(rx, 0.0, w / 2), up = std::clamp(ry, 0.0, h / 2);
    const Spot corners[] = {{x + w - across, y + up},
                            {x + w - across, y + h - up},
                            {x + across, y + h - up},
                            {x + across, y + up}};
    if (across <= 0 || up <= 0) {
      pen_.moveTo({x, y});
      for (const Spot p : {Spot{x + w, y}, Spot{x + w, y + h}, Spot{x, y + h}}) pen_.lineTo(p);
      return pen_.close();
    }
    pen_.moveTo({x + across, y});
    for (int k = 0; k < 4; ++k) {
      const double from = (k - 1) * kTwoPi / 4;
      pen_.lineTo(corners[k] + Spot{std::cos(from) * across, std::sin(from) * up});
      pen_.arc(corners[k], {across, 0}, {0, up}, from, kTwoPi / 4);
    }
    pen_.close();
  }

  void drawEllipse(const XmlElement& e, double rx, double ry) {
    if (!(rx > 0 && ry > 0)) return;
    pen_.moveTo({across(e, "cx") + rx, down(e, "cy")});
    pen_.arc({across(e, "cx"), down(e, "cy")}, {rx, 0}, {0, ry}, 0, kTwoPi);
    pen_.finish(true);
  }

  Status drawPoints(const XmlElement& e, bool closed) {
    const std::string* text = e.attribute("points");
    SvgNumbers numbers(text == nullptr ? std::string_view() : *text);
    for (bool first = true; !numbers.atEnd(); first = false) {
      const auto x = numbers.next(), y = x ? numbers.next() : std::nullopt;
      if (!y) return unreadable("points cannot be read at {1}", quoted(numbers.rest()));
      first ? pen_.moveTo({*x, *y}) : pen_.lineTo({*x, *y});
    }
    pen_.finish(closed);
    return {};
  }

  XmlTree tree_;
  Drawing drawing_;
  ChainPen pen_;
  std::map<std::string, int> byId_;
  std::array<double, 4> page_{};  // left, top, width, height
  std::size_t visits_ = 0;
  bool texts_ = false, pictures_ = false;
};

}  // namespace

Result<Drawing> readSvgOutline(std::string_view text) {
  if (text.starts_with("\x1f\x8b")) return unreadable("line 1: it is packed; save it as a plain SVG");
  Result<XmlTree> tree = readXml(withoutMark(text));
  if (!tree) return tree.error();
  return SvgReader(std::move(*tree)).run();
}

}  // namespace lorivan
