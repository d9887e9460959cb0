// Knots of a wanted size, measured in the files that are made of them.
#include "design/fit_size.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "grids.h"
#include "strands/drawn_box.h"
#include "tries.h"

namespace lorivan {
namespace {

/// Least distance of the corners from the middle axis, and their height.
std::pair<double, double> ringOf(const std::string& obj) {
  double low = HUGE_VAL, high = -HUGE_VAL, inner = HUGE_VAL;
  for (std::size_t at = obj.find("\nv "); at != std::string::npos; at = obj.find("\nv ", at + 1)) {
    double x = 0, y = 0, z = 0;
    EXPECT_EQ(std::sscanf(obj.c_str() + at + 3, "%lf %lf %lf", &x, &y, &z), 3);
    low = std::min(low, y);
    high = std::max(high, y);
    inner = std::min(inner, std::hypot(x, z));
  }
  return {2 * inner, high - low};
}

TEST(FitSize, RingsFitTheirFingersAndWrists) {
  for (const auto& [inner, height, percent] :
       {std::tuple{18.2, 6.0, 0}, {16.0, 3.0, 0}, {62.0, 20.0, 75}, {21.0, 12.0, 100}}) {
    const Document start =
        withField(gridOf(Shape::SquareSquare, 4, 2), Param::RingPerc, std::to_string(percent));
    const auto fitted = fitRing(start, inner, height);
    ASSERT_TRUE(fitted) << inner << ' ' << height;
    EXPECT_LT(fitted->error, kMostSizeError);
    EXPECT_EQ(fitted->document.fields.whole(Param::RingPerc), percent == 0 ? 100 : percent);
    EXPECT_EQ(isWrapped(fitted->document.fields), percent != 75) << "a bracelet has two ends";
    EXPECT_EQ(fittedNote(*fitted).find(", wrapped") != std::string::npos, percent != 75);
    const auto [diameter, high] = ringOf(made(fitted->document, "obj", {.millimetres = fitted->width}));
    // Edges between corners come a little nearer to the axis than the corners do.
    EXPECT_NEAR(diameter, inner, 0.1);
    EXPECT_NEAR(high, height, 0.1);
  }
  EXPECT_FALSE(fitRing(gridOf(Shape::SquareSquare, 4, 2), 10, 900));
  EXPECT_TRUE(
      fittedNote(*fitRing(gridOf(Shape::Circular, 4, 2), 18.2, 6)).ends_with("woven all round a ring"));
}

TEST(FitSize, FramesHaveTheirWidthAndHeightWithTheBands) {
  int compared = 0;
  for (const Shape shape : {Shape::SquareSquare, Shape::Hexagonal, Shape::Circular})
    for (const auto& [width, height] : {std::pair{200.0, 120.0}, {50.0, 90.0}, {300.0, 40.0}}) {
      if (isLeftOut(compared++)) continue;
      const auto fitted = fitFrame(gridOf(shape, 5, 4), width, height);
      ASSERT_TRUE(fitted) << static_cast<int>(shape) << ' ' << width;
      EXPECT_LT(fitted->error, kMostSizeError);
      const auto knot = knotOf(fitted->document);
      const KnotStyle style = knotStyle(fitted->document.fields, {});
      const GridView view = viewOf(*knot, fitted->document.fields, style, 1000, true);
      const PictureBox box = drawnBox(knot->curve, style, view, false);
      EXPECT_NEAR((box.bottom - box.top) * width / (box.right - box.left), height, 0.1);
      const double stretch = static_cast<double>(fitted->document.fields.number(Param::Skew));
      EXPECT_TRUE(shape != Shape::SquareSquare || std::abs(stretch - 1) < 0.25) << "cells are about square";
    }
  const auto cut = fitFrame(gridOf(Shape::SquareSquare, 3, 2), 200, 120, true);
  ASSERT_TRUE(cut);
  const std::string svg =
      made(cut->document, "svg", {.millimetres = cut->width, .outline = true, .cornerOrigin = true});
  double width = 0, height = 0;
  ASSERT_EQ(
      std::sscanf(svg.c_str() + svg.find(" width="), " width=\"%lfmm\" height=\"%lfmm\"", &width, &height),
      2);
  EXPECT_NEAR(width, 200, 0.01);
  EXPECT_NEAR(height, 120, 0.01) << "without the edges that nobody cuts";
  EXPECT_EQ(parseLengths(" 200 X 120.5 ")->second, 120.5);
  EXPECT_EQ(parseLengths("18,2x6")->first, 18.2);
  for (const char* wrong : {"", "200", "x", "200x", "0x5", "2x3x4", "1x1e9"})
    EXPECT_FALSE(parseLengths(wrong)) << wrong;
}

}  // namespace
}  // namespace lorivan
