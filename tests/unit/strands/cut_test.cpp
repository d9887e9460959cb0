// Files for machines: outlines that keep apart, lines and arcs instead of curves, and PDF pages.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "contours.h"
#include "knot_maker.h"
#include "strands/cut_drawing.h"
#include "strands/cut_room.h"
#include "strands/flat_path.h"
#include "strands/pdf_surface.h"

namespace lorivan {
namespace {

BandContour square(float x, float y, float side) {
  return polygon({{x, y}, {x + side, y}, {x + side, y + side}, {x, y + side}});
}

TEST(CutRoom, KnowsWhichLinesComeTooNear) {
  const BandContour big = square(0, 0, 100);
  EXPECT_TRUE(lieApart({big, square(10, 10, 20), square(102, 0, 9)}, 1)) << "a hole, and a neighbour";
  EXPECT_FALSE(lieApart({big, square(100.5F, 0, 9)}, 1));
  EXPECT_FALSE(lieApart({big, square(90, 90, 20)}, 1)) << "they cross";
  EXPECT_FALSE(lieApart({big, big}, 1)) << "a line twice";
  EXPECT_FALSE(lieApart({polygon({{0, 0}, {50, 50}, {50, 0}, {0, 50}})}, 1)) << "it crosses itself";
}

double millimetreArea(const CutDrawing& drawing) {
  const double scale = drawing.millimetres / 5000;
  return areaOf(drawing) * scale * scale;
}

double widthOf(const CutDrawing& drawing) {
  return (drawing.box.right - drawing.box.left) * drawing.millimetres / 5000;
}

struct CutKnot {
  CutKnot(Shape shape, int x, int y, float width, float edge) : knot(makeKnot(fieldsOf(shape, x, y))) {
    style.colours = strandColours(firstColourBoxes());
    style.width = width;
    style.edge = edge;
    fitView(view, *knot.graph, knot.curve, style);
    options.width = 100;
  }
  CutDrawing cut() const { return cutDrawing(knot.curve, style, view, options); }

  MadeKnot knot;
  KnotStyle style;
  GridView view{0.8F, 5000};
  CutOptions options;
};

TEST(CutDrawing, OutlinesHaveTheirWidthAndTheKerfIsOutside) {
  for (const Shape shape : {Shape::SquareSquare, Shape::Triangle, Shape::Hexagonal, Shape::Circular})
    for (const float edge : {0.F, 1.F, 3.F}) {
      CutKnot knot(shape, 4, 3, 5, edge);
      const CutDrawing plain = knot.cut();
      ASSERT_TRUE(plain.apart);
      EXPECT_EQ(plain.tight, 0);
      EXPECT_EQ(plain.narrowed, 1) << static_cast<int>(shape) << ' ' << edge;
      EXPECT_NEAR(widthOf(plain), 100, 0.01);
      knot.options.kerf = 0.4;
      const CutDrawing grown = knot.cut();
      EXPECT_TRUE(grown.apart);
      EXPECT_NEAR(widthOf(grown), 100.4, 0.02);
      EXPECT_GT(millimetreArea(grown), millimetreArea(plain));
      // The band's sides lie 0.2 mm further out on both sides: a stretch is wider by that and longer by that.
      EXPECT_NEAR(millimetreArea(grown) / millimetreArea(plain), (grown.bandWidth + 0.4) / grown.bandWidth,
                  0.6 * 0.4 / grown.bandWidth);
    }
}

TEST(CutDrawing, TellsWhereTheKerfTakesTheRoomBetweenPieces) {
  CutKnot knot(Shape::SquareSquare, 4, 3, 5, 1);
  EXPECT_EQ(knot.cut().tight, 0);
  knot.options.kerf = 12;
  EXPECT_GT(knot.cut().tight, 0);
}

TEST(CutDrawing, CutsWiderThanAnyRoomTakeWholeBands) {
  CutKnot knot(Shape::Hexagonal, 6, 5, 8, 1);
  const double plain = millimetreArea(knot.cut());
  knot.options.kerf = 30;
  const CutDrawing wide = knot.cut();
  EXPECT_FALSE(wide.apart);
  EXPECT_EQ(wide.narrowed, 1);
  EXPECT_NEAR(widthOf(wide), 130, 0.3);
  EXPECT_GT(millimetreArea(wide), 2 * plain);
  for (const CutStrand& strand : wide.strands) {
    EXPECT_FALSE(strand.shapes.empty());
    EXPECT_EQ(strand.centres.size(), 1U) << "it is cut nowhere";
  }
  knot.options.kerf = 60;
  EXPECT_FALSE(knot.cut().apart);
}

TEST(CutDrawing, BandsWithoutRoomInCornersKeepTheirWidthWhereNothingOverlaps) {
  const CutDrawing wide = CutKnot(Shape::SquareSquare, 5, 4, 30, 2).cut();
  EXPECT_TRUE(wide.apart);
  EXPECT_EQ(wide.narrowed, 1);
  EXPECT_NEAR(widthOf(wide), 100, 0.01);
}

TEST(CutDrawing, StrandsThatTouchHaveNoLineTwice) {
  const CutDrawing touching = CutKnot(Shape::Spiral, 3, 3, 20, 1).cut();
  ASSERT_FALSE(touching.apart);
  EXPECT_EQ(touching.narrowed, 1);
  std::vector<std::array<float, 4>> ends;
  for (const CutStrand& strand : touching.strands)
    for (const CutShape& shape : strand.shapes)
      for (const BandContour& contour : shape) {
        EXPECT_EQ(contour.front().x, contour.back().x);
        for (std::size_t i = 0; i + 3 < contour.size(); i += 3) {
          const PointF a = contour[i], b = contour[i + 3];
          if (std::hypot(a.x - b.x, a.y - b.y) < 1) continue;
          EXPECT_EQ(std::ranges::find(ends, std::array{b.x, b.y, a.x, a.y}), ends.end());
          ends.push_back({a.x, a.y, b.x, b.y});
        }
      }
  EXPECT_GT(ends.size(), 50U);
}

TEST(CutDrawing, CentreLinesAreBrokenOrWhole) {
  CutKnot knot(Shape::SquareSquare, 4, 3, 6, 2);
  knot.options.outlines = false;
  knot.options.millimetres = 100;
  std::size_t stretches = 0, closed = 0;
  for (const CutStrand& strand : knot.cut().strands) stretches += strand.centres.size();
  knot.options.broken = false;
  const CutDrawing whole = knot.cut();
  for (const CutStrand& strand : whole.strands)
    for (const auto& line : strand.centres) closed += line.front().x == line.back().x ? 1 : 0;
  EXPECT_EQ(closed, whole.strands.size());
  EXPECT_EQ(stretches, 31U) << "one between two of the 31 crossings under others";
}

/// Distance from a point to the lines and arcs of a path, each arc taken as many points.
double distanceTo(const std::vector<PathVertex>& path, double x, double y) {
  double nearest = 1e9;
  for (std::size_t i = 0; i + 1 < path.size(); ++i) {
    const PathVertex &a = path[i], &b = path[i + 1];
    for (int k = 0; k <= 200; ++k) {
      // A point of the arc by its half angle: the bulge is the tangent of half of that.
      const double half = 2 * std::atan(a.bulge), t = k / 200.0;
      double along = t, beside = 0;
      if (half != 0) {
        along = (std::sin(half) - std::sin(half * (1 - 2 * t))) / (2 * std::sin(half));
        beside = (std::cos(half) - std::cos(half * (1 - 2 * t))) / (2 * std::sin(half));
      }
      const double dx = b.x - a.x, dy = b.y - a.y;
      nearest = std::min(nearest,
                         std::hypot(a.x + dx * along - dy * beside - x, a.y + dy * along + dx * beside - y));
    }
  }
  return nearest;
}

TEST(FlatPath, LinesAndArcsStayWithinTheTolerance) {
  const std::vector<std::vector<PointF>> curves = {{{0, 0}, {10, 0}, {20, 10}, {20, 20}},
                                                   {{0, 0}, {15, 0}, {5, 10}, {20, 10}},
                                                   {{0, 0}, {3, 20}, {17, 20}, {20, 0}},
                                                   {{0, 0}, {20, 0}, {21, 1}, {22, 9}}};
  for (const auto& curve : curves)
    for (const bool arcs : {false, true}) {
      const auto path = flatPath(curve, {1, 0, 0}, 0.05, arcs);
      EXPECT_LE(path.size(), arcs ? 13U : 30U);
      EXPECT_EQ(path.back().y, -curve.back().y) << "y points upwards";
      if (arcs && &curve == &curves[2]) {
        EXPECT_GT(path[1].bulge, 0) << "through a valley it turns to the left";
      }
      for (int k = 0; k <= 40; ++k) {
        const double t = k / 40.0, s = 1 - t;
        const double weights[] = {s * s * s, 3 * s * s * t, 3 * s * t * t, t * t * t};
        double x = 0, y = 0;
        for (std::size_t i = 0; i < 4; ++i) {
          x += weights[i] * curve[i].x;
          y -= weights[i] * curve[i].y;
        }
        EXPECT_LT(distanceTo(path, x, y), 0.06);
      }
    }
}

TEST(PdfSurface, EveryObjectLiesWhereTheTableSays) {
  PdfSurface surface({5000, 4000, 100, "a (b)"});
  surface.clear(makeColour(255, 0, 16));
  surface.beginGroup("strands");
  surface.beginGroup("strand-1");
  const std::vector<std::vector<PointF>> chain = {{{0, 0}, {25, 0}, {50, 10}, {0, 0}}};
  surface.fillPath(chain, 0);
  surface.dot({50, 50}, 100, 0);
  surface.endGroup();
  surface.endGroup();
  surface.beginHiddenGroup("centre-lines");
  surface.strokePath(chain, 0);
  surface.endGroup();
  const std::string text = surface.finish();
  for (const char* part : {"/MediaBox [ 0 0 283.46457 226.77165 ]", "/Title (a \\(b\\))", "1 0 0.0627 rg",
                           "0 0 m\n0.5 0 1 0.2 0 0 c\nh\nf\n", "0.448 2 0 1.552 0 1 c\n",
                           "0.5 0 1 0.2 0 0 c\nh\nS\n", "/Order [ 7 0 R [ 8 0 R ] 9 0 R ]", "/OFF [ 9 0 R ]"})
    EXPECT_NE(text.find(part), std::string::npos) << part << "\n" << text;
  std::size_t at = text.find("0000000000 65535 f \n") + 20;
  for (int object = 1; object <= 9; ++object, at += 20)
    EXPECT_EQ(text.find(std::to_string(object) + " 0 obj\n", std::stoul(text.substr(at, 10))),
              std::stoul(text.substr(at, 10)));
  EXPECT_EQ(text.substr(std::stoul(text.substr(text.find("startxref\n") + 10)), 4), "xref");
}

}  // namespace
}  // namespace lorivan
