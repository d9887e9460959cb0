#include "strands/svg_surface.h"

#include <array>
#include <charconv>

namespace lorivan {
namespace {

/// The length that every growing curve says it has, and how far its dash reaches past both ends: no round cap
/// peeks out before the curve begins to grow, and nothing is missing when it is complete.
constexpr int kCurveLength = 1000, kCurveRest = 10;

/// Without trailing zeros and without "-0".
void appendDecimal(std::string& out, double value, int decimals) {
  std::array<char, 64> text{};
  char* end =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals).ptr;
  while (end[-1] == '0') --end;
  if (end[-1] == '.') --end;
  const std::string_view digits(text.data(), static_cast<std::size_t>(end - text.data()));
  out += digits == "-0" ? "0" : digits;
}

std::string hexColour(Colour colour) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string text = "#";
  for (const int part : {redOf(colour), greenOf(colour), blueOf(colour)}) {
    text += digits[static_cast<std::size_t>(part / 16)];
    text += digits[static_cast<std::size_t>(part % 16)];
  }
  return text;
}

std::string escaped(std::string_view text) {
  std::string safe;
  for (const char c : text) switch (c) {
      case '&':
        safe += "&amp;";
        break;
      case '<':
        safe += "&lt;";
        break;
      case '>':
        safe += "&gt;";
        break;
      case '"':
        safe += "&quot;";
        break;
      default:
        if (static_cast<unsigned char>(c) >= 0x20) safe += c;
    }
  return safe;
}

}  // namespace

SvgSurface::SvgSurface(int width, int height, double millimetres, const std::string& title)
    : width_(width), height_(height), scale_(millimetres / width), decimals_(millimetres < 20 ? 6 : 3) {
  head_ =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\"";
  const double high = height * scale_;
  for (const auto& [name, value] : {std::pair{" width=\"", millimetres}, {" height=\"", high}}) {
    head_ += name;
    appendDecimal(head_, value, decimals_);
    head_ += "mm\"";
  }
  head_ += " viewBox=\"0 0 ";
  appendDecimal(head_, millimetres, decimals_);
  head_ += ' ';
  appendDecimal(head_, high, decimals_);
  head_ += "\">\n  <title>" + escaped(title) + "</title>\n";
}

void SvgSurface::number(double units) { appendDecimal(body_, units * scale_, decimals_); }

void SvgSurface::attribute(std::string_view name, double units) {
  body_ += ' ';
  body_ += name;
  body_ += "=\"";
  number(units);
  body_ += '"';
}

void SvgSurface::indent() { body_.append(2 * static_cast<std::size_t>(depth_), ' '); }

void SvgSurface::clear(Colour background) {
  clearTransparent(background);
  indent();
  body_ +=
      "<rect id=\"background\" width=\"100%\" height=\"100%\" fill=\"" + hexColour(background) + "\"/>\n";
}

void SvgSurface::clearTransparent(Colour background) {
  background_ = background;
  body_.clear();
  depth_ = 1;
}

void SvgSurface::penAttributes(const Pen& pen) {
  body_ += " fill=\"none\" stroke=\"" + hexColour(pen.colour) + '"';
  attribute("stroke-width", pen.width);
  if (!pen.dotted) return;
  body_ += " stroke-dasharray=\"";
  number(pen.width);
  body_ += ' ';
  number(2.0 * pen.width);
  body_ += '"';
}

void SvgSurface::segment(PointI from, PointI to, const Pen& pen) {
  indent();
  body_ += "<line";
  attribute("x1", from.x);
  attribute("y1", from.y);
  attribute("x2", to.x);
  attribute("y2", to.y);
  penAttributes(pen);
  body_ += "/>\n";
}

void SvgSurface::circle(PointI centre, int radius, const Pen& pen) {
  indent();
  body_ += "<circle";
  attribute("cx", centre.x);
  attribute("cy", centre.y);
  attribute("r", radius);
  penAttributes(pen);
  body_ += "/>\n";
}

void SvgSurface::dot(PointI centre, int diameter, Colour colour) {
  indent();
  body_ += "<circle";
  attribute("cx", centre.x);
  attribute("cy", centre.y);
  attribute("r", diameter / 2.0);
  body_ += " fill=\"" + hexColour(colour) + "\"/>\n";
}

void SvgSurface::pointList(std::span<const PointI> points) {
  body_ += " points=\"";
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (i > 0) body_ += ' ';
    number(points[i].x);
    body_ += ',';
    number(points[i].y);
  }
  body_ += '"';
}

void SvgSurface::polygonOutline(std::span<const PointI> points, const Pen& pen) {
  indent();
  body_ += "<polygon";
  pointList(points);
  penAttributes(pen);
  body_ += "/>\n";
}

void SvgSurface::polyline(std::span<const PointI> points, const Pen& pen) {
  indent();
  body_ += "<polyline";
  pointList(points);
  penAttributes(pen);
  body_ += "/>\n";
}

void SvgSurface::fillPolygon(std::span<const PointI> points, Colour colour) {
  indent();
  body_ += "<polygon";
  pointList(points);
  body_ += " fill=\"" + hexColour(colour) + "\"/>\n";
}

void SvgSurface::wideCurve(const WideCurve& curve) {
  if (curve.bezier.size() < 4) return;
  indent();
  body_ += "<path fill=\"none\" stroke=\"" + hexColour(curve.colour) + "\" stroke-linejoin=\"round\"";
  body_ += curve.caps == CapStyle::round ? " stroke-linecap=\"round\"" : " stroke-linecap=\"butt\"";
  attribute("stroke-width", curve.width);
  body_ += " d=\"";
  pathData(curve.bezier);
  body_ += '"';
  animation();
}

void SvgSurface::pathData(std::span<const PointF> bezier) {
  body_ += 'M';
  for (std::size_t i = 0; i < bezier.size(); ++i) {
    if (i == 1) body_ += 'C';
    if (i > 1) body_ += ' ';
    number(bezier[i].x);
    body_ += ',';
    number(bezier[i].y);
  }
}

void SvgSurface::fillPath(std::span<const std::vector<PointF>> contours, Colour colour) {
  indent();
  body_ += "<path fill=\"" + hexColour(colour) + "\" d=\"";
  for (const std::vector<PointF>& contour : contours) {
    if (contour.size() < 4) continue;
    pathData(contour);
    body_ += 'Z';
  }
  body_ += "\"/>\n";
}

void SvgSurface::setRound(double seconds, bool repeat) {
  seconds_ = seconds;
  repeat_ = repeat;
}

void SvgSurface::animationTimes(double first, double second) {
  body_ += " keyTimes=\"0;";
  appendDecimal(body_, first / seconds_, 6);
  if (motion_.kind == SvgMotion::Kind::grow) {
    body_ += ';';
    appendDecimal(body_, second / seconds_, 6);
    body_ += ";1";
  }
  body_ += "\" dur=\"";
  appendDecimal(body_, seconds_, 3);
  body_ += repeat_ ? "s\" repeatCount=\"indefinite\"/>" : "s\"/>";
}

/// Ends the element that was begun, with its motion inside.
void SvgSurface::animation() {
  if (motion_.kind == SvgMotion::Kind::none) {
    body_ += "/>\n";
  } else if (motion_.kind == SvgMotion::Kind::appear) {
    body_ += "><animate attributeName=\"visibility\" calcMode=\"discrete\" values=\"hidden;visible\"";
    animationTimes(motion_.begin, motion_.begin);
    body_ += "</path>\n";
  } else {
    const std::string dash = std::to_string(kCurveLength + kCurveRest),
                      hidden = std::to_string(kCurveLength + 2 * kCurveRest);
    body_ += " pathLength=\"" + std::to_string(kCurveLength) +
             "\"><set attributeName=\"stroke-dasharray\" to=\"" + dash + ' ' + hidden +
             "\"/><animate attributeName=\"stroke-dashoffset\" values=\"" + hidden + ';' + hidden + ";0;0\"";
    animationTimes(motion_.begin, motion_.end);
    body_ += "</path>\n";
  }
}

void SvgSurface::beginGroup(std::string_view name) {
  indent();
  body_ += "<g id=\"" + escaped(name) + "\">\n";
  ++depth_;
}

void SvgSurface::endGroup() {
  --depth_;
  indent();
  body_ += "</g>\n";
}

std::string SvgSurface::finish() { return head_ + body_ + "</svg>\n"; }

}  // namespace lorivan
