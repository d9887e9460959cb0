#include "outlines/svg_path.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include "base/numbers.h"

namespace lorivan {
namespace {

constexpr double kMostNumber = 1e9;

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

struct EllipseArc {
  Spot radii;
  double turned = 0;  // degrees
  bool large = false, sweep = false;
};

/// From end points to a centre, by the formulas of the SVG standard's notes on arcs; radii that do not reach
/// are enlarged.
void drawArc(ChainPen& pen, EllipseArc arc, Spot to) {
  const Spot from = pen.at();
  double rx = std::fabs(arc.radii.x), ry = std::fabs(arc.radii.y);
  const Spot half = 0.5 * (from - to);
  if (length(half) == 0) return;
  if (rx < 1e-9 || ry < 1e-9) return pen.lineTo(to);
  const double angle = arc.turned * kPi / 180;
  const Spot across{std::cos(angle), std::sin(angle)}, up{-across.y, across.x};
  const Spot p{dot(half, across), dot(half, up)};
  const double reach = std::hypot(p.x / rx, p.y / ry);
  if (reach > 1) rx *= reach, ry *= reach;
  const double squared = p.x * p.x / (rx * rx) + p.y * p.y / (ry * ry);
  const double away = std::sqrt(std::max(0.0, 1 / squared - 1)) * (arc.large == arc.sweep ? -1 : 1);
  const Spot c{away * rx * p.y / ry, -away * ry * p.x / rx};
  const double begin = std::atan2((p.y - c.y) / ry, (p.x - c.x) / rx);
  double sweep = std::atan2((-p.y - c.y) / ry, (-p.x - c.x) / rx) - begin;
  if (arc.sweep && sweep <= 0) sweep += kTwoPi;
  if (!arc.sweep && sweep >= 0) sweep -= kTwoPi;
  const Spot centre = 0.5 * (from + to) + c.x * across + c.y * up;
  pen.arc(centre, rx * across, ry * up, begin, sweep);
}

/// Walks along path data.
class PathReader {
 public:
  PathReader(ChainPen& pen, std::string_view data, bool filled) : pen_(pen), in_(data), filled_(filled) {}

  Status run() {
    pen_.moveTo({});
    while (!in_.atEnd()) {
      if (const char letter = in_.letter(); letter != 0)
        command_ = letter;
      else if (upper(command_) == 'Z' || command_ == 0)
        return fault();
      if (!started_ && upper(command_) != 'M') return unreadable("a path does not begin with M");
      if (!step()) return fault();
      if (pen_.tooMany()) return unreadable("the drawing has too many curves");
    }
    pen_.finish(filled_);
    return {};
  }

 private:
  Error fault() const {
    const std::string_view rest = in_.rest();
    return rest.empty() ? unreadable("a path ends within a command")
                        : unreadable("a path cannot be read at {1}", quoted(rest));
  }

  bool number(double& out) {
    const auto value = in_.next();
    out = value.value_or(0);
    return value.has_value();
  }
  /// A place, from the current point on for small letters.
  bool spot(Spot& out) {
    if (!number(out.x) || !number(out.y)) return false;
    if (command_ >= 'a') out = out + pen_.at();
    return true;
  }

  bool step() {
    const char command = upper(command_);
    const bool afterCubic = before_ == 'C' || before_ == 'S',
               afterQuadratic = before_ == 'Q' || before_ == 'T';
    before_ = command;
    switch (command) {
      case 'M':
        return move();
      case 'L':
      case 'H':
      case 'V':
        return line(command);
      case 'C':
      case 'S':
        return cubic(command == 'S', afterCubic);
      case 'Q':
      case 'T':
        return quadratic(command == 'T', afterQuadratic);
      case 'A':
        return arc();
      case 'Z':
        pen_.close();
        return true;
      default:
        return false;
    }
  }

  /// Pairs behind the first one are lines.
  bool move() {
    Spot to;
    if (!spot(to)) return false;
    pen_.finish(filled_);
    pen_.moveTo(to);
    started_ = true;
    command_ = command_ == 'M' ? 'L' : 'l';
    return true;
  }

  bool line(char command) {
    Spot to = pen_.at();
    if (command == 'L') {
      if (!spot(to)) return false;
    } else {
      double& part = command == 'H' ? to.x : to.y;
      const double before = part;
      if (!number(part)) return false;
      if (command_ >= 'a') part += before;
    }
    pen_.lineTo(to);
    return true;
  }

  bool cubic(bool smooth, bool mirrored) {
    Spot c1 = mirrored ? 2 * pen_.at() - control_ : pen_.at(), c2, to;
    if ((!smooth && !spot(c1)) || !spot(c2) || !spot(to)) return false;
    control_ = c2;
    pen_.cubicTo(c1, c2, to);
    return true;
  }

  bool quadratic(bool smooth, bool mirrored) {
    Spot c = mirrored ? 2 * pen_.at() - control_ : pen_.at(), to;
    if ((!smooth && !spot(c)) || !spot(to)) return false;
    control_ = c;
    pen_.cubicTo(pen_.at() + (2.0 / 3) * (c - pen_.at()), to + (2.0 / 3) * (c - to), to);
    return true;
  }

  bool arc() {
    EllipseArc arc;
    Spot to;
    if (!number(arc.radii.x) || !number(arc.radii.y) || !number(arc.turned)) return false;
    const auto large = in_.flag(), sweep = large ? in_.flag() : std::nullopt;
    if (!sweep || !spot(to)) return false;
    arc.large = *large;
    arc.sweep = *sweep;
    drawArc(pen_, arc, to);
    return true;
  }

  ChainPen& pen_;
  SvgNumbers in_;
  bool filled_, started_ = false;
  char command_ = 0, before_ = 0;
  Spot control_;  // of the curve before
};

/// One function of a transform, by its name and values.
std::optional<Affine> transformOf(std::string_view name, const std::vector<double>& v) {
  const auto angle = [&] { return v[0] * kPi / 180; };
  if (name == "matrix" && v.size() == 6) return Affine{v[0], v[1], v[2], v[3], v[4], v[5]};
  if (name == "translate" && (v.size() == 1 || v.size() == 2))
    return Affine{1, 0, 0, 1, v[0], v.size() == 2 ? v[1] : 0};
  if (name == "scale" && (v.size() == 1 || v.size() == 2)) return Affine{v[0], 0, 0, v.back(), 0, 0};
  if (name == "skewX" && v.size() == 1) return Affine{1, 0, std::tan(angle()), 1, 0, 0};
  if (name == "skewY" && v.size() == 1) return Affine{1, std::tan(angle()), 0, 1, 0, 0};
  if (name != "rotate" || (v.size() != 1 && v.size() != 3)) return {};
  const double c = std::cos(angle()), s = std::sin(angle());
  const Affine turn{c, s, -s, c, 0, 0};
  if (v.size() == 1) return turn;
  return Affine{1, 0, 0, 1, v[1], v[2]}.after(turn).after({1, 0, 0, 1, -v[1], -v[2]});
}

}  // namespace

void SvgNumbers::skipSeparators() {
  while (at_ < text_.size() && std::string_view(" \t\r\n\f,").find(text_[at_]) != std::string_view::npos)
    ++at_;
}

std::optional<double> SvgNumbers::next() {
  skipSeparators();
  const std::size_t begin = at_ + (rest().starts_with('+') ? 1 : 0);
  const std::size_t digit = begin + (text_.substr(begin).starts_with('-') && begin == at_ ? 1 : 0);
  if (digit >= text_.size() || !(isDigit(text_[digit]) || text_[digit] == '.')) return {};
  double value = 0;
  const auto read = std::from_chars(text_.data() + begin, text_.data() + text_.size(), value);
  if (read.ec != std::errc() || !(std::fabs(value) <= kMostNumber)) return {};
  at_ = static_cast<std::size_t>(read.ptr - text_.data());
  return value;
}

std::optional<bool> SvgNumbers::flag() {
  skipSeparators();
  if (!rest().starts_with('0') && !rest().starts_with('1')) return {};
  return text_[at_++] == '1';
}

char SvgNumbers::letter() {
  skipSeparators();
  return at_ < text_.size() && isLetter(text_[at_]) ? text_[at_++] : '\0';
}

bool SvgNumbers::atEnd() {
  skipSeparators();
  return at_ >= text_.size();
}

Status drawSvgPath(ChainPen& pen, std::string_view data, bool filled) {
  return PathReader(pen, data, filled).run();
}

Result<Affine> svgTransform(std::string_view text) {
  constexpr std::string_view kBlank = " \t\r\n,";
  Affine all;
  while (!(text = text.substr(std::min(text.find_first_not_of(kBlank), text.size()))).empty()) {
    const std::size_t open = text.find('('), close = text.find(')');
    const Error fault = unreadable("a transform cannot be read at {1}", quoted(text));
    if (open > close || close == std::string_view::npos) return fault;
    const std::string_view name = text.substr(0, text.substr(0, open).find_last_not_of(" \t\r\n") + 1);
    SvgNumbers numbers(text.substr(open + 1, close - open - 1));
    std::vector<double> values;
    while (const auto value = numbers.next()) values.push_back(*value);
    const auto one = numbers.atEnd() ? transformOf(name, values) : std::nullopt;
    if (!one) return fault;
    all = all.after(*one);
    text.remove_prefix(close + 1);
  }
  return all;
}

std::optional<double> svgLength(std::string_view text, double whole) {
  SvgNumbers numbers(text);
  const auto value = numbers.next();
  if (!value) return {};
  const std::string_view unit = trimmed(numbers.rest());
  if (unit == "%") return *value * whole / 100;
  constexpr std::pair<std::string_view, double> kUnits[] = {{"", 1},           {"px", 1},  {"mm", 96 / 25.4},
                                                            {"cm", 96 / 2.54}, {"in", 96}, {"pt", 96.0 / 72},
                                                            {"pc", 16},        {"em", 16}};
  for (const auto& [name, pixels] : kUnits)
    if (unit == name) return *value * pixels;
  return {};
}

}  // namespace lorivan
