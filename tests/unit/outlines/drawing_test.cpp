// SVG and DXF drawings: points computed by hand, and files that are damaged.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "outlines/dxf_outline.h"
#include "outlines/svg_outline.h"
#include "shapes.h"

namespace lorivan {
namespace {

std::string svg(const std::string& body) {
  return "<?xml version=\"1.0\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 100 80\">\n" +
         body + "\n</svg>";
}
std::string path(const std::string& data) { return svg("<path d=\"" + data + "\"/>"); }
std::string openPath(const std::string& data) { return svg("<path fill=\"none\" d=\"" + data + "\"/>"); }

std::string rounded(double value) {
  const double whole = std::round(value * 100) / 100;
  std::string text = std::to_string(whole == 0 ? 0.0 : whole);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text;
}

/// The ends of all segments, "z" behind closed chains: "0,0 10,0 10,5 z". With a step of 1 the control
/// points, too.
std::string endsOf(const Result<Drawing>& drawing, std::size_t step = 3) {
  if (!drawing) return drawing.error().message;
  std::string text;
  for (const CurveChain& chain : drawing->chains) {
    for (std::size_t i = 0; i < chain.points.size(); i += step)
      text.append(text.empty() ? "" : " ")
          .append(rounded(chain.points[i].x))
          .append(",")
          .append(rounded(chain.points[i].y));
    if (chain.closed) text += " z";
  }
  return text;
}

TEST(Svg, PathsAndShapesAreReadAsHandComputed) {
  const std::pair<std::string, const char*> cases[] = {
      {path("M10 10L20 10 20 20z"), "10,10 20,10 20,20 10,10 z"},
      {path("m10,10 10,0 0,10Zl5-5"),
       "10,10 20,10 20,20 10,10 z 10,10 15,5 10,10 z"},  // from the start again
      {openPath("M1.5.5-2-3+4e1.5"), "1.5,0.5 -2,-3 40,0.5"},
      {openPath("M.5.5h10V20v-5H0"), "0.5,0.5 10.5,0.5 10.5,20 10.5,15 0,15"},
      {openPath("M0 0 5 5M9 9l1 0"), "0,0 5,5 9,9 10,9"},
      {openPath("M0 0C0 10 10 10 10 0S20-10 20 0"), "0,0 10,0 20,0"},
      {openPath("M0 0q5 10 10 0t10 0T30 0"), "0,0 10,0 20,0 30,0"},
      {openPath("M0 0a10 10 0 0110 10"), "0,0 7.07,2.93 10,10"},  // flags without separators
      {openPath("M0 0A5 5 0 0 0 20 0"),
       "0,0 2.93,7.07 10,10 17.07,7.07 20,0"},      // radii too small are enlarged
      {openPath("M0 0a0 5 0 1 1 7 0"), "0,0 7,0"},  // an arc without a radius is a line
      {svg("<rect x='1' y='2' width='3' height='4'/>"), "1,2 4,2 4,6 1,6 1,2 z"},
      {svg("<rect width='20' height='10' rx='3'/>"),  // as round upwards
       "3,0 17,0 19.12,0.88 20,3 20,7 19.12,9.12 17,10 3,10 0.88,9.12 0,7 0,3 0.88,0.88 3,0 z"},
      {svg("<rect width='100' height='80'/><rect width='100' height='80' fill='white'/>"),
       "0,0 100,0 100,80 0,80 0,0 z"},  // a white page is no part of it, a dark one is
      {svg("<circle cx='10' cy='20' r='2'/>"),
       "12,20 11.41,21.41 10,22 8.59,21.41 8,20 8.59,18.59 10,18 11.41,18.59 12,20 z"},
      {svg("<polygon points='0,0 9,0 0 9'/><line x2='3' y2='4'/>"), "0,0 9,0 0,9 0,0 z 0,0 3,4"},
      {svg("<polyline fill='none' points='0 0 9 0'/>"), "0,0 9,0"},
      {svg("<g transform='translate(10)'><g transform='rotate(90) scale(2,3)'><line x2='4' y2='1'/></g></g>"),
       "10,0 7,8"},
      {svg("<line x2='2' y2='1' transform='matrix(0 1 -1 0 5 5),skewX(45)'/>"), "5,5 4,8"},
      {svg("<line x1='1' x2='2' transform='rotate(180 5 5)'/>"), "9,10 8,10"},
      {svg("<defs><path id='p' d='M0 0h1v1z'/></defs><use href='#p' x='5'/>"
           "<use xmlns:xlink='l' xlink:href='#p' transform='scale(2)' y='1'/>"),
       "5,0 6,0 6,1 5,0 z 0,2 2,2 2,4 0,2 z"},
      {svg("<g style='display: none'><path d='M0 0h9v9z'/></g><rect width='100' height='80' fill='#FFF'/>"
           "<!-- <path d='M0 0h9v9z'/> --><![CDATA[<path d='M0 0h9v9z'/>]]><svg:path d='M1 1h1v&#49;z'/>"),
       "1,1 2,1 2,2 1,1 z"},
      {svg("<style> @import 'a.css'; @media print { .a { fill: red; } } /* .a{} */ .a, #b { fill: none }\n"
           "path.c{fill:red} .d{display:none} g .a{display:none} .i{fill:none!important}</style>"
           "<path class='e a' d='M0 0h1v1'/><path id='b' d='M0 0h2'/><path class='a c' d='M0 0h3'/>"
           "<g class='d'><path d='M0 0h9'/></g><path class='a' style='fill:blue' d='M0 0h4'/>"
           "<path class='i' style='fill:blue' d='M0 0h5'/>"),
       "0,0 1,0 1,1 0,0 2,0 0,0 3,0 0,0 z 0,0 4,0 0,0 z 0,0 5,0"},
      {svg("<style>#i{fill:none} .b{fill:red} path{fill:red} .d{fill:none} .c{fill:red}</style>"
           "<path id='i' class='b' d='M0 0h1'/><path class='c d' d='M0 0h2'/>"),
       "0,0 1,0 0,0 2,0 0,0 z"},  // the more exact rule, of equal ones the last
      {svg("<style>g .a, #o>g > path.b{fill:none} svg path{fill:red} g>.d .e > path, .d path.c{fill:none} "
           "> p{} p >{}</style>"
           "<path class='a' d='M0 0h1'/><g id='o'><g><g><path class='a' d='M0 0h2'/></g>"
           "<path class='b' d='M0 0h3'/><g><path class='b' d='M0 0h4'/></g></g></g>"
           "<g><g class='d'><g class='e'><g class='d'><g class='e'><path d='M0 0h5'/></g></g><g>"
           "<path d='M0 0h6'/><path class='c' d='M0 0h7'/></g></g></g></g>"),
       "0,0 1,0 0,0 z 0,0 2,0 0,0 3,0 0,0 4,0 0,0 z 0,0 5,0 0,0 6,0 0,0 z 0,0 7,0"},
      {svg("<style><![CDATA[line{visibility:hidden}#l{visibility:visible}]]></style>"
           "<line x2='1'/><g visibility='hidden'><line id='l' x2='2'/></g>"),
       "0,0 2,0"},
      {svg("<g fill='none'><path stroke='none' d='M0 0h9'/><path d='M0 0h2'/></g><g opacity='0.0'><path "
           "d='M0 "
           "0h9v9z'/></g>"),
       "0,0 2,0"},  // what nobody can see is no outline; what says nothing of strokes is
      {svg("<symbol id='s' viewBox='10 10 4 2'><line x1='10' y1='10' x2='14' y2='12'/></symbol>"
           "<use href='#s' x='1' width='8' height='8'/><use href='#s'/>"),
       "1,2 9,6 0,15 100,65"},  // as wide as it goes, in the middle
      {svg("<svg x='5' width='8' height='8' viewBox='0 0 4 2' preserveAspectRatio='none'><line x2='4' "
           "y2='2'/></svg><symbol id='t' viewBox='0 0 4 2' width='8' preserveAspectRatio='xMaxYMax slice'>"
           "<line x2='4' y2='2'/></symbol><use href='#t' height='8'/>"),
       "5,0 13,8 -8,0 8,8"},
      {"<!DOCTYPE svg [<!ENTITY a \"<b>\">]>" + path("M0 0h1"), "0,0 1,0 0,0 z"},
  };
  for (const auto& [text, ends] : cases) EXPECT_EQ(endsOf(readSvgOutline(text)), ends) << text;
  EXPECT_EQ(readSvgOutline(svg("<text>a</text><image/>"))->notes.size(), 2U);
}

TEST(Svg, SmoothCurvesGoOnAsTheOneBeforeEnded) {
  const std::pair<const char*, const char*> cases[] = {
      {"M0 0C0 10 5 10 10 0S20-9 20 0", "0,0 0,10 5,10 10,0 15,-10 20,-9 20,0"},
      {"M0 0S5 10 10 0s9-9 10 0", "0,0 0,0 5,10 10,0 15,-10 19,-9 20,0"},
      {"M0 0Q3 6 6 0T12 0", "0,0 2,4 4,4 6,0 8,-4 10,-4 12,0"},
      {"M0 0Q3 6 6 0S12 6 12 0", "0,0 2,4 4,4 6,0 6,0 12,6 12,0"},  // nothing to go on from
  };
  for (const auto& [data, points] : cases) EXPECT_EQ(endsOf(readSvgOutline(openPath(data)), 1), points);
}

TEST(Svg, CurvesKeepWithinTheToleranceOfTheirFlattening) {
  const auto drawing = readSvgOutline(svg("<circle r='100'/><path d='M0 0C0 90 90 90 90 0'/>"));
  ASSERT_TRUE(drawing);
  const std::vector<Spot> circle = flattened(drawing->chains[0], 0.1),
                          arch = flattened(drawing->chains[1], 0.1);
  for (std::size_t i = 0; i + 1 < circle.size(); ++i) {
    EXPECT_NEAR(length(circle[i]), 100, 0.01);
    EXPECT_NEAR(length(0.5 * (circle[i] + circle[i + 1])), 100, 0.11);
  }
  EXPECT_LT(circle.size(), 120U) << "and not finer than that needs";
  double top = 0;
  for (const Spot p : arch) top = std::max(top, p.y);
  EXPECT_NEAR(top, 67.5, 0.11);
}

std::string repeated(const std::string& text, int times) {
  std::string all;
  while (times-- > 0) all += text;
  return all;
}

TEST(Svg, DamagedFilesAreRefusedWithTheirLine) {
  std::string wide = "<g id='a0'><path d='M0 0h1v1z'/></g>";
  for (int k = 1; k < 16; ++k)
    wide += "<g id='a" + std::to_string(k) + "'>" +
            repeated("<use href='#a" + std::to_string(k - 1) + "'/>", 4) + "</g>";
  const std::pair<std::string, const char*> cases[] = {
      {"", "line 1: there is no element"},
      {"\x1f\x8b\x08", "packed"},
      {"<svg>\n<g>\n</svg>", "line 3: \"svg\" ends nothing"},
      {"<svg>\n<g a=1></g></svg>", "line 2: the value of \"a\" has no quotes"},
      {"<svg>\n\n<path d=\"M0 0", "line 3: "},
      {svg(repeated("<g>", 300)), "line 3: elements are nested too deeply"},
      {svg(wide), "too many"},
      {svg("<g id='a'>" + repeated("<g display='none'/>", 2000) + "</g>" + repeated("<use href='#a'/>", 300)),
       "too many elements"},
      {svg("<g id='a' b='" + std::string(400'000, 'x') + "'/>" + repeated("<use href='#a'/>", 700)),
       "too many elements"},
      {svg("<style>" + repeated("g.c.c.c.c.c.c.c.c{fill:red}", 9000) + "</style>" +
           repeated("<path class='c'/>", 100)),
       "too many style rules"},
      {svg("<style>" + repeated("* * * * * * * * path{fill:red}", 9000) + "</style>" + repeated("<g>", 150) +
           "<path/>" + repeated("</g>", 150)),
       "too many style rules"},
      {path("10 10"), "line 3: a path cannot be read at \"10 10\""},
      {path("L1 1"), "line 3: a path does not begin with M"},
      {path("M0 0L5"), "line 3: a path ends within a command"},
      {path("M0 0L1e300 5"), "cannot be read at \"1e300"},
      {svg("<g transform='spin(3)'/>"), "a transform cannot be read at \"spin(3)\""},
      {svg("<polygon points='1 2 3'/>"), "points cannot be read"},
  };
  for (const auto& [text, says] : cases) {
    const auto drawing = readSvgOutline(text);
    ASSERT_FALSE(drawing) << says;
    EXPECT_NE(drawing.error().message.find(says), std::string::npos) << drawing.error().message;
  }
  EXPECT_EQ(endsOf(readSvgOutline(
                svg("<style>" + repeated("#a", 300'000) + "{fill:none}</style><path id='a' d='M0 0h1'/>"))),
            "0,0 1,0 0,0 z")
      << "a selector without end is passed over";
  const std::string many = "M0 0" + repeated("h1", static_cast<int>(kMostSegments) + 1);
  EXPECT_NE(endsOf(readSvgOutline(path(many))).find("too many curves"), std::string::npos);
}

TEST(Dxf, EntitiesAreReadAsHandComputed) {
  const std::pair<std::string, const char*> cases[] = {
      {"0 LINE 8 0 10 1 20 2 11 3 21 4", "1,-2 3,-4"},
      {"0 LWPOLYLINE 90 3 70 1 10 0 20 0 10 4 20 0 10 4 20 3", "0,0 4,0 4,-3 0,0 z"},
      {"0 LWPOLYLINE 90 2 70 0 10 0 20 0 42 1 10 2 20 0", "0,0 0.29,0.71 1,1 1.71,0.71 2,0"},  // below, y up
      {"0 LWPOLYLINE 90 2 70 0 10 0 20 0 42 -0.41421356 10 1 20 1",
       "0,0 0.29,-0.71 1,-1"},  // a quarter, left
      {"0 POLYLINE 66 1 70 1 0 VERTEX 10 0 20 0 0 VERTEX 10 9 20 9 70 16 0 VERTEX 10 5 20 0 0 SEQEND",
       "0,0 5,0 0,0 z"},
      {"0 ARC 10 0 20 0 40 2 50 270 51 0", "0,2 1.41,1.41 2,0"},
      {"0 CIRCLE 10 1 20 0 40 1 230 -1",
       "-2,0 -1.71,-0.71 -1,-1 -0.29,-0.71 0,0 -0.29,0.71 -1,1 -1.71,0.71 -2,0 z"},
      {"0 ELLIPSE 10 0 20 0 11 0 21 4 40 0.5 41 0 42 1.5707963268", "0,-4 -1.41,-2.83 -2,0"},
      {"0 CIRCLE 40 1 67 1 0 LINE 11 1 60 1", ""},  // on paper, invisible
  };
  for (const auto& [entities, ends] : cases)
    EXPECT_EQ(endsOf(readDxfOutline(dxf(entities))), ends) << entities;

  // Blocks: moved, turned and scaled about their base, in rows and columns, one in another, without end.
  const auto blocks = [](const std::string& inserts) {
    std::string text =
        "0 SECTION 2 BLOCKS 0 BLOCK 2 A 10 1 20 0 0 LINE 10 1 20 0 11 2 21 1 0 ENDBLK "
        "0 BLOCK 2 B 0 INSERT 2 a 10 5 20 0 0 ENDBLK 0 BLOCK 2 C 0 INSERT 2 C 0 ENDBLK 0 ENDSEC ";
    std::ranges::replace(text, ' ', '\n');
    return readDxfOutline(text + dxf(inserts));
  };
  EXPECT_EQ(endsOf(blocks("0 INSERT 2 A 10 7 20 3 41 2 42 -3")), "7,-3 9,0");
  EXPECT_EQ(endsOf(blocks("0 INSERT 2 A 50 90 70 2 44 10 71 2 45 20")),
            "0,0 -1,-1 0,-10 -1,-11 -20,0 -21,-1 -20,-10 -21,-11");
  EXPECT_EQ(endsOf(blocks("0 INSERT 2 B 10 1 41 2 42 2 0 INSERT 2 A 10 4 230 -1")), "11,0 13,-2 -4,0 -5,-1");
  for (const char* none : {"0 INSERT 2 C", "0 INSERT 2 D"})
    EXPECT_EQ(blocks(none)->notes, std::vector<std::string>{"1 of kind INSERT left out"});
  EXPECT_FALSE(blocks("0 INSERT 2 A 70 9000 71 9000"));
  std::string kinds = "0 LINE 11 1";
  for (char c = 'A'; c <= 'Z'; ++c) kinds.append(" 0 ").append(1, c);
  const auto many = readDxfOutline(dxf(kinds));
  EXPECT_EQ(many->notes.size(), 13U) << "not a line for each of hundreds of thousands";
  EXPECT_EQ(many->notes.back(), "14 of other kinds left out");
  // A spline without a span is nothing, but takes its time wherever it is inserted.
  const std::string idle = "0\nSECTION\n2\nBLOCKS\n0\nBLOCK\n2\nA\n0\nSPLINE\n71\n1\n" +
                           repeated("40\n0\n", 102) + repeated("10\n0\n20\n0\n", 100) +
                           "0\nENDBLK\n0\nENDSEC\n";
  EXPECT_EQ(endsOf(readDxfOutline(idle + dxf("0 INSERT 2 A"))), "");
  EXPECT_FALSE(readDxfOutline(idle + dxf("0 INSERT 2 A 70 90 71 90")));
  EXPECT_NE(endsOf(readDxfOutline(dxf(repeated("0 A ", 500'010)))).find("too many entities"),
            std::string::npos);

  const auto cut =
      readDxfOutline("0\nSECTION\n2\nENTITIES\n0\nPOLYLINE\n0\nVERTEX\n10\n1\n0\nVERTEX\n10\n2\n");
  EXPECT_EQ(endsOf(cut), "1,0 2,0");
  EXPECT_EQ(cut->notes.size(), 1U);
  for (const char* end : {"ENDSEC", "EOF"})
    EXPECT_TRUE(readDxfOutline(std::string("0\nSECTION\n2\nENTITIES\n0\nLINE\n11\n12\n0\n") + end));
  EXPECT_EQ(readDxfOutline(dxf("0 POLYLINE 0 VERTEX 10 1 0 VERTEX 10 2"))->notes, cut->notes);
  EXPECT_EQ(endsOf(readDxfOutline("0\nSECTION\n2\nBLOCKS\n0\nBLOCK\n0\nENDSEC\n" + dxf("0 LINE 11 1"))),
            "0,0 1,0")
      << "a block ends with its section";

  // A quarter of a circle as a rational spline of degree 2.
  const auto quarter =
      readDxfOutline(dxf("0 SPLINE 70 4 71 2 40 0 40 0 40 0 40 1 40 1 40 1 41 1 41 0.70710678 41 1 "
                         "10 1 20 0 10 1 20 1 10 0 20 1"));
  ASSERT_TRUE(quarter && quarter->chains.size() == 1);
  for (const Spot p : flattened(quarter->chains[0], 1e-3)) EXPECT_NEAR(length(p), 1, 1e-6);
  const auto through = readDxfOutline(dxf("0 SPLINE 70 0 71 3 11 0 21 0 11 5 21 5 11 9 21 0 0 TEXT 0 TEXT"));
  EXPECT_EQ(endsOf(through, 1), "0,0 0.83,-0.83 3.5,-5 5,-5 6.5,-5 8.33,-0.83 9,0");
  EXPECT_EQ(through->notes, std::vector<std::string>{"2 of kind TEXT left out"});
}

TEST(Dxf, DamagedFilesAreRefusedWithTheirLine) {
  const std::pair<std::string, const char*> cases[] = {
      {"", "line 1: it is no DXF"},
      {std::string("Binary DXF\r\n\x1a\0\0", 15), "binary DXF"},
      {"0\nSECTION\nx\nENTITIES\n", "line 3: \"x\" is no group code"},
      {"0\nSECTION\n2\nENTITIES\n0\nLINE\n11\n12", "line 8: the file ends in the middle of it"},
      {dxf("0 LINE 10 abc"), "line 8: \"abc\" is not a number"},
      {dxf("0 LINE 10 1e40"), "line 8: \"1e40\" is not a number in range"},
  };
  for (const auto& [text, says] : cases) {
    const auto drawing = readDxfOutline(text);
    ASSERT_FALSE(drawing) << says;
    EXPECT_NE(drawing.error().message.find(says), std::string::npos) << drawing.error().message;
  }
  // Knots that do not belong to the points, weights below 0, a mesh: told, and nothing is drawn.
  for (const char* entity : {"0 SPLINE 71 3 40 0 40 1 10 0 20 0 10 1 20 0", "0 SPLINE 71 99 10 0 20 0",
                             "0 SPLINE 71 1 40 0 40 0 40 1 40 1 41 -1 41 1 10 0 20 0 10 1 20 0",
                             "0 POLYLINE 70 64 0 VERTEX 10 0 20 0 0 VERTEX 10 1 20 0 0 SEQEND"}) {
    const auto drawing = readDxfOutline(dxf(entity));
    EXPECT_TRUE(drawing && drawing->chains.empty() && drawing->notes.size() == 1) << entity;
  }
}

}  // namespace
}  // namespace lorivan
