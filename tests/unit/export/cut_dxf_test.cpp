// Flat DXF of outlines: what a program that cuts relies on.
#include "export/cut_dxf.h"

#include <gtest/gtest.h>

#include <charconv>
#include <sstream>

#include "export/visible_curves.h"
#include "unit/export/sample_knots.h"

namespace lorivan {
namespace {

struct Group {
  int code = 0;
  std::string value;
  double number() const { return std::stod(value); }
};

std::vector<Group> groupsOf(const std::string& text) {
  std::vector<Group> groups;
  std::istringstream lines(text);
  for (std::string code, value; std::getline(lines, code) && std::getline(lines, value);) {
    EXPECT_EQ(value.back(), '\r');
    value.pop_back();
    groups.push_back({std::stoi(code), value});
  }
  return groups;
}

std::string written(const CutDrawing& drawing, const CutPlace& place, bool arcs) {
  MemorySink sink;
  EXPECT_TRUE(writeCutDxf(drawing, place, arcs, sink));
  return sink.bytes;
}

TEST(CutDxf, HasAUnitLayersAndClosedAnticlockwiseOutlines) {
  const SampleKnot knot = standardKnot(Shape::SquareSquare, 3, 2);
  const KnotStyle style{.edge = 2, .colours = strandColours(firstColourBoxes())};
  const CutDrawing cut = cutDrawing(knot.curve, style, GridView(0.8F, 5000), {.width = 80});
  const CutPlace place{cut.millimetres / 5000, cut.box.left, cut.box.bottom};
  const std::string text = written(cut, place, false);
  EXPECT_LT(written(cut, place, true).size(), text.size()) << "arcs are fewer";
  EXPECT_NE(text.find("$INSUNITS\r\n70\r\n4\r\n"), std::string::npos);
  EXPECT_NE(text.find("$EXTMIN\r\n10\r\n0\r\n20\r\n0\r\n"), std::string::npos) << "the corner is the origin";
  EXPECT_NE(text.find("$EXTMAX\r\n10\r\n80\r\n"), std::string::npos);
  EXPECT_NE(text.find("centre-lines\r\n70\r\n0\r\n62\r\n-8\r\n"), std::string::npos) << "off";

  MemorySink none;
  EXPECT_FALSE(writeCutDxf(cut, {place.scale / 1000, 0, 0}, false, none)) << "nothing would be left of it";

  std::vector<std::string> layers, handles;
  std::size_t outlines = 0;
  const auto groups = groupsOf(text);
  for (std::size_t i = 0; i < groups.size(); ++i) {
    if (groups[i].code == 5) handles.push_back(groups[i].value);
    if (groups[i].code == 100 && groups[i].value == "AcDbLayerTableRecord")
      layers.push_back(groups[i + 1].value);
    if (groups[i].code != 0 || groups[i].value != "LWPOLYLINE") continue;
    std::vector<double> xs, ys;
    std::string layer, closed;
    for (++i; groups[i].code != 0; ++i) {
      if (groups[i].code == 8) layer = groups[i].value;
      if (groups[i].code == 70) closed = groups[i].value;
      if (groups[i].code == 10) xs.push_back(groups[i].number());
      if (groups[i].code == 20) ys.push_back(groups[i].number());
    }
    --i;
    EXPECT_NE(std::ranges::find(layers, layer), layers.end()) << layer;
    if (layer == "centre-lines") continue;
    ++outlines;
    EXPECT_EQ(closed, "1");
    double area = 0;
    for (std::size_t k = 0; k < xs.size(); ++k) {
      const std::size_t next = (k + 1) % xs.size();
      area += xs[k] * ys[next] - xs[next] * ys[k];
    }
    EXPECT_GT(area, 0);
  }
  std::size_t shapes = 0;
  for (const CutStrand& strand : cut.strands) shapes += strand.shapes.size();
  EXPECT_EQ(outlines, shapes);
  std::ranges::sort(handles);
  EXPECT_EQ(std::ranges::adjacent_find(handles), handles.end()) << "handles are given once";
}

TEST(CutDxf, ColoursAreTheNearestOfThePalette) {
  for (const auto& [colour, index] : {std::pair{makeColour(255, 0, 0), 1},
                                      {makeColour(255, 255, 255), 7},
                                      {makeColour(0, 0, 0), 7},
                                      {makeColour(130, 0, 0), 14},
                                      {makeColour(255, 126, 0), 30},
                                      {makeColour(127, 127, 128), 8},
                                      {makeColour(0, 188, 190), 132}})
    EXPECT_EQ(nearestColourIndex(colour), index) << colour;
}

}  // namespace
}  // namespace lorivan
