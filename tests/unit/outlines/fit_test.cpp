// Drawings as shapes: in the frame, upright, closed, with few points.
#include "outlines/fit_outline.h"

#include <gtest/gtest.h>

#include <string>

#include "base/numbers.h"
#include "custom/shape_editor.h"
#include "outlines/dxf_outline.h"
#include "outlines/svg_outline.h"
#include "shapes.h"

namespace lorivan {
namespace {

Result<FittedOutline> fitted(const std::string& body) {
  const auto drawing = readSvgOutline("<svg>" + body + "</svg>");
  return drawing ? fitDrawing(*drawing) : drawing.error();
}

TEST(Fit, DrawingsFillTheFrameWithTheirProportion) {
  const auto wide = fitted("<rect width='790' height='100'/>"),
             high = fitted("<path d='M0 0h100l-50-295z'/>");
  ASSERT_TRUE(wide && high);
  const GridBox frame{45, 45, 440, 340};
  EXPECT_EQ(wide->shape.ShapePointCount, 4);
  EXPECT_TRUE(areasOf(wide->shape) == std::vector<double>{395.0 * 50});
  EXPECT_EQ(high->shape.ShapePointCount, 3);
  for (const CustomShape* shape : {&wide->shape, &high->shape})
    for (int k = 1; k <= shape->ShapePointCount; ++k) {
      const Spot p = pointOf(*shape, k);
      EXPECT_TRUE(p.x >= frame.left && p.x <= frame.right && p.y >= frame.bottom && p.y <= frame.top);
    }
  EXPECT_NEAR(pointOf(high->shape, high->shape.pointNear(242.5F, 45, 1)).y, 45, 1e-3) << "the tip stays up";
}

TEST(Fit, DenseZigzagsAreThinnedWithoutEnd) {
  // Each of so many points has thousands behind it that one line could lead to.
  OutlinePiece flat{{}, false}, round{{}, true};
  for (int k = 0; k < 40'000; ++k) {
    const double off = k % 2 == 0 ? 0.4 : -0.4, angle = kTwoPi * k / 40'000;
    flat.points.push_back({k / 100.0, off});
    round.points.push_back({(150 + off) * std::cos(angle), (150 + off) * std::sin(angle)});
  }
  EXPECT_LE(withFewPoints(flat, 0.5, 4).points.size(), 3U);
  const OutlinePiece ring = withFewPoints(round, 0.8, 4);
  EXPECT_LT(ring.points.size(), 60U);
  for (const Spot p : ring.points) EXPECT_NEAR(length(p), 150, 1.3);
}

TEST(Fit, RoundThingsHaveFewPointsTheirAreaAndTheirSymmetry) {
  const auto ring = fitted("<circle r='90'/><circle r='20'/>");
  ASSERT_TRUE(ring);
  const double unit = 295.0 / 180;
  const std::vector<double> areas = areasOf(ring->shape);
  ASSERT_EQ(areas.size(), 2U);
  EXPECT_NEAR(areas[0] / (kPi * 8100 * unit * unit), 1, 0.005);
  EXPECT_NEAR(areas[1] / (kPi * 400 * unit * unit), 1, 0.01);
  EXPECT_LT(ring->shape.ShapePointCount, 65);
  EXPECT_TRUE(isMirrored(ring->shape, 242.5));
  // On its side: mirrored top to bottom only; two pieces that are each other's image.
  for (const char* body :
       {"<path d='M0 0Q90 80 190 60L170 0 190-60Q90-80 0 0z'/>",
        "<circle r='9'/><ellipse cx='40' cy='3' rx='5' ry='8'/><ellipse cx='-40' cy='3' rx='5' ry='8'/>"}) {
    const auto shape = fitted(body);
    ASSERT_TRUE(shape);
    CustomShape turned = shape->shape;
    std::swap(turned.ShapeX, turned.ShapeY);
    EXPECT_TRUE(isMirrored(turned, 192.5) || isMirrored(shape->shape, 242.5)) << body;
  }
}

TEST(Fit, EndsThatMeetAreJoined) {
  // Four lines in any order and direction, an arc over them; one gap is too wide.
  const std::string square =
      "0 LINE 11 9 0 LINE 10 9 20 9 11 9 0 LINE 10 0 20 9 11 9 21 9.01 0 LINE 11 0 21 9";
  const auto closed = fitDrawing(*readDxfOutline(dxf(square))),
             open = fitDrawing(*readDxfOutline(dxf(square + " 0 LINE 10 3 20 3 11 5 21 3")));
  ASSERT_TRUE(closed && open);
  const auto strokes = fitted("<path d='M0 0h9M9 9h-9z'/>");
  EXPECT_TRUE(strokes && strokes->shape.ShapePointCount == 4 && strokes->shape.ShapeLineCount == 2);
  EXPECT_TRUE(closed->shape.ShapePointCount == 4 && closed->shape.ShapeLineCount == 4);
  EXPECT_TRUE(open->shape.ShapePointCount == 6 && open->shape.ShapeLineCount == 5);
}

TEST(Fit, WhatIsTooMuchBecomesCoarserAndIsTold) {
  std::string circles, dots;
  for (int k = 0; k < 192; ++k)
    circles +=
        "<circle r='9' cx='" + std::to_string(k % 16 * 20) + "' cy='" + std::to_string(k / 16 * 20) + "'/>";
  const auto coarse = fitted(circles);
  ASSERT_TRUE(coarse);
  EXPECT_LE(coarse->shape.ShapeLineCount, kMostShapeLines);
  EXPECT_TRUE(coarse->notes.size() == 1 && coarse->notes[0].starts_with("made coarser, to within "))
      << coarse->notes.size();
  for (int k = 0; k < 400; ++k)
    dots += "<rect width='2' height='2' x='" + std::to_string(k % 20 * 4) + "' y='" +
            std::to_string(k / 20 * 4) + "'/>";
  EXPECT_NE(fitted(dots).error().message.find("too intricate for a shape of 1000 lines"), std::string::npos);
  const auto speck = fitted("<rect width='100' height='100'/><circle cx='50' cy='50' r='0.5'/>");
  EXPECT_TRUE(speck && speck->notes == std::vector<std::string>{"1 speck left out"} &&
              speck->shape.ShapeLineCount == 4);
  EXPECT_EQ(fitted("<text>A</text>").error().message,
            "there is no outline in it; texts were left out: turn them into paths first");
  std::string grown = "<line x2='1' y2='1'/>";
  for (int k = 0; k < 40; ++k) grown = "<g transform='scale(1e9)'>" + grown + "</g>";
  EXPECT_EQ(fitted(grown).error().message, "its coordinates are too large");
  for (const char* nothing : {"", "<path d='M5 5z'/>", "<line x2='0'/>"})
    EXPECT_FALSE(fitted(nothing)) << nothing;
}

}  // namespace
}  // namespace lorivan
