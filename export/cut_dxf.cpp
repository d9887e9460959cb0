#include "export/cut_dxf.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

#include "export/scene.h"
#include "export/text_out.h"

namespace lorivan {
namespace {

constexpr std::string_view kCentreLayer = "centre-lines";
constexpr int kMillimetres = 4, kMetric = 1, kIsOff = -1;

/// Handles of the objects that others refer to, as the file writes them: hexadecimal.
constexpr std::string_view kLinetypes = "5", kLayers = "2", kStyles = "3", kViews = "6", kUserSystems = "7",
                           kApplications = "9", kDimensions = "A", kViewports = "8", kBlockRecords = "1",
                           kModelSpace = "1F", kPaperSpace = "1B", kRoot = "C", kGroups = "D";
constexpr int kFirstFreeHandle = 0x30;

/// Group codes and values, a line each.
class Groups {
 public:
  explicit Groups(Sink& sink) : out_(sink) {}

  Groups& text(int code, std::string_view value) {
    out_.line(std::to_string(code));
    out_.line(value);
    return *this;
  }
  Groups& whole(int code, std::int64_t value) { return text(code, std::to_string(value)); }
  Groups& real(int code, double value, int decimals = 4) {
    std::string digits;
    appendDecimal(digits, value, decimals);
    return text(code, digits);
  }
  /// A handle that nothing has yet.
  Groups& newHandle() {
    std::array<char, 16> digits{};
    char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), next_++, 16).ptr;
    for (char* c = digits.data(); c != end; ++c)
      if (*c >= 'a') *c = static_cast<char>(*c - 'a' + 'A');
    return text(5, {digits.data(), static_cast<std::size_t>(end - digits.data())});
  }

  void section(std::string_view name) { text(0, "SECTION").text(2, name); }
  void endSection() { text(0, "ENDSEC"); }
  void table(std::string_view name, std::string_view handle, std::size_t entries) {
    text(0, "TABLE").text(2, name).text(5, handle).text(330, "0").text(100, "AcDbSymbolTable");
    whole(70, static_cast<std::int64_t>(entries));
  }
  void endTable() { text(0, "ENDTAB"); }
  /// The beginning of a table's entry up to its name.
  Groups& entry(std::string_view kind, std::string_view table, std::string_view subclass,
                std::string_view name) {
    text(0, kind).newHandle().text(330, table).text(100, "AcDbSymbolTableRecord").text(100, subclass);
    return text(2, name).whole(70, 0);
  }

  bool ok() const { return out_.ok(); }
  Status finish() { return out_.finish(); }

 private:
  TextOut out_;
  int next_ = kFirstFreeHandle;
};

std::string layerOf(const CutStrand& strand) { return "strand-" + std::to_string(strand.slot); }

/// A colour, by its index and exactly; `sign` -1 turns a layer off.
void colour(Groups& out, Colour colour, int sign = 1) {
  out.whole(62, sign * nearestColourIndex(colour));
  out.whole(420, redOf(colour) * 65536 + greenOf(colour) * 256 + blueOf(colour));
}

void header(Groups& out, const CutDrawing& drawing, const CutPlace& place) {
  const PictureBox& box = drawing.box;
  const bool isEmpty = box.left > box.right;
  const auto x = [&](double at) { return isEmpty ? 0 : (at - place.originX) * place.scale; };
  const auto y = [&](double at) { return isEmpty ? 0 : (place.originY - at) * place.scale; };
  out.section("HEADER");
  out.text(9, "$ACADVER").text(1, "AC1018").text(9, "$DWGCODEPAGE").text(3, "ANSI_1252");
  out.text(9, "$INSUNITS").whole(70, kMillimetres).text(9, "$MEASUREMENT").whole(70, kMetric);
  out.text(9, "$EXTMIN").real(10, x(box.left)).real(20, y(box.bottom)).real(30, 0);
  out.text(9, "$EXTMAX").real(10, x(box.right)).real(20, y(box.top)).real(30, 0);
  out.text(9, "$HANDSEED").text(5, "FFFFFF");
  out.endSection();
  out.section("CLASSES");
  out.endSection();
}

void lineTypes(Groups& out) {
  out.table("LTYPE", kLinetypes, 3);
  for (const std::string_view name : {"ByBlock", "ByLayer", "Continuous"})
    out.entry("LTYPE", kLinetypes, "AcDbLinetypeTableRecord", name)
        .text(3, "")
        .whole(72, 65)
        .whole(73, 0)
        .real(40, 0);
  out.endTable();
}

void layer(Groups& out, std::string_view name, Colour shown, int sign = 1) {
  out.entry("LAYER", kLayers, "AcDbLayerTableRecord", name);
  colour(out, shown, sign);
  out.text(6, "Continuous");
}

void layers(Groups& out, const CutDrawing& drawing) {
  out.table("LAYER", kLayers, drawing.strands.size() + (drawing.outlines ? 2 : 1));
  layer(out, "0", makeColour(255, 255, 255));
  for (const CutStrand& strand : drawing.strands) layer(out, layerOf(strand), strand.colour);
  if (drawing.outlines) layer(out, kCentreLayer, makeColour(128, 128, 128), kIsOff);
  out.endTable();
}

void blockRecords(Groups& out) {
  out.table("BLOCK_RECORD", kBlockRecords, 2);
  for (const auto& [name, handle] : {std::pair{"*Model_Space", kModelSpace}, {"*Paper_Space", kPaperSpace}}) {
    out.text(0, "BLOCK_RECORD").text(5, handle).text(330, kBlockRecords).text(100, "AcDbSymbolTableRecord");
    out.text(100, "AcDbBlockTableRecord").text(2, name);
  }
  out.endTable();
}

void emptyTable(Groups& out, std::string_view name, std::string_view handle) {
  out.table(name, handle, 0);
  out.endTable();
}

void tables(Groups& out, const CutDrawing& drawing) {
  out.section("TABLES");
  emptyTable(out, "VPORT", kViewports);
  lineTypes(out);
  layers(out, drawing);
  out.table("STYLE", kStyles, 1);
  out.entry("STYLE", kStyles, "AcDbTextStyleTableRecord", "Standard").real(40, 0).real(41, 1).real(50, 0);
  out.whole(71, 0).real(42, 1).text(3, "txt").text(4, "");
  out.endTable();
  emptyTable(out, "VIEW", kViews);
  emptyTable(out, "UCS", kUserSystems);
  out.table("APPID", kApplications, 1);
  out.entry("APPID", kApplications, "AcDbRegAppTableRecord", "ACAD");
  out.endTable();
  out.table("DIMSTYLE", kDimensions, 0);
  out.text(100, "AcDbDimStyleTable");
  out.endTable();
  blockRecords(out);
  out.endSection();
}

void blocks(Groups& out) {
  out.section("BLOCKS");
  for (const auto& [name, owner] : {std::pair{"*Model_Space", kModelSpace}, {"*Paper_Space", kPaperSpace}}) {
    out.text(0, "BLOCK").newHandle().text(330, owner).text(100, "AcDbEntity").text(8, "0");
    out.text(100, "AcDbBlockBegin").text(2, name).whole(70, 0).real(10, 0).real(20, 0).real(30, 0);
    out.text(3, name).text(1, "");
    out.text(0, "ENDBLK").newHandle().text(330, owner).text(100, "AcDbEntity").text(8, "0");
    out.text(100, "AcDbBlockEnd");
  }
  out.endSection();
}

class Entities {
 public:
  Entities(Groups& out, const CutPlace& place, bool arcs) : out_(out), place_(place), arcs_(arcs) {}

  void all(const CutDrawing& drawing) {
    out_.section("ENTITIES");
    for (const CutStrand& strand : drawing.strands) {
      for (const CutShape& shape : strand.shapes)
        for (const BandContour& contour : shape) outline(contour, layerOf(strand));
      for (const auto& centre : strand.centres)
        if (drawing.outlines)
          line(centre, kCentreLayer, &strand.colour);
        else
          line(centre, layerOf(strand), nullptr);
    }
    out_.endSection();
  }

 private:
  /// Contours run the other way round where y points upwards: reversed, outer ones are anticlockwise.
  void outline(BandContour contour, std::string_view layer) {
    std::ranges::reverse(contour);
    line(contour, layer, nullptr);
  }

  /// The layer's colour, or one of its own.
  void line(std::span<const PointF> chain, std::string_view layer, const Colour* own) {
    const std::vector<PathVertex> path = flatPath(chain, place_, kFlatTolerance, arcs_);
    if (path.size() < 2) return;
    out_.text(0, "LWPOLYLINE").newHandle().text(330, kModelSpace).text(100, "AcDbEntity").text(8, layer);
    if (own != nullptr) colour(out_, *own);
    out_.text(100, "AcDbPolyline").whole(90, static_cast<std::int64_t>(path.size()));
    out_.whole(70, isClosed(chain) ? 1 : 0);
    for (const PathVertex& corner : path) {
      out_.real(10, corner.x).real(20, corner.y);
      if (corner.bulge != 0) out_.real(42, corner.bulge, 8);
    }
  }

  Groups& out_;
  const CutPlace& place_;
  bool arcs_;
};

void objects(Groups& out) {
  out.section("OBJECTS");
  out.text(0, "DICTIONARY").text(5, kRoot).text(330, "0").text(100, "AcDbDictionary").whole(281, 1);
  out.text(3, "ACAD_GROUP").text(350, kGroups);
  out.text(0, "DICTIONARY").text(5, kGroups).text(330, kRoot).text(100, "AcDbDictionary").whole(281, 1);
  out.endSection();
}

/// The standard palette: 1 to 9 by name, five shades of 24 hues with a pale one beside each, six greys.
std::array<int, 3> paletteColour(int index) {
  constexpr std::array<std::array<int, 3>, 9> named = {{{255, 0, 0},
                                                        {255, 255, 0},
                                                        {0, 255, 0},
                                                        {0, 255, 255},
                                                        {0, 0, 255},
                                                        {255, 0, 255},
                                                        {255, 255, 255},
                                                        {128, 128, 128},
                                                        {192, 192, 192}}};
  constexpr std::array<int, 6> greys = {51, 80, 105, 130, 190, 255};
  constexpr std::array<int, 5> shades = {255, 189, 129, 104, 79};
  if (index <= 9) return named[index - 1];
  if (index >= 250) {
    const int grey = greys[index - 250];
    return {grey, grey, grey};
  }
  const double hue = (index / 10 - 1) / 4.0;  // in sixths of the circle
  const int shade = shades[index % 10 / 2];
  const double pale = index % 2 == 0 ? 0 : 2.0 / 3;
  std::array<int, 3> colour{};
  for (std::size_t part = 0; part < 3; ++part) {
    const double away = std::fabs(std::remainder(hue - 2.0 * static_cast<double>(part), 6));
    const double pure = std::clamp(2 - away, 0.0, 1.0);
    colour[part] = static_cast<int>(shade * (pale + (1 - pale) * pure));
  }
  return colour;
}

}  // namespace

int nearestColourIndex(Colour colour) {
  constexpr int kOwnContrast = 7;  // black on white paper, white on a black screen
  if (colour == 0) return kOwnContrast;
  int best = kOwnContrast, least = std::numeric_limits<int>::max();
  for (int index = 1; index < 256; ++index) {
    const auto [red, green, blue] = paletteColour(index);
    const int r = redOf(colour) - red, g = greenOf(colour) - green, b = blueOf(colour) - blue;
    const int distance = r * r + g * g + b * b;
    if (distance >= least) continue;
    best = index;
    least = distance;
  }
  return best;
}

Status writeCutDxf(const CutDrawing& drawing, const CutPlace& place, bool arcs, Sink& sink) {
  const PictureBox& box = drawing.box;
  if (box.right > box.left &&
      !((box.right - box.left + box.bottom - box.top) * place.scale <= kMostCoordinate))
    return unwritable("the knot is too large for the file");
  constexpr double kLeastSize = 20 * kFlatTolerance;
  if (box.right > box.left && std::max(box.right - box.left, box.bottom - box.top) * place.scale < kLeastSize)
    return unwritable("the knot is too small for the file's hundredths of a millimetre");
  Groups out(sink);
  header(out, drawing, place);
  tables(out, drawing);
  blocks(out);
  Entities(out, place, arcs).all(drawing);
  objects(out);
  out.text(0, "EOF");
  return out.finish();
}

}  // namespace lorivan
