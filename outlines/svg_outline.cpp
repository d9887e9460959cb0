#include "outlines/svg_outline.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <string>

#include "base/numbers.h"
#include "outlines/svg_path.h"
#include "outlines/svg_style.h"
#include "outlines/xml_tree.h"

namespace lorivan {
namespace {

constexpr int kMostUses = 16;                 // nested
constexpr std::size_t kMostVisits = 500'000;  // elements looked at, those of uses each time
constexpr std::size_t kBytesOfVisit = 500;    // of attributes: longer elements count as several
constexpr double kPageShare = 0.999;          // of the page that a background covers

/// How what lies in a view box is laid into a place of this size; in its own units where there is none.
Affine viewOf(const XmlElement& element, double width, double height) {
  const std::string* box = element.attribute("viewBox");
  if (box == nullptr) return {};
  SvgNumbers numbers(*box);
  double view[4] = {};  // left, top, width, height
  for (double& value : view) value = numbers.next().value_or(0);
  if (!(view[2] > 0 && view[3] > 0 && width > 0 && height > 0)) return {};
  const std::string* aspect = element.attribute("preserveAspectRatio");
  const std::string_view asked = aspect == nullptr ? std::string_view() : trimmed(*aspect);
  const auto has = [&](std::string_view word) { return asked.find(word) != std::string_view::npos; };
  double across = width / view[2], down = height / view[3];
  if (!asked.starts_with("none"))
    across = down = has("slice") ? std::max(across, down) : std::min(across, down);
  const double left = has("xMin") ? 0 : has("xMax") ? 1 : 0.5, top = has("YMin") ? 0 : has("YMax") ? 1 : 0.5;
  return {across,
          0,
          0,
          down,
          left * (width - across * view[2]) - across * view[0],
          top * (height - down * view[3]) - down * view[1]};
}

class SvgReader {
 public:
  explicit SvgReader(XmlTree tree) : tree_(std::move(tree)), pen_(drawing_) {
    for (std::size_t i = 0; i < tree_.elements.size(); ++i) {
      const XmlElement& element = tree_.elements[i];
      if (const std::string* id = element.attribute("id")) byId_.emplace(*id, static_cast<int>(i));
      if (plainSvgName(element.name) == "style") sheet_.add(element.text);
    }
  }

  Result<Drawing> run() {
    const XmlElement& root = tree_.elements.front();
    if (plainSvgName(root.name) != "svg") return unreadable("line 1: it is no SVG drawing");
    takePage(root);
    if (const Status drawn = children(root, {}, sheet_.styleOf(root, {}), 0); !drawn) return drawn.error();
    if (const Status held = rulesHeld(root); !held) return held.error();
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

  /// Refuses what would take too long. A file that shows no element twice has less than the most visits.
  Status counted(const XmlElement& element) {
    constexpr std::size_t kMarks = 4;  // a blank, an equals sign and two quotes
    std::size_t bytes = 0;
    for (const auto& [key, value] : element.attributes) bytes += key.size() + value.size() + kMarks;
    visits_ += 1 + bytes / kBytesOfVisit;
    if (visits_ > kMostVisits) return at(element, tr("the drawing uses too many elements"));
    return rulesHeld(element);
  }

  Status rulesHeld(const XmlElement& element) const {
    return sheet_.tooMany() ? Status(at(element, tr("too many style rules for so many elements"))) : Status();
  }

  Status children(const XmlElement& element, const Affine& place, const SvgStyle& style, int uses) {
    for (const int child : element.children)
      if (const Status drawn = visit(tree_.elements[child], place, style, uses); !drawn) return drawn;
    return {};
  }

  Status visit(const XmlElement& element, Affine place, const SvgStyle& outer, int uses) {
    if (const Status held = counted(element); !held) return held;
    const SvgStyle style = sheet_.styleOf(element, outer);
    if (style.gone) return {};
    if (const std::string* text = element.attribute("transform")) {
      const auto own = svgTransform(*text);
      if (!own) return at(element, own.error().message);
      place = place.after(*own);
    }
    const std::string_view name = plainSvgName(element.name);
    if (name == "g" || name == "a" || name == "switch") return children(element, place, style, uses);
    if (name == "svg") return viewport(element, element, place, style, uses);
    if (name == "use") return use(element, place, style, uses);
    if (style.hidden || (!style.filled && style.withoutStroke)) return {};
    texts_ |= name == "text";
    pictures_ |= name == "image";
    pen_.setTransform(place);
    const Status drawn = shape(element, name, style, place);
    if (!drawn) return at(element, drawn.error().message);
    if (pen_.tooMany()) return at(element, tr("the drawing has too many curves"));
    return {};
  }

  Status use(const XmlElement& element, const Affine& place, const SvgStyle& style, int uses) {
    const std::string* link = element.attribute("href");
    if (link == nullptr) link = element.attribute("xlink:href");
    const auto found = link != nullptr && link->starts_with('#') ? byId_.find(link->substr(1)) : byId_.end();
    if (found == byId_.end()) return {};
    if (uses >= kMostUses) return at(element, tr("uses are nested too deeply"));
    const XmlElement& used = tree_.elements[found->second];
    const Affine moved = place.after({1, 0, 0, 1, across(element, "x"), down(element, "y")});
    const std::string_view name = plainSvgName(used.name);
    if (name != "symbol" && name != "svg") return visit(used, moved, style, uses + 1);
    if (const Status held = counted(used); !held) return held;
    const SvgStyle own = sheet_.styleOf(used, style);
    return own.gone ? Status() : viewport(used, element, moved, own, uses + 1);
  }

  /// What lies in a symbol or a drawing of its own, as large as who shows it asks, or else itself.
  Status viewport(const XmlElement& element, const XmlElement& shown, const Affine& place,
                  const SvgStyle& style, int uses) {
    const auto asked = [&](std::string_view key, double whole) {
      const auto size = length(shown, key, whole);
      return size ? *size : length(element, key, whole).value_or(whole);
    };
    const Affine moved = place.after({1, 0, 0, 1, across(element, "x"), down(element, "y")});
    return children(element,
                    moved.after(viewOf(element, asked("width", page_[2]), asked("height", page_[3]))), style,
                    uses);
  }

  Status shape(const XmlElement& e, std::string_view name, const SvgStyle& style, const Affine& place) {
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
  SvgStyleSheet sheet_{tree_};
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
