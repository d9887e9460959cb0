#include "strands/svg_surface.h"

#include <algorithm>

#include "base/escaped_text.h"
#include "strands/flat_path.h"

namespace lorivan {
namespace {

/// The length that every growing curve says it has, and how far its dash reaches past both ends: no round cap
/// peeks out before the curve begins to grow, and nothing is missing when it is complete.
constexpr int kCurveLength = 1000, kCurveRest = 10;

constexpr std::string_view kEdges = "edges";

std::string hexColour(Colour colour) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string text = "#";
  for (const int part : {redOf(colour), greenOf(colour), blueOf(colour)}) {
    text += digits[part / 16];
    text += digits[part % 16];
  }
  return text;
}

bool endsInNumber(std::string_view name) {
  return !name.empty() && name.back() >= '0' && name.back() <= '9' &&
         name.find('-') != std::string_view::npos;
}

}  // namespace

std::string SvgSurface::head() const {
  std::string head =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" "
      "xmlns:inkscape=\"http://www.inkscape.org/namespaces/inkscape\" version=\"1.1\"";
  for (const auto& [name, value] : {std::pair{" width=\"", pageWidth()}, {" height=\"", pageHeight()}}) {
    head += name;
    appendDecimal(head, value, decimals());
    head += "mm\"";
  }
  head += " viewBox=\"0 0 ";
  appendDecimal(head, pageWidth(), decimals());
  head += ' ';
  appendDecimal(head, pageHeight(), decimals());
  head += "\">\n  <title>" + xmlText(title_) + "</title>\n";
  return source_.empty() ? head : head + "  <metadata>" + source_ + "</metadata>\n";
}

std::string SvgSurface::styleSheet() const {
  if (paints_.empty()) return {};
  std::string rules;
  for (const Paint& paint : paints_) {
    const std::string colour = hexColour(paint.colour);
    rules += "    ." + paint.className() + (paint.fills ? " { fill: " : " { fill: none; stroke: ") + colour +
             " }\n";
  }
  if (!keyframes_.empty())
    rules += "    @media (prefers-reduced-motion: no-preference) {\n" + keyframes_ + "    }\n";
  return "  <style>\n" + rules + "  </style>\n";
}

void SvgSurface::attribute(std::string_view name, double millimetres) {
  body_ += ' ';
  body_ += name;
  body_ += "=\"";
  appendDecimal(body_, millimetres, decimals());
  body_ += '"';
}

void SvgSurface::point(double x, double y) {
  millimetres(pageX(x));
  body_ += ',';
  millimetres(pageY(y));
}

void SvgSurface::clear(Colour background) {
  clearTransparent(background);
  indent();
  body_ +=
      "<rect id=\"background\" width=\"100%\" height=\"100%\" fill=\"" + hexColour(background) + "\"/>\n";
}

void SvgSurface::clearTransparent(Colour background) {
  background_ = background;
  body_.clear();
  clip_.clear();
  groups_.clear();
  paints_.clear();
}

void SvgSurface::penAttributes(const Pen& pen) {
  body_ += " fill=\"none\" stroke=\"" + hexColour(pen.colour) + '"';
  attribute("stroke-width", pen.width * scale());
  if (!pen.dotted) return;
  body_ += " stroke-dasharray=\"";
  millimetres(pen.width * scale());
  body_ += ' ';
  millimetres(2.0 * pen.width * scale());
  body_ += '"';
}

void SvgSurface::segment(PointI from, PointI to, const Pen& pen) {
  indent();
  body_ += "<line";
  attribute("x1", pageX(from.x));
  attribute("y1", pageY(from.y));
  attribute("x2", pageX(to.x));
  attribute("y2", pageY(to.y));
  penAttributes(pen);
  body_ += "/>\n";
}

void SvgSurface::circleElement(PointI centre, double radius) {
  indent();
  body_ += "<circle";
  attribute("cx", pageX(centre.x));
  attribute("cy", pageY(centre.y));
  attribute("r", radius * scale());
}

void SvgSurface::circle(PointI centre, int radius, const Pen& pen) {
  circleElement(centre, radius);
  penAttributes(pen);
  body_ += "/>\n";
}

void SvgSurface::dot(PointI centre, int diameter, Colour colour) {
  circleElement(centre, diameter / 2.0);
  body_ += " fill=\"" + hexColour(colour) + "\"/>\n";
}

void SvgSurface::pointList(std::span<const PointI> points) {
  body_ += " points=\"";
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (i > 0) body_ += ' ';
    point(points[i].x, points[i].y);
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

/// Groups of one strand, whatever else their names say, share its class.
std::string SvgSurface::paintGroup() const {
  if (groups_.empty()) return {};
  const std::string& name = groups_.back();
  return endsInNumber(name) ? "strand" + name.substr(name.rfind('-')) : name;
}

void SvgSurface::paint(bool fills, Colour colour, bool isEdge, std::string_view further) {
  std::string group = isEdge ? std::string(kEdges) : paintGroup();
  // What is laid on top outside of the strands' groups is a part of a strand all the same.
  if (!endsInNumber(group) && !isEdge)
    for (const Paint& known : paints_)
      if (known.fills == fills && known.colour == colour) {
        group = known.group;
        break;
      }
  auto found = std::ranges::find_if(
      paints_, [&](const Paint& known) { return known.group == group && known.fills == fills; });
  if (found == paints_.end() && !group.empty()) found = paints_.insert(found, {group, fills, colour});
  const bool byClass = found != paints_.end() && found->colour == colour;
  if (!byClass)
    body_ +=
        fills ? " fill=\"" + hexColour(colour) + '"' : " fill=\"none\" stroke=\"" + hexColour(colour) + '"';
  if (!byClass && further.empty()) return;
  body_ += " class=\"";
  if (byClass) body_ += found->className();
  if (byClass && !further.empty()) body_ += ' ';
  body_ += further;
  body_ += '"';
}

void SvgSurface::wideCurve(const WideCurve& curve) {
  if (curve.bezier.size() < 4) return;
  indent();
  body_ += "<path";
  paint(false, curve.colour, curve.colour == 0, motionClass_);
  body_ += " stroke-linejoin=\"round\"";
  body_ += curve.caps == CapStyle::round ? " stroke-linecap=\"round\"" : " stroke-linecap=\"butt\"";
  attribute("stroke-width", curve.width * scale());
  if (motion_.kind == SvgMotion::Kind::grow) body_ += " pathLength=\"" + std::to_string(kCurveLength) + '"';
  body_ += " d=\"";
  pathData(fewerNodes(curve));
  body_ += "\"/>\n";
}

void SvgSurface::pathData(std::span<const PointF> bezier) {
  body_ += 'M';
  for (std::size_t i = 0; i < bezier.size(); ++i) {
    if (i == 1) body_ += 'C';
    if (i > 1) body_ += ' ';
    point(bezier[i].x, bezier[i].y);
  }
}

void SvgSurface::fillPath(std::span<const std::vector<PointF>> contours, Colour colour) {
  indent();
  body_ += "<path";
  paint(true, colour);
  body_ += " d=\"";
  for (const std::vector<PointF>& contour : contours) {
    if (contour.size() < 4) continue;
    pathData(contour);
    body_ += 'Z';
  }
  body_ += "\"/>\n";
}

void SvgSurface::strokePath(std::span<const std::vector<PointF>> chains, Colour colour) {
  indent();
  body_ += "<path";
  paint(false, colour);
  attribute("stroke-width", kHairline);
  body_ += " d=\"";
  for (const std::vector<PointF>& chain : chains) {
    if (chain.size() < 4) continue;
    pathData(chain);
    if (isClosed(chain)) body_ += 'Z';
  }
  body_ += "\"/>\n";
}

void SvgSurface::setRound(double seconds, bool repeat) {
  seconds_ = seconds;
  repeat_ = repeat;
}

/// Every moment is a part of the whole round, so that all curves begin again together.
void SvgSurface::setMotion(const SvgMotion& motion) {
  motion_ = motion;
  motionClass_.clear();
  if (motion.kind == SvgMotion::Kind::none) return;
  motionClass_ = 'm';
  motionClass_ += std::to_string(++motions_);
  std::string begin, end, time;
  appendDecimal(begin, 100 * motion.begin / seconds_, 4);
  appendDecimal(end, 100 * motion.end / seconds_, 4);
  appendDecimal(time, seconds_, 3);
  const bool grows = motion.kind == SvgMotion::Kind::grow;
  keyframes_ += "      @keyframes " + motionClass_ + " { ";
  if (grows) {
    const std::string hidden = std::to_string(kCurveLength + 2 * kCurveRest),
                      dash = "{ stroke-dasharray: " + std::to_string(kCurveLength + kCurveRest) + ' ' +
                             hidden + "; stroke-dashoffset: ";
    keyframes_ += "0%, " + begin + "% " + dash + hidden + " } " + end + "%, 100% " + dash + "0 } }\n";
  } else {
    keyframes_ += "0% { visibility: hidden } " + begin + "%, 100% { visibility: visible } }\n";
  }
  keyframes_ += "      ." + motionClass_ + " { animation: " + motionClass_ + ' ' + time +
                (grows ? "s linear" : "s step-end") + (repeat_ ? " infinite }\n" : " }\n");
}

void SvgSurface::beginLayer(std::string_view name, bool hidden) {
  indent();
  body_ += "<g id=\"" + xmlText(name) + "\" inkscape:groupmode=\"layer\" inkscape:label=\"" +
           xmlText(labelOf(name)) + '"';
  if (clips_ && groups_.empty()) body_ += " clip-path=\"url(#period)\"";
  body_ += hidden ? " style=\"display:none\">\n" : ">\n";
  groups_.emplace_back(name);
}

void SvgSurface::endGroup() {
  groups_.pop_back();
  indent();
  body_ += "</g>\n";
}

void SvgSurface::beginClip(double left, double right) {
  clip_ = "  <clipPath id=\"period\"><rect x=\"";
  appendDecimal(clip_, pageX(left), decimals());
  clip_ += "\" y=\"0\" width=\"";
  appendDecimal(clip_, (right - left) * scale(), decimals());
  clip_ += "\" height=\"";
  appendDecimal(clip_, pageHeight(), decimals());
  clip_ += "\"/></clipPath>\n";
  clips_ = true;
}

std::string SvgSurface::finish() { return head() + styleSheet() + clip_ + body_ + "</svg>\n"; }

}  // namespace lorivan
