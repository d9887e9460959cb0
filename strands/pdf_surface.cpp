#include "strands/pdf_surface.h"

#include <algorithm>
#include <cmath>

#include "base/escaped_text.h"
#include "strands/flat_path.h"

namespace lorivan {
namespace {

constexpr double kPointsPerMillimetre = 72 / 25.4;  // points in a millimetre
constexpr double kLargestPage = 14400;   // readers take no larger pages; their unit can be larger, though
constexpr double kArc = 0.552284749831;  // control points of a quarter circle, by its radius
constexpr int kFirstLayer = 7;           // object number
constexpr std::string_view kMaker = "Lorivan";

/// A literal string; what is not ASCII becomes a question mark.
std::string pdfText(std::string_view text) {
  std::string literal = "(";
  for (const char c : text) {
    if (c == '(' || c == ')' || c == '\\') literal += '\\';
    literal += c >= 0x20 && c < 0x7F ? c : '?';
  }
  return literal + ')';
}

std::string reference(std::size_t object) { return std::to_string(object) + " 0 R"; }

std::string stream(std::string_view entries, const std::string& data) {
  return "<< " + std::string(entries) + "/Length " + std::to_string(data.size()) + " >>\nstream\n" + data +
         "\nendstream";
}

/// Numbers the objects from 1 on and tells where each begins.
std::string pdfFile(const std::vector<std::string>& objects, std::string_view trailer) {
  std::string file = "%PDF-1.6\n%\xE2\xE3\xCF\xD3\n", table;
  for (std::size_t i = 0; i < objects.size(); ++i) {
    const std::string offset = std::to_string(file.size());
    table += std::string(10 - offset.size(), '0') + offset + " 00000 n \n";
    file += std::to_string(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
  }
  const std::string size = std::to_string(objects.size() + 1), start = std::to_string(file.size());
  return file + "xref\n0 " + size + "\n0000000000 65535 f \n" + table + "trailer\n<< /Size " + size + ' ' +
         std::string(trailer) + " >>\nstartxref\n" + start + "\n%%EOF\n";
}

}  // namespace

void PdfSurface::number(double value) {
  appendDecimal(body_, value, decimals());
  body_ += ' ';
}

void PdfSurface::numbers(std::initializer_list<double> values, std::string_view operation) {
  for (const double value : values) number(value);
  word(operation);
}

void PdfSurface::point(double x, double y, std::string_view operation) {
  numbers({pageX(x), pageY(y)}, operation);
}

void PdfSurface::colour(Colour colour, bool fills) {
  for (const int part : {redOf(colour), greenOf(colour), blueOf(colour)}) {
    appendDecimal(body_, part / 255.0, 4);
    body_ += ' ';
  }
  word(fills ? "rg" : "RG");
}

void PdfSurface::pen(const Pen& pen) {
  colour(pen.colour, false);
  const double width = pen.width * scale();
  numbers({width}, "w");
  body_ += '[';
  if (pen.dotted)
    numbers({width, 2 * width}, "] 0 d");
  else
    word("] 0 d");
  word("0 J 0 j");
}

void PdfSurface::line(std::span<const PointI> points) {
  for (std::size_t i = 0; i < points.size(); ++i) point(points[i].x, points[i].y, i == 0 ? "m" : "l");
}

void PdfSurface::chain(std::span<const PointF> bezier) {
  point(bezier[0].x, bezier[0].y, "m");
  for (std::size_t i = 1; i + 2 < bezier.size(); i += 3)
    numbers({pageX(bezier[i].x), pageY(bezier[i].y), pageX(bezier[i + 1].x), pageY(bezier[i + 1].y),
             pageX(bezier[i + 2].x), pageY(bezier[i + 2].y)},
            "c");
}

void PdfSurface::circlePath(PointI centre, double radius) {
  const double x = pageX(centre.x), y = pageY(centre.y), r = radius * scale(), k = r * kArc;
  numbers({x + r, y}, "m");
  numbers({x + r, y + k, x + k, y + r, x, y + r}, "c");
  numbers({x - k, y + r, x - r, y + k, x - r, y}, "c");
  numbers({x - r, y - k, x - k, y - r, x, y - r}, "c");
  numbers({x + k, y - r, x + r, y - k, x + r, y}, "c");
  word("h");
}

void PdfSurface::clear(Colour background) {
  clearTransparent(background);
  colour(background, true);
  numbers({0, 0, pageWidth(), pageHeight()}, "re");
  word("f");
}

void PdfSurface::clearTransparent(Colour background) {
  background_ = background;
  body_.clear();
  layers_.clear();
  depth_ = 0;
}

void PdfSurface::segment(PointI from, PointI to, const Pen& style) {
  pen(style);
  point(from.x, from.y, "m");
  point(to.x, to.y, "l");
  word("S");
}

void PdfSurface::circle(PointI centre, int radius, const Pen& style) {
  pen(style);
  circlePath(centre, radius);
  word("S");
}

void PdfSurface::dot(PointI centre, int diameter, Colour filled) {
  colour(filled, true);
  circlePath(centre, diameter / 2.0);
  word("f");
}

void PdfSurface::polygonOutline(std::span<const PointI> points, const Pen& style) {
  pen(style);
  line(points);
  word("s");
}

void PdfSurface::polyline(std::span<const PointI> points, const Pen& style) {
  pen(style);
  line(points);
  word("S");
}

void PdfSurface::fillPolygon(std::span<const PointI> points, Colour filled) {
  colour(filled, true);
  line(points);
  word("f");
}

void PdfSurface::wideCurve(const WideCurve& curve) {
  if (curve.bezier.size() < 4) return;
  colour(curve.colour, false);
  numbers({curve.width * scale()}, "w");
  word(curve.caps == CapStyle::round ? "[] 0 d 1 J 1 j" : "[] 0 d 0 J 1 j");
  chain(fewerNodes(curve));
  word("S");
}

void PdfSurface::fillPath(std::span<const std::vector<PointF>> contours, Colour filled) {
  colour(filled, true);
  for (const std::vector<PointF>& contour : contours) {
    if (contour.size() < 4) continue;
    chain(contour);
    word("h");
  }
  word("f");
}

void PdfSurface::strokePath(std::span<const std::vector<PointF>> chains, Colour stroked) {
  colour(stroked, false);
  numbers({kHairline}, "w");
  word("[] 0 d 0 J 0 j");
  for (const std::vector<PointF>& part : chains) {
    if (part.size() < 4) continue;
    chain(part);
    if (isClosed(part)) word("h");
  }
  word("S");
}

void PdfSurface::beginLayer(std::string_view name, bool hidden) {
  body_ += "/OC /L" + std::to_string(layers_.size()) + " BDC\n";
  layers_.push_back({labelOf(name), depth_++, hidden});
}

void PdfSurface::endGroup() {
  --depth_;
  word("EMC");
}

void PdfSurface::beginClip(double left, double right) {
  word("q");
  numbers({pageX(left), 0, (right - left) * scale(), pageHeight()}, "re W n");
}

/// Millimetres with y downwards, as what was drawn.
std::string PdfSurface::contents() const {
  std::string text;
  const double unit = kPointsPerMillimetre / std::max(1.0, std::max(pageWidth(), pageHeight()) *
                                                               kPointsPerMillimetre / kLargestPage);
  for (const double value : {unit, 0.0, 0.0, -unit, 0.0, pageHeight() * unit}) {
    appendDecimal(text, value, 8);
    text += ' ';
  }
  return text + "cm\n" + body_;
}

std::string PdfSurface::layerList() const {
  std::string list;
  for (std::size_t i = 0; i < layers_.size(); ++i) list += reference(kFirstLayer + i) + ' ';
  return "[ " + list + ']';
}

std::string PdfSurface::layerTree() const {
  std::string tree = "[ ";
  int depth = 0;
  for (std::size_t i = 0; i < layers_.size(); ++i) {
    for (; depth < layers_[i].depth; ++depth) tree += "[ ";
    for (; depth > layers_[i].depth; --depth) tree += "] ";
    tree += reference(kFirstLayer + i) + ' ';
  }
  for (; depth >= 0; --depth) tree += "] ";
  return tree;
}

std::string PdfSurface::metadata() const {
  return "<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
         "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">\n"
         "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n"
         "<rdf:Description rdf:about=\"\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\" "
         "xmlns:pdf=\"http://ns.adobe.com/pdf/1.3/\" xmlns:xmp=\"http://ns.adobe.com/xap/1.0/\">\n"
         "<dc:format>application/pdf</dc:format>\n"
         "<dc:title><rdf:Alt><rdf:li xml:lang=\"x-default\">" +
         xmlText(title_) + "</rdf:li></rdf:Alt></dc:title>\n<pdf:Producer>" + std::string(kMaker) +
         "</pdf:Producer>\n<xmp:CreatorTool>" + std::string(kMaker) +
         "</xmp:CreatorTool>\n</rdf:Description>\n</rdf:RDF>\n</x:xmpmeta>\n<?xpacket end=\"r\"?>";
}

std::string PdfSurface::finish() {
  std::string hidden, names, size, unit;
  for (std::size_t i = 0; i < layers_.size(); ++i) {
    if (layers_[i].hidden) hidden += reference(kFirstLayer + i) + ' ';
    names += "/L" + std::to_string(i) + ' ' + reference(kFirstLayer + i) + ' ';
  }
  const double larger =
      std::max(1.0, std::max(pageWidth(), pageHeight()) * kPointsPerMillimetre / kLargestPage);
  for (const double side : {pageWidth(), pageHeight()}) {
    size += ' ';
    appendDecimal(size, side * kPointsPerMillimetre / larger, 5);
  }
  appendDecimal(unit, larger, 8);
  const std::string layers = layers_.empty() ? ""
                                             : " /OCProperties << /OCGs " + layerList() + " /D << /Order " +
                                                   layerTree() + "/OFF [ " + hidden + "] >> >>";
  std::vector<std::string> objects = {
      "<< /Type /Catalog /Pages 2 0 R /Metadata 6 0 R /ViewerPreferences << /DisplayDocTitle true >>" +
          layers + " >>",
      "<< /Type /Pages /Kids [ 3 0 R ] /Count 1 >>",
      "<< /Type /Page /Parent 2 0 R /MediaBox [ 0 0" + size + " ]" +
          (larger > 1 ? " /UserUnit " + unit : "") + " /Contents 4 0 R /Resources << /Properties << " +
          names + ">> >> >>",
      stream("", contents()),
      "<< /Title " + pdfText(title_) + (source_.empty() ? "" : " /LorivanKnot " + pdfText(source_)) +
          " /Creator " + pdfText(kMaker) + " /Producer " + pdfText(kMaker) + " >>",
      stream("/Type /Metadata /Subtype /XML ", metadata())};
  for (const Layer& layer : layers_) objects.push_back("<< /Type /OCG /Name " + pdfText(layer.name) + " >>");
  return pdfFile(objects, "/Root 1 0 R /Info 5 0 R");
}

}  // namespace lorivan
